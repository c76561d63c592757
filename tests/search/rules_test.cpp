// SPDX-License-Identifier: MIT
//
// The numbers of the search's rules, and the predicates that steer it.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "board/exchange.h"
#include "search/draws.h"
#include "search/margins.h"
#include "search/ordering.h"
#include "search/reductions.h"
#include "search/threats.h"
#include "support/boards.h"

namespace helvan::testing {

TEST(Margins, NullReductionFollowsTheHyperbolicTangent) {
    for (int x = 0; x < 640; ++x) EXPECT_NEAR(nullReduction[x], 2000 * std::tanh(x / 130.3) - 0.5, 0.501) << x;
    // Surplus, phase and depth: two half-plies less with few pieces, a half-ply more for every four of depth, and for
    // the surplus up to two, which come at half the tangent's height and never quite.
    constexpr int rows[][4] = {{0, 24, 6, 5},  {0, 23, 6, 3},  {0, 96, 9, 5},    {0, 96, 10, 6},  {0, 96, 30, 11},
                               {71, 96, 6, 5}, {72, 96, 6, 6}, {51, 96, 7, 5},   {52, 96, 7, 6},  {638, 96, 6, 6},
                               {639, 0, 6, 4}, {639, 0, 7, 5}, {5000, 96, 6, 6}, {5000, 96, 7, 7}};
    for (const auto& [surplus, phase, depth, reduction] : rows) {
        EXPECT_EQ(nullMoveReduction(surplus, phase, depth), reduction) << surplus << ' ' << phase << ' ' << depth;
    }
}

TEST(Reductions, StayInTheTable) {
    EXPECT_EQ(lmrReduction(1000, 1000), 10);
    EXPECT_EQ(pvReduction(-5, 1), 0);
}

TEST(RecognisedDraws, MaterialThatCannotWin) {
    for (const char* pieces : {"8", "N7", "b7", "nB6", "bB6", "NN6", "nn6"}) {
        const Position position = positionOf(std::string("k7/8/8/8/8/") + pieces + "/8/7K w - -");
        EXPECT_TRUE(recognisedDraw(position, 3)) << pieces;
        EXPECT_FALSE(recognisedDraw(position, 2)) << pieces;
    }
    for (const char* pieces : {"BN6", "BB6", "P7", "bNN5"}) {
        EXPECT_FALSE(recognisedDraw(positionOf(std::string("k7/8/8/8/8/") + pieces + "/8/7K w - -"), 9)) << pieces;
    }
    EXPECT_FALSE(recognisedDraw(positionOf("8/8/8/2k5/8/1N6/3K4/8 b - -"), 9)); // in check
}

TEST(Threats, LastMoveThreatens) {
    const auto threatens = [](const char* fen, Move move) { return lastMoveThreatens(childOf(positionOf(fen), move)); };
    EXPECT_TRUE(threatens("4k3/8/8/q7/8/8/1P6/4K3 w - -", encodeMove(b2, b4, doublePush))); // a pawn the queen
    EXPECT_FALSE(threatens("4k3/8/8/q7/8/8/2P5/4K3 w - -", encodeMove(c2, c3)));
    EXPECT_TRUE(threatens("4k3/8/8/3n4/8/8/8/R3K3 w - -", encodeMove(a1, a5)));    // an undefended knight
    EXPECT_FALSE(threatens("4k3/8/2p5/3n4/8/8/8/R3K3 w - -", encodeMove(a1, a5))); // a defended one
    EXPECT_TRUE(threatens("4k3/8/2p5/3n4/8/8/8/3RKB2 w - -", encodeMove(f1, g2))); // with the rook's help
    EXPECT_FALSE(threatens("4k3/8/8/3n4/8/8/8/R3K3 w - -", nullMove));
}

TEST(Threats, AreExchangesThatPay) {
    const Position behind = positionOf("7k/N7/8/8/7r/8/8/RQ4K1 b - -");
    EXPECT_FALSE(lastMoveThreatens(childOf(behind, encodeMove(h4, a4)))); // the rook guards the knight through it
    int threats = 0;
    forRandomPositions(20000, 14, [&](const Position& position, Random&) {
        if (position.prev == nullptr) return;
        const Square from = moveTo(position.lastMove);
        const Colour us = position.sideToMove();
        bool pays = false;
        for (Bitboard targets = position.of(us, allPieces) & ~position.of(us, king); targets != 0;) {
            const Square target = popLowestBit(targets);
            const Bitboard attackers = attackersOf(position, target, opponent(us), position.occupied());
            pays = pays || ((attackers & bit(from)) != 0 && see(position, encodeMove(from, target), 1) > 0);
        }
        ASSERT_EQ(lastMoveThreatens(position), pays) << moveText(position.lastMove);
        threats += pays;
    });
    EXPECT_GT(threats, 1000);
}

TEST(Threats, ThreatenedLossIsTheLargestGainOfTheEnemy) {
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/8/8/8/8/P7/4K3 w - -")), 0);
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/4p3/3Q4/8/1n6/P7/4K3 w - -")), 9);
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/4p3/3N4/4P3/8/8/4K3 w - -")), 2); // a knight for a pawn
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/8/8/8/8/p7/4K3 w - -")), 15);     // about to promote
    EXPECT_TRUE(isEnPrise(positionOf("4k3/8/4p3/3Q4/8/8/8/4K3 w - -"), d5, black));
    EXPECT_FALSE(isEnPrise(positionOf("4k3/8/4p3/3P4/4P3/8/8/4K3 w - -"), d5, black));
}

TEST(Ordering, WhatFailsLosesDepthIn64thsOfItsSuccess) {
    const auto memory = std::make_unique<MoveHistory>();
    const Position start = positionOf(startFen);
    const Move good = encodeMove(g1, f3), bad = encodeMove(a2, a3);
    for (const int depth : {0, 2, 10, 40, 64, 200}) {
        memory->history[white][pawn * 64 + a3] = 64000;
        noteSuccess(*memory, start, depth, good, &bad, 1);
        EXPECT_EQ(memory->history[white][pawn * 64 + a3], 1000 * std::max(64 - depth, 0)) << depth;
    }
}

TEST(Ordering, FollowUpsGoByTheOwnMoveBefore) {
    const auto memory = std::make_unique<MoveHistory>();
    const Move knightOut = encodeMove(g1, f3), pawnUp = encodeMove(e2, e4, doublePush), reply = encodeMove(a7, a6);
    const Position start = positionOf(startFen);
    const Position afterKnight = childOf(start, knightOut), afterPawn = childOf(start, pawnUp);
    const Position one = childOf(afterKnight, reply), other = childOf(afterPawn, reply);
    const Move good = encodeMove(b1, c3);
    noteSuccess(*memory, one, 20, good, nullptr, 0);
    const int counter = knight * 64 + c3;
    EXPECT_GT(quietOrderOf(*memory, one).replies[counter], 0);
    EXPECT_GT(quietOrderOf(*memory, one).followUps[counter], 0);
    EXPECT_GT(quietOrderOf(*memory, other).replies[counter], 0);
    EXPECT_EQ(quietOrderOf(*memory, other).followUps[counter], 0);
    clearMoveHistory(*memory);
    EXPECT_EQ(quietOrderOf(*memory, one).replies[counter], 0);
    EXPECT_EQ(quietOrderOf(*memory, one).followUps[counter], 0);
}

TEST(Ordering, CutoffsRaiseTheirMoveAndLowerTheOthers) {
    const auto memory = std::make_unique<MoveHistory>();
    const Position start = positionOf(startFen); // a parent outlives its children
    const Position position = childOf(start, encodeMove(e2, e4, doublePush));
    const Move good = encodeMove(g8, f6), bad = encodeMove(a7, a6);
    const Move tried[] = {bad, good};
    for (int i = 0; i < 1000; ++i) noteSuccess(*memory, position, 1000, good, tried, 2);
    EXPECT_LE(memory->history[black][knight * 64 + f6], largestHistory);
    EXPECT_GT(memory->history[black][knight * 64 + f6], largestHistory / 2);
    EXPECT_EQ(counterMoveOf(*memory, position), good);
    const QuietOrder order = quietOrderOf(*memory, position);
    for (const std::int16_t* sequels : {order.replies, order.followUps}) {
        EXPECT_LE(sequels[knight * 64 + f6], largestSequel);
        EXPECT_GT(sequels[knight * 64 + f6], largestSequel / 2);
        EXPECT_GE(sequels[pawn * 64 + a6], -largestSequel);
        EXPECT_LT(sequels[pawn * 64 + a6], -largestSequel / 2);
    }
    const Position elsewhere = childOf(start, encodeMove(d2, d4, doublePush));
    EXPECT_EQ(quietOrderOf(*memory, elsewhere).replies[knight * 64 + f6], 0) << "a reply to another move";
}

TEST(Ordering, TheLastTwoRefutationsAreKillers) {
    Killers killers;
    const Move first = encodeMove(g8, f6), second = encodeMove(b8, c6);
    for (const Move move : {first, second, second}) noteKiller(killers, 5, move);
    EXPECT_EQ(killers.killerPrimary[5], second);
    EXPECT_EQ(killers.killerSecondary[5], first);
    EXPECT_EQ(killers.killerPrimary[6], nullMove);
}

} // namespace helvan::testing
