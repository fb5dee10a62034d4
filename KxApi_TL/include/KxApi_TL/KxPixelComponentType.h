// SPDX-License-Identifier: Apache-2.0
// Types of the values of a pixel.
#pragma once

#include <cstdint>

namespace KxApi
{

/// What a value stands for; the top byte of EKxPixelComponentType_t.
enum EKxPixelComponent_t : uint32_t
{
    KxPixelComponent_Mono = 1,
    KxPixelComponent_R = 2,
    KxPixelComponent_G = 3,
    KxPixelComponent_B = 4,
    KxPixelComponent_Gr = 5, ///< green in a line with red
    KxPixelComponent_Gb = 6, ///< green in a line with blue
    KxPixelComponent_Y = 7,
    KxPixelComponent_Cb = 8,
    KxPixelComponent_Cr = 9,
    KxPixelComponent_U = 10,
    KxPixelComponent_V = 11,
    KxPixelComponent_Alpha = 12,
    KxPixelComponent_W = 13, ///< unfiltered pixel of a colour mosaic
    KxPixelComponent_CoordA = 14,
    KxPixelComponent_CoordB = 15,
    KxPixelComponent_CoordC = 16,
    KxPixelComponent_Confidence = 17,
    KxPixelComponent_Data = 18
};

/// Polariser in front of a pixel; the low byte of EKxPixelComponentType_t.
enum EKxPolarization_t : uint32_t
{
    KxPolarization_None = 0,
    KxPolarization_0 = 1, ///< degrees
    KxPolarization_45 = 2,
    KxPolarization_90 = 3,
    KxPolarization_135 = 4
};

/// Kind of number; bits 8 to 15 of EKxPixelComponentType_t.
enum EKxPixelNumber_t : uint32_t
{
    KxPixelNumber_Unsigned = 0,
    KxPixelNumber_Signed = 1,
    KxPixelNumber_Float = 2
};

/// 0xCCDDNNPP: component, depth of the value in bits, kind of number, polarisation. 0 stands for no type.
enum EKxPixelComponentType_t : uint32_t
{
    KxPixelComponentType_None = 0
};

constexpr EKxPixelComponentType_t
MakeKxPixelComponentType(EKxPixelComponent_t eComponent, uint32_t nBits,
                         EKxPolarization_t ePolarization = KxPolarization_None,
                         EKxPixelNumber_t eNumber = KxPixelNumber_Unsigned)
{
    return static_cast<EKxPixelComponentType_t>(eComponent << 24 | nBits << 16 | eNumber << 8 |
                                                ePolarization);
}

} // namespace KxApi
