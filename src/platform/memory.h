// SPDX-License-Identifier: MIT
//
// Memory for large tables, which systems hand out page by page. A page costs its time when it is first touched: a small
// one microseconds, a huge one up to many milliseconds, but huge ones make every later access faster. So blocks begin
// with small pages, and whoever has time claims huge ones in their place.
#pragma once

#include <cstddef>

namespace helvan {

// Blocks are claimed in pieces of this many bytes, counted from their beginning; the last one may be shorter.
inline constexpr std::size_t claimedPiece = std::size_t{2} << 20;

// A block of zeros, aligned to cache lines and, if it is as large, to claimed pieces; null when the system refuses it.
// Takes no time, whatever its size: pages are found when they are first touched. Only where memory is short it waits
// until all that freeBlock has promised to the system is given back.
void* allocateZeroed(std::size_t bytes);

// Has the system find the pages of a piece of such a block now, one huge page where it offers them. What the piece
// holds stays. Nobody else may be writing to it. Takes some milliseconds.
void claimPiece(void* piece, std::size_t bytes);

// Answers a block of zeros in place of this one, which is no more to be used unless it is the answer. Nothing of it is
// claimed. Takes some milliseconds: what the system has not taken back by then, a thread gives back later. Only where
// memory is too short for a second block it takes as long as it takes.
void* emptyBlock(void* block, std::size_t bytes);

// Gives a block back, in the same way; null is allowed.
void freeBlock(void* block, std::size_t bytes);

} // namespace helvan
