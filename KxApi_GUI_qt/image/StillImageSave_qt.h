// SPDX-License-Identifier: Apache-2.0
// Saving images: file types, and the conversion of what is shown.
#pragma once

#include "frame/SaveFileName_qt.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>

#include <vector>

namespace KxApi
{

/// The types that the pixel format can go into, with codes EKxStillImageFileType_t.
std::vector<CSaveFileType> StillImageTypes(const IKxStillImageFiler& filer,
                                           EKxPixelFormatNamingConvention_t ePixelFormat);

/// Converts an image as a preview's converter would, but with another Bayer method. Raises what the converter
/// raises.
void ConvertLike(IKxPixelFormatConverterInside& preview, EKxBayerInterpolationMethod_t eBayerMethod,
                 IKxImage* pSource, IKxImageBuffer* pTarget);

} // namespace KxApi
