// SPDX-License-Identifier: MIT
//
// The quiescence search: plays out captures, so that only quiet positions are evaluated.
#pragma once

#include "board/position.h"

namespace helvan {

// The score of the position in the window (alpha, beta), for the side to move; 0 when the search is stopped.
int quiesce(const Position& position, int alpha, int beta, int ply);

} // namespace helvan
