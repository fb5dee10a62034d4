// SPDX-License-Identifier: Apache-2.0
// Test charts for image buffers.
#pragma once

#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>

namespace KxApi
{
namespace Detail
{

/// Draws a chart; false, with nothing touched, when no chart is asked for. Raises RuntimeException for an
/// image without memory, BadAllocException.
using ChartFunction = bool (*)(IKxImage* pImage, _EKxMemoryInitialization_t eInitialization);

/// The routine for a format, null when there is none.
ChartFunction GetFunction(EKxPixelFormatNamingConvention_t ePixelFormat);

} // namespace Detail
} // namespace KxApi
