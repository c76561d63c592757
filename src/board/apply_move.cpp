// SPDX-License-Identifier: MIT
#include "board/apply_move.h"

#include "board/advance.h"
#include "board/attacks.h"
#include "board/move_text.h"
#include "board/moves.h"

namespace helvan {

int applyMoveText(const Position& parent, Position& child, const char* text) {
    Move moves[maxMoves];
    const int count = allMoves(parent, moves);
    for (int i = 0; i < count; ++i) {
        if (!equalIgnoringCase(moveText(moves[i]).c_str(), text)) continue;
        advance(parent, child, moves[i]);
        child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
        return 1;
    }
    return 0;
}

} // namespace helvan
