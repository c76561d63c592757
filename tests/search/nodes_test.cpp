// SPDX-License-Identifier: MIT
//
// Single nodes of the main search, told apart by what they leave in the table and by the nodes they take.
#include <gtest/gtest.h>

#include <cstdlib>

#include "board/keys.h"
#include "search/limits.h"
#include "search/ordering.h"
#include "search/pv.h"
#include "search/scout.h"
#include "search/settings.h"
#include "search/transposition_table.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

class Nodes : public ::testing::Test {
protected:
    Nodes() { transpositionTable.allocate(1); }
    ~Nodes() override {
        forget();
        transpositionTable.release();
    }

    static void forget() {
        transpositionTable.clear();
        clearKillers();
        clearCounterMoves();
        clearHistory();
    }

    // The nodes that the search takes, which begins with nothing known but a lower bound of the position with this move
    // and score.
    template <typename Search>
    static std::uint64_t nodesOf(const Position& position, Move move, int score, int depth, Search search) {
        const SearchScope scope;
        forget();
        transpositionTable.store(position.key, depth, score, lowerBound, move, 0);
        Position copy = position;
        search(copy);
        EXPECT_EQ(nodeCounter.stopSearch, 0);
        return nodeCounter.count;
    }

    Move line[pvCapacity] = {};
};

} // namespace

TEST_F(Nodes, PvNodesNameTheirBestMoveAlsoWhenTheyFailLow) {
    const SearchScope scope;
    Position position = positionOf(startFen);
    constexpr int farAbove = 900;
    EXPECT_LE(searchPv(position, farAbove, farAbove + 50, 6, 1, line), farAbove);
    EXPECT_TRUE(isLegal(position, line[0]) && line[0] != nullMove) << textOf(line[0]);
}

TEST_F(Nodes, PvNodesStoreADrawThatTheirBestMoveReaches) {
    const SearchScope scope;
    Position position = positionOf("4k3/8/8/8/8/8/q7/4K3 w - -");
    position.fifty = 99; // a queen down, but every move draws
    const int score = searchPv(position, -infiniteScore, infiniteScore, 6, 1, line);
    EXPECT_LT(std::abs(score), 10);
    const TTEntry* entry = transpositionTable.probe(position.key);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->score, score);
    EXPECT_EQ(entry->bound(), exactBound);
}

// The singular test looks for a score this side of the stored one: where it is made, another stored score takes other
// nodes.
TEST_F(Nodes, CapturesIntoAPawnEndingAreTestedForBeingSingular) {
    const Position position = positionOf("8/2p2kp1/1p6/p3n3/P2K4/1P2PP2/6PP/8 w - -");
    const Move capture = encodeMove(d4, e5);
    constexpr int bounds[] = {-260, -120}; // both below the evaluation, which they therefore leave alone
    const auto scout = [&](Position& at) { searchScout(at, 300, 15, 1, line, nullMove, true); };
    EXPECT_NE(nodesOf(position, capture, bounds[0], 15, scout), nodesOf(position, capture, bounds[1], 15, scout));
    const auto pv = [&](Position& at) { searchPv(at, -100, 300, 16, 1, line); };
    EXPECT_NE(nodesOf(position, capture, bounds[0], 15, pv), nodesOf(position, capture, bounds[1], 15, pv));
}

// In this position no side can lose a move, so that the enemy to move stands in the table only if this side has passed.
TEST_F(Nodes, TheSingularTestBehindANullMovePassesNoMove) {
    const Position position = positionOf("6k1/pp2pppp/8/8/8/2N5/4PPPP/6K1 w - -");
    const Key passed = childOf(position, nullMove).key;
    for (const bool noNull : {true, false}) {
        nodesOf(position, encodeMove(c3, d5), 0, 12, [&](Position& at) {
            EXPECT_LT(searchWithoutMove(at, -100, 30, 1, encodeMove(c3, d5), noNull), 10000);
        });
        EXPECT_EQ(transpositionTable.probe(passed) == nullptr, noNull);
        nodesOf(position, encodeMove(c3, d5), 0, 12,
                [&](Position& at) { searchScout(at, 100, 15, 1, line, nullMove, true); });
        EXPECT_EQ(transpositionTable.probe(passed), nullptr);
    }
}

} // namespace helvan::testing
