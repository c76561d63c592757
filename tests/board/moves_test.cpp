// SPDX-License-Identifier: MIT
#include "board/moves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "board/checks.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

std::set<std::string> castlingsOf(const char* fen) {
    const Position position = positionOf(fen);
    Move moves[2];
    const int count = castlingMoves(position, position.sideToMove(), moves);
    std::set<std::string> texts;
    for (int i = 0; i < count; ++i) texts.insert(textOf(moves[i]));
    return texts;
}

using Texts = std::set<std::string>;

} // namespace

TEST(Castling, AttackedSquares) {
    EXPECT_EQ(castlingsOf("r3k2r/8/8/8/8/8/8/R3K2R w KQkq -"), (Texts{"e1g1", "e1c1"}));
    EXPECT_EQ(castlingsOf("r3k2r/8/8/8/8/8/8/R3K2R b KQkq -"), (Texts{"e8g8", "e8c8"}));
    EXPECT_EQ(castlingsOf("1r2k3/8/8/8/8/8/8/R3K2R w KQ -"), (Texts{"e1g1", "e1c1"})); // b1 may be attacked
    EXPECT_EQ(castlingsOf("2r1k3/8/8/8/8/8/8/R3K2R w KQ -"), (Texts{"e1g1"}));
    EXPECT_EQ(castlingsOf("4k1r1/8/8/8/8/8/8/R3K2R w KQ -"), (Texts{"e1c1"}));
    EXPECT_EQ(castlingsOf("4r1k1/8/8/8/8/8/8/R3K2R w KQ -"), Texts{});
    EXPECT_EQ(castlingsOf("4k3/8/8/8/8/8/8/RN2K1NR w KQ -"), Texts{});
    EXPECT_EQ(castlingsOf("4k3/8/8/8/8/8/8/R3K2R w - -"), Texts{});
}

// Every one of the 15-bit numbers, and some beyond: exactly the listed moves pass, en passant apart.
TEST(PseudoLegal, AcceptsExactlyTheListedMoves) {
    forRandomPositions(400, 6, [](const Position& position, Random&) {
        std::vector<Move> listed = movesOf(position);
        std::sort(listed.begin(), listed.end());
        ASSERT_EQ(std::adjacent_find(listed.begin(), listed.end()), listed.end()) << "a move is listed twice";
        for (Move move = -5; move <= 2 * moveBits; ++move) {
            const bool expected = moveKind(move) != enPassant && std::binary_search(listed.begin(), listed.end(), move);
            ASSERT_EQ(isPseudoLegal(position, move) != 0, expected) << textOf(move) << " kind " << moveKind(move);
        }
    });
}

TEST(GivesCheck, AgreesWithMakingTheMove) {
    forRandomPositions(100000, 7, [](const Position& position, Random&) {
        const KingLines lines(position, position.inCheck != 0);
        for (const Move move : movesOf(position)) {
            const Position child = childOf(position, move);
            ASSERT_EQ(lines.leavesInCheck(child), moverLeftInCheck(child)) << textOf(move);
            if (moverLeftInCheck(child)) continue;
            ASSERT_EQ(givesCheck(position, move), child.inCheck != 0) << textOf(move);
            ASSERT_EQ(lines.givesCheck(position, move), child.inCheck != 0) << textOf(move);
        }
    });
}

// What random play reaches too rarely.
TEST(GivesCheck, RareCases) {
    const auto gives = [](const char* fen, Move move) { return givesCheck(positionOf(fen), move); };
    EXPECT_TRUE(gives("5k2/8/8/8/8/8/8/4K2R w K -", encodeMove(e1, g1, castling)));
    EXPECT_TRUE(gives("8/8/8/8/8/8/8/R3K2k w Q -", encodeMove(e1, c1, castling)));
    EXPECT_FALSE(gives("6k1/8/8/8/8/8/8/4K2R w K -", encodeMove(e1, g1, castling)));
    // The promoted piece looks back through the square the pawn left.
    EXPECT_TRUE(gives("8/3P4/8/3k4/8/8/8/4K3 w - -", encodeMove(d7, d8, promoteQueen)));
    EXPECT_TRUE(gives("8/3P1k2/8/8/8/8/8/4K3 w - -", encodeMove(d7, d8, promoteKnight)));
    EXPECT_FALSE(gives("8/3P1k2/8/8/8/8/8/4K3 w - -", encodeMove(d7, d8, promoteRook)));
    // En passant opens the rank by taking both pawns off it, and a diagonal by taking the victim.
    EXPECT_TRUE(gives("8/8/8/R2pP2k/8/8/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
    EXPECT_TRUE(gives("8/8/6k1/3pP3/8/1B6/8/4K3 w - -", encodeMove(e5, d6, enPassant)) ==
                gives("8/8/6k1/4P3/8/1B6/8/4K3 w - -", encodeMove(e5, d6)));
    EXPECT_TRUE(gives("6k1/8/8/3pP3/8/1B6/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
}

} // namespace helvan::testing
