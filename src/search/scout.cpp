// SPDX-License-Identifier: MIT
#include "search/scout.h"

#include "board/attacks.h"
#include "board/bits.h"
#include "board/make_move.h"
#include "board/move_picker.h"
#include "search/draws.h"
#include "search/limits.h"
#include "search/quiesce.h"
#include "search/settings.h"

namespace helvan {

void joinPv(Move* pvOut, Move move, const Move* line) {
    *pvOut++ = move;
    for (int i = 0; i < pvCapacity - 2 && line[i] != nullMove; ++i) *pvOut++ = line[i];
    *pvOut = nullMove;
}

int searchNode(const Position& position, int alpha, int beta, int depth, int ply, Move* pvOut) {
    pvOut[0] = nullMove;
    if (searchMustStop()) return 0;
    if (depth <= 0 || ply >= maxPly) return quiesce(position, alpha, beta, ply);
    MovePicker picker(position, position.inCheck != 0 ? PickerKind::evasions : PickerKind::everyMove);
    Position child;
    Move line[pvCapacity];
    int best = -infiniteScore;
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
        makeMove(position, child, move);
        if (moverLeftInCheck(child)) continue;
        child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
        line[0] = nullMove;
        const bool drawn = drawnByRule(child);
        const int score = drawn ? 0 : -searchNode(child, -beta, -maximum(alpha, best), depth - 1, ply + 1, line);
        if (nodeCounter.stopSearch != 0) return 0;
        if (score <= best) continue;
        best = score;
        if (score > alpha) joinPv(pvOut, move, line);
        if (score >= beta) break;
    }
    if (best == -infiniteScore) return position.inCheck != 0 ? matedScore(ply) : 0; // no legal move
    return best;
}

} // namespace helvan
