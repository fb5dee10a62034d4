// SPDX-License-Identifier: Apache-2.0
// Numbers as descriptions write them, whatever the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace KxGenApi
{

/// The text without XML white space at its ends.
std::string_view Trimmed(std::string_view text) noexcept;

/// Decimal, or hexadecimal after 0x, with an optional sign. Hexadecimal numbers of 64 bits stand for the
/// number of that bit pattern: 0xFFFFFFFFFFFFFFFF is -1. Empty for anything else and for what 64 bits cannot
/// hold.
std::optional<int64_t> ParseInteger(std::string_view text) noexcept;

/// Decimal with an optional exponent, INF, -INF, NaN, or what ParseInteger takes. Too large is infinite, too
/// small 0.
std::optional<double> ParseReal(std::string_view text) noexcept;

} // namespace KxGenApi
