// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>

#include "board/bits.h"
#include "board/fen.h"
#include "board/piece_square.h"
#include "eval/evaluate.h"
#include "support/boards.h"
#include "support/eval_parameters.h"
#include "tools/tune/linear_model.h"
#include "tools/tune/options.h"
#include "tools/tune/parameter_file.h"
#include "tools/tune/regression.h"

namespace helvan::testing {

namespace {

using Tuning = Parameters;

// Whose king is at home has the better of two shelters, which no linear model tells.
bool isLinear(const Position& position) {
    return (position.of(white, king) & bit(e1)) == 0 && (position.of(black, king) & bit(e8)) == 0;
}

TrainingSet randomSet(int count, std::uint64_t seed) {
    TrainingSet set;
    forRandomPositions(count, seed, [&](const Position& position, Random& random) {
        if (isLinear(position)) set.add(position, 0.5F, 0.0F, below(random, 100));
    });
    dropSpecialEndings(set);
    return set;
}

std::vector<Change> randomChanges(std::size_t count, Random& random) {
    std::vector<Change> changes(count);
    for (Change& change : changes) change = {(below(random, 101) - 50) / 1000.0, (below(random, 101) - 50) / 1000.0};
    return changes;
}

std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace

TEST_F(Tuning, TheModelFollowsTheEvaluation) {
    constexpr double rounding = 0.001; // pawns: the coefficients are floats
    const TrainingSet set = randomSet(2000, 30);
    const std::vector<OpenValue> open = openValues();
    const LinearModel model = linearModelOf(set, open, 2, false);
    Random random(31);
    for (int round = 0; round < 5; ++round) {
        const EvalParameters before = evalParameters;
        const std::vector<Change> changes = randomChanges(open.size(), random);
        applyChanges(open, changes);
        for (std::size_t i = 0; i < set.size(); ++i) {
            ASSERT_NEAR(model.predicted(i, changes), evaluationInPawns(set.positions[i]), rounding);
        }
        evalParameters = before;
    }
    EXPECT_GT(set.size(), 500U);
}

TEST_F(Tuning, TheSourceIsRewrittenInPlace) {
    const std::string source = contentsOf(HELVAN_SOURCE_ROOT "/eval/parameters.cpp");
    const std::vector<PackedScore> before = parameterValues();
    EXPECT_EQ(withPresentParameters(source, before), source);
    evalParameters.squares[queen][63] = packed(-1234, 7); // h1
    evalParameters.doubledPawn = packed(3, -4);
    const std::string changed = withPresentParameters(source, before).value();
    EXPECT_EQ(changed.size(), source.size() + 1);
    EXPECT_NE(changed.find(".doubledPawn = S(   3,   -4),"), std::string::npos);
    EXPECT_EQ(withPresentParameters(changed, parameterValues()), changed);
    EXPECT_EQ(withPresentParameters(changed, before), std::nullopt); // not what it was built from
}

// Scores made by the evaluation with one value changed lead back to that value, and to the very same with more threads.
TEST_F(Tuning, FindsAChangeBackWithAnyNumberOfThreadsAndNothingMoreTheSecondTime) {
    const EvalParameters before = evalParameters;
    TrainingSet set = randomSet(6000, 32);
    evalParameters.doubledPawn += packed(400, 400);
    initEvalTables();
    Random random(33);
    for (std::size_t i = 0; i < set.size(); ++i) {
        const double pawns = evaluationInPawns(set.positions[i]);
        const double winning = 1.0 / (1.0 + std::exp(-pawns / 2.0));
        set.scores[i] = static_cast<float>(100.0 * pawns);
        set.results[i] = below(random, 1000) < 1000 * winning ? 1.0F : 0.0F;
    }
    evalParameters = before;
    initEvalTables();
    const std::vector<OpenValue> open = openValues();
    RegressionSettings settings;
    settings.blend = 1.0;
    settings.scale = 2.0;
    settings.showProgress = false;
    const RegressionTask task = prepareTask(set, settings);
    EXPECT_NEAR(task.searchScale, 2.0, 0.2);
    std::vector<Change> found[2];
    for (const int threads : {1, 3}) {
        settings.threads = threads;
        const LinearModel model = linearModelOf(set, open, threads, false);
        const RegressionOutcome outcome = fitChanges(model, task, settings);
        EXPECT_LT(outcome.validationAfter, outcome.validationBefore);
        found[threads / 2] = outcome.changes;
    }
    applyChanges(open, found[0]);
    for (Position& position : set.positions) refreshPieceSums(position);
    const RegressionOutcome again = fitChanges(linearModelOf(set, open, 1, false), task, settings);
    for (std::size_t i = 0; i < open.size(); ++i) {
        if (open[i].value == &evalParameters.doubledPawn) {
            EXPECT_GT(found[0][i].opening, 0.2);
        }
        ASSERT_EQ(found[0][i].opening, found[1][i].opening);
        ASSERT_EQ(found[0][i].endgame, found[1][i].endgame);
        ASSERT_NEAR(again.changes[i].opening, 0.0, 0.003) << open[i].row->name;
        ASSERT_NEAR(again.changes[i].endgame, 0.0, 0.003) << open[i].row->name;
    }
}

TEST_F(Tuning, SmoothnessTermsStayWithinARowAndLeavesNoTableOut) {
    const std::vector<OpenValue> open = openValues();
    std::vector<int> count(open.size());
    for (const auto& [values, weights] : linearModelOf({}, open, 1, false).smoothnessTerms) {
        EXPECT_EQ(weights[0] + weights[1] + weights[2], 0.0);
        for (const std::uint16_t value : values) {
            EXPECT_EQ(open[value].row, open[values[0]].row);
            ++count[value];
        }
    }
    for (std::size_t i = 0; i < open.size(); ++i) {
        EXPECT_EQ(count[i] > 0, open[i].row->count > 1) << open[i].row->name;
    }
}

// Ranks lie side by side in the row, but the last of one and the first of the next are far apart.
TEST_F(Tuning, NeighboursOfATableTouchAlongAnEdge) {
    const std::vector<OpenValue> open = openValues();
    const PackedScore* table = evalParameters.pawnByOwnKingOffset.data();
    std::vector<std::pair<int, int>> found;
    for (const auto& [values, weights] : linearModelOf({}, open, 1, false).smoothnessTerms) {
        if (open[values[0]].row->values != table) continue;
        found.emplace_back(open[values[0]].value - table, open[values[1]].value - table);
    }
    const auto touch = [&](int a, int b) { return std::count(found.begin(), found.end(), std::pair(a, b)) == 1; };
    EXPECT_TRUE(touch(3, 4));
    EXPECT_TRUE(touch(4, 9));
    EXPECT_FALSE(touch(4, 5));
    EXPECT_FALSE(touch(0, 8));
}

TEST_F(Tuning, PositionsMoveToTheEndOfTheirExchangesAndMatesAreLeftOut) {
    TrainingSet set;
    ASSERT_TRUE(addLine(set, "3k4/8/2p5/3q4/4P3/8/PPP5/4K3 w - -|1|70|1")); // takes the queen, and is taken
    ASSERT_TRUE(addLine(set, "4k3/ppp5/8/8/8/8/PPP5/4K3 w - -|0|30|3"));
    ASSERT_TRUE(addLine(set, "R5k1/5ppp/8/8/8/8/8/6K1 b - -|1|900|4"));
    moveToQuietLeaves(set);
    ASSERT_EQ(set.size(), 2U);
    EXPECT_EQ(positionToFen(set.positions[0]), "3k4/8/8/3p4/8/8/PPP5/4K3 w - -");
    EXPECT_EQ(positionToFen(set.positions[1]), "4k3/ppp5/8/8/8/8/PPP5/4K3 w - -");
    EXPECT_EQ(set.games[1], 3);
    EXPECT_EQ(set.results[1], 0.0F);
    EXPECT_EQ(set.scores[1], 30.0F);
    dropSmallEndings(set, 8);
    ASSERT_EQ(set.size(), 1U);
    EXPECT_EQ(set.games[0], 3);
}

// Positions show the first two values alone: the third goes on as these begin, the fourth follows the first, its
// neighbour, and the last one goes to zero, from wherever they start.
TEST(Regression, ValuesNeverSeenFollowTheirNeighbours) {
    LinearModel model;
    model.valueCount = 5;
    model.present = {{0.0, 0.0}, {0.0, 0.0}, {-5.0, 2.0}, {4.0, -4.0}, {7.0, -7.0}};
    model.smoothnessTerms = {{{0, 1, 2}, {1, -2, 1}}, {{0, 3, 0}, {1, -1, 0}}};
    RegressionTask task;
    task.scale = 1.0;
    for (std::uint32_t i = 0; i < 1000; ++i) {
        model.begin.push_back(i);
        model.variables.push_back(i % 2);
        model.coefficients.push_back(1);
        model.unchanged.push_back(0.0F);
        model.openingShare.push_back(0.5F);
        model.tempo.push_back(0.0F);
        for (auto& scale : model.scale) scale.push_back(1.0F);
        task.targets.push_back(i % 2 == 0 ? 0.6F : 0.7F);
        (i % 10 < 2 ? task.validation : task.training).push_back(i);
    }
    model.begin.push_back(1000);
    RegressionSettings settings;
    settings.l2 = 1e-7;
    settings.smoothness = 1e-4;
    settings.showProgress = false;
    const std::vector<Change> changes = fitChanges(model, task, settings).changes;
    const double first = std::log(0.6 / 0.4), second = std::log(0.7 / 0.3);
    EXPECT_NEAR(changes[0].opening, first, 0.02);
    EXPECT_NEAR(changes[1].opening, second, 0.02);
    EXPECT_NEAR(changes[2].opening - 5.0, 2 * second - first, 0.05);
    EXPECT_NEAR(changes[2].endgame + 2.0, 2 * second - first, 0.05);
    EXPECT_NEAR(changes[3].opening + 4.0, first, 0.02);
    EXPECT_NEAR(changes[4].opening, -7.0, 0.01);
    EXPECT_NEAR(changes[4].endgame, 7.0, 0.01);
}

TEST(TrainingData, OnlyWholeLinesOfPlayablePositionsAreTaken) {
    TrainingSet set;
    EXPECT_TRUE(addLine(set, "8/p3r1p1/1pn1P1kp/2pp4/8/P3PR2/PB2K1PP/8 w - -|0.5|-78|7\n"));
    EXPECT_EQ(set.results[0], 0.5F);
    EXPECT_EQ(set.scores[0], -78.0F);
    EXPECT_EQ(set.games[0], 7);
    for (const char* line :
         {"", "8/8/8/8/8/8/8/8 w - -|1|0|1", "4k3/8/8/8/8/8/8/4K3 w - -|1|0", "4k3/8|1|0|1",
          "4k3/8/8/8/8/8/8/4K3 x - -|1|0|1", "4k3/8/8/8/8/8/P7/4K3 x w - -|1|0|1", "4k3/8/8/8/8/8/P7/4K3 w - -|nan|0|1",
          "4k3/8/8/8/8/8/P7/4K3 w - -|7|0|1", "4k3/8/8/8/8/8/P7/4K3 w - -|1|inf|1", "4k3/8/8/8/8/8/P7/4K3 w - -|1|0|1x",
          "4k3/8/8/8/8/8/P7/4K3 w - -|1|0|-1"}) {
        EXPECT_FALSE(addLine(set, line)) << line;
    }
    EXPECT_EQ(set.size(), 1U);
}

TEST(ToolOptions, OnlyWholeNumbersThatTheTypeHoldsAreTaken) {
    int number = 0;
    std::uint64_t seed = 0;
    double rate = 0.0;
    EXPECT_TRUE(store("-7", number) && store("18446744073709551615", seed) && store("2e-5", rate));
    EXPECT_EQ(number, -7);
    EXPECT_EQ(seed, 18446744073709551615U);
    EXPECT_EQ(rate, 2e-5);
    for (const char* text : {"", "x", "7x", "7.5", "2147483648"}) EXPECT_FALSE(store(text, number)) << text;
    EXPECT_FALSE(store("-1", seed));
    EXPECT_FALSE(store("1e999", rate));
}

TEST(Regression, EachGameIsInOneSplitAndOnlyTrainingTellsTheScale) {
    TrainingSet set;
    for (int game = 0; game < 300; ++game) {
        const bool training = game % 10 > 1;
        const float result = game % 3 != 0 ? 1.0F : 0.0F; // two of three
        for (int i = 0; i < 2; ++i) set.add(startPosition(), result, training ? 100.0F : -900.0F, game);
    }
    const RegressionTask task = prepareTask(set, {});
    EXPECT_EQ(task.validation.size(), 60U);
    EXPECT_EQ(task.test.size(), 60U);
    EXPECT_EQ(task.training.size(), 480U);
    for (const std::uint32_t i : task.validation) EXPECT_EQ(set.games[i] % 10, 0);
    for (const std::uint32_t i : task.test) EXPECT_EQ(set.games[i] % 10, 1);
    EXPECT_NEAR(1.0 / (1.0 + std::exp(-1.0 / task.searchScale)), 2.0 / 3.0, 0.01);
}

class Generator : public ::testing::Test {
protected:
    ~Generator() override {
        for (const std::string& path : {whole, part}) std::remove(path.c_str());
    }

    static int generate(const std::string& path, const std::string& options) {
        const std::string command = HELVAN_GENERATE " --nodes 200 --seed 3 " + options + " --output " + path;
        return std::system((command + " 2>/dev/null").c_str());
    }

    const std::string whole = ::testing::TempDir() + "helvan_whole_" + std::to_string(getpid());
    const std::string part = ::testing::TempDir() + "helvan_part_" + std::to_string(getpid());
};

// What an interruption leaves continues to what runs through at once.
TEST_F(Generator, ContinuesAsIfItHadNotBeenInterrupted) {
    ASSERT_EQ(generate(whole, "--positions 700 --threads 2"), 0);
    const std::string text = contentsOf(whole);
    const std::size_t head = text.find('\n', text.find('\n') + 1) + 1, middle = text.find('\n', text.size() / 2) + 1;
    for (const std::size_t kept : {std::size_t{0}, head / 2, head, middle, middle + 30, text.size()}) {
        std::ofstream(part, std::ios::binary) << text.substr(0, kept);
        ASSERT_EQ(generate(part, "--positions 700 --threads 1"), 0);
        EXPECT_TRUE(contentsOf(part) == text) << kept;
    }
    ASSERT_EQ(generate(part, "--positions 10"), 0);
    EXPECT_TRUE(contentsOf(part) == text) << "fewer than there are";
}

TEST_F(Generator, LeavesOtherFilesAlone) {
    ASSERT_EQ(generate(whole, "--positions 300"), 0);
    std::string text = contentsOf(whole);
    EXPECT_NE(generate(whole, "--positions 1000 --seed 4"), 0);
    EXPECT_TRUE(contentsOf(whole) == text);
    const std::size_t lastScore = text.rfind('|', text.rfind('|') - 1) + 1;
    text.replace(lastScore, 1, "x"); // as another engine would have played the last game
    std::ofstream(whole, std::ios::binary) << text;
    EXPECT_NE(generate(whole, "--positions 1000"), 0);
    EXPECT_TRUE(contentsOf(whole) == text);
}

// Sums over all positions, by the side to move: evaluations, results and scores are all white's view.
TEST_F(Generator, ScoresAndResultsAreWhitesViewAndPositionsDiffer) {
    ASSERT_EQ(generate(whole, "--positions 1500"), 0);
    const TrainingSet set = readTrainingSet(whole);
    EXPECT_GE(set.size(), 1500U);
    const auto caches = std::make_unique<EvalCaches>();
    double scoreAgrees[2] = {}, resultAgrees[2] = {};
    std::set<std::string> seen;
    for (std::size_t i = 0; i < set.size(); ++i) {
        const Colour mover = set.positions[i].sideToMove();
        const double eval = (mover == white ? 1 : -1) * evaluate(set.positions[i], *caches);
        scoreAgrees[mover] += eval * static_cast<double>(set.scores[i]);
        resultAgrees[mover] += eval * static_cast<double>(set.results[i] - 0.5F);
        EXPECT_TRUE(seen.insert(positionToFenWithRights(set.positions[i])).second);
        EXPECT_GE(popCount(set.positions[i].occupied()), 5);
    }
    for (const Colour mover : {white, black}) {
        EXPECT_GT(scoreAgrees[mover], 0);
        EXPECT_GT(resultAgrees[mover], 0);
    }
}

} // namespace helvan::testing
