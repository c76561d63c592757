// SPDX-License-Identifier: MIT
//
// Sets and numbers of squares as a side sees them.
#pragma once

#include "board/bits.h"
#include "board/types.h"

namespace helvan {

inline constexpr Bitboard darkSquares = 0xaa55aa55aa55aa55; // a1's colour

constexpr Bitboard fileOfSquare(Square square) { return fileA << fileOf(square); }

constexpr Bitboard squaresBeside(Bitboard squares) { return ((squares & ~fileA) >> 1) | ((squares & ~fileH) << 1); }

constexpr Bitboard adjacentFiles(Square square) { return squaresBeside(fileOfSquare(square)); }

// All ranks before the square's, as the colour sees it.
constexpr Bitboard ranksBefore(Colour colour, Square square) {
    return colour == white ? ~Bitboard{0} << 8 << (8 * rankOf(square)) : bit(square & 56) - 1;
}

constexpr Bitboard fileBefore(Colour colour, Square square) {
    return fileOfSquare(square) & ranksBefore(colour, square);
}

constexpr int relativeRankOf(Colour colour, Square square) {
    return colour == white ? rankOf(square) : 7 - rankOf(square);
}

// The square as white would see it.
constexpr Square relativeSquare(Colour colour, Square square) { return colour == white ? square : mirrored(square); }

// Squares that the colour's pawns attack now or after advancing.
constexpr Bitboard pawnAttackSpan(Colour colour, Bitboard pawns) {
    Bitboard reach = pawns;
    for (int step = 8; step < 64; step *= 2) reach |= colour == white ? reach << step : reach >> step;
    return pawnAttacks(colour, reach);
}

} // namespace helvan
