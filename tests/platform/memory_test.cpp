// SPDX-License-Identifier: MIT
#include "platform/memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace helvan::testing {

namespace {

constexpr std::size_t page = 4096;

// Whether each page of the block begins with the value.
bool holds(const char* block, std::size_t bytes, char value) {
    for (std::size_t at = 0; at < bytes; at += page) {
        if (block[at] != value) return false;
    }
    return true;
}

void fill(char* block, std::size_t bytes, char value) {
    for (std::size_t at = 0; at < bytes; at += page) block[at] = value;
}

} // namespace

// The largest block has more pages than the system takes back at once: a thread takes over, and others come meanwhile.
TEST(Memory, BlocksAreZeroAndKeepWhatIsWrittenThroughEverything) {
    std::vector<char*> filled;
    constexpr std::size_t sizes[] = {4096, claimedPiece, 3 * claimedPiece + 4096, 160 * claimedPiece};
    for (const std::size_t bytes : sizes) {
        char* block = static_cast<char*>(allocateZeroed(bytes));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % (bytes < claimedPiece ? 64 : claimedPiece), 0U);
        for (const bool claims : {false, true, false}) {
            EXPECT_TRUE(holds(block, bytes, 0)) << bytes;
            fill(block, bytes, 'x');
            for (std::size_t at = 0; claims && at < bytes; at += claimedPiece) {
                claimPiece(block + at, std::min(claimedPiece, bytes - at));
            }
            EXPECT_TRUE(holds(block, bytes, 'x')) << bytes;
            block = static_cast<char*>(emptyBlock(block, bytes));
        }
        fill(block, bytes, 'y');
        filled.push_back(block);
    }
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(holds(filled[i], sizes[i], 'y'));
        freeBlock(filled[i], sizes[i]);
    }
    freeBlock(nullptr, 4096);
}

} // namespace helvan::testing
