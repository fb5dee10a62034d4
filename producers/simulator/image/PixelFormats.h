// SPDX-License-Identifier: Apache-2.0
// The pixel formats that the cameras send.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KxSim
{

/// Where a format puts the values of a pixel.
enum class EPacking
{
    Unpacked,  // one value in one or two bytes, low byte first
    Lsb,       // one stream of bits, low bits first
    Gev,       // two values in three bytes: high bits, both low bits, high bits
    Colours,   // one byte each, in the order of `order`
    Word32,    // three values of ten bits in four bytes, in the order of `order`
    Group422,  // four bytes for two pixels, in the order of `order`
    Group411,  // six bytes for four pixels, in the order of `order`
    Planar420, // Y, U, V one behind the other, the last two at half width and height
};

struct CPixelFormat
{
    const char* name;
    uint32_t code;
    EPacking packing;
    int bits;          // of a value
    const char* order; // letters of what is stored; a is opaque
    bool isStandard = true;

    size_t BitsPerPixel() const { return (code >> 16) & 0xFF; }
    size_t ImageSize(size_t width, size_t height) const { return width * height * BitsPerPixel() / 8; }
    /// Whether it needs all three colours of each pixel.
    bool IsColour() const { return order[0] != '\0'; }
    bool IsLuma() const { return order[0] == 'Y' || order[0] == 'U'; }
};

/// Widths and offsets that are multiples of these keep whole bytes and patterns in every format.
constexpr int kWidthStep = 8;
constexpr int kHeightStep = 4;

/// The format of this name; throws if there is none.
const CPixelFormat& FormatOfName(const char* name);
/// The format of this code, or null.
const CPixelFormat* FormatOfCode(uint32_t code);

} // namespace KxSim
