// SPDX-License-Identifier: Apache-2.0
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "converter/RowPolarization.cpp"
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

// Products and sums are separate steps on purpose: fused ones would give other results on other processors.

/// Stokes parameters, times 4.
template <class V>
struct CStokes
{
    V s0, s1, s2;
};

template <class DF>
HWY_INLINE CStokes<hn::Vec<DF>> Stokes(DF dF, const CPolarizationRows& rows, size_t x)
{
    const hn::RebindToSigned<DF> dI;
    const hn::Rebind<uint16_t, DF> d16;
    const auto load = [&](size_t k) HWY_ATTR {
        return hn::ConvertTo(dF, hn::PromoteTo(dI, hn::LoadU(d16, rows.apRows[k] + x)));
    };
    const auto i0 = load(0), i45 = load(1), i90 = load(2), i135 = load(3);
    const auto sum = hn::Add(hn::Add(i0, i45), hn::Add(i90, i135));
    return {hn::Mul(sum, hn::Set(dF, 0.5F)), hn::Sub(i0, i90), hn::Sub(i45, i135)};
}

template <class DF, class V>
HWY_INLINE void StoreRounded(DF dF, V value, float max, uint16_t* pResult)
{
    const hn::Rebind<uint16_t, DF> d16;
    const auto limited = hn::Min(hn::Max(value, hn::Zero(dF)), hn::Set(dF, max));
    hn::StoreU(hn::DemoteTo(d16, hn::NearestInt(limited)), d16, pResult);
}

void AtAngle(const CPolarizationRows& rows, float cosAngle, float sinAngle, uint16_t* pResult)
{
    const hn::ScalableTag<float> dF;
    const auto cosine = hn::Set(dF, cosAngle);
    const auto sine = hn::Set(dF, sinAngle);
    const auto eighth = hn::Set(dF, 0.125F); // a half, and the values are times 4
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(dF)) {
        const auto s = Stokes(dF, rows, x);
        const auto sum = hn::Add(s.s0, hn::Add(hn::Mul(s.s1, cosine), hn::Mul(s.s2, sine)));
        StoreRounded(dF, hn::Mul(sum, eighth), static_cast<float>(rows.nMax), pResult + x);
    }
}

void Degree(const CPolarizationRows& rows, uint16_t* pResult)
{
    const hn::ScalableTag<float> dF;
    const auto least = hn::Set(dF, 1.0F);
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(dF)) {
        const auto s = Stokes(dF, rows, x);
        const auto length = hn::Sqrt(hn::Add(hn::Mul(s.s1, s.s1), hn::Mul(s.s2, s.s2)));
        // Without light all is 0, and any divisor will do; with light S0 is 2 or more, being times 4.
        const auto degree = hn::Div(length, hn::Max(s.s0, least));
        StoreRounded(dF, hn::Mul(degree, hn::Set(dF, 65535.0F)), 65535.0F, pResult + x);
    }
}

/// atan2(y, x) in 65536ths of a turn.
template <class DF, class V>
HWY_INLINE V Turns(DF dF, V y, V x)
{
    const auto absX = hn::Abs(x), absY = hn::Abs(y);
    const auto isSteep = hn::Gt(absY, absX);
    const auto ratio = hn::Div(hn::Min(absX, absY), hn::Max(hn::Max(absX, absY), hn::Set(dF, 1.0F)));
    const auto square = hn::Mul(ratio, ratio);
    // A polynomial through the arc tangent between 0 and 1, off by a tenth of a unit at most.
    auto sum = hn::Set(dF, -0.01172120F);
    for (const float factor : {0.05265332F, -0.11643287F, 0.19354346F, -0.33262347F, 0.99997726F})
        sum = hn::Add(hn::Mul(sum, square), hn::Set(dF, factor));
    auto turns = hn::Mul(hn::Mul(sum, ratio), hn::Set(dF, 10430.3784F)); // 32768 / pi
    turns = hn::IfThenElse(isSteep, hn::Sub(hn::Set(dF, 16384.0F), turns), turns);
    turns = hn::IfThenElse(hn::Lt(x, hn::Zero(dF)), hn::Sub(hn::Set(dF, 32768.0F), turns), turns);
    return hn::IfThenElse(hn::Lt(y, hn::Zero(dF)), hn::Neg(turns), turns);
}

void Angle(const CPolarizationRows& rows, uint16_t* pResult)
{
    const hn::ScalableTag<float> dF;
    const hn::RebindToSigned<decltype(dF)> dI;
    const hn::Rebind<uint16_t, decltype(dF)> d16;
    for (size_t x = 0; x < rows.nWidth; x += hn::Lanes(dF)) {
        const auto s = Stokes(dF, rows, x);
        // The angle is half of the arc and repeats after half a turn, so the turns of the arc are it.
        const auto angle = hn::And(hn::NearestInt(Turns(dF, s.s2, s.s1)), hn::Set(dI, 0xFFFF));
        hn::StoreU(hn::DemoteTo(d16, angle), d16, pResult + x);
    }
}

void BilinearPolarizers(const uint16_t* const* apRows, bool isOdd, const uint8_t* anPlace, size_t nWidth,
                        uint16_t* const* apResult)
{
    const hn::ScalableTag<uint16_t> d;
    const uint16_t* const pAbove = apRows[1];
    const uint16_t* const pLine = apRows[2];
    const uint16_t* const pBelow = apRows[3];
    uint16_t* apByPlace[4];
    for (size_t k = 0; k < 4; ++k)
        apByPlace[anPlace[k]] = apResult[k];
    uint16_t* const* const apOwn = apByPlace + (isOdd ? 2 : 0);   // polarisers that this line has
    uint16_t* const* const apOther = apByPlace + (isOdd ? 0 : 2); // those of the lines around
    for (size_t x = 0; x < nWidth; x += hn::Lanes(d)) {
        const auto first = static_cast<uint16_t>(hn::Lanes(d) == 1 ? x & 1 : 0);
        const auto isEven = hn::Eq(hn::And(hn::Iota(d, first), hn::Set(d, uint16_t{1})), hn::Zero(d));
        const auto here = hn::ShiftLeft<2>(hn::LoadU(d, pLine + x));
        const auto sides =
            hn::ShiftLeft<1>(hn::Add(hn::LoadU(d, pLine + x - 1), hn::LoadU(d, pLine + x + 1)));
        const auto column = hn::ShiftLeft<1>(hn::Add(hn::LoadU(d, pAbove + x), hn::LoadU(d, pBelow + x)));
        const auto corners = hn::Add(hn::Add(hn::LoadU(d, pAbove + x - 1), hn::LoadU(d, pAbove + x + 1)),
                                     hn::Add(hn::LoadU(d, pBelow + x - 1), hn::LoadU(d, pBelow + x + 1)));
        hn::StoreU(hn::IfThenElse(isEven, here, sides), d, apOwn[0] + x);
        hn::StoreU(hn::IfThenElse(isEven, sides, here), d, apOwn[1] + x);
        hn::StoreU(hn::IfThenElse(isEven, column, corners), d, apOther[0] + x);
        hn::StoreU(hn::IfThenElse(isEven, corners, column), d, apOther[1] + x);
    }
}

void CellPolarizers(const uint16_t* pUpper, const uint16_t* pLower, const uint8_t* anPlace, size_t nCells,
                    uint16_t* const* apResult)
{
    for (size_t k = 0; k < 4; ++k) {
        const uint16_t* HWY_RESTRICT const pLine = (anPlace[k] < 2 ? pUpper : pLower) + anPlace[k] % 2;
        uint16_t* HWY_RESTRICT const pResult = apResult[k];
        for (size_t i = 0; i < nCells; ++i)
            pResult[i] = static_cast<uint16_t>(pLine[2 * i] << 2);
    }
}

void Intensity(const CPolarizationRows& rows, uint16_t* HWY_RESTRICT pResult)
{
    const uint16_t* HWY_RESTRICT const p0 = rows.apRows[0];
    const uint16_t* HWY_RESTRICT const p1 = rows.apRows[1];
    const uint16_t* HWY_RESTRICT const p2 = rows.apRows[2];
    const uint16_t* HWY_RESTRICT const p3 = rows.apRows[3];
    for (size_t x = 0; x < rows.nWidth; ++x)
        pResult[x] = static_cast<uint16_t>((p0[x] + p1[x] + p2[x] + p3[x] + 8) >> 4);
}

void View(const CPolarizationRows& rows, size_t nPolarizer, uint16_t* HWY_RESTRICT pResult)
{
    const uint16_t* HWY_RESTRICT const pRow = rows.apRows[nPolarizer];
    for (size_t x = 0; x < rows.nWidth; ++x)
        pResult[x] = static_cast<uint16_t>((pRow[x] + 2) >> 2);
}

template <bool kDark>
HWY_INLINE void MixColors(const uint16_t* HWY_RESTRICT pDegree, const uint16_t* HWY_RESTRICT pAngle,
                          size_t nWidth, const uint32_t* HWY_RESTRICT pCircle, uint8_t* const* apResult)
{
    uint8_t* HWY_RESTRICT const pRed = apResult[0];
    uint8_t* HWY_RESTRICT const pGreen = apResult[1];
    uint8_t* HWY_RESTRICT const pBlue = apResult[2];
    for (size_t x = 0; x < nWidth; ++x) {
        const uint32_t nColor = pCircle[(pAngle[x] + 128U) >> 8 & 0xFF];
        const uint32_t nWeight = pDegree[x] + (pDegree[x] >> 15); // 65536 for the whole
        const uint32_t nMixed = kDark ? nColor : ~nColor;
        const uint32_t nRed = ((nMixed >> 16 & 0xFF) * nWeight + 32768) >> 16;
        const uint32_t nGreen = ((nMixed >> 8 & 0xFF) * nWeight + 32768) >> 16;
        const uint32_t nBlue = ((nMixed & 0xFF) * nWeight + 32768) >> 16;
        pRed[x] = static_cast<uint8_t>(kDark ? nRed : 255 - nRed);
        pGreen[x] = static_cast<uint8_t>(kDark ? nGreen : 255 - nGreen);
        pBlue[x] = static_cast<uint8_t>(kDark ? nBlue : 255 - nBlue);
    }
}

void Color(const uint16_t* pDegree, const uint16_t* pAngle, size_t nWidth, const uint32_t* pCircle,
           bool isDark, uint8_t* const* apResult)
{
    if (isDark)
        MixColors<true>(pDegree, pAngle, nWidth, pCircle, apResult);
    else
        MixColors<false>(pDegree, pAngle, nWidth, pCircle, apResult);
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

HWY_EXPORT(AtAngle);
HWY_EXPORT(Degree);
HWY_EXPORT(Angle);
HWY_EXPORT(BilinearPolarizers);
HWY_EXPORT(CellPolarizers);
HWY_EXPORT(Intensity);
HWY_EXPORT(View);
HWY_EXPORT(Color);

void PolarizersBilinear(const uint16_t* const* apRows, bool isOdd, const uint8_t* anPlace, size_t nWidth,
                        uint16_t* const* apResult)
{
    HWY_DYNAMIC_DISPATCH(BilinearPolarizers)(apRows, isOdd, anPlace, nWidth, apResult);
}
void PolarizersOfCells(const uint16_t* pUpper, const uint16_t* pLower, const uint8_t* anPlace, size_t nCells,
                       uint16_t* const* apResult)
{
    HWY_DYNAMIC_DISPATCH(CellPolarizers)(pUpper, pLower, anPlace, nCells, apResult);
}
void PolarizationAtAngle(const CPolarizationRows& rows, float cosAngle, float sinAngle, uint16_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(AtAngle)(rows, cosAngle, sinAngle, pResult);
}
void PolarizationView(const CPolarizationRows& rows, size_t nPolarizer, uint16_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(View)(rows, nPolarizer, pResult);
}
void PolarizationIntensity(const CPolarizationRows& rows, uint16_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(Intensity)(rows, pResult);
}
void PolarizationDegree(const CPolarizationRows& rows, uint16_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(Degree)(rows, pResult);
}
void PolarizationAngle(const CPolarizationRows& rows, uint16_t* pResult)
{
    HWY_DYNAMIC_DISPATCH(Angle)(rows, pResult);
}
void PolarizationColor(const uint16_t* pDegree, const uint16_t* pAngle, size_t nWidth,
                       const uint32_t* pCircle, bool isDark, uint8_t* const* apResult)
{
    HWY_DYNAMIC_DISPATCH(Color)(pDegree, pAngle, nWidth, pCircle, isDark, apResult);
}

} // namespace Detail
} // namespace KxApi
#endif
