// SPDX-License-Identifier: Apache-2.0
// Reads single pixels of any format.
#pragma once

#include "FormatTable.h"

namespace KxApi
{
namespace Detail
{

/// Memory of an image, as cameras and image buffers lay it out.
struct CPixelMemory
{
    const uint8_t* buffer;
    size_t linePitch;
    size_t planePitch; ///< from the first plane to the second
};

/// `count` bits, 64 at most, that start `bit` bits after `base`. A value of 64 bits starts at a byte.
inline uint64_t ReadBits(const uint8_t* base, size_t bit, unsigned count)
{
    const uint8_t* const bytes = base + bit / 8;
    const unsigned shift = static_cast<unsigned>(bit % 8);
    const unsigned byteCount = (shift + count + 7) / 8;
    uint64_t word = bytes[0];
    for (unsigned i = 1; i < byteCount; ++i)
        word |= uint64_t{bytes[i]} << (8 * i);
    word >>= shift;
    return count == 64 ? word : word & ((uint64_t{1} << count) - 1);
}

/// Offset of a plane behind the first: they follow each other, sub-sampled ones with their true size.
inline size_t PlaneOffset(const CPixelLayout& layout, const CPixelMemory& memory, size_t plane)
{
    const size_t divisor = layout.chromaDivisor;
    return memory.planePitch + (plane - 1) * (memory.planePitch / (divisor * divisor));
}

/// Bits of component k of the pixel at x, y, which has to lie in the image. Reads no byte that doesn't belong
/// to the value. Inline, as it is most of what the reading of a pixel takes.
inline uint64_t ReadComponent(const CPixelFormatRow& row, const CPixelMemory& memory, size_t k, size_t x,
                              size_t y)
{
    const CPixelLayout& layout = kLayouts[row.layout];
    const CComponentPlace& place = layout.places[k];
    const uint8_t* base = memory.buffer;
    size_t linePitch = memory.linePitch;
    if (place.plane != 0) {
        base += PlaneOffset(layout, memory, place.plane);
        linePitch /= layout.chromaDivisor;
    }
    base += (y >> place.lineShift) * linePitch;
    const size_t groupBit = (x >> place.groupShift) * place.groupBits;
    const size_t inGroup = x & ((size_t{1} << place.groupShift) - 1);
    const unsigned bits = row.components[k].bits;
    if (place.lowBits == 0)
        return ReadBits(base, groupBit + place.high[inGroup], bits);
    const unsigned lowBits = place.lowBits;
    return ReadBits(base, groupBit + place.high[inGroup], bits - lowBits) << lowBits |
           ReadBits(base, groupBit + place.low[inGroup], lowBits);
}

/// The value that `bits` stand for in component `component`, by its kind of number.
int64_t ToInteger(const CComponentRow& component, uint64_t bits);
double ToFloat(const CComponentRow& component, uint64_t bits);

} // namespace Detail
} // namespace KxApi
