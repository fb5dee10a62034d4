// SPDX-License-Identifier: Apache-2.0
// Lets one allocation of this thread fail. Apart from the tests, as the compiler would see through new and
// free.
#include <cstdlib>
#include <new>

namespace KxTest
{
// The allocation that fails, counted from here; 0 for none.
thread_local int nFailingAllocation = 0;
} // namespace KxTest

void* operator new(size_t nSize, const std::nothrow_t&) noexcept
{
    if (KxTest::nFailingAllocation > 0 && --KxTest::nFailingAllocation == 0)
        return nullptr;
    return std::malloc(nSize == 0 ? 1 : nSize);
}

void* operator new(size_t nSize)
{
    if (void* const pMemory = operator new(nSize, std::nothrow))
        return pMemory;
    throw std::bad_alloc();
}

void operator delete(void* pMemory) noexcept { std::free(pMemory); }
void operator delete(void* pMemory, size_t) noexcept { std::free(pMemory); }
