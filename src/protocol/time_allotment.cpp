// SPDX-License-Identifier: MIT
#include "protocol/time_allotment.h"

#include <algorithm>
#include <limits>

namespace helvan {

namespace {

constexpr int spareMoves = 2; // planned for beyond the moves to go
constexpr int goalScalePercent = 110;
constexpr double goalScale = goalScalePercent / 100.0;
constexpr double largestStretch = 5.0; // the longest time as a multiple of the goal
constexpr double largestShare = 0.5;   // and as a share of the clock
constexpr double lastMoveShare = 0.9;  // the same before a new time control

constexpr int movesWithIncrement = 30; // that the clock is to last
constexpr int movesWithoutIncrement = 50;
constexpr double leastIncrementSeconds = 0.00001; // below it there is none
constexpr double incrementShare = 0.95;
constexpr double movesSavedUp = 2.0;  // added to the increments on the clock
constexpr double stretchMargin = 1.1; // the longest time leaves so much of the clock
constexpr double leastStretch = 1.0;  // on a clock below zero

constexpr double leastGoalMovesToGo = 0.005; // seconds
constexpr double leastGoalGame = 0.002;

int percent(double ratio) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp(ratio * 100.0, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

// A plan for no time at all stays at the least goal, whatever overhead is set.
double goalAfterOverhead(double planned, int overheadMilliseconds, double least) {
    return planned > 0.0 ? std::max(planned - overheadMilliseconds / 1000.0, least) : least;
}

// The longest time as a multiple of the planned one.
double stretchForMovesToGo(const MoverClock& clock, double movesPlanned, double planned) {
    const bool lastMove = clock.movesToGo == 1;
    if (planned != 0.0) {
        const double longest = lastMove ? clock.secondsLeft * lastMoveShare
                                        : std::min(planned * largestStretch, clock.secondsLeft * largestShare);
        return longest / planned;
    }
    // Nothing to divide: what the moves alone make of the same quotient.
    const double stretch = lastMove ? lastMoveShare * movesPlanned / goalScale
                                    : std::min(largestStretch, largestShare * movesPlanned / goalScale);
    return clock.secondsLeft < 0.0 ? std::max(stretch, leastStretch) : stretch;
}

} // namespace

double longestSafeSeconds(const MoverClock& clock) {
    constexpr double overheadsKept = 2.0;
    return std::max(clock.secondsLeft - overheadsKept * clock.overheadMilliseconds / 1000.0, 0.0);
}

TimeAllotment allotForMovesToGo(const MoverClock& clock) {
    const double movesPlanned = static_cast<double>(clock.movesToGo) + spareMoves;
    const bool divisible = clock.secondsLeft > 0.0 && movesPlanned != 0.0;
    const double planned = divisible ? clock.secondsLeft / movesPlanned * goalScale : 0.0;
    const double stretch = stretchForMovesToGo(clock, movesPlanned, planned);
    return {planned, goalAfterOverhead(planned, clock.overheadMilliseconds, leastGoalMovesToGo),
            percent(stretch * goalScale)};
}

TimeAllotment allotForGame(const MoverClock& clock) {
    const double left = clock.secondsLeft;
    const double increment = clock.incrementSeconds;
    const bool incremental = increment > leastIncrementSeconds;
    const int moves = incremental ? movesWithIncrement : movesWithoutIncrement;
    const double stretch =
        incremental ? std::clamp(left / increment + movesSavedUp, leastStretch, largestStretch) : largestStretch;
    const double wanted = (1.0 / moves) * (left - increment) + increment * incrementShare;
    const double planned = std::min(wanted, left / (stretch * stretchMargin));
    // Deliberate: without increment the percentage of the move before is kept.
    const std::optional<int> maxGoalPercent = incremental ? std::optional(percent(stretch)) : std::nullopt;
    return {planned, goalAfterOverhead(planned, clock.overheadMilliseconds, leastGoalGame), maxGoalPercent};
}

} // namespace helvan
