// SPDX-License-Identifier: MIT
//
// Large zeroed blocks from the operating system.
#pragma once

#include <cstddef>

namespace helvan {

// A block of zeros, aligned to cache lines, on huge pages where the system offers them; null when refused. Pages are
// not touched before they are used.
void* allocateZeroed(std::size_t bytes);

// Gives a block of that size back; null is allowed.
void freeZeroed(void* block, std::size_t bytes);

} // namespace helvan
