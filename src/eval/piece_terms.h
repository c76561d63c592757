// SPDX-License-Identifier: MIT
//
// The terms of knights, bishops, rooks and queens: where they stand, how they move, how they press on the enemy king.
// For the evaluation alone, which inlines them: a header, so that they are compiled into it for each colour.
#pragma once

#include "board/attacks.h"
#include "board/exchange.h"
#include "board/geometry.h"
#include "eval/evaluation.h"
#include "eval/parameters.h"
#include "eval/tables.h"

namespace helvan {

// What the colour's pieces may use, looked up once for all of them.
struct PieceContext {
    Bitboard unsafeForMinors;    // own pawns, and what enemy pawns guard but for the squares of enemy pieces
    Bitboard unsafeForMajors;    // these, and what enemy knights guard but for the same squares
    Bitboard enterable;          // no own man, and no enemy pawn guards it unless an enemy stands there: for checks
    Bitboard enemyKingZone;      // the squares beside the enemy king
    Bitboard enemyKingDiagonals; // the squares that a bishop in the enemy king's place would attack
    Bitboard enemyKingStraights; // the same for a rook
};

// Starts the colour's attack units at those for the enemy king's square. Pawn and knight attacks are known.
template <Colour us> PieceContext preparePieces(Evaluation& e) {
    constexpr Colour them = opponent(us);
    const Position& position = e.position;
    const Square enemyKing = e.kingSquare[them];
    const Bitboard enemies = position.of(them, allPieces);
    const Bitboard enemyPieces = enemies & ~position.of(them, pawn); // worth taking even where a pawn guards them
    e.kingUnits[us] = kingExposureUnits[relativeSquare(them, enemyKing)];

    PieceContext context;
    context.unsafeForMinors = position.of(us, pawn) | (e.attacks[them][pawn] & ~enemyPieces);
    context.unsafeForMajors = context.unsafeForMinors | (e.attacks[them][knight] & ~enemyPieces);
    context.enterable = ~(position.of(us, allPieces) | (e.attacks[them][pawn] & ~enemies));
    context.enemyKingZone = kingAttacks[enemyKing];
    context.enemyKingDiagonals = bishopAttacks(enemyKing, e.occupied);
    context.enemyKingStraights = rookAttacks(enemyKing, e.occupied);
    return context;
}

// Own bishops that aim at the enemy king with enemy knights, and nothing else, between.
template <Colour us> void evaluateKnightPins(Evaluation& e) {
    constexpr Colour them = opponent(us);
    const Square enemyKing = e.kingSquare[them];
    const Bitboard knights = e.position.of(them, knight);
    for (Bitboard bishops = e.position.of(us, bishop) & bishopLines[enemyKing]; bishops != 0;) {
        const Bitboard blockers = between[popLowestBit(bishops)][enemyKing] & e.occupied;
        if (blockers != 0 && (blockers & ~knights) == 0) e.credit[us] += evalParameters.knightInBishopsAim;
    }
}

template <Colour us> void evaluateKnights(Evaluation& e, const PieceContext& context) {
    const Bitboard knights = e.position.of(us, knight);
    const Bitboard checkSquares = context.enterable & knightAttacks[e.kingSquare[opponent(us)]];
    PackedScore score = evalParameters.knightPawnsTable[e.pawnCount[us]] * popCount(knights);
    int units = 0;
    for (Bitboard left = knights; left != 0;) {
        const Square square = popLowestBit(left);
        const Bitboard attacks = knightAttacks[square];
        const Bitboard safe = attacks & ~context.unsafeForMinors;
        score += evalParameters.knightKingDistanceTable[kingDistance(square, e.kingSquare[us])];
        score += knightMobility[popCount(safe) + popCount(safe & ranksBefore(us, square))];
        if ((attacks & context.enemyKingZone) != 0) units += knightZoneUnits;
        units += knightCheckUnits * popCount(attacks & checkSquares);
    }
    e.credit[us] += score;
    e.kingUnits[us] += units;
}

// A pawn of the enemy three ranks ahead on the bishop's file, in the enemy's half.
template <Colour us> bool facesPawn(const Evaluation& e, Square square) {
    constexpr int ranksAhead = 3;
    const int pawnRank = relativeRankOf(us, square) + ranksAhead;
    if (pawnRank < 4 || pawnRank > 7) return false;
    return (e.position.of(opponent(us), pawn) & bit(square + ranksAhead * forwardStep(us))) != 0;
}

template <Colour us> void evaluateBishops(Evaluation& e, const PieceContext& context) {
    const Bitboard bishops = e.position.of(us, bishop);
    const Bitboard ownPawns = e.position.of(us, pawn);
    const Bitboard checkSquares = context.enterable & context.enemyKingDiagonals;
    PackedScore score;
    Bitboard allAttacks = 0;
    int units = 0;
    for (Bitboard left = bishops; left != 0;) {
        const Square square = popLowestBit(left);
        const Bitboard attacks = bishopAttacks(square, e.occupied);
        const Bitboard ownColour = (bit(square) & darkSquares) != 0 ? darkSquares : ~darkSquares;
        const int sameColourPawns = popCount(ownPawns & ownColour);
        allAttacks |= attacks;
        score += bishopMobility[popCount(attacks & ~context.unsafeForMinors)];
        score += evalParameters.bishopOwnColourPawnsTable[sameColourPawns];
        score += evalParameters.bishopOtherColourPawnsTable[e.pawnCount[us] - sameColourPawns];
        if (facesPawn<us>(e, square)) score += evalParameters.bishopFacingPawn;
        if ((attacks & context.enemyKingZone) != 0) units += bishopZoneUnits;
        units += bishopCheckUnits * popCount(attacks & checkSquares);
    }
    if (popCount(bishops) == 2) score += evalParameters.bishopPair;
    e.attacks[us][bishop] = allAttacks;
    e.credit[us] += score;
    e.kingUnits[us] += units;
}

// What the rook's file is worth to it.
template <Colour us> PackedScore rookFileTerm(const Evaluation& e, Square square) {
    constexpr Colour them = opponent(us);
    const Bitboard file = fileMask(square);
    if ((file & e.position.of(us, pawn)) != 0) return {};
    const Bitboard enemyPawns = file & e.position.of(them, pawn);
    if (enemyPawns == 0) return evalParameters.rookOpenFile;
    return (enemyPawns & e.attacks[them][pawn]) == 0 ? evalParameters.rookHalfOpenWeak : evalParameters.rookHalfOpen;
}

template <Colour us> void evaluateRooks(Evaluation& e, const PieceContext& context) {
    const Bitboard rooks = e.position.of(us, rook);
    const Bitboard checkSquares = context.enterable & context.enemyKingStraights;
    const bool enemyKingAtHome = relativeRankOf(us, e.kingSquare[opponent(us)]) == 7;
    PackedScore score = evalParameters.rookPawnsTable[e.pawnCount[us]] * popCount(rooks);
    Bitboard allAttacks = 0;
    int units = 0;
    for (Bitboard left = rooks; left != 0;) {
        const Square square = popLowestBit(left);
        const Bitboard attacks = rookAttacks(square, e.occupied);
        allAttacks |= attacks;
        score += rookMobility[popCount(attacks & ~context.unsafeForMajors)];
        score += rookFileTerm<us>(e, square);
        if ((rookLines[square] & rooks & ~bit(square)) != 0) score += evalParameters.rooksOnLine;
        if (enemyKingAtHome && relativeRankOf(us, square) == 6) score += evalParameters.rookOnSeventh;
        if ((attacks & context.enemyKingZone) != 0) units += rookZoneUnits;
        units += rookCheckUnits * popCount(attacks & checkSquares);
    }
    if (moreThanOne(rooks)) score += evalParameters.secondRook;
    e.attacks[us][rook] = allAttacks;
    e.credit[us] += score;
    e.kingUnits[us] += units;
}

// Whether the exchange on the square beside the enemy king that the queen checks from loses it.
template <Colour us> bool queenIsLost(const Evaluation& e, Square from, Square to) {
    const Bitboard(&own)[boardsPerColour] = e.attacks[us];
    const Bitboard lines = (rookLines[to] & e.position.of(us, rook)) | (bishopLines[to] & e.position.of(us, bishop));
    // Nobody else guards the square, nor could once the exchange has cleared a line: the king takes the queen.
    const bool alone =
        ((own[pawn] | own[knight] | own[king]) & bit(to)) == 0 && lines == 0 && !moreThanOne(e.position.of(us, queen));
    if (alone && (e.position.of(opponent(us), queen) & bit(to)) == 0) return true;
    return !seeAtLeast(e.position, encodeMove(from, to), 0, us ^ e.position.sideToMove());
}

template <Colour us>
int queenCheckUnits(const Evaluation& e, const PieceContext& context, Square square, Bitboard attacks) {
    const Bitboard checks = attacks & context.enterable & (context.enemyKingDiagonals | context.enemyKingStraights);
    int units = queenDistantCheckUnits * popCount(checks & ~context.enemyKingZone);
    for (Bitboard contacts = checks & context.enemyKingZone; contacts != 0;) {
        units +=
            queenIsLost<us>(e, square, popLowestBit(contacts)) ? queenLostContactCheckUnits : queenContactCheckUnits;
    }
    return units;
}

template <Colour us> void evaluateQueens(Evaluation& e, const PieceContext& context) {
    const Bitboard queens = e.position.of(us, queen);
    e.attacks[us][queen] = 0;
    if (queens == 0) return;
    PackedScore score;
    Bitboard allAttacks = 0;
    int units = 0, checkUnits = 0;
    for (Bitboard left = queens; left != 0;) {
        const Square square = popLowestBit(left);
        const Bitboard attacks = queenAttacks(square, e.occupied);
        allAttacks |= attacks;
        score += queenMobility[popCount(attacks & ~context.unsafeForMajors)];
        if ((attacks & context.enemyKingZone) != 0) units += queenZoneUnits;
        checkUnits += queenCheckUnits<us>(e, context, square, attacks);
    }
    if (e.position.of(us, rook) != 0) score += evalParameters.rookAndQueen;
    e.attacks[us][queen] = allAttacks;
    e.credit[us] += score;
    e.kingUnits[us] += units + minimum(checkUnits, mostQueenCheckUnits);
}

template <Colour us> void evaluateKingSafety(Evaluation& e) {
    e.credit[us] += evalTables.kingSafetyTable[e.kingUnits[us]];
}

} // namespace helvan
