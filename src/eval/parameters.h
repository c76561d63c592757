// SPDX-License-Identifier: MIT
//
// What the evaluation knows, as data. Values are in thousandths of a pawn, as (opening, endgame) pairs.
#pragma once

#include <array>

#include "board/packed_score.h"

namespace helvan {

// The option "King Safety Aggressiveness".
inline int kingSafetyAggressiveness = 6;

// By piece type.
inline std::array<PackedScore, 8> materialValues = {PackedScore{},      packed(600, 800),   packed(2800, 3100),
                                                    packed(2880, 3200), packed(4100, 5100), packed(8000, 9600),
                                                    PackedScore{},      PackedScore{}};

// What a step towards the centre is worth to a piece, by type: counted along ranks and files from the edge, 0
// to 3 each. The king's opening value is negative: it keeps away from the centre until the endgame.
inline std::array<PackedScore, 8> centralStepValues = {PackedScore{}, packed(25, 10), packed(60, 50),  packed(40, 30),
                                                       packed(15, 0), packed(10, 30), packed(-80, 70), PackedScore{}};

// What each rank that a pawn has advanced is worth.
inline PackedScore pawnAdvanceValue = packed(15, 60);

} // namespace helvan
