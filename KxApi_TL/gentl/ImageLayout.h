// SPDX-License-Identifier: Apache-2.0
// Where the pixels of an image lie in its buffer.
#pragma once

#include "BufferInfo.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{
namespace Detail
{

/// Null for one that isn't known.
const IKxPixelFormatInfoInside* FindFormat(uint64_t code);

/// Works out the image's end and checks that it lies inside; raises RuntimeException when not.
/// @return bytes from the buffer's beginning to the image's end
size_t LayOut(const IKxPixelFormatInfoInside& format, size_t linePadding, size_t size, CImageContent& image);

/// Lines of which bytes were filled in, up to all.
size_t FilledLines(const CImageContent& image, size_t sizeFilled);

} // namespace Detail
} // namespace KxApi
