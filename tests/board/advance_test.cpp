// SPDX-License-Identifier: MIT
#include "board/advance.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/boards.h"
#include "support/output.h"

namespace helvan::testing {

TEST(Advance, IncrementalStateEqualsFromScratch) {
    forRandomPositions(100000, 5, [](const Position& position, Random&) {
        ASSERT_EQ(position.key, keyOf(position));
        ASSERT_EQ(position.pawnKey, pawnKeyOf(position));
        ASSERT_EQ(position.materialKey, materialKeyOf(position));
        ASSERT_EQ(position.pstScore, pstOf(position));
        ASSERT_EQ(position.phase, phaseOf(position));
        const std::vector<Move> moves = movesOf(position);
        const bool mayTakeEnPassant =
            std::any_of(moves.begin(), moves.end(), [](Move move) { return moveKind(move) == enPassant; });
        ASSERT_EQ(position.epSquare != 0, mayTakeEnPassant);
        const Position passed = childOf(position, nullMove);
        ASSERT_EQ(passed.key, keyOf(passed));
        ASSERT_EQ(passed.epSquare, 0U);
        ASSERT_EQ(passed.fifty, position.fifty + 1);
        ASSERT_EQ(passed.movedPiece, 0);

        if (position.prev == nullptr) return;
        const Position& before = *position.prev;
        const Move move = position.lastMove;
        const PieceType moved = pieceTypeAt(before, before.sideToMove(), moveFrom(move));
        const PieceType taken = pieceTypeAt(before, position.sideToMove(), moveTo(move));
        const bool isProgress = moved == pawn || taken != phantom || moveKind(move) == castling;
        ASSERT_TRUE(incrementalStateAgrees(before, position));
        ASSERT_EQ(position.movedPiece, moved);
        ASSERT_EQ(position.capturedPiece, taken == phantom ? 0 : taken);
        ASSERT_EQ(position.fifty, isProgress ? 0 : before.fifty + 1);
        ASSERT_EQ(position.touched & before.touched, before.touched);
    });
}

TEST(Advance, FaultsAreReportedAndCarriedOnWith) {
    const Position position = positionOf("4k3/8/8/8/8/8/8/4K2R w K -");
    Position none, king;
    const std::string said = printedBy([&] {
        none = childOf(position, encodeMove(a4, a5));
        king = childOf(position, encodeMove(h1, e8));
    });
    EXPECT_EQ(said.find("\n ILLEGAL MOVE IN SEARCH\n  move in question: a4a5\n-----[ CTM = 0"), 0U) << said;
    EXPECT_NE(said.find("ERROR: king capture here\n"), std::string::npos);
    EXPECT_TRUE(std::equal(std::begin(position.pieces), std::end(position.pieces), std::begin(none.pieces)));
    EXPECT_EQ(king.of(black, allPieces), 0U);
}

} // namespace helvan::testing
