// SPDX-License-Identifier: MIT
#include "search/threats.h"

#include "board/attacks.h"
#include "board/exchange.h"

namespace helvan {

namespace {

constexpr int aboutToPromote = 15; // pawns
constexpr int pawnValue = exchangeValues[pawn];

} // namespace

bool lastMoveThreatens(const Position& position) {
    if (position.movedPiece == 0) return false;
    const Colour us = position.sideToMove();
    const Colour mover = opponent(us);
    const Square from = moveTo(position.lastMove);
    const Bitboard occupied = position.occupied();
    const PieceType type = pieceTypeAt(position, mover, from);
    const Bitboard attacks = type == pawn ? pawnAttacksFrom[mover][from] : pieceAttacks(type, from, occupied);
    const Bitboard withoutMover = occupied & ~bit(from);
    for (Bitboard targets = attacks & position.of(us, allPieces) & ~position.of(us, king); targets != 0;) {
        const Square target = popLowestBit(targets);
        // Two cases in which the exchange pays for sure, and is not played out.
        if (exchangeValues[pieceTypeAt(position, us, target)] > exchangeValues[type]) return true;
        if (attackersOf(position, target, us, withoutMover) == 0) return true;
        if (seeAtLeast(position, encodeMove(from, target), 1, 1)) return true;
    }
    return false;
}

int threatenedLoss(const Position& position) {
    const Colour us = position.sideToMove();
    const Colour enemy = opponent(us);
    if ((position.of(enemy, pawn) & relativeRank(enemy, 6)) != 0) return aboutToPromote;
    const Bitboard attacked = attackMap(position, enemy);
    int most = 0;
    for (PieceType type = queen; type >= pawn && exchangeValues[type] > most; --type) {
        for (Bitboard pieces = position.of(us, type) & attacked; pieces != 0;) {
            most = maximum(most, captureGain(position, popLowestBit(pieces), enemy));
        }
    }
    return most / pawnValue;
}

} // namespace helvan
