// SPDX-License-Identifier: MIT
//
// King and pawn against king, solved for every placement: one bit tells a win from a draw.
//
// The pawn runs towards rank 1 and stands on the files a to d; other placements are mirrored first. The bit of a
// placement is 2 x (pawnIndex x 4096 + strong king x 64 + weak king) + (1 if the pawn's owner is to move), where
// pawnIndex is 4 x (rank - 2) + file, ranks 2..7 and files 0..3; bit n is bit n mod 8 of byte n / 8. Placements that
// cannot arise (kings side by side, the weak king attacked out of turn, two on a square) are 0.
#pragma once

#include <array>
#include <cstdint>

#include "board/types.h"

namespace helvan {

inline constexpr int pawnPlacements = 24; // files a to d, ranks 2 to 7
inline constexpr int pawnBitbaseBits = pawnPlacements * 64 * 64 * 2;

extern std::array<std::uint8_t, pawnBitbaseBits / 8> pawnBitbase;

// Fills the array; later calls do nothing.
void initPawnBitbase();

// Whether the side of the pawn, which runs towards rank 1 on any file, wins. For squares 0..63; a pawn on rank 1 or
// 8, which no game reaches, wins nothing.
bool pawnEndingWon(Square pawnSquare, Square strongKing, Square weakKing, bool ownerToMove);

} // namespace helvan
