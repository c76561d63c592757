// SPDX-License-Identifier: MIT
//
// Sets and numbers of squares as a side sees them.
#pragma once

#include "board/bits.h"
#include "board/types.h"

namespace helvan {

inline constexpr Bitboard darkSquares = 0xaa55aa55aa55aa55; // a1's colour

// All squares of the square's file.
constexpr Bitboard fileMask(Square square) { return fileA << fileOf(square); }

constexpr Bitboard adjacentFiles(Square square) { return squaresBeside(fileMask(square)); }

// All ranks before the square's, as the colour sees it.
constexpr Bitboard ranksBefore(Colour colour, Square square) {
    return colour == white ? ~Bitboard{0} << 8 << (8 * rankOf(square)) : bit(square & 56) - 1;
}

constexpr Bitboard fileBefore(Colour colour, Square square) { return fileMask(square) & ranksBefore(colour, square); }

// The rank's number as the colour counts it: 0 is rank 1 for white and rank 8 for black.
constexpr int relativeRankOf(Colour colour, Square square) {
    return colour == white ? rankOf(square) : 7 - rankOf(square);
}

// The square as white would see it.
constexpr Square relativeSquare(Colour colour, Square square) { return colour == white ? square : mirrored(square); }

// All squares before the given ones on their files, as the colour sees it.
constexpr Bitboard squaresBefore(Colour colour, Bitboard squares) {
    Bitboard reach = pawnSteps(colour, squares);
    for (int step = 8; step < 64; step *= 2) reach |= colour == white ? reach << step : reach >> step;
    return reach;
}

// All squares of the squares' files.
constexpr Bitboard filesOf(Bitboard squares) {
    return squares | squaresBefore(white, squares) | squaresBefore(black, squares);
}

// Squares that the colour's pawns attack now or after advancing.
constexpr Bitboard pawnAttackSpan(Colour colour, Bitboard pawns) {
    return pawnAttacks(colour, pawns | squaresBefore(colour, pawns));
}

} // namespace helvan
