// SPDX-License-Identifier: MIT
#include "board/attacks.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/boards.h"

namespace helvan::testing {

namespace {

// Steps one square at a time on files and ranks, unlike the tables' builder and the magic look-up.
Bitboard slidesBySteps(Square from, bool straight, Bitboard occupied) {
    Bitboard attacks = 0;
    for (int dx = -1; dx <= 1; ++dx) {
        for (int dy = -1; dy <= 1; ++dy) {
            if ((dx == 0 && dy == 0) || (dx == 0 || dy == 0) != straight) continue;
            int x = fileOf(from) + dx, y = rankOf(from) + dy;
            for (; x >= 0 && x < 8 && y >= 0 && y < 8; x += dx, y += dy) {
                attacks |= bit(y * 8 + x);
                if ((occupied & bit(y * 8 + x)) != 0) break;
            }
        }
    }
    return attacks;
}

Bitboard squares(std::initializer_list<Square> list) {
    Bitboard set = 0;
    for (const Square square : list) set |= bit(square);
    return set;
}

} // namespace

TEST(Attacks, MagicLookUpsAgreeWithSteppingAlongRays) {
    Random random(2);
    for (int i = 0; i < 20000; ++i) {
        const Bitboard occupied = i % 2 == 0 ? random() & random() : random();
        for (Square square = 0; square < 64; ++square) {
            ASSERT_EQ(rookAttacks(square, occupied), slidesBySteps(square, true, occupied)) << square;
            ASSERT_EQ(bishopAttacks(square, occupied), slidesBySteps(square, false, occupied)) << square;
        }
    }
}

TEST(Attacks, NoIndexThatTheShiftsAllowLeavesTheTable) {
    for (Square square = 0; square < 64; ++square) {
        EXPECT_LE(rookMagic[square].offset + (1u << (64 - rookShift)), std::uint32_t{slidingAttacksSize});
        EXPECT_LE(bishopMagic[square].offset + (1u << (64 - bishopShift)), std::uint32_t{slidingAttacksSize});
    }
}

TEST(Attacks, LeapersStayOnTheBoard) {
    EXPECT_EQ(knightAttacks[a1], squares({b3, c2}));
    EXPECT_EQ(knightAttacks[h4], squares({g2, f3, f5, g6}));
    EXPECT_EQ(kingAttacks[a1], squares({a2, b1, b2}));
    EXPECT_EQ(pawnAttacks(white, squares({a2, h2})), squares({b3, g3}));
    EXPECT_EQ(pawnAttacks(black, squares({a7, h7})), squares({b6, g6}));
    for (Square square = 0; square < 64; ++square) {
        for (Square other = 0; other < 64; ++other) {
            const int files = std::abs(fileOf(square) - fileOf(other)),
                      ranks = std::abs(rankOf(square) - rankOf(other));
            ASSERT_EQ((knightAttacks[square] & bit(other)) != 0, files * ranks == 2);
            ASSERT_EQ((kingAttacks[square] & bit(other)) != 0, std::max(files, ranks) == 1);
        }
    }
}

TEST(Attacks, LinesAndBetween) {
    EXPECT_EQ(between[a1][h8], squares({b2, c3, d4, e5, f6, g7}));
    EXPECT_EQ(between[a8][a1], squares({a2, a3, a4, a5, a6, a7}));
    EXPECT_EQ(between[a1][c2], 0u);
    EXPECT_EQ(between[c3][c3], 0u);
    EXPECT_EQ(between[c3][c4], 0u);
    EXPECT_EQ(rookLines[a1], fileA | rank1);
    EXPECT_EQ(bishopLines[a1], between[a1][h8] | squares({a1, h8}));
    for (Square square = 0; square < 64; ++square) EXPECT_EQ(popCount(ThreeFileMask[square]), 24);
    EXPECT_EQ(ThreeFileMask[b5], fileA | fileA << 1 | fileA << 2);
    EXPECT_EQ(ThreeFileMask[g2], fileH | fileH >> 1 | fileH >> 2);
}

TEST(Attacks, MapOfTheStartPosition) {
    const Bitboard defended = squares({b1, c1, d1, e1, f1, g1});
    EXPECT_EQ(attackMap(positionOf(startFen), white), relativeRank(white, 1) | relativeRank(white, 2) | defended);
}

// The map, the attackers of one square and the exposed squares tell the same story from three sides.
TEST(Attacks, MapAttackersAndExposedSquaresAgree) {
    forRandomPositions(20000, 3, [](const Position& position, Random&) {
        const Colour us = position.sideToMove();
        for (Colour colour : {white, black}) {
            const Bitboard map = attackMap(position, colour);
            for (Square square = 0; square < 64; ++square) {
                ASSERT_EQ((map & bit(square)) != 0, attackersOf(position, square, colour, position.occupied()) != 0);
            }
        }
        const Bitboard exposed = exposedSquares(position, us);
        for (const Move move : movesOf(position)) {
            if ((exposed & bit(moveFrom(move))) == 0 && moveKind(move) != enPassant) {
                ASSERT_TRUE(isLegal(position, move)) << textOf(move);
            }
        }
    });
}

} // namespace helvan::testing
