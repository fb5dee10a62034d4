// SPDX-License-Identifier: Apache-2.0
// Which pixel format an image goes into a file in.
#pragma once

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>

namespace KxApps
{

/// The smallest format that the converter makes of another one, that the file type takes, and that holds all
/// bits of its values. Raises InvalidArgumentException that tells of formats, bits and --format when there is
/// none: bits are dropped only for who asks for it.
KxApi::EKxPixelFormatNamingConvention_t ConvertedFormat(const KxApi::IKxStillImageFiler& filer,
                                                        const KxApi::IKxPixelFormatConverter& converter,
                                                        KxApi::EKxPixelFormatNamingConvention_t format,
                                                        KxApi::EKxStillImageFileType_t type);

} // namespace KxApps
