// SPDX-License-Identifier: Apache-2.0
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "converter/RowColor.cpp"
#include "RowKernels.h"

// The order matters.
// clang-format off
#include <hwy/foreach_target.h> // compiles this file once for each instruction set
#include <hwy/highway.h>

#include "RowSteps-inl.h"
// clang-format on

#ifndef KXAPI_IP_GREY_WEIGHTS
#define KXAPI_IP_GREY_WEIGHTS
namespace KxApi
{
namespace Detail
{
namespace
{

// 0.299, 0.587 and 0.114 of 32768.
constexpr uint32_t kRedWeight = 9798, kGreenWeight = 19235, kBlueWeight = 3735;

/// The same as multiples of 256 and rests, and a half of the result's unit.
struct CGreyWeights
{
    int16_t anHigh[3];
    int16_t anLow[3];
    int16_t nHalfHigh;

    constexpr bool IsSum(size_t nColor, uint32_t nWeight) const
    {
        return anHigh[nColor] * 256 + anLow[nColor] == static_cast<int>(nWeight);
    }
};

} // namespace
} // namespace Detail
} // namespace KxApi
#endif

HWY_BEFORE_NAMESPACE();
namespace KxApi
{
namespace Detail
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

template <class T>
HWY_INLINE void ApplyMatrix(const CYccMatrix& matrix, T* const* apRows, size_t nWidth)
{
    const hn::ScalableTag<int32_t> d;
    const hn::Rebind<T, decltype(d)> dT;
    const auto yOffset = hn::Set(d, matrix.nYOffset);
    const auto chromaOffset = hn::Set(d, matrix.nChromaOffset);
    const auto zero = hn::Zero(d);
    const auto max = hn::Set(d, matrix.nMax);
    const auto half = hn::Set(d, 1 << 15);
    T* HWY_RESTRICT const p0 = apRows[0];
    T* HWY_RESTRICT const p1 = apRows[1];
    T* HWY_RESTRICT const p2 = apRows[2];
    for (size_t x = 0; x < nWidth; x += hn::Lanes(d)) {
        const auto y = hn::Sub(hn::PromoteTo(d, hn::LoadU(dT, p0 + x)), yOffset);
        const auto cb = hn::Sub(hn::PromoteTo(d, hn::LoadU(dT, p1 + x)), chromaOffset);
        const auto cr = hn::Sub(hn::PromoteTo(d, hn::LoadU(dT, p2 + x)), chromaOffset);
        const auto light = hn::Add(hn::Mul(y, hn::Set(d, matrix.nY)), half);
        const auto store = [&](auto sum, T* pResult) HWY_ATTR {
            const auto value = hn::Min(hn::Max(hn::ShiftRight<16>(sum), zero), max);
            hn::StoreU(hn::DemoteTo(dT, value), dT, pResult);
        };
        store(hn::Add(light, hn::Mul(cr, hn::Set(d, matrix.nCrToR))), p0 + x);
        store(hn::Add(light, hn::Add(hn::Mul(cb, hn::Set(d, matrix.nCbToG)),
                                     hn::Mul(cr, hn::Set(d, matrix.nCrToG)))),
              p1 + x);
        store(hn::Add(light, hn::Mul(cb, hn::Set(d, matrix.nCbToB))), p2 + x);
    }
}

/// (nFactor * v) as its high half and its low one.
template <class D16>
struct CProduct
{
    hn::Vec<D16> high;
    hn::Vec<hn::RebindToUnsigned<D16>> low;

    HWY_INLINE CProduct(D16 d, hn::Vec<D16> v, int32_t nFactor)
        : high(hn::MulHigh(v, hn::Set(d, static_cast<int16_t>(nFactor))))
        , low(hn::BitCast(hn::RebindToUnsigned<D16>(), hn::Mul(v, hn::Set(d, static_cast<int16_t>(nFactor)))))
    {}
};

/// The same as ApplyMatrix where luma keeps its value: then only what chroma adds is rounded, which 16 bits
/// are enough for. Factors beyond 16 bits are split into a multiple of 65536 and a rest.
HWY_INLINE void ApplyMatrixToFullRange(const CYccMatrix& matrix, uint8_t* const* apRows, size_t nWidth)
{
    const hn::ScalableTag<int16_t> d;
    const hn::RebindToUnsigned<decltype(d)> dU;
    const hn::Rebind<uint8_t, decltype(d)> d8;
    const auto middle = hn::Set(d, int16_t{128});
    uint8_t* HWY_RESTRICT const p0 = apRows[0];
    uint8_t* HWY_RESTRICT const p1 = apRows[1];
    uint8_t* HWY_RESTRICT const p2 = apRows[2];
    for (size_t x = 0; x < nWidth; x += hn::Lanes(d)) {
        const auto y = hn::PromoteTo(d, hn::LoadU(d8, p0 + x));
        const auto cb = hn::Sub(hn::PromoteTo(d, hn::LoadU(d8, p1 + x)), middle);
        const auto cr = hn::Sub(hn::PromoteTo(d, hn::LoadU(d8, p2 + x)), middle);
        const CProduct<decltype(d)> red(d, cr, matrix.nCrToR - 65536);
        const CProduct<decltype(d)> blue(d, cb, matrix.nCbToB - 2 * 65536);
        const CProduct<decltype(d)> green1(d, cb, matrix.nCbToG);
        const CProduct<decltype(d)> green2(d, cr, matrix.nCrToG + 65536);
        const auto roundUp = [&](auto low) HWY_ATTR { return hn::BitCast(d, hn::ShiftRight<15>(low)); };
        // The low halves and a half make a carry of 0, 1 or 2; a quarter of their sum has room for it.
        const auto excess = hn::And(hn::Xor(green1.low, green2.low), hn::Set(dU, uint16_t{1}));
        const auto mean = hn::Sub(hn::AverageRound(green1.low, green2.low), excess);
        const auto carry =
            hn::ShiftRight<14>(hn::Add(hn::ShiftRight<1>(mean), hn::Set(dU, uint16_t{1 << 13})));
        const auto r = hn::Add(hn::Add(y, cr), hn::Add(red.high, roundUp(red.low)));
        const auto b = hn::Add(hn::Add(y, hn::Add(cb, cb)), hn::Add(blue.high, roundUp(blue.low)));
        const auto g =
            hn::Add(hn::Sub(y, cr), hn::Add(hn::Add(green1.high, green2.high), hn::BitCast(d, carry)));
        hn::StoreU(hn::DemoteTo(d8, r), d8, p0 + x);
        hn::StoreU(hn::DemoteTo(d8, g), d8, p1 + x);
        hn::StoreU(hn::DemoteTo(d8, b), d8, p2 + x);
    }
}

template <class T>
HWY_INLINE void ScaleLuma(const CYccMatrix& matrix, T* HWY_RESTRICT pRow, size_t nWidth)
{
    for (size_t x = 0; x < nWidth; ++x) {
        int32_t nValue = ((pRow[x] - matrix.nYOffset) * matrix.nY + (1 << 15)) >> 16;
        nValue = nValue < 0 ? 0 : nValue;
        pRow[x] = static_cast<T>(nValue > matrix.nMax ? matrix.nMax : nValue);
    }
}

template <class T>
HWY_INLINE void WeighColors(const T* const* apRows, size_t nWidth, T* HWY_RESTRICT pGrey)
{
    const T* HWY_RESTRICT const pRed = apRows[0];
    const T* HWY_RESTRICT const pGreen = apRows[1];
    const T* HWY_RESTRICT const pBlue = apRows[2];
    for (size_t x = 0; x < nWidth; ++x) {
        // The sum fits for 16 bits.
        const uint32_t nSum = pRed[x] * kRedWeight + pGreen[x] * kGreenWeight + pBlue[x] * kBlueWeight;
        pGrey[x] = static_cast<T>((nSum + (1U << 14)) >> 15);
    }
}

#if HWY_TARGET != HWY_SCALAR

/// By multiples of 256 and rests: their sums fit for 16 bits, and the cut takes nothing of the rests' low
/// eight bits.
class CGreyOfBytes
{
public:
    using D8 = hn::ScalableTag<uint8_t>;
    using DU = hn::RepartitionToWide<D8>;
    using D = hn::RebindToSigned<DU>;

    HWY_INLINE explicit CGreyOfBytes(const CGreyWeights& weights)
    {
        for (size_t i = 0; i < 3; ++i) {
            m_anHigh[i] = weights.anHigh[i];
            m_anLow[i] = weights.anLow[i];
        }
        m_nHalf = weights.nHalfHigh;
    }
    HWY_INLINE hn::Vec<D8> operator()(hn::Vec<D8> red, hn::Vec<D8> green, hn::Vec<D8> blue) const
    {
        const auto r = hn::BitCast(DU(), red), g = hn::BitCast(DU(), green), b = hn::BitCast(DU(), blue);
        const auto upper = Weigh(hn::ShiftRight<8>(r), hn::ShiftRight<8>(g), hn::ShiftRight<8>(b));
        const auto low = hn::Set(DU(), uint16_t{0xFF});
        const auto lower = Weigh(hn::And(r, low), hn::And(g, low), hn::And(b, low));
        return hn::BitCast(D8(), hn::Or(lower, hn::ShiftLeft<8>(upper)));
    }

private:
    HWY_INLINE hn::Vec<DU> Weigh(hn::Vec<DU> red, hn::Vec<DU> green, hn::Vec<DU> blue) const
    {
        const D d;
        const auto r = hn::BitCast(d, red), g = hn::BitCast(d, green), b = hn::BitCast(d, blue);
        const auto sum = [&](const int16_t* anWeights) HWY_ATTR {
            return hn::Add(
                hn::Add(hn::Mul(r, hn::Set(d, anWeights[0])), hn::Mul(g, hn::Set(d, anWeights[1]))),
                hn::Mul(b, hn::Set(d, anWeights[2])));
        };
        const auto all =
            hn::Add(hn::Add(sum(m_anHigh), hn::Set(d, m_nHalf)), hn::ShiftRight<8>(sum(m_anLow)));
        return hn::BitCast(DU(), hn::ShiftRight<7>(all));
    }

    int16_t m_anHigh[3];
    int16_t m_anLow[3];
    int16_t m_nHalf;
};

HWY_INLINE void WeighBytes(const uint8_t* const* apRows, size_t nWidth, uint8_t* pGrey,
                           const CGreyWeights& weights)
{
    const CGreyOfBytes grey(weights);
    const CGreyOfBytes::D8 d;
    for (size_t x = 0; x < nWidth; x += hn::Lanes(d))
        hn::StoreU(
            grey(hn::LoadU(d, apRows[0] + x), hn::LoadU(d, apRows[1] + x), hn::LoadU(d, apRows[2] + x)), d,
            pGrey + x);
}

/// The same for pixels of three bytes.
HWY_INLINE void WeighPixels(const CPackedRow& source, bool isRedFirst, uint8_t* pGrey,
                            const CGreyWeights& weights)
{
    const CGreyOfBytes grey(weights);
    const CGreyOfBytes::D8 d;
    const size_t nStep = 3 * hn::Lanes(d);
    ForSteps(source, nStep, nStep, nStep, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        hn::Vec<CGreyOfBytes::D8> v0, v1, v2;
        hn::LoadInterleaved3(d, pBytes, v0, v1, v2);
        hn::StoreU(isRedFirst ? grey(v0, v1, v2) : grey(v2, v1, v0), d, pGrey + nAt / 3);
    });
}

#else

HWY_INLINE void WeighBytes(const uint8_t* const* apRows, size_t nWidth, uint8_t* pGrey, const CGreyWeights&)
{
    WeighColors(apRows, nWidth, pGrey);
}

HWY_INLINE void WeighPixels(const CPackedRow&, bool, uint8_t*, const CGreyWeights&) {}

#endif

/// As CDepthChange tells, for vectors and for the values at the end.
template <class D16, class V16>
HWY_INLINE V16 Changed(D16, V16 v, const CDepthChange& change)
{
    const V16 low = hn::ShiftRightSame(v, static_cast<int>(change.nDown));
    return change.isCut ? low : hn::Or(hn::ShiftLeftSame(v, static_cast<int>(change.nUp)), low);
}

template <class T, class U>
HWY_INLINE void Change(const T* HWY_RESTRICT pRow, size_t nWidth, const CDepthChange& change,
                       U* HWY_RESTRICT pResult)
{
    const hn::ScalableTag<uint16_t> d;
    const hn::RebindToSigned<decltype(d)> dSigned;
    const hn::Rebind<uint8_t, decltype(d)> d8;
    const auto convert = [&](const T* pFrom, U* pTo) HWY_ATTR {
        hn::Vec<decltype(d)> v;
        if constexpr (sizeof(T) == 1)
            v = hn::PromoteTo(d, hn::LoadU(d8, pFrom));
        else
            v = hn::LoadU(d, pFrom);
        v = Changed(d, v, change);
        if constexpr (sizeof(U) == 1) // below 256, so that signs don't matter
            hn::StoreU(hn::DemoteTo(d8, hn::BitCast(dSigned, v)), d8, pTo);
        else
            hn::StoreU(v, d, pTo);
    };
    size_t x = 0;
    for (; x + hn::Lanes(d) <= nWidth; x += hn::Lanes(d))
        convert(pRow + x, pResult + x);
    if (x < nWidth) { // rows may be those of images, which have no room behind them
        T from[hn::MaxLanes(d)] = {};
        U to[hn::MaxLanes(d)];
        std::memcpy(from, pRow + x, (nWidth - x) * sizeof(T));
        convert(from, to);
        std::memcpy(pResult + x, to, (nWidth - x) * sizeof(U));
    }
}

void MapOf16(const uint8_t* HWY_RESTRICT pRow, size_t nWidth, const uint8_t* HWY_RESTRICT pTable,
             uint8_t* HWY_RESTRICT pResult)
{
    size_t x = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<uint8_t> d;
    const auto table = hn::LoadDup128(d, pTable);
    for (; x + hn::Lanes(d) <= nWidth; x += hn::Lanes(d))
        hn::StoreU(hn::TableLookupBytes(table, hn::LoadU(d, pRow + x)), d, pResult + x);
#endif
    for (; x < nWidth; ++x)
        pResult[x] = pTable[pRow[x]];
}

/// `change` is called for the values of the first three rows.
template <size_t kChannels, class T, class Change>
HWY_INLINE void Pack(const T* const* apRows, size_t nWidth, T* HWY_RESTRICT pPixels, const Change& change)
{
    const hn::ScalableTag<T> d;
    const size_t nLanes = hn::Lanes(d);
    const T* HWY_RESTRICT const p0 = apRows[0];
    const T* HWY_RESTRICT const p1 = apRows[1];
    const T* HWY_RESTRICT const p2 = apRows[2];
    const T* HWY_RESTRICT const p3 = apRows[kChannels - 1];
    const auto store = [&](size_t x, T* HWY_RESTRICT pTo) HWY_ATTR {
        const auto v0 = change(hn::LoadU(d, p0 + x)), v1 = change(hn::LoadU(d, p1 + x)),
                   v2 = change(hn::LoadU(d, p2 + x));
        if constexpr (kChannels == 3)
            hn::StoreInterleaved3(v0, v1, v2, d, pTo);
        else
            hn::StoreInterleaved4(v0, v1, v2, hn::LoadU(d, p3 + x), d, pTo);
    };
    size_t x = 0;
    for (; x + nLanes <= nWidth; x += nLanes)
        store(x, pPixels + kChannels * x);
    if (x < nWidth) {
        T end[kChannels * hn::MaxLanes(d)];
        store(x, end);
        std::memcpy(pPixels + kChannels * x, end, (nWidth - x) * kChannels * sizeof(T));
    }
}

template <class T>
HWY_INLINE void PackChannels(const T* const* apRows, size_t nChannels, size_t nWidth, T* pPixels)
{
    const auto same = [](auto value) HWY_ATTR { return value; };
    if (nChannels == 3)
        Pack<3>(apRows, nWidth, pPixels, same);
    else
        Pack<4>(apRows, nWidth, pPixels, same);
}

void PackChanged(const uint16_t* const* apRows, size_t nWidth, const CDepthChange& change, uint16_t* pPixels)
{
    const hn::ScalableTag<uint16_t> d;
    Pack<3>(apRows, nWidth, pPixels, [&](auto value) HWY_ATTR { return Changed(d, value, change); });
}

void Pack10p32(const uint16_t* const* apRows, size_t nWidth, uint8_t* HWY_RESTRICT pPixels)
{
    const uint16_t* HWY_RESTRICT const p0 = apRows[0];
    const uint16_t* HWY_RESTRICT const p1 = apRows[1];
    const uint16_t* HWY_RESTRICT const p2 = apRows[2];
    for (size_t x = 0; x < nWidth; ++x) {
        const uint32_t nWord =
            p0[x] | static_cast<uint32_t>(p1[x]) << 10 | static_cast<uint32_t>(p2[x]) << 20;
        std::memcpy(pPixels + 4 * x, &nWord, sizeof(nWord));
    }
}

void YccToRgb8(const CYccMatrix& matrix, uint8_t* const* apRows, size_t nWidth)
{
    if (matrix.nY == 65536 && matrix.nYOffset == 0)
        ApplyMatrixToFullRange(matrix, apRows, nWidth);
    else
        ApplyMatrix(matrix, apRows, nWidth);
}
void YccToRgb16(const CYccMatrix& matrix, uint16_t* const* apRows, size_t nWidth)
{
    ApplyMatrix(matrix, apRows, nWidth);
}
void YccToLuma8(const CYccMatrix& matrix, uint8_t* pRow, size_t nWidth) { ScaleLuma(matrix, pRow, nWidth); }
void YccToLuma16(const CYccMatrix& matrix, uint16_t* pRow, size_t nWidth) { ScaleLuma(matrix, pRow, nWidth); }
void RgbToLuma8(const uint8_t* const* apRows, size_t nWidth, uint8_t* pGrey, const CGreyWeights& weights)
{
    WeighBytes(apRows, nWidth, pGrey, weights);
}
void PixelsToLuma(const CPackedRow& source, bool isRedFirst, uint8_t* pGrey, const CGreyWeights& weights)
{
    WeighPixels(source, isRedFirst, pGrey, weights);
}
void RgbToLuma16(const uint16_t* const* apRows, size_t nWidth, uint16_t* pGrey)
{
    WeighColors(apRows, nWidth, pGrey);
}
void Change8To16(const uint8_t* pRow, size_t nWidth, const CDepthChange& change, uint16_t* pResult)
{
    Change(pRow, nWidth, change, pResult);
}
void Change16To8(const uint16_t* pRow, size_t nWidth, const CDepthChange& change, uint8_t* pResult)
{
    Change(pRow, nWidth, change, pResult);
}
void Change16(const uint16_t* pRow, size_t nWidth, const CDepthChange& change, uint16_t* pResult)
{
    Change(pRow, nWidth, change, pResult);
}
void Pack8(const uint8_t* const* apRows, size_t nChannels, size_t nWidth, uint8_t* pPixels)
{
    PackChannels(apRows, nChannels, nWidth, pPixels);
}
void Pack16(const uint16_t* const* apRows, size_t nChannels, size_t nWidth, uint16_t* pPixels)
{
    PackChannels(apRows, nChannels, nWidth, pPixels);
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

HWY_EXPORT(YccToRgb8);
HWY_EXPORT(YccToRgb16);
HWY_EXPORT(YccToLuma8);
HWY_EXPORT(YccToLuma16);
HWY_EXPORT(RgbToLuma8);
HWY_EXPORT(PixelsToLuma);
HWY_EXPORT(RgbToLuma16);
HWY_EXPORT(Change8To16);
HWY_EXPORT(Change16To8);
HWY_EXPORT(Change16);
HWY_EXPORT(MapOf16);
HWY_EXPORT(Pack8);
HWY_EXPORT(Pack16);
HWY_EXPORT(PackChanged);
HWY_EXPORT(Pack10p32);

void YccToRgb(const CYccMatrix& matrix, uint8_t* const* apRows, size_t nWidth)
{
    HWY_DYNAMIC_DISPATCH(YccToRgb8)(matrix, apRows, nWidth);
}
void YccToRgb(const CYccMatrix& matrix, uint16_t* const* apRows, size_t nWidth)
{
    HWY_DYNAMIC_DISPATCH(YccToRgb16)(matrix, apRows, nWidth);
}
void YccToLuma(const CYccMatrix& matrix, uint8_t* pRow, size_t nWidth)
{
    HWY_DYNAMIC_DISPATCH(YccToLuma8)(matrix, pRow, nWidth);
}
void YccToLuma(const CYccMatrix& matrix, uint16_t* pRow, size_t nWidth)
{
    HWY_DYNAMIC_DISPATCH(YccToLuma16)(matrix, pRow, nWidth);
}
namespace
{

// Not known to the compiler where they are used: it would make long rows of shifts and sums of each product.
constexpr CGreyWeights kWeights = {{38, 75, 15}, {70, 35, -105}, 64};
static_assert(kWeights.IsSum(0, kRedWeight) && kWeights.IsSum(1, kGreenWeight) &&
              kWeights.IsSum(2, kBlueWeight));

} // namespace

void RgbToLuma(const CPackedRow& source, bool isRedFirst, uint8_t* pGrey)
{
    HWY_DYNAMIC_DISPATCH(PixelsToLuma)(source, isRedFirst, pGrey, kWeights);
}
void RgbToLuma(const uint8_t* const* apRows, size_t nWidth, uint8_t* pGrey)
{
    HWY_DYNAMIC_DISPATCH(RgbToLuma8)(apRows, nWidth, pGrey, kWeights);
}
void RgbToLuma(const uint16_t* const* apRows, size_t nWidth, uint16_t* pGrey)
{
    HWY_DYNAMIC_DISPATCH(RgbToLuma16)(apRows, nWidth, pGrey);
}
void ChangeDepth(const uint8_t* pRow, size_t nWidth, const CDepthChange& change, uint16_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(Change8To16)(pRow, nWidth, change, pResult);
}
void ChangeDepth(const uint16_t* pRow, size_t nWidth, const CDepthChange& change, uint8_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(Change16To8)(pRow, nWidth, change, pResult);
}
void ChangeDepth(const uint16_t* pRow, size_t nWidth, const CDepthChange& change, uint16_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(Change16)(pRow, nWidth, change, pResult);
}
void MapRowOf16(const uint8_t* pRow, size_t nWidth, const uint8_t* pTable, uint8_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(MapOf16)(pRow, nWidth, pTable, pResult);
}
void PackRow(const uint8_t* const* apRows, size_t nChannels, size_t nWidth, uint8_t* pPixels)
{
    HWY_DYNAMIC_DISPATCH(Pack8)(apRows, nChannels, nWidth, pPixels);
}
void PackRow(const uint16_t* const* apRows, size_t nChannels, size_t nWidth, uint16_t* pPixels)
{
    HWY_DYNAMIC_DISPATCH(Pack16)(apRows, nChannels, nWidth, pPixels);
}
void PackRow(const uint16_t* const* apRows, size_t nWidth, const CDepthChange& change, uint16_t* pPixels)
{
    HWY_DYNAMIC_DISPATCH(PackChanged)(apRows, nWidth, change, pPixels);
}
void PackRow10p32(const uint16_t* const* apRows, size_t nWidth, uint8_t* pPixels)
{
    HWY_DYNAMIC_DISPATCH(Pack10p32)(apRows, nWidth, pPixels);
}

namespace
{

template <class T, class U>
void Map(const T* __restrict pRow, size_t nWidth, const U* __restrict pTable, U* __restrict pResult)
{
    for (size_t x = 0; x < nWidth; ++x)
        pResult[x] = pTable[pRow[x]];
}

} // namespace

void MapRow(const uint8_t* pRow, size_t nWidth, const uint8_t* pTable, uint8_t* pResult)
{
    // Eight results are stored at once: single bytes would keep the store unit busy.
    size_t x = 0;
    for (; x + 8 <= nWidth; x += 8) {
        uint64_t nValues;
        std::memcpy(&nValues, pRow + x, sizeof(nValues));
        uint64_t nResult = 0;
        for (unsigned i = 0; i < 8; ++i)
            nResult |= uint64_t{pTable[nValues >> (8 * i) & 0xFF]} << (8 * i);
        std::memcpy(pResult + x, &nResult, sizeof(nResult));
    }
    Map(pRow + x, nWidth - x, pTable, pResult + x);
}
void MapRow(const uint8_t* pRow, size_t nWidth, const uint16_t* pTable, uint16_t* pResult)
{
    Map(pRow, nWidth, pTable, pResult);
}
void MapRow(const uint16_t* pRow, size_t nWidth, const uint8_t* pTable, uint8_t* pResult)
{
    Map(pRow, nWidth, pTable, pResult);
}
void MapRow(const uint16_t* pRow, size_t nWidth, const uint16_t* pTable, uint16_t* pResult)
{
    Map(pRow, nWidth, pTable, pResult);
}

} // namespace Detail
} // namespace KxApi
#endif
