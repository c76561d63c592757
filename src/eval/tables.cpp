// SPDX-License-Identifier: MIT
#include "eval/tables.h"

#include "board/bits.h"
#include "board/piece_square.h"
#include "board/types.h"
#include "eval/endings.h"
#include "eval/parameters.h"
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
            packed(std::int64_t{kingSafetyCurve[units]} * evalParameters.kingSafetyAggressiveness, 0);
    }
}

void fillPawnIslands() {
    for (unsigned files = 0; files < 256; ++files) {
        const int islands = popCount(files & ~(files << 1)); // each begins at a file without one to its left
        evalTables.pawnIslandTable[files] = evalParameters.pawnIsland * maximum(islands - 1, 0);
    }
}

void fillByPhase() {
    for (int phase = 0; phase <= fullPhase; ++phase) {
        evalTables.tempoByPhase[phase] =
            static_cast<int>(roundedQuotient<fullPhase>(blendByPhase(evalParameters.tempo, phase)));
        for (PieceType type = pawn; type <= queen; ++type) {
            evalTables.phasePieceValue[phase][type] = static_cast<int>(
                blendByPhase(evalParameters.material[type], phase) / (fullPhase * thousandthsPerCentipawn));
        }
    }
    for (PieceType type = pawn; type <= queen; ++type) {
        const PackedScore value = evalParameters.material[type];
        evalTables.pieceValueCentipawns[type] = maximum(value.opening(), value.endgame()) / thousandthsPerCentipawn;
    }
}

} // namespace

void initEvalTables() {
    fillPieceSquares();
    fillKingSafety();
    fillPawnIslands();
    fillByPhase();
}

void initAllEvaluation() {
    initEndingTables();
    initEvalTables();
}

} // namespace helvan
