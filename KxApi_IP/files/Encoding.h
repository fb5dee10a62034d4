// SPDX-License-Identifier: Apache-2.0
// What writers of image files are given.
#pragma once

#include "CPicture.h"

#include <cstdint>

namespace KxApi
{

struct IKxImage;

namespace Detail
{

class COutputFile;

struct CEncodeOptions
{
    uint32_t jpegQuality;
    uint32_t pngCompression;
    const CColorTable* pColorMap; ///< null when grey is shown as it is
};

/// The writers. A failure of the file stays in it, for its Check or Commit to raise; a size that the type
/// can't hold raises RuntimeException. The first four need a format with a picture form, of 8 bits for BMP
/// and JPEG.
void EncodeBmp(const CImageValues& values, const CEncodeOptions& options, COutputFile& file);
void EncodeJpeg(const CImageValues& values, const CEncodeOptions& options, COutputFile& file);
void EncodeTiff(const CImageValues& values, const CEncodeOptions& options, COutputFile& file);
void EncodePng(const CImageValues& values, const CEncodeOptions& options, COutputFile& file);
void EncodeRaw(const CImageValues& values, COutputFile& file);
/// Takes the image itself, since its values are asked for one by one.
void EncodeCsv(IKxImage& image, const CImageValues& values, COutputFile& file);

} // namespace Detail
} // namespace KxApi
