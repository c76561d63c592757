// SPDX-License-Identifier: MIT
#include "board/perft.h"

#include <cstdio>

#include "board/attacks.h"
#include "board/make_move.h"
#include "board/move_picker.h"
#include "board/moves.h"

namespace helvan {

namespace {

// Counts every legal move and hands its child to visit(child), in the picker's order. The child of a leaf is null where
// the move is known to be legal without it.
template <typename Visit> void eachLegalChild(const Position& position, int depth, Visit visit) {
    const Bitboard exposed = exposedSquares(position, position.sideToMove());
    MovePicker picker(position, PickerKind::everyMove);
    Position child;
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
        const int kind = moveKind(move);
        // The picker's moves all pass: this holds the test against the generator.
        if (kind != enPassant && isPseudoLegal(position, move) == 0) continue;
        const bool mayLeaveInCheck = kind == enPassant || (bit(moveFrom(move)) & exposed) != 0;
        const bool made = depth > 1 || mayLeaveInCheck;
        if (made) makeMove(position, child, move);
        if (mayLeaveInCheck && moverLeftInCheck(child)) continue;
        ++perftCounters.moves;
        if (depth == 1 && kind == castling) ++perftCounters.castlings;
        visit(made ? &child : nullptr);
    }
}

std::uint64_t leavesBelow(const Position* child, int depth) { return child == nullptr ? 1 : perft(*child, depth - 1); }

} // namespace

std::uint64_t perft(const Position& position, int depth) {
    if (depth <= 0) return 1;
    std::uint64_t leaves = 0;
    eachLegalChild(position, depth, [&](const Position* child) { leaves += leavesBelow(child, depth); });
    return leaves;
}

std::uint64_t perftRoot(const Position& position, int depth, int quiet) {
    if (depth <= 0) return 1;
    std::uint64_t leaves = 0;
    eachLegalChild(position, depth, [&](const Position* child) {
        leaves += leavesBelow(child, depth);
        if (quiet != 0) return;
        std::printf(".");
        std::fflush(stdout);
    });
    return leaves;
}

} // namespace helvan
