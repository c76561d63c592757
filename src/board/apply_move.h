// SPDX-License-Identifier: MIT
//
// Playing a move that is given as text.
#pragma once

#include "board/position.h"

namespace helvan {

// Makes the first pseudo-legal move of the parent whose coordinate text equals the given one, whatever the
// case of its letters, into the child, and stores whether that is in check. Answers 1, or 0 with the child
// untouched when no move has that text. A move that leaves the mover in check is made like any other.
int applyMoveText(const Position& parent, Position& child, const char* text);

} // namespace helvan
