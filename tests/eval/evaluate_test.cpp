// SPDX-License-Identifier: MIT
#include "eval/evaluate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "eval/endings.h"
#include "eval/pawn_structure.h"
#include "eval/scaling.h"
#include "search/tables.h"
#include "support/boards.h"
#include "support/eval_parameters.h"

namespace helvan::testing {

namespace {

int freshScore(const Position& position) { return explainEvaluation(position).score; }

// Boards are mirrored left to right but for these: castling rights; a king at home, which is credited with the
// shelter of the castled king; the units for a king on its third rank, whose table is not symmetric.
bool isDeliberatelyLopsided(const Position& position) {
    const Bitboard homes = bit(d1) | bit(e1);
    for (Colour colour : {white, black}) {
        const Square kingSquare = lowestBit(position.of(colour, king));
        const Square own = colour == white ? kingSquare : mirrored(kingSquare);
        if ((bit(own) & homes) != 0 || rankOf(own) == 2) return true;
    }
    return castlingIndex(position.touched) != castlingIndex(rank1 | rank8);
}

} // namespace

TEST(Symmetry, FlippedColoursScoreTheSame) {
    forRandomPositions(100000, 20, [](const Position& position, Random&) {
        ASSERT_EQ(freshScore(position), freshScore(transformed(position, 56, true)));
    });
}

TEST_F(Parameters, BoardsMirroredLeftToRightScoreTheSame) {
    evalParameters.trappedRook = {}; // known for the king's side only
    initEvalTables();
    int compared = 0;
    forRandomPositions(100000, 21, [&](const Position& position, Random&) {
        if (isDeliberatelyLopsided(position)) return;
        ++compared;
        ASSERT_EQ(freshScore(position), freshScore(transformed(position, 7, false)));
    });
    EXPECT_GT(compared, 20000);
}

TEST(Evaluate, CacheAndExplanationAgree) {
    forRandomPositions(100000, 22, [](const Position& position, Random&) {
        const int score = evaluated(position);
        ASSERT_EQ(score, freshScore(position));
        ASSERT_EQ(evaluated(position), score);
        ASSERT_LE(std::abs(score), largestEvaluation);
    });
}

TEST(Evaluate, PackedSumsEqualPlainSums) {
    forRandomPositions(100000, 23, [](const Position& position, Random&) {
        const EvalExplanation explanation = explainEvaluation(position);
        if (explanation.special) return;
        std::int64_t opening = 0, endgame = 0;
        for (const EvalExplanation::Term& term : explanation.terms) {
            opening += term.white.opening() - term.black.opening();
            endgame += term.white.endgame() - term.black.endgame();
        }
        const std::int64_t blended = (fullPhase - explanation.phase) * endgame + explanation.phase * opening;
        ASSERT_EQ(explanation.blended, blended + explanation.endingBonus * fullPhase);
    });
}

TEST(Scaling, OppositeBishops) {
    for (int pawns = 0; pawns <= 8; ++pawns) {
        for (int passed = 0; passed <= pawns; ++passed) {
            const OppositeBishopScale scale = oppositeBishopScale({{28, pawns, passed}, {28, 2, 0}}, white, 6);
            EXPECT_EQ(scale.scale, (std::lround(1000 * std::sqrt(std::max(pawns + passed - 2, 0))) + 2) / 5);
            EXPECT_FALSE(scale.materialRules);
        }
    }
    const ScaledSide withRook = {68, 4, 0};
    EXPECT_EQ(oppositeBishopScale({withRook, withRook}, black, 55).scale, 900);
    EXPECT_FALSE(oppositeBishopScale({withRook, withRook}, black, 55).materialRules);
    EXPECT_EQ(oppositeBishopScale({withRook, withRook}, black, 56).scale, 1000);
    EXPECT_TRUE(oppositeBishopScale({withRook, withRook}, black, 56).materialRules);
    const auto bishopScale = [](const char* fen) { return explainEvaluation(positionOf(fen)).bishopScale; };
    EXPECT_EQ(bishopScale("8/3b1k2/8/8/8/4B3/1P2PK2/8 w - -"), 283);   // two pawns, both passed
    EXPECT_EQ(bishopScale("8/2b2k2/8/8/8/4B3/1P2PK2/8 w - -"), 1000);  // bishops of one colour
    EXPECT_EQ(bishopScale("8/3b1k2/8/8/8/3BB3/1P2PK2/8 w - -"), 1000); // a pair against one
    const EvalExplanation withRooks = explainEvaluation(positionOf("8/3b1k2/1r6/8/8/4B3/1P2PK2/4R3 w - -"));
    EXPECT_EQ(withRooks.bishopScale, 900);
    EXPECT_EQ(withRooks.materialScale, 1000); // though there are but two pawns
}

TEST(Scaling, ScarceMaterial) {
    const auto scale = [](const char* fen) { return explainEvaluation(positionOf(fen)).materialScale; };
    EXPECT_EQ(scale("8/5k2/5p2/8/8/4P3/4PK2/8 w - -"), 1300);    // pawns alone
    EXPECT_EQ(scale("8/1r3k2/8/8/8/4R3/4BK2/8 w - -"), 200);     // a bishop up: three steps
    EXPECT_EQ(scale("8/1r3k2/1p6/8/4N3/4R3/4BK2/8 w - -"), 400); // ahead without a pawn
    EXPECT_EQ(scale("8/1r3k2/1p6/8/4NP2/4R3/4BK2/8 w - -"), 550);
    const int byStepsWithoutPawns[] = {100, 100, 100, 200, 400, 400};
    for (int steps = 0; steps < 6; ++steps) {
        EXPECT_EQ(scarceMaterialScale({{40, 0, 0}, {40 + 8 * steps, 0, 0}}, black), byStepsWithoutPawns[steps])
            << steps;
    }
    const int byPawnsOfTheStronger[] = {400, 550, 700, 800, 900, 1000, 1000};
    for (int pawns = 0; pawns < 7; ++pawns) {
        EXPECT_EQ(scarceMaterialScale({{40, 3, 0}, {64, pawns, 0}}, black), byPawnsOfTheStronger[pawns]) << pawns;
    }
}

TEST(Scaling, RoundsHalfAwayFromZero) {
    EXPECT_EQ(roundedQuotient<96>(47), 0);
    EXPECT_EQ(roundedQuotient<96>(-48), -1);
    EXPECT_EQ(scaled(3'000'000'000, 550), 1'650'000'000);
}

TEST_F(Parameters, KingSafetyFollowsTheOption) {
    evalParameters.kingSafetyAggressiveness = 0;
    initEvalTables();
    for (int units = 0; units < 300; ++units) EXPECT_EQ(evalTables.kingSafetyTable[units], PackedScore{});
    evalParameters.kingSafetyAggressiveness = 10;
    initEvalTables();
    EXPECT_EQ(evalTables.kingSafetyTable[127], packed(14750, 0));
    EXPECT_EQ(evalTables.kingSafetyTable[255], packed(14750, 0));
    evalParameters.kingSafetyAggressiveness = -2147483647;
    initEvalTables(); // whatever it is worth, it stays in its lane
    EXPECT_EQ(evalTables.kingSafetyTable[127].endgame(), 0);
}

TEST_F(Parameters, OldScoresOutliveAChangeButPawnStructuresDoNot) {
    const Position position = positionOf("4k3/pp4pp/8/8/3P4/8/PP4PP/R3K3 w - -");
    const auto tables = std::make_unique<SearchTables>();
    EvalCaches& own = tables->evalCaches;
    const int before = evaluate(position, own);
    EXPECT_EQ(own.etableProbes, 1U);
    evalParameters.isolatedHalfOpen = packed(-5000, -5000);
    rebuildTables(*tables);
    EXPECT_EQ(evaluate(position, own), before);
    EXPECT_EQ(own.etableProbes, 1U);
    own.evalCache.fill({});
    EXPECT_NE(evaluate(position, own), before);
    EXPECT_EQ(own.etableProbes, 2U);
    EXPECT_EQ(own.etableHits, 0U);
}

TEST(Tables, IslandsCountFromTheSecond) {
    EXPECT_EQ(evalTables.pawnIslandTable[0], packed(0, 0));
    EXPECT_EQ(evalTables.pawnIslandTable[0b1111'1111], packed(0, 0));
    EXPECT_EQ(evalTables.pawnIslandTable[0b0101'0101], packed(-90, -180));
}

TEST(Tables, TheMoveIsWorthLessInEndings) {
    EXPECT_EQ(evalTables.tempoByPhase[0], 40);
    EXPECT_EQ(evalTables.tempoByPhase[48], 70);
    EXPECT_EQ(evalTables.tempoByPhase[96], 100);
}

TEST_F(Parameters, PlainValuesAreTheLargerOfTheTwo) {
    evalParameters.material[knight] = packed(1234, 999);
    evalParameters.material[rook] = packed(1005, 2009);
    initEvalTables();
    EXPECT_EQ(evalTables.pieceValueCentipawns[knight], 123);
    EXPECT_EQ(evalTables.pieceValueCentipawns[rook], 200);
    EXPECT_EQ(evalTables.phasePieceValue[0][rook], 200);
    EXPECT_EQ(evalTables.phasePieceValue[24][rook], 175);
    EXPECT_EQ(evalTables.phasePieceValue[96][rook], 100);
}

TEST_F(Parameters, AKingAtHomeIsCreditedWithTheShelterThatIsBetterInTheOpening) {
    const Position position = positionOf("4k3/p7/8/8/8/8/6PP/4K3 w - -");
    for (const int value : {100, -100}) {
        evalParameters = {};
        evalParameters.shelter[1] = packed(value, -value);
        initEvalTables();
        EXPECT_EQ(pawnStructureOf(position, white), value > 0 ? packed(300, -300) : packed(0, 0)); // g counts twice
    }
}

TEST(Evaluate, EndingsJudgedAsAWholeAreNotCached) {
    const Position position = positionOf("8/8/8/4k3/8/8/4P3/4K3 w - -");
    const auto own = std::make_unique<EvalCaches>();
    evaluate(position, *own);
    EXPECT_EQ(own->evalCache[position.key & evalCacheMask].key, 0U);
}

} // namespace helvan::testing
