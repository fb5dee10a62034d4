// SPDX-License-Identifier: Apache-2.0
// The images of a buffer, as the producer tells them.
#pragma once

#include "BufferInfo.h"

#include <cstdint>

namespace KxApi
{
namespace Detail
{

/// An info of a buffer, `fallback` when the producer doesn't have it.
uint64_t Info(const CBufferAtProducer& buffer, GenTL::BUFFER_INFO_CMD command, uint64_t fallback);

/// The one image of a buffer. Raise RuntimeException as ReadBufferContent does.
void ReadImage(CBufferAtProducer& buffer, const CImageDefaults& defaults, CBufferContent& content);

/// A compressed image that fills the buffer.
void ReadEncoded(const CBufferAtProducer& buffer, int32_t dataType, CBufferContent& content);

/// Those of its parts that are images. Raises RuntimeException when there is none, or when one doesn't lie in
/// the buffer.
void ReadParts(const CBufferAtProducer& buffer, CBufferContent& content);

/// Gives pixels that the camera sent with their high bytes first the order of this machine.
void TurnBytes(const CBufferAtProducer& buffer, const CBufferContent& content);

} // namespace Detail
} // namespace KxApi
