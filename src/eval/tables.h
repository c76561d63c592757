// SPDX-License-Identifier: MIT
//
// The tables that the evaluation reads, built from its parameters, so that a shaped term costs one look-up and one
// packed addition.
#pragma once

#include <array>

#include "board/packed_score.h"
#include "board/piece_square.h"
#include "board/types.h"

namespace helvan {

// The full-board phase: at it the opening values count alone, at 0 the endgame values.
inline constexpr int fullPhase = 96;

// An array that takes the last entry for every index beyond it: counts that no game reaches stay inside.
template <typename Value, int size> struct ClampedTable {
    std::array<Value, size> entries{};

    const Value& operator[](int index) const { return entries[index < size ? index : size - 1]; }
};

using PackedTable9 = ClampedTable<PackedScore, 9>;
using PassedTable = std::array<PackedScore, 6>; // by a passed pawn's relative rank - 2

struct EvalTables {
    ClampedTable<PackedScore, 128> kingSafetyTable; // by attack units; flat beyond them
    std::array<PackedScore, 256> pawnIslandTable;   // by the set of files with pawns
    std::array<int, fullPhase + 1> tempoByPhase;    // thousandths of a pawn
    std::array<PackedScore, 8> knightKingDistanceTable;
    PackedTable9 knightPawnsTable;
    PackedTable9 rookPawnsTable;
    PackedTable9 bishopOwnColourPawnsTable;
    PackedTable9 bishopOtherColourPawnsTable;
    PackedTable9 threatTable;
    PackedTable9 knightBlockadeTable;
    PackedTable9 outpostTable;
    PackedTable9 blockedPawnTable;
    PackedTable9 blockedCentrePawnTable;
    PackedTable9 pieceBehindPawnTable;
    PassedTable passedBaseTable;
    PassedTable passedSupportTable;
    PassedTable passedFreeSafeTable;
    PassedTable passedFreeTable;
    PassedTable passedAttackedDefendedTable;
    PassedTable passedAttackedTable;
    PassedTable passedUnblockedTable;
    PassedTable candidateTable;
    // A passed pawn's king distances, by relative rank - 2 and distance 0..8.
    std::array<std::array<PackedScore, 9>, 6> passedOwnKingTable;
    std::array<std::array<PackedScore, 9>, 6> passedEnemyKingTable;
    // The plain value of a piece in centipawns: the larger of its two; 0 for none and the king.
    std::array<int, 8> pieceValueCentipawns;
    // The value blended by the phase, in centipawns.
    std::array<std::array<int, 8>, fullPhase + 1> phasePieceValue;
};

extern EvalTables evalTables;

// Builds every table from the current parameters, the piece-square table included, and forgets the stored pawn
// structures, whose scores depend on them. The cache of whole evaluations is kept, deliberately: a score of the
// old parameters may be answered until its slot is needed.
void initEvalTables();

// The known endings' table, then all of the above. To be called at start and whenever a parameter has changed.
void initAllEvaluation();

} // namespace helvan
