// SPDX-License-Identifier: Apache-2.0
// Allocations of the program and its libraries, for programs with Allocations.cpp.
#pragma once

#include <cstddef>

namespace KxTest
{

/// Times that operator new was called.
size_t AllocationCount();

/// The allocation of this thread that fails, counted from here; 0 for none.
extern thread_local int g_failingAllocation;

} // namespace KxTest
