// SPDX-License-Identifier: MIT
#include "board/piece_square.h"

#include "board/bits.h"

namespace helvan {

PackedScore pstOf(const Position& position) {
    PackedScore sum;
    for (Colour colour : {white, black}) {
        for (PieceType type = pawn; type <= king; ++type) {
            for (Bitboard board = position.of(colour, type); board != 0;) {
                sum += pieceSquareTable[pieceIndex(colour, type, popLowestBit(board))];
            }
        }
    }
    return sum;
}

void refreshPieceSums(Position& position) {
    position.pstScore = pstOf(position);
    position.phase = phaseOf(position);
}

} // namespace helvan
