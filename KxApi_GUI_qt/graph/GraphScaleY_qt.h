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
class CGraphScaleY
{
public:
    /// @param dMaxValue at the top; above 0.
    CGraphScaleY(_EKxGraphScaleMode_t eMode, double dMaxValue, int nTop, int nHeight);

    /// The y of a value. It never grows with the value.
    int YOf(double dValue) const;

    double MaxValue() const { return m_dMaxValue; }
    bool IsLogarithmic() const { return m_eMode == KxGraphScaleMode_Logarithmic; }

private:
    const _EKxGraphScaleMode_t m_eMode;
    const double m_dMaxValue;
    const double m_dWhole; // the greatest value, or its logarithm
    const int m_nTop;
    const int m_nHeight;
};

/// The y of the values of items. On a logarithmic scale those of small values lie ready: there are far fewer
/// rows of pixels than values, and logarithms take long.
class CGraphItemScale
{
public:
    explicit CGraphItemScale(const CGraphScaleY& scale)
        : m_scale(scale)
    {}

    /// For an item of so many values, which have to be divided by the divisor.
    void Begin(int64_t nDivisor, size_t nValues);

    int operator()(uint32_t nValue) const
    {
        return nValue < m_vecTable.size() ? m_vecTable[nValue] : m_scale.YOf(nValue / m_dDivisor);
    }

private:
    void Fill(size_t nFirst, size_t nLast);
    int16_t YIn16Bits(size_t nValue) const
    {
        return static_cast<int16_t>(m_scale.YOf(static_cast<double>(nValue) / m_dDivisor));
    }

    const CGraphScaleY& m_scale;
    double m_dDivisor = 1;
    std::vector<int16_t> m_vecTable;
};

} // namespace KxApi
