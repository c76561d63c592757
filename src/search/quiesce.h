// SPDX-License-Identifier: MIT
//
// The quiescence search: plays out captures, and checks near the horizon, so that only quiet positions are evaluated.
#pragma once

#include "search/search.h"

namespace helvan {

// The score in centipawns of the position in the window (alpha, beta), for the side to move; 0 when the search is
// stopped. quiescenceDepth is 0 where the main search ends and falls by 2 a level; ply counts from the root. The
// position's inCheck is true to the board; its evalScratch is written. pvOut receives the best move, if any, and a 0.
int quiesce(Search& search, Position& position, int alpha, int beta, int quiescenceDepth, int ply, Move* pvOut);

} // namespace helvan
