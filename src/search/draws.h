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

// What a draw is worth to the side that moves at the ply: the option for whoever moves at the root and its negative for
// the other where the draw stands on the board already (recognised draws, and all draws in the quiescence search), the
// other way round where a move makes it.
inline int drawScoreAt(int ply) { return ply % 2 == 0 ? usedDrawScore() : -usedDrawScore(); }

} // namespace helvan
