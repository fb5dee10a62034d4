// SPDX-License-Identifier: Apache-2.0
// Where recorded images go.
#pragma once

#include "StoredImage.h"

#include <memory>
#include <string>
#include <vector>

namespace KxApps
{

/// Writes images. One thread.
class ImageWriter
{
public:
    virtual ~ImageWriter() = default;

    /// Writes the image with its number in the recording, from 0 on; the bytes that it takes. Raises what the
    /// format or the disk object to, with the path.
    virtual uint64_t Write(const StoredImage& image, uint64_t number) = 0;
    /// All images have been written. Raises likewise.
    virtual void Finish() {}
};

/// A recording's output, as users name it.
struct ImageOutput
{
    static constexpr const char* kHelp =
        "a .kxseq file takes all images as they are; a name with a number as %d or %04d, such as "
        "frame-%04d.png, makes a file of each (.bmp, .jpg, .tif, .png, .csv, .kxraw); a folder gets .kxraw "
        "files; one image alone needs no number";

    std::string name;
    std::string format;       ///< pixel format that images are converted to; empty to save them as they are
    bool isOneImage = false;  ///< whether the name of a picture needs no number
    unsigned writerCount = 1; ///< of writers that work side by side, where the output allows it

    /// Raises InvalidArgumentException for a name that can't hold a number or whose ending names no file
    /// type, and for a format that the converter doesn't make.
    void Check() const;
    /// The writers. Raises like Check, and when a .kxseq file can't be made.
    std::vector<std::unique_ptr<ImageWriter>> Open() const;
};

} // namespace KxApps
