// SPDX-License-Identifier: MIT
//
// The rules of the quiescence search, one node a row.
#include <gtest/gtest.h>

#include "eval/evaluate.h"
#include "eval/tables.h"
#include "search/quiesce.h"
#include "support/node_table.h"

namespace helvan::testing {

namespace {

class Quiescence : public NodeTable {
public:
    Quiescence()
        : NodeTable(R"(
        capture 6k1/8/8/r7/8/1N6/8/4K2R w  captures 6k1/8/8/p1p5/1P6/8/8/6K1 w
        checks 6k1/8/8/8/6N1/8/8/6K1 w  lostChecks 6k1/6p1/8/8/6N1/8/8/6K1 w  captureChecks 6k1/8/5p2/8/6N1/8/8/4K3 w
        checked 4r2k/8/8/8/8/8/8/4K3 w  losingBlock 4r1k1/8/8/8/3p4/8/6N1/4K3 w
        quiet 6k1/8/8/8/8/8/8/R6K w  promotes 8/P5k1/8/8/8/8/8/4K3 w  promotingEvasion 4r2k/3P4/8/8/8/8/8/4K3 w
        mated 7k/5KQ1/8/8/8/8/8/8 b  pinned k7/1b6/8/3Q4/5B2/8/8/R6K b  stalemate 7k/5K2/6Q1/8/8/8/8/8 b
        guardedCapture 5qk1/8/8/2r5/8/1N6/8/Q3K2R w  manyQueens qqqq1qk1/8/8/8/3q4/1N6/8/4K2R w
        knight 6k1/8/8/n7/8/1N6/8/4K2R w  pawn 6k1/8/8/p7/8/1N6/8/4K2R w  passing 6k1/8/8/pP6/8/8/8/4K2R w
        mates r5k1/5ppp/8/8/8/8/8/R5K1 w  exchange 6k1/8/8/r7/2p5/3P4/PN6/4K3 w
        losingEvasion 6k1/8/8/b7/8/4Q3/8/4r1K1 w)") {}

    int search(const Node& node, std::uint64_t nodeLimit = 400) override {
        Search search(*tables, {.nodes = nodeLimit});
        line[1] = encodeMove(a1, a2); // for the search to end
        const int score = quiesce(search, position, node.beta - node.window, node.beta, node.depth, node.ply, line);
        nodes = static_cast<int>(search.nodes);
        return score;
    }
    // How far alpha may be above the evaluation and the victim's value for the only capture to be tried.
    int deltaMargin(Node node) {
        node.eval = -node.beta;
        const int limit = least(5000, [&](int above) {
            node.beta = node.eval + above + 2;
            return made(node) == 0;
        });
        const PieceType victim = node.ep != 0 ? pawn : pieceTypeAt(position, black, moveTo(node.move));
        return limit - evalTables.phasePieceValue[std::min<int>(position.phase, fullPhase)][victim];
    }
    int reached(Node node) { return score(node) == node.leads; }
    int ownEval(const std::string& fen) { return evaluate(positionOf(fen), tables->evalCaches); }
};

} // namespace

TEST_F(Quiescence, EndsWhereTheSearchDoes) {
    for (const int calls : {0, 254, 255}) { // the clock is looked at every 256th call
        position = positionOf(fens["capture"]);
        Search late(*tables);
        late.hardDeadline = 0;
        late.checkCounter = static_cast<std::uint32_t>(calls);
        late.stopSearch = calls == 0;
        EXPECT_EQ(quiesce(late, position, -2001, -2000, 0, 1, line) == 0, calls != 254);
    }
    EXPECT_EQ(search({.beta = ownEval(fens["capture"]) + 1}, 0), 0) << "no node is left for the capture";
    EXPECT_EQ(stored(position), nullptr);
    EXPECT_EQ(score(nodeOf("capture 0 beta 1 ply 250 captured 1")), ownEval(fens["capture"]));
    searchSettings.drawScore = 33;
    expectRows(&Quiescence::score, "checks 0 ply 3 = -33; checks 0 ply 4 = 33");
    expectRows(&Quiescence::made, "capture 0 beta 1 ply 249 = 1; checks 0 beta 1 ply 4 = 0; checks 0 beta 1 ply 2 = 2");
}

TEST_F(Quiescence, DeepEnoughEntriesDecideZeroWindows) {
    expectRows(&Quiescence::score, R"(
        checked 0 beta 100 eval 100 entry 0 bound lower = 100; checked 0 beta 100 eval 99 entry 0 bound lower = -900
        checked 0 beta 100 eval 99 entry 0 bound upper = 99; checked 0 beta 100 eval 100 entry 0 bound upper = -900
        checked 0 beta 100 eval 100 entry 0 = 100; checked 0 beta 100 eval 100 entry -1 = -900
        checked -2 beta 100 eval 100 entry -2 = 100; checked 0 beta 100 window 2 eval 100 entry 0 = -900
        checked 0 beta 100 eval 31990 entry 0 ply 5 = 31985)");
    expectRows(&Quiescence::searchesMoves, R"(
        checked -10 beta 100 eval 100 entry 0 = 0; checked -11 beta 100 eval 100 entry 0 = 1)");
    expectRows(&Quiescence::made, R"(
        captures 0 beta 1 moves -70 = 2; captures 0 beta 1 moves 70 = 1; captures 0 beta 1 hash b4a5 moves 70 = 1)");
    EXPECT_EQ(line[0], encodeMove(b4, a5)) << "the table's move comes first";
}

TEST_F(Quiescence, StandsPatOutOfCheck) {
    const int own = ownEval(fens["capture"]);
    const auto evalWith = [&](int depth, Bound bound, int told, int captured = 0) {
        Node node = nodeOf("capture 0 beta -2000");
        node.depth = depth;
        node.bound = bound;
        node.eval = told;
        node.captured = captured;
        return score(node);
    };
    for (const int other : {own - 50, own + 50}) {
        EXPECT_EQ(evalWith(0, exactBound, other), other);
        EXPECT_EQ(evalWith(-10, lowerBound, other), std::max(own, other));
        EXPECT_EQ(evalWith(0, upperBound, other), std::min(own, other));
        EXPECT_EQ(evalWith(-11, exactBound, other), own);
        EXPECT_EQ(position.evalScratch, own);
    }
    EXPECT_EQ(evalWith(0, exactBound, -31801), own);
    EXPECT_EQ(evalWith(0, noBound, 0, pawn), own + 5) << "for a recapture";
    expectRows(&Quiescence::made, "capture 0 beta 50 eval 50 = 0; capture 0 beta 51 eval 50 = 1");
    expectRows(&Quiescence::scoreNotStored, "capture 0 beta 50 eval 50 = 50");
    expectRows(&Quiescence::score, "checked 0 beta 50 eval 50 = -900");
    for (const int depth : {-59, -60}) { // the deepest, and beyond
        Node node = nodeOf("capture 0 last a1a5");
        node.depth = depth;
        node.beta = own + 1;
        EXPECT_EQ(made(node) > 0, depth == -59);
    }
    // It raises alpha: after a capture the enemy stands pat at once, and need not look at a capture of his own.
    expectRows(&Quiescence::made, "exchange -4 beta 1000 window 1100 eval 50 moves 0 = 2");
}

TEST_F(Quiescence, WhichMovesAreTried) {
    expectRows(&Quiescence::made, R"(
        checks 0 beta 1 = 2; checks -1 beta 1 = 0; checks -2 beta 1 = 0; checks -3 beta 1000 window 1000 = 0
        checked -8 beta 1 = 4; promotingEvasion 0 beta 1 = 5; losingEvasion 0 beta 1 = 4; quiet 0 beta 1 = 0; checks 0 beta 1 hash g4f6 = 2
        lostChecks 0 beta 1 hash g4f6 = 0; losingBlock 0 beta 1 = 4; losingBlock 0 beta 1 moves -31900 = 4
        losingBlock 0 beta 1 moves -31901 = 5)");
    expectRows(&Quiescence::searchesMoves, R"(
        checks 0 beta 1000 window 1000 = 1; checks -2 beta 1000 window 1000 = 1; checked -20 beta 1 = 1)");
    expectRows(&Quiescence::score, R"(
        quiet 0 beta 1 hash a1a2 moves 500 = 0; quiet -2 beta 1 hash a1a2 moves 500 = 500)");
    for (const int depth : {-16, -17}) {
        Node node = nodeOf("capture 0");
        node.depth = depth;
        node.beta = ownEval(node.fen) + 1;
        EXPECT_EQ(made(node) > 0, depth == -16);
        node.last = encodeMove(a1, a5);
        EXPECT_GT(made(node), 0) << "a recapture";
    }
}

TEST_F(Quiescence, CapturesOfTooLittleAreNotTried) {
    expectRows(&Quiescence::deltaMargin, R"(
        capture -2 b3a5 = 140; guardedCapture -2 b3c5 = 140; manyQueens -2 b3d4 = 140; knight -2 b3a5 = 140
        pawn -2 b3a5 = 80; passing -2 ep 40 b5a6 = 80)");
    expectRows(&Quiescence::made, R"(
        quiet 0 beta 141 hash a1a2 = 1; quiet 0 beta 142 hash a1a2 = 0
        checks 0 beta 5000 = 2; captureChecks -2 beta 5000 = 1; promotes -2 beta 5000 = 1; checked 0 beta 5000 = 4)");
}

TEST_F(Quiescence, DrawsAreWorthTheDrawScoreOfTheSideAtTheRoot) {
    searchSettings.drawScore = 33;
    expectRows(&Quiescence::scoreNotStored, R"(
        checks 0 beta -99 eval -200 fifty 99 = -33; checks 0 beta -99 eval -200 fifty 99 ply 2 = 33
        checks 0 beta 99 eval -200 fifty 99 = -33)");
    expectRows(&Quiescence::score, "checks 0 beta -99 eval -200 fifty 98 moves 7 = 7");
    expectStored(0, lowerBound, encodeMove(g4, f6), 7);
}

TEST_F(Quiescence, Mates) {
    expectRows(&Quiescence::score, R"(
        mated 0 beta 1 ply 3 = -31997; pinned -20 beta 1 ply 3 = -31997; stalemate -2 beta 50 = 0)");
    position = positionOf(fens["mates"]);
    forget();
    EXPECT_EQ(search({.beta = 5000, .ply = 4}), 31995);
    EXPECT_EQ(stored(position)->score, 31999);
}

TEST_F(Quiescence, GoesDownTwoHalfPliesALevel) {
    expectRows(&Quiescence::reached, R"(
        capture 0 beta 1 leads 31950 known -2 b3a5 = 1; capture 0 beta 1 leads 31950 known -3 b3a5 = 0
        capture -4 beta 1 leads 31950 known -6 b3a5 = 1; capture -4 beta 1 leads 31950 known -7 b3a5 = 0)");
}

TEST_F(Quiescence, WhatIsStored) {
    const Move capture = encodeMove(b3, a5);
    for (const int depth : {0, -1, -6}) {
        Node node = nodeOf("capture 0 beta 1 moves 600");
        node.depth = depth;
        EXPECT_EQ(score(node), 600);
        expectStored(depth == 0 ? 0 : -2, lowerBound, capture, 600);
        EXPECT_TRUE(line[0] == capture && line[1] == nullMove);
        node.beta = 601;
        EXPECT_EQ(score(node), 600);
        expectStored(depth == 0 ? 0 : -2, upperBound, nullMove, 600);
        EXPECT_EQ(line[0], nullMove);
        node.window = 1000;
        EXPECT_EQ(scoreNotStored(node), 600);
        EXPECT_EQ(line[0], capture);
    }
}

} // namespace helvan::testing
