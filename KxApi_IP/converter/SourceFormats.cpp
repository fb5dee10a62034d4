// SPDX-License-Identifier: Apache-2.0
#include "SourceFormats.h"

#include "FormatTable.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <string_view>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr unsigned kMaxBits = 16;

EKxPixelComponent_t ComponentOf(EKxPixelComponentType_t eType)
{
    return static_cast<EKxPixelComponent_t>(eType >> 24);
}

/// The channel of a component, kMaxChannels for what is none.
size_t ChannelOf(EKxPixelComponent_t eComponent)
{
    switch (eComponent) {
    case KxPixelComponent_R:
    case KxPixelComponent_Y:
        return 0;
    case KxPixelComponent_G:
    case KxPixelComponent_Cb:
    case KxPixelComponent_U:
        return 1;
    case KxPixelComponent_B:
    case KxPixelComponent_Cr:
    case KxPixelComponent_V:
        return 2;
    case KxPixelComponent_Alpha:
        return 3;
    default:
        return kMaxChannels;
    }
}

/// Whether the places of the first value, as the table has them, are these.
bool IsPlace(const CComponentPlace& place, unsigned nGroupShift, unsigned nGroupBits, unsigned nHigh0,
             unsigned nHigh1, unsigned nLowBits = 0)
{
    return place.groupShift == nGroupShift && place.groupBits == nGroupBits && place.high[0] == nHigh0 &&
           place.high[1] == nHigh1 && place.lowBits == nLowBits;
}

EPacking SinglePacking(const CPixelLayout& layout, unsigned nBits)
{
    const CComponentPlace& place = layout.places[0];
    if (IsPlace(place, 0, 8, 0, 0) && nBits == 8)
        return EPacking::Bytes;
    if (IsPlace(place, 0, 16, 0, 0))
        return EPacking::Words;
    if (IsPlace(place, 0, 10, 0, 0))
        return EPacking::Stream10;
    if (IsPlace(place, 0, 12, 0, 0))
        return EPacking::Stream12;
    if (IsPlace(place, 1, 24, 0, 16, 2))
        return EPacking::Halves10;
    if (IsPlace(place, 1, 24, 0, 16, 4))
        return EPacking::Halves12;
    return EPacking::Table;
}

EPacking MultiPacking(const CPixelFormatRow& row, const CPixelLayout& layout, unsigned nBits)
{
    if (layout.planes != 1)
        return EPacking::Table;
    const size_t nCount = row.componentCount;
    const unsigned nUnit = nBits == 8 ? 8 : 16;
    bool bInterleaved = true;
    for (size_t k = 0; k < nCount; ++k) {
        const CComponentPlace& place = layout.places[k];
        bInterleaved = bInterleaved && place.groupShift == 0 && place.lowBits == 0 &&
                       place.groupBits == nUnit * nCount && place.high[0] % nUnit == 0;
    }
    if (bInterleaved)
        return nUnit == 8 ? (nCount == 3 ? EPacking::Bytes3 : EPacking::Bytes4)
                          : (nCount == 3 ? EPacking::Words3 : EPacking::Words4);
    if (nBits == 8 && IsPlace(layout.places[0], 1, 32, 0, 16) && layout.places[1].high[0] == 8)
        return EPacking::Luma0Chroma1;
    if (nBits == 8 && IsPlace(layout.places[0], 1, 32, 8, 24) && layout.places[1].high[0] == 0)
        return EPacking::Chroma0Luma1;
    return EPacking::Table;
}

EYccKind YccKind(std::string_view strName)
{
    struct CPrefix
    {
        std::string_view prefix;
        EYccKind eKind;
    };
    constexpr CPrefix kPrefixes[] = {{"YCbCr601", EYccKind::Limited601},
                                     {"YCbCr709", EYccKind::Limited709},
                                     {"YCbCr2020", EYccKind::Limited2020}};
    for (const CPrefix& entry : kPrefixes) {
        if (strName.substr(0, entry.prefix.size()) == entry.prefix)
            return entry.eKind;
    }
    return EYccKind::Full601;
}

/// Fills in where the colours or polarisers of a mosaic lie; false for a mosaic that isn't understood.
bool DescribeMosaic(CSourceFormat& format)
{
    const IKxPixelFormatInfoInside& info = *format.pInfo;
    const size_t nScale = format.bPolarized ? 2 : 1; // colours repeat over squares of polarisers
    for (size_t i = 0; format.bPolarized && i < 4; ++i) {
        const size_t nPolarizer = info.GetComponentType(0, i % 2, i / 2) & 0xFF;
        if (nPolarizer < KxPolarization_0 || nPolarizer > KxPolarization_135)
            return false;
        format.anPolarizer[nPolarizer - KxPolarization_0] = static_cast<uint8_t>(i);
    }
    for (size_t i = 0; i < 4; ++i) {
        const EKxPixelComponent_t eComponent =
            ComponentOf(info.GetComponentType(0, i % 2 * nScale, i / 2 * nScale));
        if (eComponent == KxPixelComponent_W)
            return false;
        if (eComponent == KxPixelComponent_R) {
            format.eFamily = EFamily::Bayer;
            format.nRedX = static_cast<uint8_t>(i % 2);
            format.nRedY = static_cast<uint8_t>(i / 2);
        }
    }
    return true;
}

bool DescribeSingle(CSourceFormat& format)
{
    format.nChannels = 1;
    format.eFamily = EFamily::Mono;
    format.ePacking = format.bSigned ? EPacking::Table : SinglePacking(*format.pLayout, format.nBits);
    return !format.pRow->components[0].isMosaic || DescribeMosaic(format);
}

bool DescribeMulti(CSourceFormat& format)
{
    const CPixelFormatRow& row = *format.pRow;
    bool abFound[kMaxChannels] = {};
    bool bHasLuma = false;
    for (size_t k = 0; k < row.componentCount; ++k) {
        const CComponentRow& component = row.components[k];
        const size_t nChannel = ChannelOf(component.component);
        if (component.isMosaic || component.number != KxPixelNumber_Unsigned || nChannel == kMaxChannels ||
            component.bits > kMaxBits)
            return false;
        abFound[nChannel] = true;
        // Values of unequal depth are read as 8 bits.
        if (component.bits != format.nBits)
            format.nBits = 8;
        bHasLuma = bHasLuma || component.component == KxPixelComponent_Y;
        format.anComponent[nChannel] = static_cast<uint8_t>(k);
        const CComponentPlace& place = format.pLayout->places[k];
        // Values of several pixels that lie in one group for packing alone are not shared.
        if (bHasLuma && component.component != KxPixelComponent_Y && nChannel < 3) {
            format.nStepX = std::max(format.nStepX, size_t{1} << place.groupShift);
            format.nStepY = std::max(format.nStepY, size_t{1} << place.lineShift);
        }
    }
    if (!abFound[0] || !abFound[1] || !abFound[2])
        return false;
    format.nChannels = row.componentCount;
    format.eFamily = bHasLuma ? EFamily::Ycc : EFamily::Rgb;
    format.eYcc = YccKind(row.name);
    format.ePacking = MultiPacking(row, *format.pLayout, format.nBits);
    return true;
}

} // namespace

std::optional<CSourceFormat> DescribeSourceFormat(EKxPixelFormatNamingConvention_t eFormat)
{
    const CPixelFormatRow* const pRow = FindFormat(eFormat);
    const auto* const pInfo = dynamic_cast<const IKxPixelFormatInfoInside*>(GetIKxPixelFormatInfo(eFormat));
    if (!pRow || !pInfo)
        return std::nullopt;
    CSourceFormat format{};
    format.pInfo = pInfo;
    format.pRow = pRow;
    format.pLayout = &kLayouts[pRow->layout];
    format.nBits = pRow->effectiveBits;
    format.nStepX = format.nStepY = 1;
    format.bPolarized = pInfo->IsPolarized();
    format.bSigned = pRow->components[0].number == KxPixelNumber_Signed;
    if (pRow->components[0].number == KxPixelNumber_Float || format.nBits > kMaxBits)
        return std::nullopt;
    const bool bIsKnown = pRow->componentCount == 1 ? DescribeSingle(format) : DescribeMulti(format);
    return bIsKnown ? std::optional<CSourceFormat>(format) : std::nullopt;
}

} // namespace Detail
} // namespace KxApi
