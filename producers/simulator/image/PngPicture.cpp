// SPDX-License-Identifier: Apache-2.0
// PNG files that a camera can show.

#include "PictureFile.h"

#include <png.h>

#include <memory>

namespace KxSim
{

CPicture ReadPng(const std::string& bytes)
{
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, void (*)(png_image*)> freed(&png, &png_image_free);
    if (!png_image_begin_read_from_memory(&png, bytes.data(), bytes.size()))
        return {};
    png.format = PNG_FORMAT_RGB; // of all kinds, on black where they let light through
    CPicture picture;
    if (!picture.SetSize(png.width, png.height))
        return {};
    std::vector<uint8_t> values(picture.values.size());
    const png_color black = {0, 0, 0};
    if (!png_image_finish_read(&png, &black, values.data(), 0, nullptr))
        return {};
    for (size_t i = 0; i < values.size(); ++i)
        picture.values[i] = static_cast<float>(values[i]) / 255;
    return picture;
}

} // namespace KxSim
