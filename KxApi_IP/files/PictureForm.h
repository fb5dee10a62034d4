// SPDX-License-Identifier: Apache-2.0
// Which pixel formats pictures can hold, and which formats pictures become.
#pragma once

#include <KxApi_TL/KxPixelFormat.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace KxApi
{
namespace Detail
{

/// What a picture file knows of its pixels: samples of one depth.
struct CPictureForm
{
    unsigned channels; ///< 1 grey or a mosaic, 3 colour, 4 colour with alpha
    unsigned depth;    ///< bits of a sample, 8 to 16

    unsigned SampleBytes() const { return depth > 8 ? 2 : 1; }
    bool operator==(const CPictureForm& other) const
    {
        return channels == other.channels && depth == other.depth;
    }
};

/// The form of a format whose values a picture can hold: one, or red, green and blue with or without alpha,
/// of 8 to 16 bits without sign, packed or not. Nothing for all others, YUV among them.
std::optional<CPictureForm> FindPictureForm(EKxPixelFormatNamingConvention_t ePixelFormat);

/// The format with the same values in the same order, each in one or two bytes of its own: Mono12 for
/// Mono12Packed. None when there is no such format, or no picture of it.
EKxPixelFormatNamingConvention_t UnpackedFormat(EKxPixelFormatNamingConvention_t ePixelFormat);

/// The format of a picture that tells no more than its form: Mono, RGB or RGBa of the depth, or of 16 bits
/// when there is none of that depth.
EKxPixelFormatNamingConvention_t DefaultFormat(const CPictureForm& form);

/// The unpacked format of this name, if pictures of it have the form; else the default one.
EKxPixelFormatNamingConvention_t NamedFormat(std::string_view name, const CPictureForm& form);

/// Whether blue comes first.
bool IsBlueFirst(EKxPixelFormatNamingConvention_t ePixelFormat);

} // namespace Detail
} // namespace KxApi
