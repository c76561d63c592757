// SPDX-License-Identifier: MIT
//
// Make-move counts the search's nodes here and raises the stop flag when the limit is reached. What the limit
// is, and when it may be overrun, is the search's policy.
#pragma once

#include <cstdint>

namespace helvan {

struct NodeCounter {
    static constexpr std::uint64_t unlimited = ~std::uint64_t{0};

    std::uint64_t count = 0;
    std::uint64_t limit = unlimited;
    int overrideLimit = 0; // 1: count on beyond the limit
    int stopSearch = 0;    // 1: the search unwinds; also set by "stop" and by the clock
};

inline NodeCounter nodeCounter;

inline void countNode(NodeCounter& counter) {
    if (counter.stopSearch != 0) return;
    if (counter.count < counter.limit || counter.overrideLimit != 0) {
        ++counter.count;
    } else {
        counter.stopSearch = 1;
    }
}

} // namespace helvan
