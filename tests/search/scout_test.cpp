// SPDX-License-Identifier: MIT
//
// The rules of zero-window nodes, one node a row.
#include <gtest/gtest.h>

#include "eval/evaluate.h"
#include "search/scout.h"
#include "support/node_table.h"

namespace helvan::testing {

namespace {

// Quiet, and queens: 27 quiet moves and nothing else. Busy: 11 captures come first. Threat: the queen's move to d5.
// EnPrise: the knight, which is as badly off on c4.
class Scout : public NodeTable {
public:
    Scout()
        : NodeTable(R"(
        quiet 6nk/6pp/8/8/8/N7/8/K2Q4 w  queens 6nk/6pp/7q/8/8/N7/8/K2Q4 w  rookCheck 6k1/8/8/8/8/8/8/R3K3 w
        busy 6k1/8/P7/p1p1p1p1/1P1P1P1P/3N1N2/8/1B2K2R wK  capture 6k1/8/8/r7/8/1N6/8/4K2R w
        losing 6k1/8/2p5/1p6/8/8/8/1R4K1 w  losingEvasion 6k1/8/8/b7/8/4Q3/8/4r1K1 w  seventh 7k/P7/8/8/8/8/8/K7 w
        losingPush 6k1/8/8/p7/8/8/1P6/7K w  pawns 4k3/pppp4/8/8/8/8/4PPPP/4K3 w  enemySeventh 7k/8/8/8/8/8/p7/4K1N1 w
        checked 4r2k/8/8/8/8/8/8/4K3 w  nineEvasions 4r1k1/8/8/1Q6/8/8/7R/2B1K3 w  twoReplies k7/8/2Q5/8/8/8/8/7K b
        oneReply k7/8/2Q5/8/8/8/8/R6K b  oneReplyChecks kr6/1p6/8/8/2K5/R7/2n5/8 b  oneMove k7/8/8/8/8/8/8/1R5K b
        twoMoves 1r5k/8/8/8/7p/8/7P/K7 w  mated 7k/5KQ1/8/8/8/8/8/8 b  stalemate rr5k/8/8/8/8/8/N7/K7 w
        promotes 8/1P2k3/8/8/8/8/8/4K3 w  promotesNearKing 8/1P1k4/8/8/8/8/8/4K3 w  reply r3k3/8/8/8/8/8/8/1R2K3 w
        phase23 7k/6pp/8/8/8/N7/8/K2Q4 w  phase46 6nk/6pp/8/7q/8/N7/8/K2Q4 w  pushCheck 8/8/1k6/8/P7/8/8/4K3 w
        push32 7k/6pp/8/8/P7/8/8/KNRQ4 w  push33 6nk/6pp/8/8/P7/8/8/KNRQ4 w  guardedPush 4k3/1p6/8/8/P7/8/8/4K3 w
        shortPush 4k3/8/8/8/8/8/P7/4K3 w  lastPiece 8/2p2kp1/1p6/p3n3/P2K4/1P2PP2/6PP/8 w
        lastButOne 8/2p2kp1/1p6/p3n3/P2K4/1P2PP2/6PP/N7 w  lastPawn 8/5k2/8/4p3/3K4/8/8/8 w
        threat r5nk/6pp/8/8/8/8/1K6/3Q4 w  noThreat 6nk/6pp/8/8/8/8/1K6/3Q4 w  losingThreat r5nk/6pp/4p3/8/8/8/1K6/3Q4 w
        enPrise 6nk/6pp/8/3p4/1p6/N7/8/K2Q4 w  knightLeft 8/8/4k3/8/8/1N6/3K4/8 w  knightChecks 8/8/8/2k5/8/1N6/3K4/8 b
        loss1 4k3/8/3n4/1P6/8/8/8/4K3 w  loss2 4k3/8/4p3/3N4/4P3/8/8/4K3 w  loss3 4k3/8/4p3/3N4/8/8/8/4K3 w
        loss4 4k3/8/4p3/3R4/4P3/8/8/4K3 w  loss5 4k3/8/4p3/3R4/8/8/8/4K3 w  loss6 4k3/8/4n3/2Q5/1P6/8/8/4K3 w
        pawnTaken 6k1/8/8/p7/8/1N6/8/4K2R w  loss9 4k3/8/4p3/3Q4/8/8/8/4K3 w)") {}

    int search(const Node& node, std::uint64_t nodeLimit = 400) override {
        Search search(*tables, {.nodes = nodeLimit});
        search.killers.killerPrimary[node.ply] = node.killer;
        const int score =
            searchScout(search, position, node.beta, node.depth, node.ply, line, node.excluded, node.passes == 0);
        nodes = static_cast<int>(search.nodes);
        killers = search.killers;
        return score;
    }

    // How far above or below beta the table's evaluation has to be for the node to be decided without moves, and how
    // far below for the quiescence search, which stores depth 0, to decide it.
    int surplus(Node node) {
        node.passes = 1;
        return least(900, [&](int above) {
            node.eval = node.beta + above;
            return score(node) == node.beta && nodes == 0;
        });
    }
    int deficit(Node node) {
        return least(2000, [&](int below) {
            node.beta = below;
            return score(node) == 0 && nodes == 0;
        });
    }
    int razored(Node node) {
        node.last = encodeMove(g7, g6);
        return least(900, [&](int below) {
            node.beta = below;
            return storedDepth(node) == 0;
        });
    }

    // Whether a null move with the score "leads" decides the node, and how deep it is searched.
    int decidedByPassing(Node node) {
        node.passes = 1;
        return score(node) == node.beta && nodes == 1;
    }
    int passedDepth(Node node) {
        return least(never, [&](int depth) {
            node.known = depth;
            return decidedByPassing(node);
        });
    }

    // How deep the move is searched if that brings the score: the least depth at which the table's word is taken for
    // it.
    int depthOf(Node node, int leads) {
        node.leads = leads;
        return least(never, [&](int depth) {
            node.known = depth;
            return score(node) == leads && line[0] == node.move;
        });
    }
    int firstDepth(Node node) { return depthOf(node, node.beta - 1); }
    int fullDepth(Node node) { return depthOf(node, node.beta + 2); }
    int tried(Node node) {
        node.leads = node.beta + 2;
        return score(node) == node.leads && line[0] == node.move;
    }
    int futileFrom(Node node) { // the least beta
        return least(9000, [&](int beta) {
            node.beta = beta;
            return !tried(node);
        });
    }

    // The move's extension in quarter-plies, of which every second one shows.
    int quarters(Node node) {
        const int shown = fullDepth(node);
        node.carry = 1;
        return shown + fullDepth(node) - 2 * (node.depth - 2);
    }
    int quartersOfHashMove(Node node) {
        node.hash = node.move;
        if (node.entry == Node{}.entry) node.entry = node.depth - 1;
        return quarters(node);
    }

    Killers killers;
};

} // namespace

TEST_F(Scout, AStoppedSearchAnswersZeroAndStoresNothing) {
    position = positionOf(fens["busy"]);
    EXPECT_EQ(search({.depth = 8, .beta = 5000}, 5), 0);
    EXPECT_EQ(stored(position), nullptr);
    for (const std::uint32_t calls : {0U, 254U, 255U}) { // the clock is looked at every 256th call
        Search late(*tables);
        late.hardDeadline = 0;
        late.checkCounter = calls;
        late.stopSearch = calls == 0;
        EXPECT_EQ(searchScout(late, position, 20000, 2, 1, line) == 0, calls != 254);
    }
}

TEST_F(Scout, DeadDrawsAndTheDeepestPlyEndTheSearch) {
    searchSettings.drawScore = 33;
    expectRows(&Scout::score, "knightLeft 8 ply 3 = -33; knightLeft 8 ply 4 = 33");
    expectRows(&Scout::searchesMoves, R"(
        knightLeft 8 ply 4 = 0; knightLeft 8 ply 2 = 1; knightChecks 8 ply 4 = 1; quiet 10 ply 250 = 0
        quiet 10 ply 249 = 1)");
    EXPECT_EQ(score(nodeOf("quiet 10 captured 1 ply 250")), evaluate(position, tables->evalCaches));
    prepare(nodeOf("knightLeft 8"));
    Position parent{};
    parent.inCheck = 1;
    position.prev = &parent;
    search({.depth = 8, .ply = 4});
    EXPECT_GT(nodes, 0) << "after a check";
}

TEST_F(Scout, ThreatenedLinesEndAPlyLater) {
    const auto attack = play("6k1/pp3ppp/8/3n4/8/8/PP3PPP/R5K1 w - -", "a1d1");
    const auto fork = play("2r3k1/5ppp/8/3N4/8/8/5PPP/6K1 w - -", "d5e7");
    const auto extends = [&](Position at, int depth, int above, Move excluded = nullMove) {
        forget();
        position = at;
        search({.depth = depth, .beta = evaluate(at, tables->evalCaches) - above, .excluded = excluded});
        return position.horizonMark != at.horizonMark;
    };
    Position at = attack.back();
    for (const int above : {-1, 0, 74, 75}) EXPECT_EQ(extends(at, 0, above), above == 0 || above == 74) << above;
    for (const int depth : {-1, 0, 1}) EXPECT_EQ(extends(at, depth, 0), depth >= 0) << depth;
    EXPECT_EQ(stored(position)->depth, 3);
    EXPECT_FALSE(extends(at, 0, 0, encodeMove(d5, f6)));
    EXPECT_FALSE(extends(fork.back(), 0, 0)) << "in check";
    at.capturedPiece = pawn;
    for (const int above : {-5, -6}) EXPECT_EQ(extends(at, 0, above), above == -5) << "for a recapture";
    at.movedPiece = 0;
    EXPECT_FALSE(extends(at, 0, 0)) << "no threat";
    at = attack.back();
    at.horizonMark = 1;
    extends(at, 0, 0);
    EXPECT_EQ(nodes, 0) << "once a line";
}

TEST_F(Scout, DeepEnoughEntriesDecideTheNode) {
    expectRows(&Scout::score, R"(
        quiet 12 beta 100 eval 100 entry 12 bound lower = 100; quiet 12 beta 100 eval 99 entry 12 bound lower = -900
        quiet 12 beta 100 eval 99 entry 12 bound upper = 99; quiet 12 beta 100 eval 100 entry 12 bound upper = -900
        quiet 12 beta 100 eval 100 entry 12 = 100; quiet 12 beta 100 eval 99 entry 12 = 99
        quiet 12 beta 100 eval 100 entry 11 = -900; quiet 12 beta 100 eval 100 entry 12 excluded a1b1 = -900
        quiet 12 beta 31988 eval 31990 entry 12 ply 5 bound lower = 31985
        quiet 12 beta 100 eval -31990 entry 12 ply 5 bound upper = -31985)");
    expectRows(&Scout::made, "quiet 8 hash d1f3 moves 100 = 1"); // its move comes first
    EXPECT_EQ(line[0], encodeMove(d1, f3));
    score(nodeOf("quiet 8 hash d1f3 moves 100 excluded d1d2"));
    EXPECT_NE(line[0], encodeMove(d1, f3));
}

TEST_F(Scout, TheTableRefinesTheEvaluation) {
    const int own = evaluate(positionOf(fens["quiet"]), tables->evalCaches);
    Node hopeless = nodeOf("quiet 7 beta 20000"); // the evaluation is the answer
    const auto evalWith = [&](Bound bound, int told) {
        hopeless.bound = bound;
        hopeless.eval = told;
        return score(hopeless);
    };
    for (const int other : {own - 9, own + 9}) {
        EXPECT_EQ(evalWith(exactBound, other), other);
        EXPECT_EQ(evalWith(lowerBound, other), std::max(own, other));
        EXPECT_EQ(evalWith(upperBound, other), std::min(own, other));
        EXPECT_EQ(evalWith(noBound, other), own);
        EXPECT_EQ(position.evalScratch, own);
    }
    EXPECT_EQ(evalWith(exactBound, -31800), -31800);
    EXPECT_EQ(evalWith(exactBound, -31801), own);
    EXPECT_EQ(evalWith(lowerBound, 31801), own);
    hopeless.captured = pawn;
    EXPECT_EQ(evalWith(noBound, 0), own + 5) << "for a recapture";
}

TEST_F(Scout, FarBelowBetaLessIsSearched) {
    expectRows(&Scout::deficit, "busy 7 = 1251; busy 8 = 2000; checked 7 = 2000");
    expectRows(&Scout::razored, R"(
        quiet 2 = 121; quiet 3 = 121; quiet 4 = 161; quiet 5 = 181; quiet 6 = 201; quiet 7 = 221; quiet 8 = 241
        quiet 9 = 261; quiet 10 = 900; quiet 4 hash d1d2 = 900; seventh 4 = 900; checked 4 = 900)");
    expectRows(&Scout::storedDepth, R"(
        quiet 4 beta 900 = 4; quiet 8 beta 31800 last g7g6 = 0; quiet 8 beta 31801 last g7g6 = 8
        capture 4 beta 400 last g7g6 moves 239 = 0; capture 4 beta 400 last g7g6 moves 240 = 4
        capture 3 beta 121 last g7g6 moves 500 = 0; pawnTaken 4 beta 280 last g7g6 moves 300 = 4)");
    expectRows(&Scout::score, R"(
        capture 4 beta 400 last g7g6 moves 239 = 239; capture 3 beta 121 last g7g6 moves 500 = 500)");
}

TEST_F(Scout, BelowBetaNearTheHorizonOnlyCapturesAreTried) {
    expectRows(&Scout::deficit, R"(
        quiet 2 = 69; quiet 3 = 79; quiet 4 = 93; quiet 5 = 111; quiet 6 = 133; quiet 7 = 159; quiet 8 = 189
        quiet 9 = 223; quiet 10 = 261; quiet 11 = 303; quiet 12 = 2000; checked 2 = 2000)");
    expectRows(&Scout::score, "capture 8 beta 189 moves 7 = 7; capture 8 beta 189 = 0");
    expectRows(&Scout::made, "capture 8 beta 189 = 1");
}

TEST_F(Scout, WonPositionsAreSearchedAPlyLessDeep) {
    expectRows(&Scout::storedDepth, R"(
        quiet 4 beta 401 eval 401 = 2; quiet 4 beta 400 eval 400 = 4; quiet 3 beta 401 eval 401 = 3
        queens 4 beta 401 eval 401 = 4; enemySeventh 4 beta 401 eval 401 = 4; checked 4 beta 401 eval 401 = 4)");
}

TEST_F(Scout, FarAboveBetaTheEvaluationDecidesAlone) {
    expectRows(&Scout::surplus, R"(
        pawns 2 = 10; pawns 3 = 15; pawns 4 = 30; pawns 5 = 35; pawns 6 = 70; pawns 7 = 90; checked 4 = 900
        pawns 2 odd 1 = 10; pawns 3 odd 1 = 15; pawns 4 odd 1 = 30; pawns 5 odd 1 = 35; pawns 6 odd 1 = 140
        pawns 7 odd 1 = 160; enemySeventh 2 = 40; enemySeventh 3 = 45; enemySeventh 4 = 55; enemySeventh 5 = 60
        enemySeventh 2 odd 1 = 100; enemySeventh 3 odd 1 = 105; enemySeventh 4 odd 1 = 120; enemySeventh 5 odd 1 = 125
        loss1 2 odd 1 = 60; loss2 2 odd 1 = 72; loss3 2 odd 1 = 80; loss4 2 odd 1 = 86; loss5 2 odd 1 = 91
        loss6 2 odd 1 = 96; loss9 2 odd 1 = 100; pawns 4 beta -31801 = 900; pawns 4 beta -31800 = 30)");
    expectRows(&Scout::searchesMoves, "pawns 8 eval 400 passes 1 = 1; pawns 4 beta 0 eval 300 passes 0 = 1");
    searchSettings.nullMovePruning = 0;
    expectRows(&Scout::surplus, "pawns 4 = 900");
}

TEST_F(Scout, PassingMayDecide) {
    expectRows(&Scout::decidedByPassing, R"(
        quiet 8 beta 50 eval 55 leads 50 = 1; quiet 8 beta 50 eval 55 leads 49 = 0; quiet 8 beta 50 eval 54 leads 60 = 0
        quiet 8 beta 50 eval 55 leads 31800 = 1; quiet 8 beta 50 eval 55 leads 31801 = 0
        quiet 6 beta 50 eval 55 leads 60 = 1; quiet 5 beta 50 eval 55 leads 60 = 0; pawns 8 beta 50 eval 55 leads 60 = 0
        checked 8 beta -50 leads 60 = 0; quiet 8 beta -31800 leads 60 = 1; quiet 8 beta -31801 leads 60 = 0)");
    expectRows(&Scout::passedDepth, R"(
        quiet 20 beta 395 eval 400 leads 405 = 10; phase23 20 beta 395 eval 400 leads 405 = 12
        phase46 24 beta 395 eval 400 leads 405 = 13; phase46 21 beta 395 eval 400 leads 405 = 11
        quiet 20 beta 367 eval 400 leads 377 = 10; quiet 20 beta 366 eval 400 leads 376 = 9
        quiet 20 beta -300 eval 400 leads -290 = 8)");
    expectRows(&Scout::made, "pawns 8 beta 50 eval 55 moves 60 = 1; quiet 8 beta 50 eval 55 leads 60 = 27");
    const Node node = nodeOf("quiet 12 beta 0 eval 5 passes 1");
    prepare(node);
    const Position passed = childOf(position, nullMove);
    tell(passed, 300, -90); // after any other move enough to decide at once
    tellMoves(passed, 0, 2);
    search(node);
    EXPECT_EQ(stored(passed)->depth, 4);
    searchSettings.nullMovePruning = 0;
    expectRows(&Scout::decidedByPassing, "quiet 8 beta 50 eval 55 leads 60 = 0");
}

TEST_F(Scout, NearTheHorizonOnlySoManyQuietMovesAreTried) {
    expectRows(&Scout::made, R"(
        quiet 2 = 4; quiet 3 = 5; quiet 4 = 6; quiet 5 = 7; quiet 6 = 8; quiet 7 = 9; quiet 8 = 27; nineEvasions 2 = 9
        quiet 2 odd 1 = 5; quiet 3 odd 1 = 6; quiet 4 odd 1 = 7; quiet 5 odd 1 = 8; quiet 6 odd 1 = 9
        quiet 7 odd 1 = 10; quiet 8 odd 1 = 27)");
    expectRows(&Scout::tried, R"(
        busy 2 e1d2 = 0; busy 2 killer e1d2 e1d2 = 1; busy 2 e1g1 = 1; busy 2 b1a2 = 1; busy 2 a6a7 = 1; busy 2 d4d5 = 0
        busy 2 f3g5 = 1)");
}

TEST_F(Scout, PromotionsToLessAndLosingMovesAreTriedWhereTheyMayServe) {
    expectRows(&Scout::tried, R"(
        promotes 8 b7b8n = 0; promotes 8 b7b8r = 0; promotes 8 b7b8b = 0; promotes 8 b7b8q = 1
        promotesNearKing 8 b7b8n = 1; promotesNearKing 8 b7b8r = 1; promotesNearKing 8 b7b8b = 1
        losing 5 b1b5 = 0; losing 6 b1b5 = 1; losing 5 hash b1b5 b1b5 = 1; losing 5 beta 111 hash b1b5 b1b5 = 0
        losingEvasion 4 e3e1 = 1; losingPush 4 b2b4 = 1)");
}

TEST_F(Scout, MovesIntoDrawsAreWorthTheDrawScoreOfWhoeverMakesThem) {
    searchSettings.drawScore = 33;
    expectRows(&Scout::scoreNotStored, "quiet 8 beta 10 fifty 99 = 33; quiet 8 beta 10 fifty 99 ply 2 = -33");
    EXPECT_EQ(killers.killerPrimary[2], nullMove);
    expectRows(&Scout::score,
               "quiet 8 beta 10 fifty 98 = -900; capture 8 beta 150 fifty 99 hash e1d2 leads 100 b3a5 = 100");
    EXPECT_EQ(stored(position)->depth, 8) << "the best is no draw";
    const auto game = play(startFen, "g1f3 g8f6 f3g1");
    position = game.back();
    forget();
    tellMoves(position, -900, 1);
    EXPECT_EQ(search({.depth = 10, .beta = 10}), 33);
    EXPECT_EQ(line[0], encodeMove(f6, g8));
    EXPECT_EQ(killers.killerPrimary[1], nullMove);
}

TEST_F(Scout, Extensions) {
    expectRows(&Scout::quarters, R"(
        quiet 10 d1f3 = 0; oneReply 14 a8b8 = 2; oneReply 13 a8b8 = 0; twoReplies 14 a8b8 = 0; oneReplyChecks 14 c2a3 = 4
        rookCheck 10 a1a8 = 2; rookCheck 15 odd 1 a1a8 = 3; rookCheck 16 odd 1 a1a8 = 2; pushCheck 10 a4a5 = 4
        pushCheck 10 odd 1 a4a5 = 4; push32 10 a4a5 = 2; push33 10 a4a5 = 0; guardedPush 10 a4a5 = 0
        shortPush 10 a2a3 = 0; quiet 5 hash d1f3 d1f3 = 0; quiet 6 hash d1f3 d1f3 = 2; quiet 15 hash d1f3 d1f3 = 2
        quiet 16 hash d1f3 d1f3 = 0; rookCheck 10 hash a1a8 a1a8 = 2; capture 8 beta 300 hash b3a5 b3a5 = 2
        capture 8 beta 300 b3a5 = 0; lastPiece 10 d4e5 = 8; lastButOne 10 d4e5 = 0; lastPawn 10 d4e5 = 0)");
    const Node node = nodeOf("reply 10 carry 1 hash b1b3"); // three quarters, of which one is left for the reply
    const auto taken = [&](int depth) {
        prepare(node);
        const Position child = childOf(position, node.hash);
        tell(child, 300, -90);
        tellMoves(child, -900, 2);
        tellMove(child, encodeMove(a8, a1), 399, 2, depth); // a check: three more
        return search(node) == -399;
    };
    EXPECT_EQ(least(never, taken), 10 + 1 - 2 + 2 - 2);
}

TEST_F(Scout, MovesThatAreBetterThanAllOthersAreExtended) {
    expectRows(&Scout::quartersOfHashMove, R"(
        queens 24 ply 6 odd 1 eval 100 bound lower moves 79 a3b5 = 4
        queens 24 ply 7 odd 1 eval 100 bound lower moves 79 a3b5 = 2
        queens 24 ply 6 odd 1 eval 100 bound lower moves 80 a3b5 = 0
        queens 24 ply 6 odd 0 eval 100 bound lower moves 79 a3b5 = 0
        queens 24 ply 6 odd 1 eval 100 bound exact moves 79 a3b5 = 4
        queens 24 ply 6 odd 1 eval 100 bound upper moves 79 a3b5 = 0
        queens 24 ply 6 odd 1 eval 100 bound lower entry 18 moves 79 a3b5 = 4
        queens 24 ply 6 odd 1 eval 100 bound lower entry 17 moves 79 a3b5 = 0
        queens 24 ply 6 odd 1 eval 31799 bound lower moves 79 a3b5 = 4
        queens 24 ply 6 odd 1 eval 31800 bound lower moves 79 a3b5 = 0
        queens 15 ply 5 odd 1 eval 100 moves 79 a3b5 = 4; queens 14 ply 3 odd 1 eval 100 moves 79 a3b5 = 2
        rookCheck 15 odd 1 eval 100 a1a8 = 3; rookCheck 16 odd 1 eval 100 a1a8 = 4)");
    for (const auto& [depth, testDepth] : {std::pair{23, 12}, {24, 12}, {26, 14}, {30, 18}}) {
        const Node node = nodeOf("twoMoves 0 odd 1 leads -398 a1a2");
        EXPECT_EQ(least(never,
                        [&, nodeDepth = depth](int known) {
                            prepare(node);
                            tell(position, 0, nodeDepth - 1, lowerBound, node.move);
                            tellMove(position, encodeMove(h2, h3), -22, 1, known); // the other move
                            return search({.depth = nodeDepth}, 5) == -398;
                        }),
                  testDepth - 2)
            << depth;
    }
}

TEST_F(Scout, LateMovesAreSearchedLessDeep) {
    expectRows(&Scout::firstDepth, R"(
        quiet 16 #2 = 14; quiet 16 #3 = 12; quiet 16 #5 = 12; quiet 16 #6 = 10; quiet 16 #11 = 10; quiet 16 #12 = 8
        quiet 16 #23 = 8; quiet 16 #24 = 6; quiet 16 odd 1 #1 = 14; quiet 16 odd 1 #2 = 12; quiet 16 odd 1 #3 = 10
        quiet 16 odd 1 #5 = 10; quiet 16 odd 1 #6 = 8; quiet 16 odd 1 #11 = 8; quiet 16 odd 1 #12 = 6
        quiet 16 odd 1 #23 = 6; quiet 16 odd 1 #24 = 4; quiet 7 #6 = 5; quiet 8 #6 = 0; quiet 9 #6 = 0; quiet 10 #6 = 4
        quiet 7 #3 = 5; quiet 8 #3 = 4; quiet 9 #3 = 5; quiet 16 moves -31900 #6 = 10; quiet 16 moves -31901 #6 = 14
        busy 14 e1d2 = 4; busy 14 killer e1d2 e1d2 = 12; busy 14 counter e1d2 e1d2 = 12; busy 14 f3g5 = 12
        busy 14 b1a2 = 13; threat 9 d1d5 = 7; threat 10 d1d5 = 0; noThreat 9 d1d5 = 0; enPrise 15 odd 1 a3c2 = 11
        enPrise 16 odd 1 a3c2 = 10; enPrise 15 odd 1 a3c4 = 9; nineEvasions 12 #4 = 10; nineEvasions 12 odd 1 #4 = 8
        queens 10 odd 1 beta 400 hash a3b5 a3b5 = 9)");
    expectRows(&Scout::fullDepth, "quiet 16 #3 = 14; quiet 16 #24 = 14; enPrise 15 odd 1 a3c2 = 13");
    searchSettings.useLmr = 0;
    expectRows(&Scout::firstDepth, "busy 14 e1d2 = 12");
}

TEST_F(Scout, FourPliesAheadLateQuietMovesFailLowUnsearched) {
    expectRows(&Scout::score, "quiet 8 = -401; quiet 10 = -900");
    expectRows(&Scout::tried, R"(
        quiet 8 #14 = 1; quiet 8 #15 = 0; quiet 9 #17 = 1; quiet 9 #18 = 0; quiet 8 odd 1 #10 = 1; quiet 8 odd 1 #11 = 0
        quiet 9 odd 1 #11 = 1; quiet 9 odd 1 #12 = 0; busy 8 odd 1 e1d2 = 0; busy 8 odd 1 killer e1d2 e1d2 = 1
        busy 8 odd 1 counter e1d2 e1d2 = 1; busy 8 odd 1 b1a2 = 1; busy 8 odd 1 moves -31901 e1d2 = 1
        busy 8 odd 1 moves -31900 e1d2 = 0; threat 8 d1d5 = 1; noThreat 8 d1d5 = 0)");
}

TEST_F(Scout, LateQuietMovesWithoutHopeAreNotSearched) {
    expectRows(&Scout::futileFrom, R"(
        quiet 6 #7 = 19; quiet 6 odd 1 #7 = 16; quiet 6 #8 = 15; quiet 8 #7 = 35; quiet 8 odd 1 #7 = 23; quiet 12 #7 = 283
        quiet 12 odd 1 #7 = 91; quiet 12 odd 1 #20 = 39; quiet 17 #7 = 8229; quiet 17 odd 1 #7 = 2085)");
    expectRows(&Scout::tried, R"(
        quiet 6 beta 60 #6 = 1; quiet 5 odd 1 beta 100 #7 = 1; quiet 18 odd 1 beta 9000 #7 = 1
        quiet 6 beta 60 moves -31900 #7 = 1; quiet 6 beta 60 moves -31899 #7 = 0; busy 10 beta 200 e1d2 = 0
        busy 10 beta 200 killer e1d2 e1d2 = 1; busy 10 beta 200 counter e1d2 e1d2 = 0; busy 10 beta 200 b1a2 = 1
        busy 10 beta 200 counter b1a2 b1a2 = 0; nineEvasions 10 beta 200 counter #9 #9 = 1
        threat 10 beta 200 d1d5 = 1; losingThreat 10 beta 200 d1d5 = 0)");
    // Close above beta the evaluation after the move decides.
    Node node = nodeOf("queens 6 #7");
    const int after = -evaluate(childOf(positionOf(node.fen), node.move), tables->evalCaches);
    for (node.odd = 0; node.odd < 2; ++node.odd) {
        const int gain = node.odd == 0 ? 4 : 1;
        for (const auto& [above, look, expected] : {std::tuple{0, 119, 1}, {1, 119, 0}, {1, 120, 1}}) {
            node.beta = 2 * 6 + gain - 4 * 7 + after + above;
            node.eval = node.beta + look - (-4 * 7 + 30 + gain + 2 * 6);
            EXPECT_EQ(tried(node), expected) << above << ' ' << look;
        }
    }
}

TEST_F(Scout, QuietCutOffsAreRemembered) {
    const auto cutBy = [&](const char* row) {
        Node node = nodeOf(row);
        node.ply = 3;
        node.leads = -350;
        node.killer = encodeMove(h7, h8);
        EXPECT_EQ(score(node), -350) << row;
        EXPECT_EQ(line[0], node.move);
        expectStored(10, lowerBound, node.move, -350);
        const int counter = pieceTypeAt(position, white, moveFrom(node.move)) * 64 + moveTo(node.move);
        const bool remembered = killers.killerPrimary[3] == node.move;
        EXPECT_EQ(killers.killerSecondary[3], remembered ? node.killer : nullMove);
        EXPECT_EQ(counterMoveOf(tables->moveHistory, position), remembered ? node.move : nullMove);
        EXPECT_EQ(tables->moveHistory.history[white][counter] > 0, remembered);
        return remembered;
    };
    const auto reply = [&](PieceType type, Square to) {
        return quietOrderOf(tables->moveHistory, position).replies[type * 64 + to];
    };
    EXPECT_TRUE(cutBy("quiet 10 a3b5"));
    EXPECT_LT(reply(knight, c2), 0) << "tried before";
    EXPECT_EQ(reply(queen, f3), 0) << "not tried";
    EXPECT_TRUE(cutBy("capture 10 e1d2"));
    EXPECT_EQ(reply(knight, a5), 0) << "a capture";
    for (const char* row : {"capture 10 b3a5", "rookCheck 10 a1a8", "checked 10 e1d2"}) EXPECT_FALSE(cutBy(row));
}

TEST_F(Scout, WhatIsStored) {
    expectRows(&Scout::score, "quiet 10 = -900");
    expectStored(10, upperBound, nullMove, -900);
    EXPECT_NE(line[0], nullMove);
    EXPECT_EQ(killers.killerPrimary[1], nullMove);
    expectRows(&Scout::score, "quiet 10 ply 5 moves 31980 = 31980");
    expectStored(10, lowerBound, line[0], 31985);
    expectRows(&Scout::score, "quiet 10 ply 5 moves -31980 = -31980");
    expectStored(10, upperBound, nullMove, -31985);
    expectRows(&Scout::scoreNotStored, R"(
        quiet 10 excluded d1d2 = -900; mated 4 ply 3 = -31997; stalemate 4 = 0
        oneMove 4 excluded a8a7 = -401; oneReply 4 excluded a8b8 = -401)");
}

} // namespace helvan::testing
