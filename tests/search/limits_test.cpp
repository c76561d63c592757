// SPDX-License-Identifier: MIT
#include "search/limits.h"

#include <gtest/gtest.h>

#include <cmath>

namespace helvan::testing {

namespace {

int polls = 0;

class Limits : public ::testing::Test {
protected:
    Limits() {
        searchState = SearchState{};
        searchState.hardDeadline = now() + 1000;
        nodeCounter = NodeCounter{};
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
    EXPECT_GE(polls, 3);
    EXPECT_LE(polls, 4);
}

TEST_F(Limits, NodeLimitStopsWithin256Calls) {
    nodeCounter.limit = 50;
    nodeCounter.count = 50;
    const int calls = callsUntilStopped();
    EXPECT_GT(calls, 0);
    EXPECT_LE(calls, 256);
    EXPECT_EQ(nodeCounter.stopSearch, 1);
    EXPECT_EQ(callsUntilStopped(), 1); // and from then on every call
}

TEST_F(Limits, NothingStopsPonderingUntilPonderhit) {
    nodeCounter.limit = 0;
    searchState.hardDeadline = now() - 1;
    searchState.pondering = 1;
    EXPECT_EQ(callsUntilStopped(), 0);
    EXPECT_EQ(nodeCounter.overrideLimit, 1);
    pollInput = [] { searchState.pondering = 0; };
    EXPECT_GT(callsUntilStopped(), 0);
    EXPECT_EQ(nodeCounter.overrideLimit, 0);
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
    setDeadlines(2);
    EXPECT_DOUBLE_EQ(searchState.hardDeadline, 110); // 500 per cent
    EXPECT_DOUBLE_EQ(searchState.softDeadline, 101.5);
    searchState.fixedMoveTime = 2;
    setDeadlines(2);
    EXPECT_DOUBLE_EQ(searchState.hardDeadline, 102);
    EXPECT_DOUBLE_EQ(searchState.softDeadline, 102);
    searchState.fixedMoveTime = 0;
    searchState.longestSafe = 0.5; // a nearly empty clock
    setDeadlines(2);
    EXPECT_DOUBLE_EQ(searchState.hardDeadline, searchState.searchStartTime + 0.5);
    EXPECT_DOUBLE_EQ(searchState.softDeadline, searchState.searchStartTime + 0.5);
    searchState.longestSafe = unlimitedSeconds;
    hardLimitPercent = 1;
    setDeadlines(noTimeGoalSeconds);
    EXPECT_TRUE(std::isinf(searchState.hardDeadline));
    EXPECT_TRUE(std::isinf(searchState.softDeadline));
    hardLimitPercent = 500;
}

TEST_F(Limits, AnInnerSearchLeavesTheOuterOneAsItWas) {
    const SearchScope outer;
    nodeCounter.count = 7;
    nodeCounter.limit = 70;
    searchState.fixedMoveTime = 3;
    {
        const SearchScope inner;
        ASSERT_TRUE(SearchScope::mayBegin());
        const SearchScope innermost;
        EXPECT_FALSE(SearchScope::mayBegin());
        EXPECT_EQ(nodeCounter.limit, NodeCounter::unlimited);
        searchState.fixedMoveTime = 0;
        nodeCounter.stopSearch = 1; // by its own limit
    }
    EXPECT_EQ(nodeCounter.count, 7u);
    EXPECT_EQ(nodeCounter.limit, 70u);
    EXPECT_EQ(searchState.fixedMoveTime, 3);
    EXPECT_EQ(nodeCounter.stopSearch, 0);
    {
        const SearchScope inner;
        stopAllSearches();
    }
    EXPECT_EQ(nodeCounter.stopSearch, 1);
}

TEST_F(Limits, AStopOfAnEarlierSearchIsForgotten) {
    {
        const SearchScope first;
        stopAllSearches();
    }
    const SearchScope outer;
    EXPECT_EQ(nodeCounter.stopSearch, 0);
    { const SearchScope inner; }
    EXPECT_EQ(nodeCounter.stopSearch, 0);
}

} // namespace helvan::testing
