// SPDX-License-Identifier: MIT
#include "board/moves.h"

#include "board/attacks.h"
#include "board/castling.h"
#include "board/generate.h"
#include "board/geometry.h"

namespace helvan {

int allMoves(const Position& position, Move* out) {
    const Colour us = position.sideToMove();
    const Bitboard enemies = position.of(opponent(us), allPieces);
    const Bitboard empty = ~position.occupied();
    int count = castlingMoves(position, us, out);
    const auto add = [&](Move move, PieceType) {
        if (count < maxMoves) out[count++] = move;
    };
    generatePawnTactics(position, enemies, empty, add);
    generateEnPassant(position, add);
    generatePawnPushes(position, empty, add);
    generateDoublePushes(position, empty, add);
    generatePieces(position, enemies | empty, add);
    generateKing(position, enemies | empty, add);
    generateUnderPromotions(position, enemies, empty, add);
    return count;
}

int castlingMoves(const Position& position, Colour colour, Move* out) {
    const CastlingRight* const rights = &castlingRights[2 * colour];
    const Bitboard occupied = position.occupied();
    const auto allowed = [&](const CastlingRight& right) {
        return stands(right, position.touched) && (occupied & right.empty) == 0;
    };
    if (!allowed(rights[0]) && !allowed(rights[1])) return 0; // spares the attack map
    const Bitboard attacked = attackMap(position, opponent(colour));
    int count = 0;
    for (int side = 0; side < 2; ++side) {
        if (allowed(rights[side]) && (attacked & rights[side].kingPath()) == 0) out[count++] = rights[side].move();
    }
    return count;
}

namespace {

bool isPseudoLegalPawnMove(const Position& position, Move move, bool captures) {
    const Colour us = position.sideToMove();
    const Square from = moveFrom(move);
    const Square to = moveTo(move);
    const int kind = moveKind(move);
    const Square step = from + forwardStep(us);
    if (step < 0 || step > 63) return false;
    if (((bit(step) & (rank1 | rank8)) != 0) != isPromotion(move)) return false;
    if (captures) return kind != doublePush && (pawnAttacksFrom[us][from] & bit(to)) != 0;
    const Bitboard occupied = position.occupied();
    if ((occupied & bit(step)) != 0) return false;
    if (kind != doublePush) return to == step;
    return (relativeRank(us, 1) & bit(from)) != 0 && to == step + forwardStep(us);
}

} // namespace

int isPseudoLegal(const Position& position, Move move) {
    const int kind = moveKind(move);
    if (move == nullMove || (move & ~moveBits) != 0 || kind == enPassant) return 0;
    const Colour us = position.sideToMove();
    if (kind == castling) {
        Move moves[2];
        const int count = castlingMoves(position, us, moves);
        for (int i = 0; i < count; ++i) {
            if (moves[i] == move) return 1;
        }
        return 0;
    }
    const Square from = moveFrom(move);
    const Square to = moveTo(move);
    if ((position.of(us, allPieces) & bit(from)) == 0 || (position.of(us, allPieces) & bit(to)) != 0) return 0;
    const PieceType type = pieceTypeAt(position, us, from);
    if (type == pawn) {
        const bool captures = (position.of(opponent(us), allPieces) & bit(to)) != 0;
        return isPseudoLegalPawnMove(position, move, captures) ? 1 : 0;
    }
    if (kind != ordinaryMove) return 0;
    switch (type) {
    case knight: return (knightAttacks[from] & bit(to)) != 0 ? 1 : 0;
    case king: return (kingAttacks[from] & bit(to)) != 0 ? 1 : 0;
    default: break;
    }
    const Bitboard lines = type == bishop ? bishopLines[from] : type == rook ? rookLines[from] : queenLines[from];
    return (lines & bit(to)) != 0 && (between[from][to] & position.occupied()) == 0 ? 1 : 0;
}

bool isFreePawnPush(const Position& position, Move move) {
    const Colour us = position.sideToMove();
    const Colour them = opponent(us);
    const Bitboard enemyHalf = relativeRank(us, 4) | relativeRank(us, 5) | relativeRank(us, 6) | relativeRank(us, 7);
    if ((position.of(us, pawn) & bit(moveFrom(move))) == 0 || (enemyHalf & bit(moveTo(move))) == 0) return false;
    return (pawnAttackSpan(them, position.of(them, pawn)) & bit(moveTo(move))) == 0;
}

bool moverLeftInCheck(const Position& child) { return inCheck(child, opponent(child.sideToMove())) != 0; }

} // namespace helvan
