// SPDX-License-Identifier: Apache-2.0
#include "CLineReader.h"

#include "PixelReader.h"
#include "RowKernels.h"
#include "ValueTables.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

bool IsInterleaved(EPacking ePacking)
{
    return ePacking == EPacking::Bytes3 || ePacking == EPacking::Bytes4 || ePacking == EPacking::Words3 ||
           ePacking == EPacking::Words4;
}

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
    , m_ePacking(HasUnpackKernels() ? format.ePacking : EPacking::Table)
    , m_nLineBytes(format.pInfo->GetLinePitch(nWidth, 1))
    , m_anChannelInMemory{0, 1, 2, 3}
{
    if (!IsInterleaved(m_ePacking))
        return;
    const unsigned nUnit = format.nBits == 8 ? 8 : 16;
    for (uint8_t nChannel = 0; nChannel < format.nChannels; ++nChannel) {
        const CComponentPlace& place = format.pLayout->places[format.anComponent[nChannel]];
        m_anChannelInMemory[place.high[0] / nUnit] = nChannel;
    }
}

template <class T>
void CLineReader::ReadByTable(const CSourceView& source, size_t nLine, size_t nChannel, T* pRow) const
{
    const size_t nComponent = m_format.anComponent[nChannel];
    // Copies of all that the loop needs, for a store to a row of bytes might change anything else.
    const CComponentPlace place = m_format.pLayout->places[nComponent];
    const unsigned nFullBits = m_format.nBits;
    const unsigned nBits = m_format.pRow->components[nComponent].bits;
    const uint8_t* pLine = source.pBytes;
    size_t nPitch = source.nLinePitch;
    size_t nBytes = m_nLineBytes;
    if (place.plane != 0) {
        const CPixelMemory memory{source.pBytes, source.nLinePitch, source.nPlanePitch};
        pLine += PlaneOffset(*m_format.pLayout, memory, place.plane);
        nPitch /= m_format.pLayout->chromaDivisor;
        nBytes /= m_format.pLayout->chromaDivisor;
    }
    pLine += (nLine >> place.lineShift) * nPitch;
    const unsigned nCut = nFullBits - GetBits<T>();
    const uint32_t nFlip = m_format.bSigned ? 1U << (nBits - 1) : 0;
    const size_t nGroupMask = (size_t{1} << place.groupShift) - 1;
    const size_t nWidth = source.nWidth;
    for (size_t x = 0; x < nWidth; ++x) {
        const size_t nGroupBit = (x >> place.groupShift) * place.groupBits;
        const size_t nInGroup = x & nGroupMask;
        uint32_t nValue =
            ReadBitsOfLine(pLine, nBytes, nGroupBit + place.high[nInGroup], nBits - place.lowBits);
        if (place.lowBits != 0)
            nValue = nValue << place.lowBits |
                     ReadBitsOfLine(pLine, nBytes, nGroupBit + place.low[nInGroup], place.lowBits);
        if (nBits < nFullBits)
            nValue = RepeatedBits(nValue, nBits, nFullBits);
        pRow[x] = static_cast<T>((nValue ^ nFlip) >> nCut);
    }
}

template <class T>
void CLineReader::ReadLine(const CSourceView& source, size_t nLine, T* const* apRows) const
{
    if (m_ePacking == EPacking::Table) {
        for (size_t nChannel = 0; nChannel < m_format.nChannels; ++nChannel)
            ReadByTable(source, nLine, nChannel, apRows[nChannel]);
        return;
    }
    T* apInMemory[kMaxChannels] = {};
    for (size_t k = 0; k < m_format.nChannels; ++k)
        apInMemory[k] = apRows[m_anChannelInMemory[k]];
    UnpackRow(m_ePacking,
              {source.pBytes + nLine * source.nLinePitch, m_nLineBytes, source.nWidth, m_format.nBits},
              apInMemory);
}

void CLineReader::Read(const CSourceView& source, size_t nLine, uint8_t* const* apRows) const
{
    ReadLine(source, nLine, apRows);
}

void CLineReader::Read(const CSourceView& source, size_t nLine, uint16_t* const* apRows) const
{
    ReadLine(source, nLine, apRows);
}

} // namespace Detail
} // namespace KxApi
