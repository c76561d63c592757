// SPDX-License-Identifier: MIT
#include "tools/tune/parameter_file.h"

#include <cstdio>

#include "eval/parameters.h"

namespace helvan {

namespace {

std::string textOf(PackedScore value) {
    char text[32];
    std::snprintf(text, sizeof text, "S(%4d, %4d)", value.opening(), value.endgame());
    return text;
}

// A pair as the source writes it, and where.
struct WrittenPair {
    std::size_t begin;
    std::size_t length;
    PackedScore value;
};

std::optional<WrittenPair> nextPair(const std::string& source, std::size_t from) {
    const std::size_t begin = source.find("S(", from);
    if (begin == std::string::npos) return std::nullopt;
    int opening = 0, endgame = 0, length = 0;
    const int read = std::sscanf(source.c_str() + begin, "S(%d,%d)%n", &opening, &endgame, &length);
    if (read != 2 || length == 0) return std::nullopt;
    return WrittenPair{begin, static_cast<std::size_t>(length), packed(opening, endgame)};
}

} // namespace

std::vector<PackedScore> parameterValues() {
    std::vector<PackedScore> values;
    for (const ParameterRow& row : parameterRows()) values.insert(values.end(), row.values, row.values + row.count);
    return values;
}

// The rows come in the order of the source, so its pairs need no names.
std::optional<std::string> withPresentParameters(const std::string& source, const std::vector<PackedScore>& before) {
    std::string text = source;
    std::size_t at = text.find("EvalParameters evalParameters = {"), index = 0;
    if (at == std::string::npos) return std::nullopt;
    for (const ParameterRow& row : parameterRows()) {
        for (int i = 0; i < row.count; ++i) {
            const std::optional<WrittenPair> pair = nextPair(text, at);
            if (!pair || pair->value != before[index++]) return std::nullopt;
            const bool open = i >= row.open.first && i < row.open.end;
            const std::string now = open ? textOf(row.values[i]) : text.substr(pair->begin, pair->length);
            text.replace(pair->begin, pair->length, now);
            at = pair->begin + now.size();
        }
    }
    return text;
}

} // namespace helvan
