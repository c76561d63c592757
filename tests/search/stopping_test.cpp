// SPDX-License-Identifier: MIT
#include "search/stopping.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/boards.h"

namespace helvan::testing {

namespace {

class Stopping : public ::testing::Test {
protected:
    // With a clock that has long to run.
    std::unique_ptr<Search> searchWith(const SearchLimits& limits) {
        auto search = std::make_unique<Search>(*tables, limits);
        search->hardDeadline = now() + 1000;
        search->poll = [this] { ++polls; };
        updateNodeOverride(*search);
        return search;
    }

    // Calls until the check stops the search, at most 1000.
    static int callsUntilStopped(Search& search) {
        for (int call = 1; call <= 1000; ++call) {
            if (searchMustStop(search)) return call;
        }
        return 0;
    }

    std::unique_ptr<SearchTables> tables = std::make_unique<SearchTables>();
    int polls = 0;
};

} // namespace

TEST_F(Stopping, LooksAroundEvery256thCall) {
    const auto search = searchWith({.nodes = 50});
    EXPECT_EQ(callsUntilStopped(*search), 0);
    EXPECT_EQ(polls, 3);
    search->nodes = 50;
    EXPECT_LE(callsUntilStopped(*search), 256);
    EXPECT_TRUE(search->stopSearch);
    EXPECT_EQ(callsUntilStopped(*search), 1); // and from then on every call
}

TEST_F(Stopping, DepthOneIsNotInterruptedWhileItIsShort) {
    const auto search = searchWith({});
    search->firstIteration = true;
    search->hardDeadline = now() - 1;
    EXPECT_EQ(callsUntilStopped(*search), 0);
    EXPECT_EQ(polls, 0);
    search->nodes = 5'000'000;
    EXPECT_GT(callsUntilStopped(*search), 0);
}

TEST_F(Stopping, WhilePonderingNothingButStopDoes) {
    const auto search = searchWith({.nodes = 50, .ponder = true});
    search->nodes = 50;
    search->hardDeadline = now() - 1;
    EXPECT_EQ(callsUntilStopped(*search), 0);
    search->poll = [&] { search->pondering = false; };
    EXPECT_LE(callsUntilStopped(*search), 256) << "the deadline that has passed ends it at once";
}

TEST_F(Stopping, NodesEndAtTheLimitUnlessItIsIgnored) {
    const Position position = positionOf(startFen);
    Position child;
    const auto search = searchWith({.nodes = 10});
    search->nodes = 9;
    for (const bool ignored : {false, true, false, false}) {
        search->ignoresNodeLimit = ignored;
        makeMove(*search, position, child, nullMove);
    }
    EXPECT_EQ(search->nodes, 11U);
    EXPECT_TRUE(search->stopSearch);
}

} // namespace helvan::testing
