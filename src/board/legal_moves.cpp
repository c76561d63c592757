// SPDX-License-Identifier: MIT
#include "board/legal_moves.h"

#include "board/advance.h"
#include "board/moves.h"

namespace helvan {

int legalMoves(const Position& position, Move* out) {
    const int all = allMoves(position, out);
    int legal = 0;
    Position child;
    for (int i = 0; i < all; ++i) {
        advance(position, child, out[i]);
        if (!moverLeftInCheck(child)) out[legal++] = out[i];
    }
    return legal;
}

} // namespace helvan
