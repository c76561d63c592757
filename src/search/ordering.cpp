// SPDX-License-Identifier: MIT
#include "search/ordering.h"

#include "board/bits.h"

namespace helvan {

namespace {

CounterMove& counterSlot(const Position& position) {
    const int mover = position.movedPiece + boardsPerColour * position.sideToMove();
    return counterMove[mover * 4096 + (position.lastMove & 4095)];
}

std::int32_t& historyOf(const Position& position, Move move) {
    const Colour us = position.sideToMove();
    return history[us][pieceTypeAt(position, us, moveFrom(move)) * 64 + moveTo(move)];
}

// Steps are shares of the way to the end of the range, larger for deeper searches.
constexpr int historySteps = 64;
int stepOf(int depth) { return minimum(maximum(depth, 0), historySteps / 2); }

} // namespace

void clearKillers() {
    killerPrimary.fill(nullMove);
    killerSecondary.fill(nullMove);
}

void clearCounterMoves() { counterMove.fill({}); }

void clearHistory() {
    for (auto& side : history) {
        for (std::int32_t& counter : side) counter = 0;
    }
}

Move counterMoveOf(const Position& position) { return counterSlot(position).move; }

void noteCutoff(const Position& position, int ply, int depth, Move move, const Move* triedBefore, int triedCount) {
    counterSlot(position) = {position.movedPiece, move};
    if (killerPrimary[ply] != move) {
        killerSecondary[ply] = killerPrimary[ply];
        killerPrimary[ply] = move;
    }
    const int step = stepOf(depth);
    std::int32_t& raised = historyOf(position, move);
    raised += (largestHistory - raised) * step / historySteps;
    for (int i = 0; i < triedCount; ++i) {
        if (triedBefore[i] == move) continue;
        std::int32_t& lowered = historyOf(position, triedBefore[i]);
        lowered -= lowered * step / historySteps;
    }
}

} // namespace helvan
