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
