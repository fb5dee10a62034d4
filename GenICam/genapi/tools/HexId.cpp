// SPDX-License-Identifier: Apache-2.0
#include "HexId.h"

#include <algorithm>
#include <charconv>
#include <cinttypes>
#include <cstdio>

namespace KxGenApi
{
namespace
{
constexpr std::string_view kDigits = "0123456789abcdef";

char ToLower(char ch) { return ch >= 'A' && ch <= 'F' ? static_cast<char>(ch - 'A' + 'a') : ch; }

std::string WithoutLeadingZeros(std::string digits)
{
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.empty() ? "0" : digits;
}
} // namespace

std::optional<std::string> NormalizeHexId(std::string_view text)
{
    if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X")
        text.remove_prefix(2);
    std::string digits(text);
    std::transform(digits.begin(), digits.end(), digits.begin(), ToLower);
    if (digits.empty() || digits.find_first_not_of(kDigits) != std::string::npos)
        return std::nullopt;
    return WithoutLeadingZeros(std::move(digits));
}

std::string ToHexId(uint64_t number)
{
    char digits[17];
    std::snprintf(digits, sizeof digits, "%" PRIx64, number);
    return digits;
}

std::string ToHexId(const uint8_t* bytes, size_t count)
{
    std::string digits;
    for (size_t i = 0; i < count; ++i) {
        digits += kDigits[bytes[i] >> 4];
        digits += kDigits[bytes[i] & 15];
    }
    return WithoutLeadingZeros(std::move(digits));
}

std::optional<uint64_t> HexIdToNumber(std::string_view id)
{
    uint64_t number = 0;
    const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), number, 16);
    if (error != std::errc() || end != id.data() + id.size())
        return std::nullopt;
    return number;
}

} // namespace KxGenApi
