// SPDX-License-Identifier: MIT
//
// Positions and bitboards as text on standard output, for the people who work on the engine.
#pragma once

#include "board/position.h"

namespace helvan {

// A header line (side to move as the raw ply, check flag, the last two moves, castling rights) and the board
// as eight rows of piece letters, a8 first.
void printBoard(const Position& position);

// "BITS" and the set as eight rows, a8 first: # for a square of the set, - for any other.
void printBits(Bitboard board);

// Writes the position to "ttt.fen" in the working directory, prints it with the moves of its header in
// hexadecimal, and shows it in an external board viewer, waiting until that ends. Without the viewer an error
// line is printed.
void viewInExternalBoard(const Position& position, Move move);

} // namespace helvan
