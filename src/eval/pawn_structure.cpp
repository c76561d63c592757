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

// Pawns that no other on their own file stands before, and no enemy pawn there or on the files beside.
Bitboard passedPawns(const Side& side) {
    const Bitboard behindEnemies = squaresBefore(opponent(side.us), side.enemy);
    const Bitboard behindOwn = squaresBefore(opponent(side.us), side.own);
    return side.own & ~(behindEnemies | squaresBeside(behindEnemies) | behindOwn);
}

// A pawn, on a file free before it, with at least as many neighbours to help it on as enemy pawns to hinder it.
bool isCandidate(const Side& side, Square square) {
    const Bitboard before = ranksBefore(side.us, square);
    const Bitboard helpers = ~before & adjacentFiles(square) & side.own;
    const Bitboard sentries = before & adjacentFiles(square) & side.enemy;
    return popCount(helpers) >= popCount(sentries);
}

PackedScore candidates(const Side& side, Bitboard passed) {
    const Bitboard behindPawns = squaresBefore(opponent(side.us), side.own | side.enemy);
    PackedScore score;
    for (Bitboard pawns = side.own & ~passed & ~behindPawns; pawns != 0;) {
        const Square square = popLowestBit(pawns);
        if (isCandidate(side, square)) score += evalParameters.candidateTable[relativeRankOf(side.us, square) - 1];
    }
    return score;
}

PackedScore weaknesses(const Side& side) {
    const EvalParameters& p = evalParameters;
    const Bitboard doubled = side.own & squaresBefore(opponent(side.us), side.own);
    const Bitboard isolated = side.own & ~squaresBeside(filesOf(side.own));
    // No own pawn beside or behind can come to its support, and the square before it is the enemy's.
    const Bitboard supported = squaresBeside(side.own | squaresBefore(side.us, side.own));
    const Bitboard backward = side.own & ~isolated & ~supported & pawnSteps(opponent(side.us), side.enemyAttacks);
    const Bitboard halfOpen = ~filesOf(side.enemy);
    return p.doubledPawn * popCount(doubled) + p.isolatedPawn * popCount(isolated & ~halfOpen) +
           p.isolatedHalfOpen * popCount(isolated & halfOpen) + p.backwardPawn * popCount(backward & ~halfOpen) +
           p.backwardHalfOpen * popCount(backward & halfOpen);
}

PackedScore byRank(const RankValues& values, Colour us, Bitboard pawns) {
    PackedScore score;
    while (pawns != 0) score += values[relativeRankOf(us, popLowestBit(pawns))];
    return score;
}

PackedScore support(const Side& side) {
    return byRank(evalParameters.connectedPawn, side.us, side.own & side.ownAttacks) +
           byRank(evalParameters.phalanxPawn, side.us, side.own & squaresBeside(side.own));
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
    const Bitboard zone = shelterZone(opponent(side.us), ThreeFileMask[side.enemyKing], side.enemyKing);
    return byRank(evalParameters.storm, side.us, zone & side.own);
}

PackedScore kingOffsets(const Side& side, Bitboard pawns, const OffsetValues& own, const OffsetValues& enemy) {
    PackedScore score;
    while (pawns != 0) {
        const Square square = popLowestBit(pawns);
        score += own[offsetFrom(side.ownKing, square, side.us)] + enemy[offsetFrom(side.enemyKing, square, side.us)];
    }
    return score;
}

PackedScore passedPawnsAndKings(const Side& side, Bitboard passed) {
    const EvalParameters& p = evalParameters;
    PackedScore score = kingOffsets(side, passed, p.passedByOwnKingOffset, p.passedByEnemyKingOffset);
    if (moreThanOne(passed)) score += p.manyPassed;
    while (passed != 0) score += kingProximity(side, popLowestBit(passed));
    return score;
}

void listPassed(Bitboard passed, std::uint8_t (&list)[longestPassedList]) {
    for (int i = 0; i < longestPassedList && passed != 0; ++i)
        list[i] = static_cast<std::uint8_t>(popLowestBit(passed));
}

PackedScore evaluateSide(const Side& side, std::uint8_t (&passedList)[longestPassedList]) {
    const EvalParameters& p = evalParameters;
    const Bitboard passed = passedPawns(side);
    listPassed(passed, passedList);
    return weaknesses(side) + support(side) + candidates(side, passed) +
           kingOffsets(side, side.own, p.pawnByOwnKingOffset, p.pawnByEnemyKingOffset) +
           passedPawnsAndKings(side, passed) + evalTables.pawnIslandTable[filesOf(side.own) & rank1] + shelter(side) +
           storm(side);
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
