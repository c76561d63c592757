// SPDX-License-Identifier: MIT
//
// Single nodes of the main search, told apart by what they leave in the table and by the nodes they take.
#include <gtest/gtest.h>

#include <cstdlib>

#include "search/pv.h"
#include "search/scout.h"
#include "support/searching.h"

namespace helvan::testing {

namespace {

class Nodes : public Searching {
protected:
    // The nodes that the search takes, which begins with nothing known but a lower bound of the position with this move
    // and score.
    template <typename Run> std::uint64_t nodesOf(const Position& position, Move move, int score, int depth, Run run) {
        forget();
        tables->transpositionTable.store(position.key, depth, score, lowerBound, move, 0);
        Search search(*tables);
        Position copy = position;
        run(search, copy);
        EXPECT_FALSE(search.stopSearch);
        return search.nodes;
    }

    Move line[pvCapacity] = {};
};

} // namespace

TEST_F(Nodes, PvNodesNameTheirBestMoveAlsoWhenTheyFailLow) {
    Search search(*tables);
    Position position = positionOf(startFen);
    constexpr int farAbove = 900;
    EXPECT_LE(searchPv(search, position, farAbove, farAbove + 50, 6, 1, line), farAbove);
    EXPECT_TRUE(isLegal(position, line[0]) && line[0] != nullMove) << moveText(line[0]);
}

TEST_F(Nodes, PvNodesStoreADrawThatTheirBestMoveReaches) {
    Search search(*tables);
    Position position = positionOf("4k3/8/8/8/8/8/q7/4K3 w - -");
    position.fifty = 99; // a queen down, but every move draws
    const int score = searchPv(search, position, -infiniteScore, infiniteScore, 6, 1, line);
    EXPECT_LT(std::abs(score), 10);
    const TTEntry* entry = stored(position);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->score, score);
    EXPECT_EQ(entry->bound(), exactBound);
}

// The singular test looks for a score this side of the stored one: where it is made, another stored score takes other
// nodes.
TEST_F(Nodes, CapturesIntoAPawnEndingAreTestedForBeingSingular) {
    const Position position = positionOf("8/2p2kp1/1p6/p3n3/P2K4/1P2PP2/6PP/8 w - -");
    const Move capture = encodeMove(d4, e5);
    constexpr int bounds[] = {-700, -70}; // both below the evaluation, which they therefore leave alone
    const auto scout = [&](Search& search, Position& at) { searchScout(search, at, 300, 15, 1, line, nullMove, true); };
    EXPECT_NE(nodesOf(position, capture, bounds[0], 15, scout), nodesOf(position, capture, bounds[1], 15, scout));
    const auto pv = [&](Search& search, Position& at) { searchPv(search, at, -100, 300, 16, 1, line); };
    EXPECT_NE(nodesOf(position, capture, bounds[0], 15, pv), nodesOf(position, capture, bounds[1], 15, pv));
}

} // namespace helvan::testing
