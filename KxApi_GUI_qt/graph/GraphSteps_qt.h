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

    void Move(int nY)
    {
        if (nY == m_nLast)
            return;
        const EDirection eDirection = nY > m_nLast ? Down : Up;
        if (m_eDirection != None && eDirection != m_eDirection)
            Turn();
        m_eDirection = eDirection;
        m_nLast = nY;
    }

    bool HasMoved() const { return m_eDirection != None; }

    CGraphColumn Column(int nX) const
    {
        CGraphColumn column;
        column.nX = nX;
        const auto add = [&column](int nY) { column.arrY[static_cast<size_t>(column.nCount++)] = nY; };
        add(m_nFirst);
        if (m_eFirstTurn != None) {
            add(TurnOf(m_eFirstTurn));
            const EDirection eOther = m_eFirstTurn == Down ? Up : Down;
            if (HasTurn(eOther))
                add(TurnOf(eOther));
            if (m_eLastTurn == m_eFirstTurn && HasTurn(eOther))
                add(TurnOf(m_eLastTurn));
        }
        if (HasMoved())
            add(m_nLast);
        return column;
    }

private:
    enum EDirection
    {
        None,
        Down, // a turn at the end of a way down is a lowest point, with the greatest y
        Up,
    };

    void Turn()
    {
        if (m_eFirstTurn == None)
            m_eFirstTurn = m_eDirection;
        m_eLastTurn = m_eDirection;
        if (m_eDirection == Down)
            m_nLowest = m_nLast > m_nLowest ? m_nLast : m_nLowest;
        else
            m_nHighest = m_nLast < m_nHighest ? m_nLast : m_nHighest;
    }
    int TurnOf(EDirection eDirection) const { return eDirection == Down ? m_nLowest : m_nHighest; }
    bool HasTurn(EDirection eDirection) const
    {
        return eDirection == Down ? m_nLowest != std::numeric_limits<int>::min()
                                  : m_nHighest != std::numeric_limits<int>::max();
    }

    int m_nFirst;
    int m_nLast;
    EDirection m_eDirection = None;
    EDirection m_eFirstTurn = None;
    EDirection m_eLastTurn = None;
    int m_nLowest = std::numeric_limits<int>::min();
    int m_nHighest = std::numeric_limits<int>::max();
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
    uint32_t nBefore = pValues[0];
    int nY = toY(nBefore);
    CGraphColumnMaker maker(nY);
    for (size_t i = 0; i < nCount; ++i) {
        if (pValues[i] != nBefore) {
            nBefore = pValues[i];
            nY = toY(nBefore);
            maker.Move(nY);
        }
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
