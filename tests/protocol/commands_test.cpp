// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "protocol/command_queue.h"
#include "protocol/go_command.h"
#include "protocol/position_command.h"
#include "support/boards.h"
#include "support/session.h"

namespace helvan::testing {

namespace {

GoParameters parametersOf(const char* line) { return readGoParameters(Words(line)); }

} // namespace

TEST(CommandQueue, KeepsOrderAndLosesAllWhenItOverflows) {
    const auto queue = std::make_unique<CommandQueue>();
    EXPECT_FALSE(takeLine(*queue));
    for (const int count : {127, 129}) {
        for (int i = 0; i < count; ++i) appendLine(*queue, std::to_string(i));
        for (int i = count == 127 ? 0 : 128; i < count; ++i) {
            ASSERT_EQ(takeLine(*queue), std::to_string(i));
        }
        EXPECT_FALSE(takeLine(*queue));
    }
    appendLine(*queue, std::string(3 * lineCapacity, 'x'));
    EXPECT_EQ(takeLine(*queue).value_or("").size(), lineCapacity - 1U);
}

TEST(CommandQueue, BytesAreCutAtLineEndsWhateverPiecesTheyComeIn) {
    const std::string longest(lineCapacity - 1, 'x');
    const std::string input = std::string("uci\r\n\nab\0lost\n", 14) + longest + "y\n" + longest + "\nlast";
    const std::vector<std::string> lines = {"uci\r\n", "\n", "ab", longest, "y\n", longest, "\n", "last"};
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, input.size()}) {
        const auto queue = std::make_unique<CommandQueue>();
        LineCutter cutter;
        for (std::size_t at = 0; at < input.size(); at += piece) {
            cutter.cut(*queue, input.data() + at, std::min(piece, input.size() - at));
        }
        cutter.finish(*queue);
        for (const std::string& expected : lines) {
            EXPECT_TRUE(lineWaits(*queue));
            ASSERT_TRUE(takeLine(*queue) == expected) << expected.size();
        }
        EXPECT_FALSE(lineWaits(*queue));
    }
}

static_assert(commandHash("ponderhit") == 0x5D4738F2, "the published hash");

TEST(Commands, UnknownOnesAndBlanksGetNoAnswer) {
    for (const char* line : {"", "\n", "  \t ", "UCI", "udH", "ucinewgame", "debug on", "register later", "\ruci"}) {
        EXPECT_EQ(answerTo(line), "") << line;
    }
    EXPECT_EQ(answerTo(" \t isready  now\r\n"), "readyok\n");
    EXPECT_EQ(answerTo("isready\nuci"), "readyok\n"); // a line ends at its first line end
}

TEST(Commands, PositionFollowsTheGame) {
    EXPECT_EQ(answerTo("position  startpos   moves e2e4 E7E5 g1f3"), "");
    EXPECT_EQ(session().gameHistory.ply, 3);
    EXPECT_EQ(moveText(session().gameHistory.current().lastMove), "g1f3");
    EXPECT_EQ(session().gameHistory.current().prev, &session().gameHistory.positions[2]);
    EXPECT_EQ(answerTo("position startpos moves"), "");
    EXPECT_EQ(session().gameHistory.ply, 0);
    EXPECT_EQ(answerTo("position fen 4k3/8/8/8/8/8/8/4K2R w KQkq - 12 34 moves e1g1"), "");
    EXPECT_EQ(moveText(session().gameHistory.current().lastMove), "e1g1");
    // Castling rights without a rook are dropped.
    EXPECT_EQ(answerTo("position fen 4k3/8/8/8/8/8/8/4K2R w KQkq - moves e1c1"), "info string illegal move e1c1\n");
    EXPECT_EQ(session().gameHistory.current().touched, (rank1 | rank8) & ~(bit(e1) | bit(h1) | bit(e8)));
    EXPECT_EQ(session().gameHistory.current().key, keyOf(session().gameHistory.current()));
}

TEST(Commands, PositionKeepsTheLastGoodState) {
    EXPECT_EQ(answerTo("position startpos moves e2e4 e2e4 e7e5"), "info string illegal move e2e4\n");
    EXPECT_EQ(session().gameHistory.ply, 1);
    EXPECT_EQ(answerTo("position fen 8/8/8/8/8/8/8/8 w -").substr(0, 11), "info string");
    EXPECT_EQ(answerTo("position fen 8/8/8/8/8/8/8/8 w - moves e2e4").substr(0, 11), "info string");
    EXPECT_EQ(session().gameHistory.ply, 1);
    EXPECT_EQ(moveText(session().gameHistory.current().lastMove), "e2e4");
}

TEST(Commands, StopEndsAllSearchesAndPonderhitTheWaitOfTheInnermost) {
    Search outer(tables(), {.ponder = true}), inner(tables(), {.ponder = true});
    session().running = {&outer, &inner};
    answerTo("ponderhit");
    EXPECT_TRUE(outer.pondering && !inner.pondering);
    answerTo("stop");
    EXPECT_TRUE(outer.stopSearch && inner.stopSearch);
    session().running.clear();
}

TEST(GoParameters, AreReadInAnyOrder) {
    const GoParameters go = parametersOf("go winc 100 btime 2500 junk depth 7 searchmoves e2e4 d2d4 nodes 12 "
                                         "movestogo 30 infinite movetime -5 wtime 1");
    EXPECT_DOUBLE_EQ(go.whiteIncrement, 0.1);
    EXPECT_DOUBLE_EQ(go.blackTime.value(), 2.5);
    EXPECT_DOUBLE_EQ(go.whiteTime.value(), 0.001);
    EXPECT_DOUBLE_EQ(go.moveTime, -0.005);
    EXPECT_EQ(go.depth, 7);
    EXPECT_EQ(go.nodeLimit, 12);
    EXPECT_EQ(go.movesToGo, 30);
    EXPECT_EQ(go.searchMoves, (std::vector<std::string>{"e2e4", "d2d4"}));
    EXPECT_TRUE(go.infinite);
    EXPECT_FALSE(go.ponder);
}

TEST(GoParameters, BadNumbersAreZeroOrTheLargest) {
    EXPECT_EQ(parametersOf("go depth 99999999999999999999").depth, std::numeric_limits<int>::max());
    EXPECT_EQ(parametersOf("go depth -99999999999").depth, std::numeric_limits<int>::min());
    EXPECT_EQ(parametersOf("go nodes 99999999999999999999").nodeLimit, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parametersOf("go nodes x wtime").nodeLimit, 0);
}

TEST(Go, UnplayablePositionsAreNamedAndAnswered) {
    answerTo("position fen 8/8/8/8/8/8/8/K7 w - -");
    EXPECT_EQ(answerTo("go depth 3"), "info string cannot search this position: black has no king\n"
                                      "info nodes 0\nbestmove ZZZZ\n");
}

TEST(Go, SearchesTheCurrentPosition) {
    answerTo("position fen 7k/8/8/8/8/8/7r/3K4 w - - moves d1e1");
    EXPECT_NE(answerTo("go nodes 3000").find("bestmove h"), std::string::npos); // black's
}

} // namespace helvan::testing
