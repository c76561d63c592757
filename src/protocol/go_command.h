// SPDX-License-Identifier: MIT
//
// The command "go": reads the limits and runs the search.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "protocol/words.h"

namespace helvan {

struct GoParameters {
    std::optional<double> whiteTime; // seconds, as all times here; empty: not named
    std::optional<double> blackTime;
    double whiteIncrement = 0.0;
    double blackIncrement = 0.0;
    double moveTime = 0.0; // 0 for none
    int movesToGo = 0;
    int depth = 0;
    std::int64_t nodeLimit = -1; // negative for none
    bool infinite = false;
    bool ponder = false;
    std::string searchMoves; // each followed by a blank
};

// Reads the words behind "go". Unknown words are skipped; a missing value is 0; numbers too large become the
// largest there are.
GoParameters readGoParameters(const Words& words);

// Searches the current position of the game and answers with "bestmove". A position that cannot be played from
// is named in an "info string" and answered with "bestmove ZZZZ". In the middle of a search inside a search inside
// a search: one "info string", nothing else.
void goCommand(const Words& words);

} // namespace helvan
