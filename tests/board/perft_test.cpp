// SPDX-License-Identifier: MIT
#include "board/perft.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "support/boards.h"
#include "support/output.h"

namespace helvan::testing {

namespace {

#ifdef NDEBUG
constexpr std::uint64_t mostLeaves = 5'000'000;
#else
constexpr std::uint64_t mostLeaves = 50'000; // assertions and sanitizers make each leaf dear
#endif

} // namespace

TEST(Perft, AgreesWithThePublishedCounts) {
    std::ifstream file(HELVAN_TEST_DATA "/perft.epd");
    int lines = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream fields(line);
        std::string fen;
        std::getline(fields, fen, ';');
        const Position position = positionOf(fen);
        PerftCounters counters;
        for (std::string field; std::getline(fields, field, ';');) {
            int depth = 0;
            unsigned long long leaves = 0;
            ASSERT_EQ(std::sscanf(field.c_str(), "D%d %llu", &depth, &leaves), 2) << field;
            if (leaves > mostLeaves) continue;
            EXPECT_EQ(perft(position, depth, counters), leaves) << fen << " depth " << depth;
        }
        ++lines;
    }
    EXPECT_EQ(lines, 65);
}

TEST(Perft, CountersAndDots) {
    const Position position = positionOf("4k3/8/8/8/8/8/8/4K2R w K -");
    PerftCounters counters;
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(perftRoot(position, 2, 0, counters), 66U); }), std::string(15, '.'));
    EXPECT_EQ(counters.moves, 15U + 66U);
    EXPECT_EQ(counters.castlings, 0U); // castling is a move of the root here, not one into a leaf
    perftRoot(position, 1, 1, counters);
    EXPECT_EQ(counters.castlings, 1U);
}

// The published entries have no en-passant field; a FEN that has one offers no capture at its first ply.
TEST(Perft, EnPassantFieldOffersNoCapture) {
    PerftCounters counters;
    EXPECT_EQ(perft(positionOf("4k3/8/8/3pP3/8/8/8/4K3 w - d6"), 1, counters), 6U);
}

} // namespace helvan::testing
