// SPDX-License-Identifier: MIT
#include "search/limits.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "search/transposition_table.h"

namespace helvan {

namespace {

constexpr std::uint32_t checkMask = 255; // the periodic check looks around every 256th call
constexpr int softLimitPercent = 75;

std::uint32_t checkCounter = 0;
int runningSearches = 0;
bool allStopped = false; // "stop" has come since the outermost search began

double nextClaim = 0.0;     // on the clock of now()
double pieceSeconds = 0.01; // that the last one took; a slow system's at first

// A search that lasts gives a share of its time to the pages of its table, one piece after another: what it stores on
// huge ones it finds again sooner. A short one has no time for that, nor has the end of a long one.
void claimNowAndThen() {
    constexpr double leastSeconds = 0.5; // of the search so far
    constexpr double pauseInPieces = 4.0, endInPieces = 20.0;
    const double begin = now();
    if (begin < nextClaim || begin - searchState.searchStartTime < leastSeconds) return;
    if (searchState.hardDeadline - begin < endInPieces * pieceSeconds || !transpositionTable.claimPages()) return;
    const double end = now();
    pieceSeconds = end - begin;
    nextClaim = end + pauseInPieces * pieceSeconds;
}

void pollOnce() {
    if (pollInput != nullptr) pollInput();
    updateNodeOverride(); // "ponderhit" may have come
}

bool limitReached() { return nodeCounter.count >= nodeCounter.limit || now() >= searchState.hardDeadline; }

} // namespace

double now(int wholeSeconds) {
    const std::chrono::duration<double> sinceEpoch = std::chrono::steady_clock::now().time_since_epoch();
    return wholeSeconds != 0 ? std::floor(sinceEpoch.count()) : sinceEpoch.count();
}

double searchSeconds() { return now() - searchState.searchStartTime; }

void setDeadlines(double allotted) {
    const double start = searchState.searchStartTime;
    if (searchState.fixedMoveTime != 0.0) {
        searchState.hardDeadline = start + allotted;
        searchState.softDeadline = searchState.hardDeadline;
    } else if (allotted >= noTimeGoalSeconds) {
        searchState.hardDeadline = unlimitedSeconds;
        searchState.softDeadline = searchState.hardDeadline;
    } else {
        searchState.hardDeadline = start + searchState.hardLimit;
        searchState.softDeadline = std::min(start + softLimitPercent / 100.0 * allotted, searchState.hardDeadline);
    }
}

void updateNodeOverride() {
    nodeCounter.overrideLimit = searchState.firstIteration != 0 || searchState.pondering != 0 ? 1 : 0;
}

void resetCheckCounter() { checkCounter = 0; }

bool searchMustStop() {
    if (nodeCounter.stopSearch != 0) return true;
    ++checkCounter;
    if ((checkCounter & checkMask) != 0) return false;
    if (searchState.firstIteration != 0 && nodeCounter.count < uninterruptedNodes) return false;
    pollOnce();
    const bool limited = searchState.pondering == 0; // else even a "stop" acts at the next call only
    if (limited && nodeCounter.stopSearch == 0 && limitReached()) nodeCounter.stopSearch = 1;
    if (nodeCounter.stopSearch == 0) claimNowAndThen();
    return limited && nodeCounter.stopSearch != 0;
}

void waitWhilePondering() {
    while (nodeCounter.stopSearch == 0) {
        pollOnce();
        if (searchState.pondering == 0) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

bool isSearching() { return runningSearches > 0; }

void stopAllSearches() {
    nodeCounter.stopSearch = 1;
    allStopped = true;
}

SearchScope::SearchScope() : outerState(searchState), outerCounter(nodeCounter) {
    if (runningSearches == 0) allStopped = false;
    ++runningSearches;
    searchState = SearchState{};
    nodeCounter = NodeCounter{};
}

SearchScope::~SearchScope() {
    --runningSearches;
    searchState = outerState;
    nodeCounter = outerCounter;
    if (allStopped) nodeCounter.stopSearch = 1;
}

bool SearchScope::mayBegin() { return runningSearches <= maxNested; }

} // namespace helvan
