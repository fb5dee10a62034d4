// SPDX-License-Identifier: Apache-2.0
#include "graph/GraphScaleY_qt.h"

#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace
{

// Beyond what a painter can be asked for, and what fits an int16_t.
constexpr int kFarAway = 30000;

constexpr double kTableSize = 65536;
constexpr size_t kWorthATable = 2048; // values

int Truncated(double dY)
{
    if (!(dY > -kFarAway)) // neither what isn't a number
        return -kFarAway;
    return dY >= kFarAway ? kFarAway : static_cast<int>(dY);
}

} // namespace

CGraphScaleY::CGraphScaleY(_EKxGraphScaleMode_t eMode, double dMaxValue, int nTop, int nHeight)
    : m_eMode(eMode)
    , m_dMaxValue(dMaxValue)
    , m_dWhole(IsLogarithmic() ? std::log10(dMaxValue + 1.0) : dMaxValue)
    , m_nTop(nTop)
    , m_nHeight(nHeight)
{}

int CGraphScaleY::YOf(double dValue) const
{
    const double dPart = (IsLogarithmic() ? std::log10(dValue + 1.0) : dValue) / m_dWhole;
    return Truncated(m_nTop + m_nHeight * (1.0 - dPart));
}

void CGraphItemScale::Begin(int64_t nDivisor, size_t nValues)
{
    const auto dDivisor = static_cast<double>(nDivisor);
    if (dDivisor != m_dDivisor)
        m_vecTable.clear();
    m_dDivisor = dDivisor;
    if (!m_vecTable.empty() || !m_scale.IsLogarithmic() || nValues < kWorthATable)
        return;
    const double dSize = std::clamp(m_scale.MaxValue() * dDivisor + 1, 2.0, kTableSize);
    m_vecTable.resize(static_cast<size_t>(dSize));
    const size_t nLast = m_vecTable.size() - 1;
    m_vecTable[0] = YIn16Bits(0);
    m_vecTable[nLast] = YIn16Bits(nLast);
    Fill(0, nLast);
}

void CGraphItemScale::Fill(size_t nFirst, size_t nLast)
{
    const auto at = [this](size_t n) { return m_vecTable.begin() + static_cast<std::ptrdiff_t>(n); };
    if (m_vecTable[nFirst] == m_vecTable[nLast]) {
        std::fill(at(nFirst), at(nLast), m_vecTable[nFirst]);
        return;
    }
    if (nLast - nFirst < 2)
        return;
    const size_t nMiddle = (nFirst + nLast) / 2;
    m_vecTable[nMiddle] = YIn16Bits(nMiddle);
    Fill(nFirst, nMiddle);
    Fill(nMiddle, nLast);
}

} // namespace KxApi
