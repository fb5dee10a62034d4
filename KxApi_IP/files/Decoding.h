// SPDX-License-Identifier: Apache-2.0
// What readers of image files are given, and what they make.
#pragma once

#include "InputFile.h"
#include "PictureForm.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace KxApi
{
namespace Detail
{

/// A file in memory, to be read from the start.
struct CFileContent
{
    const uint8_t* data;
    size_t size;
    uint64_t maxImageSize; ///< bytes that the image may take
    std::string shown;     ///< the path, for messages

    /// Raises RuntimeException with the path and the cause, formatted as printf does.
    [[noreturn]] __attribute__((format(printf, 2, 3))) void Raise(const char* format, ...) const;
};

/// An image out of a file; all planes, one behind the other.
struct CDecodedImage
{
    EKxPixelFormatNamingConvention_t format = KxPixelFormat_None;
    size_t width = 0;
    size_t height = 0;
    size_t linePitch = 0;
    bool isPitchTold = false; ///< the file tells the pitch of the image that was saved
    CBytes pixels;

    uint8_t* Line(size_t y) { return pixels.data.get() + y * linePitch; }
};

/// Room for a picture of the format, its lines without gaps. Raises, before it takes memory, when the size is
/// 0 or above the limit.
CDecodedImage MakePicture(const CFileContent& content, uint64_t width, uint64_t height,
                          EKxPixelFormatNamingConvention_t format);

/// Changes red and blue of all pixels.
void SwapRedBlue(CDecodedImage& image);

/// The picture as it is to be seen, by the number that TIFF and Exif give its orientation: 1 as it is.
/// Unknown numbers and mosaics stay as they are.
CDecodedImage Upright(CDecodedImage image, unsigned orientation);

/// The readers. Each raises RuntimeException, with path and cause, for anything that isn't a sound file of
/// its type.
CDecodedImage DecodeBmp(const CFileContent& content);
CDecodedImage DecodeJpeg(const CFileContent& content);
CDecodedImage DecodeTiff(const CFileContent& content);
CDecodedImage DecodePng(const CFileContent& content);
CDecodedImage DecodeRaw(const CFileContent& content);

/// Calls the reader that the content asks for.
CDecodedImage DecodeImageFile(const CFileContent& content);

} // namespace Detail
} // namespace KxApi
