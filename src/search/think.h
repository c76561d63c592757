// SPDX-License-Identifier: MIT
//
// The search's one entry: iterative deepening.
#pragma once

#include "search/search.h"

namespace helvan {

// Searches the position deeper and deeper within the limits of a fresh record, tells the reporter of every finished
// iteration, and answers with the best line of the last one. The position has one king of each colour, and the side not
// to move is not in check. Works on a copy: a command in the middle may replace the game's positions. Without named
// moves a move of the search's book is answered at once, with a score of 0. Without a legal or wanted move the line is
// empty.
PvLine think(Search& search, const Position& gamePosition);

} // namespace helvan
