// SPDX-License-Identifier: MIT
//
// Storage for pawn structures and what they are worth, by pawn key.
#pragma once

#include <array>
#include <cstdint>

#include "board/keys.h"
#include "board/packed_score.h"

namespace helvan {

inline constexpr int longestPassedList = 8;

struct PawnEntry {
    Key key = 0;       // of pawns and kings; 0 for an empty slot
    PackedScore score; // white minus black
    // By colour: the squares of its passed pawns, lowest first, ended by a 0 or the end. No passed pawn stands on
    // a1, whose number is 0.
    std::uint8_t passed[2][longestPassedList] = {};
};

inline constexpr Key pawnTableMask = 0x1ffff;

// Direct-mapped by the low bits of the pawn key.
extern std::array<PawnEntry, pawnTableMask + 1> pawnTable;

// Look-ups and those of them that found the structure stored, since the program began.
inline std::uint64_t etableProbes = 0;
inline std::uint64_t etableHits = 0;

// Fetches the structure's slot into the cache ahead of a look-up.
inline void prefetchPawns(Key pawnKey) { __builtin_prefetch(&pawnTable[pawnKey & pawnTableMask]); }

// Forgets every stored structure, as its score depends on the parameters.
void clearPawnTable();

} // namespace helvan
