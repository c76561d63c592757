// SPDX-License-Identifier: MIT
//
// Work on many positions in several threads. Sums are taken slice by slice and then over the slices in order, however
// many threads share the work: so rounding, and with it the outcome, is the same for any number of threads.
#pragma once

#include <cstddef>
#include <thread>
#include <vector>

namespace helvan {

inline constexpr std::size_t sliceCount = 16;

struct Range {
    std::size_t first;
    std::size_t end;
};

// Calls work(slice, its part of the range) for every slice.
template <typename Work> void forSlices(Range range, int threads, Work work) {
    const std::size_t size = range.end - range.first;
    const auto beginOf = [&](std::size_t slice) { return range.first + size * slice / sliceCount; };
    const auto share = [&](std::size_t first) {
        for (std::size_t slice = first; slice < sliceCount; slice += static_cast<std::size_t>(threads)) {
            work(slice, Range{beginOf(slice), beginOf(slice + 1)});
        }
    };
    std::vector<std::thread> others;
    for (int i = 1; i < threads; ++i) others.emplace_back(share, static_cast<std::size_t>(i));
    share(0);
    for (std::thread& other : others) other.join();
}

} // namespace helvan
