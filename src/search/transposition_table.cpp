// SPDX-License-Identifier: MIT
#include "search/transposition_table.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <limits>

#include "board/advance.h"
#include "board/legal_moves.h"
#include "board/moves.h"
#include "platform/end_process.h"
#include "platform/memory.h"
#include "search/settings.h"

namespace helvan {

namespace {

constexpr int largestStoredScore = 32500;
constexpr int boundBits = 4;

// In bytes.
std::size_t sizeOf(std::uint64_t buckets) { return static_cast<std::size_t>(buckets * sizeof(TTBucket)); }

std::uint8_t pack(Bound bound, int tag) { return static_cast<std::uint8_t>(bound | tag << boundBits); }

// How readily an entry is given up, higher sooner: entries of old searches first, then the shallower.
int victimRating(const TTEntry& candidate, const TTEntry& chosen, std::uint32_t generation) {
    const bool shallower = candidate.depth < chosen.depth;
    if (candidate.generation == generation) return shallower ? -5 : -6;
    return shallower ? 1 : 0;
}

// Never the first entry, though the comparison begins with it.
TTEntry& chooseVictim(TTBucket& bucket, std::uint32_t generation) {
    constexpr int worstRating = -99;
    TTEntry* chosen = &bucket.entries[0];
    int best = worstRating;
    for (int i = 1; i < entriesPerBucket; ++i) {
        const int rating = victimRating(bucket.entries[i], *chosen, generation);
        if (rating <= best) continue;
        best = rating;
        chosen = &bucket.entries[i];
    }
    return *chosen;
}

} // namespace

std::uint64_t bucketCountFor(int megabytes) {
    constexpr double bucketsPerMegabyte = 16384;
    constexpr double leastShare = 0.51;
    return std::bit_ceil(static_cast<std::uint64_t>(megabytes * bucketsPerMegabyte * leastShare));
}

void TranspositionTable::allocate(int megabytes) {
    release();
    const std::uint64_t count = bucketCountFor(megabytes);
    const bool addressable = count <= std::numeric_limits<std::size_t>::max() / sizeof(TTBucket);
    if (addressable) buckets = static_cast<TTBucket*>(allocateZeroed(sizeOf(count)));
    if (buckets == nullptr) {
        std::fprintf(stderr, "Hash table too big\n");
        endProcess(1);
    }
    bucketCount = count;
    mask = count - 1;
}

bool TranspositionTable::claimPages() {
    const std::size_t unclaimed = sizeOf(bucketCount) - claimed;
    if (unclaimed == 0) return false;
    const std::size_t piece = std::min(claimedPiece, unclaimed);
    claimPiece(reinterpret_cast<char*>(buckets) + claimed, piece);
    claimed += piece;
    return piece < unclaimed;
}

void TranspositionTable::claimAllPages() {
    while (claimPages()) {
    }
}

void TranspositionTable::release() {
    freeBlock(buckets, sizeOf(bucketCount));
    bucketCount = mask = 0;
    generation = 0;
    buckets = nullptr;
    claimed = 0;
    touched = false;
}

void TranspositionTable::clear() {
    constexpr std::size_t quicklyWiped = std::size_t{64} << 20; // bytes, where all pages are there
    generation = 0;
    if (!touched) return;
    touched = false;
    const std::size_t size = sizeOf(bucketCount);
    if (claimed == size && size <= quicklyWiped) {
        std::memset(static_cast<void*>(buckets), 0, size); // and the pages stay
    } else {
        buckets = static_cast<TTBucket*>(emptyBlock(buckets, size));
        claimed = 0;
    }
}

void TranspositionTable::newGeneration() {
    if (buckets != nullptr) generation = (generation + 1) & 255;
}

const TTEntry* TranspositionTable::probe(Key key) const {
    if (buckets == nullptr) return nullptr;
    for (const TTEntry& entry : buckets[key & mask].entries) {
        if (entry.key == key) return &entry;
    }
    return nullptr;
}

void TranspositionTable::store(Key key, int depth, int score, Bound bound, Move move, int tag) {
    if (buckets == nullptr || score < -largestStoredScore || score > largestStoredScore) return;
    TTBucket& bucket = buckets[key & mask];
    touched = true;
    TTEntry* entry = nullptr;
    for (TTEntry& candidate : bucket.entries) {
        if (candidate.key != 0 && candidate.key != key) continue;
        entry = &candidate;
        break;
    }
    if (entry != nullptr) {
        entry->boundAndTag = pack(bound, entry->boundAndTag >> boundBits); // the tag stays
        if (move != nullMove) entry->move = static_cast<std::uint16_t>(move);
    } else {
        entry = &chooseVictim(bucket, generation);
        entry->boundAndTag = pack(bound, tag);
        entry->move = static_cast<std::uint16_t>(move);
    }
    entry->key = key;
    entry->depth = static_cast<std::int16_t>(depth);
    entry->score = static_cast<std::int16_t>(score);
    entry->generation = static_cast<std::uint8_t>(generation);
}

void TranspositionTable::seedPv(const Position& position, const Move* line) {
    constexpr int seedDepth = -99; // shallower than any search
    Position steps[2] = {position};
    for (int i = 0; line[i] != nullMove; ++i) {
        const Position& current = steps[i % 2];
        Position& next = steps[(i + 1) % 2];
        Move legal[maxMoves];
        const int count = legalMoves(current, legal);
        if (std::find(legal, legal + count, line[i]) == legal + count) return;
        advance(current, next, line[i]);
        store(current.key, seedDepth, 0, noBound, line[i], 0);
    }
}

int scoreToTable(int score, int ply) {
    if (score > largestPlainScore) return score + ply;
    return score < -largestPlainScore ? score - ply : score;
}

int scoreFromTable(int score, int ply) {
    if (score > largestPlainScore) return score - ply;
    return score < -largestPlainScore ? score + ply : score;
}

} // namespace helvan
