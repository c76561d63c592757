// SPDX-License-Identifier: MIT
//
// Whether a move gives check, found without making it.
#pragma once

#include "board/position.h"

namespace helvan {

// Whether the pseudo-legal move of the side to move attacks the enemy king, directly or by uncovering a line.
// A king that steps beside the enemy king, which no legal move does, gives none. The null move and boards
// without an enemy king: false.
bool givesCheck(const Position& position, Move move);

} // namespace helvan
