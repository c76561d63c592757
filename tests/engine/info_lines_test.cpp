// SPDX-License-Identifier: MIT
//
// Every line that a search prints, and what it writes to the log.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <regex>

#include "support/boards.h"
#include "tools/latency/engine_process.h"

namespace helvan::testing {

namespace {

using Lines = std::vector<std::string>;

// "info depth 5 time ..." and "info multipv 1 ...", which name the same things in another order.
struct InfoLine {
    int rank = 0; // 0: of an iteration
    int depth = 0, score = 0, mate = 0, time = 0, nodes = 0, nps = 0;
    std::string pv;
};

bool readInfoLine(const std::string& text, InfoLine& line) {
    static const std::regex best(
        "info depth (\\d+) time (\\d+) nodes (\\d+) score (cp|mate) (-?\\d+) nps (\\d+) pv (.+)");
    static const std::regex ranked(
        "info multipv (\\d+) score cp (-?\\d+) depth (\\d+) time (\\d+) nodes (\\d+) nps (\\d+) pv (.+)");
    std::smatch match;
    const auto number = [&](int group) { return std::stoi(match[group]); };
    if (std::regex_match(text, match, best)) {
        line = {0, number(1), number(5), 0, number(2), number(3), number(6), match[7]};
        if (match[4] == "mate") std::swap(line.score, line.mate);
        return true;
    }
    if (!std::regex_match(text, match, ranked)) return false;
    line = {number(1), number(3), number(2), 0, number(4), number(5), number(6), match[7]};
    return true;
}

Lines wordsOf(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

// The ranks of an iteration that was finished: all, from the best on, each with a move of its own.
void checkRanks(const std::vector<InfoLine>& ranked, std::size_t count, const InfoLine& iteration) {
    EXPECT_EQ(ranked.size(), count);
    Lines moves;
    for (const InfoLine& line : ranked) {
        EXPECT_EQ(line.rank, static_cast<int>(moves.size()) + 1);
        EXPECT_LE(line.score, ranked[moves.empty() ? 0 : moves.size() - 1].score);
        EXPECT_EQ(std::count(moves.begin(), moves.end(), wordsOf(line.pv)[0]), 0) << line.pv;
        EXPECT_TRUE(line.time <= iteration.time && line.nodes <= iteration.nodes);
        moves.push_back(wordsOf(line.pv)[0]);
    }
    if (ranked.empty()) return;
    EXPECT_EQ(iteration.pv, ranked[0].pv);
    EXPECT_TRUE(iteration.mate != 0 || iteration.score == ranked[0].score);
}

// Holds what a search prints for the position behind the moves against the rules; answers its last line.
InfoLine checkAnswer(const std::string& fen, const std::string& moves, const Lines& answer, std::size_t ranks = 1,
                     bool stopped = false) {
    InfoLine last, before; // of this iteration, and of those before
    std::vector<InfoLine> ranked;
    int depth = 0, nodesAtEnd = -1;
    for (const std::string& text : answer) {
        SCOPED_TRACE(text);
        InfoLine line;
        std::smatch match;
        if (std::regex_match(text, match, std::regex("info depth ([0-9]+)"))) {
            EXPECT_EQ(last.depth, depth) << "the iteration before has its line";
            before = last;
            EXPECT_EQ(std::stoi(match[1]), ++depth);
        } else if (std::regex_match(text, match, std::regex("info currmove (\\S+) currmovenumber [0-9]+"))) {
            play(fen, moves + ' ' + match[1].str()); // is a move
        } else if (std::regex_match(text, match, std::regex("info nodes ([0-9]+)"))) {
            nodesAtEnd = std::stoi(match[1]);
            EXPECT_GE(nodesAtEnd, last.nodes);
        } else if (std::regex_match(text, match, std::regex("bestmove (\\S+)( ponder (\\S+))?"))) {
            EXPECT_GE(nodesAtEnd, 0);
            const auto answers = [&](const std::string& found) {
                const Lines pv = wordsOf(found);
                return !pv.empty() && match[1] == pv[0] && match[3] == (pv.size() > 1 ? pv[1] : "");
            };
            // Lines that were found in an iteration which was stopped are not answered.
            EXPECT_TRUE(answers(ranked.empty() ? last.pv : ranked[0].pv) || (stopped && answers(before.pv)));
        } else if (!readInfoLine(text, line)) {
            ADD_FAILURE() << "not a line of a search";
        } else {
            play(fen, moves + ' ' + line.pv); // is a line
            EXPECT_EQ(line.depth, depth);
            EXPECT_LE(std::abs(line.score), line.rank > 0 ? 32000 : 31800);
            EXPECT_LE(line.nps, line.nodes / std::max<double>(line.time, 0.1) * 1000);
            EXPECT_GE(line.nps, line.nodes / (line.time + 1.0) * 1000 - 1);
            if (line.rank > 0) {
                ranked.push_back(line);
                continue;
            }
            checkRanks(ranked, ranks == 1 ? 0 : depth == 1 ? 1 : ranks, line);
            EXPECT_TRUE(line.time >= last.time && line.nodes >= last.nodes);
            last = line;
            ranked.clear();
        }
    }
    return last;
}

const std::string italian = "e2e4 e7e5 g1f3 b8c6 f1c4";

} // namespace

TEST(InfoLines, HoldTogether) {
    const char* const byDepth = "go depth 6";
    EngineProcess engine;
    engine.send("setoption name OwnBook value false");
    for (const std::size_t ranks : {1U, 3U}) {
        engine.send("setoption name MultiPV value " + std::to_string(ranks));
        for (const char* go : {byDepth, "go nodes 8000", "go movetime 80"}) {
            engine.send("position startpos moves " + italian);
            SCOPED_TRACE(go);
            const Lines answer = engine.ask(go, "bestmove ");
            ASSERT_FALSE(answer.empty());
            EXPECT_GE(checkAnswer(startFen, italian, answer, ranks, go != byDepth).depth, go == byDepth ? 6 : 1);
        }
    }
}

// The mating move is not the first that is tried, so that it is found with a zero window.
TEST(InfoLines, CountTheMovesToAMate) {
    EngineProcess engine;
    const char* const inThree = "r5rk/5p1p/5R2/4B3/8/8/7P/7K w - -";
    for (const auto& [fen, moves, mate] : {std::tuple{"6k1/5ppp/8/8/8/8/8/R5K1 w - -", "", 1},
                                           {"r1b2k1r/ppp1bppp/8/1B1Q4/5q2/2P5/PPP2PPP/R3R1K1 w - -", "", 2},
                                           {inThree, "", 3},
                                           {inThree, "f6a6", -2},
                                           {"7R/r1p1q1pp/3k4/1p1n1Q2/3N4/8/1PP2PPP/2B3K1 w - -", "", 4},
                                           {"8/8/8/8/8/k7/3q1PPP/K7 w - -", "", -1}}) {
        engine.send(std::string("position fen ") + fen + " 0 1 moves " + moves);
        const InfoLine last = checkAnswer(fen, moves, engine.ask("go depth 20", "bestmove "));
        EXPECT_EQ(last.mate, mate) << fen;
        EXPECT_LT(last.depth, 20);
    }
}

// What the log tells of every search is what the search has printed; times are masked.
TEST(InfoLines, AreInTheLogToo) {
    const std::string name = ::testing::TempDir() + "helvan_game_" + std::to_string(getpid());
    EngineProcess engine({"-log", name});
    Lines expected;
    const auto send = [&](const std::string& line) {
        engine.send(line);
        expected.insert(expected.end(), {"uci -> " + line, "cmd = " + wordsOf(line)[0]});
    };
    const auto search = [&](const std::string& go, const std::string& time, bool aborted = false,
                            const std::string& end = "", const std::string& lastLine = "") {
        send(go);
        if (!time.empty()) expected.push_back(time);
        expected.push_back("DEPTH      TIME         NODES      KNPS    SCORE   PRINCIPAL VARIATION");
        expected.push_back("-----  --------  ------------  --------  -------   " + std::string(49, '-'));
        Lines answer;
        if (!end.empty()) answer = engine.readUntil(lastLine);
        engine.send(end);
        const Lines rest = engine.readUntil("bestmove ");
        ASSERT_FALSE(rest.empty());
        answer.insert(answer.end(), rest.begin(), rest.end());
        for (const std::string& text : answer) {
            InfoLine line;
            if (!readInfoLine(text, line) || line.rank > 0) continue;
            char row[200];
            std::snprintf(row, sizeof row, "%5d  T  %12d  T  %7.2f   %s", line.depth, line.nodes,
                          line.mate != 0 ? (32001 - 2 * line.mate) / 100.0 : line.score / 100.0, line.pv.c_str());
            expected.push_back(row);
        }
        if (aborted) expected.push_back("search aborted");
        expected.push_back("Total move time T");
        if (!end.empty()) expected.insert(expected.end(), {"uci -> " + end, "cmd = " + end});
        expected.insert(expected.end(), {"", "Etable"});
        const bool ponders = answer.back().find(" ponder ") != std::string::npos;
        if (ponders) expected.push_back(answer[answer.size() - 2]);
        expected.push_back(answer.back());
    };
    send("setoption name Nonsense value 3");
    expected.push_back("option nonsense (value 3) not understood.");
    send("setoption name Ponder value true");
    expected.push_back("Ponder set to 1");
    send("nonsense");
    send("position startpos moves " + italian);
    search("go depth 3", "");
    search("go ponder depth 2", "", false, "ponderhit", "info depth 2 time");
    search("go nodes 300", "", true);
    send("setoption name Hash value 0");
    expected.push_back("Hash tables turned off");
    send("position fen 6k1/5ppp/8/8/8/8/8/R5K1 w - - 0 1"); // a mate ends the search, whatever the clock says
    search("go wtime 60000 btime 100", "We have     60.0 seconds for the game.       1.2 goal set");
    search("go wtime 59400 btime 100 movestogo 40", "We have     59.4 seconds to make 40 moves =      1.6 goal");
    search("go movetime 2500", "Time Left:      2.5");
    search("go infinite", "", false, "stop", "info depth 1 time");
    send("quit");
    EXPECT_EQ(engine.exitStatus(), 0);

    const std::string seconds = "[ 0-9]{6}\\.[0-9]", count = "[ 0-9]{12}";
    const std::regex row("([ 0-9]{5}  )" + seconds + "(  " + count + "  )" + seconds +
                         "(  [- 0-9]{4}\\.[0-9]{2}   .*)");
    const std::regex total("Total move time " + seconds);
    const std::regex etable("Etable statistics: (" + count + ") hits  (" + count +
                            ") probes   Rate = ([ 0-9.]{8}) percent");
    Lines written;
    std::ifstream file(name);
    for (std::string text; std::getline(file, text);) {
        std::smatch match;
        if (std::regex_match(text, match, etable)) {
            EXPECT_NEAR(std::stod(match[3]), 100.0 * std::stod(match[1]) / std::stod(match[2]), 0.0006) << text;
            text = "Etable";
        } else if (std::regex_match(text, match, row)) {
            text = match[1].str() + "T" + match[2].str() + "T" + match[3].str();
        } else if (std::regex_match(text, total)) {
            text = "Total move time T";
        }
        written.push_back(text);
    }
    std::remove(name.c_str());
    EXPECT_EQ(written, expected);
}

} // namespace helvan::testing
