// SPDX-License-Identifier: MIT
//
// What the fuzzing programs share: small searches, and bytes taken apart.
#pragma once

#include <cstdint>
#include <string>

#include "board/attacks.h"
#include "search/limits.h"
#include "search/rebuild.h"
#include "search/settings.h"
#include "search/transposition_table.h"

namespace helvan::fuzz {

inline constexpr int smallHash = 1;                   // megabytes
inline constexpr std::uint64_t fewNodes = 500;        // of a search
inline constexpr std::uint64_t mostUninterrupted = 0; // depth 1 may be interrupted: boards full of queens are common

// Once a process.
inline void prepareEngine() {
    initSlidingAttacks();
    rebuildTables();
    hashMegabytes = smallHash;
    deterministic = 1; // what one input leaves behind must not matter to the next
    transpositionTable.allocate(hashMegabytes);
    uninterruptedNodes = mostUninterrupted;
}

inline std::string textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace helvan::fuzz
