// SPDX-License-Identifier: Apache-2.0
#include "graph/GraphScaleY_qt.h"

#include <cmath>

namespace KxApi
{
namespace
{

// Beyond what a painter can be asked for, and what fits an int16_t.
constexpr int kFarAway = 30000;

constexpr size_t kCachedValues = 65536;
constexpr size_t kWorthACache = 1024; // values

int Truncated(double dY)
{
    if (!(dY > -kFarAway)) // neither what isn't a number
        return -kFarAway;
    return dY >= kFarAway ? kFarAway : static_cast<int>(dY);
}

} // namespace

int CGraphScaleY::YOf(double dValue) const
{
    const double dPart = eMode == KxGraphScaleMode_Logarithmic
                             ? std::log10(dValue + 1.0) / std::log10(dMaxValue + 1.0)
                             : dValue / dMaxValue;
    return Truncated(nTop + nHeight * (1.0 - dPart));
}

CGraphItemScale::CGraphItemScale(const CGraphScaleY& scale, int64_t nDivisor, size_t nValues,
                                 std::vector<int16_t>& vecCache)
    : m_scale(scale)
    , m_dDivisor(static_cast<double>(nDivisor))
    , m_vecCache(vecCache)
{
    const bool bCache = scale.eMode == KxGraphScaleMode_Logarithmic && nValues >= kWorthACache;
    m_vecCache.assign(bCache ? kCachedValues : 0, kUnknown);
}

} // namespace KxApi
