// SPDX-License-Identifier: MIT
#include "board/validity.h"

#include "board/attacks.h"
#include "board/castling.h"

namespace helvan {

const char* unplayableReason(const Position& position) {
    const int whiteKings = popCount(position.of(white, king));
    const int blackKings = popCount(position.of(black, king));
    if (whiteKings == 0) return "white has no king";
    if (blackKings == 0) return "black has no king";
    if (whiteKings > 1) return "white has more than one king";
    if (blackKings > 1) return "black has more than one king";
    const Bitboard pawns = position.of(white, pawn) | position.of(black, pawn);
    if ((pawns & (rank1 | rank8)) != 0) return "a pawn stands on the first or last rank";
    if (inCheck(position, opponent(position.sideToMove())) != 0) return "the side not to move is in check";
    return nullptr;
}

void dropUnfoundedCastlingRights(Position& position) {
    // A touched square withdraws every right that needs it, so each home square without its piece is touched.
    for (const CastlingRight& right : castlingRights) {
        position.touched |= bit(right.kingFrom) & ~position.of(right.colour, king);
        position.touched |= bit(right.rookFrom) & ~position.of(right.colour, rook);
    }
    position.key = keyOf(position);
}

} // namespace helvan
