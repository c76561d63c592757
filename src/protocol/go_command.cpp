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

double secondsFromText(const char* milliseconds) { return static_cast<double>(int64FromText(milliseconds)) / 1000.0; }

// A word of "go", and how it and the value behind it are read.
struct Keyword {
    const char* word;
    bool hasValue;
    void (*read)(GoParameters& go, const char* value);
};

constexpr Keyword keywords[] = {
    {"infinite", false, [](GoParameters& go, const char*) { go.infinite = true; }},
    {"ponder", false, [](GoParameters& go, const char*) { go.ponder = true; }},
    {"nodes", true, [](GoParameters& go, const char* value) { go.nodeLimit = int64FromText(value); }},
    {"wtime", true, [](GoParameters& go, const char* value) { go.whiteTime = secondsFromText(value); }},
    {"btime", true, [](GoParameters& go, const char* value) { go.blackTime = secondsFromText(value); }},
    {"winc", true, [](GoParameters& go, const char* value) { go.whiteIncrement = secondsFromText(value); }},
    {"binc", true, [](GoParameters& go, const char* value) { go.blackIncrement = secondsFromText(value); }},
    {"movestogo", true, [](GoParameters& go, const char* value) { go.movesToGo = intFromText(value); }},
    {"movetime", true, [](GoParameters& go, const char* value) { go.moveTime = secondsFromText(value); }},
    {"depth", true, [](GoParameters& go, const char* value) { go.depth = intFromText(value); }},
    {"searchmoves", false, [](GoParameters&, const char*) {}}}; // the moves are the words up to the next keyword

const Keyword* findKeyword(const char* word) {
    const auto* const found = std::find_if(std::begin(keywords), std::end(keywords), [&](const Keyword& keyword) {
        return std::strcmp(word, keyword.word) == 0;
    });
    return found != std::end(keywords) ? found : nullptr;
}

// The seconds for this move from the mover's clock. Sets how far the search may run beyond them.
double allotFromClock(const GoParameters& go, Colour mover) {
    const MoverClock clock = {.secondsLeft = mover == white ? go.whiteTime : go.blackTime,
                              .incrementSeconds = mover == white ? go.whiteIncrement : go.blackIncrement,
                              .movesToGo = go.movesToGo,
                              .overheadMilliseconds = moveOverheadMilliseconds};
    const bool byMoves = go.movesToGo != 0 || go.depth < 0;
    const TimeAllotment allotment = byMoves ? allotForMovesToGo(clock) : allotForGame(clock);
    if (allotment.maxGoalPercent) hardLimitPercent = *allotment.maxGoalPercent;
    searchState.hardLimit = hardLimitSeconds(clock, allotment, hardLimitPercent);
    const double left = clock.secondsLeft.value_or(0.0);
    if (byMoves) {
        logWrite("We have %8.1f seconds to make %d moves = %8.1f goal\n", left, clock.movesToGo,
                 allotment.plannedSeconds);
        // No line of the protocol: front ends skip it, people like to see it.
        std::printf("goal: %8.3f   max_goal_perc: %8d \n", allotment.goalSeconds, hardLimitPercent);
    } else {
        logWrite("We have %8.1f seconds for the game.  %8.1f goal set\n", left, allotment.goalSeconds);
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
    bool namingMoves = false;
    for (int i = 1; i < words.count; ++i) {
        if (const Keyword* keyword = findKeyword(words[i]); keyword != nullptr) {
            namingMoves = words.is(i, "searchmoves");
            keyword->read(go, keyword->hasValue ? words[++i] : "");
        } else if (namingMoves) {
            go.searchMoves += words[i];
            go.searchMoves += ' ';
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
