// SPDX-License-Identifier: Apache-2.0
// Values of pixels as a format stores them.
#pragma once

#include "image/PixelFormats.h"

#include <cstdint>

namespace KxSim
{

/// Packs values of one line: of formats without colours one value a pixel, of others three (R, G, B or Y, U,
/// V). The number of pixels is a multiple of kWidthStep. Planar formats pack their first plane.
void PackLine(const CPixelFormat& format, const uint16_t* values, size_t pixels, uint8_t* line);

/// One line of a chroma plane of a planar format, from two lines of Y, U, V; `component` is 1 for U, 2 for V.
void PackChromaLine(const uint16_t* upper, const uint16_t* lower, size_t pixels, int component,
                    uint8_t* line);

/// R, G, B of 8 bits to Y, U, V of full range, in place.
void ToLuma(uint16_t* values, size_t pixels);

} // namespace KxSim
