// SPDX-License-Identifier: MIT
#include "search/quiesce.h"

#include "board/bits.h"
#include "board/make_move.h"
#include "board/move_picker.h"
#include "eval/evaluate.h"
#include "search/limits.h"
#include "search/settings.h"

namespace helvan {

int quiesce(const Position& position, int alpha, int beta, int ply) {
    if (searchMustStop()) return 0;
    int best = evaluate(position); // the side to move need not capture
    if (best >= beta || ply >= maxPly) return best;
    MovePicker picker(position, PickerKind::soundCaptures);
    Position child;
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
        makeMove(position, child, move);
        if (moverLeftInCheck(child)) continue;
        const int score = -quiesce(child, -beta, -maximum(alpha, best), ply + 1);
        if (nodeCounter.stopSearch != 0) return 0;
        best = maximum(best, score);
        if (best >= beta) break;
    }
    return best;
}

} // namespace helvan
