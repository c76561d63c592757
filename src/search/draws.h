// SPDX-License-Identifier: MIT
//
// Draws: by the rules of the game, and by material that cannot win.
#pragma once

#include "board/position.h"

namespace helvan {

// Whether the position, just reached by a move, counts as drawn: after more than 99 plies without capture, pawn move
// or castling, or when it stood on the board 4, 6, ... plies ago since the last such move.
bool drawnByRule(const Position& position);

// Whether nobody has the material to win: bare kings, one minor piece, one each, or two knights on one side. Never
// while this position or the one before it is in check, nor less than 3 plies from the root.
bool recognisedDraw(const Position& position, int ply);

// The option "Drawscore", kept clear of the mates.
int usedDrawScore();

} // namespace helvan
