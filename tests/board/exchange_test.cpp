// SPDX-License-Identifier: MIT
#include "board/exchange.h"

#include <gtest/gtest.h>

#include "support/boards.h"
#include "support/letter_board.h"

namespace helvan::testing {

namespace {

int valueOf(char letter) {
    constexpr int values[] = {100, 300, 300, 500, 900, 10000, 0};
    return values[std::string("pnbrqk-").find(static_cast<char>(std::tolower(letter)))];
}

// What the side gains at best by capturing on the square, or by leaving it, played out capture by capture.
int bestCapture(const LetterBoard& board, Square square, Colour side) {
    for (const char man : std::string(menOf[side])) {
        for (Square from = 0; from < 64; ++from) {
            if (board[from] != man || !board.reaches(man, from, square)) continue;
            if (std::tolower(board[square]) == 'k') return valueOf('k'); // nothing is played after that
            LetterBoard next = board;
            next[square] = man;
            next[from] = '-';
            // A king may not step into an attack, even one that the enemy would rather not carry out.
            if (std::tolower(man) == 'k' && next.attackedBy(menOf[opponent(side)], square)) return 0;
            return std::max(0, valueOf(board[square]) - bestCapture(next, square, opponent(side)));
        }
    }
    return 0;
}

int playedOut(const Position& position, Move move) {
    LetterBoard board(position);
    const Square from = moveFrom(move), to = moveTo(move);
    int gain = valueOf(board[to]);
    board[to] = board[from];
    board[from] = '-';
    if (isPromotion(move)) {
        board[to] = menOf[position.sideToMove()][promotedType(moveKind(move)) - pawn];
        gain += valueOf(board[to]) - valueOf('p');
    }
    return gain - bestCapture(board, to, opponent(position.sideToMove()));
}

} // namespace

TEST(Exchange, AgreesWithPlayingTheCapturesOut) {
    forRandomPositions(100000, 12, [](const Position& position, Random&) {
        const Position passed = childOf(position, nullMove);
        for (const Move move : movesOf(position)) {
            const bool counts = (moveKind(move) & 2) == 0; // not en passant, castling, promotions to rook or bishop
            const int gain = counts ? playedOut(position, move) : 0;
            ASSERT_EQ(see(position, move), gain) << moveText(move);
            ASSERT_EQ(see(passed, move, 1), gain) << moveText(move);
            for (const int threshold : {-200, 0, 1, 300}) {
                ASSERT_EQ(seeAtLeast(position, move, threshold), gain >= threshold) << moveText(move);
            }
        }
    });
}

// Pieces of both colours, attacked or not, by whoever is to move.
TEST(Exchange, WhatCanBeWonOnASquareAgreesWithPlayingItOut) {
    forRandomPositions(30000, 13, [](const Position& position, Random&) {
        const LetterBoard board(position);
        for (const Colour colour : {white, black}) {
            const Colour enemy = opponent(colour);
            for (Bitboard men = position.of(enemy, allPieces) & ~position.of(enemy, king); men != 0;) {
                const Square square = popLowestBit(men);
                const int gain = bestCapture(board, square, colour);
                ASSERT_EQ(captureGain(position, square, colour), gain) << square;
                ASSERT_EQ(isEnPrise(position, square, colour), gain > 0) << square;
            }
        }
    });
}

TEST(Exchange, AKingCapturesNothingThatIsGuarded) {
    const Position position = positionOf("8/5r2/8/5k2/5P2/4K3/8/8 b - -");
    EXPECT_EQ(see(position, encodeMove(f5, f4)), 100 - 10000); // the rook behind it does not keep the other king off
    EXPECT_EQ(captureGain(position, f4, black), 0);
    EXPECT_FALSE(isEnPrise(position, f4, black));
}

} // namespace helvan::testing
