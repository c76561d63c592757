// SPDX-License-Identifier: MIT
#pragma once

#include <array>

namespace helvan {

// An array that takes the last entry for every index beyond it: counts that no game reaches stay inside.
template <typename Value, int size> struct ClampedTable {
    std::array<Value, size> entries{};

    const Value& operator[](int index) const { return entries[index < size ? index : size - 1]; }
};

} // namespace helvan
