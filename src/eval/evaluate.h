// SPDX-License-Identifier: MIT
//
// The static evaluation: what a quiet position is worth without search.
#pragma once

#include "board/position.h"

namespace helvan {

// The full-board phase: at it the opening values count alone, at 0 the endgame values.
inline constexpr int fullPhase = 96;

// Evaluations stay within this, well clear of the mate scores.
inline constexpr int largestEvaluation = 31000;

// Centipawns from the side to move's point of view: the material and piece-square sum of the position, whose
// pstScore and phase must be up to date, blended by the phase.
int evaluate(const Position& position);

} // namespace helvan
