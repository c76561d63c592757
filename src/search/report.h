// SPDX-License-Identifier: MIT
//
// Scores and lines as the search prints them, and the log's part of its reports.
#pragma once

#include <cstdint>
#include <string>

#include "search/search.h"

namespace helvan {

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
