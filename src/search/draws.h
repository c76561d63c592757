// SPDX-License-Identifier: MIT
//
// Draws by the rules of the game.
#pragma once

#include "board/position.h"

namespace helvan {

// Whether the position, just reached by a move, counts as drawn: after more than 99 plies without capture,
// pawn move or castling, or when it stood on the board 4, 6, ... plies ago since the last such move.
bool drawnByRule(const Position& position);

} // namespace helvan
