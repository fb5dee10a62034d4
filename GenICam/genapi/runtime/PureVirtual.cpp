// SPDX-License-Identifier: Apache-2.0
// What the empty places of abstract classes' tables call. A library that brings its own has them filled in
// when it is linked, and not, 1,900 of them, whenever a program starts.
#include <cstdio>
#include <exception>

extern "C" [[noreturn]] __attribute__((visibility("hidden"))) void KxGenApiPureVirtual() noexcept
    __asm__("__cxa_pure_virtual");

void KxGenApiPureVirtual() noexcept
{
    std::fputs("pure virtual method called\n", stderr);
    std::terminate();
}
