// SPDX-License-Identifier: Apache-2.0
// The descriptions of pixel formats in the form that knows their memory.
#pragma once

#include <KxApi_TL/IKxPixelFormatInfo.h>

namespace KxApi
{
namespace Detail
{

/// Null for a format that isn't known.
inline const IKxPixelFormatInfoInside* FormatInfo(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    return dynamic_cast<const IKxPixelFormatInfoInside*>(GetIKxPixelFormatInfo(ePixelFormat));
}

/// Whether the planes behind the first are smaller than it.
inline bool HasSmallerPlanes(const IKxPixelFormatInfoInside& info)
{
    return info.GetBitsPerPixel() != info.GetPlaneCount() * info.GetBitsPerPixelOfPlane();
}

} // namespace Detail
} // namespace KxApi
