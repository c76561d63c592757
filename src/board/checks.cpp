// SPDX-License-Identifier: MIT
#include "board/checks.h"

#include "board/attacks.h"
#include "board/moves.h"

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
        if ((pawnAttacksFrom[us][to] & enemyKing) != 0) return true;
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

KingLines::KingLines(const Position& position, bool inCheck) {
    const Colour us = position.sideToMove();
    const Bitboard enemy = position.of(opponent(us), king);
    exposed = exposedSquares(position, us, inCheck);
    oneEnemyKing = popCount(enemy) == 1;
    if (!oneEnemyKing) return;
    const Square square = lowestBit(enemy);
    uncovering = loneBlockers(position, square, us);
    checking[pawn] = pawnAttacks(opponent(us), enemy);
    checking[knight] = knightAttacks[square];
    checking[bishop] = bishopAttacks(square, position.occupied());
    checking[rook] = rookAttacks(square, position.occupied());
    checking[queen] = checking[bishop] | checking[rook];
}

bool KingLines::givesCheck(const Position& position, Move move, PieceType mover) const {
    const Square from = moveFrom(move);
    // Moves that empty or fill more than their own two squares, and those that may uncover a line, take the long way.
    if (!oneEnemyKing || moveKind(move) > doublePush || (uncovering & bit(from)) != 0) {
        return helvan::givesCheck(position, move);
    }
    return (checking[mover] & bit(moveTo(move))) != 0;
}

bool KingLines::leavesInCheck(const Position& child) const {
    const bool safe = moveKind(child.lastMove) != enPassant && (exposed & bit(moveFrom(child.lastMove))) == 0;
    return !safe && moverLeftInCheck(child);
}

} // namespace helvan
