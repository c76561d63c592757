// SPDX-License-Identifier: MIT
#include "search/large_memory.h"

#include <sys/mman.h>

namespace helvan {

void* allocateZeroed(std::size_t bytes) {
    void* block = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED) return nullptr;
    madvise(block, bytes, MADV_HUGEPAGE); // a wish: the table works without
    return block;
}

void freeZeroed(void* block, std::size_t bytes) {
    if (block != nullptr) munmap(block, bytes);
}

} // namespace helvan
