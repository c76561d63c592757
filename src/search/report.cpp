// SPDX-License-Identifier: MIT
#include "search/report.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <limits>

#include "board/bits.h"
#include "board/move_text.h"
#include "platform/log.h"
#include "search/stopping.h"

namespace helvan {

namespace {

// Whole milliseconds; a search of 25 days stays at the largest number.
int milliseconds(double seconds) {
    return static_cast<int>(std::min(seconds * 1000, static_cast<double>(std::numeric_limits<int>::max())));
}

// Of the search, fit to be divided by.
double elapsedSeconds(const Search& search) { return std::max(searchSeconds(search), shortestSeconds); }

void printIterationStart(int depth) { std::printf("info depth %d\n", depth); }

void printCurrentMove(Move move, int number) {
    std::printf("info currmove %s currmovenumber %d\n", moveText(move).c_str(), number);
    std::fflush(stdout);
}

void printLine(const Search& search, int depth, int score, const Move* pv) {
    const double elapsed = elapsedSeconds(search);
    std::printf("info depth %d ", depth);
    std::printf("time %d ", milliseconds(elapsed));
    std::printf("nodes %" PRIu64 " ", search.nodes);
    std::printf("score %s ", scoreText(score).c_str());
    std::printf("nps %" PRIu64 " ", static_cast<std::uint64_t>(static_cast<double>(search.nodes) / elapsed));
    std::printf("pv %s\n", pvText(pv).c_str());
    std::fflush(stdout);
}

void printRank(int rank, int depth, const PvLine& line) {
    const double seconds = line.milliseconds / 1000.0 + shortestSeconds;
    std::printf("info multipv %d score cp %d depth %d time %d nodes %" PRIu64 " nps %" PRIu64 " pv %s\n", rank,
                line.score, depth, line.milliseconds, line.nodes,
                static_cast<std::uint64_t>(static_cast<double>(line.nodes) / seconds), pvText(line.pv).c_str());
    std::fflush(stdout);
}

void logEtableStatistics(const Search& search) {
    if (!logIsOpen()) return;
    const EvalCaches& caches = search.tables.evalCaches;
    const double share =
        static_cast<double>(caches.etableHits) / static_cast<double>(std::max<std::uint64_t>(caches.etableProbes, 1));
    logWrite("\nEtable statistics: %12" PRIu64 " hits  %12" PRIu64 " probes   Rate = %8.3f percent\n",
             caches.etableHits, caches.etableProbes, 100.0 * share);
}

// "info nodes" and "bestmove" with its ponder move, if the line has a second move; "ZZZZ" stands for the move
// of an empty line. Copies go to the log, that of "info nodes" only with a ponder move, deliberately.
void printBestMove(const Search& search, const Move* pv) {
    const std::string best = pv[0] == nullMove ? "ZZZZ" : moveText(pv[0]);
    const bool ponders = pv[0] != nullMove && pv[1] != nullMove;
    std::printf("info nodes %" PRIu64 "\n", search.nodes);
    if (ponders) {
        const std::string ponder = moveText(pv[1]);
        std::printf("bestmove %s ponder %s\n", best.c_str(), ponder.c_str());
        logWrite("info nodes %" PRIu64 "\n", search.nodes);
        logWrite("bestmove %s ponder %s\n", best.c_str(), ponder.c_str());
    } else {
        logWrite("bestmove %s\n", best.c_str());
        std::printf("bestmove %s\n", best.c_str());
    }
    std::fflush(stdout);
}

} // namespace

std::string scoreText(int score) {
    const int size = absolute(score);
    if (size <= mateBorder) return "cp " + std::to_string(score);
    const int moves = score > 0 ? (mateScore - score) / 2 + 1 : -((mateScore - 1 - size) / 2) - 1;
    return "mate " + std::to_string(moves);
}

std::string pvText(const Move* pv) {
    std::string text;
    for (int i = 0; i < pvCapacity && pv[i] != nullMove; ++i) {
        if (i > 0) text += ' ';
        text += moveText(pv[i]);
    }
    return text;
}

int searchMilliseconds(const Search& search) { return milliseconds(std::max(searchSeconds(search), 0.0)); }

void logTableHead() {
    logWrite("DEPTH      TIME         NODES      KNPS    SCORE   PRINCIPAL VARIATION\n");
    logWrite("-----  --------  ------------  --------  -------   -------------------------------------------------\n");
}

void logTableRow(const Search& search, int depth, int score, const Move* pv) {
    if (!logIsOpen()) return;
    const double elapsed = elapsedSeconds(search);
    logWrite("%5d  %8.1f  %12" PRIu64 "  %8.1f  %7.2f   %s\n", depth, elapsed, search.nodes,
             static_cast<double>(search.nodes) / 1000 / elapsed, score / 100.0, pvText(pv).c_str());
}

Reporter uciReporter() {
    return {.iterationBegins = printIterationStart,
            .moveBegins = printCurrentMove,
            .lineFound = printLine,
            .rankFound = printRank,
            .iterationEnds = printLine,
            .searchEnds = logEtableStatistics,
            .answers = printBestMove};
}

Reporter recordingReporter(std::vector<IterationRecord>& records) {
    Reporter reporter;
    reporter.iterationEnds = [&records](const Search& search, int /*depth*/, int score, const Move* pv) {
        records.push_back({elapsedSeconds(search), search.nodes, score, pv[0]});
    };
    return reporter;
}

} // namespace helvan
