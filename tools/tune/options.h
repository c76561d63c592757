// SPDX-License-Identifier: MIT
//
// Command lines of the form "--name value ...".
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <variant>

namespace helvan {

struct ToolOption {
    const char* name; // with its dashes
    std::variant<int*, std::uint64_t*, double*, std::string*> target;
    const char* help;
};

// False for a text that is no such number.
inline bool store(const ToolOption& option, const char* text) {
    char* end = nullptr;
    if (auto* const* string = std::get_if<std::string*>(&option.target)) {
        **string = text;
        return true;
    }
    if (auto* const* number = std::get_if<int*>(&option.target))
        **number = static_cast<int>(std::strtol(text, &end, 10));
    if (auto* const* number = std::get_if<std::uint64_t*>(&option.target)) **number = std::strtoull(text, &end, 10);
    if (auto* const* number = std::get_if<double*>(&option.target)) **number = std::strtod(text, &end);
    return end != text && *end == '\0';
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
        if (named == nullptr || !store(*named, arguments[i + 1])) break;
    }
    if (i >= arguments.size()) return true;
    std::fprintf(stderr, "usage: %s [OPTION VALUE]...\n\n", arguments[0]);
    for (const ToolOption& option : options) std::fprintf(stderr, "  %-14s %s\n", option.name, option.help);
    return false;
}

} // namespace helvan
