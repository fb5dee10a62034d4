// SPDX-License-Identifier: Apache-2.0
#include "formula/FormulaLiteral.h"

#include "formula/FormulaArithmetic.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace KxGenApi
{

namespace
{

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";

std::size_t Run(std::string_view text, std::size_t from, std::string_view set)
{
    return std::min(text.find_first_not_of(set, from), text.size());
}

std::int64_t SaturatedInteger(std::string_view digits, int base)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    return error == std::errc::result_out_of_range ? std::numeric_limits<std::int64_t>::max() : value;
}

/// Tells overflow from underflow, which from_chars doesn't: whether the first digit that counts is left of
/// the point.
bool IsLarge(std::string_view text)
{
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
    std::int64_t magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    if (mantissa.size() == text.size())
        return magnitude > 0;
    std::string_view exponent = text.substr(mantissa.size() + 1);
    const bool negative = exponent.front() == '-';
    if (negative || exponent.front() == '+')
        exponent.remove_prefix(1);
    // Halved, so that adding the position cannot overflow; the magnitudes in question are 300 and more.
    const std::int64_t shift = SaturatedInteger(exponent, 10) / 2;
    magnitude /= 2;
    return (negative ? magnitude - shift : magnitude + shift) > 0;
}

double DecimalValue(std::string_view text)
{
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range)
        return IsLarge(text) ? std::numeric_limits<double>::infinity() : 0.0;
    return value;
}

std::string_view HexDigitsOf(const Literal& literal) { return literal.text.substr(2); }

std::string_view WithoutBlanks(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace

Literal ScanLiteral(std::string_view text)
{
    if (text.substr(0, 2) == "0x")
        if (const std::size_t end = Run(text, 2, kHexDigits); end > 2)
            return {text.substr(0, end), true, false};
    std::size_t end = Run(text, 0, kDigits);
    const std::size_t integerEnd = end;
    if (end < text.size() && text[end] == '.')
        end = Run(text, end + 1, kDigits);
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-'))
            ++exponent;
        if (const std::size_t exponentEnd = Run(text, exponent, kDigits); exponentEnd > exponent)
            end = exponentEnd;
    }
    return {text.substr(0, end), false, end != integerEnd};
}

template <>
std::int64_t ValueOf<std::int64_t>(const Literal& literal)
{
    if (literal.hex)
        return SaturatedInteger(HexDigitsOf(literal), 16);
    return literal.decimal ? RoundedToInteger(DecimalValue(literal.text))
                           : SaturatedInteger(literal.text, 10);
}

template <>
double ValueOf<double>(const Literal& literal)
{
    if (!literal.hex)
        return DecimalValue(literal.text);
    const std::int64_t wide = SaturatedInteger(HexDigitsOf(literal), 16);
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(wide & 0xFFFFFFFF));
}

bool IsIntegral(const Literal& literal)
{
    const double value = literal.hex ? 0.0 : DecimalValue(literal.text);
    return value == std::trunc(value);
}

template <typename Number>
std::optional<Number> ParseConstant(std::string_view text)
{
    std::string_view rest = WithoutBlanks(text);
    const bool negative = !rest.empty() && rest.front() == '-';
    if (!rest.empty() && (negative || rest.front() == '+'))
        rest.remove_prefix(1);
    if (rest.empty() || kDigits.find(rest.front()) == std::string_view::npos)
        return std::nullopt;
    const Literal literal = ScanLiteral(rest);
    if (literal.text.size() != rest.size())
        return std::nullopt;
    if (std::is_same_v<Number, std::int64_t> && negative && rest == "9223372036854775808")
        return std::numeric_limits<Number>::min();
    const Number value =
        literal.hex ? static_cast<Number>(ValueOf<std::int64_t>(literal)) : ValueOf<Number>(literal);
    return negative ? -value : value;
}

template std::optional<std::int64_t> ParseConstant<std::int64_t>(std::string_view);
template std::optional<double> ParseConstant<double>(std::string_view);

} // namespace KxGenApi
