// SPDX-License-Identifier: Apache-2.0
// Apart from the tests, for the compiler would see through the pair of new and free otherwise, and take it
// for a mistake.
#include "Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace KxTest
{
namespace
{
std::atomic<size_t> g_count{0};
}

thread_local int g_failingAllocation = 0;

size_t AllocationCount() { return g_count; }

} // namespace KxTest

void* operator new(size_t size, const std::nothrow_t&) noexcept
{
    ++KxTest::g_count;
    if (KxTest::g_failingAllocation > 0 && --KxTest::g_failingAllocation == 0)
        return nullptr;
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
