// SPDX-License-Identifier: MIT
#include "main/self_test.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "board/fen.h"
#include "board/move_text.h"
#include "platform/end_process.h"
#include "protocol/command_queue.h"
#include "protocol/uci.h"
#include "search/report.h"
#include "search/think.h"

namespace helvan {

namespace {

constexpr int testDepth = 13; // iterations
constexpr int lastIteration = testDepth - 1;

[[noreturn]] void endWithBadTable() {
    std::fprintf(stderr, "Error in data structure\n");
    endProcess(1);
}

// Reads standard input as the dialogue does, so that the modes run in the same surroundings; nobody takes its lines.
void startUnheardReader() {
    static CommandQueue& queue = *new CommandQueue; // the thread may be using it while the process ends
    startReader(queue);
}

// Answers the index of the first row whose search differs from the table, or -1.
int runPass(SelfTest& selfTest, const TestFens& rows) {
    for (int i = 0; i < testFenCount; ++i) {
        const TestRow row(rows[i]);
        if (selfTest.search(row) != row.expected) return i;
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
    if (count < fenFields) endWithBadTable();
    fen = words[0];
    for (int i = 1; i < fenFields; ++i) fen += std::string(" ") + words[i];
    const auto word = [&](int index) { return index < count ? words[index] : ""; };
    expected.bestMove = static_cast<Move>(std::strtol(word(4), nullptr, 10));
    expected.score = static_cast<int>(std::strtol(word(5), nullptr, 10));
    expected.nodes = std::strtoull(word(6), nullptr, 10);
}

SelfTest::SelfTest() : tables(std::make_unique<SearchTables>()) {
    rebuildTables(*tables);
    if (searchSettings.hashMegabytes > 0) tables->transpositionTable.allocate(searchSettings.hashMegabytes);
    tables->transpositionTable.claimAllPages();
}

TestResult SelfTest::search(const TestRow& row) {
    Position position;
    if (setupFromFen(position, row.fen.c_str()) != nullptr) endWithBadTable();
    std::vector<IterationRecord> iterations;
    Search search(*tables, {.depth = testDepth, .forget = true}, recordingReporter(iterations));
    think(search, position);
    iterations.resize(testDepth); // those that were not needed count for nothing
    for (int i = 0; i < lastIteration; ++i) {
        nodes += iterations[i].nodes;
        seconds += iterations[i].seconds;
    }
    const IterationRecord& last = iterations[lastIteration];
    return {last.bestMove, last.score, last.nodes};
}

int makeTestData() {
    startUnheardReader();
    SelfTest selfTest;
    std::printf("\nchar testFens[%d][%d] = {\n", testFenCount, testFenCapacity);
    for (const char* text : testFens) {
        const TestRow row(text);
        const TestResult result = selfTest.search(row);
        std::printf("  \"%s %d %d %" PRIu64 "\",\n", row.fen.c_str(), result.bestMove, result.score, result.nodes);
    }
    std::printf("};\n");
    return 0;
}

int runSelfTest(const TestFens& rows) {
    constexpr int passes = 5; // the text speaks of more, deliberately
    startUnheardReader();
    SelfTest selfTest;
    printHead();
    for (int pass = 1; pass <= passes; ++pass) {
        std::printf("%4d ", pass);
        std::fflush(stdout);
        if (const int failed = runPass(selfTest, rows); failed >= 0) {
            std::printf("Error in position %d - self test failed\n", failed);
            return 1;
        }
        std::printf("%7.3f %7.4f\n", selfTest.seconds / (pass * static_cast<double>(testFenCount)),
                    static_cast<double>(selfTest.nodes) / selfTest.seconds / 1000000.0);
    }
    std::printf("\n");
    return 0;
}

} // namespace helvan
