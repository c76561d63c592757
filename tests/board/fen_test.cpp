// SPDX-License-Identifier: MIT
#include "board/fen.h"

#include <gtest/gtest.h>

#include "board/validity.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

std::string written(const Position& position) {
    char buffer[fenBufferSize];
    positionToFen(position, buffer);
    return buffer;
}

constexpr Bitboard allHomesTouched = 0xff000000000000ff;

} // namespace

TEST(Fen, EmptyTextIsTheStartPosition) {
    const Position position = positionOf("");
    EXPECT_EQ(castlingIndex(position.touched), castlingIndex(0)); // all rights
    EXPECT_EQ(position.epSquare, 0u);
    EXPECT_EQ(position.ply, 0);
    EXPECT_EQ(position.fifty, 0);
    EXPECT_EQ(position.phase, 96);
    EXPECT_EQ(position.prev, nullptr);
    EXPECT_EQ(written(position), "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w - -");
}

TEST(Fen, WritingGivesBackThePlacement) {
    forRandomPositions(2000, 4, [](const Position& position, Random&) {
        const std::string fen = written(position);
        const Position again = positionOf(fen);
        ASSERT_TRUE(std::equal(std::begin(position.pieces), std::end(position.pieces), std::begin(again.pieces)));
        ASSERT_EQ(again.sideToMove(), position.sideToMove());
        ASSERT_EQ(written(again), fen);
    });
}

TEST(Fen, CastlingLettersUntouchTheirSquares) {
    const std::string placement = "r3k2r/8/8/8/8/8/8/R3K2R w ";
    EXPECT_EQ(positionOf(placement + "- -").touched, allHomesTouched);
    EXPECT_EQ(positionOf(placement + "K -").touched, allHomesTouched & ~(bit(e1) | bit(h1)));
    EXPECT_EQ(positionOf(placement + "xQ? -").touched, allHomesTouched & ~(bit(a1) | bit(e1)));
    EXPECT_EQ(positionOf(placement + "kq").touched, allHomesTouched & ~(bit(a8) | bit(e8) | bit(h8)));
    EXPECT_NE(positionOf(placement + "K -").key, positionOf(placement + "Q -").key);
}

TEST(Fen, EnPassantFieldOnlyTellsTheLastMove) {
    const Position position = positionOf("rnbqkbnr/ppp1pppp/8/8/3pP3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 3");
    EXPECT_EQ(position.epSquare, 0u);
    EXPECT_EQ(position.lastMove, encodeMove(e2, e4));
    EXPECT_EQ(position.ply, 1);
    EXPECT_EQ(position.key, keyOf(position));
    EXPECT_EQ(positionOf("4k3/8/8/3Pp3/8/8/8/4K3 w -   e6").lastMove, encodeMove(e7, e5));
    for (const char* field : {"-", "", "e", "i3", "3e", "E3"}) {
        EXPECT_EQ(positionOf(std::string("4k3/8/8/8/8/8/8/4K3 w - ") + field).lastMove, nullMove) << field;
    }
}

TEST(Fen, SideToMoveInCheckIsSeen) {
    EXPECT_EQ(positionOf("4k3/8/8/8/8/8/8/K3R3 b - -").inCheck, 1);
    EXPECT_EQ(positionOf("4k3/8/8/8/8/8/8/K3R3 w - -").inCheck, 0);
    EXPECT_EQ(positionOf("8/8/8/8/8/8/8/R7 b - -").inCheck, 0); // no king at all
}

TEST(Fen, MalformedPlacementNeverLeavesTheBoard) {
    const Position crowded = positionOf(std::string(120, 'Q') + " w KQkq -");
    EXPECT_EQ(popCount(crowded.of(white, queen)), 64);
    const Position odd = positionOf("x//0k9K w - -"); // any other letter is a square; '/' only fills a rank up
    EXPECT_EQ(odd.of(black, king), bit(a7));
    EXPECT_EQ(odd.of(white, king), bit(c6));
    EXPECT_EQ(positionOf("kK w").touched, allHomesTouched);
    // Only so much is read: the cut falls into the fields behind the side to move.
    for (int zeros = 235; zeros <= 252; ++zeros) {
        const Position cut = positionOf("k" + std::string(static_cast<std::size_t>(zeros), '0') + " w KQkq e3 0 1");
        EXPECT_EQ(cut.of(black, king), bit(a8));
    }
}

TEST(FenDeathTest, MissingSideToMoveEndsTheProcess) {
    EXPECT_EXIT(positionOf("4k3/8/8/8/8/8/8/4K3 x - -"), ::testing::ExitedWithCode(1),
                "Error in ctm for fen \"4k3/8/8/8/8/8/8/4K3 x - -\"");
    EXPECT_EXIT(positionOf("4k3/8/8/8/8/8/8/4K3"), ::testing::ExitedWithCode(1), "Error in ctm");
}

TEST(Validity, NamesWhatIsWrong) {
    EXPECT_EQ(unplayableReason(positionOf(startFen)), nullptr);
    EXPECT_STREQ(unplayableReason(positionOf("8/8/8/8/8/8/8/K7 w - -")), "black has no king");
    EXPECT_STREQ(unplayableReason(positionOf("k7/8/8/8/8/8/8/KK6 w - -")), "white has more than one king");
    EXPECT_STREQ(unplayableReason(positionOf("k6P/8/8/8/8/8/8/K7 w - -")), "a pawn stands on the first or last rank");
    EXPECT_STREQ(unplayableReason(positionOf("k7/8/8/8/8/8/8/R6K w - -")), "the side not to move is in check");
}

TEST(Validity, UnfoundedCastlingRightsAreDropped) {
    Position position = positionOf("r3k3/8/8/8/8/8/8/R2K3R w KQkq -");
    dropUnfoundedCastlingRights(position);
    EXPECT_EQ(position.touched & (bit(a8) | bit(e8)), 0u); // black's queen side stands
    EXPECT_NE(position.touched & bit(e1), 0u);
    EXPECT_NE(position.touched & bit(h8), 0u);
    EXPECT_EQ(position.key, keyOf(position));
}

} // namespace helvan::testing
