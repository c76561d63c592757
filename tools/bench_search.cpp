// SPDX-License-Identifier: MIT
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "board/fen.h"
#include "main/self_test.h"
#include "main/test_fens.h"
#include "search/limits.h"
#include "search/settings.h"
#include "search/think.h"
#include "search/transposition_table.h"
#include "tools/debug_tools.h"

namespace helvan {

namespace {

constexpr int benchHashMegabytes = 16;

void printFigures(const char* what, std::uint64_t nodes, double seconds) {
    std::printf("%-72s %11" PRIu64 " nodes %8.3f s %9.0f nodes a second\n", what, nodes, seconds,
                static_cast<double>(nodes) / (seconds > shortestSeconds ? seconds : shortestSeconds));
}

std::uint64_t searchedNodes(const char* fen, int depth) {
    Position position;
    setupFromFen(position, fen);
    const SearchScope scope;
    searchState.pondering = 0;
    searchState.fixedMoveTime = 0.0;
    think(position, noTimeGoalSeconds, depth, "");
    return nodeCounter.count;
}

std::vector<std::string> selfTestFens() {
    std::vector<std::string> fens;
    for (const char* text : testFens) fens.push_back(TestRow(text).fen);
    return fens;
}

std::vector<std::string> linesOf(const char* fileName) {
    std::vector<std::string> lines;
    std::ifstream file(fileName);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    if (lines.empty()) std::fprintf(stderr, "no positions in %s\n", fileName);
    return lines;
}

} // namespace

bool benchSearch(int depth, const char* fileName) {
    const std::vector<std::string> fens = fileName != nullptr ? linesOf(fileName) : selfTestFens();
    if (fens.empty()) return false;
    testMode = 1; // prints nothing, and starts every search with empty tables
    hashMegabytes = benchHashMegabytes;
    transpositionTable.allocate(hashMegabytes);
    std::uint64_t total = 0;
    const double start = now();
    for (const std::string& fen : fens) {
        const double began = now();
        const std::uint64_t nodes = searchedNodes(fen.c_str(), depth);
        printFigures(fen.c_str(), nodes, now() - began);
        total += nodes;
    }
    printFigures("total", total, now() - start);
    std::printf("signature %" PRIu64 "\n", total);
    return true;
}

} // namespace helvan
