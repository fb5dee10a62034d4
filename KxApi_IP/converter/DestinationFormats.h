// SPDX-License-Identifier: Apache-2.0
// The formats that the converter writes.
#pragma once

#include <KxApi_TL/KxPixelFormat.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{
namespace Detail
{

/// How pixels lie in a destination format.
enum class EDestinationLayout : uint8_t
{
    Mono,    ///< one value
    Rgb,     ///< R, G, B
    Bgr,     ///< B, G, R
    Rgba,    ///< R, G, B, alpha
    Bgra,    ///< B, G, R, alpha
    RgbWord, ///< 32 bits, R in the low ten
    BgrWord, ///< 32 bits, B in the low ten
};

struct CDestinationFormat
{
    EKxPixelFormatNamingConvention_t pixelFormat;
    EDestinationLayout layout;
    uint8_t nBits; ///< of a value

    /// The code tells the bits from bit 16 on.
    size_t GetPixelBytes() const { return pixelFormat >> 19 & 0x1F; }
    bool HasColor() const { return layout != EDestinationLayout::Mono; }
    bool HasAlpha() const { return layout == EDestinationLayout::Rgba || layout == EDestinationLayout::Bgra; }
};

/// The row of a format, null when it isn't written.
const CDestinationFormat* FindDestinationFormat(EKxPixelFormatNamingConvention_t pixelFormat);
/// The mono one with as many bits, which there is for all.
const CDestinationFormat* FindGreyDestination(unsigned nBits);

} // namespace Detail
} // namespace KxApi
