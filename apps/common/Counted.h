// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace KxApps
{

/// "1 image", "2 images": a number of what a noun names whose plural ends in s.
inline std::string Counted(uint64_t number, const std::string& noun)
{
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

} // namespace KxApps
