// SPDX-License-Identifier: MIT
#include "eval/tables.h"

#include "board/bits.h"
#include "eval/endings.h"
#include "eval/parameters.h"
#include "eval/pawn_table.h"
#include "eval/scaling.h"

namespace helvan {

EvalTables evalTables;

namespace {

PackedScore squareValue(PieceType type, Square square) {
    if (type == allPieces || type == phantom) return {};
    return evalParameters.material[type] + evalParameters.squares[type][mirrored(square)];
}

void fillPieceSquares() {
    for (PieceType type = allPieces; type <= phantom; ++type) {
        for (Square square = 0; square < 64; ++square) {
            const PackedScore value = squareValue(type, square);
            pieceSquareTable[pieceIndex(white, type, square)] = value;
            pieceSquareTable[pieceIndex(black, type, mirrored(square))] = -value;
        }
    }
}

void fillKingSafety() {
    for (int units = 0; units < 128; ++units) {
        // The option may be out of its range: the product is taken in 64 bits and cut to the lane.
        evalTables.kingSafetyTable.entries[units] =
            packed(std::int64_t{kingSafetyCurve[units]} * kingSafetyAggressiveness, 0);
    }
}

void fillPawnIslands() {
    for (unsigned files = 0; files < 256; ++files) {
        const int islands = popCount(files & ~(files << 1)); // each begins at a file without one to its left
        evalTables.pawnIslandTable[files] = evalParameters.pawnIsland * maximum(islands - 1, 0);
    }
}

// The pair's blend by the phase, times 96.
int blend(PackedScore score, int phase) { return (fullPhase - phase) * score.endgame() + phase * score.opening(); }

void fillByPhase() {
    constexpr int thousandthsPerCentipawn = 10;
    for (int phase = 0; phase <= fullPhase; ++phase) {
        evalTables.tempoByPhase[phase] =
            static_cast<int>(roundedQuotient<fullPhase>(blend(evalParameters.tempo, phase)));
        for (PieceType type = pawn; type <= queen; ++type) {
            evalTables.phasePieceValue[phase][type] =
                blend(evalParameters.material[type], phase) / (fullPhase * thousandthsPerCentipawn);
        }
    }
    for (PieceType type = pawn; type <= queen; ++type) {
        const PackedScore value = evalParameters.material[type];
        evalTables.pieceValueCentipawns[type] = maximum(value.opening(), value.endgame()) / thousandthsPerCentipawn;
    }
}

// value x (count - reference).
PackedTable9 linear(PackedScore value, int reference) {
    PackedTable9 table;
    for (int count = 0; count < 9; ++count) table.entries[count] = value * (count - reference);
    return table;
}

PackedTable9 convexThreats(PackedScore value) {
    PackedTable9 table;
    for (int count = 0; count < 9; ++count) {
        table.entries[count] =
            packed(value.opening() * threatHalves[count] / 2, value.endgame() * threatHalves[count] / 2);
    }
    return table;
}

// From the second to the seventh rank.
PassedTable convexRanks(PackedScore top) {
    PassedTable table;
    for (int rank = 0; rank < 6; ++rank) {
        const int part = passedParts[rank];
        table[rank] = packed(top.opening() * part / passedParts[5], top.endgame() * part / passedParts[5]);
    }
    return table;
}

void fillShapes() {
    const EvalParameters& p = evalParameters;
    EvalTables& t = evalTables;
    for (int distance = 0; distance < 8; ++distance) {
        t.knightKingDistanceTable[distance] = p.knightKingDistance * (usualKingDistance - distance);
    }
    t.knightPawnsTable = linear(p.knightPawns, usualPawns);
    t.rookPawnsTable = linear(p.rookPawns, usualPawns);
    t.bishopOwnColourPawnsTable = linear(p.bishopOwnColourPawns, usualPawnsOfAColour);
    t.bishopOtherColourPawnsTable = linear(p.bishopOtherColourPawns, usualPawnsOfAColour);
    t.threatTable = convexThreats(p.threat);
    t.knightBlockadeTable = linear(p.knightBlockade, 0);
    t.outpostTable = linear(p.outpost, 0);
    t.blockedPawnTable = linear(p.blockedPawn, 0);
    t.blockedCentrePawnTable = linear(p.blockedCentrePawn, 0);
    t.pieceBehindPawnTable = linear(p.pieceBehindPawn, 0);
    t.passedBaseTable = convexRanks(p.passedBase);
    t.passedSupportTable = convexRanks(p.passedSupport);
    t.passedFreeSafeTable = convexRanks(p.passedFreeSafe);
    t.passedFreeTable = convexRanks(p.passedFree);
    t.passedAttackedDefendedTable = convexRanks(p.passedAttackedDefended);
    t.passedAttackedTable = convexRanks(p.passedAttacked);
    t.passedUnblockedTable = convexRanks(p.passedUnblocked);
    t.candidateTable = convexRanks(p.candidate);
    for (int rank = 0; rank < 6; ++rank) {
        for (int distance = 0; distance < 9; ++distance) {
            t.passedOwnKingTable[rank][distance] = packed(0, passedOwnKingDistance[rank][distance]);
            t.passedEnemyKingTable[rank][distance] = packed(0, passedEnemyKingDistance[rank][distance]);
        }
    }
}

} // namespace

void initEvalTables() {
    fillPieceSquares();
    fillKingSafety();
    fillPawnIslands();
    fillByPhase();
    fillShapes();
    clearPawnTable();
}

void initAllEvaluation() {
    initEndingTables();
    initEvalTables();
}

} // namespace helvan
