// SPDX-License-Identifier: Apache-2.0
// What the converter has to know of the formats that it reads.
#pragma once

#include <KxApi_TL/KxPixelFormat.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace KxApi
{

struct IKxPixelFormatInfoInside;

namespace Detail
{

struct CPixelFormatRow;
struct CPixelLayout;

enum class EFamily : uint8_t
{
    Mono,
    Bayer,
    Rgb,
    Ycc, ///< YUV and YCbCr
};

/// How values are got out of a line; all but Table have code of their own.
enum class EPacking : uint8_t
{
    Table, ///< any layout, value by value
    Bytes, ///< a byte each
    Words, ///< two bytes each
    Bits1, ///< 1, 2, 4 bits each, the low ones first
    Bits2,
    Bits4,
    Stream10, ///< 10 bits each, one behind the other
    Stream12,
    Stream14,
    Halves10, ///< two values in three bytes, the low bits in the middle
    Halves12,
    Tens, ///< three of 10 bits in 32
};

/// Which channels the values of a line belong to.
enum class EOrder : uint8_t
{
    Single, ///< one channel
    Three,  ///< the values of a pixel, one behind the other
    Four,
    Luma0Chroma1,  ///< Y0 U Y1 V
    Chroma0Luma1,  ///< U Y0 V Y1
    Luma01Chroma2, ///< Y0 Y1 U Y2 Y3 V
    Chroma0Luma12, ///< U Y0 Y1 V Y2 Y3
    Planes,        ///< a plane for each channel, or one for luma and one for both of chroma
    // Of the planes behind the first:
    Shared,     ///< a value is that of two pixels
    SharedPair, ///< a U and a V are those of two pixels
};

/// Matrix and range of a Ycc format.
enum class EYccKind : uint8_t
{
    Full601, ///< BT.601, all values used
    Limited601,
    Limited709,
    Limited2020,
};

/// Channels of a pixel in the order in which all rows have them: R, G, B, alpha or Y, Cb, Cr.
inline constexpr size_t kMaxChannels = 4;

struct CSourceFormat
{
    const IKxPixelFormatInfoInside* pInfo;
    const CPixelFormatRow* pRow;
    const CPixelLayout* pLayout;
    EFamily family;
    EPacking packing;
    EOrder order;
    EYccKind ycc;
    uint8_t nBits;     ///< of a value
    uint8_t nChannels; ///< 1, 3, or 4 with alpha
    bool isSigned;     ///< two's complement; the middle of the range is 0
    bool isReal;       ///< floating point, of 32 or 64 bits
    bool isPolarized;
    uint8_t nRedX; ///< column and line of the first red value, in the squares of four for polarised formats
    uint8_t nRedY;
    uint8_t anComponent[kMaxChannels]; ///< of the format, by channel
    uint8_t anChannel[kMaxChannels];   ///< by the place among the values of a pixel, for Three and Four
    uint8_t nGroupValues;              ///< values of a group of pixels that share some
    uint8_t nGroupShift;               ///< its pixels, as power of 2
    uint8_t anPolarizer[4];  ///< place in the square (x + 2 y), by polariser: 0, 45, 90, 135 degrees
    size_t nColumnsPerPixel; ///< 1, unless each value is taken for a pixel
    size_t nStepX;           ///< pixels that share chroma
    size_t nStepY;

    bool HasColor() const { return family != EFamily::Mono; }
    bool HasAlpha() const { return nChannels == 4; }
};

/// The description of a format, nothing when it is unknown or can't be converted.
std::optional<CSourceFormat> DescribeSourceFormat(EKxPixelFormatNamingConvention_t pixelFormat);

} // namespace Detail
} // namespace KxApi
