// SPDX-License-Identifier: MIT
//
// The numbers of the search's rules, and the predicates that steer it.
#include <gtest/gtest.h>

#include "board/exchange.h"
#include "search/draws.h"
#include "search/margins.h"
#include "search/ordering.h"
#include "search/reductions.h"
#include "search/settings.h"
#include "search/threats.h"
#include "support/boards.h"

namespace helvan::testing {

TEST(Margins, NullReductionFollowsTheHyperbolicTangent) {
    const int given[][2] = {{0, 0},      {1, 15},     {2, 30},     {3, 46},     {4, 61},    {5, 76},
                            {6, 92},     {7, 107},    {8, 122},    {9, 137},    {50, 731},  {100, 1290},
                            {200, 1822}, {300, 1960}, {400, 1991}, {500, 1998}, {639, 1999}};
    for (const auto& [surplus, thousandths] : given) EXPECT_EQ(nullReduction[surplus], thousandths) << surplus;
    EXPECT_EQ(nullMoveReduction(5000, 96, 20), nullMoveReduction(639, 96, 20));
    EXPECT_EQ(nullMoveReduction(0, 96, 6), 5);
    EXPECT_EQ(nullMoveReduction(0, 23, 6), 3);
}

TEST(Margins, ShortenedSearchesEndAtTheHorizon) {
    EXPECT_EQ(reducedDepth(10, 6), 0); // would be 2
    EXPECT_EQ(reducedDepth(9, 4), 0);  // would be 3
    EXPECT_EQ(reducedDepth(10, 4), 4);
    EXPECT_EQ(threatMargin(1000), threatMargin(8));
}

TEST(Reductions, GrowWithTheMoveNumberAndStayInTheTable) {
    buildReductions();
    const int first[][3] = {{2, 0, 0},  {3, 2, 0},  {5, 2, 2},   {6, 4, 2},  {10, 4, 3},
                            {12, 6, 3}, {24, 8, 4}, {48, 10, 5}, {80, 10, 6}};
    for (const auto& [number, lmr, pv] : first) {
        EXPECT_EQ(lmrReduction(12, number), lmr) << number;
        EXPECT_EQ(pvReduction(12, number), pv) << number;
    }
    EXPECT_EQ(lmrReduction(1000, 1000), 10);
    EXPECT_EQ(pvReduction(-5, 1), 0);
}

TEST(RecognisedDraws, MaterialThatCannotWin) {
    const char* drawn[] = {"8/8/8/2k5/8/8/3K4/8 w - -", "8/8/8/2k5/8/8/3KN3/8 w - -", "8/8/8/2kb4/8/8/3K4/8 w - -",
                           "8/8/8/2kn4/8/8/3KB3/8 w - -", "8/8/8/2k5/8/8/3KNN2/8 w - -"};
    for (const char* fen : drawn) {
        EXPECT_TRUE(recognisedDraw(positionOf(fen), 3)) << fen;
        EXPECT_FALSE(recognisedDraw(positionOf(fen), 2)) << fen;
    }
    for (const char* fen : {"8/8/8/2k5/8/8/3KBN2/8 w - -", "8/8/8/2k5/8/8/3KBB2/8 w - -", "8/8/8/2k5/8/8/3KP3/8 w - -",
                            "8/8/8/2kb4/8/8/3KNN2/8 w - -"}) {
        EXPECT_FALSE(recognisedDraw(positionOf(fen), 9)) << fen;
    }
    EXPECT_FALSE(recognisedDraw(positionOf("8/8/8/2k5/8/1N6/3K4/8 b - -"), 9)); // in check
}

TEST(Threats, LastMoveThreatens) {
    const auto threatens = [](const char* fen, Move move) { return lastMoveThreatens(childOf(positionOf(fen), move)); };
    EXPECT_TRUE(threatens("4k3/8/8/q7/8/8/1P6/4K3 w - -", encodeMove(b2, b4, doublePush))); // a pawn the queen
    EXPECT_FALSE(threatens("4k3/8/8/q7/8/8/2P5/4K3 w - -", encodeMove(c2, c3)));
    EXPECT_TRUE(threatens("4k3/8/8/3n4/8/8/8/R3K3 w - -", encodeMove(a1, a5)));    // an undefended knight
    EXPECT_FALSE(threatens("4k3/8/2p5/3n4/8/8/8/R3K3 w - -", encodeMove(a1, a5))); // a defended one
    EXPECT_FALSE(threatens("4k3/8/8/3n4/8/8/8/R3K3 w - -", nullMove));
}

TEST(Threats, ThreatenedLossIsTheLargestGainOfTheEnemy) {
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/8/8/8/8/P7/4K3 w - -")), 0);
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/4p3/3Q4/8/1n6/P7/4K3 w - -")), 9);
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/4p3/3N4/4P3/8/8/4K3 w - -")), 2); // a knight for a pawn
    EXPECT_EQ(threatenedLoss(positionOf("4k3/8/8/8/8/8/p7/4K3 w - -")), 15);     // about to promote
    EXPECT_TRUE(isEnPrise(positionOf("4k3/8/4p3/3Q4/8/8/8/4K3 w - -"), d5, black));
    EXPECT_FALSE(isEnPrise(positionOf("4k3/8/4p3/3P4/4P3/8/8/4K3 w - -"), d5, black));
}

TEST(Ordering, CutoffsRaiseTheirMoveAndLowerTheOthers) {
    clearKillers();
    clearHistory();
    const Position position = childOf(positionOf(startFen), encodeMove(e2, e4, doublePush));
    const Move good = encodeMove(g8, f6), bad = encodeMove(a7, a6), better = encodeMove(b8, c6);
    const Move tried[] = {bad, good};
    for (int i = 0; i < 1000; ++i) noteCutoff(position, 5, 1000, good, tried, 2);
    EXPECT_LE(history[black][knight * 64 + f6], largestHistory);
    EXPECT_GT(history[black][knight * 64 + f6], largestHistory / 2);
    EXPECT_EQ(history[black][pawn * 64 + a6], 0);
    EXPECT_EQ(counterMoveOf(position), good);
    noteCutoff(position, 5, 10, better, tried, 2);
    EXPECT_EQ(killerPrimary[5], better);
    EXPECT_EQ(killerSecondary[5], good);
    EXPECT_LT(history[black][knight * 64 + f6], largestHistory);
    EXPECT_GE(history[black][knight * 64 + f6], 0);
    clearHistory();
    clearKillers();
}

} // namespace helvan::testing
