// SPDX-License-Identifier: MIT
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "board/validity.h"
#include "main/self_test.h"
#include "main/test_fens.h"
#include "platform/clock.h"
#include "search/think.h"
#include "tools/debug_tools.h"

namespace helvan {

namespace {

constexpr int benchHashMegabytes = 16;

void printFigures(const char* what, std::uint64_t nodes, double seconds) {
    std::printf("%-72s %11" PRIu64 " nodes %8.3f s %9.0f nodes a second\n", what, nodes, seconds,
                perSecond(nodes, seconds));
}

std::uint64_t searchedNodes(SearchTables& tables, const char* fen, int depth) {
    Search search(tables, {.depth = depth, .forget = true});
    think(search, positionFrom(fen));
    return search.nodes;
}

std::vector<std::string> selfTestFens() {
    std::vector<std::string> fens;
    for (const char* text : testFens) fens.push_back(TestRow(text).fen);
    return fens;
}

bool holdsPosition(const std::string& line) {
    return line.find_first_not_of(" \t\r") != std::string::npos && line[0] != '#';
}

// Empty, with a message, if one cannot be played from: a total without it would pass for the file's signature.
std::vector<std::string> fensOf(const char* fileName) {
    std::vector<std::string> fens;
    std::ifstream file(fileName);
    for (std::string line; std::getline(file, line);) {
        if (!holdsPosition(line)) continue;
        if (unplayableReason(positionFrom(line.c_str())) != nullptr) {
            std::fprintf(stderr, "cannot be searched: %s\n", line.c_str());
            return {};
        }
        fens.push_back(line);
    }
    if (fens.empty()) std::fprintf(stderr, "no positions in %s\n", fileName);
    return fens;
}

} // namespace

bool benchSearch(int depth, const char* fileName) {
    const std::vector<std::string> fens = fileName != nullptr ? fensOf(fileName) : selfTestFens();
    if (fens.empty()) return false;
    const auto tables = std::make_unique<SearchTables>();
    tables->transpositionTable.allocate(benchHashMegabytes);
    tables->transpositionTable.claimAllPages();
    std::uint64_t total = 0;
    const double start = now();
    for (const std::string& fen : fens) {
        const double began = now();
        const std::uint64_t nodes = searchedNodes(*tables, fen.c_str(), depth);
        printFigures(fen.c_str(), nodes, now() - began);
        total += nodes;
    }
    printFigures("total", total, now() - start);
    std::printf("signature %" PRIu64 "\n", total);
    return true;
}

} // namespace helvan
