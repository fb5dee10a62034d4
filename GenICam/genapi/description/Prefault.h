// SPDX-License-Identifier: Apache-2.0
// Memory that is about to be filled, asked for at once.
#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KxGenApi
{

constexpr size_t kHugePage = 2u << 20;

/// Makes the pages within a block present. The first touch of each page would interrupt the program; a
/// program that loads one description and little else spends a third of its time there. Whole pages of 2 MiB
/// are asked for where the block has room for them: each costs half of its 512 small ones, and the processor
/// finds what lies in it sooner. Only a hint: fails silently.
inline void Prefault(void* block, size_t bytes) noexcept
{
#ifdef MADV_POPULATE_WRITE
    const auto advise = [=](uintptr_t page, int advice) {
        const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + page - 1) & ~(page - 1);
        const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + bytes) & ~(page - 1);
        if (begin < end)
            madvise(reinterpret_cast<void*>(begin), end - begin, advice);
    };
    advise(kHugePage, MADV_HUGEPAGE);
    advise(4096, MADV_POPULATE_WRITE);
#else
    static_cast<void>(block), static_cast<void>(bytes);
#endif
}

/// Room for that many elements, at once.
template <typename T>
void ReservePresent(std::vector<T>& elements, size_t count)
{
    elements.reserve(count);
    Prefault(elements.data(), count * sizeof(T));
}

} // namespace KxGenApi
