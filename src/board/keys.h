// SPDX-License-Identifier: MIT
//
// Hash keys: fixed pseudo-random constants, the same in every build, so that node counts repeat everywhere.
#pragma once

#include <array>
#include <cstdint>

#include "board/types.h"

namespace helvan {

using Key = std::uint64_t;

// By pieceIndex(colour, type, square). The first two entries, which no piece uses, are the side to move:
// pieceKeys[white] and pieceKeys[black].
extern const std::array<Key, pieceTableSize> pieceKeys;

// The same index; only pawns and kings have keys, so that advance may XOR the entry of any piece.
extern const std::array<Key, pieceTableSize> pawnKeys;

extern const std::array<Key, 64> epKeys;     // by the en-passant target square
extern const std::array<Key, 64> castleKeys; // by castlingIndex

// By materialIndex(colour, type); added up over all pieces. Nothing for kings and the unused types.
extern const std::array<Key, 16> materialKeys;

// What a piece of each type adds to the game phase: 96 with all pieces on the board.
inline constexpr std::array<std::uint32_t, 8> phaseWeights = {0, 0, 1, 3, 9, 22, 0, 0};

// The castling rights as an index 0..63 from the squares that something has moved from or to. The mask keeps
// a1, e1, h1, a8, e8 and h8; the multiplier sends each of their 64 subsets to an index of its own.
constexpr int castlingIndex(Bitboard touched) {
    return static_cast<int>(((touched & 0x9100000000000091) * 0x218140848e040125) >> 58);
}

} // namespace helvan
