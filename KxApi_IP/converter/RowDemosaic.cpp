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
HWY_INLINE hn::Mask<D> ChromaLanes(D d, bool isChromaEven, size_t x)
{
    using T = hn::TFromD<D>;
    const size_t nFirst = hn::Lanes(d) == 1 ? x & 1 : 0;
    const auto odd = hn::And(hn::Iota(d, static_cast<T>(nFirst)), hn::Set(d, T{1}));
    return hn::Eq(odd, hn::Set(d, static_cast<T>(isChromaEven ? 0 : 1)));
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
        const auto chroma = ChromaLanes(d, rows.isChromaEven, x);
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
        const auto chroma = ChromaLanes(d, rows.isChromaEven, x);
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
        const auto chroma = ChromaLanes(d, !rows.isChromaEven, x);
        const auto around = Mean4(d, hn::LoadU(d, pLine + x - 1), hn::LoadU(d, pLine + x + 1),
                                  hn::LoadU(d, pAbove + x), hn::LoadU(d, pBelow + x));
        hn::StoreU(hn::IfThenElse(chroma, around, hn::LoadU(d, pLine + x)), d, pGreen - 1 + x);
    }
}

template <class T>
HWY_INLINE void Cell(const CMosaicRows<T>& rows, const CColorRows<T>& result)
{
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pPair = rows.apRows[rows.isUpperOfCell ? 3 : 1];
    const size_t nOwn = rows.isChromaEven ? 0 : 1;
    const size_t nGreen = 1 - nOwn;
    for (size_t x = 0; x < rows.nWidth; x += 2) {
        // Green and the other colour stand crosswise in the other line.
        const T nMean = static_cast<T>((pLine[x + nGreen] + pPair[x + nOwn] + 1) >> 1);
        result.pOwn[x] = result.pOwn[x + 1] = pLine[x + nOwn];
        result.pGreen[x] = result.pGreen[x + 1] = nMean;
        result.pOther[x] = result.pOther[x + 1] = pPair[x + nGreen];
    }
}

/// Arithmetic that needs more bits than the values have, and a sign.
template <class T>
struct CWide
{
    using D = hn::ScalableTag<hwy::MakeWide<hwy::MakeSigned<T>>>;
    using V = hn::Vec<D>;

    D d;
    hn::Rebind<T, D> dT;

    HWY_INLINE V Load(const T* p) const { return hn::PromoteTo(d, hn::LoadU(dT, p)); }
    /// The sum of the values to the left and right.
    HWY_INLINE V Sides(const T* p) const { return hn::Add(Load(p - 1), Load(p + 1)); }
    HWY_INLINE V Times(V v, int nFactor) const
    {
        return hn::Mul(v, hn::Set(d, static_cast<hn::TFromD<D>>(nFactor)));
    }
    template <int kShift>
    HWY_INLINE V Rounded(V v) const
    {
        return hn::ShiftRight<kShift>(hn::Add(v, hn::Set(d, static_cast<hn::TFromD<D>>(1 << (kShift - 1)))));
    }
    /// Stores with the limits 0 and nMax.
    HWY_INLINE void Store(V v, unsigned nMax, T* p) const
    {
        const auto narrow = hn::DemoteTo(dT, v); // which limits to what T can hold
        hn::StoreU(hn::Min(narrow, hn::Set(dT, static_cast<T>(nMax))), dT, p);
    }
};

template <class T>
HWY_INLINE void Gradient(const CMosaicRows<T>& rows, const CColorRows<T>& result)
{
    const CWide<T> w;
    const T* HWY_RESTRICT const pAbove2 = rows.apRows[0];
    const T* HWY_RESTRICT const pAbove = rows.apRows[1];
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pBelow = rows.apRows[3];
    const T* HWY_RESTRICT const pBelow2 = rows.apRows[4];
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(w.d)) {
        const auto chroma = ChromaLanes(w.d, rows.isChromaEven, x);
        const auto here = w.Load(pLine + x);
        const auto sides = w.Sides(pLine + x);
        const auto sides2 = hn::Add(w.Load(pLine + x - 2), w.Load(pLine + x + 2));
        const auto column = hn::Add(w.Load(pAbove + x), w.Load(pBelow + x));
        const auto column2 = hn::Add(w.Load(pAbove2 + x), w.Load(pBelow2 + x));
        const auto corners = hn::Add(w.Sides(pAbove + x), w.Sides(pBelow + x));
        const auto far = hn::Add(sides2, column2);
        const auto green = w.template Rounded<3>(
            hn::Sub(hn::Add(w.Times(here, 4), w.Times(hn::Add(sides, column), 2)), far));
        const auto across =
            w.template Rounded<4>(hn::Sub(hn::Add(w.Times(here, 12), w.Times(corners, 4)), w.Times(far, 3)));
        const auto beside =
            w.template Rounded<4>(hn::Sub(hn::Add(hn::Add(w.Times(here, 10), w.Times(sides, 8)), column2),
                                          w.Times(hn::Add(sides2, corners), 2)));
        const auto over =
            w.template Rounded<4>(hn::Sub(hn::Add(hn::Add(w.Times(here, 10), w.Times(column, 8)), sides2),
                                          w.Times(hn::Add(column2, corners), 2)));
        w.Store(hn::IfThenElse(chroma, here, beside), rows.nMax, result.pOwn + x);
        w.Store(hn::IfThenElse(chroma, green, here), rows.nMax, result.pGreen + x);
        w.Store(hn::IfThenElse(chroma, across, over), rows.nMax, result.pOther + x);
    }
}

template <class T>
HWY_INLINE void Difference(const CMosaicRows<T>& rows, const T* const* apGreen, const CColorRows<T>& result)
{
    const CWide<T> w;
    const T* HWY_RESTRICT const pAbove = rows.apRows[1];
    const T* HWY_RESTRICT const pLine = rows.apRows[2];
    const T* HWY_RESTRICT const pBelow = rows.apRows[3];
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(w.d)) {
        const auto chroma = ChromaLanes(w.d, rows.isChromaEven, x);
        const auto green = w.Load(apGreen[1] + x);
        const auto sides = hn::Sub(w.Sides(pLine + x), w.Sides(apGreen[1] + x));
        const auto column = hn::Sub(hn::Add(w.Load(pAbove + x), w.Load(pBelow + x)),
                                    hn::Add(w.Load(apGreen[0] + x), w.Load(apGreen[2] + x)));
        const auto corners = hn::Sub(hn::Add(w.Sides(pAbove + x), w.Sides(pBelow + x)),
                                     hn::Add(w.Sides(apGreen[0] + x), w.Sides(apGreen[2] + x)));
        const auto beside = hn::Add(green, w.template Rounded<1>(sides));
        const auto over = hn::Add(green, w.template Rounded<1>(column));
        const auto across = hn::Add(green, w.template Rounded<2>(corners));
        w.Store(hn::IfThenElse(chroma, w.Load(pLine + x), beside), rows.nMax, result.pOwn + x);
        w.Store(green, rows.nMax, result.pGreen + x);
        w.Store(hn::IfThenElse(chroma, across, over), rows.nMax, result.pOther + x);
    }
}

template <class T>
HWY_INLINE void Mono(const CMosaicRows<T>& rows, T* HWY_RESTRICT pGrey)
{
    const CWide<T> w;
    const auto line = [&](const T* p) HWY_ATTR { return hn::Add(w.Sides(p), w.Times(w.Load(p), 2)); };
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(w.d)) {
        const auto around = hn::Add(line(rows.apRows[1] + x), line(rows.apRows[3] + x));
        const auto sum = hn::Add(around, w.Times(line(rows.apRows[2] + x), 2));
        w.Store(w.template Rounded<4>(sum), rows.nMax, pGrey + x);
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
