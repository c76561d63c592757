// SPDX-License-Identifier: MIT
//
// What evaluations leave behind for later ones: finished scores by position key, and pawn structures by pawn key. For
// one thread.
#pragma once

#include <array>
#include <cstdint>

#include "board/keys.h"
#include "board/packed_score.h"

namespace helvan {

struct EvalCacheEntry {
    Key key = 0;
    std::int32_t score = 0; // centipawns, as evaluate answers them
};

inline constexpr Key evalCacheMask = 4095;

inline constexpr int longestPassedList = 8;

struct PawnEntry {
    Key key = 0;       // of pawns and kings; 0 for an empty slot
    PackedScore score; // white minus black
    // By colour: the squares of its passed pawns, lowest first, ended by a 0 or the end. No passed pawn stands on
    // a1, whose number is 0.
    std::uint8_t passed[2][longestPassedList] = {};
};

inline constexpr Key pawnTableMask = 0x1ffff;

// All zero at first, four megabytes.
struct EvalCaches {
    // Direct-mapped; a newer position always takes the slot. Not cleared when a parameter changes: a score of the old
    // ones may be answered until its slot is taken.
    std::array<EvalCacheEntry, evalCacheMask + 1> evalCache;

    // Direct-mapped by the low bits of the pawn key.
    std::array<PawnEntry, pawnTableMask + 1> pawnTable;

    // Look-ups in the pawn table and those of them that found the structure stored.
    std::uint64_t etableProbes = 0;
    std::uint64_t etableHits = 0;
};

// Fetches the structure's slot into the cache ahead of a look-up.
inline void prefetchPawns(const EvalCaches& caches, Key pawnKey) {
    __builtin_prefetch(&caches.pawnTable[pawnKey & pawnTableMask]);
}

// Forgets every stored structure, as its score depends on the parameters.
inline void clearPawnTable(EvalCaches& caches) {
    for (PawnEntry& entry : caches.pawnTable) entry.key = 0;
}

} // namespace helvan
