// SPDX-License-Identifier: Apache-2.0
// The descriptions of pixel formats in the form that knows their memory.
#pragma once

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <cstddef>

namespace KxApi
{
namespace Detail
{

/// Null for a format that isn't known.
inline const IKxPixelFormatInfoInside* FormatInfo(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    return dynamic_cast<const IKxPixelFormatInfoInside*>(GetIKxPixelFormatInfo(ePixelFormat));
}

/// Planes behind the first: how much closer their lines lie than those of the first, and how many lines of
/// the first share one of theirs, as a power of 2.
struct CLowerPlanes
{
    size_t nPitchDivisor;
    size_t nLineShift;

    /// From the first byte of the image to that of plane nPlane, which isn't 0.
    size_t Offset(size_t nPlane, size_t nPlanePitch) const
    {
        return nPlanePitch + (nPlane - 1) * (nPlanePitch / (nPitchDivisor * nPitchDivisor));
    }
};

inline CLowerPlanes LowerPlanes(const IKxPixelFormatInfoInside& info)
{
    if (info.GetPlaneCount() < 2)
        return {1, 0};
    // Chroma planes have all samples of a line, half of the lines, or half of both.
    const size_t nBits =
        (info.GetBitsPerPixel() - info.GetBitsPerPixelOfPlane()) / (info.GetPlaneCount() - 1);
    const size_t nShare = info.GetBitsPerPixelOfPlane() / nBits;
    return {nShare == 4 ? size_t{2} : size_t{1}, nShare > 1 ? size_t{1} : size_t{0}};
}

} // namespace Detail
} // namespace KxApi
