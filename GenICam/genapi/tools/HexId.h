// SPDX-License-Identifier: Apache-2.0
// IDs of events and chunks: hexadecimal digits of any number, in one form so that they can be compared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace KxGenApi
{

/// Lower-case digits without leading zeros ("0" for zero) and without "0x"; nothing if the text is no
/// hexadecimal number.
std::optional<std::string> NormalizeHexId(std::string_view text);
/// The same of a number, and of bytes of which the first is the most significant one.
std::string ToHexId(uint64_t number);
std::string ToHexId(const uint8_t* bytes, size_t count);

/// The number of a normalized ID; nothing if it has more than 64 bits.
std::optional<uint64_t> HexIdToNumber(std::string_view id);

} // namespace KxGenApi
