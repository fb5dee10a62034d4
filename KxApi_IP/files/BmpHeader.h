// SPDX-License-Identifier: Apache-2.0
// The headers of ".bmp" files.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KxApi
{
namespace Detail
{
namespace Bmp
{

inline constexpr size_t kFileHeader = 14;
inline constexpr size_t kCoreHeader = 12;   // the oldest, with sizes of 16 bits and colours of three bytes
inline constexpr size_t kInfoHeader = 40;   // the oldest that tells all
inline constexpr size_t kAlphaHeader = 108; // the first that tells of alpha
inline constexpr size_t kLongestHeader = 124;

// Places, from the start of the file.
inline constexpr size_t kFileSizeAt = 2;
inline constexpr size_t kPixelsAt = 10;
inline constexpr size_t kInfoSizeAt = 14;
inline constexpr size_t kWidthAt = 18;
inline constexpr size_t kHeightAt = 22;
inline constexpr size_t kPlanesAt = 26;
inline constexpr size_t kBitsAt = 28;
inline constexpr size_t kCompressionAt = 30;
inline constexpr size_t kPixelBytesAt = 34;
inline constexpr size_t kResolutionAt = 38;
inline constexpr size_t kColorsAt = 46;
inline constexpr size_t kMasksAt = 54;
inline constexpr size_t kColorSpaceAt = 70;
// Of the core header, where it has other ones.
inline constexpr size_t kCoreHeightAt = 20;
inline constexpr size_t kCoreBitsAt = 24;

enum ECompression : uint32_t
{
    kPlain,
    kRuns8,
    kRuns4,
    kMasked,
};

inline size_t LineSize(size_t width, size_t bits) { return (width * bits + 31) / 32 * 4; }

} // namespace Bmp
} // namespace Detail
} // namespace KxApi
