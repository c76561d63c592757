// SPDX-License-Identifier: MIT
#include "main/self_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "main/test_fens.h"
#include "search/rebuild.h"
#include "search/settings.h"
#include "search/transposition_table.h"
#include "support/output.h"

namespace helvan::testing {

namespace {

class SelfTest : public ::testing::Test {
protected:
    SelfTest() {
        for (const char* text : testFens) rows.emplace_back(text);
        std::sort(rows.begin(), rows.end(),
                  [](const TestRow& a, const TestRow& b) { return a.expected.nodes < b.expected.nodes; });
    }
    ~SelfTest() override {
        testMode = deterministic = 0;
        transpositionTable.release();
    }

    std::vector<TestRow> rows; // the cheapest first
};

} // namespace

TEST_F(SelfTest, CheapRowsAreAsInTheTable) {
    testMode = 1;
    rebuildTables();
    transpositionTable.allocate(hashMegabytes);
    for (int pass = 0; pass < 2; ++pass) {
        for (int i = 0; i < 3; ++i) EXPECT_EQ(searchTestPosition(rows[i]), rows[i].expected) << rows[i].fen;
    }
}

TEST_F(SelfTest, StopsAtTheFirstDifference) {
    char saved[testFenCapacity];
    std::memcpy(saved, testFens[0], sizeof saved);
    std::snprintf(testFens[0], testFenCapacity, "%s %d %d %d", rows[0].fen.c_str(), rows[0].expected.bestMove,
                  rows[0].expected.score, static_cast<int>(rows[0].expected.nodes) + 1);
    const std::string said = printedBy([] { EXPECT_EQ(runSelfTest(), 1); });
    std::memcpy(testFens[0], saved, sizeof saved);
    EXPECT_TRUE(contains(said, "\nThis self-test verifies that the program is deterministic and also\n"
                               "performs a simple benchmark using 50 random positions.\n\nUp to 100 passes"));
    EXPECT_TRUE(contains(said, "=======\n   1 Error in position 0 - self test failed\n")) << said;
}

} // namespace helvan::testing
