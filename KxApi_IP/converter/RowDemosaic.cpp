// SPDX-License-Identifier: Apache-2.0
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "converter/RowDemosaic.cpp"
#include "RowKernels.h"

#include <hwy/foreach_target.h> // compiles this file once for each instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace KxApi
{
namespace Detail
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

/// True in the lanes of red and blue; only where there is but one lane does that depend on the column.
template <class D>
HWY_INLINE hn::Mask<D> ChromaLanes(D d, bool bIsChromaEven, size_t x)
{
    using T = hn::TFromD<D>;
    const size_t nFirst = hn::Lanes(d) == 1 ? x & 1 : 0;
    const auto odd = hn::And(hn::Iota(d, static_cast<T>(nFirst)), hn::Set(d, T{1}));
    return hn::Eq(odd, hn::Set(d, static_cast<T>(bIsChromaEven ? 0 : 1)));
}

/// (a + b + c + d + 2) / 4 without more bits: the mean of rounded means is too great by 1 in the cases that
/// the last factor picks out.
template <class D, class V>
HWY_INLINE V Mean4(D d, V a, V b, V c, V e)
{
    const auto ab = hn::AverageRound(a, b);
    const auto ce = hn::AverageRound(c, e);
    const auto excess = hn::And(hn::And(hn::Or(hn::Xor(a, b), hn::Xor(c, e)), hn::Xor(ab, ce)),
                                hn::Set(d, static_cast<hn::TFromD<D>>(1)));
    return hn::Sub(hn::AverageRound(ab, ce), excess);
}

template <class V>
HWY_INLINE V Distance(V a, V b)
{
    return hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a));
}

template <class T>
HWY_INLINE void Nearest(const CMosaicRows<T>& rows, const CColorRows<T>& result)
{
    const hn::ScalableTag<T> d;
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pBelow = rows.apRows[3];
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(d)) {
        const auto chroma = ChromaLanes(d, rows.bIsChromaEven, x);
        const auto here = hn::LoadU(d, pLine + x);
        const auto right = hn::LoadU(d, pLine + x + 1);
        hn::StoreU(hn::IfThenElse(chroma, here, right), d, result.pOwn + x);
        hn::StoreU(hn::IfThenElse(chroma, right, here), d, result.pGreen + x);
        hn::StoreU(hn::IfThenElse(chroma, hn::LoadU(d, pBelow + x + 1), hn::LoadU(d, pBelow + x)), d,
                   result.pOther + x);
    }
}

template <bool kEdgeAware, class T>
HWY_INLINE void Bilinear(const CMosaicRows<T>& rows, const CColorRows<T>& result)
{
    const hn::ScalableTag<T> d;
    const T* HWY_RESTRICT const pAbove = rows.apRows[1];
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pBelow = rows.apRows[3];
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(d)) {
        const auto chroma = ChromaLanes(d, rows.bIsChromaEven, x);
        const auto here = hn::LoadU(d, pLine + x);
        const auto left = hn::LoadU(d, pLine + x - 1);
        const auto right = hn::LoadU(d, pLine + x + 1);
        const auto above = hn::LoadU(d, pAbove + x);
        const auto below = hn::LoadU(d, pBelow + x);
        const auto sides = hn::AverageRound(left, right);
        const auto column = hn::AverageRound(above, below);
        const auto corners = Mean4(d, hn::LoadU(d, pAbove + x - 1), hn::LoadU(d, pAbove + x + 1),
                                   hn::LoadU(d, pBelow + x - 1), hn::LoadU(d, pBelow + x + 1));
        auto green = sides;
        if constexpr (kEdgeAware) {
            // Along the smaller of the two steps.
            const auto isVertical =
                hn::Ne(hn::SaturatedSub(Distance(left, right), Distance(above, below)), hn::Zero(d));
            green = hn::IfThenElse(isVertical, column, sides);
        } else {
            green = Mean4(d, left, right, above, below);
        }
        hn::StoreU(hn::IfThenElse(chroma, here, sides), d, result.pOwn + x);
        hn::StoreU(hn::IfThenElse(chroma, green, here), d, result.pGreen + x);
        hn::StoreU(hn::IfThenElse(chroma, corners, column), d, result.pOther + x);
    }
}

template <class T>
HWY_INLINE void Green(const CMosaicRows<T>& rows, T* HWY_RESTRICT pGreen)
{
    const hn::ScalableTag<T> d;
    const T* HWY_RESTRICT const pAbove = rows.apRows[1] - 1;
    const T* HWY_RESTRICT const pLine = rows.apRows[2] - 1;
    const T* HWY_RESTRICT const pBelow = rows.apRows[3] - 1;
    for (size_t x = 0; x < rows.nWidth + 2; x += hn::Lanes(d)) {
        // Begins a pixel early, where the parity is the other one.
        const auto chroma = ChromaLanes(d, !rows.bIsChromaEven, x);
        const auto around = Mean4(d, hn::LoadU(d, pLine + x - 1), hn::LoadU(d, pLine + x + 1),
                                  hn::LoadU(d, pAbove + x), hn::LoadU(d, pBelow + x));
        hn::StoreU(hn::IfThenElse(chroma, around, hn::LoadU(d, pLine + x)), d, pGreen - 1 + x);
    }
}

// What follows needs more bits than the values have; the compiler makes vectors of the loops.

template <class T>
HWY_INLINE T Clamped(int32_t nValue, int32_t nMax)
{
    nValue = nValue < 0 ? 0 : nValue;
    return static_cast<T>(nValue > nMax ? nMax : nValue);
}

template <class T>
HWY_INLINE void Cell(const CMosaicRows<T>& rows, const CColorRows<T>& result)
{
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pPair = rows.apRows[rows.bIsUpperOfCell ? 3 : 1];
    const size_t nOwn = rows.bIsChromaEven ? 0 : 1;
    const size_t nGreen = 1 - nOwn;
    for (size_t x = 0; x < rows.nWidth; x += 2) {
        // Green and the other colour stand crosswise in the other line.
        const T nMean = static_cast<T>((pLine[x + nGreen] + pPair[x + nOwn] + 1) >> 1);
        result.pOwn[x] = result.pOwn[x + 1] = pLine[x + nOwn];
        result.pGreen[x] = result.pGreen[x + 1] = nMean;
        result.pOther[x] = result.pOther[x + 1] = pPair[x + nGreen];
    }
}

template <class T>
HWY_INLINE void Gradient(const CMosaicRows<T>& rows, const CColorRows<T>& result)
{
    const T* HWY_RESTRICT const pAbove2 = rows.apRows[0];
    const T* HWY_RESTRICT const pAbove = rows.apRows[1];
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pBelow = rows.apRows[3];
    const T* HWY_RESTRICT const pBelow2 = rows.apRows[4];
    T* HWY_RESTRICT const pOwn = result.pOwn;
    T* HWY_RESTRICT const pGreen = result.pGreen;
    T* HWY_RESTRICT const pOther = result.pOther;
    const int32_t nMax = static_cast<int32_t>(rows.nMax);
    const size_t nChroma = rows.bIsChromaEven ? 0 : 1;
    for (size_t x = 0; x < rows.nWidth; ++x) {
        const int32_t nHere = pLine[x];
        const int32_t nSides = pLine[x - 1] + pLine[x + 1];
        const int32_t nSides2 = pLine[x - 2] + pLine[x + 2];
        const int32_t nColumn = pAbove[x] + pBelow[x];
        const int32_t nColumn2 = pAbove2[x] + pBelow2[x];
        const int32_t nCorners = pAbove[x - 1] + pAbove[x + 1] + pBelow[x - 1] + pBelow[x + 1];
        const int32_t nFar = nSides2 + nColumn2;
        const int32_t nGreen = (4 * nHere + 2 * (nSides + nColumn) - nFar + 4) >> 3;
        const int32_t nAcross = (12 * nHere + 4 * nCorners - 3 * nFar + 8) >> 4;
        const int32_t nBeside = (10 * nHere + 8 * nSides - 2 * (nSides2 + nCorners) + nColumn2 + 8) >> 4;
        const int32_t nOver = (10 * nHere + 8 * nColumn - 2 * (nColumn2 + nCorners) + nSides2 + 8) >> 4;
        const bool bIsChroma = (x & 1) == nChroma;
        pOwn[x] = Clamped<T>(bIsChroma ? nHere : nBeside, nMax);
        pGreen[x] = Clamped<T>(bIsChroma ? nGreen : nHere, nMax);
        pOther[x] = Clamped<T>(bIsChroma ? nAcross : nOver, nMax);
    }
}

template <class T>
HWY_INLINE void Difference(const CMosaicRows<T>& rows, const T* const* apGreen, const CColorRows<T>& result)
{
    const T* HWY_RESTRICT const pAbove = rows.apRows[1];
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pBelow = rows.apRows[3];
    const T* HWY_RESTRICT const pGreenAbove = apGreen[0];
    const T* HWY_RESTRICT const pGreenLine = apGreen[1];
    const T* HWY_RESTRICT const pGreenBelow = apGreen[2];
    T* HWY_RESTRICT const pOwn = result.pOwn;
    T* HWY_RESTRICT const pGreen = result.pGreen;
    T* HWY_RESTRICT const pOther = result.pOther;
    const int32_t nMax = static_cast<int32_t>(rows.nMax);
    const size_t nChroma = rows.bIsChromaEven ? 0 : 1;
    for (size_t x = 0; x < rows.nWidth; ++x) {
        const int32_t nGreen = pGreenLine[x];
        const int32_t nSides = pLine[x - 1] - pGreenLine[x - 1] + pLine[x + 1] - pGreenLine[x + 1];
        const int32_t nColumn = pAbove[x] - pGreenAbove[x] + pBelow[x] - pGreenBelow[x];
        const int32_t nCorners = pAbove[x - 1] - pGreenAbove[x - 1] + pAbove[x + 1] - pGreenAbove[x + 1] +
                                 pBelow[x - 1] - pGreenBelow[x - 1] + pBelow[x + 1] - pGreenBelow[x + 1];
        const bool bIsChroma = (x & 1) == nChroma;
        pOwn[x] = Clamped<T>(bIsChroma ? pLine[x] : nGreen + ((nSides + 1) >> 1), nMax);
        pGreen[x] = static_cast<T>(nGreen);
        pOther[x] =
            Clamped<T>(bIsChroma ? nGreen + ((nCorners + 2) >> 2) : nGreen + ((nColumn + 1) >> 1), nMax);
    }
}

template <class T>
HWY_INLINE void Mono(const CMosaicRows<T>& rows, T* HWY_RESTRICT pGrey)
{
    const T* HWY_RESTRICT const pAbove = rows.apRows[1];
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pBelow = rows.apRows[3];
    for (size_t x = 0; x < rows.nWidth; ++x) {
        const uint32_t nAbove = static_cast<uint32_t>(pAbove[x - 1] + 2 * pAbove[x] + pAbove[x + 1]);
        const uint32_t nLine = static_cast<uint32_t>(pLine[x - 1] + 2 * pLine[x] + pLine[x + 1]);
        const uint32_t nBelow = static_cast<uint32_t>(pBelow[x - 1] + 2 * pBelow[x] + pBelow[x + 1]);
        pGrey[x] = static_cast<T>((nAbove + 2 * nLine + nBelow + 8) >> 4);
    }
}

#define KX_DEMOSAIC_BOTH(Name, ...)                                                                          \
    void Name##8(const CMosaicRows<uint8_t>& rows, const CColorRows<uint8_t>& result)                        \
    {                                                                                                        \
        __VA_ARGS__(rows, result);                                                                           \
    }                                                                                                        \
    void Name##16(const CMosaicRows<uint16_t>& rows, const CColorRows<uint16_t>& result)                     \
    {                                                                                                        \
        __VA_ARGS__(rows, result);                                                                           \
    }

KX_DEMOSAIC_BOTH(Nearest, Nearest)
KX_DEMOSAIC_BOTH(Cell, Cell)
KX_DEMOSAIC_BOTH(Bilinear, Bilinear<false>)
KX_DEMOSAIC_BOTH(EdgeAware, Bilinear<true>)
KX_DEMOSAIC_BOTH(Gradient, Gradient)
#undef KX_DEMOSAIC_BOTH

void Green8(const CMosaicRows<uint8_t>& rows, uint8_t* pGreen) { Green(rows, pGreen); }
void Green16(const CMosaicRows<uint16_t>& rows, uint16_t* pGreen) { Green(rows, pGreen); }
void Mono8(const CMosaicRows<uint8_t>& rows, uint8_t* pGrey) { Mono(rows, pGrey); }
void Mono16(const CMosaicRows<uint16_t>& rows, uint16_t* pGrey) { Mono(rows, pGrey); }
void Difference8(const CMosaicRows<uint8_t>& rows, const uint8_t* const* apGreen,
                 const CColorRows<uint8_t>& result)
{
    Difference(rows, apGreen, result);
}
void Difference16(const CMosaicRows<uint16_t>& rows, const uint16_t* const* apGreen,
                  const CColorRows<uint16_t>& result)
{
    Difference(rows, apGreen, result);
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

#define KX_DEMOSAIC_DISPATCH(Name)                                                                           \
    HWY_EXPORT(Name##8);                                                                                     \
    HWY_EXPORT(Name##16);                                                                                    \
    void Demosaic##Name(const CMosaicRows<uint8_t>& rows, const CColorRows<uint8_t>& result)                 \
    {                                                                                                        \
        HWY_DYNAMIC_DISPATCH(Name##8)(rows, result);                                                         \
    }                                                                                                        \
    void Demosaic##Name(const CMosaicRows<uint16_t>& rows, const CColorRows<uint16_t>& result)               \
    {                                                                                                        \
        HWY_DYNAMIC_DISPATCH(Name##16)(rows, result);                                                        \
    }

KX_DEMOSAIC_DISPATCH(Nearest)
KX_DEMOSAIC_DISPATCH(Cell)
KX_DEMOSAIC_DISPATCH(Bilinear)
KX_DEMOSAIC_DISPATCH(EdgeAware)
KX_DEMOSAIC_DISPATCH(Gradient)
#undef KX_DEMOSAIC_DISPATCH

HWY_EXPORT(Green8);
HWY_EXPORT(Green16);
HWY_EXPORT(Mono8);
HWY_EXPORT(Mono16);
HWY_EXPORT(Difference8);
HWY_EXPORT(Difference16);

void DemosaicGreen(const CMosaicRows<uint8_t>& rows, uint8_t* pGreen)
{
    HWY_DYNAMIC_DISPATCH(Green8)(rows, pGreen);
}
void DemosaicGreen(const CMosaicRows<uint16_t>& rows, uint16_t* pGreen)
{
    HWY_DYNAMIC_DISPATCH(Green16)(rows, pGreen);
}
void DemosaicMono(const CMosaicRows<uint8_t>& rows, uint8_t* pGrey)
{
    HWY_DYNAMIC_DISPATCH(Mono8)(rows, pGrey);
}
void DemosaicMono(const CMosaicRows<uint16_t>& rows, uint16_t* pGrey)
{
    HWY_DYNAMIC_DISPATCH(Mono16)(rows, pGrey);
}
void DemosaicDifference(const CMosaicRows<uint8_t>& rows, const uint8_t* const* apGreen,
                        const CColorRows<uint8_t>& result)
{
    HWY_DYNAMIC_DISPATCH(Difference8)(rows, apGreen, result);
}
void DemosaicDifference(const CMosaicRows<uint16_t>& rows, const uint16_t* const* apGreen,
                        const CColorRows<uint16_t>& result)
{
    HWY_DYNAMIC_DISPATCH(Difference16)(rows, apGreen, result);
}

} // namespace Detail
} // namespace KxApi
#endif
