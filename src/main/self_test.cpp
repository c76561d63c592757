// SPDX-License-Identifier: MIT
#include "main/self_test.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "board/fen.h"
#include "board/move_text.h"
#include "main/test_fens.h"
#include "protocol/command_queue.h"
#include "protocol/end_process.h"
#include "protocol/uci.h"
#include "search/limits.h"
#include "search/rebuild.h"
#include "search/settings.h"
#include "search/think.h"
#include "search/transposition_table.h"

namespace helvan {

namespace {

constexpr int testDepth = 13; // iterations
constexpr int lastIteration = testDepth - 1;
constexpr double notSearched = -9999.99;

void prepare() {
    testMode = 1;
    rebuildTables();
    startReader(); // nothing reads its lines
    if (hashMegabytes > 0) transpositionTable.allocate(hashMegabytes);
    transpositionTable.claimAllPages();
}

// Sums over all passes so far, of all iterations but the last.
struct Totals {
    std::uint64_t nodes = 0;
    double seconds = 0.0;

    void add() {
        for (int i = 0; i < lastIteration; ++i) {
            nodes += iterationRecords[i].nodes;
            seconds += iterationRecords[i].seconds;
        }
    }
};

// Answers the index of the first row whose search differs from the table, or -1.
int runPass(Totals& totals) {
    for (int i = 0; i < testFenCount; ++i) {
        const TestRow row(testFens[i]);
        if (searchTestPosition(row) != row.expected) return i;
        totals.add();
        std::printf(".");
        std::fflush(stdout);
    }
    return -1;
}

void printHead() {
    std::fprintf(stderr, "Helvan version %s\n\n", versionText);
    std::printf("\n"
                "This self-test verifies that the program is deterministic and also\n"
                "performs a simple benchmark using 50 random positions.\n"
                "\n"
                "Up to 100 passes are done, and the Sec column gives the average time\n"
                "to perforam a %d ply search.  mNPS gives millions of nodes per second.\n"
                "\n"
                "Pass Progress ...                                          Sec    mNPS\n"
                "==== ================================================== ====== =======\n",
                testDepth);
}

} // namespace

TestRow::TestRow(const char* text) : expected{} {
    constexpr int fenFields = 4;
    char copy[testFenCapacity];
    std::snprintf(copy, sizeof copy, "%s", text);
    char* words[testFenCapacity / 2];
    const int count = splitWords(copy, words);
    if (count < fenFields) {
        std::fprintf(stderr, "Error in data structure\n");
        endProcess(1);
    }
    fen = words[0];
    for (int i = 1; i < fenFields; ++i) fen += std::string(" ") + words[i];
    const auto word = [&](int index) { return index < count ? words[index] : ""; };
    expected.bestMove = static_cast<Move>(std::strtol(word(4), nullptr, 10));
    expected.score = static_cast<int>(std::strtol(word(5), nullptr, 10));
    expected.nodes = std::strtoull(word(6), nullptr, 10);
}

TestResult searchTestPosition(const TestRow& row) {
    Position position;
    setupFromFen(position, row.fen.c_str());
    iterationRecords.fill({});
    iterationRecords[lastIteration].seconds = notSearched;
    const SearchScope scope;
    think(position, noTimeGoalSeconds, testDepth, "");
    const IterationRecord& last = iterationRecords[lastIteration];
    return {last.bestMove, last.score, last.nodes};
}

int makeTestData() {
    prepare();
    std::printf("\nchar testFens[%d][%d] = {\n", testFenCount, testFenCapacity);
    for (const char* text : testFens) {
        const TestRow row(text);
        const TestResult result = searchTestPosition(row);
        std::printf("  \"%s %d %d %" PRIu64 "\",\n", row.fen.c_str(), result.bestMove, result.score, result.nodes);
    }
    std::printf("};\n");
    return 0;
}

int runSelfTest() {
    constexpr int passes = 5; // the text speaks of more, deliberately
    prepare();
    printHead();
    Totals totals;
    for (int pass = 1; pass <= passes; ++pass) {
        std::printf("%4d ", pass);
        std::fflush(stdout);
        if (const int failed = runPass(totals); failed >= 0) {
            std::printf("Error in position %d - self test failed\n", failed);
            return 1;
        }
        std::printf("%7.3f %7.4f\n", totals.seconds / (pass * static_cast<double>(testFenCount)),
                    static_cast<double>(totals.nodes) / totals.seconds / 1000000.0);
    }
    std::printf("\n");
    return 0;
}

} // namespace helvan
