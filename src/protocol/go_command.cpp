// SPDX-License-Identifier: MIT
#include "protocol/go_command.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "board/legal_moves.h"
#include "board/move_text.h"
#include "board/moves.h"
#include "board/validity.h"
#include "platform/log.h"
#include "protocol/number_text.h"
#include "protocol/options.h"
#include "search/report.h"
#include "search/stopping.h"
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

// Whether no limit holds before "ponderhit".
bool isPondering(const GoParameters& go) { return go.ponder || go.infinite; }

// Sets the time that the search may take from the mover's clock.
void shareClock(GoPlan& plan, const GoParameters& go, const GoContext& context) {
    const Colour mover = context.position.sideToMove();
    const MoverClock clock = {.secondsLeft = mover == white ? go.whiteTime : go.blackTime,
                              .incrementSeconds = mover == white ? go.whiteIncrement : go.blackIncrement,
                              .movesToGo = go.movesToGo,
                              .overheadMilliseconds = context.overheadMilliseconds};
    const bool byMoves = go.movesToGo != 0 || go.depth < 0;
    const TimeAllotment allotment = byMoves ? allotForMovesToGo(clock) : allotForGame(clock);
    plan.hardLimitPercent = allotment.maxGoalPercent.value_or(context.hardLimitPercent);
    plan.limits.goalSeconds = allotment.goalSeconds;
    plan.limits.hardSeconds = hardLimitSeconds(clock, allotment, plan.hardLimitPercent);
    plan.share = {byMoves, clock.secondsLeft.value_or(0.0), allotment};
}

// The legal ones among the words.
std::vector<Move> namedMoves(const Position& position, const std::vector<std::string>& words) {
    Move legal[maxMoves];
    const int count = legalMoves(position, legal);
    std::vector<Move> named;
    std::copy_if(legal, legal + count, std::back_inserter(named),
                 [&](Move move) { return std::find(words.begin(), words.end(), moveText(move)) != words.end(); });
    return named;
}

// Tells the log, and people who look at the dialogue, how much time there is.
void tellTime(const GoParameters& go, const GoPlan& plan) {
    if (plan.limits.fixedTime) logWrite("Time Left: %8.1f\n", go.moveTime);
    if (!plan.share) return;
    const auto& [byMovesToGo, secondsLeft, allotment] = *plan.share;
    if (byMovesToGo) {
        logWrite("We have %8.1f seconds to make %d moves = %8.1f goal\n", secondsLeft, go.movesToGo,
                 allotment.plannedSeconds);
        // No line of the protocol: front ends skip it.
        std::printf("goal: %8.3f   max_goal_perc: %8d \n", allotment.goalSeconds, plan.hardLimitPercent);
    } else {
        logWrite("We have %8.1f seconds for the game.  %8.1f goal set\n", secondsLeft, allotment.goalSeconds);
    }
}

void answerUnplayable(Search& search, const char* reason) {
    std::printf("info string cannot search this position: %s\n", reason);
    if (search.pondering) waitWhilePondering(search);
    const Move noLine[1] = {nullMove};
    search.reporter.answers(search, noLine);
}

// Runs in the middle of the searches that are running.
void runSearch(Session& session, const GoPlan& plan, const char* unplayable) {
    Search search(session.tables, plan.limits, uciReporter());
    search.poll = session.poll;
    search.book = &session.book;
    session.running.push_back(&search);
    if (unplayable != nullptr) {
        answerUnplayable(search, unplayable);
    } else {
        think(search, session.gameHistory.current());
    }
    session.running.pop_back();
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
            go.searchMoves.emplace_back(words[i]);
        }
    }
    return go;
}

GoPlan planGo(const GoParameters& go, const GoContext& context) {
    GoPlan plan;
    plan.hardLimitPercent = context.hardLimitPercent;
    SearchLimits& limits = plan.limits;
    limits.ponder = isPondering(go);
    limits.forget = context.deterministic;
    limits.hashOff = context.hashMegabytes == 0;
    limits.ranks = std::clamp(context.multiPv, 1, mostPvs);
    limits.depth = go.depth;
    limits.uninterruptedNodes = context.uninterruptedNodes;
    if (go.nodeLimit >= 0) limits.nodes = static_cast<std::uint64_t>(go.nodeLimit);
    if (!go.searchMoves.empty()) limits.searchMoves = namedMoves(context.position, go.searchMoves);
    if (go.depth > 0 || go.infinite) return plan; // no time goal
    if (go.moveTime != 0.0) {
        limits.fixedTime = true;
        limits.goalSeconds = limits.hardSeconds = go.moveTime;
    } else if (go.nodeLimit < 0) {
        shareClock(plan, go, context);
    }
    return plan;
}

void goCommand(Session& session, const Words& words) {
    constexpr std::size_t mostRunning = 3;
    if (session.running.size() >= mostRunning) {
        std::printf("info string go ignored: %zu searches are running\n", mostRunning);
        return;
    }
    const GoParameters go = readGoParameters(words);
    const Position& position = session.gameHistory.current();
    const char* const unplayable = unplayableReason(position);
    GoPlan plan;
    if (unplayable == nullptr) {
        plan = planGo(go, {.position = position,
                           .overheadMilliseconds = protocolSettings.moveOverheadMilliseconds,
                           .multiPv = searchSettings.multiPv,
                           .deterministic = searchSettings.deterministic != 0,
                           .hashMegabytes = searchSettings.hashMegabytes,
                           .hardLimitPercent = session.hardLimitPercent,
                           .uninterruptedNodes = session.uninterruptedNodes});
        session.hardLimitPercent = plan.hardLimitPercent;
        tellTime(go, plan);
    } else {
        plan.limits.ponder = isPondering(go);
    }
    runSearch(session, plan, unplayable);
}

} // namespace helvan
