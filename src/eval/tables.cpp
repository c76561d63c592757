// SPDX-License-Identifier: MIT
#include "eval/tables.h"

#include "board/bits.h"
#include "board/piece_square.h"
#include "eval/parameters.h"

namespace helvan {

namespace {

// 0 on the edge files or ranks to 3 on the central ones.
int stepsFromEdge(int line) { return minimum(line, 7 - line); }

PackedScore whiteValue(PieceType type, Square square) {
    const int centralSteps = stepsFromEdge(fileOf(square)) + stepsFromEdge(rankOf(square));
    PackedScore value = materialValues[type] + centralStepValues[type] * centralSteps;
    if (type == pawn) value += pawnAdvanceValue * rankOf(square);
    return value;
}

} // namespace

void initEvalTables() {
    pieceSquareTable.fill(PackedScore{});
    for (PieceType type = pawn; type <= king; ++type) {
        for (Square square = 0; square < 64; ++square) {
            const PackedScore value = whiteValue(type, square);
            pieceSquareTable[pieceIndex(white, type, square)] = value;
            pieceSquareTable[pieceIndex(black, type, mirrored(square))] = -value;
        }
    }
}

} // namespace helvan
