// SPDX-License-Identifier: MIT
//
// Counting the paths of the move tree: the check of move generation against published numbers.
#pragma once

#include <cstdint>

#include "board/position.h"

namespace helvan {

// Raised by perft and never reset by it.
struct PerftCounters {
    std::uint64_t moves = 0;     // legal moves made, at every level
    std::uint64_t castlings = 0; // of the moves into the leaves
};

// The number of legal move sequences of the given length (0 or more).
std::uint64_t perft(const Position& position, int depth, PerftCounters& counters);

// The same, printing a dot for every legal root move unless quiet is non-zero.
std::uint64_t perftRoot(const Position& position, int depth, int quiet, PerftCounters& counters);

} // namespace helvan
