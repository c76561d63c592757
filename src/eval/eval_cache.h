// SPDX-License-Identifier: MIT
//
// Finished evaluations by position key.
#pragma once

#include <array>
#include <cstdint>

#include "board/keys.h"

namespace helvan {

struct EvalCacheEntry {
    Key key = 0;
    std::int32_t score = 0; // centipawns, as evaluate answers them
};

inline constexpr Key evalCacheMask = 4095;

// Direct-mapped; a newer position always takes the slot. Never cleared: after a change of parameters a score of the
// old ones may be answered until its slot is taken.
inline std::array<EvalCacheEntry, evalCacheMask + 1> evalCache;

} // namespace helvan
