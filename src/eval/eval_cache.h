// SPDX-License-Identifier: MIT
//
// Finished evaluations by position key.
#pragma once

#include <array>

#include "board/keys.h"

namespace helvan {

struct EvalCacheEntry {
    Key key = 0;
    std::int32_t score = 0; // centipawns, as evaluate answers them
};

inline constexpr Key evalCacheMask = 4095;

// Direct-mapped; a newer position always takes the slot. Never cleared, deliberately: after a change of parameters
// an old score may be answered until its slot is taken.
inline std::array<EvalCacheEntry, evalCacheMask + 1> evalCache;

} // namespace helvan
