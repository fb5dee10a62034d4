// SPDX-License-Identifier: Apache-2.0
#include "runtime/TextConversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace KxGenApi
{
namespace
{

using namespace GenApi;

std::string_view WithoutLeadingBlanks(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t\r\n\v\f");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

bool TakeHexPrefix(std::string_view& text)
{
    if (text.size() < 2 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X'))
        return false;
    text.remove_prefix(2);
    return true;
}

/// Value of a leading run of digits, saturated; nothing if there is none.
std::optional<uint64_t> LeadingDigits(std::string_view text, int base)
{
    uint64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (result.ec == std::errc::result_out_of_range)
        return std::numeric_limits<uint64_t>::max();
    if (result.ec != std::errc())
        return std::nullopt;
    return value;
}

std::optional<int64_t> TextToNumber(std::string_view text)
{
    text = WithoutLeadingBlanks(text);
    const bool negative = !text.empty() && text[0] == '-';
    if (!text.empty() && (text[0] == '-' || text[0] == '+'))
        text.remove_prefix(1);
    if (!text.empty() && (text[0] == '-' || text[0] == '+'))
        return std::nullopt;
    const bool hex = TakeHexPrefix(text);
    const std::optional<uint64_t> magnitude = LeadingDigits(text, hex ? 16 : 10);
    if (!magnitude)
        return std::nullopt;
    if (hex) // the bits count: all ones are -1
        return static_cast<int64_t>(negative ? 0 - *magnitude : *magnitude);
    constexpr uint64_t kLargest = std::numeric_limits<int64_t>::max();
    if (negative)
        return *magnitude > kLargest ? std::numeric_limits<int64_t>::min()
                                     : -static_cast<int64_t>(*magnitude);
    return static_cast<int64_t>(std::min(*magnitude, kLargest));
}

/// A number made of that many parts, the most significant first, each at most one byte.
std::optional<int64_t> TextToGroups(std::string_view text, size_t count, char separator, int base,
                                    size_t maxDigits)
{
    uint64_t value = 0;
    for (size_t i = 0; i < count; ++i) {
        const size_t end = i + 1 < count ? text.find(separator) : text.size();
        if (end == std::string_view::npos || end == 0 || end > maxDigits)
            return std::nullopt;
        unsigned part = 0;
        const auto result = std::from_chars(text.data(), text.data() + end, part, base);
        if (result.ec != std::errc() || result.ptr != text.data() + end || part > 0xFF)
            return std::nullopt;
        value = value << 8 | part;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return static_cast<int64_t>(value);
}

std::string Format(const char* format, unsigned long long value)
{
    char text[32];
    return std::string(text, static_cast<size_t>(std::snprintf(text, sizeof text, format, value)));
}

std::string Groups(uint64_t value, unsigned count, const char* format, char separator)
{
    std::string text;
    for (unsigned i = count; i-- > 0;) {
        text += Format(format, value >> (8 * i) & 0xFF);
        if (i > 0)
            text += separator;
    }
    return text;
}

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

std::string IntegerToText(int64_t value, ERepresentation representation)
{
    const auto bits = static_cast<uint64_t>(value);
    switch (representation) {
    case GenApi::Boolean:
        return value != 0 ? "true" : "false";
    case HexNumber:
        return value == 0 ? "0" : Format("0x%llx", bits);
    case IPV4Address:
        return Groups(bits, 4, "%llu", '.');
    case MACAddress:
        return Groups(bits, 6, "%02llx", ':');
    default:
        return std::to_string(value);
    }
}

std::optional<int64_t> TextToInteger(std::string_view text, ERepresentation representation)
{
    switch (representation) {
    case GenApi::Boolean:
        if (text == "true")
            return 1;
        return text == "false" ? std::optional<int64_t>(0) : std::nullopt;
    case IPV4Address:
        return TextToGroups(text, 4, '.', 10, 3);
    case MACAddress:
        return TextToGroups(text, 6, ':', 16, 2);
    default:
        return TextToNumber(text);
    }
}

std::string RealToText(double value, EDisplayNotation notation, int64_t precision)
{
    const std::chars_format format = notation == fnFixed        ? std::chars_format::fixed
                                     : notation == fnScientific ? std::chars_format::scientific
                                                                : std::chars_format::general;
    // 310 digits before the point and 100 behind it are the most that can be asked for.
    const int digits = static_cast<int>(std::clamp<int64_t>(precision, 0, 100));
    char text[480];
    const auto result = std::to_chars(text, text + sizeof text, value, format, digits);
    return std::string(text, result.ptr);
}

double UnitOfLastDigit(std::string_view text)
{
    const std::string_view mantissa = text.substr(0, text.find('e'));
    const size_t point = mantissa.find('.');
    const size_t digits = point != std::string_view::npos ? mantissa.size() - point - 1 : 0;
    return std::pow(10.0, -static_cast<double>(digits));
}

std::optional<double> TextToReal(std::string_view text)
{
    text = WithoutLeadingBlanks(text);
    if (!text.empty() && text[0] == '+')
        text.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::string BytesToText(const uint8_t* bytes, size_t length)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text = "0x";
    text.reserve(2 + 2 * length);
    for (size_t i = 0; i < length; ++i) {
        text += kDigits[bytes[i] >> 4];
        text += kDigits[bytes[i] & 15];
    }
    return text;
}

std::optional<std::vector<uint8_t>> TextToBytes(std::string_view text)
{
    TakeHexPrefix(text);
    if (text.size() % 2 != 0)
        return std::nullopt;
    std::vector<uint8_t> bytes(text.size() / 2);
    for (size_t i = 0; i < bytes.size(); ++i) {
        const int high = HexDigit(text[2 * i]);
        const int low = HexDigit(text[2 * i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes[i] = static_cast<uint8_t>(high * 16 + low);
    }
    return bytes;
}

} // namespace KxGenApi
