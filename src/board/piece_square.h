// SPDX-License-Identifier: MIT
//
// The piece-square table that advance keeps sums of. Its storage lives here so that the board needs nothing
// of the evaluation, which fills it.
#pragma once

#include <array>

#include "board/packed_score.h"
#include "board/position.h"
#include "board/types.h"

namespace helvan {

// By pieceIndex, in thousandths of a pawn, from white's point of view: black's entries are negated. All zero
// until the evaluation fills it.
inline std::array<PackedScore, pieceTableSize> pieceSquareTable{};

// The piece-square sum of the position computed anew, of all pieces or of one colour's.
PackedScore pstOf(const Position& position);
PackedScore pstOf(const Position& position, Colour colour);

// Computes pstScore and phase anew. Setup from text leaves both 0, so a search calls this first.
void refreshPieceSums(Position& position);

} // namespace helvan
