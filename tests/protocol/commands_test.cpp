// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <thread>

#include "board/apply_move.h"
#include "protocol/command_queue.h"
#include "protocol/go_command.h"
#include "protocol/position_command.h"
#include "protocol/uci.h"
#include "search/limits.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

std::string answerTo(const std::string& line) {
    ::testing::internal::CaptureStdout();
    handleLine(line.c_str());
    return ::testing::internal::GetCapturedStdout();
}

GoParameters parametersOf(const char* line) { return readGoParameters(Words(line)); }

} // namespace

TEST(CommandQueue, KeepsOrderAndLosesAllWhenItOverflows) {
    const auto queue = std::make_unique<CommandQueue>();
    char line[lineCapacity];
    EXPECT_FALSE(takeLine(*queue, line));
    for (int i = 0; i < 127; ++i) appendLine(*queue, std::to_string(i).c_str());
    for (int i = 0; i < 127; ++i) {
        ASSERT_TRUE(takeLine(*queue, line));
        ASSERT_EQ(line, std::to_string(i));
    }
    for (int i = 0; i < 129; ++i) appendLine(*queue, std::to_string(i).c_str());
    ASSERT_TRUE(takeLine(*queue, line));
    EXPECT_STREQ(line, "128");
    EXPECT_FALSE(takeLine(*queue, line));
}

TEST(CommandQueue, CutsOverlongLines) {
    const auto queue = std::make_unique<CommandQueue>();
    appendLine(*queue, std::string(3 * lineCapacity, 'x').c_str());
    char line[lineCapacity];
    ASSERT_TRUE(takeLine(*queue, line));
    EXPECT_EQ(std::string(line).size(), lineCapacity - 1u);
}

TEST(CommandQueue, ServesTwoThreads) {
    const auto queue = std::make_unique<CommandQueue>();
    constexpr int lines = 100; // fewer than would overflow
    std::thread writer([&] {
        for (int i = 0; i < lines; ++i) appendLine(*queue, std::to_string(i).c_str());
    });
    char line[lineCapacity];
    for (int i = 0; i < lines;) {
        if (!takeLine(*queue, line)) continue;
        ASSERT_EQ(line, std::to_string(i));
        ++i;
    }
    writer.join();
}

// The published hashes of the eight command words.
static_assert(commandHash("uci") == 0x0B88B1C6);
static_assert(commandHash("isready") == 0xAAEBBE96);
static_assert(commandHash("quit") == 0x7C9D0608);
static_assert(commandHash("stop") == 0x7C9E1B4B);
static_assert(commandHash("ponderhit") == 0x5D4738F2);
static_assert(commandHash("position") == 0x4CEF7ABA);
static_assert(commandHash("setoption") == 0x687891EA);
static_assert(commandHash("go") == 0x005977FB);

TEST(Commands, UnknownOnesAndBlanksGetNoAnswer) {
    for (const char* line : {"", "\n", "  \t ", "UCI", "udH", "ucinewgame", "debug on", "register later", "\r\nuci"}) {
        EXPECT_EQ(answerTo(line), "") << line;
    }
    EXPECT_EQ(answerTo("  isready  now\r\n"), "readyok\n");
    EXPECT_EQ(answerTo("isready\nuci"), "readyok\n"); // a line ends at its first line end
}

TEST(Commands, PositionFollowsTheGame) {
    EXPECT_EQ(answerTo("position  startpos   moves e2e4 E7E5 g1f3"), "");
    EXPECT_EQ(gameHistory.ply, 3);
    EXPECT_EQ(textOf(gameHistory.current().lastMove), "g1f3");
    EXPECT_EQ(gameHistory.current().prev, &gameHistory.positions[2]);
    EXPECT_EQ(answerTo("position startpos moves"), "");
    EXPECT_EQ(gameHistory.ply, 0);
    EXPECT_EQ(answerTo("position fen 4k3/8/8/8/8/8/8/4K2R w K - 12 34 moves e1g1"), "");
    EXPECT_EQ(textOf(gameHistory.current().lastMove), "e1g1");
}

TEST(Commands, PositionKeepsTheLastGoodState) {
    EXPECT_EQ(answerTo("position startpos moves e2e4 e2e4 e7e5"), "info string illegal move e2e4\n");
    EXPECT_EQ(gameHistory.ply, 1);
    EXPECT_EQ(answerTo("position fen 8/8/8/8/8/8/8/8 w -").substr(0, 11), "info string");
    EXPECT_EQ(answerTo("position fen 8/8/8/8/8/8/8/8 w - moves e2e4").substr(0, 11), "info string");
    EXPECT_EQ(gameHistory.ply, 1);
    EXPECT_EQ(textOf(gameHistory.current().lastMove), "e2e4");
}

TEST(Commands, PositionDropsUnfoundedCastlingRights) {
    EXPECT_EQ(answerTo("position fen 4k3/8/8/8/8/8/8/4K3 w KQkq - moves e1g1"), "info string illegal move e1g1\n");
}

TEST(Commands, GamesLongerThanTheHistoryAreCut) {
    const std::string shuffle = " g1f3 g8f6 f3g1 f6g8";
    const std::string inOneLine = [&] {
        std::string line = "position startpos moves";
        while (line.size() + shuffle.size() < lineCapacity) line += shuffle;
        return line;
    }();
    EXPECT_EQ(answerTo(inOneLine), ""); // no line can hold a longer game than the history
    EXPECT_GT(gameHistory.ply, 1600);
}

TEST(Commands, MovesOfAPositionCommandAreNoNodes) {
    nodeCounter = NodeCounter{.count = 5, .limit = 5};
    answerTo("position startpos moves e2e4 e7e5");
    EXPECT_EQ(nodeCounter.count, 5u);
    EXPECT_EQ(nodeCounter.stopSearch, 0);
    nodeCounter = NodeCounter{};
}

TEST(CommandsDeathTest, PositionOfNeitherKindEndsTheProcess) {
    EXPECT_EXIT(handleLine("position"), ::testing::ExitedWithCode(1), "Error here!\n");
    EXPECT_EXIT(handleLine("position moves e2e4"), ::testing::ExitedWithCode(1), "Error here!\n");
    EXPECT_EXIT(handleLine("quit"), ::testing::ExitedWithCode(0), "");
}

TEST(GoParameters, AreReadInAnyOrder) {
    const GoParameters go = parametersOf("go winc 100 btime 2500 junk depth 7 searchmoves e2e4 d2d4 nodes 12 "
                                         "movestogo 30 infinite movetime -5 wtime 1");
    EXPECT_DOUBLE_EQ(go.whiteIncrement, 0.1);
    EXPECT_DOUBLE_EQ(go.blackTime, 2.5);
    EXPECT_DOUBLE_EQ(go.whiteTime, 0.001);
    EXPECT_DOUBLE_EQ(go.moveTime, -0.005);
    EXPECT_EQ(go.depth, 7);
    EXPECT_EQ(go.nodeLimit, 12);
    EXPECT_EQ(go.movesToGo, 30);
    EXPECT_EQ(go.searchMoves, "e2e4 d2d4 ");
    EXPECT_TRUE(go.infinite);
    EXPECT_FALSE(go.ponder);
}

TEST(GoParameters, BadNumbersAreZeroOrTheLargest) {
    EXPECT_EQ(parametersOf("go depth 99999999999999999999").depth, std::numeric_limits<int>::max());
    EXPECT_EQ(parametersOf("go depth -99999999999").depth, std::numeric_limits<int>::min());
    EXPECT_EQ(parametersOf("go nodes 99999999999999999999").nodeLimit, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parametersOf("go depth x").depth, 0);
    EXPECT_EQ(parametersOf("go wtime").whiteTime, 0.0);
}

TEST(Go, UnplayablePositionsAreNamedAndAnswered) {
    answerTo("position fen 8/8/8/8/8/8/8/K7 w - -");
    EXPECT_EQ(answerTo("go depth 3"), "info string cannot search this position: black has no king\n"
                                      "info nodes 0\nbestmove ZZZZ\n");
}

TEST(Go, SearchesTheCurrentPosition) {
    answerTo("position startpos moves e2e4");
    const std::string answer = answerTo("go nodes 3000");
    const auto best = answer.find("bestmove ");
    ASSERT_NE(best, std::string::npos);
    Position child;
    EXPECT_EQ(applyMoveText(gameHistory.current(), child, answer.substr(best + 9, 4).c_str()), 1);
}

} // namespace helvan::testing
