// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "book/settings.h"
#include "eval/parameters.h"
#include "protocol/options.h"
#include "protocol/set_option.h"
#include "support/session.h"

namespace helvan::testing {

namespace {

constexpr int smallestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();

OptionRequest requestOf(const std::string& line) { return readOptionRequest(Words(line)); }

std::string answerToOption(const std::string& words) { return answerTo("setoption name " + words); }

// The options that "uci" shows, in its order: those without and with a range, each as its format says ($1 the name, $2
// the type, $3 the default, $4 and $5 the range).
std::vector<std::string> shownOptions(const char* plain, const char* ranged) {
    const std::regex optionLine("option name (.*) type (.*) default (\\S+)(?: min (\\S+) max (\\S+))?");
    std::vector<std::string> shown;
    std::istringstream answer(answerTo("uci"));
    for (std::string line; std::getline(answer, line);) {
        std::smatch is;
        if (std::regex_match(line, is, optionLine)) shown.push_back(is.format(is[4].matched ? ranged : plain));
    }
    return shown;
}

std::string textOf(const std::string& document) {
    std::ifstream file(HELVAN_SOURCE_ROOT "/../" + document);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Every setting gets its value back after each test, and whatever was built from it.
class Options : public ::testing::Test {
protected:
    ~Options() override {
        searchSettings = {};
        protocolSettings = {};
        bookSettings = {};
        evalParameters.kingSafetyAggressiveness = aggressiveness;
        tables().transpositionTable.release();
        rebuildTables(tables());
        reopenBook(session().book);
    }

private:
    int aggressiveness = evalParameters.kingSafetyAggressiveness;
};

} // namespace

TEST_F(Options, NamesAndValuesAreReadAsWords) {
    const OptionRequest request = requestOf("setoption junk NAME  name King   Safety name value Some Thing");
    EXPECT_EQ(request.name, "king safety");
    EXPECT_EQ(request.value, "some thing");
    EXPECT_EQ(requestOf("setoption value 7 8 name hash").name, "hash");
    // Every second word of a value keeps eight characters and is never a keyword.
    const char* values[][2] = {{"averylongname.bin", "averylongname.bin"},
                               {"averylongname averylongname", "averylongname averylon"},
                               {"123456789 12345678 123456789 123456789", "123456789 12345678 123456789 12345678"},
                               {"a value b name", "a value b name"},
                               {"a b value c name d", "a b c name d"}};
    for (const auto& [given, read] : values) {
        EXPECT_EQ(requestOf(std::string("setoption name book file value ") + given).value, read);
    }
    EXPECT_EQ(requestOf("setoption name book file value a b name d").name, "book file d");
}

TEST_F(Options, NamesIgnoreCaseAndNumbersAreTakenAsGiven) {
    struct {
        const char* words;
        const int* setting;
        int value;
    } const rows[] = {
        {"kInG SAFETY aggressiveness value 3", &evalParameters.kingSafetyAggressiveness, 3},
        {"Drawscore value -400", &searchSettings.drawScore, -400},
        {"Drawscore value many", &searchSettings.drawScore, 0},
        {"MultiPV value 500", &searchSettings.multiPv, 500},
        {"MultiPV", &searchSettings.multiPv, 0},
        {"move overhead milliseconds value 99999999999999999999", &protocolSettings.moveOverheadMilliseconds,
         largestInt},
        {"move overhead milliseconds value -4294967297", &protocolSettings.moveOverheadMilliseconds, smallestInt},
        {"Best Line value FALSE", &bookSettings.bestLineOnly, 0},
        {"OwnBook value off", &bookSettings.ownBook, 0},
        {"OwnBook value TRUE", &bookSettings.ownBook, 1},
        {"Ponder value 1", &protocolSettings.ponderAllowed, 0}};
    for (const auto& [words, setting, value] : rows) {
        EXPECT_EQ(answerToOption(words), "");
        EXPECT_EQ(*setting, value) << words;
    }
    EXPECT_TRUE(contains(answerTo("uci"), "option name Drawscore type spin default 0 min -50 max 50\n"));
}

// The tables of the documents say what "uci" says, row by row.
TEST_F(Options, AreListedInTheDocuments) {
    const std::vector<std::string> rows = shownOptions("| $1 | $2 | $3 | |", "| $1 | $2 | $3 | $4 to $5 |");
    EXPECT_FALSE(rows.empty());
    for (const char* document : {"README.md", "docs/uci.md"}) {
        std::istringstream text(textOf(document));
        std::vector<std::string> listed;
        const std::regex row("\\|[^|]*\\| (check|spin|string) \\|[^|]*\\|[^|]*\\|");
        std::smatch found;
        for (std::string line; std::getline(text, line);) {
            if (std::regex_search(line, found, row)) listed.push_back(found.str());
        }
        EXPECT_EQ(listed, rows) << document;
    }
}

TEST_F(Options, AreInTheManPage) {
    const std::string unquoted = std::regex_replace(textOf("packaging/helvan.6"), std::regex("[\"\\\\]"), "");
    const std::string page = std::regex_replace(unquoted, std::regex(" +"), " ");
    for (const std::string& option : shownOptions("$1 ($3)", "$1 ($3, $4 to $5)")) {
        EXPECT_TRUE(contains(page, option)) << option;
    }
}

TEST_F(Options, WhatIsNotUnderstoodIsAnswered) {
    EXPECT_EQ(answerToOption("Use LMR value yes Please"),
              "info string yes please not recognized as checkbox argument\n");
    EXPECT_EQ(answerToOption("use lmr"), "info string  not recognized as checkbox argument\n");
    EXPECT_EQ(searchSettings.useLmr, 1);
    EXPECT_EQ(answerToOption("No Such Thing value 3"), "info string no such thing not recognized\n");
    EXPECT_EQ(answerToOption("Hash 5"), "info string hash 5 not recognized\n");
    EXPECT_EQ(answerTo("setoption"), "info string  not recognized\n");
}

TEST_F(Options, HashIsFreedAndAllocated) {
    EXPECT_EQ(answerToOption("Hash value 2"), "info string Hash table size is now 2 meg\n");
    EXPECT_EQ(tables().transpositionTable.bucketCount, bucketCountFor(2));
    EXPECT_EQ(answerToOption("Hash value 0"), "info string Hash tables turned OFF\n");
    EXPECT_EQ(tables().transpositionTable.bucketCount, 0U);
    EXPECT_EQ(answerToOption("hash value -5"), "info string Hash tables turned OFF\n");
    EXPECT_EQ(searchSettings.hashMegabytes, -5);
}

TEST_F(Options, ChangesForgetTheScoresOfTheOldSettings) {
    constexpr Key key = 5;
    for (const char* change : {"King Safety Aggressiveness value 9", "use lmr value junk"}) {
        answerToOption("Hash value 1");
        tables().transpositionTable.store(key, 4, 10, exactBound, nullMove, 0);
        ASSERT_NE(tables().transpositionTable.probe(key), nullptr);
        answerToOption(change);
        EXPECT_EQ(tables().transpositionTable.probe(key), nullptr) << change;
    }
}

TEST_F(Options, BookFileNamesAreCutToTheirRoom) {
    EXPECT_EQ(answerToOption("Book File value /My/Book.bin"), "info string book file is /my/book.bin\n");
    const std::string kept(bookFileCapacity - 1, 'x');
    EXPECT_EQ(answerToOption("Book File value " + kept + "yyy"), "info string book file is " + kept + "\n");
    EXPECT_EQ(bookSettings.bookFileName, kept);
}

} // namespace helvan::testing
