// SPDX-License-Identifier: MIT
#include "main/self_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "support/output.h"

namespace helvan::testing {

namespace {

// The cheapest first.
std::vector<TestRow> sortedRows() {
    std::vector<TestRow> rows(std::begin(testFens), std::end(testFens));
    std::sort(rows.begin(), rows.end(),
              [](const TestRow& a, const TestRow& b) { return a.expected.nodes < b.expected.nodes; });
    return rows;
}

} // namespace

TEST(SelfTests, CheapRowsAreAsInTheTable) {
    const std::vector<TestRow> rows = sortedRows();
    SelfTest selfTest;
    for (int pass = 0; pass < 2; ++pass) {
        for (int i = 0; i < 3; ++i) EXPECT_EQ(selfTest.search(rows[i]), rows[i].expected) << rows[i].fen;
    }
}

TEST(SelfTests, StopsAtTheFirstDifference) {
    const TestRow cheapest = sortedRows().front();
    TestFens rows;
    std::memcpy(rows, testFens, sizeof rows);
    std::snprintf(rows[0], testFenCapacity, "%s %d %d %d", cheapest.fen.c_str(), cheapest.expected.bestMove,
                  cheapest.expected.score, static_cast<int>(cheapest.expected.nodes) + 1);
    const std::string said = printedBy([&] { EXPECT_EQ(runSelfTest(rows), 1); });
    EXPECT_TRUE(contains(said, "\nThis self-test verifies that the program is deterministic and also\n"
                               "performs a simple benchmark using 50 random positions.\n\nUp to 100 passes"));
    EXPECT_TRUE(contains(said, "=======\n   1 Error in position 0 - self test failed\n")) << said;
}

} // namespace helvan::testing
