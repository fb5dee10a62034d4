// SPDX-License-Identifier: Apache-2.0
// GenDC containers, which describe the images that they hold themselves.
#pragma once

#include "BufferInfo.h"

#include <cstddef>
#include <cstdint>

namespace KxApi
{
namespace Detail
{

/// Reads the container at the beginning of a buffer. Its two-dimensional parts and compressed images become
/// images; parts of other kinds and components that are marked as invalid are left out. `content` tells how
/// much of the buffer was filled, and is marked incomplete when an image isn't there as a whole. Raises
/// RuntimeException when there is no container, when it contradicts itself or its buffer, and when it holds
/// no image.
void ReadGenDc(const uint8_t* data, size_t size, CBufferContent& content);

} // namespace Detail
} // namespace KxApi
