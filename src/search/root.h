// SPDX-License-Identifier: MIT
//
// The search of the root: keeps the ordered list of its moves from iteration to iteration.
#pragma once

#include <cstdint>
#include <vector>

#include "board/moves.h"
#include "search/search.h"

namespace helvan {

struct RootMove {
    Move move;
    std::int32_t orderScore; // set before the first iteration
    std::uint64_t nodes;     // below the move when it was last searched
};

struct RootMoves {
    RootMove list[maxMoves];
    int count = 0;
    int extensionCarry = 0; // the odd quarter-ply left over from move to move
};

// Nodes spent in an iteration below the best move and below all others.
struct NodeShares {
    std::uint64_t best = 0;
    std::uint64_t others = 0;
};

struct Window {
    int alpha;
    int beta;

    int width() const { return beta - alpha; }
};

inline constexpr Window fullWindow = {-infiniteScore, infiniteScore};

// What one search keeps of its root from call to call of searchRoot.
struct RootSearch {
    Position position;
    RootMoves moves;
    std::vector<Move> wanted; // of these moves only those are searched
    NodeShares shares;        // raised by each call
    Move pv[pvCapacity] = {}; // the best line of the last call, ended by a 0
};

// Searches the root for an iteration (1, 2, ...) in the window and answers the score in centipawns; 0 when the search
// is stopped. At the first iteration the list of moves is made and the node count set to 0. Without a legal move:
// mated, or 0 for stalemate, and an empty line; without a wanted one -infiniteScore and an empty line.
int searchRoot(Search& search, RootSearch& root, int iteration, Window window);

} // namespace helvan
