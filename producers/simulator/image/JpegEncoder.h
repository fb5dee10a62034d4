// SPDX-License-Identifier: Apache-2.0
// Pictures as cameras compress them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KxSim
{

/// Compresses an image of RGB8 without padding into the bytes of a JPEG file, colours at half resolution.
/// Throws when there is no memory for it. @param quality 1 to 100
void EncodeJpeg(const std::vector<uint8_t>& rgb, int width, int height, int quality,
                std::vector<uint8_t>& encoded);

/// More bytes than any such image takes.
size_t MaxJpegSize(int width, int height);

} // namespace KxSim
