// SPDX-License-Identifier: MIT
#include "tools/tune/training_set.h"

#include <cmath>
#include <cstdio>
#include <memory>

#include "board/fen.h"
#include "board/piece_square.h"
#include "board/validity.h"
#include "eval/evaluate.h"
#include "search/quiesce.h"

namespace helvan {

namespace {

constexpr int longestLine = 512;

// For the shell, as one word.
std::string quoted(const std::string& text) {
    std::string word = "'";
    for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

// A file, or what xz makes of one.
class Input {
public:
    explicit Input(const std::string& path)
        : packed(path.ends_with(".xz")),
          file(packed ? popen(("xz -dc " + quoted(path)).c_str(), "r") : std::fopen(path.c_str(), "r")) {}

    std::FILE* stream() const { return file; }

    // Whether it was there and came whole.
    bool close() {
        if (file == nullptr) return false;
        const bool read = std::ferror(file) == 0; // a folder opens, and then cannot be read
        return (packed ? pclose(file) : std::fclose(file)) == 0 && read;
    }

private:
    bool packed;
    std::FILE* file;
};

} // namespace

void TrainingSet::add(const Position& position, float result, float score, int game) {
    positions.push_back(position);
    refreshPieceSums(positions.back());
    results.push_back(result);
    scores.push_back(score);
    games.push_back(game);
}

bool addLine(TrainingSet& set, const std::string& line) {
    const std::size_t end = line.find('|');
    if (end == std::string::npos) return false;
    const std::string fen = line.substr(0, end);
    float result = 0, score = 0;
    int game = 0;
    if (std::sscanf(line.c_str() + end, "|%f|%f|%d", &result, &score, &game) != 3) return false;
    if (!(result >= 0 && result <= 1) || !std::isfinite(score)) return false;
    Position position;
    if (setupFromFen(position, fen.c_str()) != nullptr) return false;
    dropUnfoundedCastlingRights(position);
    if (unplayableReason(position) != nullptr) return false;
    set.add(position, result, score, game);
    return true;
}

void dropUnsettled(TrainingSet& set, int margin) {
    const auto tables = std::make_unique<SearchTables>();
    Search search(*tables);
    set.keepIf([&](Position position) {
        Move line[pvCapacity];
        const int standing = evaluate(position, tables->evalCaches);
        return quiesce(search, position, -infiniteScore, infiniteScore, 0, 0, line) <= standing + margin;
    });
}

TrainingSet readTrainingSet(const std::string& path) {
    TrainingSet set;
    Input input(path);
    int unread = 0;
    for (char line[longestLine];
         input.stream() != nullptr && std::fgets(line, sizeof line, input.stream()) != nullptr;) {
        if (line[0] != '#' && !addLine(set, line)) ++unread;
    }
    if (!input.close()) {
        std::fprintf(stderr, "%s could not be read, or not to its end.\n", path.c_str());
        return {};
    }
    if (unread > 0) std::fprintf(stderr, "%d lines could not be read.\n", unread);
    return set;
}

} // namespace helvan
