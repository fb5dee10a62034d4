// SPDX-License-Identifier: Apache-2.0
// Reads single pixels of any format.
#pragma once

#include "FormatTable.h"

namespace KxApi
{
namespace Detail
{

/// Memory of an image, as cameras and image buffers lay it out.
struct CPixelMemory
{
    const uint8_t* buffer;
    size_t linePitch;
    size_t planePitch; ///< from the first plane to the second
};

/// Bits of component k of the pixel at x, y, which has to lie in the image. Reads no byte that doesn't belong
/// to the value.
uint64_t ReadComponent(const CPixelFormatRow& row, const CPixelMemory& memory, size_t k, size_t x, size_t y);

/// The value that `bits` stand for in component `component`, by its kind of number.
int64_t ToInteger(const CComponentRow& component, uint64_t bits);
double ToFloat(const CComponentRow& component, uint64_t bits);

} // namespace Detail
} // namespace KxApi
