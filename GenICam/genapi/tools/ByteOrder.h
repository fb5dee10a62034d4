// SPDX-License-Identifier: Apache-2.0
// Numbers in the bytes of messages and buffers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KxGenApi
{

struct BigEndianBytes
{
    template <typename Unsigned>
    static Unsigned Get(const uint8_t* bytes)
    {
        uint64_t value = 0;
        for (size_t i = 0; i < sizeof(Unsigned); ++i)
            value = value << 8 | bytes[i];
        return static_cast<Unsigned>(value);
    }
};

struct LittleEndianBytes
{
    template <typename Unsigned>
    static Unsigned Get(const uint8_t* bytes)
    {
        uint64_t value = 0;
        for (size_t i = sizeof(Unsigned); i > 0; --i)
            value = value << 8 | bytes[i - 1];
        return static_cast<Unsigned>(value);
    }
};

} // namespace KxGenApi
