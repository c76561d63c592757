// SPDX-License-Identifier: MIT
#include "board/perft.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "support/boards.h"

namespace helvan::testing {

namespace {

#ifdef NDEBUG
constexpr std::uint64_t mostLeaves = 5'000'000;
#else
constexpr std::uint64_t mostLeaves = 50'000; // assertions and sanitizers make each leaf dear
#endif

struct PerftLine {
    std::string text;
};

void PrintTo(const PerftLine& line, std::ostream* out) { *out << line.text; }

std::vector<PerftLine> publishedLines() {
    std::ifstream file(HELVAN_TEST_DATA "/perft.epd");
    std::vector<PerftLine> lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != '#') lines.push_back({line});
    }
    return lines;
}

class PublishedPerft : public ::testing::TestWithParam<PerftLine> {};

TEST_P(PublishedPerft, EveryCountMatches) {
    std::istringstream fields(GetParam().text);
    std::string fen;
    std::getline(fields, fen, ';');
    const Position position = positionOf(fen);
    int checked = 0;
    for (std::string field; std::getline(fields, field, ';');) {
        int depth = 0;
        unsigned long long leaves = 0;
        ASSERT_EQ(std::sscanf(field.c_str(), "D%d %llu", &depth, &leaves), 2) << field;
        if (leaves > mostLeaves) continue;
        EXPECT_EQ(perft(position, depth), leaves) << fen << " depth " << depth;
        ++checked;
    }
    EXPECT_GT(checked, 0);
}

INSTANTIATE_TEST_SUITE_P(, PublishedPerft, ::testing::ValuesIn(publishedLines()));

} // namespace

TEST(Perft, AllPublishedLinesAreThere) { EXPECT_EQ(publishedLines().size(), 65u); }

TEST(Perft, CountersAndDots) {
    const Position position = positionOf("4k3/8/8/8/8/8/8/4K2R w K -");
    perftCounters = {};
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(perftRoot(position, 2, 0), 66u);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), std::string(15, '.'));
    EXPECT_EQ(perftCounters.moves, 15u + 66u);
    EXPECT_EQ(perftCounters.castlings, 0u); // castling is a move of the root here, not one into a leaf
    perftRoot(position, 1, 1);
    EXPECT_EQ(perftCounters.castlings, 1u);
}

// The published entries have no en-passant field; a FEN that has one offers no capture at its first ply.
TEST(Perft, EnPassantFieldOffersNoCapture) { EXPECT_EQ(perft(positionOf("4k3/8/8/3pP3/8/8/8/4K3 w - d6"), 1), 6u); }

} // namespace helvan::testing
