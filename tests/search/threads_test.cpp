// SPDX-License-Identifier: MIT
//
// Searches in several threads know nothing of one another.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "support/searching.h"

namespace helvan::testing {

namespace {

struct Found {
    std::vector<IterationRecord> iterations;
    std::uint64_t nodes = 0;
    std::vector<Move> line;
};

const char* const positions[] = {startFen, "2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - -",
                                 "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - -"};

// All positions one after the other, what is learnt from one being there for the next.
std::vector<Found> searchAll(const SearchLimits& limits) {
    const auto tables = std::make_unique<SearchTables>();
    tables->transpositionTable.allocate(1);
    std::vector<Found> all;
    for (const char* fen : positions) {
        Found& found = all.emplace_back();
        Search search(*tables, limits, recordingReporter(found.iterations));
        const PvLine best = think(search, positionOf(fen));
        found.nodes = search.nodes;
        for (const Move* move = best.pv; *move != nullMove; ++move) found.line.push_back(*move);
    }
    return all;
}

void expectSame(const std::vector<Found>& one, const std::vector<Found>& other) {
    ASSERT_EQ(one.size(), other.size());
    for (std::size_t i = 0; i < one.size(); ++i) {
        EXPECT_EQ(one[i].nodes, other[i].nodes);
        EXPECT_EQ(one[i].line, other[i].line);
        ASSERT_EQ(one[i].iterations.size(), other[i].iterations.size());
        for (std::size_t k = 0; k < one[i].iterations.size(); ++k) {
            EXPECT_EQ(one[i].iterations[k].nodes, other[i].iterations[k].nodes);
            EXPECT_EQ(one[i].iterations[k].score, other[i].iterations[k].score);
            EXPECT_EQ(one[i].iterations[k].bestMove, other[i].iterations[k].bestMove);
        }
    }
}

} // namespace

TEST(Threads, TwoSearchesGiveWhatTheyGiveOneAfterTheOther) {
    const SearchLimits byDepth = {.depth = 7}, byNodes = {.nodes = 30'000, .ranks = 2};
    const std::vector<Found> depthAlone = searchAll(byDepth), nodesAlone = searchAll(byNodes);
    EXPECT_GT(depthAlone[0].nodes, 1000U);
    std::vector<Found> depthBeside, nodesBeside;
    {
        const std::jthread one([&] { depthBeside = searchAll(byDepth); });
        const std::jthread other([&] { nodesBeside = searchAll(byNodes); });
    }
    expectSame(depthBeside, depthAlone);
    expectSame(nodesBeside, nodesAlone);
}

} // namespace helvan::testing
