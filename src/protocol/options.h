// SPDX-License-Identifier: MIT
//
// The options that a front end may set: one table, a row each, which is all that it takes to expose a further setting.
#pragma once

#include <span>
#include <string>
#include <variant>

#include "board/packed_score.h"

namespace helvan {

struct Session;

enum class OptionType { check, spin, string };

// One of the two values of a pair.
struct Lane {
    PackedScore* pair;
    bool opening;
};

struct Option {
    const char* name;
    OptionType type;
    // What the option stands for, in its subsystem: a number, 0 or 1 for checks; or a text.
    std::variant<int*, Lane, char*> setting;
    int min; // the bounds of a spin are for the front end: values outside are taken as given
    int max;
    // Sets it and brings all else up to date. Allowed in the middle of a search.
    void (*set)(Session& session, const Option& option, const std::string& value);
    const char* alwaysShown = nullptr; // the default that is shown whatever the setting; null: the setting
};

// In the order in which they are shown.
std::span<const Option> options();

// The option of that name in lower case, or null.
const Option* findOption(const std::string& loweredName);

// The setting as a front end writes it.
std::string valueText(const Option& option);

// Prints an "option" line for each option.
void printOptions();

// The protocol's own settings.
struct ProtocolSettings {
    int ponderAllowed = 1;             // the option "Ponder"
    int moveOverheadMilliseconds = 20; // the option "move overhead milliseconds"
};

inline ProtocolSettings protocolSettings;

} // namespace helvan
