// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "search/draws.h"
#include "search/quiesce.h"
#include "search/report.h"
#include "search/scout.h"
#include "support/output.h"
#include "support/searching.h"

namespace helvan::testing {

namespace {

class Think : public Searching {
protected:
    // What the search prints for the position.
    std::string thought(const Position& position, const SearchLimits& limits) {
        Search search(*tables, limits, uciReporter());
        return printedBy([&] { think(search, position); });
    }
};

} // namespace

TEST(Draws, RepetitionNeedsTheWholePositionAgain) {
    EXPECT_FALSE(drawnByRule(play(startFen, "g1f3 g8f6 f3g1").back()));
    EXPECT_TRUE(drawnByRule(play(startFen, "g1f3 g8f6 f3g1 f6g8").back()));
    EXPECT_FALSE(drawnByRule(play(startFen, "g1f3 g8f6 f3g1 f6g8 e2e4").back()));
    // The king's walk loses the castling right: the same squares, another position.
    EXPECT_FALSE(drawnByRule(play("4k3/8/8/8/8/8/8/4K2R w K -", "e1e2 e8e7 e2e1 e7e8").back()));
    EXPECT_TRUE(drawnByRule(play("4k3/8/8/8/8/8/8/4K2R w - -", "e1e2 e8e7 e2e1 e7e8").back()));
}

TEST(Draws, AfterAHundredPliesWithoutProgress) {
    Position position = positionOf(startFen);
    position.fifty = 99;
    EXPECT_FALSE(drawnByRule(position));
    position.fifty = 100;
    EXPECT_TRUE(drawnByRule(position));
}

// Deep in the quiescence search only recaptures are looked at, but evasions are not, or it would see mates.
TEST_F(Searching, DeepChecksAreNoMates) {
    Position position = positionOf("4r2k/8/8/8/8/8/3P1P2/4K3 w - -");
    Move line[2];
    Search search(*tables);
    for (int depth = 0; depth > -60; depth -= 2) {
        EXPECT_GT(quiesce(search, position, -infiniteScore, infiniteScore, depth, 5, line), -31000) << depth;
    }
    EXPECT_FALSE(search.stopSearch); // or every answer was 0
}

TEST(Report, ScoresBeyondTheBorderAreMates) {
    EXPECT_EQ(scoreText(31800), "cp 31800");
    EXPECT_EQ(scoreText(31999), "mate 1");   // we mate with our next move
    EXPECT_EQ(scoreText(-31998), "mate -1"); // mated after our next move
    EXPECT_EQ(scoreText(-31996), "mate -2");
}

TEST(Report, NamesTheMoveThatIsSearched) {
    EXPECT_EQ(printedBy([] { uciReporter().moveBegins(encodeMove(e2, e4), 17); }),
              "info currmove e2e4 currmovenumber 17\n");
}

TEST_F(Think, FindsMatesAndAnswersWhereThereIsNoMove) {
    const char* mates[] = {"6k1/5ppp/8/8/8/8/8/R5K1 w - -", "r1b2k1r/ppp1bppp/8/1B1Q4/5q2/2P5/PPP2PPP/R3R1K1 w - -",
                           "r5rk/5p1p/5R2/4B3/8/8/7P/7K w - -", "7R/r1p1q1pp/3k4/1p1n1Q2/3N4/8/1PP2PPP/2B3K1 w - -",
                           "4r3/7q/nb2prRp/pk1p3P/3P4/P7/1P2N1P1/1K1B1N2 w - -"};
    for (int moves = 1; moves <= 5; ++moves) {
        const std::string answer = thought(positionOf(mates[moves - 1]), {.depth = 12});
        const auto last = answer.rfind(" score ");
        EXPECT_EQ(answer.substr(last, 14), " score mate " + std::to_string(moves) + " ") << answer;
    }
    const std::string mated = thought(positionOf("7k/5KQ1/8/8/8/8/8/8 b - -"), {.depth = 3});
    EXPECT_TRUE(contains(mated, "score mate -1 ") && contains(mated, "\nbestmove ZZZZ\n")) << mated;
    const std::string stalemated = thought(positionOf("7k/5K2/6Q1/8/8/8/8/8 b - -"), {.depth = 3});
    EXPECT_TRUE(contains(stalemated, " nodes 0 score cp 0 ")) << stalemated;
    EXPECT_TRUE(contains(stalemated, "\nbestmove ZZZZ\n")) << stalemated;
}

TEST_F(Think, SeesDrawsByRepetitionAndByFiftyMoves) {
    searchSettings.drawScore = -30;
    const auto lastScore = [&](const Position& position) {
        const std::string answer = thought(position, {.depth = 9});
        return std::stoi(answer.substr(answer.rfind(" score cp ") + 10));
    };
    // A rook down and about to be mated, the queen checks for ever.
    EXPECT_EQ(lastScore(positionOf("6k1/6p1/8/7Q/8/8/qr4PP/7K w - -")), 30);
    Position winning = positionOf("8/8/8/3k4/8/8/4K3/2Q5 w - -");
    EXPECT_GT(lastScore(winning), 500);
    winning.fifty = 97; // not enough moves to mate
    EXPECT_EQ(lastScore(winning), 30);
}

TEST_F(Think, ListsTheRanksOfSeveralLines) {
    const std::string answer =
        thought(positionOf("7k/8/8/8/8/8/7r/3K4 w - -"), {.depth = 4, .ranks = 3}); // two legal moves
    EXPECT_FALSE(contains(answer, "info multipv 3")) << answer;
    EXPECT_TRUE(contains(answer, "info multipv 2 score cp")) << answer;
    EXPECT_LT(answer.find("info multipv 1"), answer.find("info multipv 2"));
}

// As long as other moves are there, the table keeps the search from finding that one mates.
TEST_F(Think, SortsTheRanksByTheirScores) {
    const Position position = positionOf("6k1/5ppp/8/3n4/2P5/8/8/R5K1 w - -");
    const Move mates = encodeMove(a1, a8);
    Reporter reporter = uciReporter();
    reporter.iterationBegins = [&](int) {
        tables->transpositionTable.store(childOf(position, mates).key, 99, 9000, lowerBound, nullMove, 0);
    };
    const std::vector<Move> wanted = {encodeMove(c4, d5), mates};
    Search search(*tables, {.depth = 2, .ranks = 2, .searchMoves = wanted}, reporter);
    const std::string answer = printedBy([&] { think(search, position); });
    EXPECT_TRUE(contains(answer, "info multipv 1 score cp 31999 depth 2 ")) << answer;
    EXPECT_LT(answer.find(" pv a1a8"), answer.find(" pv c4d5", answer.find("info multipv 2"))) << answer;
    EXPECT_TRUE(contains(answer, "bestmove a1a8\n")) << answer;
}

TEST_F(Think, SwitchesTurnTheirRulesOff) {
    const Position start = positionOf(startFen);
    const auto nodesOf = [&](int beta, int depth, bool knowsLateMoves) {
        forget();
        if (knowsLateMoves) { // at the depth of reduced searches
            for (const Move move : legalMovesOf(start)) {
                tables->transpositionTable.store(childOf(start, move).key, 4, 9000, lowerBound, nullMove, 0);
            }
        }
        Search search(*tables);
        Position position = start;
        Move line[pvCapacity];
        searchScout(search, position, beta, depth, 2, line);
        return search.nodes;
    };
    EXPECT_EQ(nodesOf(-500, 6, false), 0U) << "so good that it is not searched";
    searchSettings.nullMovePruning = 0;
    EXPECT_GT(nodesOf(-500, 6, false), 0U);
    const auto reduced = nodesOf(50, 8, true);
    searchSettings.useLmr = 0;
    EXPECT_GT(nodesOf(50, 8, true), reduced);
    EXPECT_TRUE(contains(thought(positionOf("2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - -"), {.depth = 8}),
                         "bestmove g3g6"));
}

TEST_F(Think, SearchesOnlyTheNamedMoves) {
    const Position start = positionOf(startFen);
    const std::vector<Move> one = {encodeMove(a2, a3)};
    EXPECT_TRUE(contains(thought(start, {.depth = 3, .searchMoves = one}), "bestmove a2a3"));
    EXPECT_TRUE(contains(thought(start, {.depth = 3, .searchMoves = std::vector<Move>{}}), "bestmove ZZZZ"));
}

} // namespace helvan::testing
