// SPDX-License-Identifier: Apache-2.0
// Memory for rows in work.
#pragma once

#include "RowKernels.h"

#include <cstddef>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// A row's place outside of an image: the border pixels are the axis of the mirror, which keeps the columns
/// and lines of a mosaic what they are.
inline size_t Mirrored(ptrdiff_t nIndex, size_t nSize)
{
    const auto nLast = static_cast<ptrdiff_t>(nSize) - 1;
    if (nLast == 0)
        return 0;
    while (nIndex < 0 || nIndex > nLast)
        nIndex = nIndex < 0 ? -nIndex : 2 * nLast - nIndex;
    return static_cast<size_t>(nIndex);
}

/// Some rows with their padding, at first 0.
template <class T>
class CRowBuffer
{
public:
    CRowBuffer() = default;
    CRowBuffer(size_t nRows, size_t nWidth)
        : m_nStride(nWidth + 2 * kRowPadding)
        , m_values(nRows * m_nStride)
    {}

    T* Row(size_t nRow) { return m_values.data() + nRow * m_nStride + kRowPadding; }

private:
    size_t m_nStride = 0;
    std::vector<T> m_values;
};

/// The lines of an image around the present one, each made once, mirrored at the borders.
template <class T>
class CRowRing
{
public:
    explicit CRowRing(size_t nWidth)
        : m_nWidth(nWidth)
        , m_rows(kSlots, nWidth)
    {
        Clear();
    }

    /// Forgets all lines.
    void Clear()
    {
        for (size_t& nLine : m_anLines)
            nLine = kNone;
    }

    /// Line nLine, which may lie up to two lines outside; `make(line, row)` makes one of the inside. At most
    /// five lines that lie together may be in use.
    template <class Make>
    const T* Get(ptrdiff_t nLine, size_t nHeight, const Make& make)
    {
        const size_t nInside = Mirrored(nLine, nHeight);
        const size_t nSlot = nInside % kSlots;
        T* const pRow = m_rows.Row(nSlot);
        if (m_anLines[nSlot] != nInside) {
            make(nInside, pRow);
            for (ptrdiff_t i = 1; i <= 2; ++i) {
                const ptrdiff_t nEnd = static_cast<ptrdiff_t>(m_nWidth) - 1 + i;
                pRow[-i] = pRow[Mirrored(-i, m_nWidth)];
                pRow[nEnd] = pRow[Mirrored(nEnd, m_nWidth)];
            }
            m_anLines[nSlot] = nInside;
        }
        return pRow;
    }

private:
    static constexpr size_t kSlots = 8;
    static constexpr size_t kNone = SIZE_MAX;

    size_t m_nWidth;
    CRowBuffer<T> m_rows;
    size_t m_anLines[kSlots];
};

} // namespace Detail
} // namespace KxApi
