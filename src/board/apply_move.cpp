// SPDX-License-Identifier: MIT
#include "board/apply_move.h"

#include <cstdio>

#include "board/attacks.h"
#include "board/make_move.h"
#include "board/move_text.h"
#include "board/moves.h"

namespace helvan {

int applyMoveText(const Position& parent, Position& child, const char* text) {
    Move moves[maxMoves];
    const int count = allMoves(parent, moves);
    for (int i = 0; i < count; ++i) {
        char candidate[moveTextSize];
        moveToText(moves[i], candidate);
        if (!equalIgnoringCase(candidate, text)) continue;
        if (makeMove(parent, child, moves[i]) == 0) {
            std::fprintf(stderr, "Cannot execute move %s\n", text);
            continue;
        }
        child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
        return 1;
    }
    return 0;
}

} // namespace helvan
