// SPDX-License-Identifier: MIT
//
// The moves that the rules allow.
#pragma once

#include "board/position.h"

namespace helvan {

// Writes the moves of allMoves after which the mover's king is not attacked, and answers their number. The buffer
// holds maxMoves moves.
int legalMoves(const Position& position, Move* out);

} // namespace helvan
