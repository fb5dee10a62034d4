// SPDX-License-Identifier: Apache-2.0
// The words of messages about files.
#pragma once

#include <string>
#include <string_view>

namespace KxApi
{
namespace Detail
{

/// A path as messages tell it: of a long one the end, so that the cause behind it isn't cut off.
inline std::string ShownPath(std::string_view path)
{
    constexpr size_t kMaxShown = 120;
    if (path.size() <= kMaxShown)
        return std::string(path);
    return "..." + std::string(path.substr(path.size() - kMaxShown));
}

} // namespace Detail
} // namespace KxApi
