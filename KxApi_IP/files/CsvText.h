// SPDX-License-Identifier: Apache-2.0
// Numbers as text, the same wherever the program runs.
#pragma once

#include <array>
#include <charconv>
#include <string>
#include <type_traits>

namespace KxApi
{
namespace Detail
{

/// Appends the shortest text that stands for the value.
template <class T>
void AppendNumber(std::string& text, T value)
{
    static_assert(std::is_arithmetic_v<T>);
    std::array<char, 32> digits; // NOLINT(cppcoreguidelines-pro-type-member-init): written before read
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text.append(digits.data(), end.ptr);
}

} // namespace Detail
} // namespace KxApi
