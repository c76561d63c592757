// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>

#include "board/display.h"
#include "board/fen.h"
#include "board/validity.h"
#include "support/boards.h"
#include "support/output.h"

namespace helvan::testing {

TEST(Fen, EmptyTextIsTheStartPosition) {
    const Position position = positionOf("");
    EXPECT_EQ(castlingIndex(position.touched), castlingIndex(0)); // all rights
    EXPECT_EQ(position.ply, 0);
    EXPECT_EQ(position.fifty, 0);
    EXPECT_EQ(position.phase, 96);
    EXPECT_EQ(position.prev, nullptr);
    EXPECT_EQ(positionToFen(position), "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w - -");
}

TEST(Fen, WritingGivesBackThePlacement) {
    forRandomPositions(2000, 4, [](const Position& position, Random&) {
        const Position again = positionOf(positionToFen(position));
        ASSERT_TRUE(std::equal(std::begin(position.pieces), std::end(position.pieces), std::begin(again.pieces)));
        ASSERT_EQ(again.sideToMove(), position.sideToMove());
        ASSERT_EQ(again.inCheck, position.inCheck);
        ASSERT_EQ(positionToFen(again), positionToFen(position));
        ASSERT_EQ(castlingText(positionOf(positionToFenWithRights(position))), castlingText(position));
    });
    for (int subset = 0; subset < 16; ++subset) {
        std::string fen = "r3k2r/8/8/8/8/8/8/R3K2R b ";
        for (int i = 0; i < 4; ++i) fen += (subset >> i & 1) != 0 ? std::string(1, "KQkq"[i]) : "";
        fen += subset != 0 ? " -" : "- -";
        EXPECT_EQ(positionToFenWithRights(positionOf(fen)), fen);
    }
}

TEST(Fen, WithoutASideToMoveThePositionStaysAsItWas) {
    const Position before = play(startFen, "e2e4").back();
    for (const char* text :
         {"8/8/8/8/8/8/8/8 x - -", "8/8/8/8/8/8/8/8  w - -", "8/8/8/8/8/8/8/8 W - -", "8/8 ", "8/8"}) {
        Position position = before;
        EXPECT_NE(setupFromFen(position, text), nullptr) << text;
        EXPECT_EQ(std::memcmp(&position, &before, sizeof before), 0) << text;
    }
}

TEST(Fen, EnPassantFieldOnlyTellsTheLastMove) {
    const Position position = positionOf("rnbqkbnr/ppp1pppp/8/8/3pP3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 3");
    EXPECT_EQ(position.epSquare, 0U);
    EXPECT_EQ(position.lastMove, encodeMove(e2, e4));
    EXPECT_EQ(position.ply, 1);
    EXPECT_EQ(positionOf("4k3/8/8/3Pp3/8/8/8/4K3 w -   e6").lastMove, encodeMove(e7, e5));
    for (const char digit : std::string("0124589")) { // all but the third rank tell of black's push
        EXPECT_EQ(positionOf(std::string("4k3/8/8/8/8/8/8/4K3 w - h") + digit).lastMove, encodeMove(h7, h5)) << digit;
    }
    for (const char* field : {"-", "", "e", "i3", "3e", "E3"}) {
        EXPECT_EQ(positionOf(std::string("4k3/8/8/8/8/8/8/4K3 w - ") + field).lastMove, nullMove) << field;
    }
}

TEST(Fen, MalformedPlacementNeverLeavesTheBoard) {
    const Position crowded = positionOf(std::string(120, 'Q') + " w KQkq -");
    EXPECT_EQ(popCount(crowded.of(white, queen)), 64);
    const Position odd = positionOf("x//0k9K w - -"); // any other letter is a square; '/' only fills a rank up
    EXPECT_EQ(odd.of(black, king), bit(a7));
    EXPECT_EQ(odd.of(white, king), bit(c6));
    // Only so much is read: the cut falls into the fields behind the side to move.
    for (int zeros = 235; zeros <= 252; ++zeros) {
        const Position cut = positionOf("k" + std::string(static_cast<std::size_t>(zeros), '0') + " w KQkq e3 0 1");
        EXPECT_EQ(cut.of(black, king), bit(a8));
    }
}

TEST(Validity, NamesWhatIsWrong) {
    EXPECT_EQ(unplayableReason(positionOf(startFen)), nullptr);
    const char* rows[][2] = {{"8/8/8/8/8/8/8/K7 w - -", "black has no king"},
                             {"k7/8/8/8/8/8/8/KK6 w - -", "white has more than one king"},
                             {"8/8/8/8/8/8/8/k7 w - -", "white has no king"},
                             {"kk6/8/8/8/8/8/8/7K w - -", "black has more than one king"},
                             {"k6P/8/8/8/8/8/8/K7 w - -", "a pawn stands on the first or last rank"},
                             {"k7/8/8/8/8/8/8/K6p w - -", "a pawn stands on the first or last rank"},
                             {"k7/8/8/8/8/8/8/R6K w - -", "the side not to move is in check"}};
    for (const auto& [fen, reason] : rows) EXPECT_STREQ(unplayableReason(positionOf(fen)), reason);
}

TEST(Validity, RightsFallWithoutTheirOwnKingOrRook) {
    const char* rows[][2] = {{"r3k2r/8/8/8/8/8/8/R3K2R", "KQkq"}, {"r3k2r/8/8/8/8/8/8/R3K2r", "Qkq"},
                             {"R3k2r/8/8/8/8/8/8/R3K2R", "KQk"},  {"r3k2r/8/8/8/8/8/8/R2K3R", "kq"},
                             {"r3K2r/8/8/8/8/8/8/R3K2R", "KQ"},   {"r3k3/8/8/8/8/8/8/4K2R", "Kq"}};
    for (const auto& [placement, rights] : rows) {
        Position position = positionOf(std::string(placement) + " w KQkq -");
        dropUnfoundedCastlingRights(position);
        EXPECT_EQ(castlingText(position), rights);
        EXPECT_EQ(position.key, keyOf(position));
    }
}

TEST(MoveText, WritesKindsAndNull) {
    EXPECT_EQ(moveText(nullMove), "null");
    EXPECT_EQ(moveText(encodeMove(e1, g1, castling)), "e1g1");
    for (int i = 0; i < 4; ++i) EXPECT_EQ(moveText(encodeMove(e7, e8, promoteQueen + i)).back(), "qnrb"[i]);
}

TEST(MoveText, EveryMoveIsFoundAgainByItsText) {
    forRandomPositions(3000, 13, [](const Position& position, Random&) {
        for (const Move move : movesOf(position)) {
            std::string text = moveText(move);
            text[0] = static_cast<char>(text[0] - 'a' + 'A'); // whatever the case
            Position child;
            ASSERT_EQ(applyMoveText(position, child, text.c_str()), 1);
            ASSERT_EQ(child.lastMove, move);
            ASSERT_EQ(child.inCheck, inCheck(child, child.sideToMove()));
        }
    });
}

TEST(MoveText, WhatIsNoMoveLeavesTheChildAlone) {
    const Position position = positionOf("r3k2r/8/8/8/8/8/8/R3K2R w KQkq -");
    Position child = positionOf(startFen);
    for (const char* text : {"null", "e1h1", "e1g1q", "e1", "", "a1a9", "e8e7"}) {
        EXPECT_EQ(applyMoveText(position, child, text), 0) << text;
    }
    EXPECT_EQ(child.key, positionOf(startFen).key);
}

TEST(Display, BoardWithHeader) {
    const Position start = positionOf(startFen);
    const Position child = childOf(start, encodeMove(e2, e4, doublePush));
    EXPECT_EQ(printedBy([&] { printBoard(child); }),
              "\n-----[ CTM = 1   INCHECK = 0   last: e2e4 null   rights: KQkq]-----"
              "\n r n b q k b n r\n p p p p p p p p\n - - - - - - - -"
              "\n - - - - - - - -\n - - - - P - - -\n - - - - - - - -"
              "\n P P P P - P P P\n R N B Q K B N R\n\n");
}

TEST(Display, Bits) {
    const std::string empty = "\n - - - - - - - -";
    EXPECT_EQ(printedBy([] { printBits(bit(a1) | bit(h8) | bit(c8)); }),
              "\nBITS\n - - # - - - - #" + empty + empty + empty + empty + empty + empty + "\n # - - - - - - -\n");
}

} // namespace helvan::testing
