// SPDX-License-Identifier: MIT
#include "search/limits.h"

#include <gtest/gtest.h>

namespace helvan::testing {

namespace {

int polls = 0;

class Limits : public ::testing::Test {
protected:
    Limits() {
        searchState = SearchState{};
        searchState.hardDeadline = now() + 1000;
        nodeCounter = NodeCounter{};
        resetCheckCounter();
        polls = 0;
        pollInput = [] { ++polls; };
    }
    ~Limits() override {
        pollInput = nullptr;
        nodeCounter = NodeCounter{};
    }

    // Calls until the check stops the search, at most 1000.
    static int callsUntilStopped() {
        for (int call = 1; call <= 1000; ++call) {
            if (searchMustStop()) return call;
        }
        return 0;
    }
};

} // namespace

TEST_F(Limits, LooksAroundEvery256thCall) {
    EXPECT_EQ(callsUntilStopped(), 0);
    EXPECT_EQ(polls, 3);
    nodeCounter.limit = nodeCounter.count = 50;
    EXPECT_LE(callsUntilStopped(), 256);
    EXPECT_EQ(nodeCounter.stopSearch, 1);
    EXPECT_EQ(callsUntilStopped(), 1); // and from then on every call
}

TEST_F(Limits, DepthOneIsNotInterruptedWhileItIsShort) {
    searchState.firstIteration = 1;
    searchState.hardDeadline = now() - 1;
    EXPECT_EQ(callsUntilStopped(), 0);
    EXPECT_EQ(polls, 0);
    nodeCounter.count = 5'000'000;
    EXPECT_GT(callsUntilStopped(), 0);
}

TEST_F(Limits, DeadlinesFollowTheAllotment) {
    searchState.searchStartTime = 100;
    hardLimitPercent = 500;
    const double rows[][5] = {// fixed time, longest safe, allotted; soft and hard deadline
                              {0, unlimitedSeconds, 2, 101.5, 110},
                              {0, 0.5, 2, 100.5, 100.5}, // a nearly empty clock
                              {2, unlimitedSeconds, 2, 102, 102},
                              {0, unlimitedSeconds, noTimeGoalSeconds, unlimitedSeconds, unlimitedSeconds}};
    for (const auto& [fixed, safe, allotted, soft, hard] : rows) {
        searchState.fixedMoveTime = fixed;
        searchState.longestSafe = safe;
        setDeadlines(allotted);
        EXPECT_DOUBLE_EQ(searchState.softDeadline, soft);
        EXPECT_DOUBLE_EQ(searchState.hardDeadline, hard);
    }
}

TEST_F(Limits, AnInnerSearchLeavesTheOuterOneAsItWas) {
    const SearchScope outer;
    nodeCounter.count = 7;
    nodeCounter.limit = 70;
    searchState.fixedMoveTime = 3;
    {
        const SearchScope inner;
        EXPECT_EQ(nodeCounter.limit, NodeCounter::unlimited);
        searchState.fixedMoveTime = 0;
        nodeCounter.stopSearch = 1; // by its own limit
    }
    EXPECT_EQ(nodeCounter.count, 7U);
    EXPECT_EQ(nodeCounter.limit, 70U);
    EXPECT_EQ(searchState.fixedMoveTime, 3);
    EXPECT_EQ(nodeCounter.stopSearch, 0);
}

} // namespace helvan::testing
