// SPDX-License-Identifier: Apache-2.0
// Numbers in files, low byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace KxApi
{
namespace Detail
{

template <class T>
void PutLittle(uint8_t* bytes, std::common_type_t<T> value)
{
    static_assert(std::is_unsigned_v<T>);
    for (size_t i = 0; i < sizeof(T); ++i)
        bytes[i] = static_cast<uint8_t>(value >> (8 * i));
}

template <class T>
T GetLittle(const uint8_t* bytes)
{
    static_assert(std::is_unsigned_v<T>);
    T value = 0;
    for (size_t i = 0; i < sizeof(T); ++i)
        value = static_cast<T>(value | static_cast<T>(bytes[i]) << (8 * i));
    return value;
}

} // namespace Detail
} // namespace KxApi
