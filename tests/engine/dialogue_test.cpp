// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>

#include "support/engine_process.h"

namespace helvan::testing {

namespace {

double secondsSince(EngineProcess::Clock::time_point start) {
    return std::chrono::duration<double>(EngineProcess::Clock::now() - start).count();
}

bool holds(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

int countOf(const std::vector<std::string>& lines, const std::string& beginning) {
    return static_cast<int>(
        std::count_if(lines.begin(), lines.end(), [&](const auto& line) { return line.rfind(beginning, 0) == 0; }));
}

} // namespace

TEST(Dialogue, IdentifiesItself) {
    EngineProcess engine;
    engine.send("uci");
    const std::vector<std::string> lines = engine.readUntil("uciok");
    const std::vector<std::string> expected = {
        "id name Helvan64 3",
        "id author the Helvan team",
        "option name Ponder type check default true",
        "option name Hash type spin default 64 min 0 max 4096",
        "option name OwnBook type check default true",
        "option name MultiPV type spin default 1 min 1 max 99",
        "option name Book File type string default helvan.bin",
        "option name use lmr type check default true",
        "option name null move pruning type check default true",
        "option name deterministic type check default false",
        "option name Best Line type check default true",
        "option name King Safety Aggressiveness type spin default 6 min 0 max 10",
        "option name move overhead milliseconds type spin default 20 min 0 max 30000",
        "option name Drawscore type spin default -5 min -50 max 50",
        "uciok"};
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(engine.errors(), "Helvan version 3\n");
    engine.send("quit");
    EXPECT_EQ(engine.exitStatus(), 0);
}

TEST(Dialogue, AnswersInTheMiddleOfASearch) {
    EngineProcess engine;
    engine.send("position startpos moves e2e4");
    engine.send("go infinite");
    ASSERT_FALSE(engine.readUntil("info depth 2 ").empty());
    engine.send("isready");
    EXPECT_EQ(countOf(engine.readUntil("readyok"), "bestmove"), 0);
    const auto asked = EngineProcess::Clock::now();
    engine.send("stop");
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    EXPECT_LT(secondsSince(asked), 2.0); // generous: the sanitizer builds are slow
    engine.send("go infinite");
    engine.send("quit");
    EXPECT_EQ(engine.exitStatus(), 0);
    EXPECT_TRUE(engine.readUntil("bestmove ", 1).empty()); // "quit" ends without an answer
}

TEST(Dialogue, LimitsEndTheSearch) {
    EngineProcess engine;
    engine.send("go depth 3");
    const std::vector<std::string> byDepth = engine.readUntil("bestmove ");
    EXPECT_EQ(countOf(byDepth, "info depth 3 time "), 1);
    EXPECT_EQ(countOf(byDepth, "info depth 4"), 0);
    for (const char* limit : {"go movetime 100", "go nodes 20000", "go nodes 0", "go nodes 20000",
                              "go wtime 1000 btime 1000", "go", "go movetime -3", "go wtime -10"}) {
        engine.send(limit);
        EXPECT_FALSE(engine.readUntil("bestmove ").empty()) << limit;
    }
}

TEST(Dialogue, PonderingWaitsForItsEnd) {
    EngineProcess engine;
    engine.send("go ponder depth 1");
    engine.send("isready");
    EXPECT_EQ(countOf(engine.readUntil("readyok"), "bestmove"), 0);
    EXPECT_TRUE(engine.readUntil("bestmove ", 0.2).empty());
    engine.send("ponderhit");
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    engine.send("position fen 8/8/8/8/8/8/8/K7 w - - 0 1"); // nor can an unplayable position be answered sooner
    engine.send("go infinite");
    EXPECT_FALSE(engine.readUntil("info string cannot search").empty());
    EXPECT_TRUE(engine.readUntil("bestmove ", 0.2).empty());
    engine.send("stop");
    EXPECT_TRUE(holds(engine.readUntil("bestmove "), "bestmove ZZZZ"));
}

TEST(Dialogue, SearchesInsideSearchesAllAnswer) {
    EngineProcess engine;
    engine.send("go infinite");
    ASSERT_FALSE(engine.readUntil("info depth 2 ").empty());
    engine.send("position fen 4k3/8/8/8/8/8/8/4K2R w K - 0 1");
    engine.send("go depth 2");
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    engine.send("go infinite");
    engine.send("go infinite");
    engine.send("go infinite"); // one too many
    EXPECT_TRUE(holds(engine.readUntil("info string go ignored"), "info string go ignored: 3 searches are running"));
    engine.send("stop"); // ends them all
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    engine.send("isready");
    EXPECT_EQ(engine.readUntil("readyok"), std::vector<std::string>{"readyok"});
}

// The outer search goes on with its own position, moves and game whatever the inner one was about.
TEST(Dialogue, OuterSearchSurvivesAnInnerOne) {
    EngineProcess engine;
    engine.send("position startpos moves g1f3 g8f6 f3g1");
    engine.send("go infinite");
    ASSERT_FALSE(engine.readUntil("info depth 8 ").empty());
    engine.send("position fen 8/8/8/3k4/8/3K4/3P4/8 w - - 0 1");
    engine.send("go depth 6");
    EXPECT_FALSE(engine.readUntil("bestmove d").empty());
    ASSERT_FALSE(engine.readUntil("info depth 12 ").empty());
    engine.send("stop");
    const std::vector<std::string> lines = engine.readUntil("bestmove ");
    ASSERT_FALSE(lines.empty());
    const std::string from = lines.back().substr(9, 2);
    EXPECT_TRUE(from[1] >= '6' && from[1] <= '8') << lines.back(); // a black man moves
}

TEST(Dialogue, DeterministicSearchesAgreeBetweenProcesses) {
    const auto answers = [](int depthBefore) {
        EngineProcess engine;
        if (depthBefore > 0) {
            engine.send("position startpos\ngo depth " + std::to_string(depthBefore));
            engine.readUntil("bestmove");
        }
        engine.send("setoption name deterministic value true\nposition startpos moves e2e4 e7e5\ngo depth 9");
        std::string text;
        for (const std::string& line : engine.readUntil("bestmove")) {
            // Times differ, and with them whether moves are reported: that begins after a quarter of a second.
            if (line.rfind("info currmove", 0) == 0) continue;
            text += std::regex_replace(line, std::regex(" (time|nps) [0-9]+"), "") + '\n';
        }
        return text;
    };
    const std::string first = answers(0);
    EXPECT_NE(first.find("info depth 9 nodes "), std::string::npos) << first;
    EXPECT_EQ(answers(6), first) << "what was searched before leaves no trace";
}

TEST(Dialogue, OptionsInTheMiddleOfASearch) {
    EngineProcess engine;
    engine.send("go infinite");
    ASSERT_FALSE(engine.readUntil("info depth 4 ").empty());
    for (const char* option :
         {"Hash value 0", "Hash value 2", "Drawscore value 99999", "use lmr value false", "MultiPV value -7",
          "King Safety Aggressiveness value 10", "deterministic value true", "Book File value x", "nonsense"}) {
        engine.send(std::string("setoption name ") + option);
        engine.send("isready");
        EXPECT_EQ(countOf(engine.readUntil("readyok"), "bestmove"), 0) << option;
    }
    engine.send("stop");
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    engine.send("go depth 4");
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
}

TEST(Dialogue, PlaysFromTheBookWithoutSearch) {
    const std::string name = ::testing::TempDir() + "helvan_book_" + std::to_string(getpid()) + ".bin";
    const unsigned char entry[16] = {0x46, 0x3b, 0x96, 0x18, 0x16, 0x91, 0xfc, 0x9c, 0x02, 0xa2, 0, 1}; // c2c5: illegal
    std::ofstream(name, std::ios::binary).write(reinterpret_cast<const char*>(entry), sizeof entry);
    EngineProcess engine;
    engine.send("setoption name Book File value " + name);
    engine.send("go depth 1");
    EXPECT_EQ(countOf(engine.readUntil("bestmove"), "info depth 1"), 2) << "a broken book is not played from";
    unsigned char legal[16];
    std::copy(std::begin(entry), std::end(entry), legal);
    legal[9] = 0x9a; // c2c4
    std::ofstream(name, std::ios::binary).write(reinterpret_cast<const char*>(legal), sizeof legal);
    engine.send("setoption name Book File value " + name);
    engine.readUntil("info string book file is");
    engine.send("go wtime 1000 btime 1000");
    const std::vector<std::string> played = engine.readUntil("bestmove");
    EXPECT_EQ(countOf(played, "info depth"), 0);
    EXPECT_TRUE(holds(played, "info nodes 0"));
    EXPECT_EQ(played.back(), "bestmove c2c4");
    engine.send("go depth 1 searchmoves a2a3");
    EXPECT_EQ(engine.readUntil("bestmove").back().substr(0, 13), "bestmove a2a3");
    engine.send("setoption name OwnBook value false\ngo depth 1");
    EXPECT_EQ(countOf(engine.readUntil("bestmove"), "info depth 1"), 2);
    std::remove(name.c_str());
}

TEST(Dialogue, EndOfInputEndsNothing) {
    EngineProcess engine;
    engine.send("go depth 2");
    engine.closeInput();
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    usleep(100000);
    EXPECT_TRUE(engine.isRunning());
}

TEST(Dialogue, EndsWhenNobodyHears) {
    EngineProcess engine;
    engine.send("go infinite");
    EXPECT_FALSE(engine.readUntil("info depth 3 ").empty());
    engine.stopReading();
    EXPECT_TRUE(engine.ends());
}

// A book in the directory must not be taken for the standard input that the process was started without.
TEST(Dialogue, StandardInputMayBeMissing) {
    const std::string directory = ::testing::TempDir() + "helvan_without_input_" + std::to_string(getpid());
    const std::string run = "mkdir -p " + directory + " && cd " + directory +
                            " && printf 'uci\\nquit\\n' >helvan.bin && timeout 1 " + HELVAN_BINARY +
                            " <&- >answer 2>/dev/null; status=$?; test -s answer && status=1; rm -r " + directory +
                            "; exit $status";
    EXPECT_EQ(WEXITSTATUS(std::system(run.c_str())), 124) << "waits, and answers nothing";
}

TEST(Dialogue, FatalPositionsSayWhy) {
    EngineProcess first;
    first.send("position nowhere");
    EXPECT_EQ(first.exitStatus(), 1);
    EXPECT_EQ(first.errors(), "Helvan version 3\nError here!\n");
    EngineProcess second;
    second.send("position fen 8/8/8/8/8/8/8/8 x - - 0 1");
    EXPECT_EQ(second.exitStatus(), 1);
    EXPECT_EQ(second.errors(), "Helvan version 3\nError in ctm for fen \"8/8/8/8/8/8/8/8 x - -\"");
}

TEST(Dialogue, CommandLineFaultsShowTheUsage) {
    EngineProcess engine({"-help"});
    EXPECT_EQ(engine.exitStatus(), 255);
    const std::string usage = std::string("\nusage: ") + HELVAN_BINARY +
                              " {options} \n\n  -log FILE      log file name\n"
                              "  -help          display this help message\n\n";
    EXPECT_EQ(engine.errors(), "Error. option -help not found.\n" + usage);
}

TEST(Dialogue, LogHoldsEveryLineWhole) {
    const std::string name = ::testing::TempDir() + "helvan_log_test_" + std::to_string(getpid()) + ".txt";
    const std::string longLine = "isready " + std::string(8182, '%'); // as long as a line may be
    for (int run = 0; run < 2; ++run) {
        EngineProcess engine({"-log", name});
        engine.send(longLine);
        EXPECT_FALSE(engine.readUntil("readyok").empty());
        engine.send("go depth 1");
        EXPECT_FALSE(engine.readUntil("bestmove ").empty());
        engine.send("quit");
        EXPECT_EQ(engine.exitStatus(), 0);
    }
    std::ifstream file(name);
    const std::string log((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::remove(name.c_str());
    const std::string head = "uci -> " + longLine + "\ncmd = isready\nuci -> go depth 1\ncmd = go\n";
    ASSERT_EQ(log.rfind(head, 0), 0u);
    EXPECT_NE(log.find(head, 1), std::string::npos); // the second run's text follows the first's
    EXPECT_NE(log.find("\nbestmove "), std::string::npos);
}

} // namespace helvan::testing
