// SPDX-License-Identifier: MIT
#include "search/stopping.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace helvan {

namespace {

constexpr std::uint32_t checkMask = 255; // the periodic check looks around every 256th call
constexpr int softLimitPercent = 75;

// A search that lasts gives a share of its time to the pages of its table, one piece after another: what it stores on
// huge ones it finds again sooner. A short one has no time for that, nor has the end of a long one.
void claimNowAndThen(Search& search) {
    constexpr double leastSeconds = 0.5; // of the search so far
    constexpr double pauseInPieces = 4.0, endInPieces = 20.0;
    const double begin = now();
    if (begin < search.nextClaim || begin - search.searchStartTime < leastSeconds) return;
    if (search.hardDeadline - begin < endInPieces * search.pieceSeconds) return;
    if (!search.tables.transpositionTable.claimPages()) return;
    const double end = now();
    search.pieceSeconds = end - begin;
    search.nextClaim = end + pauseInPieces * search.pieceSeconds;
}

void pollOnce(Search& search) {
    if (search.poll) search.poll();
    updateNodeOverride(search); // "ponderhit" may have come
}

bool limitReached(const Search& search) { return search.nodes >= search.limits.nodes || now() >= search.hardDeadline; }

} // namespace

double searchSeconds(const Search& search) { return now() - search.searchStartTime; }

void setDeadlines(Search& search) {
    const SearchLimits& limits = search.limits;
    search.hardDeadline = search.searchStartTime + limits.hardSeconds;
    const double share = limits.fixedTime ? 1.0 : softLimitPercent / 100.0;
    search.softDeadline = std::min(search.searchStartTime + share * limits.goalSeconds, search.hardDeadline);
}

void updateNodeOverride(Search& search) { search.ignoresNodeLimit = search.firstIteration || search.pondering; }

bool searchMustStop(Search& search) {
    if (search.stopSearch) return true;
    ++search.checkCounter;
    if ((search.checkCounter & checkMask) != 0) return false;
    if (search.firstIteration && search.nodes < search.limits.uninterruptedNodes) return false;
    pollOnce(search);
    const bool limited = !search.pondering; // else even a "stop" acts at the next call only
    if (limited && !search.stopSearch && limitReached(search)) search.stopSearch = true;
    if (!search.stopSearch) claimNowAndThen(search);
    return limited && search.stopSearch;
}

void waitWhilePondering(Search& search) {
    while (!search.stopSearch && search.poll) {
        pollOnce(search);
        if (!search.pondering) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace helvan
