// SPDX-License-Identifier: MIT
#include "board/exchange.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>

#include "support/boards.h"

namespace helvan::testing {

namespace {

// A board of letters on which exchanges are played out capture by capture, without bitboards.
using Letters = std::array<char, 64>;

int valueOf(char letter) {
    switch (std::tolower(letter)) {
    case 'p': return 100;
    case 'n':
    case 'b': return 300;
    case 'r': return 500;
    case 'q': return 900;
    case 'k': return 10000;
    default: return 0;
    }
}

bool attacks(const Letters& board, Square from, Square to) {
    const char letter = board[from];
    const int dx = fileOf(to) - fileOf(from), dy = rankOf(to) - rankOf(from);
    const int files = std::abs(dx), ranks = std::abs(dy);
    const bool straight = (dx == 0) != (dy == 0), diagonal = files == ranks && dx != 0;
    bool reaches = false;
    switch (std::tolower(letter)) {
    case 'p': return files == 1 && dy == (letter == 'P' ? 1 : -1);
    case 'n': return files * ranks == 2;
    case 'k': return std::max(files, ranks) == 1;
    case 'b': reaches = diagonal; break;
    case 'r': reaches = straight; break;
    case 'q': reaches = diagonal || straight; break;
    default: break;
    }
    if (!reaches) return false;
    const int step = (dx > 0) - (dx < 0) + 8 * ((dy > 0) - (dy < 0));
    for (Square square = from + step; square != to; square += step) {
        if (board[square] != '-') return false;
    }
    return true;
}

bool belongsTo(char letter, Colour colour) { return letter != '-' && (letter >= 'a') == (colour == black); }

// What the side gains at best by capturing on the square, or by leaving it.
int bestCapture(const Letters& board, Square square, Colour side) {
    for (const char type : {'p', 'n', 'b', 'r', 'q', 'k'}) {
        for (Square from = 0; from < 64; ++from) {
            if (!belongsTo(board[from], side) || std::tolower(board[from]) != type) continue;
            if (!attacks(board, from, square)) continue;
            Letters next = board;
            next[square] = board[from];
            next[from] = '-';
            const int gain = valueOf(board[square]) - bestCapture(next, square, opponent(side));
            // A king may not step into an attack, even one that the enemy would rather not carry out.
            bool attacked = false;
            for (Square other = 0; other < 64; ++other) {
                attacked |= belongsTo(next[other], opponent(side)) && attacks(next, other, square);
            }
            if (type == 'k' && attacked) return 0;
            return std::max(0, gain);
        }
    }
    return 0;
}

int playedOut(const Position& position, Move move) {
    Letters board;
    for (Square square = 0; square < 64; ++square) board[square] = pieceLetterAt(position, square);
    const Square from = moveFrom(move), to = moveTo(move);
    const Colour us = position.sideToMove();
    int gain = valueOf(board[to]);
    board[to] = board[from];
    board[from] = '-';
    if (isPromotion(move)) {
        const char promoted = "qnrb"[moveKind(move) - promoteQueen];
        gain += valueOf(promoted) - valueOf('p');
        board[to] = static_cast<char>(us == white ? std::toupper(promoted) : promoted);
    }
    return gain - bestCapture(board, to, opponent(us));
}

int exchangeOf(const char* fen, Square from, Square to, int flip = 0) {
    return see(positionOf(fen), encodeMove(from, to), flip);
}

} // namespace

TEST(Exchange, AgreesWithPlayingTheCapturesOut) {
    forRandomPositions(100000, 12, [](const Position& position, Random&) {
        for (const Move move : movesOf(position)) {
            if ((moveKind(move) & 2) != 0) {
                ASSERT_EQ(see(position, move), 0);
                continue;
            }
            ASSERT_EQ(see(position, move), playedOut(position, move)) << textOf(move);
            for (const int threshold : {-200, 0, 1, 300}) {
                ASSERT_EQ(seeAtLeast(position, move, threshold), see(position, move) >= threshold) << textOf(move);
            }
        }
    });
}

TEST(Exchange, KnownCases) {
    EXPECT_EQ(exchangeOf("1k1r4/1pp4p/p7/4p3/8/P5P1/1PP4P/2K1R3 w - -", e1, e5), 100);
    EXPECT_EQ(exchangeOf("1k1r3q/1ppn3p/p4b2/4p3/8/P2N2P1/1PP1R1BP/2K1Q3 w - -", d3, e5), -200);
    EXPECT_EQ(exchangeOf("4k3/8/8/3p4/8/8/8/3QK3 w - -", d1, d5), 100);
    EXPECT_EQ(exchangeOf("8/8/3k4/3p4/8/8/8/3QK3 w - -", d1, d5), -800);    // the king recaptures
    EXPECT_EQ(exchangeOf("8/8/3k4/3p4/8/5B2/8/3QK3 w - -", d1, d5), 100);   // it may not into the bishop's attack
    EXPECT_EQ(exchangeOf("4k3/8/2p5/8/8/8/3R4/4K3 w - -", d2, d5), -500);   // a quiet move into a pawn's attack
    EXPECT_EQ(exchangeOf("4k3/8/8/3p4/4P3/8/8/4K3 w - -", d5, e4, 1), 100); // the other side's view
}

} // namespace helvan::testing
