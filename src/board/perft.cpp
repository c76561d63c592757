// SPDX-License-Identifier: MIT
#include "board/perft.h"

#include <cstdio>

#include "board/advance.h"
#include "board/attacks.h"
#include "board/move_picker.h"
#include "board/moves.h"

namespace helvan {

namespace {

// Counts every legal move and hands its child to visit(child), in the picker's order. The child of a leaf is null where
// the move is known to be legal without it.
template <typename Visit>
void eachLegalChild(const Position& position, int depth, PerftCounters& counters, Visit visit) {
    const Bitboard exposed = exposedSquares(position, position.sideToMove());
    MovePicker picker(position, PickerKind::everyMove);
    Position child;
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
        const int kind = moveKind(move);
        // The picker's moves all pass: this holds the test against the generator.
        if (kind != enPassant && isPseudoLegal(position, move) == 0) continue;
        const bool mayLeaveInCheck = kind == enPassant || (bit(moveFrom(move)) & exposed) != 0;
        const bool made = depth > 1 || mayLeaveInCheck;
        if (made) advance(position, child, move);
        if (mayLeaveInCheck && moverLeftInCheck(child)) continue;
        ++counters.moves;
        if (depth == 1 && kind == castling) ++counters.castlings;
        visit(made ? &child : nullptr);
    }
}

std::uint64_t leavesBelow(const Position* child, int depth, PerftCounters& counters) {
    return child == nullptr ? 1 : perft(*child, depth - 1, counters);
}

} // namespace

std::uint64_t perft(const Position& position, int depth, PerftCounters& counters) {
    if (depth <= 0) return 1;
    std::uint64_t leaves = 0;
    eachLegalChild(position, depth, counters,
                   [&](const Position* child) { leaves += leavesBelow(child, depth, counters); });
    return leaves;
}

std::uint64_t perftRoot(const Position& position, int depth, int quiet, PerftCounters& counters) {
    if (depth <= 0) return 1;
    std::uint64_t leaves = 0;
    eachLegalChild(position, depth, counters, [&](const Position* child) {
        leaves += leavesBelow(child, depth, counters);
        if (quiet != 0) return;
        std::printf(".");
        std::fflush(stdout);
    });
    return leaves;
}

} // namespace helvan
