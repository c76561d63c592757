// SPDX-License-Identifier: MIT
#include "platform/memory.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <new>
#include <thread>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <sys/mman.h>
#endif

#include "platform/platform.h"

namespace helvan {

namespace {

constexpr std::size_t smallPage = 4096;

// Has every page of the piece written to, with what it holds.
void touchPages(void* piece, std::size_t bytes) {
    volatile char* const first = static_cast<char*>(piece);
    for (std::size_t at = 0; at < bytes; at += smallPage) first[at] = first[at];
}

} // namespace

// What each system does: mapBlock and unmapBlock for the addresses, emptyPages for the pages behind some of them, which
// are zero from then on and found again when they are touched, and claimPiece.

#ifdef _WIN32

namespace {

void* mapBlock(std::size_t bytes) { return VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE); }

void unmapBlock(void* block, std::size_t /*bytes*/) { VirtualFree(block, 0, MEM_RELEASE); }

void emptyPages(void* piece, std::size_t bytes) {
    VirtualFree(piece, bytes, MEM_DECOMMIT);
    while (VirtualAlloc(piece, bytes, MEM_COMMIT, PAGE_READWRITE) == nullptr) Sleep(1); // another took the memory
}

} // namespace

// Huge pages are a privilege there.
void claimPiece(void* piece, std::size_t bytes) { touchPages(piece, bytes); }

#else

namespace {

// Huge pages are a wish: a system that knows nothing of them gives small ones.
#ifdef MADV_HUGEPAGE

constexpr int collapseNow = 25; // MADV_COLLAPSE, newer than some headers

void preferSmallPages(void* piece, std::size_t bytes) { madvise(piece, bytes, MADV_NOHUGEPAGE); }
void preferHugePage(void* piece, std::size_t bytes) { madvise(piece, bytes, MADV_HUGEPAGE); }

bool hasPages(void* piece, std::size_t bytes) {
    unsigned char pages[claimedPiece / smallPage] = {};
    if (mincore(piece, bytes, pages) != 0) return true;
    return std::any_of(std::begin(pages), std::end(pages), [](unsigned char page) { return (page & 1) != 0; });
}

void joinPages(void* piece, std::size_t bytes) { madvise(piece, bytes, collapseNow); }

#else

void preferSmallPages(void* /*piece*/, std::size_t /*bytes*/) {}
void preferHugePage(void* /*piece*/, std::size_t /*bytes*/) {}
bool hasPages(void* /*piece*/, std::size_t /*bytes*/) { return false; }
void joinPages(void* /*piece*/, std::size_t /*bytes*/) {}

#endif

void* mapBlock(std::size_t bytes) {
    // A piece more than asked for, of which what lies beside the aligned block goes back at once.
    const std::size_t spare = bytes >= claimedPiece ? claimedPiece : 0;
    void* const mapped = mmap(nullptr, bytes + spare, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return nullptr;
    char* block = static_cast<char*>(mapped);
    if (spare > 0) {
        const std::size_t before = -reinterpret_cast<std::uintptr_t>(block) % claimedPiece;
        if (before > 0) munmap(block, before);
        block += before;
        if (before < spare) munmap(block + bytes, spare - before);
    }
    preferSmallPages(block, bytes);
    return block;
}

void unmapBlock(void* block, std::size_t bytes) { munmap(block, bytes); }

void emptyPages(void* piece, std::size_t bytes) {
    madvise(piece, bytes, MADV_DONTNEED);
    preferSmallPages(piece, bytes);
}

} // namespace

void claimPiece(void* piece, std::size_t bytes) {
    const bool wasTouched = hasPages(piece, bytes);
    preferHugePage(piece, bytes);
    touchPages(piece, bytes); // the first touch finds a huge page where there was no small one
    if (wasTouched) joinPages(piece, bytes);
}

#endif

namespace {

using Clock = std::chrono::steady_clock;

std::atomic<int> blocksGoingBack = 0;

// Empties the block's pages for some milliseconds, and answers how many bytes from its beginning are empty.
std::size_t emptyForAWhile(char* block, std::size_t bytes) {
    constexpr auto longest = std::chrono::milliseconds(10);
    const auto end = Clock::now() + longest;
    std::size_t at = 0;
    for (; at < bytes && Clock::now() < end; at += claimedPiece)
        emptyPages(block + at, std::min(claimedPiece, bytes - at));
    return std::min(at, bytes);
}

// What a thread has to do with a block. Stands in the block.
struct GiveBack : ThreadJob {
    std::size_t bytes;
    std::size_t emptied; // from the beginning
};

// With pauses as long as the steps and longer: while the system takes pages back it is slow to find others, which a
// search may be waiting for.
void giveBackSlowly(ThreadJob& job) {
    const GiveBack giveBack = static_cast<GiveBack&>(job);
    char* const block = reinterpret_cast<char*>(&job);
    for (std::size_t at = giveBack.emptied; at < giveBack.bytes; at += claimedPiece) {
        constexpr int timesAsLong = 4;
        const auto begin = Clock::now();
        emptyPages(block + at, std::min(claimedPiece, giveBack.bytes - at));
        std::this_thread::sleep_for(timesAsLong * (Clock::now() - begin));
    }
    unmapBlock(block, giveBack.bytes);
    --blocksGoingBack;
}

// The block from so many bytes on has pages still.
void giveBackRest(char* block, std::size_t bytes, std::size_t emptied) {
    if (emptied < bytes) {
        auto* const job = new (block) GiveBack{{giveBackSlowly}, bytes, emptied};
        ++blocksGoingBack;
        if (startThread(*job)) return;
        --blocksGoingBack;
    }
    unmapBlock(block, bytes);
}

} // namespace

void* allocateZeroed(std::size_t bytes) {
    for (;;) {
        const bool mayHaveMore = blocksGoingBack > 0;
        void* const block = mapBlock(bytes);
        if (block != nullptr || !mayHaveMore) return block;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void* emptyBlock(void* block, std::size_t bytes) {
    char* const old = static_cast<char*>(block);
    const std::size_t emptied = emptyForAWhile(old, bytes);
    if (emptied == bytes) return block;
    void* const fresh = mapBlock(bytes);
    if (fresh == nullptr) {
        emptyPages(old + emptied, bytes - emptied);
        return block;
    }
    giveBackRest(old, bytes, emptied);
    return fresh;
}

void freeBlock(void* block, std::size_t bytes) {
    if (block == nullptr) return;
    char* const old = static_cast<char*>(block);
    giveBackRest(old, bytes, emptyForAWhile(old, bytes));
}

} // namespace helvan
