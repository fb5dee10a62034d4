// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// What differs between machines.

#include <climits>

/// Length modifier for 64-bit integers in printf formats, used as "%" FMT_I64 "d".
#if LONG_MAX > 0x7fffffff
#define FMT_I64 "l"
#else
#define FMT_I64 "ll"
#endif
