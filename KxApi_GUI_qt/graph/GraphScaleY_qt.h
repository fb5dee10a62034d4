// SPDX-License-Identifier: Apache-2.0
// The heights of values in a plot.
#pragma once

#include <KxApi_GUI/IKxGraphDisplayWnd.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KxApi
{

/// The vertical extent of a plot, in pixels, and what it stands for.
struct CGraphScaleY
{
    _EKxGraphScaleMode_t eMode = KxGraphScaleMode_Linear;
    double dMaxValue = 1; ///< at the top; above 0
    int nTop = 0;
    int nHeight = 0;

    /// The y of a value.
    int YOf(double dValue) const;
};

/// The y of an item's values. Many values occur again and again, and a logarithm costs more than to look its
/// result up.
class CGraphItemScale
{
public:
    /// @param nDivisor what the item's values have to be divided by. @param nValues how many values are to
    /// come, @param vecCache memory to be used.
    CGraphItemScale(const CGraphScaleY& scale, int64_t nDivisor, size_t nValues,
                    std::vector<int16_t>& vecCache);

    int operator()(uint32_t nValue) const
    {
        if (nValue >= m_vecCache.size())
            return m_scale.YOf(nValue / m_dDivisor);
        int16_t& nY = m_vecCache[nValue];
        if (nY == kUnknown)
            nY = static_cast<int16_t>(m_scale.YOf(nValue / m_dDivisor));
        return nY;
    }

private:
    static constexpr int16_t kUnknown = INT16_MIN;

    const CGraphScaleY& m_scale;
    const double m_dDivisor;
    std::vector<int16_t>& m_vecCache;
};

} // namespace KxApi
