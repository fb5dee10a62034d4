// SPDX-License-Identifier: Apache-2.0
// Choices of the pixel format converter; the numbers are those of its node map.
#pragma once

#include <cstdint>

namespace KxApi
{

/// How the colours of a Bayer mosaic become pixels.
enum EKxBayerInterpolationMethod_t : int32_t
{
    KxBayerInterpolationMethod_Off = 0, ///< the values of the mosaic as grey
    /// The colours of the square of 2 by 2 that starts at the pixel.
    KxBayerInterpolationMethod_NearestNeighbor = 1,
    KxBayerInterpolationMethod_NearestNeighbor2 = 2, ///< one colour for each square of the mosaic
    KxBayerInterpolationMethod_Bilinear = 3,         ///< the mean of the neighbours of a colour
    KxBayerInterpolationMethod_Bilinear2 = 4,        ///< the mean of their differences to green
    KxBayerInterpolationMethod_Bicubic = 5,          ///< five by five pixels, corrected by the gradient
    KxBayerInterpolationMethod_Mono = 6,             ///< a grey smoothed over three by three pixels
    KxBayerInterpolationMethod_Bilinear3 = 7,        ///< as Bilinear, green along edges and not across
};

/// How a value gets more bits than it has. Values lose bits from the low end in all modes.
enum EKxBitExpansionMode_t : int32_t
{
    KxBitExpansionMode_FullRange =
        0, ///< its high bits again below its lowest: the greatest stays the greatest
    KxBitExpansionMode_ZeroFill = 1, ///< zeros below its lowest bit
    KxBitExpansionMode_Off = 2,      ///< the same number
};

/// What becomes of an image from behind polarisers. docs/conversion.md has the formulas.
enum EKxPolarizationImageTransformationMethod_t : int32_t
{
    KxPolarizationImageTransformationMethod_Off = 0,            ///< the mosaic as it is
    KxPolarizationImageTransformationMethod_Intensity = 1,      ///< without polariser
    KxPolarizationImageTransformationMethod_SpecifiedAngle = 2, ///< behind a polariser of the specified angle
    KxPolarizationImageTransformationMethod_Angle0 = 3,         ///< pixels behind polarisers of 0 degrees
    KxPolarizationImageTransformationMethod_DoLP = 4,           ///< degree of linear polarisation, grey
    KxPolarizationImageTransformationMethod_AoLP = 5,           ///< angle of linear polarisation, grey
    KxPolarizationImageTransformationMethod_ADOLP = 6, ///< the angle as hue, its degree as strength of colour
    KxPolarizationImageTransformationMethod_Angle45 = 7,
    KxPolarizationImageTransformationMethod_Angle90 = 8,
    KxPolarizationImageTransformationMethod_Angle135 = 9,
    /// The mosaic sorted: a quarter of the image for each polariser, 90 and 45 above 135 and 0 degrees.
    KxPolarizationImageTransformationMethod_FourViews = 10,
};

/// Where the four values of a pixel come from that make the specified angle.
enum EKxPolarizationInterpolationMethod_t : int32_t
{
    KxPolarizationInterpolationMethod_Off = 0,      ///< one value for each square of four polarisers
    KxPolarizationInterpolationMethod_Bilinear = 1, ///< the means of the neighbours behind each polariser
};

} // namespace KxApi
