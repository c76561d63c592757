// SPDX-License-Identifier: MIT
//
// What the evaluation looks up in another form than its parameters have, so that a term costs one look-up and one
// packed addition.
#pragma once

#include <array>
#include <cstdint>

#include "board/packed_score.h"
#include "eval/clamped_table.h"

namespace helvan {

// The full-board phase: at it the opening values count alone, at 0 the endgame values.
inline constexpr int fullPhase = 96;

inline constexpr int thousandthsPerCentipawn = 10;

// The score by the phase 0..96, in thousandths of a pawn x 96.
constexpr std::int64_t blendByPhase(PackedScore score, int phase) {
    return std::int64_t{fullPhase - phase} * score.endgame() + std::int64_t{phase} * score.opening();
}

struct EvalTables {
    ClampedTable<PackedScore, 128> kingSafetyTable; // by attack units; flat beyond them
    std::array<PackedScore, 256> pawnIslandTable;   // by the set of files with pawns
    std::array<int, fullPhase + 1> tempoByPhase;    // thousandths of a pawn
    // The plain value of a piece in centipawns: the larger of its two; 0 for none and the king.
    std::array<int, 8> pieceValueCentipawns;
    // The value blended by the phase, in centipawns.
    std::array<std::array<int, 8>, fullPhase + 1> phasePieceValue;
};

extern EvalTables evalTables;

// Builds every table from the current parameters, the piece-square table included. What evaluations have stored in
// their caches is no more true then.
void initEvalTables();

// The known endings' table, then all of the above. To be called at start and whenever a parameter has changed.
void initAllEvaluation();

} // namespace helvan
