// SPDX-License-Identifier: MIT
#include "board/piece_square.h"

#include "board/bits.h"

namespace helvan {

PackedScore pstOf(const Position& position, Colour colour) {
    PackedScore sum;
    for (PieceType type = pawn; type <= king; ++type) {
        for (Bitboard board = position.of(colour, type); board != 0;) {
            sum += pieceSquareTable[pieceIndex(colour, type, popLowestBit(board))];
        }
    }
    return sum;
}

PackedScore pstOf(const Position& position) { return pstOf(position, white) + pstOf(position, black); }

void refreshPieceSums(Position& position) {
    position.pstScore = pstOf(position);
    position.phase = phaseOf(position);
}

} // namespace helvan
