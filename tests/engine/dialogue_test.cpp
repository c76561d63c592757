// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <utility>

#include "board/fen.h"
#include "eval/parameters.h"
#include "search/think.h"
#include "tools/latency/engine_process.h"

namespace helvan::testing {

namespace {

int countOf(const std::vector<std::string>& lines, const std::string& beginning) {
    return static_cast<int>(
        std::count_if(lines.begin(), lines.end(), [&](const auto& line) { return line.rfind(beginning, 0) == 0; }));
}

std::string temporaryName(const std::string& name) {
    return ::testing::TempDir() + "helvan_" + name + '_' + std::to_string(getpid());
}

} // namespace

TEST(Dialogue, IdentifiesItself) {
    EngineProcess engine;
    std::ifstream file(HELVAN_TEST_DATA "/uci.txt");
    std::vector<std::string> expected;
    for (std::string line; std::getline(file, line);) expected.push_back(line);
    EXPECT_EQ(engine.ask("uci", "uciok"), expected);
    EXPECT_EQ(engine.errors(), "Helvan version 3\n");
    engine.send("quit");
    EXPECT_EQ(engine.exitStatus(), 0);
}

TEST(Dialogue, AnswersInTheMiddleOfASearch) {
    EngineProcess engine;
    ASSERT_FALSE(engine.ask("position startpos moves e2e4\ngo infinite", "info depth 4 ").empty());
    for (const char* option :
         {"Hash value 2", "Hash value 0", "Drawscore value 99999", "use lmr value false", "MultiPV value -7",
          "King Safety Aggressiveness value 10", "deterministic value true", "Book File value x", "nonsense"}) {
        engine.send(std::string("setoption name ") + option);
        EXPECT_EQ(countOf(engine.ask("isready", "readyok"), "bestmove"), 0) << option;
    }
    const auto asked = EngineProcess::Clock::now();
    EXPECT_FALSE(engine.ask("stop", "bestmove ").empty());
    const std::chrono::duration<double> waited = EngineProcess::Clock::now() - asked;
    EXPECT_LT(waited.count(), 2.0); // generous: the sanitizer builds are slow
    engine.send("go infinite\nquit");
    EXPECT_EQ(engine.exitStatus(), 0);
    EXPECT_TRUE(engine.readUntil("bestmove ", 1).empty()); // "quit" ends without an answer
}

TEST(Dialogue, LimitsEndTheSearch) {
    EngineProcess engine;
    const std::vector<std::string> byDepth = engine.ask("go depth 3", "bestmove ");
    EXPECT_EQ(countOf(byDepth, "info depth 3 time "), 1);
    EXPECT_EQ(countOf(byDepth, "info depth 4"), 0);
    for (const char* limit : {"go movetime 100", "go nodes 20000", "go nodes 0", "go wtime 1000 btime 1000", "go",
                              "go movetime -3", "go wtime -10"}) {
        EXPECT_FALSE(engine.ask(limit, "bestmove ").empty()) << limit;
    }
}

TEST(Dialogue, PonderingWaitsForItsEnd) {
    EngineProcess engine;
    for (const char* limit : {"depth 1", "nodes 5", "movetime 1", "wtime 10 btime 10"}) {
        const std::string go = std::string("go ponder ") + limit;
        EXPECT_EQ(countOf(engine.ask(go + "\nisready", "readyok"), "bestmove"), 0);
        EXPECT_TRUE(engine.readUntil("bestmove ", 0.2).empty()) << limit;
        EXPECT_FALSE(engine.ask("ponderhit", "bestmove ").empty()) << limit;
    }
    // Nor can an unplayable position be answered sooner.
    EXPECT_FALSE(engine.ask("position fen 8/8/8/8/8/8/8/K7 w - - 0 1\ngo infinite", "info string cannot").empty());
    EXPECT_TRUE(engine.readUntil("bestmove ", 0.2).empty());
    EXPECT_FALSE(engine.ask("stop", "bestmove ZZZZ").empty());
}

TEST(Dialogue, SearchesInsideSearchesAllAnswer) {
    EngineProcess engine;
    ASSERT_FALSE(engine.ask("go infinite", "info depth 2 ").empty());
    EXPECT_FALSE(engine.ask("position fen 4k3/8/8/8/8/8/8/4K2R w K - 0 1\ngo depth 2", "bestmove ").empty());
    EXPECT_FALSE(engine.ask("go infinite\ngo infinite\ngo infinite", "info string go ignored: 3 searches").empty());
    EXPECT_FALSE(engine.ask("stop", "bestmove ").empty()); // ends them all
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    EXPECT_EQ(engine.ask("isready", "readyok"), std::vector<std::string>{"readyok"});
    ASSERT_FALSE(engine.ask("go infinite", "info depth 3 ").empty());
    EXPECT_FALSE(engine.ask("stop\ngo infinite", "bestmove ").empty()) << "the stopped search answers first";
}

// The outer search goes on with its own limits, moves and game, in which its move leads to a repetition, whatever the
// inner one was about and whatever was stopped before.
TEST(Dialogue, OuterSearchSurvivesAnInnerOne) {
    EngineProcess engine;
    engine.ask("go infinite\nstop", "bestmove ");
    engine.send("setoption name Drawscore value -37\nposition fen 4k3/pppppppp/8/8/8/8/PPPPPPPP/Q3K3 w - - 0 1 "
                "moves e1d1 e8d8 d1e1 d8e8");
    ASSERT_FALSE(engine.ask("go ponder depth 45 searchmoves e1d1", "info depth 10 ").empty());
    engine.send("position fen 8/8/8/3k4/8/3K4/3P4/8 w - - 0 1 moves d3e3 d5e5 e3d3 e5d5 d3e3 d5e5");
    const std::vector<std::string> before = engine.ask("go depth 6 searchmoves d2d4", "bestmove d2d4");
    EXPECT_FALSE(before.empty());
    const std::vector<std::string> lines = engine.ask("ponderhit", "bestmove e1d1 ponder e8d8");
    EXPECT_EQ(countOf(before, "info depth 45 time ") + countOf(lines, "info depth 45 time "), 2);
    for (const std::string& line : lines) {
        const bool own =
            line.find(" score ") == std::string::npos ||
            (line.find(" score cp 37 ") != std::string::npos && line.find(" pv e1d1") != std::string::npos);
        EXPECT_TRUE(own) << line;
    }
}

TEST(Dialogue, DeterministicSearchesAgreeBetweenProcesses) {
    const auto answers = [](const std::string& before) {
        EngineProcess engine;
        if (!before.empty()) engine.ask(before, "bestmove");
        std::string text;
        for (const std::string& line :
             engine.ask("setoption name deterministic value true\nposition startpos moves e2e4 e7e5\ngo depth 9",
                        "bestmove")) {
            // Times differ, and with them whether moves are reported: that begins after a quarter of a second.
            if (line.rfind("info currmove", 0) == 0) continue;
            text += std::regex_replace(line, std::regex(" (time|nps) [0-9]+"), "") + '\n';
        }
        return text;
    };
    const std::string first = answers("");
    EXPECT_NE(first.find("info depth 9 nodes "), std::string::npos) << first;
    EXPECT_EQ(answers("go depth 6"), first) << "what was searched before leaves no trace";
}

// Nothing of what the engine does before it listens, or in its pauses, is left in what it finds.
TEST(Dialogue, TheFirstSearchBeginsWithNothingKnown) {
    EngineProcess engine;
    ASSERT_FALSE(engine.ask("setoption name King Safety Aggressiveness value 0\nisready", "readyok").empty());
    usleep(300'000);
    const std::vector<std::string> answer = engine.ask("go depth 8", "bestmove ");
    ASSERT_FALSE(answer.empty());
    const int aggressiveness = std::exchange(evalParameters.kingSafetyAggressiveness, 0);
    const auto tables = std::make_unique<SearchTables>();
    rebuildTables(*tables);
    tables->transpositionTable.allocate(64);
    Search search(*tables, {.depth = 8});
    think(search, startPosition());
    evalParameters.kingSafetyAggressiveness = aggressiveness;
    rebuildTables(*tables);
    EXPECT_EQ(answer[answer.size() - 2], "info nodes " + std::to_string(search.nodes));
}

TEST(Dialogue, EndOfInputEndsNothing) {
    EngineProcess engine;
    engine.send("go depth 2");
    engine.closeInput();
    EXPECT_FALSE(engine.readUntil("bestmove ").empty());
    EXPECT_EQ(engine.exitStatus(0.1), EngineProcess::stillRunning);
}

TEST(Dialogue, FatalPositionsSayWhy) {
    for (const auto& [position, complaint] :
         {std::pair{"nowhere", "Error here!\n"},
          std::pair{"fen 8/8/8/8/8/8/8/8 x - - 0 1", "Error in ctm for fen \"8/8/8/8/8/8/8/8 x - -\""}}) {
        EngineProcess engine;
        engine.send(std::string("position ") + position);
        EXPECT_EQ(engine.exitStatus(), 1);
        EXPECT_EQ(engine.errors(), std::string("Helvan version 3\n") + complaint);
    }
}

TEST(Dialogue, CommandLineFaultsShowTheUsage) {
    EngineProcess engine({"-help"});
    EXPECT_EQ(engine.exitStatus(), 255);
    EXPECT_EQ(engine.errors(), std::string("Error. option -help not found.\n\nusage: ") + HELVAN_BINARY +
                                   " {options} \n\n  -log FILE      log file name\n"
                                   "  -help          display this help message\n\n");
}

TEST(Dialogue, LogHoldsEveryLineWhole) {
    const std::string name = temporaryName("log.txt");
    const std::string longLine = "isready " + std::string(8182, '%'); // as long as a line may be
    for (int run = 0; run < 2; ++run) {
        EngineProcess engine({"-log", name});
        EXPECT_FALSE(engine.ask(longLine, "readyok").empty());
        EXPECT_FALSE(engine.ask("go depth 1", "bestmove ").empty());
        engine.send("quit");
        EXPECT_EQ(engine.exitStatus(), 0);
    }
    std::ifstream file(name);
    const std::string log((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::remove(name.c_str());
    const std::string head = "uci -> " + longLine + "\ncmd = isready\nuci -> go depth 1\ncmd = go\n";
    EXPECT_EQ(log.rfind(head, 0), 0U);
    EXPECT_NE(log.find(head, 1), std::string::npos) << "the second run's text follows the first's";
    EXPECT_NE(log.find("\nbestmove "), std::string::npos);
}

} // namespace helvan::testing
