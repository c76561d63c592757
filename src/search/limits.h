// SPDX-License-Identifier: MIT
//
// What a search is asked for: everything that a "go" says, worked out beforehand.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "board/types.h"
#include "search/settings.h"

namespace helvan {

inline constexpr std::uint64_t unlimitedNodes = ~std::uint64_t{0};
inline constexpr double unlimitedSeconds = std::numeric_limits<double>::infinity();

// Depth 1 is not interrupted so that every search has a move to answer with. On a board full of queens it could go
// on for ever, so it may be after this many nodes, a tenth of a second or less. Positions from games need some
// hundreds, 1,343 at most among the bench's.
inline constexpr std::uint64_t usualUninterruptedNodes = 100'000;

struct SearchLimits {
    int depth = maxDepth; // iterations; anything outside 1..maxDepth means maxDepth
    std::uint64_t nodes = unlimitedNodes;
    double goalSeconds = unlimitedSeconds; // what the search may take if nothing unusual happens
    double hardSeconds = unlimitedSeconds; // what it may take at the very most
    bool fixedTime = false;                // the goal is exact: the search uses all of it, whatever it finds
    bool hashOff = false;                  // the option "Hash" is 0: what the search learns is not for the next one
    bool ponder = false;                   // no limit but "stop" ends it before "ponderhit"
    bool forget = false;                   // begins with empty tables, so that equal searches are equal
    int ranks = 1;                         // how many lines, best first; 1..mostPvs
    // The root moves to search, all legal; empty: every legal one. A list without moves leaves nothing to search.
    std::optional<std::vector<Move>> searchMoves = std::nullopt;
    std::uint64_t uninterruptedNodes = usualUninterruptedNodes;
};

} // namespace helvan
