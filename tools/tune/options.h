// SPDX-License-Identifier: MIT
//
// Command lines of the form "--name value ...".
#pragma once

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>

namespace helvan {

struct ToolOption {
    const char* name; // with its dashes
    std::variant<int*, std::uint64_t*, double*, std::string*> target;
    const char* help;
};

// False for a text that is no such number, or none that the type holds.
template <typename Number> bool store(std::string_view text, Number& number) {
    const char* textEnd = text.data() + text.size();
    const auto [end, fault] = std::from_chars(text.data(), textEnd, number);
    return fault == std::errc() && end == textEnd;
}

inline bool store(std::string_view text, std::string& string) {
    string = text;
    return true;
}

// Reads all arguments into the options' targets. Prints the options on standard error and answers false at the first
// argument that is none of them or lacks its value.
inline bool readOptions(std::span<char* const> arguments, std::span<const ToolOption> options) {
    std::size_t i = 1;
    for (; i + 1 < arguments.size(); i += 2) {
        const ToolOption* named = nullptr;
        for (const ToolOption& option : options) {
            if (std::string(arguments[i]) == option.name) named = &option;
        }
        if (named == nullptr) break;
        if (!std::visit([&](auto* target) { return store(arguments[i + 1], *target); }, named->target)) break;
    }
    if (i >= arguments.size()) return true;
    std::fprintf(stderr, "%s: no such option, or not such a value\n\nusage: %s [OPTION VALUE]...\n\n", arguments[i],
                 arguments[0]);
    for (const ToolOption& option : options) std::fprintf(stderr, "  %-14s %s\n", option.name, option.help);
    return false;
}

} // namespace helvan
