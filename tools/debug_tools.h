// SPDX-License-Identifier: MIT
//
// The larger tools of helvan-debug.
#pragma once

#include "board/position.h"

namespace helvan {

// Prints the evaluation term by term: what each credits to white and to black, opening, endgame and blended by the
// phase, in pawns; then the scaling and the score.
void showEvaluation(const Position& position);

// Searches the self-test's positions, or those of a file with one FEN a line, to a depth (iterations) and prints nodes
// and speed. The total of nodes is the search's signature: it changes when the search's or the evaluation's result
// does, and with nothing else. False for a file without positions.
bool benchSearch(int depth, const char* fileName = nullptr);

// Measures evaluations a second on positions from play and prints the figures.
void benchEvaluation();

} // namespace helvan
