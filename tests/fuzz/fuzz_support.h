// SPDX-License-Identifier: MIT
//
// What the fuzzing programs share: small searches, and bytes taken apart.
#pragma once

#include <cstdint>
#include <string>

#include "board/attacks.h"
#include "search/tables.h"

namespace helvan::fuzz {

inline constexpr int smallHash = 1;            // megabytes
inline constexpr std::uint64_t fewNodes = 500; // of a search

inline SearchTables& tables() {
    static SearchTables all;
    return all;
}

// Once a process.
inline void prepareEngine() {
    initSlidingAttacks();
    rebuildTables(tables());
    tables().transpositionTable.allocate(smallHash);
}

inline std::string textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace helvan::fuzz
