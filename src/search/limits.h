// SPDX-License-Identifier: MIT
//
// When a search stops: the clock, the node limit, the flags that commands set, and the periodic check that
// every search routine makes. All of it belongs to the main thread, which also carries out the commands.
#pragma once

#include <cstdint>
#include <limits>

#include "board/node_counter.h"

namespace helvan {

// An allotment that means "no time goal": a year of 366 days.
inline constexpr double noTimeGoalSeconds = 31622400.0;

// Elapsed times that are divided by are at least this.
inline constexpr double shortestSeconds = 0.0001;

inline constexpr double unlimitedSeconds = std::numeric_limits<double>::infinity();

struct SearchState {
    double searchStartTime = 0.0;           // all times in seconds on the clock of now()
    double hardDeadline = unlimitedSeconds; // the search is broken off when it is passed
    double softDeadline = unlimitedSeconds; // no iteration starts after it
    double fixedMoveTime = 0.0;             // seconds of "go movetime", else 0
    double hardLimit = unlimitedSeconds;    // seconds from the start to the hard deadline when the clock is shared out
    int timeUp = 0;                         // 1 once an iteration ended after the soft deadline
    int pondering = 0;      // 1 under "go ponder" and "go infinite" until "ponderhit": no limit stops it
    int firstIteration = 0; // 1 while depth 1 is searched, which is not interrupted
};

inline SearchState searchState;

// The hard limit as a share of the allotment, in percent. Keeps its value from search to search.
inline int hardLimitPercent = 500;

// Depth 1 is not interrupted so that every search has a move to answer with. On a board full of queens it could go on
// for ever, so it may be after this many nodes, a tenth of a second or less. Positions from games need some
// hundreds, 1,343 at most among the bench's.
inline std::uint64_t uninterruptedNodes = 100'000;

// Handles one waiting command; null where nobody listens (batch modes, tests).
inline void (*pollInput)() = nullptr;

inline double totalMoveTime = 0.0; // seconds of all searches so far

// 1 lets the clock tick in whole seconds. Nothing sets it.
inline int wholeSecondClock = 0;

// Seconds on a clock that never steps back, cut to whole ones if asked for.
double now(int wholeSeconds = wholeSecondClock);

// Since the search began.
double searchSeconds();

// Sets both deadlines from the start time and the allotment in seconds.
void setDeadlines(double allotted);

// Decides whether make-move may count nodes beyond the limit: in the first iteration and while pondering.
void updateNodeOverride();

// Starts the periodic check's count anew, so that equal searches stop at equal nodes.
void resetCheckCounter();

// The check at the start of every call of a search routine: true means "return 0 at once". Every 256th call
// handles a waiting command and tests node limit and clock; a long search claims pages of its table now and then, too.
bool searchMustStop();

// Handles commands until "stop", or until no longer pondering: at least one, unless the search has been stopped, by
// whatever: what comes after a "stop" is to be carried out after the answer.
void waitWhilePondering();

// Whether a search runs, in whose middle a command may be carried out.
bool isSearching();

// Marks the running search and every one that it interrupted as stopped: the command "stop".
void stopAllSearches();

// The process-wide state of one search. A "go" that arrives in the middle of a search runs inside it: while this object
// lives the new search has searchState and nodeCounter for itself, without limits at first; then the interrupted one
// gets its own back.
class SearchScope {
public:
    SearchScope();
    ~SearchScope();
    SearchScope(const SearchScope&) = delete;
    SearchScope& operator=(const SearchScope&) = delete;

    static constexpr int maxNested = 2; // searches inside the outermost one
    static bool mayBegin();             // whether one more may begin

private:
    SearchState outerState;
    NodeCounter outerCounter;
};

} // namespace helvan
