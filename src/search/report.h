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

// The line of a finished iteration. Elapsed seconds are taken as at least shortestSeconds.
void printIteration(int depth, double elapsed, std::uint64_t nodes, int score, const Move* pv);

// The pawn-structure table's look-ups and hits since the program began, to the log.
void logEtableStatistics();

// "info nodes" and "bestmove" with its ponder move, if the line has a second move; "ZZZZ" stands for the move
// of an empty line. Copies go to the log, that of "info nodes" only with a ponder move, deliberately.
void printBestMove(std::uint64_t nodes, const Move* pv);

} // namespace helvan
