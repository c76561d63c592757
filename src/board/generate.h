// SPDX-License-Identifier: MIT
//
// The generators that the complete list and the staged picker are put together from. Each hands its moves to
// emit(move, mover's type). Targets restrict the to-squares, so that one generator serves captures, quiet
// moves and evasions alike.
#pragma once

#include "board/attacks.h"
#include "board/bits.h"
#include "board/position.h"

namespace helvan {

// Hands every move of the movers, all of this type, no pawn's, onto the targets to emit.
template <PieceType type, typename Emit>
void eachPieceStep(Bitboard movers, Bitboard occupied, Bitboard targets, Emit emit) {
    while (movers != 0) {
        const Square from = popLowestBit(movers);
        for (Bitboard reached = pieceAttacks(type, from, occupied) & targets; reached != 0;) {
            emit(encodeMove(from, popLowestBit(reached)), type);
        }
    }
}

// All pieces but pawns and kings, which have generators of their own.
template <typename Emit> void generatePieces(const Position& position, Bitboard targets, Emit emit) {
    const Colour us = position.sideToMove();
    const Bitboard occupied = position.occupied();
    eachPieceStep<knight>(position.of(us, knight), occupied, targets, emit);
    eachPieceStep<bishop>(position.of(us, bishop), occupied, targets, emit);
    eachPieceStep<rook>(position.of(us, rook), occupied, targets, emit);
    eachPieceStep<queen>(position.of(us, queen), occupied, targets, emit);
}

template <typename Emit> void generateKing(const Position& position, Bitboard targets, Emit emit) {
    eachPieceStep<king>(position.of(position.sideToMove(), king), position.occupied(), targets, emit);
}

// Hands every pawn step from the given pawns onto the targets to emit(from, to), east, west and forward:
// captures onto captureTargets, single pushes onto pushTargets.
template <typename Emit>
void eachPawnStep(const Position& position, Bitboard pawns, Bitboard captureTargets, Bitboard pushTargets, Emit emit) {
    const Colour us = position.sideToMove();
    const int forward = forwardStep(us);
    for (Bitboard reached = pawnAttacksEast(us, pawns) & captureTargets; reached != 0;) {
        const Square to = popLowestBit(reached);
        emit(to - forward - 1, to);
    }
    for (Bitboard reached = pawnAttacksWest(us, pawns) & captureTargets; reached != 0;) {
        const Square to = popLowestBit(reached);
        emit(to - forward + 1, to);
    }
    for (Bitboard reached = pawnSteps(us, pawns) & pushTargets & ~position.occupied(); reached != 0;) {
        const Square to = popLowestBit(reached);
        emit(to - forward, to);
    }
}

// Captures by pawns onto the targets (of enemy pieces), those that promote to a queen among them, and pushes
// that promote to a queen onto pushTargets.
template <typename Emit>
void generatePawnTactics(const Position& position, Bitboard captureTargets, Bitboard pushTargets, Emit emit) {
    const Colour us = position.sideToMove();
    const Bitboard lastRank = relativeRank(us, 7);
    eachPawnStep(position, position.of(us, pawn), captureTargets, pushTargets & lastRank, [&](Square from, Square to) {
        emit(encodeMove(from, to, (bit(to) & lastRank) != 0 ? promoteQueen : ordinaryMove), pawn);
    });
}

template <typename Emit> void generateEnPassant(const Position& position, Emit emit) {
    if (position.epSquare == 0) return;
    const Colour us = position.sideToMove();
    const Square to = lowestBit(position.epSquare);
    for (Bitboard pawns = pawnAttacks(opponent(us), position.epSquare) & position.of(us, pawn); pawns != 0;) {
        emit(encodeMove(popLowestBit(pawns), to, enPassant), pawn);
    }
}

// Single pushes short of the last rank.
template <typename Emit> void generatePawnPushes(const Position& position, Bitboard targets, Emit emit) {
    const Colour us = position.sideToMove();
    eachPawnStep(position, position.of(us, pawn), 0, targets & ~relativeRank(us, 7),
                 [&](Square from, Square to) { emit(encodeMove(from, to), pawn); });
}

template <typename Emit> void generateDoublePushes(const Position& position, Bitboard targets, Emit emit) {
    const Colour us = position.sideToMove();
    const Bitboard empty = ~position.occupied();
    const Bitboard halfway = pawnSteps(us, position.of(us, pawn) & relativeRank(us, 1)) & empty;
    for (Bitboard reached = pawnSteps(us, halfway) & empty & targets; reached != 0;) {
        const Square to = popLowestBit(reached);
        emit(encodeMove(to - 2 * forwardStep(us), to, doublePush), pawn);
    }
}

// Promotions to knight, rook and bishop, by capture onto captureTargets and by push onto pushTargets.
template <typename Emit>
void generateUnderPromotions(const Position& position, Bitboard captureTargets, Bitboard pushTargets, Emit emit) {
    const Colour us = position.sideToMove();
    const Bitboard pawns = position.of(us, pawn) & relativeRank(us, 6);
    if (pawns == 0) return;
    eachPawnStep(position, pawns, captureTargets, pushTargets, [&](Square from, Square to) {
        for (int kind = promoteKnight; kind <= promoteBishop; ++kind) emit(encodeMove(from, to, kind), pawn);
    });
}

} // namespace helvan
