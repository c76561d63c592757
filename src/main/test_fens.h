// SPDX-License-Identifier: MIT
//
// The self-test's positions and what the search answers to them.
#pragma once

namespace helvan {

inline constexpr int testFenCount = 50;
inline constexpr int testFenCapacity = 160; // characters, the terminator included

// A row has seven words: placement, side to move, castling and en passant of the FEN, then of the last iteration the
// best move as a number, the score in centipawns and the count of nodes.
using TestFens = char[testFenCount][testFenCapacity];

extern const TestFens testFens;

} // namespace helvan
