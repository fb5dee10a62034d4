// SPDX-License-Identifier: Apache-2.0
// Counts what the test program and its libraries allocate. Apart from the tests, for the compiler would see
// through the pair of new and free otherwise, and take it for a mistake.

#include "ConverterTestSupport.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{
std::atomic<size_t> g_count{0};
}

void* operator new(size_t size, const std::nothrow_t&) noexcept
{
    ++g_count;
    return std::malloc(size == 0 ? 1 : size);
}

void* operator new(size_t size)
{
    if (void* const memory = operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }

namespace KxTest
{
size_t AllocationCount() { return g_count; }
} // namespace KxTest
