// SPDX-License-Identifier: MIT
//
// The search of every node below the root.
#pragma once

#include "board/position.h"

namespace helvan {

// Searches depth plies deep in the window (alpha, beta) and answers the score for the side to move; 0 when the
// search is stopped. The position's inCheck must be true to the board. pvOut, pvCapacity moves long, receives
// the best line, ended by a 0.
int searchNode(const Position& position, int alpha, int beta, int depth, int ply, Move* pvOut);

// Writes the move and the line behind it, cut to pvCapacity.
void joinPv(Move* pvOut, Move move, const Move* line);

} // namespace helvan
