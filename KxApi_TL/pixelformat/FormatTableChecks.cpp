// SPDX-License-Identifier: Apache-2.0
// Holds the table of the pixel formats against what their codes say of themselves, at compile time.

#include "FormatTable.h"

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr uint32_t kSingleLayout = 1;
constexpr uint32_t kMultipleLayout = 2;

/// Every ID was told apart: each code is found, and as the row it stands in.
constexpr bool EachCodeIsFound()
{
    for (const CPixelFormatRow& row : kFormats) {
        if (FindFormat(row.code) != &row)
            return false;
    }
    return true;
}

constexpr bool CodesAscend()
{
    for (size_t i = 1; i < kFormatCount; ++i) {
        if (kFormats[i - 1].code >= kFormats[i].code)
            return false;
    }
    return true;
}

constexpr bool SizeFieldsAgree()
{
    for (const CPixelFormatRow& row : kFormats) {
        const uint32_t sizeField = row.code >> 16 & 0xFF;
        const uint32_t expected = row.flags & kSizeFieldWrong ? row.effectiveBits : row.bits;
        if (sizeField != expected)
            return false;
    }
    return true;
}

constexpr bool LayoutFieldsAgree()
{
    for (const CPixelFormatRow& row : kFormats) {
        if ((row.code >> 24 & 0x7F) != (row.componentCount == 1 ? kSingleLayout : kMultipleLayout))
            return false;
    }
    return true;
}

/// The sizes told for whole pixels follow from the places of the components: a group's bits in the first
/// plane are those of its pixels.
constexpr bool GroupsAgreeWithPlanes()
{
    for (const CPixelFormatRow& row : kFormats) {
        const CPixelLayout& layout = kLayouts[row.layout];
        if (layout.places[0].groupBits != row.planeBits << layout.places[0].groupShift)
            return false;
        if (layout.planes == 1 && row.bits != row.planeBits)
            return false;
    }
    return true;
}

constexpr bool ValuesLieInTheirGroups()
{
    for (const CPixelFormatRow& row : kFormats) {
        for (size_t k = 0; k < row.componentCount; ++k) {
            const CComponentPlace& place = kLayouts[row.layout].places[k];
            for (size_t i = 0; i < 4; ++i) {
                if (place.high[i] + row.components[k].bits - place.lowBits > place.groupBits ||
                    place.low[i] + place.lowBits > place.groupBits)
                    return false;
            }
        }
    }
    return true;
}

constexpr bool WindowsStartOnBytes()
{
    for (const CPixelFormatRow& row : kFormats) {
        const CPixelLayout& layout = kLayouts[row.layout];
        for (size_t k = 0; k < row.componentCount; ++k) {
            const size_t pixels = size_t{1} << layout.places[k].groupShift;
            if (row.incrementX * row.planeBits % 8 != 0 ||
                row.incrementX * layout.places[k].groupBits / pixels % 8 != 0)
                return false;
        }
    }
    return true;
}

static_assert(EachCodeIsFound(), "two formats have the same ID");
static_assert(CodesAscend(), "the rows are not in the order of the codes");
static_assert(SizeFieldsAgree(), "a code's size field differs from the bits of a pixel");
static_assert(LayoutFieldsAgree(), "a code's layout field differs from the number of components");
static_assert(GroupsAgreeWithPlanes(), "the groups of a layout differ from the bits of a pixel");
static_assert(ValuesLieInTheirGroups(), "a value reaches beyond the bits of its group");
static_assert(WindowsStartOnBytes(), "a window could start inside a byte");

} // namespace
} // namespace Detail
} // namespace KxApi
