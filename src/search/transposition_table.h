// SPDX-License-Identifier: MIT
//
// What earlier searches found out about positions, by position key. For one thread.
#pragma once

#include <cstdint>

#include "board/keys.h"
#include "board/position.h"
#include "board/types.h"

namespace helvan {

// What a stored score says of the true one.
enum Bound : int {
    noBound = 0, // nothing: the entry holds a move only
    upperBound = 1,
    lowerBound = 2,
    exactBound = 3 // both
};

struct TTEntry {
    Key key;            // 0 marks an empty entry
    std::int16_t score; // as scoreToTable makes it
    std::uint16_t move; // 0 for none
    std::int16_t depth; // remaining when stored, in half-plies
    std::uint8_t boundAndTag;
    std::uint8_t generation; // of the table when the entry was written

    Bound bound() const { return static_cast<Bound>(boundAndTag & 15); }
};

inline constexpr int entriesPerBucket = 4;

struct alignas(64) TTBucket {
    TTEntry entries[entriesPerBucket];
};

static_assert(sizeof(TTEntry) == 16 && sizeof(TTBucket) == 64, "a bucket is one cache line");

// All zero at first.
struct TranspositionTable {
    TranspositionTable() = default;
    TranspositionTable(const TranspositionTable&) = delete;
    TranspositionTable& operator=(const TranspositionTable&) = delete;
    ~TranspositionTable() { release(); }

    std::uint64_t bucketCount = 0; // a power of two; 0 while nothing is allocated
    std::uint64_t mask = 0;        // bucketCount - 1
    std::uint32_t generation = 0;  // 0..255
    TTBucket* buckets = nullptr;
    std::size_t claimed = 0; // bytes from the beginning whose pages the system has been asked for
    bool touched = false;    // something was stored since all was zero

    // Allocates a zeroed table in place of the old one, of about so many megabytes (above 0): the power of two of
    // bytes nearest below 1.96 times the size. Too large: a message on standard error and the end of the process.
    void allocate(int megabytes);
    // Has the system find the next pages of a new table, huge ones: searches are faster on them than on the small ones
    // that it finds in their middle. Takes some milliseconds. Answers whether there are more to claim.
    bool claimPages();
    void claimAllPages();

    void release(); // frees all; then every operation below does nothing

    // Empties every entry, within milliseconds: a large table, or one not claimed yet, gives its pages back.
    void clear();
    void newGeneration(); // to be called once a search

    // The entry of the key, or null. Valid until the next store or until the table is emptied, allocated or released.
    const TTEntry* probe(Key key) const;

    // depth in half-plies, score in centipawns (beyond +-32500 nothing is stored), tag 0..15. Keeps the stored move
    // of the same key when the move is 0. The first entry of a full bucket is never given to another key,
    // deliberately.
    void store(Key key, int depth, int score, Bound bound, Move move, int tag);

    // Stores the moves of a line that begins at the position, each without a score under the position before it, up
    // to the 0 that ends the line or the first move that cannot be made.
    void seedPv(const Position& position, const Move* line);

    // Fetches the key's bucket into the cache ahead of a probe.
    void prefetch(Key key) const {
        if (buckets != nullptr) __builtin_prefetch(&buckets[key & mask]);
    }
};

// The number of buckets for the size: the smallest power of two not below 0.51 of what fits.
std::uint64_t bucketCountFor(int megabytes);

// Mate scores count from the root; in the table they count from the stored position, ply plies on.
int scoreToTable(int score, int ply);
int scoreFromTable(int score, int ply);

} // namespace helvan
