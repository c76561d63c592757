// SPDX-License-Identifier: MIT
//
// The working record of one evaluation, which every term reads and adds to.
#pragma once

#include "board/packed_score.h"
#include "board/position.h"
#include "eval/eval_caches.h"

namespace helvan {

struct Evaluation {
    explicit Evaluation(const Position& evaluated) : position(evaluated), occupied(evaluated.occupied()) {}

    const Position& position;
    Bitboard occupied;
    const PawnEntry* pawns = nullptr;
    PackedScore credit[2]; // by colour, what its terms have brought so far
    Square kingSquare[2];
    int pawnCount[2];
    // By colour and piece type: the squares that its pieces of the type attack. Pawns, knights and kings are written
    // before all terms, the others by the terms of their pieces; slot 0 is unused.
    Bitboard attacks[2][boardsPerColour];
    int pieceWeight[2] = {}; // the sum of pieceWeights
    int pieceCount[2] = {};  // without pawns and king
    int kingUnits[2] = {};   // of attack by the colour on the enemy king
};

} // namespace helvan
