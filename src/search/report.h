// SPDX-License-Identifier: MIT
//
// The reporters that there are, and what they and the log are made of.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "search/search.h"

namespace helvan {

// Prints the lines of the protocol.
Reporter uciReporter();

// What is kept of an iteration.
struct IterationRecord {
    double seconds = 0.0; // since the search began
    std::uint64_t nodes = 0;
    int score = 0; // centipawns
    Move bestMove = nullMove;
};

// Appends a record for each iteration that is finished; the records must outlive the search.
Reporter recordingReporter(std::vector<IterationRecord>& records);

// "cp N" in centipawns, or "mate N" in moves, negative when the side to move is mated.
std::string scoreText(int score);

// The moves up to the terminating 0, at most pvCapacity, separated by blanks.
std::string pvText(const Move* pv);

// Milliseconds since the search began, at most what an int holds.
int searchMilliseconds(const Search& search);

// The head and a row of the log's table of iterations. A row holds the same as the iteration's "info" line.
void logTableHead();
void logTableRow(const Search& search, int depth, int score, const Move* pv);

} // namespace helvan
