// SPDX-License-Identifier: MIT
#include "protocol/go_command.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "board/validity.h"
#include "protocol/log.h"
#include "protocol/number_text.h"
#include "protocol/options.h"
#include "protocol/position_command.h"
#include "protocol/time_allotment.h"
#include "search/limits.h"
#include "search/report.h"
#include "search/settings.h"
#include "search/think.h"

namespace helvan {

namespace {

constexpr const char* keywords[] = {"infinite", "ponder", "nodes",     "wtime",    "btime",      "winc",
                                    "binc",     "depth",  "movestogo", "movetime", "searchmoves"};

bool isKeyword(const char* word) {
    return std::any_of(std::begin(keywords), std::end(keywords),
                       [&](const char* keyword) { return std::strcmp(word, keyword) == 0; });
}

double secondsFromText(const char* milliseconds) { return static_cast<double>(int64FromText(milliseconds)) / 1000.0; }

// The seconds for this move from the mover's clock. Sets how far the search may run beyond them.
double allotFromClock(const GoParameters& go, Colour mover) {
    const MoverClock clock = {.secondsLeft = mover == white ? go.whiteTime : go.blackTime,
                              .incrementSeconds = mover == white ? go.whiteIncrement : go.blackIncrement,
                              .movesToGo = go.movesToGo,
                              .overheadMilliseconds = moveOverheadMilliseconds};
    const bool byMoves = go.movesToGo != 0 || go.depth < 0;
    const TimeAllotment allotment = byMoves ? allotForMovesToGo(clock) : allotForGame(clock);
    searchState.longestSafe = longestSafeSeconds(clock);
    if (allotment.maxGoalPercent) hardLimitPercent = *allotment.maxGoalPercent;
    if (byMoves) {
        logWrite("We have %8.1f seconds to make %d moves = %8.1f goal\n", clock.secondsLeft, clock.movesToGo,
                 allotment.plannedSeconds);
        // No line of the protocol: front ends skip it, people like to see it.
        std::printf("goal: %8.3f   max_goal_perc: %8d \n", allotment.goalSeconds, hardLimitPercent);
    } else {
        logWrite("We have %8.1f seconds for the game.  %8.1f goal set\n", clock.secondsLeft, allotment.goalSeconds);
    }
    return allotment.goalSeconds;
}

void answerUnplayable(const char* reason) {
    std::printf("info string cannot search this position: %s\n", reason);
    if (searchState.pondering != 0) waitWhilePondering();
    const Move noLine[1] = {nullMove};
    printBestMove(0, noLine);
}

} // namespace

GoParameters readGoParameters(const Words& words) {
    GoParameters go;
    for (int i = 1; i < words.count; ++i) {
        const auto value = [&] { return words[++i]; };
        if (words.is(i, "infinite")) {
            go.infinite = true;
        } else if (words.is(i, "ponder")) {
            go.ponder = true;
        } else if (words.is(i, "nodes")) {
            go.nodeLimit = int64FromText(value());
        } else if (words.is(i, "wtime")) {
            go.whiteTime = secondsFromText(value());
        } else if (words.is(i, "btime")) {
            go.blackTime = secondsFromText(value());
        } else if (words.is(i, "winc")) {
            go.whiteIncrement = secondsFromText(value());
        } else if (words.is(i, "binc")) {
            go.blackIncrement = secondsFromText(value());
        } else if (words.is(i, "movestogo")) {
            go.movesToGo = intFromText(value());
        } else if (words.is(i, "movetime")) {
            go.moveTime = secondsFromText(value());
        } else if (words.is(i, "depth")) {
            go.depth = intFromText(value());
        } else if (words.is(i, "searchmoves")) {
            for (; i + 1 < words.count && !isKeyword(words[i + 1]); ++i) {
                go.searchMoves += words[i + 1];
                go.searchMoves += ' ';
            }
        }
    }
    return go;
}

void goCommand(const Words& words) {
    if (!SearchScope::mayBegin()) {
        std::printf("info string go ignored: %d searches are running\n", SearchScope::maxNested + 1);
        return;
    }
    const SearchScope scope;
    const GoParameters go = readGoParameters(words);
    searchState.pondering = go.ponder || go.infinite ? 1 : 0;
    searchState.fixedMoveTime = 0.0;
    searchState.longestSafe = unlimitedSeconds;
    if (go.nodeLimit >= 0) nodeCounter.limit = static_cast<std::uint64_t>(go.nodeLimit);

    const Position& position = gameHistory.current();
    if (const char* reason = unplayableReason(position); reason != nullptr) {
        answerUnplayable(reason);
        return;
    }
    double allotted = noTimeGoalSeconds;
    if (go.depth > 0 || go.infinite) {
        // No time goal.
    } else if (go.moveTime != 0.0) {
        logWrite("Time Left: %8.1f\n", go.moveTime);
        searchState.fixedMoveTime = go.moveTime;
        allotted = go.moveTime;
    } else if (go.nodeLimit < 0) {
        allotted = allotFromClock(go, position.sideToMove());
    }
    think(position, allotted, go.depth, go.searchMoves);
}

} // namespace helvan
