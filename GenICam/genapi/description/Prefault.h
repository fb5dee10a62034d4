// SPDX-License-Identifier: Apache-2.0
// Memory that is about to be filled, asked for at once.
#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>

namespace KxGenApi
{

/// Makes the pages within a block present. The first touch of each page would interrupt the program; a
/// program that loads one description and little else spends a third of its time there. Only a hint: fails
/// silently.
inline void Prefault(void* block, size_t bytes) noexcept
{
#ifdef MADV_POPULATE_WRITE
    constexpr uintptr_t kPage = 4096;
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + kPage - 1) & ~(kPage - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + bytes) & ~(kPage - 1);
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
#else
    static_cast<void>(block), static_cast<void>(bytes);
#endif
}

} // namespace KxGenApi
