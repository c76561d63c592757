// SPDX-License-Identifier: MIT
#include "board/advance.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/boards.h"
#include "support/letter_board.h"
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
        Position checked = position, unchecked;
        checked.inCheck = 1;
        advance(checked, unchecked, nullMove);
        ASSERT_EQ(unchecked.inCheck, 0);

        if (position.prev == nullptr) return;
        const Position& before = *position.prev;
        const Move move = position.lastMove;
        const PieceType moved = pieceTypeAt(before, before.sideToMove(), moveFrom(move));
        const PieceType taken = pieceTypeAt(before, position.sideToMove(), moveTo(move));
        const bool isProgress = moved == pawn || taken != phantom || moveKind(move) == castling;
        ASSERT_TRUE(incrementalStateAgrees(before, position));
        ASSERT_EQ(position.evalScratch, evalNotComputed);
        ASSERT_EQ(position.movedPiece, moved);
        ASSERT_EQ(position.capturedPiece, taken == phantom ? 0 : taken);
        ASSERT_EQ(position.fifty, isProgress ? 0 : before.fifty + 1);
        ASSERT_EQ(position.touched & before.touched, before.touched);
    });
}

// Held against a board of letters, which knows nothing of pins and lines.
TEST(Advance, LegallyMeansWithoutLeavingTheKingAttacked) {
    forRandomPositions(2000, 15, [](const Position& position, Random&) {
        const Colour us = position.sideToMove(), them = opponent(us);
        for (const Move move : movesOf(position)) {
            Position child;
            const bool legal = advanceLegally(position, child, move);
            const LetterBoard board(child);
            const auto attacked = [&](Colour side) {
                return board.attackedBy(menOf[opponent(side)], board.find(menOf[side][king - pawn]));
            };
            ASSERT_EQ(legal, !attacked(us)) << moveText(move);
            if (legal) {
                ASSERT_EQ(child.inCheck != 0, attacked(them)) << moveText(move);
            }
        }
    });
}

TEST(Advance, TheLikelyKeyIsTheTrueOneOfPlainMoves) {
    forRandomPositions(5000, 16, [](const Position& position, Random&) {
        std::vector<Move> moves = movesOf(position);
        moves.push_back(nullMove);
        for (const Move move : moves) {
            const Position child = childOf(position, move);
            const bool sameRights = castlingIndex(child.touched) == castlingIndex(position.touched);
            const bool isPlain = sameRights && moveKind(move) <= doublePush && position.epSquare == child.epSquare;
            if (isPlain && position.epSquare == 0) {
                ASSERT_EQ(likelyKeyAfter(position, move), child.key) << moveText(move);
            }
        }
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
