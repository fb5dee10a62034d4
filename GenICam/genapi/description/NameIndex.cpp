// SPDX-License-Identifier: Apache-2.0
#include "description/NameIndex.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace KxGenApi
{

uint32_t HashName(std::string_view name) noexcept
{
    return static_cast<uint32_t>(XXH3_64bits(name.data(), name.size()));
}

} // namespace KxGenApi
