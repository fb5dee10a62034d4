// SPDX-License-Identifier: Apache-2.0
// Where the chunks of a payload lie.
#pragma once

#include <GenTL/GenTL.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KxAravis
{

/// The chunks of a payload: each has its data, then its ID and its length, so that they are found from the
/// end. None when the lengths don't fit, since then nothing of it can be trusted.
std::vector<GenTL::SINGLE_CHUNK_DATA> FindChunks(const uint8_t* data, size_t size, bool isBigEndian);

} // namespace KxAravis
