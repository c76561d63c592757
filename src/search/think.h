// SPDX-License-Identifier: MIT
//
// The search's one entry.
#pragma once

#include <string>

#include "board/position.h"

namespace helvan {

// Searches the position deeper and deeper, reports every finished iteration and answers with "bestmove" on
// standard output. Works on a copy: a command that arrives in the middle may replace the game's positions.
//   allotted     seconds, or noTimeGoalSeconds
//   depthLimit   iterations; anything outside 1..maxDepth means maxDepth
//   searchMoves  the root moves to search as texts separated by blanks; empty for all
// Node limit, pondering and fixedMoveTime are set beforehand in nodeCounter and searchState. The side not to
// move must not be in check. Answers the score of the last finished iteration in centipawns.
int think(const Position& gamePosition, double allotted, int depthLimit, std::string searchMoves);

} // namespace helvan
