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
/// For comparing: numbers beyond those of 64 bits with a sign count as the largest of them.
template <class T>
long long RangeNumber(T value) noexcept
{
    const long long number = static_cast<long long>(value);
    return number < 0 && value > static_cast<T>(0) ? 0x7FFFFFFFFFFFFFFFLL : number;
}

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

[[noreturn]] inline void RaiseRange(ERangeLimit limit, const char* name, long long value, long long bound,
                                    const char* file, int line)
{
    static const char* const kHow[] = {"smaller than Max", "equal or smaller than Max",
                                       "equal or greater than Min", "greater than Min"};
    throw ExceptionReporter<OutOfRangeException>(file, line, "OutOfRangeException")
        .Report("%s = %lld must be %s = %lld", name, value, kHow[limit], bound);
}

/// Raises OutOfRangeException, told from `file` and `line`, unless the value stands as it has to.
template <class T, class U>
void CheckRange(ERangeLimit limit, const char* name, T value, U bound, const char* file, int line)
{
    if (!IsWithin(limit, RangeNumber(value), RangeNumber(bound)))
        RaiseRange(limit, name, static_cast<long long>(value), static_cast<long long>(bound), file, line);
}
} // namespace Detail
} // namespace GenICam

/// Raises OutOfRangeException, such as "nIndex = 7 must be smaller than Max = 4", unless the value stands to
/// the bound as `limit`, one of ERangeLimit, says. Whole numbers and enumerators of any type.
#define KXGC_CHECK_RANGE(limit, name, value, bound)                                                          \
    ::GenICam::Detail::CheckRange(::GenICam::limit, name, value, bound, KXGC_SOURCE_FILE, __LINE__)
