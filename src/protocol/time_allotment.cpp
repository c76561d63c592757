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
constexpr int leastHardLimitPercent = 100;

constexpr double leastGoalMovesToGo = 0.005; // seconds
constexpr double leastGoalGame = 0.002;

int percent(double ratio) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp(ratio * 100.0, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

double overheadSeconds(const MoverClock& clock) { return clock.overheadMilliseconds / 1000.0; }

TimeAllotment allot(const MoverClock& clock, double planned, double least, std::optional<int> maxGoalPercent) {
    return {planned, std::max(planned - overheadSeconds(clock), least), least, maxGoalPercent};
}

// The longest time as a multiple of the planned one.
double stretchForMovesToGo(const MoverClock& clock, double left, double movesPlanned, double planned) {
    const bool lastMove = clock.movesToGo == 1;
    if (planned != 0.0) {
        return (lastMove ? left * lastMoveShare : std::min(planned * largestStretch, left * largestShare)) / planned;
    }
    // Nothing to divide: what the moves alone make of the same quotient.
    return lastMove ? lastMoveShare * movesPlanned / goalScale
                    : std::min(largestStretch, largestShare * movesPlanned / goalScale);
}

} // namespace

double hardLimitSeconds(const MoverClock& clock, const TimeAllotment& allotment, int hardLimitPercent) {
    const double stretch = std::max(hardLimitPercent, leastHardLimitPercent) / 100.0;
    const double spare = clock.secondsLeft.value_or(0.0) - overheadSeconds(clock);
    const double limit = std::min(stretch * allotment.goalSeconds, spare);
    const double least = stretch * allotment.leastSeconds;
    if (limit >= least) return limit;
    return !clock.secondsLeft || *clock.secondsLeft >= least ? least : 0.0;
}

TimeAllotment allotForMovesToGo(const MoverClock& clock) {
    const double left = clock.secondsLeft.value_or(0.0);
    const double movesPlanned = static_cast<double>(clock.movesToGo) + spareMoves;
    const double planned = movesPlanned != 0.0 ? left / movesPlanned * goalScale : 0.0;
    const double stretch = stretchForMovesToGo(clock, left, movesPlanned, planned);
    return allot(clock, planned, leastGoalMovesToGo, percent(stretch * goalScale));
}

TimeAllotment allotForGame(const MoverClock& clock) {
    const double left = clock.secondsLeft.value_or(0.0);
    const double increment = clock.incrementSeconds;
    const bool incremental = increment > leastIncrementSeconds;
    const int moves = incremental ? movesWithIncrement : movesWithoutIncrement;
    const double stretch =
        incremental ? std::clamp(left / increment + movesSavedUp, leastStretch, largestStretch) : largestStretch;
    const double wanted = (1.0 / moves) * (left - increment) + increment * incrementShare;
    const double planned = std::min(wanted, left / (stretch * stretchMargin));
    // Deliberate: without increment the percentage of the move before is kept.
    const std::optional<int> maxGoalPercent = incremental ? std::optional(percent(stretch)) : std::nullopt;
    return allot(clock, planned, leastGoalGame, maxGoalPercent);
}

} // namespace helvan
