// SPDX-License-Identifier: Apache-2.0
// What holds for one setting: its row.
#pragma once

#include <Base/GCCheckRange.h>
#include <GenApi/IBase.h>

#include <cstdint>
#include <type_traits>

namespace KxApi
{

/// Ways of a setting, where they aren't the usual ones of register parameters: a write through the port
/// stores whatever comes and always shows it; a call of the setter checks, compares, stores, shows and then
/// invalidates the node.
enum ERegisterFlags : uint32_t
{
    /// The register answers at its very address only, and not in its middle.
    KxRegister_Exact = 1U << 0,
    /// A write does what the setter does, but for invalidating.
    KxRegister_WritesSet = 1U << 1,
    /// The setter invalidates before it shows.
    KxRegister_InvalidatesFirst = 1U << 2,
    /// The present value passes, whatever the range says.
    KxRegister_PresentPasses = 1U << 3,
    /// The present value is told as a change too.
    KxRegister_AlwaysTold = 1U << 4,
    /// The port passes over what is written, whatever the node says.
    KxRegister_WritesDropped = 1U << 5,
    /// What the setter sets is seen at the next refresh; only a write shows it.
    KxRegister_WritesShow = 1U << 6,

    /// The settings of the image window.
    KxRegister_Setting = KxRegister_Exact | KxRegister_WritesSet | KxRegister_InvalidatesFirst,
    /// A limit or a state that is only told.
    KxRegister_Told = KxRegister_Exact | KxRegister_WritesDropped,
};

/// A register as the feature map has it, and what has to be done when it changes.
struct CRegisterRow
{
    int64_t nAddress;
    /// Node to invalidate when the application sets the value; null for none.
    const char* szNode = nullptr;
    /// What shows the value: kinds of the client's OnSettingChanged.
    uint32_t nUpdate = 0;
    uint32_t nFlags = 0;
    GenApi::EAccessMode eAccessMode = GenApi::RW;

    bool Has(ERegisterFlags eFlag) const { return (nFlags & eFlag) != 0; }
};

/// The whole numbers and enumerators that a setting takes. Without a minimum a negative one counts as the
/// large number that its bits are.
struct CNumberRange
{
    const char* szName = nullptr; ///< by which errors tell it; null: anything goes
    bool bHasMin = false;
    long long nMin = 0;
    GenICam::ERangeLimit eMax = GenICam::rlUpToMax;
    long long nMax = 0;

    template <class T>
    void Check(T value, const char* szFile, int nLine) const
    {
        if (!szName)
            return;
        auto nValue = static_cast<long long>(value);
        if (bHasMin)
            GenICam::Detail::CheckRange(GenICam::rlFromMin, szName, nValue, nMin, szFile, nLine);
        else if constexpr (sizeof(T) <= sizeof(uint32_t))
            nValue = static_cast<long long>(static_cast<uint32_t>(value));
        GenICam::Detail::CheckRange(eMax, szName, nValue, nMax, szFile, nLine);
    }
};

/// The floating point numbers that a setting takes; NaN is none of them.
struct CFloatRange
{
    const char* szName = nullptr;
    double dMin = 0.0;
    double dMax = 0.0;

    void Check(double dValue, const char* szFile, int nLine) const
    {
        const auto refuse = [&](const char* szHow, double dLimit) {
            throw GenICam::ExceptionReporter<GenICam::OutOfRangeException>(szFile, nLine,
                                                                           "OutOfRangeException")
                .Report("%s = %f must be %s than or equal %f", szName, dValue, szHow, dLimit);
        };
        if (szName && !(dValue >= dMin)) // so that NaN is refused as well
            refuse("greater", dMin);
        if (szName && dValue > dMax)
            refuse("smaller", dMax);
    }
};

template <class T>
using CRangeOf = std::conditional_t<std::is_floating_point_v<T>, CFloatRange, CNumberRange>;

constexpr CNumberRange Below(const char* szName, long long nMax)
{
    return {szName, false, 0, GenICam::rlBelowMax, nMax};
}
constexpr CNumberRange UpTo(const char* szName, long long nMax)
{
    return {szName, false, 0, GenICam::rlUpToMax, nMax};
}
constexpr CNumberRange FromBelow(const char* szName, long long nMin, long long nMax)
{
    return {szName, true, nMin, GenICam::rlBelowMax, nMax};
}
constexpr CNumberRange FromTo(const char* szName, long long nMin, long long nMax)
{
    return {szName, true, nMin, GenICam::rlUpToMax, nMax};
}
constexpr CFloatRange FromTo(const char* szName, double dMin, double dMax) { return {szName, dMin, dMax}; }

/// The type on the wire: 4 bytes, but 8 for what has them.
template <class T>
using CWireType = std::conditional_t<std::is_floating_point_v<T>, T,
                                     std::conditional_t<sizeof(T) == 8, uint64_t, uint32_t>>;

} // namespace KxApi
