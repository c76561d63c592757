// SPDX-License-Identifier: MIT
//
// The search of nodes on the principal variation, whose window is open.
#pragma once

#include "search/search.h"

namespace helvan {

// Searches depth half-plies deep in the window (alpha, beta) and answers the score in centipawns for the side to
// move; 0 when the search is stopped. ply counts from the root. pvOut, pvCapacity moves long, receives the best line,
// ended by a 0. The position's inCheck is true to the board; its evalScratch and search bytes are written.
int searchPv(Search& search, Position& position, int alpha, int beta, int depth, int ply, Move* pvOut);

} // namespace helvan
