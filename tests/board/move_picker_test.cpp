// SPDX-License-Identifier: MIT
#include "board/move_picker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "board/checks.h"
#include "board/exchange.h"
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

// A move of the position, one of another position, or any number.
Move hostileMove(Random& random, const Position& position) {
    const std::vector<Move> moves = movesOf(position);
    if (random() % 3 != 0 && !moves.empty()) return oneOf(random, moves);
    return static_cast<Move>(random() % 4 == 0 ? random() : random() % (moveBits + 1));
}

bool isTactical(const Position& position, Move move) {
    const bool captures = (position.of(opponent(position.sideToMove()), allPieces) & bit(moveTo(move))) != 0;
    return (captures && !isUnderPromotion(move)) || moveKind(move) == enPassant || moveKind(move) == promoteQueen;
}

bool isHeldBackKind(const Position& position, Move move) {
    return moveKind(move) <= doublePush && see(position, move) < 0;
}

} // namespace

TEST(MovePicker, EveryMoveExactlyOnceWhateverIsOffered) {
    std::int32_t history[512];
    Random fill(8);
    for (std::int32_t& counter : history) counter = below(fill, 1 << 17);
    forRandomPositions(100000, 9, [&](const Position& position, Random& random) {
        const std::vector<Move> expected = sorted(movesOf(position));
        ASSERT_EQ(sorted(picked(position, PickerKind::everyMove)), expected);
        const Move hash = hostileMove(random, position);
        const Move killer = hostileMove(random, position);
        const Move other = random() % 4 == 0 ? killer : hostileMove(random, position);
        MovePicker picker(position, PickerKind::everyMove, hash, killer, other, random() % 2 == 0 ? history : nullptr);
        const std::vector<Move> moves = drain(picker);
        ASSERT_EQ(sorted(moves), expected) << textOf(hash) << ' ' << textOf(killer) << ' ' << textOf(other);
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
            std::vector<Move> moves = picked(position, PickerKind::evasions, offered);
            std::erase_if(moves, [&](Move move) { return !isLegal(position, move); });
            ASSERT_EQ(sorted(moves), expected);
        }
    });
    EXPECT_GT(checks, 2000);
}

TEST(MovePicker, ReducedKindsHoldCapturesAndSafeQuietChecks) {
    forRandomPositions(20000, 11, [](const Position& position, Random&) {
        if (position.inCheck != 0) return;
        const std::vector<Move> sound = picked(position, PickerKind::soundCaptures);
        const std::vector<Move> soundChecks = picked(position, PickerKind::soundCapturesAndChecks);
        const std::vector<Move> everyCheck = picked(position, PickerKind::capturesAndChecks);
        std::vector<Move> tactical = movesOf(position);
        std::erase_if(tactical, [&](Move move) { return !isTactical(position, move); });
        std::vector<Move> tacticalAndSound = tactical;
        std::erase_if(tacticalAndSound, [&](Move move) { return isHeldBackKind(position, move); });
        ASSERT_EQ(sorted(sound), sorted(tacticalAndSound));

        std::set<Move> full(everyCheck.begin(), everyCheck.end());
        for (const Move move : tactical) ASSERT_EQ(full.erase(move), 1u) << textOf(move);
        for (const Move move : full) ASSERT_TRUE(givesCheck(position, move)) << textOf(move);
        std::vector<Move> kept = everyCheck;
        std::erase_if(kept, [&](Move move) { return isHeldBackKind(position, move); });
        ASSERT_EQ(sorted(soundChecks), sorted(kept));
    });
}

TEST(MovePicker, StagesComeInTheirOrder) {
    const Position position = positionOf("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -");
    const Move hash = encodeMove(e1, g1, castling), killer = encodeMove(a2, a3), other = encodeMove(c3, b1);
    MovePicker picker(position, PickerKind::everyMove, hash, killer, other);
    const std::vector<Move> moves = drain(picker);
    const auto placeOf = [&](Move move) { return std::find(moves.begin(), moves.end(), move) - moves.begin(); };
    EXPECT_EQ(placeOf(hash), 0);
    EXPECT_LT(placeOf(encodeMove(e2, a6)), placeOf(killer));             // takes a bishop
    EXPECT_LT(placeOf(encodeMove(e2, a6)), placeOf(encodeMove(g2, h3))); // a bishop before a pawn
    EXPECT_EQ(placeOf(other), placeOf(killer) + 1);
    EXPECT_EQ(placeOf(encodeMove(e1, c1, castling)), placeOf(other) + 1); // castling leads the quiet moves
    EXPECT_LT(placeOf(encodeMove(e2, d1)), placeOf(encodeMove(f3, f6)));  // a queen for a knight comes last
    EXPECT_EQ(see(position, moves.back()) < 0, true);
}

TEST(MovePicker, QuietMovesFollowTheirHistory) {
    std::int32_t history[512] = {};
    history[knight * 64 + c3] = 50;
    history[pawn * 64 + a4] = 70;
    const Position position = positionOf(startFen);
    MovePicker picker(position, PickerKind::everyMove, nullMove, nullMove, nullMove, history);
    EXPECT_EQ(nextMove(picker), encodeMove(a2, a4, doublePush));
    EXPECT_EQ(nextMove(picker), encodeMove(b1, c3));
}

} // namespace helvan::testing
