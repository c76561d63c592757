// SPDX-License-Identifier: MIT
//
// How much of a material advantage counts where little material is left.
#pragma once

#include <cstdint>

#include "board/types.h"

namespace helvan {

inline constexpr int fullScale = 1000; // per mille

// value / divisor, rounded half away from zero.
template <int divisor> constexpr std::int64_t roundedQuotient(std::int64_t value) {
    static_assert(divisor > 0 && divisor % 2 == 0);
    return (value + (value < 0 ? -divisor : divisor) / 2) / divisor;
}

// value x scale / 1000, rounded half away from zero.
constexpr std::int64_t scaled(std::int64_t value, int scale) {
    return scale == fullScale ? value : roundedQuotient<fullScale>(value * scale);
}

// One side's material, as scaling looks at it.
struct ScaledSide {
    int pieceWeight; // the sum of pieceWeights
    int pawnCount;
    int passedCount;
};

struct OppositeBishopScale {
    int scale;          // per mille
    bool materialRules; // whether the rules of scarce material apply besides
};

// For an odd number of bishops a side, on squares of both colours, and other pieces or none. Sides by colour; stronger
// is the colour ahead, phase 0..96.
OppositeBishopScale oppositeBishopScale(const ScaledSide (&sides)[2], Colour stronger, int phase);

// The scale, per mille, of the first rule of scarce material that applies.
int scarceMaterialScale(const ScaledSide (&sides)[2], Colour stronger);

} // namespace helvan
