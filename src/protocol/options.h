// SPDX-License-Identifier: MIT
//
// The options that a front end may set. Three tables pair a display name with the setting it stands for, which
// lives with the subsystem that reads it: a further row is all that it takes to expose a further setting. Each
// table ends with a row whose name is empty.
#pragma once

#include "board/packed_score.h"

namespace helvan {

inline constexpr int optionNameCapacity = 64; // terminator included

struct SpinParam {
    char name[optionNameCapacity];
    int* value;
    int min; // the bounds are for the front end: values outside are taken as given
    int max;
};

struct CheckParam {
    char name[optionNameCapacity];
    int* value; // 0 or 1
};

// An opening and an endgame value, shown as two options.
struct TaperedParam {
    char name[optionNameCapacity];
    PackedScore* value;
    int min;
    int max;
};

extern const SpinParam spinParams[];
extern const CheckParam checkParams[];
extern const TaperedParam taperedParams[];

// The protocol's own settings.
inline int ponderAllowed = 1;             // the option "Ponder"
inline int moveOverheadMilliseconds = 20; // the option "move overhead milliseconds"

// Prints an "option" line for each option. The defaults shown are the current values, but for Ponder.
void printOptions();

} // namespace helvan
