// SPDX-License-Identifier: MIT
//
// The search of the root: keeps the ordered list of its moves from iteration to iteration.
#pragma once

#include <cstdint>
#include <string>

#include "board/moves.h"
#include "board/position.h"

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

// What one search keeps from call to call of searchRoot.
struct RootSearch {
    RootMoves moves;
    int ranks = 1; // lines asked for: with several, none is printed before the iteration ends
};

// Searches the root for the iteration depth / 2 (half-plies, even) in the window (alpha, beta) and answers the score
// in centipawns; 0 when the search is stopped. At the first iteration the list of moves is made and the node counter
// set to 0. Only the moves named in moveWords, separated by blanks, are searched; none named: all. pvOut, pvCapacity
// moves long, receives the best line. Without a legal move: mated, or 0 for stalemate, and an empty line; without a
// named one -infiniteScore and an empty line.
int searchRoot(RootSearch& search, Position& position, int depth, int alpha, int beta, Move* pvOut,
               const std::string& moveWords, NodeShares& shares);

// Whether the blank-separated words hold the move's text; no words stand for every move.
bool isNamed(const std::string& words, Move move);

} // namespace helvan
