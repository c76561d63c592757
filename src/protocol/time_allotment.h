// SPDX-License-Identifier: MIT
//
// How much of its clock a move may use: pure functions of the mover's clock.
#pragma once

#include <optional>

namespace helvan {

struct MoverClock {
    // May be negative: the flag has fallen. Empty: there is no clock to be kept. The time is then shared out as on one
    // that stands at 0, which leaves the least goal unless the overhead is negative.
    std::optional<double> secondsLeft;
    double incrementSeconds = 0.0;
    int movesToGo = 0;            // until the next time control
    int overheadMilliseconds = 0; // lost between engine and clock; a negative one is time won
};

struct TimeAllotment {
    double plannedSeconds; // the goal before the overhead is taken off
    double goalSeconds;    // leastSeconds at least
    double leastSeconds;   // that a goal of its kind has
    // How far the search may run when it needs more, in percent of the goal; empty: as it was.
    std::optional<int> maxGoalPercent;
};

// For a clock that must last a number of moves. Takes every number of moves, those below 1 too.
TimeAllotment allotForMovesToGo(const MoverClock& clock);

// For a clock that must last the game, with an increment after each move or without one.
TimeAllotment allotForGame(const MoverClock& clock);

// What the search may use at the very most: the goal stretched by hardLimitPercent (below 100 it counts as 100), where
// the clock holds that and the overhead; else the clock less the overhead, though not less than the least goal so
// stretched. A clock that does not even hold that much gives 0: the move is made after one iteration.
double hardLimitSeconds(const MoverClock& clock, const TimeAllotment& allotment, int hardLimitPercent);

} // namespace helvan
