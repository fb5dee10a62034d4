// SPDX-License-Identifier: Apache-2.0
#include "description/Literals.h"

#include <charconv>
#include <cstdlib>
#include <limits>

namespace KxGenApi
{
namespace
{

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool TakeSign(std::string_view& text)
{
    if (text.empty() || (text[0] != '-' && text[0] != '+'))
        return false;
    const bool isNegative = text[0] == '-';
    text.remove_prefix(1);
    return isNegative;
}

bool TakeHexPrefix(std::string_view& text)
{
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X'))
        return false;
    text.remove_prefix(2);
    return true;
}

std::optional<uint64_t> ParseDigits(std::string_view text, int base)
{
    uint64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}

// Of a number out of range: whether it is too small, not too large.
bool IsTiny(std::string_view text)
{
    const size_t exponent = text.find_first_of("eE");
    return exponent == std::string_view::npos ? text[0] == '0' || text[0] == '.'
                                              : text.find('-', exponent) != std::string_view::npos;
}

} // namespace

std::string_view Trimmed(std::string_view text) noexcept
{
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<int64_t> ParseInteger(std::string_view text) noexcept
{
    const bool isNegative = TakeSign(text);
    const bool isHex = TakeHexPrefix(text);
    const std::optional<uint64_t> digits = ParseDigits(text, isHex ? 16 : 10);
    if (!digits)
        return std::nullopt;
    const uint64_t limit = uint64_t{1} << 63;
    if (!isHex && *digits >= limit + (isNegative ? 1 : 0))
        return std::nullopt;
    return static_cast<int64_t>(isNegative ? 0 - *digits : *digits);
}

std::optional<double> ParseReal(std::string_view text) noexcept
{
    if (const std::optional<int64_t> integer = ParseInteger(text))
        return static_cast<double>(*integer);
    const bool isNegative = TakeSign(text);
    const bool hasDigit = !text.empty() && ((text[0] >= '0' && text[0] <= '9') || text[0] == '.');
    double value = 0;
    if (text == "INF" || text == "inf" || text == "Inf")
        value = std::numeric_limits<double>::infinity();
    else if (text == "NaN" || text == "nan" || text == "NAN")
        value = std::numeric_limits<double>::quiet_NaN();
    else if (!hasDigit)
        return std::nullopt;
    else {
        const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
        if (result.ptr != text.data() + text.size() || result.ec == std::errc::invalid_argument)
            return std::nullopt;
        if (result.ec == std::errc::result_out_of_range)
            value = IsTiny(text) ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return isNegative ? -value : value;
}

} // namespace KxGenApi
