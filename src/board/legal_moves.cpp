// SPDX-License-Identifier: MIT
#include "board/legal_moves.h"

#include "board/make_move.h"
#include "board/moves.h"
#include "board/node_counter.h"

namespace helvan {

int legalMoves(const Position& position, Move* out) {
    const NodeCounter counted = nodeCounter;
    const int all = allMoves(position, out);
    int legal = 0;
    Position child;
    for (int i = 0; i < all; ++i) {
        makeMove(position, child, out[i]);
        if (!moverLeftInCheck(child)) out[legal++] = out[i];
    }
    nodeCounter = counted;
    return legal;
}

} // namespace helvan
