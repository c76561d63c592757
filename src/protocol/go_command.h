// SPDX-License-Identifier: MIT
//
// The command "go": reads the limits and runs the search.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "protocol/session.h"
#include "protocol/time_allotment.h"
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
    std::vector<std::string> searchMoves;
};

// Reads the words behind "go". Unknown words are skipped; a missing value is 0; numbers too large become the
// largest there are.
GoParameters readGoParameters(const Words& words);

// What the limits of a search are worked out from, beside the words of "go".
struct GoContext {
    const Position& position; // of the game
    int overheadMilliseconds; // the options of these names
    int multiPv;
    bool deterministic;
    int hashMegabytes;
    int hardLimitPercent; // of the go before
    std::uint64_t uninterruptedNodes = usualUninterruptedNodes;
};

// A share of the clock.
struct ClockShare {
    bool byMovesToGo; // else for the game
    double secondsLeft;
    TimeAllotment allotment;
};

struct GoPlan {
    SearchLimits limits;
    std::optional<ClockShare> share; // where the time comes from the clock
    int hardLimitPercent = 0;        // how far beyond the goal the search may run; kept for the next go
};

// Nothing but the arguments decides. The position can be played from.
GoPlan planGo(const GoParameters& go, const GoContext& context);

// Searches the current position of the game and answers with "bestmove". A position that cannot be played from
// is named in an "info string" and answered with "bestmove ZZZZ". In the middle of a search inside a search inside
// a search: one "info string", nothing else.
void goCommand(Session& session, const Words& words);

} // namespace helvan
