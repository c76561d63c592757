// SPDX-License-Identifier: MIT
#include "eval/pawn_structure.h"

#include <algorithm>
#include <cstdlib>

#include "board/attacks.h"
#include "board/geometry.h"
#include "eval/parameters.h"
#include "eval/tables.h"

namespace helvan {

namespace {

// The pawns of one side and what stands against them.
struct Side {
    Colour us;
    Bitboard own;
    Bitboard enemy;
    Bitboard ownAttacks;
    Bitboard enemyAttacks;
    Square ownKing;
    Square enemyKing;
};

bool isPassed(const Side& side, Square square) {
    const Bitboard before = ranksBefore(side.us, square);
    return (before & (fileMask(square) | adjacentFiles(square)) & side.enemy) == 0 &&
           (before & fileMask(square) & side.own) == 0;
}

// A pawn on a file free before it, with at least as many neighbours to help it on as enemy pawns to hinder it.
bool isCandidate(const Side& side, Square square) {
    const Bitboard before = ranksBefore(side.us, square);
    if ((before & fileMask(square) & (side.own | side.enemy)) != 0) return false;
    const Bitboard helpers = ~before & adjacentFiles(square) & side.own;
    const Bitboard sentries = before & adjacentFiles(square) & side.enemy;
    return popCount(helpers) >= popCount(sentries);
}

// No own pawn beside or behind can come to its support, and the square before it is the enemy's.
bool isBackward(const Side& side, Square square) {
    const Bitboard supporters = adjacentFiles(square) & ~ranksBefore(side.us, square) & side.own;
    return supporters == 0 && (pawnSteps(side.us, bit(square)) & side.enemyAttacks) != 0;
}

PackedScore weaknesses(const Side& side, Square square) {
    const EvalParameters& p = evalParameters;
    const bool halfOpen = (fileMask(square) & side.enemy) == 0;
    PackedScore score;
    if ((fileBefore(side.us, square) & side.own) != 0) score += p.doubledPawn;
    if ((adjacentFiles(square) & side.own) == 0) {
        score += halfOpen ? p.isolatedHalfOpen : p.isolatedPawn;
    } else if (isBackward(side, square)) {
        score += halfOpen ? p.backwardHalfOpen : p.backwardPawn;
    }
    return score;
}

PackedScore support(const Side& side, Square square) {
    const int rank = relativeRankOf(side.us, square);
    PackedScore score;
    if ((side.ownAttacks & bit(square)) != 0) score += evalParameters.connectedPawn[rank];
    if ((squaresBeside(bit(square)) & side.own) != 0) score += evalParameters.phalanxPawn[rank];
    return score;
}

// The index in OffsetValues.
int offsetFrom(Square kingSquare, Square square, Colour us) {
    const int ranks = relativeRankOf(us, square) - relativeRankOf(us, kingSquare);
    const int files = std::abs(fileOf(square) - fileOf(kingSquare));
    return (mostRanksApart - ranks) * offsetColumns + std::min(files, offsetColumns - 1);
}

// Both kings' ways to the square before a passed pawn.
PackedScore kingProximity(const Side& side, Square square) {
    const Square stop = square + forwardStep(side.us);
    return evalParameters.passedPerOwnKingStep * kingDistance(side.ownKing, stop) +
           evalParameters.passedPerEnemyKingStep * kingDistance(side.enemyKing, stop);
}

// The three files about a king, from its own rank onwards.
constexpr Bitboard shelterZone(Colour colour, Bitboard files, Square kingSquare) {
    return files & (ranksBefore(colour, kingSquare) | (rank1 << (kingSquare & 56)));
}

// Pawns before a king on the square; the one on its own file counts twice.
PackedScore shelterAt(const Side& side, Square kingSquare) {
    PackedScore score;
    for (Bitboard pawns = shelterZone(side.us, ThreeFileMask[kingSquare], kingSquare) & side.own; pawns != 0;) {
        const Square square = popLowestBit(pawns);
        const int weight = fileOf(square) == fileOf(kingSquare) ? 2 : 1;
        score += evalParameters.shelter[relativeRankOf(side.us, square)] * weight;
    }
    return score;
}

// A king on its first square has the shelter that castling on the king's side would give it, where that is better in
// the opening. Whether it may castle is not asked: the result is stored by the squares of pawns and kings alone.
PackedScore shelter(const Side& side) {
    const PackedScore here = shelterAt(side, side.ownKing);
    const Square home = side.us == white ? e1 : e8;
    if (side.ownKing != home) return here;
    const PackedScore castled = shelterAt(side, home + 2);
    return castled.opening() > here.opening() ? castled : here;
}

PackedScore storm(const Side& side) {
    const Colour enemy = opponent(side.us);
    PackedScore score;
    for (Bitboard pawns = shelterZone(enemy, ThreeFileMask[side.enemyKing], side.enemyKing) & side.own; pawns != 0;) {
        score += evalParameters.storm[relativeRankOf(side.us, popLowestBit(pawns))];
    }
    return score;
}

PackedScore evaluateSide(const Side& side, std::uint8_t* passedList) {
    const EvalParameters& p = evalParameters;
    PackedScore score;
    unsigned files = 0;
    int passedCount = 0;
    for (Bitboard pawns = side.own; pawns != 0;) {
        const Square square = popLowestBit(pawns);
        files |= 1U << fileOf(square);
        const int fromOwnKing = offsetFrom(side.ownKing, square, side.us);
        const int fromEnemyKing = offsetFrom(side.enemyKing, square, side.us);
        score += weaknesses(side, square) + support(side, square);
        score += p.pawnByOwnKingOffset[fromOwnKing] + p.pawnByEnemyKingOffset[fromEnemyKing];
        if (isPassed(side, square)) {
            score += kingProximity(side, square);
            score += p.passedByOwnKingOffset[fromOwnKing] + p.passedByEnemyKingOffset[fromEnemyKing];
            if (passedCount < longestPassedList) passedList[passedCount] = static_cast<std::uint8_t>(square);
            ++passedCount;
        } else if (isCandidate(side, square)) {
            score += p.candidateTable[relativeRankOf(side.us, square) - 1];
        }
    }
    if (passedCount >= 2) score += p.manyPassed;
    return score + evalTables.pawnIslandTable[files] + shelter(side) + storm(side);
}

Side sideOf(const Position& position, Colour us) {
    const Colour enemy = opponent(us);
    const Bitboard own = position.of(us, pawn), enemyPawns = position.of(enemy, pawn);
    return {us,
            own,
            enemyPawns,
            pawnAttacks(us, own),
            pawnAttacks(enemy, enemyPawns),
            lowestBit(position.of(us, king)),
            lowestBit(position.of(enemy, king))};
}

} // namespace

PawnEntry pawnEntryOf(const Position& position) {
    PawnEntry entry;
    entry.key = position.pawnKey;
    entry.score += evaluateSide(sideOf(position, white), entry.passed[white]);
    entry.score -= evaluateSide(sideOf(position, black), entry.passed[black]);
    return entry;
}

PackedScore pawnStructureOf(const Position& position, Colour us) {
    PawnEntry unused;
    return evaluateSide(sideOf(position, us), unused.passed[us]);
}

const PawnEntry& evaluatePawns(const Position& position, EvalCaches& caches) {
    ++caches.etableProbes;
    PawnEntry& entry = caches.pawnTable[position.pawnKey & pawnTableMask];
    if (entry.key == position.pawnKey) {
        ++caches.etableHits;
    } else {
        entry = pawnEntryOf(position);
    }
    return entry;
}

} // namespace helvan
