// SPDX-License-Identifier: Apache-2.0
#include "CLineReader.h"

#include "PixelReader.h"
#include "RowKernels.h"
#include "ValueTables.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

/// As ReadBits for 0 to 16 bits, with one access where the line has eight bytes left.
uint32_t ReadBitsOfLine(const uint8_t* pLine, size_t nBytes, size_t nBit, unsigned nCount)
{
    const size_t nByte = nBit / 8;
    if (nByte + 8 > nBytes)
        return static_cast<uint32_t>(ReadBits(pLine, nBit, nCount));
    uint64_t nWord;
    std::memcpy(&nWord, pLine + nByte, sizeof(nWord));
    return static_cast<uint32_t>(nWord >> nBit % 8) & (0xFFFFU >> (16 - nCount));
}

} // namespace

CLineReader::CLineReader(const CSourceFormat& format, size_t nWidth)
    : m_format(format)
    , m_packing(HasUnpackKernels() ? format.packing : EPacking::Table)
    , m_nLineBytes(format.pInfo->GetLinePitch(nWidth / format.nColumnsPerPixel, 1))
    , m_values(1, m_packing == EPacking::Table || format.order == EOrder::Single
                      ? 0
                      : std::max<size_t>((nWidth >> format.nGroupShift) * format.nGroupValues, nWidth))
{}

CLineReader::CLine CLineReader::LineOf(const CSourceView& source, const CComponentPlace& place,
                                       size_t nLine) const
{
    if (place.plane == 0)
        return {source.pBytes + (nLine >> place.lineShift) * source.nLinePitch, m_nLineBytes};
    const size_t nDivisor = m_format.pLayout->chromaDivisor;
    const CPixelMemory memory{source.pBytes, source.nLinePitch, source.nPlanePitch};
    return {source.pBytes + PlaneOffset(*m_format.pLayout, memory, place.plane) +
                (nLine >> place.lineShift) * (source.nLinePitch / nDivisor),
            m_nLineBytes / nDivisor};
}

template <class T>
void CLineReader::ReadByTable(const CSourceView& source, size_t nLine, size_t nChannel, T* pRow) const
{
    const size_t nComponent = m_format.anComponent[nChannel];
    // Copies of all that the loop needs, for a store to a row of bytes might change anything else.
    const CComponentPlace place = m_format.pLayout->places[nComponent];
    const unsigned nFullBits = m_format.nBits;
    const unsigned nBits = m_format.pRow->components[nComponent].bits;
    const CLine line = LineOf(source, place, nLine);
    const unsigned nCut = nFullBits - GetBits<T>();
    const uint32_t nFlip = m_format.isSigned ? 1U << (nBits - 1) : 0;
    const size_t nGroupMask = (size_t{1} << place.groupShift) - 1;
    const size_t nWidth = source.nWidth;
    for (size_t x = 0; x < nWidth; ++x) {
        const size_t nGroupBit = (x >> place.groupShift) * place.groupBits;
        const size_t nInGroup = x & nGroupMask;
        uint32_t nValue =
            ReadBitsOfLine(line.pBytes, line.nBytes, nGroupBit + place.high[nInGroup], nBits - place.lowBits);
        if (place.lowBits != 0)
            nValue = nValue << place.lowBits |
                     ReadBitsOfLine(line.pBytes, line.nBytes, nGroupBit + place.low[nInGroup], place.lowBits);
        if (nBits < nFullBits)
            nValue = RepeatedBits(nValue, nBits, nFullBits);
        pRow[x] = static_cast<T>((nValue ^ nFlip) >> nCut);
    }
}

/// The values of a line one behind the other: in the image itself, if they lie so there.
template <class T>
CPackedRow CLineReader::ValuesOf(const CLine& line, size_t nValues)
{
    const CPackedRow packed{line.pBytes, line.nBytes, nValues, m_format.nBits};
    if (m_packing == EPacking::Bytes && sizeof(T) == 1)
        return packed;
    T* const pValues = reinterpret_cast<T*>(m_values.Row(0));
    UnpackRow(m_packing, packed, pValues);
    return {reinterpret_cast<const uint8_t*>(pValues), (nValues + kRowPadding) * sizeof(T), nValues,
            GetBits<T>()};
}

/// Each channel by itself, or both of chroma.
template <class T>
void CLineReader::ReadPlanes(const CSourceView& source, size_t nLine, T* const* apRows)
{
    const CPixelLayout& layout = *m_format.pLayout;
    for (size_t nChannel = 0; nChannel < m_format.nChannels; ++nChannel) {
        const CComponentPlace& place = layout.places[m_format.anComponent[nChannel]];
        const CLine line = LineOf(source, place, nLine);
        const bool isPair = place.groupBits == 16 && m_packing == EPacking::Bytes;
        if (place.groupShift == 0) {
            UnpackRow(m_packing, {line.pBytes, line.nBytes, source.nWidth, m_format.nBits}, apRows[nChannel]);
        } else if (!isPair) {
            SplitRow(EOrder::Shared, ValuesOf<T>(line, source.nWidth / 2), &apRows[nChannel]);
        } else if (place.high[0] == 0) { // the other chroma channel comes with it
            T* const apPair[] = {apRows[nChannel], apRows[3 - nChannel]};
            SplitRow(EOrder::SharedPair, ValuesOf<T>(line, source.nWidth), apPair);
        }
    }
}

template <class T>
void CLineReader::ReadLine(const CSourceView& source, size_t nLine, T* const* apRows)
{
    if (m_packing == EPacking::Table) {
        for (size_t nChannel = 0; nChannel < m_format.nChannels; ++nChannel)
            ReadByTable(source, nLine, nChannel, apRows[nChannel]);
        return;
    }
    if (m_format.order == EOrder::Planes)
        return ReadPlanes(source, nLine, apRows);
    const CLine line{source.pBytes + nLine * source.nLinePitch, m_nLineBytes};
    if (m_format.order == EOrder::Single) {
        UnpackRow(m_packing, {line.pBytes, line.nBytes, source.nWidth, m_format.nBits}, apRows[0]);
        return;
    }
    T* apInMemory[kMaxChannels] = {apRows[0], apRows[1], apRows[2], nullptr};
    const bool isPixel = m_format.order == EOrder::Three || m_format.order == EOrder::Four;
    for (size_t k = 0; isPixel && k < m_format.nGroupValues; ++k)
        apInMemory[k] = apRows[m_format.anChannel[k]];
    const size_t nValues = (source.nWidth >> m_format.nGroupShift) * m_format.nGroupValues;
    SplitRow(m_format.order, ValuesOf<T>(line, nValues), apInMemory);
}

void CLineReader::Read(const CSourceView& source, size_t nLine, uint8_t* const* apRows)
{
    ReadLine(source, nLine, apRows);
}

void CLineReader::Read(const CSourceView& source, size_t nLine, uint16_t* const* apRows)
{
    ReadLine(source, nLine, apRows);
}

} // namespace Detail
} // namespace KxApi
