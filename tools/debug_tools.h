// SPDX-License-Identifier: MIT
//
// The larger tools of helvan-debug.
#pragma once

#include <cstdint>

#include "board/position.h"

namespace helvan {

// The position of a FEN as the engine plays from it; a note on standard error if chess cannot be played from there. A
// FEN without a side to move ends the program with a message.
Position positionFrom(const char* fen);

// How many of them a second.
double perSecond(std::uint64_t count, double seconds);

// Prints the evaluation term by term: what each credits to white and to black, opening, endgame and blended by the
// phase, in pawns; then the scaling and the score.
void showEvaluation(const Position& position);

// Searches the self-test's positions, or those of a file, to a depth (iterations, 1..maxDepth; more mean maxDepth) and
// prints nodes and speed. The total of nodes is the search's signature: it changes when the search's or the
// evaluation's result does, and with nothing else. The file has one FEN a line; blank lines and those that begin with
// '#' are skipped. False, with a message and nothing searched, for a file without positions or with one that cannot be
// played from.
bool benchSearch(int depth, const char* fileName = nullptr);

// Measures evaluations a second on positions from play and prints the figures.
void benchEvaluation();

} // namespace helvan
