// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "board/apply_move.h"
#include "board/display.h"
#include "support/boards.h"

namespace helvan::testing {

TEST(MoveText, WritesKindsAndNull) {
    EXPECT_EQ(textOf(nullMove), "null");
    EXPECT_EQ(textOf(encodeMove(e1, g1, castling)), "e1g1");
    EXPECT_EQ(textOf(encodeMove(e7, e8, promoteQueen)), "e7e8q");
    EXPECT_EQ(textOf(encodeMove(e7, e8, promoteKnight)), "e7e8n");
    EXPECT_EQ(textOf(encodeMove(e7, e8, promoteRook)), "e7e8r");
    EXPECT_EQ(textOf(encodeMove(e7, e8, promoteBishop)), "e7e8b");
}

TEST(MoveText, EveryMoveIsFoundAgainByItsText) {
    forRandomPositions(3000, 13, [](const Position& position, Random&) {
        for (const Move move : movesOf(position)) {
            std::string text = textOf(move);
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

TEST(Words, AreCutAtEverySeparator) {
    char line[] = "\t go  depth\t7\r\n";
    char* words[8];
    ASSERT_EQ(splitWords(line, words), 3);
    EXPECT_STREQ(words[0], "go");
    EXPECT_STREQ(words[1], "depth");
    EXPECT_STREQ(words[2], "7");
    char blank[] = " \t\r\n";
    EXPECT_EQ(splitWords(blank, words), 0);
}

TEST(Display, BoardWithHeader) {
    const Position start = positionOf(startFen);
    const Position child = childOf(start, encodeMove(e2, e4, doublePush));
    ::testing::internal::CaptureStdout();
    printBoard(child);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "\n-----[ CTM = 1   INCHECK = 0   last: e2e4 null   rights: KQkq]-----"
              "\n r n b q k b n r\n p p p p p p p p\n - - - - - - - -"
              "\n - - - - - - - -\n - - - - P - - -\n - - - - - - - -"
              "\n P P P P - P P P\n R N B Q K B N R\n\n");
    ::testing::internal::CaptureStdout();
    printBits(bit(a8) | bit(h1));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "\nBITS\n # - - - - - - -\n - - - - - - - -\n - - - - - - - -\n - - - - - - - -"
              "\n - - - - - - - -\n - - - - - - - -\n - - - - - - - -\n - - - - - - - #\n");
}

} // namespace helvan::testing
