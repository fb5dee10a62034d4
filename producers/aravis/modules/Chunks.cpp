// SPDX-License-Identifier: Apache-2.0
#include "modules/Chunks.h"

#include <algorithm>

namespace KxAravis
{
namespace
{

uint64_t Number(const uint8_t* data, bool isBigEndian)
{
    uint64_t value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8 | data[isBigEndian ? i : 3 - i];
    return value;
}

} // namespace

std::vector<GenTL::SINGLE_CHUNK_DATA> FindChunks(const uint8_t* data, size_t size, bool isBigEndian)
{
    constexpr size_t kTail = 8;
    constexpr size_t kMostChunks = 1024;
    std::vector<GenTL::SINGLE_CHUNK_DATA> chunks;
    while (size > 0) {
        if (size < kTail || chunks.size() == kMostChunks)
            return {};
        size -= kTail;
        const uint64_t id = Number(data + size, isBigEndian);
        const uint64_t length = Number(data + size + kTail / 2, isBigEndian);
        if (length > size)
            return {};
        size -= static_cast<size_t>(length);
        chunks.push_back({id, static_cast<std::ptrdiff_t>(size), static_cast<size_t>(length)});
    }
    std::reverse(chunks.begin(), chunks.end());
    return chunks;
}

} // namespace KxAravis
