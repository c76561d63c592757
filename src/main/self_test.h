// SPDX-License-Identifier: MIT
//
// Two batch modes over a table of positions: the self-test searches them to a fixed depth, compares the answers with
// the table's and measures the time; the generator prints the table anew. Neither leaves the
// process fit for anything else.
#pragma once

#include <cstdint>
#include <string>

#include "board/types.h"

namespace helvan {

// What a search of a test position has to come to.
struct TestResult {
    Move bestMove;
    int score; // centipawns
    std::uint64_t nodes;

    bool operator==(const TestResult&) const = default;
};

// A row of the table, taken apart. A row of fewer than four words ends the process; numbers that are missing are 0.
struct TestRow {
    explicit TestRow(const char* text);

    std::string fen; // four fields
    TestResult expected;
};

// Searches the position of the row and leaves the iterations in iterationRecords.
TestResult searchTestPosition(const TestRow& row);

// Both answer the exit status of the process.
int makeTestData();
int runSelfTest(); // 1 after the first difference

} // namespace helvan
