// SPDX-License-Identifier: MIT
#include "eval/evaluate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "eval/endings.h"
#include "eval/eval_cache.h"
#include "eval/parameters.h"
#include "eval/pawn_structure.h"
#include "eval/scaling.h"
#include "eval/tables.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

// Gives the parameters back and builds the tables anew when a test has changed them.
class Parameters : public ::testing::Test {
protected:
    ~Parameters() override {
        evalParameters = saved;
        kingSafetyAggressiveness = 6;
        initEvalTables();
        evalCache.fill({});
    }

private:
    EvalParameters saved = evalParameters;
};

// The position with every square moved and every piece's colour changed as told.
Position transformed(const Position& position, int squareXor, bool swapColours) {
    Position result = position;
    const auto movedSet = [&](Bitboard set) {
        Bitboard moved = 0;
        while (set != 0) moved |= bit(popLowestBit(set) ^ squareXor);
        return moved;
    };
    for (Colour colour : {white, black}) {
        for (PieceType type = allPieces; type <= king; ++type) {
            result.of(swapColours ? opponent(colour) : colour, type) = movedSet(position.of(colour, type));
        }
    }
    result.touched = movedSet(position.touched);
    result.epSquare = movedSet(position.epSquare);
    if (swapColours) ++result.ply;
    result.key = keyOf(result);
    result.pawnKey = pawnKeyOf(result);
    result.materialKey = materialKeyOf(result);
    refreshPieceSums(result);
    return result;
}

int freshScore(const Position& position) { return explainEvaluation(position).score; }

int scoreOf(const char* fen) { return freshScore(positionOf(fen)); }

bool hasCastlingRights(const Position& position) {
    return castlingIndex(position.touched) != castlingIndex(rank1 | rank8);
}

// Boards are mirrored left to right but for these: castling rights; a king at home, which is credited with the
// shelter of the castled king; the units for a king on its third rank, whose table is not symmetric.
bool isDeliberatelyLopsided(const Position& position) {
    const Bitboard homes = bit(d1) | bit(e1);
    for (Colour colour : {white, black}) {
        const Square kingSquare = lowestBit(position.of(colour, king));
        const Square own = colour == white ? kingSquare : mirrored(kingSquare);
        if ((bit(own) & homes) != 0 || rankOf(own) == 2) return true;
    }
    return hasCastlingRights(position);
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
        const int score = evaluate(position);
        ASSERT_EQ(score, freshScore(position));
        ASSERT_EQ(evaluate(position), score);
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
        const EndingEntry* ending = findEnding(position.materialKey);
        ASSERT_EQ(explanation.blended, blended + (ending != nullptr ? ending->score * fullPhase : 0));
    });
}

TEST(Evaluate, BareEndingsAreWorthTheTempoAlone) {
    for (const char* fen : {"4k3/8/8/8/8/8/8/4K3 w - -", "8/8/8/2k5/8/8/3KN3/8 w - -", "8/8/8/2k5/8/8/3Kb3/8 w - -",
                            "8/8/8/2k5/8/8/3KB3/8 b - -"}) {
        EXPECT_EQ(scoreOf(fen), 4) << fen;
    }
    EXPECT_EQ(scoreOf(startFen), 10); // the tempo of the opening
}

TEST(Evaluate, KnownEndingsAreScaledAndCorrected) {
    // Rook against rook: a twentieth. Rook against bishop: less still than a rook, and corrected besides.
    const auto explanationOf = [](const char* fen) { return explainEvaluation(positionOf(fen)); };
    EXPECT_EQ(explanationOf("8/8/8/2k1r3/8/8/3K4/7R w - -").materialScale, 50);
    const EvalExplanation rookAgainstBishop = explanationOf("8/8/8/2k1b3/8/8/3K4/7R w - -");
    EXPECT_EQ(rookAgainstBishop.materialScale, 300);
    const EvalExplanation bishopAgainstRook = explanationOf("8/8/8/2K1B3/8/8/3k4/7r b - -");
    EXPECT_LT(rookAgainstBishop.blended, 1000 * fullPhase); // 1.5 pawns off the exchange
    EXPECT_GT(bishopAgainstRook.blended, -1000 * fullPhase);
    EXPECT_TRUE(explanationOf("8/8/8/2k5/8/8/3KP3/8 w - -").special);
    // Not known: two knights against a pawn.
    EXPECT_EQ(explanationOf("8/8/4p3/2k5/8/8/3KNN2/8 w - -").materialScale, 400);
}

TEST(Scaling, OppositeBishops) {
    const ScaledSide bishopAndPawns[] = {{28, 0, 0}, {28, 1, 0}, {28, 2, 1}, {28, 3, 3}, {28, 8, 8}};
    const int scales[] = {0, 0, 200, 400, 748};
    for (int i = 0; i < 5; ++i) {
        const OppositeBishopScale scale = oppositeBishopScale({bishopAndPawns[i], {28, 2, 0}}, white, 6);
        EXPECT_EQ(scale.scale, scales[i]);
        EXPECT_FALSE(scale.materialRules);
    }
    const ScaledSide withRook = {68, 4, 0};
    EXPECT_EQ(oppositeBishopScale({withRook, withRook}, black, 55).scale, 900);
    EXPECT_EQ(oppositeBishopScale({withRook, withRook}, black, 56).scale, 1000);
    EXPECT_TRUE(oppositeBishopScale({withRook, withRook}, black, 56).materialRules);
    const auto bishopScale = [](const char* fen) { return explainEvaluation(positionOf(fen)).bishopScale; };
    EXPECT_EQ(bishopScale("8/3b1k2/8/8/8/4B3/1P2PK2/8 w - -"), 283);  // two pawns, both passed
    EXPECT_EQ(bishopScale("8/2b2k2/8/8/8/4B3/1P2PK2/8 w - -"), 1000); // bishops of one colour
}

TEST(Scaling, ScarceMaterial) {
    const auto scale = [](const char* fen) { return explainEvaluation(positionOf(fen)).materialScale; };
    EXPECT_EQ(scale("8/5k2/5p2/8/8/4P3/4PK2/8 w - -"), 1300);  // pawns alone
    EXPECT_EQ(scale("8/1r3k2/1n6/8/8/4R3/4BK2/8 w - -"), 100); // no pawns, equal
    EXPECT_EQ(scale("8/1r3k2/8/8/8/4R3/4BK2/8 w - -"), 200);   // a bishop up: three steps
    EXPECT_EQ(scale("8/1r3k2/8/8/4N3/4R3/4BK2/8 w - -"), 400);
    EXPECT_EQ(scale("8/1r3k2/1p6/8/4N3/4R3/4BK2/8 w - -"), 400); // ahead without a pawn
    EXPECT_EQ(scale("8/1r3k2/1p6/8/4NP2/4R3/4BK2/8 w - -"), 550);
    EXPECT_EQ(scale("8/1r3k2/1p6/8/4NP2/PPPPR3/4BK2/8 w - -"), 1000);
}

TEST(Scaling, FewPawnsOfTheStrongerSide) {
    const int scales[] = {400, 550, 700, 800, 900, 1000, 1000};
    for (int pawns = 0; pawns < 7; ++pawns) {
        EXPECT_EQ(scarceMaterialScale({{40, 3, 0}, {64, pawns, 0}}, black), scales[pawns]) << pawns;
    }
}

TEST(Scaling, RoundsHalfAwayFromZero) {
    EXPECT_EQ(roundedQuotient(48, 96), 1);
    EXPECT_EQ(roundedQuotient(47, 96), 0);
    EXPECT_EQ(roundedQuotient(-48, 96), -1);
    EXPECT_EQ(scaled(3'000'000'000, 550), 1'650'000'000);
    EXPECT_EQ(scaled(-1, 500), -1);
}

TEST_F(Parameters, KingSafetyFollowsTheOption) {
    kingSafetyAggressiveness = 0;
    initEvalTables();
    for (int units = 0; units < 300; ++units) EXPECT_EQ(evalTables.kingSafetyTable[units], PackedScore{});
    kingSafetyAggressiveness = 10;
    initEvalTables();
    EXPECT_EQ(evalTables.kingSafetyTable[127], packed(14750, 0));
    EXPECT_EQ(evalTables.kingSafetyTable[255], packed(14750, 0));
    kingSafetyAggressiveness = -2147483647;
    initEvalTables(); // whatever it is worth, it stays in its lane
    EXPECT_EQ(evalTables.kingSafetyTable[127].endgame(), 0);
    evaluate(positionOf(startFen));
}

TEST_F(Parameters, OldScoresOutliveAChangeButPawnStructuresDoNot) {
    const Position position = positionOf("4k3/pp4pp/8/8/3P4/8/PP4PP/R3K3 w - -");
    evalCache.fill({});
    initEvalTables();
    const int before = evaluate(position);
    const std::uint64_t probes = etableProbes, hits = etableHits;
    evalParameters.isolatedHalfOpen = packed(-5000, -5000);
    initEvalTables();
    EXPECT_EQ(evaluate(position), before);
    EXPECT_EQ(etableProbes, probes);
    evalCache.fill({});
    EXPECT_NE(evaluate(position), before);
    EXPECT_EQ(etableProbes, probes + 1);
    EXPECT_EQ(etableHits, hits);
}

TEST(PawnTable, SharedByPositionsWithTheSamePawnsAndKings) {
    const Position plain = positionOf("4k3/pp4pp/8/3P4/8/8/PP4PP/4K3 w - -");
    const Position withPieces = positionOf("r3k2r/pp4pp/8/3P4/8/8/PP4PP/R3K2R b KQkq -");
    clearPawnTable();
    const PawnEntry& entry = evaluatePawns(plain);
    const std::uint64_t hits = etableHits;
    EXPECT_EQ(&evaluatePawns(withPieces), &entry);
    EXPECT_EQ(etableHits, hits + 1);
    EXPECT_EQ(entry.passed[white][0], d5);
    EXPECT_EQ(entry.passed[white][1], 0);
    EXPECT_EQ(entry.passed[black][0], 0);
}

TEST(PawnTable, PassedPawnsComeLowestFirst) {
    const PawnEntry& entry = evaluatePawns(positionOf("4k3/8/P6P/8/1p6/8/5P2/4K3 w - -"));
    EXPECT_EQ(entry.passed[white][0], f2);
    EXPECT_EQ(entry.passed[white][1], a6);
    EXPECT_EQ(entry.passed[white][2], h6);
    EXPECT_EQ(entry.passed[black][0], b4);
}

TEST(Tables, GivenShapes) {
    EXPECT_EQ(evalTables.pawnIslandTable[0], PackedScore{});
    EXPECT_EQ(evalTables.pawnIslandTable[0b1111], PackedScore{});
    EXPECT_EQ(evalTables.pawnIslandTable[0b01010101], packed(-90, -180));
    EXPECT_EQ(evalTables.tempoByPhase[0], 40);
    EXPECT_EQ(evalTables.tempoByPhase[96], 100);
    EXPECT_EQ(evalTables.tempoByPhase[48], 70);
    const int plain[] = {0, 80, 310, 320, 510, 960, 0, 0};
    EXPECT_TRUE(std::equal(std::begin(plain), std::end(plain), evalTables.pieceValueCentipawns.begin()));
    EXPECT_EQ(evalTables.phasePieceValue[0][queen], 960);
    EXPECT_EQ(evalTables.phasePieceValue[96][queen], 800);
}

TEST_F(Parameters, EveryRowHasANameAndNoneOverlaps) {
    std::vector<std::pair<const PackedScore*, const PackedScore*>> ranges;
    std::size_t values = 0;
    for (const ParameterRow& row : parameterRows()) {
        EXPECT_STRNE(row.name, "");
        for (const auto& [begin, end] : ranges)
            EXPECT_TRUE(row.values + row.count <= begin || row.values >= end) << row.name;
        ranges.emplace_back(row.values, row.values + row.count);
        values += static_cast<std::size_t>(row.count);
    }
    EXPECT_EQ(values * sizeof(PackedScore), sizeof(EvalParameters) - sizeof(SquareValues)); // slot 0 of the boards
}

} // namespace helvan::testing
