// SPDX-License-Identifier: Apache-2.0
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "converter/RowSplit.cpp"
#include "RowKernels.h"

// The order matters.
// clang-format off
#include <hwy/foreach_target.h> // compiles this file once for each instruction set
#include <hwy/highway.h>

#include "RowSteps-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace KxApi
{
namespace Detail
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

template <class T>
constexpr Kernel<T* const*> kSplit[10] = {};

#else

template <class T>
HWY_INLINE const T* As(const uint8_t* pBytes)
{
    return reinterpret_cast<const T*>(pBytes);
}

/// Values of a line in steps of kValues vectors, of which each becomes kPixels vectors of pixels.
template <class T, size_t kValues, size_t kPixels, class Body>
HWY_INLINE void ForVectors(const CPackedRow& source, const Body& body)
{
    const size_t nLanes = hn::Lanes(hn::ScalableTag<T>());
    const size_t nStep = kValues * nLanes * sizeof(T);
    ForSteps(source, kValues * nLanes, nStep, nStep, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        body(As<T>(pBytes), nAt / kValues * kPixels);
    });
}

template <class T>
HWY_INLINE void Three(const CPackedRow& source, T* const* apRows)
{
    const hn::ScalableTag<T> d;
    ForVectors<T, 3, 1>(source, [&](const T* pValues, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1, v2;
        hn::LoadInterleaved3(d, pValues, v0, v1, v2);
        hn::StoreU(v0, d, apRows[0] + x);
        hn::StoreU(v1, d, apRows[1] + x);
        hn::StoreU(v2, d, apRows[2] + x);
    });
}

template <class T>
HWY_INLINE void Four(const CPackedRow& source, T* const* apRows)
{
    const hn::ScalableTag<T> d;
    ForVectors<T, 4, 1>(source, [&](const T* pValues, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1, v2, v3;
        hn::LoadInterleaved4(d, pValues, v0, v1, v2, v3);
        hn::StoreU(v0, d, apRows[0] + x);
        hn::StoreU(v1, d, apRows[1] + x);
        hn::StoreU(v2, d, apRows[2] + x);
        hn::StoreU(v3, d, apRows[3] + x);
    });
}

/// kFirstLuma: the place of the first luma among the four values.
template <int kFirstLuma, class T>
HWY_INLINE void LumaChroma(const CPackedRow& source, T* const* apRows)
{
    const hn::ScalableTag<T> d;
    ForVectors<T, 4, 2>(source, [&](const T* pValues, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1, v2, v3;
        hn::LoadInterleaved4(d, pValues, v0, v1, v2, v3);
        const auto cb = kFirstLuma == 0 ? v1 : v0;
        const auto cr = kFirstLuma == 0 ? v3 : v2;
        hn::StoreInterleaved2(kFirstLuma == 0 ? v0 : v1, kFirstLuma == 0 ? v2 : v3, d, apRows[0] + x);
        hn::StoreInterleaved2(cb, cb, d, apRows[1] + x);
        hn::StoreInterleaved2(cr, cr, d, apRows[2] + x);
    });
}

/// Two luma and one chroma of four pixels, twice; kChroma: its place among the three.
template <int kChroma, class T>
HWY_INLINE void LumaLumaChroma(const CPackedRow& source, T* const* apRows)
{
    const hn::ScalableTag<T> d;
    const hn::RepartitionToWide<decltype(d)> dPair;
    constexpr int kBits = 8 * sizeof(T);
    using Wide = hn::TFromD<decltype(dPair)>;
    const auto low = hn::Set(dPair, static_cast<Wide>((Wide{1} << kBits) - 1));
    ForVectors<T, 3, 2>(source, [&](const T* pValues, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1, v2;
        hn::LoadInterleaved3(d, pValues, v0, v1, v2);
        hn::StoreInterleaved2(kChroma == 0 ? v1 : v0, kChroma == 0 ? v2 : v1, d, apRows[0] + x);
        const auto chroma = hn::BitCast(dPair, kChroma == 0 ? v0 : v2); // Cb below Cr
        const auto store = [&](auto value, T* pRow) HWY_ATTR {
            const auto twice = hn::Or(value, hn::ShiftLeft<kBits>(value));
            hn::StoreInterleaved2(twice, twice, dPair, reinterpret_cast<Wide*>(pRow));
        };
        store(hn::And(chroma, low), apRows[1] + x);
        store(hn::ShiftRight<kBits>(chroma), apRows[2] + x);
    });
}

/// Each value is that of two pixels.
template <class T>
HWY_INLINE void Shared(const CPackedRow& source, T* const* apRows)
{
    const hn::ScalableTag<T> d;
    ForVectors<T, 1, 2>(source, [&](const T* pValues, size_t x) HWY_ATTR {
        const auto v = hn::LoadU(d, pValues);
        hn::StoreInterleaved2(v, v, d, apRows[0] + x);
    });
}

/// Two values are those of two pixels.
template <class T>
HWY_INLINE void SharedPair(const CPackedRow& source, T* const* apRows)
{
    const hn::ScalableTag<T> d;
    ForVectors<T, 2, 2>(source, [&](const T* pValues, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1;
        hn::LoadInterleaved2(d, pValues, v0, v1);
        hn::StoreInterleaved2(v0, v0, d, apRows[0] + x);
        hn::StoreInterleaved2(v1, v1, d, apRows[1] + x);
    });
}

template <class T>
constexpr Kernel<T* const*> kSplit[] = {
    nullptr,
    Three<T>,
    Four<T>,
    LumaChroma<0, T>,
    LumaChroma<1, T>,
    LumaLumaChroma<2, T>,
    LumaLumaChroma<0, T>,
    nullptr,
    Shared<T>,
    SharedPair<T>,
};

#endif

void SplitBytes(EOrder order, const CPackedRow& source, uint8_t* const* apRows)
{
    RunKernel(kSplit<uint8_t>, order, source, apRows);
}
void SplitWords(EOrder order, const CPackedRow& source, uint16_t* const* apRows)
{
    RunKernel(kSplit<uint16_t>, order, source, apRows);
}

} // namespace HWY_NAMESPACE
} // namespace Detail
} // namespace KxApi
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace KxApi
{
namespace Detail
{

HWY_EXPORT(SplitBytes);
HWY_EXPORT(SplitWords);

void SplitRow(EOrder order, const CPackedRow& source, uint8_t* const* apRows)
{
    HWY_DYNAMIC_DISPATCH(SplitBytes)(order, source, apRows);
}
void SplitRow(EOrder order, const CPackedRow& source, uint16_t* const* apRows)
{
    HWY_DYNAMIC_DISPATCH(SplitWords)(order, source, apRows);
}

} // namespace Detail
} // namespace KxApi
#endif
