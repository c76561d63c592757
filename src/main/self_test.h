// SPDX-License-Identifier: MIT
//
// Two batch modes over a table of positions: the self-test searches them to a fixed depth, compares the answers with
// the table's and measures the time; the generator prints the table anew. Neither leaves the
// process fit for anything else.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "board/types.h"
#include "main/test_fens.h"
#include "search/tables.h"

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

// The searches of the self-test: their tables, and the totals of all so far.
struct SelfTest {
    SelfTest();

    std::unique_ptr<SearchTables> tables;
    std::uint64_t nodes = 0; // of all iterations but the last
    double seconds = 0.0;    // the same

    TestResult search(const TestRow& row);
};

// Both answer the exit status of the process.
int makeTestData();
int runSelfTest(const TestFens& rows = testFens); // 1 after the first difference

} // namespace helvan
