// SPDX-License-Identifier: Apache-2.0
// Reads the lines of a source image.
#pragma once

#include "CRowBuffer.h"
#include "SourceFormats.h"

#include <cstddef>
#include <cstdint>

namespace KxApi
{
namespace Detail
{

struct CComponentPlace;

/// How real numbers become values: (v - least) * factor.
struct CRealScale
{
    double least;
    double factor;
};

/// The image that is converted.
struct CSourceView
{
    const uint8_t* pBytes;
    size_t nWidth;
    size_t nHeight;
    size_t nLinePitch;
    size_t nPlanePitch;
    CRealScale scale{}; ///< of formats of real numbers
};

/// Gets the values of a line, a row for each channel. Rows of bytes get the high eight bits of what has more.
/// One thread.
class CLineReader
{
public:
    CLineReader(const CSourceFormat& format, size_t nWidth);

    void Read(const CSourceView& source, size_t nLine, uint8_t* const* apRows);
    void Read(const CSourceView& source, size_t nLine, uint16_t* const* apRows);

    const CSourceFormat& GetFormat() const { return m_format; }

    /// Bits of the values in rows of that type.
    template <class T>
    unsigned GetBits() const
    {
        return sizeof(T) == 1 && m_format.nBits > 8 ? 8 : m_format.nBits;
    }

private:
    /// The line of a component in memory.
    struct CLine
    {
        const uint8_t* pBytes;
        size_t nBytes;
    };

    CLine LineOf(const CSourceView& source, const CComponentPlace& place, size_t nLine) const;
    template <class T>
    void ReadLine(const CSourceView& source, size_t nLine, T* const* apRows);
    template <class T>
    void ReadPlanes(const CSourceView& source, size_t nLine, T* const* apRows);
    template <class T>
    CPackedRow ValuesOf(const CLine& line, size_t nValues);
    template <class T>
    void ReadByTable(const CSourceView& source, size_t nLine, size_t nChannel, T* pRow) const;

    CSourceFormat m_format;
    EPacking m_packing;
    size_t m_nLineBytes;
    CRowBuffer<uint16_t> m_values; ///< of a line, one behind the other
};

} // namespace Detail
} // namespace KxApi
