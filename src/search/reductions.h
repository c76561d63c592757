// SPDX-License-Identifier: MIT
//
// How much less deep late moves are searched. The move number decides: from two half-plies on the depth makes no
// difference.
#pragma once

#include <array>
#include <cstdint>

#include "board/bits.h"

namespace helvan {

inline constexpr int reductionColumns = 400; // move numbers; later moves are reduced like the last one
inline constexpr int leastReducedDepth = 2;  // half-plies

using ReductionTable = std::array<std::uint8_t, reductionColumns>;

// The steps that move numbers fall into when each is twice as long as the one before: the first of them below the
// given number, the second below twice that number, ... and the last from there on.
constexpr ReductionTable doublingSteps(int first, const std::array<std::uint8_t, 6>& steps) {
    ReductionTable table{};
    for (int number = 0; number < reductionColumns; ++number) {
        unsigned step = 0;
        while (step + 1 < steps.size() && number >= first << step) ++step;
        table[number] = steps[step];
    }
    return table;
}

inline constexpr ReductionTable lmrTable = doublingSteps(3, {0, 2, 4, 6, 8, 10});
inline constexpr ReductionTable pvTable = doublingSteps(5, {0, 2, 3, 4, 5, 6});

// Half-plies by which the search of a move is shortened, at zero-window and at principal-variation nodes. depth in
// half-plies, move number from 1; as large as they like.
constexpr int lmrReduction(int depth, int moveNumber) {
    return depth < leastReducedDepth ? 0 : lmrTable[minimum(moveNumber, reductionColumns - 1)];
}
constexpr int pvReduction(int depth, int moveNumber) {
    return depth < leastReducedDepth ? 0 : pvTable[minimum(moveNumber, reductionColumns - 1)];
}

} // namespace helvan
