// SPDX-License-Identifier: MIT
//
// Every line that the search prints.
#pragma once

#include <cstdint>
#include <string>

#include "board/types.h"

namespace helvan {

// "cp N" in centipawns, or "mate N" in moves, negative when the side to move is mated.
std::string scoreText(int score);

// The moves up to the terminating 0, at most pvCapacity, separated by blanks.
std::string pvText(const Move* pv);

// "info depth N": an iteration begins.
void printIterationStart(int depth);

// "info currmove ...": the root's n-th move is next.
void printCurrentMove(Move move, int number);

// The "info" line of the best line so far: depth in iterations, score in centipawns, time and nodes of the search.
void printLine(int depth, int score, const Move* pv);

// The "info multipv" line of a rank, from 1; milliseconds and nodes as they were when the line was finished.
void printRank(int rank, int depth, int score, int milliseconds, std::uint64_t nodes, const Move* pv);

// Milliseconds since the search began, at most what an int holds.
int searchMilliseconds();

// The head and a row of the log's table of iterations. A row holds the same as printLine.
void logTableHead();
void logTableRow(int depth, int score, const Move* pv);

// The pawn-structure table's look-ups and hits since the program began, to the log.
void logEtableStatistics();

// "info nodes" and "bestmove" with its ponder move, if the line has a second move; "ZZZZ" stands for the move
// of an empty line. Copies go to the log, that of "info nodes" only with a ponder move, deliberately.
void printBestMove(std::uint64_t nodes, const Move* pv);

} // namespace helvan
