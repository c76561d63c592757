// SPDX-License-Identifier: MIT
#include "search/ordering.h"

#include <cstring>

#include "board/bits.h"

namespace helvan {

namespace {

CounterMove& counterSlot(const Position& position) {
    const int mover = position.movedPiece + boardsPerColour * position.sideToMove();
    return counterMove[mover * 4096 + (position.lastMove & 4095)];
}

// Steps are shares of the way to the end of the range, larger for deeper searches.
constexpr int historySteps = 64;
int stepOf(int depth) { return minimum(maximum(depth, 0), historySteps / 2); }

// What fails loses depth / 64 of its success, all of it at most.
std::int32_t decayed(std::int32_t successes, int depth) {
    return successes - successes * minimum(maximum(depth, 0), historySteps) / historySteps;
}

// Of the move's counter, and of the row of sequels to the position's last move.
int counterOf(const Position& position, Move move) {
    return pieceTypeAt(position, position.sideToMove(), moveFrom(move)) * 64 + moveTo(move);
}
int rowBehind(const Position& position) { return position.movedPiece * 64 + moveTo(position.lastMove); }

std::int16_t* repliesIn(const Position& position) { return replyHistory[position.sideToMove()][rowBehind(position)]; }

std::int16_t* followUpsIn(const Position& position) {
    const int row = position.prev == nullptr ? 0 : rowBehind(*position.prev);
    return followUpHistory[position.sideToMove()][row];
}

void raise(std::int16_t& sequel, int step) {
    sequel = static_cast<std::int16_t>(sequel + (largestSequel - sequel) * step / historySteps);
}
void lower(std::int16_t& sequel, int step) {
    sequel = static_cast<std::int16_t>(sequel - (largestSequel + sequel) * step / historySteps);
}

} // namespace

void clearKillers() {
    killerPrimary.fill(nullMove);
    killerSecondary.fill(nullMove);
}

void clearCounterMoves() { counterMove.fill({}); }

void clearHistory() {
    std::memset(history, 0, sizeof history);
    std::memset(replyHistory, 0, sizeof replyHistory);
    std::memset(followUpHistory, 0, sizeof followUpHistory);
}

QuietOrder quietOrderOf(const Position& position) {
    return {history[position.sideToMove()], repliesIn(position), followUpsIn(position)};
}

Move counterMoveOf(const Position& position) { return counterSlot(position).move; }

void noteCutoff(const Position& position, int ply, int depth, Move move, const Move* triedBefore, int triedCount) {
    counterSlot(position) = {position.movedPiece, move};
    if (killerPrimary[ply] != move) {
        killerSecondary[ply] = killerPrimary[ply];
        killerPrimary[ply] = move;
    }
    const int step = stepOf(depth);
    std::int32_t* const successes = history[position.sideToMove()];
    std::int16_t* const replies = repliesIn(position);
    std::int16_t* const followUps = followUpsIn(position);
    const int best = counterOf(position, move);
    successes[best] += (largestHistory - successes[best]) * step / historySteps;
    raise(replies[best], step);
    raise(followUps[best], step);
    for (int i = 0; i < triedCount; ++i) {
        if (triedBefore[i] == move) continue;
        const int tried = counterOf(position, triedBefore[i]);
        successes[tried] = decayed(successes[tried], depth);
        lower(replies[tried], step);
        lower(followUps[tried], step);
    }
}

} // namespace helvan
