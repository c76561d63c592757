// SPDX-License-Identifier: MIT
//
// Bit sets of squares, and the few integer helpers that the whole engine shares.
#pragma once

#include <bit>

#include "board/types.h"

namespace helvan {

// Index of the lowest set bit. The board must not be empty.
constexpr Square lowestBit(Bitboard board) { return std::countr_zero(board); }

// Removes the lowest set bit and answers its index. The board must not be empty.
constexpr Square popLowestBit(Bitboard& board) {
    const Square square = lowestBit(board);
    board &= board - 1;
    return square;
}

constexpr int popCount(Bitboard board) { return std::popcount(board); }
constexpr bool moreThanOne(Bitboard board) { return (board & (board - 1)) != 0; }

constexpr int minimum(int a, int b) { return a < b ? a : b; }
constexpr int maximum(int a, int b) { return a > b ? a : b; }

constexpr int absolute(int value) { return value < 0 ? -value : value; }

// Steps a king needs from one square to the other on an empty board.
constexpr int kingDistance(Square a, Square b) {
    return maximum(absolute(fileOf(a) - fileOf(b)), absolute(rankOf(a) - rankOf(b)));
}

// The sum of the file and the rank difference.
constexpr int manhattanDistance(Square a, Square b) {
    return absolute(fileOf(a) - fileOf(b)) + absolute(rankOf(a) - rankOf(b));
}

// The integer whose square is nearest to n; 0 for n below 1.
constexpr int roundedSquareRoot(int n) {
    std::int64_t root = 0;
    // The root of n is nearer to k than to k - 1 from (k - 1/2) squared = k x (k - 1) + 1/4 on, which no integer
    // hits: the answer is the largest k with n > k x (k - 1).
    for (std::int64_t step = std::int64_t{1} << 15; step != 0; step /= 2) {
        const std::int64_t candidate = root + step;
        if (n > candidate * (candidate - 1)) root = candidate;
    }
    return static_cast<int>(root);
}

constexpr Bitboard pawnAttacksEast(Colour colour, Bitboard pawns) {
    return colour == white ? (pawns & ~fileH) << 9 : (pawns & ~fileH) >> 7;
}
constexpr Bitboard pawnAttacksWest(Colour colour, Bitboard pawns) {
    return colour == white ? (pawns & ~fileA) << 7 : (pawns & ~fileA) >> 9;
}

// Every square that the colour's pawns attack.
constexpr Bitboard pawnAttacks(Colour colour, Bitboard pawns) {
    return pawnAttacksEast(colour, pawns) | pawnAttacksWest(colour, pawns);
}

// One step towards the other side of the board.
constexpr Bitboard pawnSteps(Colour colour, Bitboard pawns) { return colour == white ? pawns << 8 : pawns >> 8; }
constexpr int forwardStep(Colour colour) { return colour == white ? 8 : -8; }

} // namespace helvan
