// SPDX-License-Identifier: Apache-2.0
// Image files that a camera can show.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace KxSim
{

/// An image of red, green, blue from 0 to 1.
struct CPicture
{
    int width = 0, height = 0;
    std::vector<float> values; // three a pixel

    bool IsEmpty() const { return values.empty(); }
    /// Makes room for an image, if its size is sensible.
    bool SetSize(uint64_t newWidth, uint64_t newHeight);
};

/// The files of the folder that can be read (.pgm, .ppm, .bmp, .png), by name, not more than `limit`.
std::vector<std::string> ListPictures(const std::string& folder, size_t limit);

/// PGM and PPM (binary, 8 or 16 bits), BMP (8, 24 or 32 bits, not compressed), PNG. Empty if it can't be
/// read.
CPicture ReadPicture(const std::string& file);
/// The bytes of a PNG file.
CPicture ReadPng(const std::string& bytes);

} // namespace KxSim
