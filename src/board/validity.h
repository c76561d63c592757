// SPDX-License-Identifier: MIT
//
// What setup from text does not ask: whether a position is one that chess can be played from.
#pragma once

#include "board/position.h"

namespace helvan {

// Why the position cannot be played from, in a few words ("white has no king"), or null if it can.
const char* unplayableReason(const Position& position);

// Withdraws every castling right whose king or rook is not on its square: touches that square and computes the
// key anew.
void dropUnfoundedCastlingRights(Position& position);

} // namespace helvan
