// SPDX-License-Identifier: Apache-2.0
// The line of a graph item: a flat step for each value, joined by verticals.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace KxApi
{

/// The way of the line along one vertical: where it comes from, turns and leaves. All coordinates are whole
/// pixels.
struct CGraphColumn
{
    int nX = 0;
    int nCount = 0;
    std::array<int, 5> arrY{};

    int First() const { return arrY[0]; }
    int Last() const { return arrY[static_cast<size_t>(nCount) - 1]; }
};

/// Makes the way along one vertical as short as it can be without a change to what shows: many values may
/// share a vertical, of which only the ends and the outermost turns matter. A turn is drawn with a tip beyond
/// it, so it isn't enough to keep the highest and the lowest point; the directions at both ends are kept as
/// well, since joins to the neighbours depend on them.
class CGraphColumnMaker
{
public:
    explicit CGraphColumnMaker(int nY)
        : m_nFirst(nY)
        , m_nLast(nY)
    {}

    /// Without branches, since noise can't be predicted.
    void Move(int nY)
    {
        const int nDirection = (nY > m_nLast) - (nY < m_nLast);
        const bool bLowest = m_nDirection == kDown && nDirection == kUp;
        const bool bHighest = m_nDirection == kUp && nDirection == kDown;
        m_nLowest = bLowest && m_nLast > m_nLowest ? m_nLast : m_nLowest;
        m_nHighest = bHighest && m_nLast < m_nHighest ? m_nLast : m_nHighest;
        m_nLastTurn = bLowest || bHighest ? m_nDirection : m_nLastTurn;
        m_nFirstTurn = m_nFirstTurn == 0 ? m_nLastTurn : m_nFirstTurn;
        m_nDirection = nDirection != 0 ? nDirection : m_nDirection;
        m_nLast = nY;
    }

    bool HasMoved() const { return m_nDirection != 0; }

    CGraphColumn Column(int nX) const
    {
        CGraphColumn column;
        column.nX = nX;
        const auto add = [&column](int nY) { column.arrY[static_cast<size_t>(column.nCount++)] = nY; };
        add(m_nFirst);
        if (m_nFirstTurn != 0) {
            add(TurnOf(m_nFirstTurn));
            if (HasTurn(-m_nFirstTurn))
                add(TurnOf(-m_nFirstTurn));
            if (m_nLastTurn == m_nFirstTurn && HasTurn(-m_nFirstTurn))
                add(TurnOf(m_nLastTurn));
        }
        if (HasMoved())
            add(m_nLast);
        return column;
    }

private:
    // Directions; 0 is none. A turn is named by the way that ends there: at the end of a way down is a lowest
    // point, with the greatest y.
    static constexpr int kDown = 1;
    static constexpr int kUp = -1;
    static constexpr int kNoLowest = std::numeric_limits<int>::min();
    static constexpr int kNoHighest = std::numeric_limits<int>::max();

    int TurnOf(int nDirection) const { return nDirection == kDown ? m_nLowest : m_nHighest; }
    bool HasTurn(int nDirection) const
    {
        return nDirection == kDown ? m_nLowest != kNoLowest : m_nHighest != kNoHighest;
    }

    int m_nFirst;
    int m_nLast;
    int m_nDirection = 0;
    int m_nFirstTurn = 0;
    int m_nLastTurn = 0;
    int m_nLowest = kNoLowest;
    int m_nHighest = kNoHighest;
};

/// The columns of a line, from left to right: the first, the last, and each one along which the line moves.
/// @param toY y of a value.
/// @param nLeft,nPlotWidth,nMaxLength where the line begins, and the width that so many values take.
template <class ToY>
void MakeGraphColumns(const uint32_t* pValues, size_t nCount, const ToY& toY, int nLeft, size_t nPlotWidth,
                      size_t nMaxLength, std::vector<CGraphColumn>& vecColumns)
{
    vecColumns.clear();
    if (nCount == 0)
        return;
    int nX = nLeft;
    size_t nPart = 0; // of a pixel, in units of 1 / nMaxLength
    CGraphColumnMaker maker(toY(pValues[0]));
    for (size_t i = 0; i < nCount; ++i) {
        const int nY = toY(pValues[i]);
        maker.Move(nY);
        nPart += nPlotWidth;
        if (nPart < nMaxLength)
            continue;
        if (maker.HasMoved() || vecColumns.empty())
            vecColumns.push_back(maker.Column(nX));
        maker = CGraphColumnMaker(nY);
        nX += static_cast<int>(nPart / nMaxLength);
        nPart %= nMaxLength;
    }
    vecColumns.push_back(maker.Column(nX));
}

} // namespace KxApi
