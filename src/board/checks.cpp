// SPDX-License-Identifier: MIT
#include "board/checks.h"

#include "board/attacks.h"

namespace helvan {

bool givesCheck(const Position& position, Move move) {
    const Colour us = position.sideToMove();
    const Bitboard enemyKing = position.of(opponent(us), king);
    if (move == nullMove || enemyKing == 0) return false;
    const Square kingSquare = lowestBit(enemyKing);
    const Square from = moveFrom(move);
    const Square to = moveTo(move);
    const int kind = moveKind(move);
    Bitboard occupied = (position.occupied() & ~bit(from)) | bit(to);

    if (kind == castling) {
        const Square rookTo = castlingRookTo(from, to);
        occupied = (occupied & ~bit(castlingRookFrom(to))) | bit(rookTo);
        return (rookAttacks(rookTo, occupied) & enemyKing) != 0;
    }

    const PieceType moved = isPromotion(move) ? promotedType(kind) : pieceTypeAt(position, us, from);
    if (moved == pawn) {
        if ((pawnAttacks(us, bit(to)) & enemyKing) != 0) return true;
    } else if (moved != king) {
        if ((pieceAttacks(moved, to, occupied) & enemyKing) != 0) return true;
    }

    // A line to the king can only open where a square on it is emptied.
    Bitboard emptied = bit(from);
    if (kind == enPassant) {
        emptied |= bit(enPassantVictim(move));
        occupied &= ~bit(enPassantVictim(move));
    }
    if ((queenLines[kingSquare] & emptied) == 0) return false;
    return (bishopAttacks(kingSquare, occupied) & position.diagonalSliders(us) & ~bit(from)) != 0 ||
           (rookAttacks(kingSquare, occupied) & position.straightSliders(us) & ~bit(from)) != 0;
}

} // namespace helvan
