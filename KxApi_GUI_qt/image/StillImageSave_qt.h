// SPDX-License-Identifier: Apache-2.0
// Saving images: file types, names, and the conversion of what is shown.
#pragma once

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>

#include <QString>

namespace KxApi
{

/// The filter list of a file dialog: the types that the pixel format can go into.
QString StillImageFilters(const IKxStillImageFiler& filer, EKxPixelFormatNamingConvention_t ePixelFormat);

/// What the user chose.
struct CStillImageFileName
{
    EKxStillImageFileType_t eFileType;
    QString strName;
};

/// The file type of a filter, and the name with the type's extension, unless it ends in it in any case. An
/// unknown filter stands for a bitmap whose name is left as it is.
CStillImageFileName CompletedFileName(const QString& strName, const QString& strSelectedFilter);

/// Converts an image as a preview's converter would, but with another Bayer method. Raises what the converter
/// raises.
void ConvertLike(IKxPixelFormatConverterInside& preview, EKxBayerInterpolationMethod_t eBayerMethod,
                 IKxImage* pSource, IKxImageBuffer* pTarget);

} // namespace KxApi
