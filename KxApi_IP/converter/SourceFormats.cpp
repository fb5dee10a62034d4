// SPDX-License-Identifier: Apache-2.0
#include "SourceFormats.h"

#include "FormatTable.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr unsigned kMaxBits = 16;

EKxPixelComponent_t ComponentOf(EKxPixelComponentType_t type)
{
    return static_cast<EKxPixelComponent_t>(type >> 24);
}

/// The channel of a component, kMaxChannels for what is none.
size_t ChannelOf(EKxPixelComponent_t component)
{
    switch (component) {
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

/// Of values of nBits that lie one behind the other at distances of nUnit bits.
EPacking PackingOf(unsigned nUnit, unsigned nBits)
{
    struct CRow
    {
        unsigned nUnit;
        EPacking packing;
    };
    constexpr CRow kPackings[] = {
        {1, EPacking::Bits1},     {2, EPacking::Bits2},     {4, EPacking::Bits4},     {8, EPacking::Bytes},
        {10, EPacking::Stream10}, {12, EPacking::Stream12}, {14, EPacking::Stream14}, {16, EPacking::Words}};
    if (nUnit == 16 && nBits >= 8)
        return EPacking::Words;
    const auto* const pFound = std::find_if(std::begin(kPackings), std::end(kPackings),
                                            [=](const CRow& row) { return row.nUnit == nUnit; });
    return pFound != std::end(kPackings) && nUnit == nBits ? pFound->packing : EPacking::Table;
}

/// Whether the two values of a group of three bytes have their low bits in the middle one.
bool IsHalves(const CComponentPlace& place, unsigned nLowBits)
{
    return place.groupShift == 1 && place.groupBits == 24 && place.high[0] == 0 && place.high[1] == 16 &&
           place.lowBits == nLowBits;
}

EPacking SinglePacking(const CComponentPlace& place, unsigned nBits)
{
    if (IsHalves(place, 2))
        return EPacking::Halves10;
    if (IsHalves(place, 4))
        return EPacking::Halves12;
    const bool isPlain = place.groupShift == 0 && place.high[0] == 0 && place.lowBits == 0;
    return isPlain ? PackingOf(place.groupBits, nBits) : EPacking::Table;
}

/// The channels of the values that a group of pixels has, in the order of memory.
struct CGroup
{
    size_t nValues;
    std::array<uint8_t, 6> anChannel;

    bool operator==(const CGroup& other) const
    {
        return nValues == other.nValues && anChannel == other.anChannel;
    }
};

/// The group of values in one plane; an empty one where they don't lie one behind the other at nUnit bits.
CGroup GroupOf(const CSourceFormat& format, unsigned nUnit)
{
    constexpr uint8_t kNone = 0xFF;
    const CComponentPlace& first = format.pLayout->places[0];
    CGroup group{first.groupBits / nUnit, {}};
    if (first.groupBits % nUnit != 0 || group.nValues > group.anChannel.size())
        return {};
    std::fill_n(group.anChannel.begin(), group.nValues, kNone);
    for (uint8_t nChannel = 0; nChannel < format.nChannels; ++nChannel) {
        const CComponentPlace& place = format.pLayout->places[format.anComponent[nChannel]];
        if (place.lowBits != 0 || place.groupBits != first.groupBits || place.groupShift != first.groupShift)
            return {};
        for (size_t i = 0; i < size_t{1} << place.groupShift; ++i) {
            if (place.high[i] % nUnit != 0)
                return {};
            group.anChannel[place.high[i] / nUnit] = nChannel;
        }
    }
    const auto* const pFirst = group.anChannel.data();
    const auto* const pEnd = pFirst + group.nValues;
    return std::find(pFirst, pEnd, kNone) == pEnd ? group : CGroup{};
}

/// The order of a group's values; Single where none is known.
EOrder OrderOf(const CGroup& group, unsigned nGroupShift)
{
    struct CRow
    {
        CGroup group;
        EOrder order;
    };
    constexpr CRow kOrders[] = {{{4, {0, 1, 0, 2}}, EOrder::Luma0Chroma1},
                                {{4, {1, 0, 2, 0}}, EOrder::Chroma0Luma1},
                                {{6, {0, 0, 1, 0, 0, 2}}, EOrder::Luma01Chroma2},
                                {{6, {1, 0, 0, 2, 0, 0}}, EOrder::Chroma0Luma12}};
    if (nGroupShift == 0)
        return group.nValues == 3 ? EOrder::Three : group.nValues == 4 ? EOrder::Four : EOrder::Single;
    const auto* const pFound = std::find_if(std::begin(kOrders), std::end(kOrders),
                                            [&](const CRow& row) { return row.group == group; });
    return pFound != std::end(kOrders) ? pFound->order : EOrder::Single;
}

/// Whether the lines of all planes can be unpacked: one channel in a plane, or both of chroma in bytes.
bool ArePlanesKnown(const CPixelFormatRow& row, const CPixelLayout& layout, unsigned nBits)
{
    for (size_t k = 0; k < row.componentCount; ++k) {
        const CComponentPlace& place = layout.places[k];
        const unsigned nUnit = nBits == 8 ? 8 : 16;
        const bool isPair = place.groupBits == 2 * nUnit && place.groupShift == 1 && nUnit == 8;
        const bool isOwn = place.groupBits == nUnit && place.groupShift <= 1 && place.high[0] == 0;
        if (place.lowBits != 0 || row.components[k].bits != nBits || nBits < 8 || (!isPair && !isOwn))
            return false;
    }
    return true;
}

bool IsTens(const CPixelFormatRow& row, const CPixelLayout& layout)
{
    for (size_t k = 0; k < row.componentCount; ++k) {
        const CComponentPlace& place = layout.places[k];
        if (row.components[k].bits != 10 || place.groupShift != 0 || place.groupBits != 32 ||
            place.high[0] != 10 * k || place.lowBits != 0)
            return false;
    }
    return row.componentCount == 3;
}

void SetPacking(CSourceFormat& format, EPacking packing, EOrder order, const CGroup& group)
{
    format.packing = packing;
    format.order = order;
    format.nGroupValues = static_cast<uint8_t>(group.nValues);
    format.nGroupShift = format.pLayout->places[0].groupShift;
    if (format.nGroupShift == 0)
        std::copy_n(group.anChannel.begin(), group.nValues, format.anChannel);
}

void DescribePacking(CSourceFormat& format)
{
    const CPixelFormatRow& row = *format.pRow;
    const CPixelLayout& layout = *format.pLayout;
    format.packing = EPacking::Table;
    if (layout.planes > 1) {
        format.order = EOrder::Planes;
        if (ArePlanesKnown(row, layout, format.nBits))
            format.packing = format.nBits == 8 ? EPacking::Bytes : EPacking::Words;
        return;
    }
    for (const unsigned nUnit : {8U, 10U, 12U, 14U, 16U}) {
        const EPacking packing = PackingOf(nUnit, format.nBits);
        const CGroup group = GroupOf(format, nUnit);
        const EOrder order = OrderOf(group, layout.places[0].groupShift);
        if (packing != EPacking::Table && order != EOrder::Single)
            return SetPacking(format, packing, order, group);
    }
    // The two bits above three of ten go into a row that nobody looks at.
    if (IsTens(row, layout))
        SetPacking(format, EPacking::Tens, EOrder::Four,
                   format.anComponent[0] == 0 ? CGroup{4, {0, 1, 2, 3}} : CGroup{4, {2, 1, 0, 3}});
}

EYccKind YccKind(std::string_view name)
{
    struct CPrefix
    {
        std::string_view prefix;
        EYccKind kind;
    };
    constexpr CPrefix kPrefixes[] = {{"YCbCr601", EYccKind::Limited601},
                                     {"YCbCr709", EYccKind::Limited709},
                                     {"YCbCr2020", EYccKind::Limited2020}};
    for (const CPrefix& entry : kPrefixes) {
        if (name.substr(0, entry.prefix.size()) == entry.prefix)
            return entry.kind;
    }
    return EYccKind::Full601;
}

/// Fills in where the colours or polarisers of a mosaic lie; false for a mosaic that isn't understood.
bool DescribeMosaic(CSourceFormat& format)
{
    const IKxPixelFormatInfoInside& info = *format.pInfo;
    const size_t nScale = format.isPolarized ? 2 : 1; // colours repeat over squares of polarisers
    for (size_t i = 0; format.isPolarized && i < 4; ++i) {
        const size_t nPolarizer = info.GetComponentType(0, i % 2, i / 2) & 0xFF;
        if (nPolarizer < KxPolarization_0 || nPolarizer > KxPolarization_135)
            return false;
        format.anPolarizer[nPolarizer - KxPolarization_0] = static_cast<uint8_t>(i);
    }
    for (size_t i = 0; i < 4; ++i) {
        const EKxPixelComponent_t component =
            ComponentOf(info.GetComponentType(0, i % 2 * nScale, i / 2 * nScale));
        if (component == KxPixelComponent_W)
            return false;
        if (component == KxPixelComponent_R) {
            format.family = EFamily::Bayer;
            format.nRedX = static_cast<uint8_t>(i % 2);
            format.nRedY = static_cast<uint8_t>(i / 2);
        }
    }
    return true;
}

bool DescribeSingle(CSourceFormat& format)
{
    format.nChannels = 1;
    format.family = EFamily::Mono;
    format.order = EOrder::Single;
    format.nGroupValues = 1;
    format.packing =
        format.isSigned ? EPacking::Table : SinglePacking(format.pLayout->places[0], format.nBits);
    return !format.pRow->components[0].isMosaic || DescribeMosaic(format);
}

bool IsCoordinate(EKxPixelComponent_t component)
{
    return component == KxPixelComponent_CoordA || component == KxPixelComponent_CoordB ||
           component == KxPixelComponent_CoordC;
}

/// Points in space: of their coordinates the last is shown, which is the range.
bool DescribePoints(CSourceFormat& format)
{
    const CPixelFormatRow& row = *format.pRow;
    const auto nLast = static_cast<uint8_t>(row.componentCount - 1);
    format.nChannels = 1;
    format.anComponent[0] = nLast;
    format.family = EFamily::Mono;
    format.order = EOrder::Single;
    format.packing = EPacking::Table;
    return std::all_of(row.components, row.components + row.componentCount,
                       [](const CComponentRow& component) { return IsCoordinate(component.component); });
}

bool DescribeMulti(CSourceFormat& format)
{
    if (IsCoordinate(format.pRow->components[0].component))
        return DescribePoints(format);
    const CPixelFormatRow& row = *format.pRow;
    bool abFound[kMaxChannels] = {};
    bool hasLuma = false;
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
        hasLuma = hasLuma || component.component == KxPixelComponent_Y;
        format.anComponent[nChannel] = static_cast<uint8_t>(k);
        const CComponentPlace& place = format.pLayout->places[k];
        // Values of several pixels that lie in one group for packing alone are not shared.
        if (hasLuma && component.component != KxPixelComponent_Y && nChannel < 3) {
            format.nStepX = std::max(format.nStepX, size_t{1} << place.groupShift);
            format.nStepY = std::max(format.nStepY, size_t{1} << place.lineShift);
        }
    }
    if (!abFound[0] || !abFound[1] || !abFound[2])
        return false;
    format.nChannels = row.componentCount;
    format.family = hasLuma ? EFamily::Ycc : EFamily::Rgb;
    format.ycc = YccKind(row.name);
    DescribePacking(format);
    return true;
}

} // namespace

std::optional<CSourceFormat> DescribeSourceFormat(EKxPixelFormatNamingConvention_t pixelFormat)
{
    const CPixelFormatRow* const pRow = FindFormat(pixelFormat);
    const auto* const pInfo =
        dynamic_cast<const IKxPixelFormatInfoInside*>(GetIKxPixelFormatInfo(pixelFormat));
    if (!pRow || !pInfo)
        return std::nullopt;
    CSourceFormat format{};
    format.pInfo = pInfo;
    format.pRow = pRow;
    format.pLayout = &kLayouts[pRow->layout];
    format.nBits = pRow->effectiveBits;
    format.nStepX = format.nStepY = format.nColumnsPerPixel = 1;
    format.isPolarized = pInfo->IsPolarized();
    format.isSigned = pRow->components[0].number == KxPixelNumber_Signed;
    format.isReal = pRow->components[0].number == KxPixelNumber_Float;
    if (format.isReal)
        format.nBits = kMaxBits;
    if (format.nBits > kMaxBits)
        return std::nullopt;
    const bool isKnown = pRow->componentCount == 1 ? DescribeSingle(format) : DescribeMulti(format);
    return isKnown ? std::optional<CSourceFormat>(format) : std::nullopt;
}

} // namespace Detail
} // namespace KxApi
