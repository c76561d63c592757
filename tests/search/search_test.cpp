// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "board/apply_move.h"
#include "search/draws.h"
#include "search/limits.h"
#include "search/report.h"
#include "search/settings.h"
#include "search/think.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

// The game after the moves, which are separated by blanks.
std::vector<Position> play(const char* fen, const std::string& moves) {
    std::vector<Position> game(64);
    game[0] = positionOf(fen);
    std::size_t ply = 0;
    std::istringstream words(moves);
    for (std::string word; words >> word; ++ply) {
        EXPECT_EQ(applyMoveText(game[ply], game[ply + 1], word.c_str()), 1) << word;
    }
    game.resize(ply + 1);
    return game;
}

// What the search prints for the position within a number of iterations.
std::string thought(const Position& position, int depth, const char* searchMoves = "") {
    const SearchScope scope;
    searchState.pondering = 0;
    searchState.fixedMoveTime = 0;
    ::testing::internal::CaptureStdout();
    think(position, noTimeGoalSeconds, depth, searchMoves);
    return ::testing::internal::GetCapturedStdout();
}

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

TEST(Report, ScoresBeyondTheBorderAreMates) {
    EXPECT_EQ(scoreText(-12), "cp -12");
    EXPECT_EQ(scoreText(31800), "cp 31800");
    EXPECT_EQ(scoreText(31999), "mate 1"); // we mate with our next move
    EXPECT_EQ(scoreText(31997), "mate 2");
    EXPECT_EQ(scoreText(-31998), "mate -1"); // mated after our next move
    EXPECT_EQ(scoreText(-31996), "mate -2");
}

TEST(Think, FindsMatesAndAnswersWhereThereIsNoMove) {
    EXPECT_NE(thought(positionOf("6k1/5ppp/8/8/8/8/8/R5K1 w - -"), 3).find("score mate 1 "), std::string::npos);
    const std::string mateInTwo = thought(positionOf("kbK5/pp6/1P6/8/8/8/8/R7 w - -"), 6);
    EXPECT_NE(mateInTwo.find("score mate 2 "), std::string::npos) << mateInTwo;
    const std::string mated = thought(positionOf("7k/5KQ1/8/8/8/8/8/8 b - -"), 3);
    EXPECT_NE(mated.find("score mate -1 "), std::string::npos) << mated;
    EXPECT_NE(mated.find("\nbestmove ZZZZ\n"), std::string::npos) << mated;
    const std::string stalemated = thought(positionOf("7k/5K2/6Q1/8/8/8/8/8 b - -"), 3);
    EXPECT_NE(stalemated.find("info depth 3 time 0 nodes 0 score cp 0 "), std::string::npos) << stalemated;
    EXPECT_NE(stalemated.find("\nbestmove ZZZZ\n"), std::string::npos);
}

TEST(Think, SearchesOnlyTheNamedMoves) {
    const std::string answer = thought(positionOf(startFen), 3, "a2a3 h2h3 e2e5 ");
    EXPECT_TRUE(answer.find("bestmove a2a3") != std::string::npos || answer.find("bestmove h2h3") != std::string::npos);
    EXPECT_NE(thought(positionOf(startFen), 3, "e2e5 ").find("bestmove ZZZZ"), std::string::npos);
}

TEST(Think, RepeatsItsNodeCounts) {
    const Position position = positionOf("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -");
    deterministic = 1;
    const auto lastLines = [&] {
        const std::string answer = thought(position, 4);
        return answer.substr(answer.find("info nodes"));
    };
    EXPECT_EQ(lastLines(), lastLines());
    deterministic = 0;
}

} // namespace helvan::testing
