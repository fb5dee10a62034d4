// SPDX-License-Identifier: Apache-2.0
// What fills graph data: histograms and line profiles of images.
#pragma once

#include <KxApi_IP/KxApi_IPLinkage.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

struct IKxImage;
struct IKxGraphDataBufferListResizable;

/// A rectangle of an image, in pixels.
struct CKxPixelRect
{
    size_t nX = 0;
    size_t nY = 0;
    size_t nWidth = 0;
    size_t nHeight = 0;
};

/// Appends the histogram of an image, or of a part of it, to a list: one item of kind Histogram for each type
/// of components, so a Bayer image gives R, B, Gr and Gb, and a polarised one an item for each angle and
/// filter. The items come in the order of their type codes. Chroma that several pixels share is counted for
/// each of them.
///
/// Entry v of an item tells how many pixels have the value v. It has as many entries as there are values, but
/// at most 65536: of components with more than 16 bits an entry stands for all values with the same upper 16
/// bits. The values of signed components begin at entry 0 with the least. The full scale is the number of
/// pixels that were counted.
///
/// Any thread; the image must stay as it is, and nobody may use the list meanwhile. Raises
/// LogicalErrorException when image or list is missing, InvalidArgumentException when the pixel format is
/// unknown, has values of floating point or lines shorter than the width asks for, OutOfRangeException when
/// the part isn't inside the image or has more than 4294967295 pixels, BadAllocException; only after
/// the last may the list have got some of the items.
/// @param pRect the part; null for all of the image. It need not lie on the format's grid.
KXAPI_IP_API void AppendHistogram(const IKxImage* pImage, const CKxPixelRect* pRect,
                                  IKxGraphDataBufferListResizable* pList);

/// How a profile takes values between the pixels.
enum EKxProfileInterpolation_t : int32_t
{
    KxProfileInterpolation_Nearest = 0,
    KxProfileInterpolation_Bilinear = 1,
};

/// A line across an image. Positions are in pixels; the centre of the pixel at x, y is the point (x, y).
struct CKxProfileLine
{
    double dX0 = 0; ///< start, from 0 to the image's width - 1
    double dY0 = 0; ///< from 0 to its height - 1
    double dX1 = 0; ///< end, likewise
    double dY1 = 0;
    /// Pixels across the line over which the mean is taken, 1 to 1000: for each point as many samples, one
    /// pixel apart, half to either side; those outside the image don't count.
    uint32_t nAverage = 1;
    EKxProfileInterpolation_t eInterpolation = KxProfileInterpolation_Nearest;
};

/// Appends the values of an image along a line to a list: one item for each type of components, as
/// AppendHistogram does. All have the same length: the line's length rounded to whole pixels, plus 1, the
/// samples being spread evenly from the start to the end.
///
/// In a mosaic of colour filters or polarisers each item samples the pixels of its own type only, as if they
/// were an image of their own that is stretched over the whole; beyond the outermost of them their value is
/// kept. Signed values are told as their distance from the least one.
///
/// The nearest pixels, not averaged, give items of kind LineProfile; bilinear ones InterpolatedProfile, and
/// all averaged ones AveragedProfile. The latter two have a divisor: 65536 for up to 16 bits, less for more.
/// The full scale is the greatest value of the component, times the divisor.
///
/// Threads and exceptions as of AppendHistogram; OutOfRangeException for a point outside the image or an
/// average outside its range, InvalidArgumentException also for components of more than 32 bits.
KXAPI_IP_API void AppendLineProfile(const IKxImage* pImage, const CKxProfileLine& objLine,
                                    IKxGraphDataBufferListResizable* pList);

} // namespace KxApi
