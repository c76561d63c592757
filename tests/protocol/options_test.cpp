// SPDX-License-Identifier: MIT
//
// The command "setoption" and what the clock becomes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "book/settings.h"
#include "eval/parameters.h"
#include "protocol/go_command.h"
#include "protocol/options.h"
#include "protocol/set_option.h"
#include "protocol/time_allotment.h"
#include "protocol/uci.h"
#include "search/limits.h"
#include "search/rebuild.h"
#include "search/reductions.h"
#include "search/settings.h"
#include "search/transposition_table.h"

namespace helvan::testing {

namespace {

constexpr int smallestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();

std::string answerTo(const std::string& line) {
    ::testing::internal::CaptureStdout();
    handleLine(line.c_str());
    return ::testing::internal::GetCapturedStdout();
}

OptionRequest requestOf(const std::string& line) { return readOptionRequest(Words(line.c_str())); }

// Every setting gets its value back after each test, and whatever was built from it.
class Options : public ::testing::Test {
protected:
    Options() { std::strcpy(bookFile, bookFileName); }
    ~Options() override {
        ownBook = savedOwnBook;
        std::strcpy(bookFileName, bookFile);
        hashMegabytes = savedHash;
        multiPv = savedMultiPv;
        ponderAllowed = savedPonder;
        hardLimitPercent = savedPercent;
        kingSafetyAggressiveness = savedAggressiveness;
        moveOverheadMilliseconds = savedOverhead;
        drawScore = savedDrawScore;
        bestLineOnly = savedBestLine;
        useLmr = savedUseLmr;
        transpositionTable.release();
        rebuildTables();
        buildReductions();
    }

private:
    char bookFile[bookFileCapacity];
    int savedOwnBook = ownBook, savedHash = hashMegabytes, savedMultiPv = multiPv, savedPonder = ponderAllowed;
    int savedPercent = hardLimitPercent, savedAggressiveness = kingSafetyAggressiveness;
    int savedOverhead = moveOverheadMilliseconds, savedDrawScore = drawScore, savedBestLine = bestLineOnly;
    int savedUseLmr = useLmr;
};

using Clocks = Options; // the commands with clocks change settings, too

} // namespace

TEST_F(Options, NamesAndValuesAreReadAsWords) {
    const OptionRequest request = requestOf("setoption junk NAME  name King   Safety name value Some Thing");
    EXPECT_EQ(request.name, "king safety");
    EXPECT_EQ(request.value, "some thing");
    EXPECT_EQ(requestOf("setoption value 7 8 name hash").name, "hash");
    EXPECT_EQ(requestOf("setoption").name, "");
}

TEST_F(Options, TheSecondWordOfAValuePairKeepsEightCharacters) {
    const std::string start = "setoption name book file value ";
    EXPECT_EQ(requestOf(start + "averylongname.bin").value, "averylongname.bin");
    EXPECT_EQ(requestOf(start + "averylongname averylongname").value, "averylongname averylon");
    EXPECT_EQ(requestOf(start + "123456789 12345678 123456789 123456789").value,
              "123456789 12345678 123456789 12345678");
    // Second words are not looked at, first ones are.
    EXPECT_EQ(requestOf(start + "a value b name").value, "a value b name");
    EXPECT_EQ(requestOf(start + "a b value c name d").value, "a b c name d");
    EXPECT_EQ(requestOf(start + "a b name d").name, "book file d");
}

TEST_F(Options, NamesIgnoreCaseAndNumbersAreTakenAsGiven) {
    EXPECT_EQ(answerTo("setoption name kInG SAFETY aggressiveness value 3"), "");
    EXPECT_EQ(kingSafetyAggressiveness, 3);
    EXPECT_EQ(answerTo("setoption name Drawscore value -400"), "");
    EXPECT_EQ(drawScore, -400);
    EXPECT_EQ(answerTo("setoption name MultiPV value 500"), "");
    EXPECT_EQ(multiPv, 500);
    answerTo("setoption name move overhead milliseconds value 99999999999999999999");
    EXPECT_EQ(moveOverheadMilliseconds, largestInt);
    answerTo("setoption name move overhead milliseconds value -4294967297");
    EXPECT_EQ(moveOverheadMilliseconds, smallestInt);
    answerTo("setoption name Drawscore value many");
    EXPECT_EQ(drawScore, 0);
    answerTo("setoption name MultiPV");
    EXPECT_EQ(multiPv, 0);
    EXPECT_NE(answerTo("uci").find("option name Drawscore type spin default 0 min -50 max 50\n"), std::string::npos);
}

TEST_F(Options, ChecksKnowTrueAndFalse) {
    EXPECT_EQ(answerTo("setoption name Best Line value FALSE"), "");
    EXPECT_EQ(bestLineOnly, 0);
    EXPECT_EQ(answerTo("setoption name Use LMR value yes Please"),
              "info string yes please not recognized as checkbox argument\n");
    EXPECT_EQ(answerTo("setoption name use lmr"), "info string  not recognized as checkbox argument\n");
    EXPECT_EQ(useLmr, 1);
    answerTo("setoption name OwnBook value off");
    EXPECT_EQ(ownBook, 0);
    answerTo("setoption name OwnBook value TRUE");
    EXPECT_EQ(ownBook, 1);
    answerTo("setoption name Ponder value 1");
    EXPECT_EQ(ponderAllowed, 0);
}

TEST_F(Options, UnknownNamesAreAnswered) {
    EXPECT_EQ(answerTo("setoption name No Such Thing value 3"), "info string no such thing not recognized\n");
    EXPECT_EQ(answerTo("setoption name Hash 5"), "info string hash 5 not recognized\n");
    EXPECT_EQ(answerTo("setoption"), "info string  not recognized\n");
}

TEST_F(Options, HashIsFreedAndAllocated) {
    EXPECT_EQ(answerTo("setoption name Hash value 2"), "info string Hash table size is now 2 meg\n");
    EXPECT_EQ(transpositionTable.bucketCount, bucketCountFor(2));
    EXPECT_EQ(answerTo("setoption name Hash value 0"), "info string Hash tables turned OFF\n");
    EXPECT_EQ(transpositionTable.bucketCount, 0u);
    EXPECT_EQ(answerTo("setoption name hash value -5"), "info string Hash tables turned OFF\n");
    EXPECT_EQ(hashMegabytes, -5);
    EXPECT_EQ(answerTo("setoption name hash value 4"), "info string Hash table size is now 4 meg\n");
    EXPECT_EQ(transpositionTable.bucketCount, bucketCountFor(4));
}

TEST_F(Options, ChangesForgetTheScoresOfTheOldSettings) {
    constexpr Key key = 5;
    for (const char* change : {"King Safety Aggressiveness value 9", "use lmr value junk"}) {
        answerTo("setoption name Hash value 1");
        transpositionTable.store(key, 4, 10, exactBound, nullMove, 0);
        ASSERT_NE(transpositionTable.probe(key), nullptr);
        answerTo(std::string("setoption name ") + change);
        EXPECT_EQ(transpositionTable.probe(key), nullptr) << change;
    }
}

TEST_F(Options, BookFileNamesAreCutToTheirRoom) {
    EXPECT_EQ(answerTo("setoption name Book File value /My/Book.bin"), "info string book file is /my/book.bin\n");
    EXPECT_STREQ(bookFileName, "/my/book.bin");
    const std::string kept(bookFileCapacity - 1, 'x');
    EXPECT_EQ(answerTo("setoption name Book File value " + kept + "yyy"), "info string book file is " + kept + "\n");
    EXPECT_EQ(bookFileName, kept);
}

TEST(TimeAllotment, SharesTheClockAmongTheMovesToGo) {
    const TimeAllotment allotment = allotForMovesToGo({60.0, 0.0, 40, 20});
    EXPECT_NEAR(allotment.plannedSeconds, 1.5714, 0.0001);
    EXPECT_NEAR(allotment.goalSeconds, 1.5514, 0.0001);
    EXPECT_EQ(allotment.maxGoalPercent, 550);
    const TimeAllotment last = allotForMovesToGo({60.0, 0.0, 1, 20});
    EXPECT_NEAR(last.plannedSeconds, 22.0, 0.0001);
    EXPECT_EQ(last.maxGoalPercent, 270);
}

TEST(TimeAllotment, SharesTheClockAmongTheMovesOfAGame) {
    const TimeAllotment increment = allotForGame({60.0, 1.0, 0, 20});
    EXPECT_NEAR(increment.goalSeconds, 2.8966, 0.0001);
    EXPECT_EQ(increment.maxGoalPercent, 500);
    EXPECT_EQ(allotForGame({1.0, 1.0, 0, 20}).maxGoalPercent, 300);
    const TimeAllotment plain = allotForGame({60.0, 0.0, 0, 20});
    EXPECT_NEAR(plain.goalSeconds, 1.18, 0.0001);
    EXPECT_FALSE(plain.maxGoalPercent.has_value());
}

TEST(TimeAllotment, NeverPlansForMoreThanTheClock) {
    EXPECT_NEAR(allotForGame({1.0, 100.0, 0, 20}).goalSeconds, 1.0 / (2.01 * 1.1) - 0.02, 0.0001);
    EXPECT_NEAR(allotForGame({0.3, 10.0, 0, 0}).goalSeconds, 0.3 / (2.03 * 1.1), 0.0001);
}

// Only a nearly empty clock is cut short by what is safe: elsewhere the rules stay below it by themselves.
TEST(TimeAllotment, NearlyEmptyClocksAreNotOverrun) {
    EXPECT_DOUBLE_EQ(longestSafeSeconds({.secondsLeft = 0.05, .overheadMilliseconds = 20}), 0.01);
    EXPECT_EQ(longestSafeSeconds({.secondsLeft = 0.03, .overheadMilliseconds = 20}), 0.0);
    for (double left = 0.06; left < 5000; left *= 1.3) {
        for (double increment = 0.0; increment < 100; increment = increment * 3 + 0.001) {
            const MoverClock clock = {.secondsLeft = left, .incrementSeconds = increment, .overheadMilliseconds = 20};
            const TimeAllotment allotment = allotForGame(clock);
            const double longest = allotment.goalSeconds * allotment.maxGoalPercent.value_or(500) / 100.0;
            EXPECT_LE(longest, longestSafeSeconds(clock)) << left << " + " << increment;
        }
    }
}

TEST(TimeAllotment, WithoutTimeIsTheLeastGoal) {
    EXPECT_EQ(allotForGame({0.0, 0.0, 0, 20}).goalSeconds, 0.002);
    EXPECT_EQ(allotForGame({-3.0, 1.0, 0, 20}).goalSeconds, 0.002);
    EXPECT_EQ(allotForGame({-3.0, 1.0, 0, 20}).maxGoalPercent, 100);
    EXPECT_EQ(allotForMovesToGo({-3.0, 0.0, 40, 20}).goalSeconds, 0.005);
    EXPECT_EQ(allotForMovesToGo({60.0, 0.0, -2, 20}).goalSeconds, 0.005);
    EXPECT_EQ(allotForMovesToGo({60.0, 0.0, -2, 20}).maxGoalPercent, 0);
    EXPECT_EQ(allotForMovesToGo({0.0, 0.0, 40, 20}).goalSeconds, 0.005);
    EXPECT_EQ(allotForMovesToGo({0.0, 0.0, 40, 20}).maxGoalPercent, 550);
    EXPECT_NEAR(*allotForMovesToGo({0.0, 0.0, 1, 20}).maxGoalPercent, 270, 1);
    EXPECT_NEAR(*allotForMovesToGo({0.0, 0.0, 0, 20}).maxGoalPercent, 100, 1);
}

TEST(TimeAllotment, StaysWithinTheClockForNumbersOfEverySize) {
    constexpr double least = 0.005;
    const double times[] = {-9.3e15, -60.0, 0.0, 0.001, 0.02, 1.0, 60.0, 1e6, 9.3e15};
    const int moves[] = {smallestInt, -3, -2, -1, 0, 1, 2, 40, largestInt};
    const auto check = [&](const TimeAllotment& allotment, const MoverClock& clock) {
        EXPECT_TRUE(std::isfinite(allotment.plannedSeconds));
        EXPECT_GE(allotment.goalSeconds, 0.002);
        EXPECT_LE(allotment.goalSeconds, std::max(1.1 * clock.secondsLeft, least));
        const double longest = allotment.maxGoalPercent.value_or(500) / 100.0 * allotment.goalSeconds;
        EXPECT_LE(longest, std::max(clock.secondsLeft, 6 * least)) << clock.secondsLeft << " " << clock.movesToGo;
    };
    for (const double left : times) {
        for (const double increment : times) {
            for (const int overhead : {0, 20, largestInt}) {
                check(allotForGame({left, increment, 0, overhead}), {left, increment, 0, overhead});
                for (const int movesToGo : moves) {
                    const MoverClock clock = {left, increment, movesToGo, overhead};
                    check(allotForMovesToGo(clock), clock);
                }
            }
        }
    }
}

// The mover is stalemated, so that the answers come at once.
TEST_F(Clocks, AreTheMoversAndSetHowFarTheSearchMayRun) {
    const auto goalLine = [](const std::string& answer) { return answer.substr(0, answer.find('\n') + 1); };
    answerTo("position fen 7k/5Q2/6K1/8/8/8/8/8 b - -");
    hardLimitPercent = 123;
    EXPECT_EQ(answerTo("go wtime 60000 btime 60000").find("goal:"), std::string::npos);
    EXPECT_EQ(hardLimitPercent, 123); // kept
    EXPECT_EQ(goalLine(answerTo("go wtime 1000 btime 60000 movestogo 40")),
              "goal:    1.551   max_goal_perc:      550 \n");
    EXPECT_EQ(hardLimitPercent, 550);
    EXPECT_EQ(goalLine(answerTo("go wtime 60000 movestogo 40")), "goal:    0.005   max_goal_perc:      550 \n");
    answerTo("go btime 1000 binc 1000 winc 10");
    EXPECT_EQ(hardLimitPercent, 300);
    EXPECT_EQ(answerTo("go depth -1 btime 60000").substr(0, 5), "goal:"); // a negative depth is no limit
    hardLimitPercent = 123;
    for (const char* other : {"go depth 2 btime 60000 movestogo 40", "go nodes 5 btime 60000 movestogo 40",
                              "go movetime 20 btime 60000 movestogo 40"}) {
        EXPECT_EQ(answerTo(other).find("goal:"), std::string::npos) << other;
        EXPECT_EQ(hardLimitPercent, 123) << other;
    }
}

} // namespace helvan::testing
