// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The one sentence by which a value out of its range is told: its name, the value and the limit.

#include <Base/GCException.h>

namespace GenICam
{
/// How a value has to stand to its limit.
enum ERangeLimit
{
    rlBelowMax, ///< smaller than the limit
    rlUpToMax,  ///< the limit at most
    rlFromMin,  ///< the limit at least
    rlAboveMin, ///< greater than the limit
};

namespace Detail
{
inline bool IsWithin(ERangeLimit limit, long long value, long long bound) noexcept
{
    switch (limit) {
    case rlBelowMax:
        return value < bound;
    case rlUpToMax:
        return value <= bound;
    case rlFromMin:
        return value >= bound;
    case rlAboveMin:
        break;
    }
    return value > bound;
}

/// Raises OutOfRangeException, told from `file` and `line`, unless the value stands as it has to.
inline void CheckRange(ERangeLimit limit, const char* name, long long value, long long bound,
                       const char* file, int line)
{
    if (IsWithin(limit, value, bound))
        return;
    static const char* const kHow[] = {"smaller than Max", "equal or smaller than Max",
                                       "equal or greater than Min", "greater than Min"};
    throw ExceptionReporter<OutOfRangeException>(file, line, "OutOfRangeException")
        .Report("%s = %lld must be %s = %lld", name, value, kHow[limit], bound);
}
} // namespace Detail
} // namespace GenICam

/// Raises OutOfRangeException, such as "nIndex = 7 must be smaller than Max = 4", unless the value stands to
/// the bound as `limit`, one of ERangeLimit, says. Both are compared as signed 64-bit numbers.
#define KXGC_CHECK_RANGE(limit, name, value, bound)                                                          \
    ::GenICam::Detail::CheckRange(::GenICam::limit, name, static_cast<long long>(value),                     \
                                  static_cast<long long>(bound), KXGC_SOURCE_FILE, __LINE__)
