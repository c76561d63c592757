// SPDX-License-Identifier: MIT
//
// What becomes of the clock: from the words of "go" to the deadlines that the search runs by.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "protocol/go_command.h"
#include "search/stopping.h"
#include "support/boards.h"
#include "support/session.h"

namespace helvan::testing {

namespace {

constexpr int smallestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();

// Seconds from the start of a search.
struct Deadlines {
    double soft;
    double hard;
};

Deadlines deadlinesOf(const Search& search) {
    return {search.softDeadline - search.searchStartTime, search.hardDeadline - search.searchStartTime};
}

struct ClockSettings {
    int overheadMilliseconds = 20;
    int hardLimitPercent = 500;
};

GoPlan planOf(const std::string& go, const Position& position, ClockSettings settings = {}) {
    return planGo(readGoParameters(Words(go)), {.position = position,
                                                .overheadMilliseconds = settings.overheadMilliseconds,
                                                .multiPv = 1,
                                                .deterministic = false,
                                                .hashMegabytes = 1,
                                                .hardLimitPercent = settings.hardLimitPercent});
}

// Those that a search of this line at the start position begins with.
Deadlines deadlinesOf(const std::string& go, ClockSettings settings = {}) {
    static const Position start = positionOf(startFen);
    Search search(tables(), planOf(go, start, settings).limits);
    setDeadlines(search);
    return deadlinesOf(search);
}

// The search of this line is stopped after so many nodes.
template <typename Look> std::string watched(const std::string& go, std::uint64_t nodes, Look look) {
    session().poll = [&] {
        Search& search = *session().running.back();
        look(search);
        if (search.nodes > nodes) search.stopSearch = true;
    };
    std::string answer = answerTo(go);
    session().poll = {};
    return answer;
}

// The deadlines that the search of this line has one after the other, until it has so many or is stopped.
std::vector<Deadlines> allDeadlinesOf(const std::string& go, std::size_t count, std::uint64_t nodes = 1'000'000) {
    std::vector<Deadlines> seen;
    watched(go, nodes, [&](Search& search) {
        const Deadlines now = deadlinesOf(search);
        if (seen.empty() || seen.back().soft != now.soft || seen.back().hard != now.hard) seen.push_back(now);
        if (seen.size() >= count) search.stopSearch = true;
    });
    return seen;
}

// A clock of a hundred hours, of which no search takes much.
const std::string longGo = "go wtime 360000000";
constexpr double longGoal = 360000.0 / 50 - 0.02;

std::string words(const char* name, double milliseconds) {
    return ' ' + std::string(name) + ' ' + std::to_string(static_cast<long long>(milliseconds));
}

} // namespace

TEST(Clocks, AreSharedOut) {
    constexpr int asBefore = -1;
    struct {
        MoverClock clock;
        double goal;
        int percent;
    } const rows[] = {{{60.0, 0.0, 40, 20}, 1.5514, 550},
                      {{60.0, 0.0, 1, 20}, 21.98, 270},
                      {{60.0, 0.0, -2, 20}, 0.005, 0},
                      {{0.0, 0.0, 40, 20}, 0.005, 550},
                      {{0.0, 0.0, 1, 20}, 0.005, 270},
                      {{-60.0, 0.0, 40, 20}, 0.005, 2100},
                      {{-3.0, 0.0, 1, 20}, 0.005, 270},
                      // With 0 moves to go: for the whole game.
                      {{60.0, 1.0, 0, 20}, 2.8966, 500},
                      {{60.0, 0.0, 0, 20}, 1.18, asBefore},
                      {{1.0, 1.0, 0, 20}, 0.2830, 300},
                      {{1.0, 100.0, 0, 20}, 1.0 / (2.01 * 1.1) - 0.02, 200}, // never more than there is
                      {{0.3, 10.0, 0, 0}, 0.3 / (2.03 * 1.1), 202},
                      {{0.0, 0.0, 0, 20}, 0.002, asBefore},
                      {{std::nullopt, 0.0, 0, 20}, 0.002, asBefore},
                      {{-3.0, 1.0, 0, 20}, 0.002, 100},
                      // An overhead below 0 is added, to nothing too.
                      {{60.0, 0.0, 0, -1000}, 2.2, asBefore},
                      {{0.0, 0.0, 0, -1000}, 1.0, asBefore},
                      {{0.0, 0.0, 40, -1000}, 1.0, 550}};
    for (const auto& [clock, goal, percent] : rows) {
        const TimeAllotment allotment = clock.movesToGo != 0 ? allotForMovesToGo(clock) : allotForGame(clock);
        const double left = clock.secondsLeft.value_or(0.0);
        EXPECT_NEAR(allotment.goalSeconds, goal, 0.0001) << left << ' ' << clock.movesToGo;
        EXPECT_NEAR(allotment.maxGoalPercent.value_or(asBefore), percent, 1) << left;
    }
}

TEST(Clocks, SetTheDeadlines) {
    struct {
        int overhead;
        const char* go;
        Deadlines deadlines;
    } const rows[] = {
        {20, "go wtime 60000", {0.885, 5.9}},
        {20, "go wtime 60000 movestogo 40", {1.1636, 8.5329}},
        {0, "go wtime 1000 movestogo 1", {0.275, 0.99}},
        // An overhead beyond the goal leaves the least goal and its stretch.
        {5000, "go wtime 9900", {0.0015, 0.010}},
        {1000, "go wtime 1900", {0.0015, 0.010}},
        {100, "go wtime 200 winc 100", {0.0015, 0.008}},
        // Without the mover's clock there is nothing to overrun.
        {20, "go", {0.0015, 0.010}},
        {5000, "go btime 60000", {0.0015, 0.010}},
        // Nearly empty: down to the least goal and its stretch, then one iteration.
        {0, "go wtime 100 winc 1000", {0.0325, 0.091}},
        {20, "go wtime 10", {0.0015, 0.010}},
        {20, "go wtime 9", {0, 0}},
        {20, "go wtime -10", {0, 0}},
        {20, "go wtime 30 movestogo 40", {0.00375, 0.0275}},
        {20, "go wtime 27 movestogo 40", {0, 0}},
        {20, "go wtime -60000 movestogo 40", {0, 0}},
        // A share below the whole goal counts as the whole.
        {20, "go wtime 1000 movestogo -1", {0.81, 0.98}},
        // An overhead below 0 is time won.
        {-1000, "go wtime 0", {0.75, 1.0}},
        // Without a clock to keep there are no deadlines.
        {20, "go infinite wtime 1000", {unlimitedSeconds, unlimitedSeconds}},
        {20, "go depth 5 wtime 1000", {unlimitedSeconds, unlimitedSeconds}},
        {20, "go nodes 5 movestogo 3 wtime 1000", {unlimitedSeconds, unlimitedSeconds}},
        // A fixed time is what it is.
        {5000, "go movetime 300", {0.3, 0.3}},
    };
    for (const auto& [overhead, go, expected] : rows) {
        const Deadlines deadlines = deadlinesOf(go, {.overheadMilliseconds = overhead});
        EXPECT_TRUE(deadlines.soft == expected.soft || std::abs(deadlines.soft - expected.soft) < 0.0002)
            << overhead << ": " << go;
        EXPECT_TRUE(deadlines.hard == expected.hard || std::abs(deadlines.hard - expected.hard) < 0.0002)
            << overhead << ": " << go;
    }
}

// What is shared out stands wherever the clock holds it and the overhead; elsewhere the clock decides.
TEST(Clocks, AreNotOverrunAndNotWasted) {
    constexpr int stored = 500;
    const double times[] = {-60000, 0, 1, 9, 15, 25, 60, 100, 300, 1000, 1900, 9900, 60000, 1e6};
    for (const int overhead : {0, 20, 100, 1000, 5000}) {
        for (const double left : times) {
            for (const double increment : {0, 1, 100, 1000}) {
                for (const int movesToGo : {-1, 0, 1, 2, 40}) {
                    std::string go = "go" + words("wtime", left) + words("winc", increment);
                    if (movesToGo != 0) go += words("movestogo", movesToGo);
                    const MoverClock clock = {left / 1000, increment / 1000, movesToGo, overhead};
                    const TimeAllotment allotment = movesToGo != 0 ? allotForMovesToGo(clock) : allotForGame(clock);
                    const double stretch = std::max(allotment.maxGoalPercent.value_or(stored), 100) / 100.0;
                    const double literal = stretch * allotment.goalSeconds;
                    const double least = stretch * (movesToGo != 0 ? 0.005 : 0.002);
                    const double hard = deadlinesOf(go, {overhead, stored}).hard;
                    const double spare = (left - overhead) / 1000;
                    constexpr double rounding = 1e-6; // of the clock's own numbers
                    if (literal <= spare) {
                        EXPECT_NEAR(hard, literal, rounding) << go;
                    } else {
                        EXPECT_NEAR(hard, left / 1000 >= least ? std::max(spare, least) : 0.0, rounding) << go;
                        EXPECT_LE(hard, std::max(left / 1000, 0.0) + rounding) << go;
                    }
                }
            }
        }
    }
}

// Whatever the numbers.
TEST(Clocks, HugeNumbersStayFinite) {
    const double times[] = {-9.3e15, -60.0, 0.0, 0.001, 1.0, 3000.0, 9.3e15};
    for (const double left : times) {
        for (const double increment : times) {
            for (const int movesToGo : {smallestInt, -3, -2, -1, 0, 1, 2, 40, largestInt}) {
                for (const int overhead : {smallestInt, 0, 20, largestInt}) {
                    const MoverClock clock = {left, increment, movesToGo, overhead};
                    for (const TimeAllotment& allotment : {allotForMovesToGo(clock), allotForGame(clock)}) {
                        EXPECT_TRUE(std::isfinite(allotment.plannedSeconds));
                        EXPECT_GE(allotment.goalSeconds, 0.002);
                        for (const int stored : {smallestInt, 0, 500, largestInt}) {
                            const double hard = hardLimitSeconds(clock, allotment, stored);
                            EXPECT_TRUE(std::isfinite(hard) && hard >= 0.0) << left << ' ' << increment;
                        }
                    }
                }
            }
        }
    }
}

TEST(Clocks, AreTheMoversAndSetHowFarTheSearchMayRun) {
    answerTo("position fen 7k/5Q2/6K1/8/8/8/8/8 b - -"); // stalemate: the answers come at once
    EXPECT_TRUE(
        contains(answerTo("go wtime 1000 btime 60000 movestogo 40"), "goal:    1.551   max_goal_perc:      550 \n"));
    EXPECT_EQ(session().hardLimitPercent, 550);
    EXPECT_TRUE(contains(answerTo("go wtime 60000 movestogo 40"), "goal:    0.005 ")); // not the mover's
    EXPECT_TRUE(contains(answerTo("go btime -60000 movestogo 40"), "goal:    0.005   max_goal_perc:     2100 \n"));
    answerTo("go btime 1000 binc 1000 winc 10");
    EXPECT_EQ(session().hardLimitPercent, 300);
    EXPECT_TRUE(contains(answerTo("go depth -1 btime 60000"), "goal:")); // a negative depth is no limit
    session().hardLimitPercent = 123;
    for (const char* keeps : {"go wtime 60000 btime 60000", "go depth 2 btime 60000 movestogo 40",
                              "go nodes 5 btime 60000 movestogo 40", "go movetime 20 btime 60000 movestogo 40"}) {
        EXPECT_FALSE(contains(answerTo(keeps), "goal:")) << keeps;
        EXPECT_EQ(session().hardLimitPercent, 123) << keeps;
    }
    session().hardLimitPercent = 500;
}

// The more of the nodes go into one best move, the sooner no iteration begins any more: from the fifth on.
TEST(Clocks, ASteadyBestMoveEndsTheSearchSooner) {
    answerTo("position startpos");
    const std::vector<Deadlines> all = allDeadlinesOf(longGo + " searchmoves e2e4", 5);
    ASSERT_EQ(all.size(), 5U);
    EXPECT_NEAR(all[0].soft, 0.75 * longGoal, 1e-6);
    const auto shareOf = [&](const Deadlines& at) { return (102 - 100 * at.soft / longGoal / 2.5) / 100; };
    EXPECT_LT(all[1].soft, 0.6 * longGoal);
    for (int i = 1; i < 4; ++i) { // every node is the one move's
        EXPECT_NEAR(shareOf(all[i + 1]), 0.75 * shareOf(all[i]) + 0.25, 0.001);
        EXPECT_EQ(all[i].hard, all[0].hard);
    }
}

TEST(Clocks, ANewBestMoveGivesTheSearchMoreTime) {
    answerTo("position fen 2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - -");
    bool longer = false;
    for (const Deadlines& at : allDeadlinesOf(longGo, 6)) {
        longer = longer || std::abs(at.soft - 1.2 * longGoal) < 1e-6;
        EXPECT_TRUE(at.soft <= 0.8 * longGoal + 1e-6 || at.soft > 1.19 * longGoal) << at.soft;
    }
    EXPECT_TRUE(longer);
}

TEST(Clocks, AFixedTimeHoldsWhateverTheBestMoveDoes) {
    answerTo("position startpos");
    std::vector<Deadlines> seen;
    EXPECT_TRUE(
        contains(watched("go movetime 600000", 20000, [&](Search& search) { seen.push_back(deadlinesOf(search)); }),
                 "info depth 6 time"));
    ASSERT_FALSE(seen.empty());
    for (const Deadlines& at : seen) {
        EXPECT_NEAR(at.soft, 600, 1e-6);
        EXPECT_NEAR(at.hard, 600, 1e-6);
    }
}

TEST(Clocks, NoIterationBeginsAfterTheSoftDeadline) {
    answerTo("position startpos");
    const std::string answer = watched("go movetime 600000", 1000000, [](Search& search) {
        search.softDeadline = 0; /* long past */
    });
    EXPECT_FALSE(contains(answer, "info depth 6")) << answer;
}

} // namespace helvan::testing
