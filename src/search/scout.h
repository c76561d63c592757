// SPDX-License-Identifier: MIT
//
// The zero-window search of all nodes off the principal variation: does the score reach beta or not? All selectivity
// lives here.
#pragma once

#include "search/search.h"

namespace helvan {

// Searches depth half-plies deep and answers a score in centipawns for the side to move: beta or more when the node
// fails high, less when it fails low; 0 when the search is stopped. ply counts from the root. pvOut, pvCapacity moves
// long, receives the best line, ended by a 0.
//   excludedMove  left out, to see whether the others reach beta without it; 0 for none
//   noNull        neither a null move nor a static cut-off in its place: the node comes right after a null move, or
//                 belongs to a singular test on the principal variation
// The position's inCheck is true to the board; its evalScratch and search bytes are written.
int searchScout(Search& search, Position& position, int beta, int depth, int ply, Move* pvOut,
                Move excludedMove = nullMove, bool noNull = false);

// The score that the position's other moves than the hash move reach, told by a search with bound beta. depth is the
// node's own: the search is less deep (singularDepth). noNull as above.
int searchWithoutMove(Search& search, Position& position, int beta, int depth, int ply, Move hashMove, bool noNull);

} // namespace helvan
