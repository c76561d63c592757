// SPDX-License-Identifier: MIT
//
// How much of its clock a move may use: pure functions of the mover's clock.
#pragma once

#include <optional>

namespace helvan {

struct MoverClock {
    double secondsLeft = 0.0; // may be negative: the flag has fallen
    double incrementSeconds = 0.0;
    int movesToGo = 0; // until the next time control
    int overheadMilliseconds = 0;
};

struct TimeAllotment {
    double plannedSeconds; // the goal before the overhead is taken off
    double goalSeconds;    // never below a few milliseconds
    // How far the search may run when it needs more, in percent of the goal; empty: as it was.
    std::optional<int> maxGoalPercent;
};

// For a clock that must last a number of moves. Takes every number of moves, those below 1 too.
TimeAllotment allotForMovesToGo(const MoverClock& clock);

// For a clock that must last the game, with an increment after each move or without one.
TimeAllotment allotForGame(const MoverClock& clock);

// What the search may use at the very most: the clock but for twice the overhead, 0 or more. It binds only on a clock
// so nearly empty that the least goals above, stretched, would overrun it; the move is then made after one iteration.
double longestSafeSeconds(const MoverClock& clock);

} // namespace helvan
