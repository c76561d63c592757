// SPDX-License-Identifier: MIT
//
// Bit sets of squares, and the few integer helpers that the whole engine shares.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

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

namespace detail {

inline constexpr auto kingDistances = [] {
    std::array<std::array<std::uint8_t, 64>, 64> steps{};
    for (Square a = 0; a < 64; ++a) {
        for (Square b = 0; b < 64; ++b) {
            const int most = maximum(absolute(fileOf(a) - fileOf(b)), absolute(rankOf(a) - rankOf(b)));
            steps[a][b] = static_cast<std::uint8_t>(most);
        }
    }
    return steps;
}();

} // namespace detail

// Steps a king needs from one square to the other on an empty board.
constexpr int kingDistance(Square a, Square b) { return detail::kingDistances[a][b]; }

// The sum of the file and the rank difference.
constexpr int manhattanDistance(Square a, Square b) {
    return absolute(fileOf(a) - fileOf(b)) + absolute(rankOf(a) - rankOf(b));
}

// The squares to the left and to the right of the given ones.
constexpr Bitboard squaresBeside(Bitboard squares) { return ((squares & ~fileA) >> 1) | ((squares & ~fileH) << 1); }

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
