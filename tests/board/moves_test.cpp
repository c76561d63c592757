// SPDX-License-Identifier: MIT
#include "board/moves.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "board/checks.h"
#include "board/exchange.h"
#include "board/move_picker.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

std::vector<Move> drain(MovePicker& picker) {
    std::vector<Move> moves;
    while (const Move move = nextMove(picker)) moves.push_back(move);
    EXPECT_EQ(nextMove(picker), nullMove) << "moves after the end";
    EXPECT_TRUE(std::equal(moves.begin(), moves.end(), picker.handedOut, picker.handedOut + picker.handedOutCount));
    return moves;
}

std::vector<Move> picked(const Position& position, PickerKind kind, Move hash = nullMove) {
    MovePicker picker(position, kind, hash);
    return drain(picker);
}

std::vector<Move> sorted(std::vector<Move> moves) {
    std::sort(moves.begin(), moves.end());
    return moves;
}

template <typename Predicate> std::vector<Move> sortedWithout(std::vector<Move> moves, Predicate predicate) {
    std::erase_if(moves, predicate);
    return sorted(moves);
}

// A move of the position, one of another position, or any number.
Move hostileMove(Random& random, const Position& position) {
    const std::vector<Move> moves = movesOf(position);
    if (random() % 3 != 0 && !moves.empty()) return oneOf(random, moves);
    return static_cast<Move>(random() % 4 == 0 ? random() : random() % (moveBits + 1));
}

} // namespace

// Every one of the 15-bit numbers, and some beyond: exactly the listed moves pass, en passant apart.
TEST(PseudoLegal, AcceptsExactlyTheListedMoves) {
    forRandomPositions(400, 6, [](const Position& position, Random&) {
        const std::vector<Move> listed = sorted(movesOf(position));
        ASSERT_EQ(std::adjacent_find(listed.begin(), listed.end()), listed.end()) << "a move is listed twice";
        for (Move move = -5; move <= 2 * moveBits; ++move) {
            const bool expected = moveKind(move) != enPassant && std::binary_search(listed.begin(), listed.end(), move);
            ASSERT_EQ(isPseudoLegal(position, move) != 0, expected) << moveText(move) << " kind " << moveKind(move);
        }
    });
}

TEST(GivesCheck, AgreesWithMakingTheMove) {
    forRandomPositions(100000, 7, [](const Position& position, Random&) {
        const KingLines lines(position, position.inCheck != 0);
        for (const Move move : movesOf(position)) {
            const Position child = childOf(position, move);
            ASSERT_EQ(lines.leavesInCheck(child), moverLeftInCheck(child)) << moveText(move);
            if (moverLeftInCheck(child)) continue;
            ASSERT_EQ(givesCheck(position, move), child.inCheck != 0) << moveText(move);
            ASSERT_EQ(lines.givesCheck(position, move), child.inCheck != 0) << moveText(move);
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
    // En passant opens the rank by taking both pawns off it, and a diagonal by taking the victim.
    EXPECT_TRUE(gives("8/8/8/R2pP2k/8/8/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
    EXPECT_TRUE(gives("6k1/8/8/3pP3/8/1B6/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
    EXPECT_FALSE(gives("7k/8/8/3pP3/8/1B6/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
}

TEST(MovePicker, EveryMoveExactlyOnceWhateverIsOffered) {
    std::int32_t history[512];
    Random fill(8);
    for (std::int32_t& counter : history) counter = below(fill, 1 << 17);
    std::int16_t sequels[2][512];
    for (auto& row : sequels) {
        for (std::int16_t& counter : row) counter = static_cast<std::int16_t>(below(fill, 32001) - 16000);
    }
    const QuietOrder orders[] = {{}, {history}, {history, sequels[0], sequels[1]}};
    forRandomPositions(100000, 9, [&](const Position& position, Random& random) {
        const std::vector<Move> expected = sorted(movesOf(position));
        ASSERT_EQ(sorted(picked(position, PickerKind::everyMove)), expected);
        const Move hash = hostileMove(random, position);
        const Move killer = hostileMove(random, position);
        const Move other = random() % 4 == 0 ? killer : hostileMove(random, position);
        MovePicker picker(position, PickerKind::everyMove, hash, killer, other, orders[below(random, 3)]);
        const std::vector<Move> moves = drain(picker);
        ASSERT_EQ(sorted(moves), expected) << moveText(hash) << ' ' << moveText(killer) << ' ' << moveText(other);
        if (isPseudoLegal(position, hash) != 0) {
            ASSERT_EQ(moves.front(), hash);
        }
    });
}

TEST(MovePicker, EvasionsHoldEveryLegalMoveInCheck) {
    int checks = 0;
    forRandomPositions(100000, 10, [&](const Position& position, Random& random) {
        if (position.inCheck == 0) return;
        ++checks;
        const std::vector<Move> expected = sorted(legalMovesOf(position));
        const Move hash = hostileMove(random, position);
        for (const Move offered : {nullMove, hash}) {
            const std::vector<Move> moves = picked(position, PickerKind::evasions, offered);
            ASSERT_EQ(sortedWithout(moves, [&](Move move) { return !isLegal(position, move); }), expected);
        }
    });
    EXPECT_GT(checks, 2000);
}

TEST(MovePicker, ReducedKindsHoldCapturesAndSafeQuietChecks) {
    forRandomPositions(20000, 11, [](const Position& position, Random&) {
        if (position.inCheck != 0) return;
        const Bitboard enemies = position.of(opponent(position.sideToMove()), allPieces);
        const auto isTactical = [&](Move move) {
            const bool captures = (enemies & bit(moveTo(move))) != 0;
            return (captures && !isUnderPromotion(move)) || moveKind(move) == enPassant ||
                   moveKind(move) == promoteQueen;
        };
        const auto isQuiet = [&](Move move) { return !isTactical(move); };
        const auto loses = [&](Move move) { return moveKind(move) <= doublePush && see(position, move) < 0; };
        const std::vector<Move> tactical = sortedWithout(movesOf(position), isQuiet);
        const std::vector<Move> all = picked(position, PickerKind::capturesAndChecks);
        ASSERT_EQ(sortedWithout(all, isQuiet), tactical);
        for (const Move move : all) ASSERT_TRUE(isTactical(move) || givesCheck(position, move)) << moveText(move);
        ASSERT_EQ(sorted(picked(position, PickerKind::soundCaptures)), sortedWithout(tactical, loses));
        ASSERT_EQ(sorted(picked(position, PickerKind::soundCapturesAndChecks)), sortedWithout(all, loses));
    });
}

TEST(MovePicker, StagesComeInTheirOrder) {
    const Position position = positionOf("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -");
    std::int32_t history[512] = {};
    history[knight * 64 + a4] = 50;
    history[bishop * 64 + c4] = 70;
    std::int16_t replies[512] = {}, followUps[512] = {};
    replies[knight * 64 + g4] = 30; // weighs more than the history does
    followUps[knight * 64 + a4] = -20;
    const Move hash = encodeMove(e1, g1, castling), killer = encodeMove(a2, a3), other = encodeMove(c3, b1);
    MovePicker picker(position, PickerKind::everyMove, hash, killer, other, QuietOrder{history, replies, followUps});
    const std::vector<Move> moves = drain(picker);
    const auto placeOf = [&](Move move) { return std::find(moves.begin(), moves.end(), move) - moves.begin(); };
    EXPECT_EQ(placeOf(hash), 0);
    EXPECT_EQ(placeOf(encodeMove(e2, a6)), 1);                           // takes a bishop with a bishop
    EXPECT_LT(placeOf(encodeMove(e2, a6)), placeOf(encodeMove(g2, h3))); // a bishop before a pawn
    EXPECT_LT(placeOf(encodeMove(g2, h3)), placeOf(killer));
    EXPECT_EQ(placeOf(other), placeOf(killer) + 1);
    EXPECT_EQ(placeOf(encodeMove(e1, c1, castling)), placeOf(other) + 1); // castling leads the quiet moves
    EXPECT_EQ(placeOf(encodeMove(e5, g4)), placeOf(other) + 2);           // which follow their histories
    EXPECT_EQ(placeOf(encodeMove(e2, c4)), placeOf(other) + 3);
    EXPECT_GT(placeOf(encodeMove(c3, a4)), placeOf(encodeMove(e2, d1)));
    EXPECT_LT(placeOf(encodeMove(e2, d1)), placeOf(encodeMove(f3, f6))); // a queen for a knight comes last
    EXPECT_LT(see(position, moves.back()), 0);
}

} // namespace helvan::testing
