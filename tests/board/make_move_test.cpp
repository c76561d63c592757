// SPDX-License-Identifier: MIT
#include "board/make_move.h"

#include <gtest/gtest.h>

#include "board/apply_move.h"
#include "board/node_counter.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

Position after(const Position& parent, const char* move) {
    Position child;
    EXPECT_EQ(applyMoveText(parent, child, move), 1) << move;
    return child;
}

} // namespace

TEST(MakeMove, IncrementalStateEqualsFromScratch) {
    forRandomPositions(100000, 5, [](const Position& position, Random&) {
        ASSERT_EQ(position.key, keyOf(position));
        ASSERT_EQ(position.pawnKey, pawnKeyOf(position));
        ASSERT_EQ(position.materialKey, materialKeyOf(position));
        ASSERT_EQ(position.pstScore, pstOf(position));
        ASSERT_EQ(position.phase, phaseOf(position));
        if (position.prev != nullptr) {
            ASSERT_TRUE(incrementalStateAgrees(*position.prev, position));
        }
    });
}

TEST(MakeMove, EnPassantSquareOnlyBesideAnEnemyPawn) {
    const Position start = positionOf(startFen);
    const Position quiet = after(start, "e2e4");
    EXPECT_EQ(quiet.epSquare, 0u);
    EXPECT_EQ(quiet.key ^ start.key, pieceKeys[pieceIndex(white, pawn, e2)] ^ pieceKeys[pieceIndex(white, pawn, e4)] ^
                                         pieceKeys[white] ^ pieceKeys[black]);
    const Position before = positionOf("rnbqkbnr/ppp1pppp/8/8/3p4/8/PPPPPPPP/RNBQKBNR w KQkq -");
    const Position pushed = after(before, "e2e4");
    EXPECT_EQ(pushed.epSquare, bit(e3));
    EXPECT_EQ(pushed.key, keyOf(pushed));
    const Position taken = after(pushed, "d4e3");
    EXPECT_EQ(taken.capturedPiece, 0);
    EXPECT_EQ(taken.fifty, 0);
    EXPECT_EQ(taken.of(white, pawn) & bit(e4), 0u);
    // The a- and the h-file are not neighbours.
    EXPECT_EQ(after(positionOf("4k3/8/8/7p/8/8/P7/4K3 w - -"), "a2a4").epSquare, 0u);
    EXPECT_EQ(after(positionOf("4k3/8/8/8/p7/8/7P/4K3 w - -"), "h2h4").epSquare, 0u);
}

TEST(MakeMove, NullMovePassesAndForgetsEnPassant) {
    const Position before = positionOf("rnbqkbnr/ppp1pppp/8/8/3p4/8/PPPPPPPP/RNBQKBNR w KQkq -");
    const Position pushed = after(before, "e2e4");
    const Position passed = childOf(pushed, nullMove);
    EXPECT_EQ(passed.epSquare, 0u);
    EXPECT_EQ(passed.key, keyOf(passed));
    EXPECT_EQ(passed.sideToMove(), white);
    EXPECT_EQ(passed.fifty, pushed.fifty + 1);
    EXPECT_EQ(passed.movedPiece, 0);
}

TEST(MakeMove, CastlingMovesTheRookAndTouchesFourSquares) {
    const Position before = positionOf("r3k2r/8/8/8/8/8/8/R3K2R w KQkq -");
    const Position castled = after(before, "e1g1");
    EXPECT_EQ(castled.of(white, rook), bit(a1) | bit(f1));
    EXPECT_EQ(castled.of(white, king), bit(g1));
    EXPECT_EQ(castled.touched & rank1, rank1 & ~bit(a1));
    EXPECT_EQ(castled.fifty, 0);
    EXPECT_EQ(after(after(before, "a1a8"), "e8e7").of(black, rook), bit(h8));
}

TEST(MakeMove, RightsAreLostByMovingAndByBeingCaptured) {
    const Position before = positionOf("r3k2r/8/8/8/8/8/8/R3K2R w KQkq -");
    const Position taken = after(before, "h1h8"); // both kingside rights go
    EXPECT_EQ(castlingIndex(taken.touched), castlingIndex(bit(h1) | bit(h8)));
    const Position back = after(after(after(before, "h1h2"), "e8e7"), "h2h1");
    EXPECT_NE(back.touched & bit(h1), 0u); // coming home does not restore the right
}

TEST(MakeMove, CapturingPromotionChangesEverySum) {
    const Position before = positionOf("3rk3/4P3/8/8/8/8/8/4K3 w - -");
    const Position promoted = after(before, "e7d8n");
    EXPECT_EQ(promoted.materialKey, materialKeys[materialIndex(white, knight)]);
    EXPECT_EQ(promoted.phase, 1);
    EXPECT_EQ(promoted.capturedPiece, rook);
    EXPECT_EQ(promoted.movedPiece, pawn);
    EXPECT_EQ(promoted.fifty, 0);
    EXPECT_EQ(promoted.evalScratch, evalNotComputed);
}

TEST(MakeMove, NodesStopAtTheLimitUnlessOverridden) {
    const Position position = positionOf(startFen);
    Position child;
    nodeCounter = NodeCounter{.count = 9, .limit = 10};
    makeMove(position, child, nullMove);
    EXPECT_EQ(nodeCounter.count, 10u);
    EXPECT_EQ(nodeCounter.stopSearch, 0);
    nodeCounter.overrideLimit = 1;
    makeMove(position, child, nullMove);
    EXPECT_EQ(nodeCounter.count, 11u);
    nodeCounter.overrideLimit = 0;
    makeMove(position, child, nullMove);
    EXPECT_EQ(nodeCounter.stopSearch, 1);
    EXPECT_EQ(nodeCounter.count, 11u);
    nodeCounter = NodeCounter{};
}

TEST(MakeMove, FaultsAreReportedAndCarriedOnWith) {
    const Position position = positionOf("4k3/8/8/8/8/8/8/4K2R w K -");
    ::testing::internal::CaptureStdout();
    const Position none = childOf(position, encodeMove(a4, a5));
    const Position king = childOf(position, encodeMove(h1, e8));
    const std::string said = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(said.find("\n ILLEGAL MOVE IN SEARCH\n  move in question: a4a5\n-----[ CTM = 0"), 0u) << said;
    EXPECT_NE(said.find("ERROR: king capture here\n"), std::string::npos);
    EXPECT_TRUE(std::equal(std::begin(position.pieces), std::end(position.pieces), std::begin(none.pieces)));
    EXPECT_EQ(king.of(black, allPieces), 0u);
}

} // namespace helvan::testing
