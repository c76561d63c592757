// SPDX-License-Identifier: MIT
#include "search/ordering.h"

#include <cstring>

#include "board/bits.h"

namespace helvan {

namespace {

// Of the answer to the position's last move.
int counterSlot(const Position& position) {
    const int mover = position.movedPiece + boardsPerColour * position.sideToMove();
    return mover * 4096 + (position.lastMove & 4095);
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

int rowBeforeLast(const Position& position) { return position.prev == nullptr ? 0 : rowBehind(*position.prev); }

void raise(std::int16_t& sequel, int step) {
    sequel = static_cast<std::int16_t>(sequel + (largestSequel - sequel) * step / historySteps);
}
void lower(std::int16_t& sequel, int step) {
    sequel = static_cast<std::int16_t>(sequel - (largestSequel + sequel) * step / historySteps);
}

} // namespace

void clearMoveHistory(MoveHistory& history) { std::memset(&history, 0, sizeof history); }

QuietOrder quietOrderOf(const MoveHistory& moveHistory, const Position& position) {
    const Colour us = position.sideToMove();
    return {moveHistory.history[us], moveHistory.replyHistory[us][rowBehind(position)],
            moveHistory.followUpHistory[us][rowBeforeLast(position)]};
}

Move counterMoveOf(const MoveHistory& moveHistory, const Position& position) {
    return moveHistory.counterMove[counterSlot(position)].move;
}

void noteKiller(Killers& killers, int ply, Move move) {
    if (killers.killerPrimary[ply] == move) return;
    killers.killerSecondary[ply] = killers.killerPrimary[ply];
    killers.killerPrimary[ply] = move;
}

void noteSuccess(MoveHistory& moveHistory, const Position& position, int depth, Move move, const Move* triedBefore,
                 int triedCount) {
    const Colour us = position.sideToMove();
    moveHistory.counterMove[counterSlot(position)] = {position.movedPiece, move};
    const int step = stepOf(depth);
    std::int32_t* const successes = moveHistory.history[us];
    std::int16_t* const replies = moveHistory.replyHistory[us][rowBehind(position)];
    std::int16_t* const followUps = moveHistory.followUpHistory[us][rowBeforeLast(position)];
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
