// SPDX-License-Identifier: Apache-2.0
// Hash of node names.
#pragma once

#include <cstdint>
#include <string_view>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace KxGenApi
{

inline uint32_t HashName(std::string_view name) noexcept
{
    return static_cast<uint32_t>(XXH3_64bits(name.data(), name.size()));
}

} // namespace KxGenApi
