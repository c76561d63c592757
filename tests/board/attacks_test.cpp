// SPDX-License-Identifier: MIT
#include "board/attacks.h"

#include <gtest/gtest.h>

#include "support/boards.h"
#include "support/letter_board.h"

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

} // namespace

// All blockers that matter, since the blocks overlap, and some that must not.
TEST(Attacks, MagicLookUpsAgreeWithSteppingAlongRays) {
    Random random(2);
    for (Square square = 0; square < 64; ++square) {
        for (const bool straight : {true, false}) {
            const Bitboard mask = straight ? rookMask[square] : bishopMask[square];
            Bitboard blockers = 0;
            do {
                const Bitboard occupied = blockers | (random() & ~mask);
                const Bitboard attacks = straight ? rookAttacks(square, occupied) : bishopAttacks(square, occupied);
                ASSERT_EQ(attacks, slidesBySteps(square, straight, occupied)) << square;
                blockers = (blockers - mask) & mask;
            } while (blockers != 0);
        }
    }
}

// The attackers of a square, the map and the exposed squares tell the story of a board without bitboards.
TEST(Attacks, MapAttackersAndExposedSquaresAgree) {
    forRandomPositions(5000, 3, [](const Position& position, Random&) {
        const LetterBoard board(position);
        for (Colour colour : {white, black}) {
            const Bitboard map = attackMap(position, colour);
            for (Square square = 0; square < 64; ++square) {
                Bitboard attackers = 0;
                for (Square from = 0; from < 64; ++from) {
                    const bool attacks = board.holds(menOf[colour], from) && board.reaches(board[from], from, square);
                    if (attacks) attackers |= bit(from);
                }
                ASSERT_EQ(attackersOf(position, square, colour, position.occupied()), attackers) << square;
                ASSERT_EQ((map & bit(square)) != 0, attackers != 0) << square;
            }
        }
        const Bitboard exposed = exposedSquares(position, position.sideToMove());
        for (const Move move : movesOf(position)) {
            const bool isExposed = (exposed & bit(moveFrom(move))) != 0 || moveKind(move) == enPassant;
            ASSERT_TRUE(isExposed || isLegal(position, move)) << moveText(move);
        }
    });
}

} // namespace helvan::testing
