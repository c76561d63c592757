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

// The lines to both kings, looked up once where many moves of a position are to be tested.
struct KingLines {
    // inCheck: whether the side to move is.
    KingLines(const Position& position, bool inCheck);

    // givesCheck above, of a move of this type of piece, and moverLeftInCheck of a child of the same position, sooner.
    bool givesCheck(const Position& position, Move move, PieceType mover) const;
    bool leavesInCheck(const Position& child) const;

    Bitboard exposed;    // exposedSquares of the side to move
    Bitboard uncovering; // squares of the only piece between the enemy king and a slider of the side to move
    Bitboard checking[phantom + 1] = {}; // by type, the squares from which a piece would attack the enemy king
    bool oneEnemyKing;
};

} // namespace helvan
