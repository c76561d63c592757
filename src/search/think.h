// SPDX-License-Identifier: MIT
//
// The search's one entry: iterative deepening.
#pragma once

#include <array>
#include <string>

#include "board/position.h"

namespace helvan {

// Searches the position deeper and deeper, reports every finished iteration and answers with "bestmove" on
// standard output. Works on a copy: a command that arrives in the middle may replace the game's positions.
//   allotted     seconds, or noTimeGoalSeconds
//   depthLimit   iterations; anything outside 1..maxDepth means maxDepth
//   searchMoves  the root moves to search as texts separated by blanks; empty for all
// Node limit, pondering and fixedMoveTime are set beforehand in nodeCounter and searchState. The position has one
// king of each colour, and the side not to move is not in check. Without named moves, a move of the opening book is
// answered at once. Answers the first line's score of the last finished iteration in centipawns, 0 for a move of the
// book.
int think(const Position& gamePosition, double allotted, int depthLimit, const std::string& searchMoves);

// What testMode records of an iteration instead of printing it.
struct IterationRecord {
    double seconds; // since the search began
    std::uint64_t nodes;
    int score; // centipawns
    Move bestMove;
};

inline constexpr int recordedIterations = 128;

// By iteration - 1.
inline std::array<IterationRecord, recordedIterations> iterationRecords;

} // namespace helvan
