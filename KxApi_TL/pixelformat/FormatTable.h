// SPDX-License-Identifier: Apache-2.0
// The table of the pixel formats: every fact about a format stands here and nowhere else.
#pragma once

#include <KxApi_TL/KxPixelComponentType.h>
#include <KxApi_TL/KxPixelFormat.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace KxApi
{
namespace Detail
{

inline constexpr size_t kMaxComponents = 4;

/// Where the values of one component lie. Pixels come in groups of 1, 2 or 4 with the same bits; offsets are
/// from the start of the pixel's group, in the little-endian order of bits that the naming convention uses.
struct CComponentPlace
{
    uint8_t plane;
    uint8_t groupShift; ///< pixels of a group, as power of 2
    uint8_t lineShift;  ///< lines that share a line of this component, as power of 2
    uint8_t lowBits;    ///< low bits that lie apart from the others; 0: the value is one piece
    uint16_t groupBits;
    uint16_t high[4]; ///< by pixel of the group: offset of the value, or of its high part
    uint16_t low[4];  ///< the same for the low part
};

struct CPixelLayout
{
    uint8_t planes;
    uint8_t chromaDivisor; ///< of line pitch and height, for the planes behind the first
    CComponentPlace places[kMaxComponents];
};

/// What stands in front of the pixels of a cell that repeats over the image.
struct CMosaicCell
{
    EKxPixelComponent_t component;
    EKxPolarization_t polarization;
};

struct CPixelMosaic
{
    uint8_t period; ///< pixels and lines until it repeats: 1 (no mosaic), 2 or 4
    CMosaicCell cells[16];
};

struct CComponentRow
{
    EKxPixelComponent_t component; ///< without meaning where the mosaic tells it
    uint8_t bits;
    EKxPixelNumber_t number;
    bool isMosaic;
};

enum EFormatFlags : uint8_t
{
    kColor = 1,
    kSingle = 2,
    kPolarized = 4,
    kSizeFieldWrong = 8 ///< the code's size field tells the bits of the value, not those in memory
};

// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): the columns stand in the order of reading.
struct CPixelFormatRow
{
    uint32_t code;
    const char* name;
    uint8_t flags;
    uint8_t bits;      ///< of a pixel, over all planes
    uint8_t planeBits; ///< of a pixel, in the first plane
    uint8_t storageBits;
    uint8_t effectiveBits;
    uint8_t incrementX;
    uint8_t incrementY;
    uint8_t alignment;
    uint8_t patternStep;   ///< pixels and lines after which a neighbour's pattern begins
    uint16_t patternRight; ///< row of the format seen from patternStep columns further on
    uint16_t patternBelow; ///< the same for lines
    uint8_t layout;
    uint8_t mosaic;
    uint8_t componentCount;
    CComponentRow components[kMaxComponents];
};

#include "FormatTable.inc"

inline constexpr size_t kFormatCount = std::size(kFormats);

/// IDs, bits 0 to 15 of a code, are unique among the codes of the convention and among the others, and small.
inline constexpr size_t kMaxIds = 0x300;
inline constexpr uint16_t kNoRow = 0xFFFF;

struct CFormatIndex
{
    std::array<std::array<uint16_t, kMaxIds>, 2> rows;
};

constexpr CFormatIndex MakeFormatIndex()
{
    CFormatIndex index{};
    for (auto& half : index.rows) {
        for (uint16_t& row : half)
            row = kNoRow;
    }
    for (size_t i = 0; i < kFormatCount; ++i)
        index.rows[kFormats[i].code >> 31][kFormats[i].code & 0xFFFF] = static_cast<uint16_t>(i);
    return index;
}

inline constexpr CFormatIndex kFormatIndex = MakeFormatIndex();

/// Row of a code, null when there is none.
constexpr const CPixelFormatRow* FindFormat(uint32_t code)
{
    const uint32_t id = code & 0xFFFF;
    const uint16_t row = id < kMaxIds ? kFormatIndex.rows[code >> 31][id] : kNoRow;
    return row != kNoRow && kFormats[row].code == code ? &kFormats[row] : nullptr;
}

/// Type of component k of the pixel at x, y.
constexpr EKxPixelComponentType_t ComponentType(const CPixelFormatRow& row, size_t k, size_t x, size_t y)
{
    const CComponentRow& component = row.components[k];
    CMosaicCell cell{component.component, KxPolarization_None};
    if (component.isMosaic) {
        const CPixelMosaic& mosaic = kMosaics[row.mosaic];
        cell = mosaic.cells[(y % mosaic.period) * mosaic.period + x % mosaic.period];
    }
    return MakeKxPixelComponentType(cell.component, component.bits, cell.polarization, component.number);
}

} // namespace Detail
} // namespace KxApi
