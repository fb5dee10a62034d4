// SPDX-License-Identifier: Apache-2.0
#include "formula/FormulaError.h"

#include <cstdio>

namespace KxGenApi
{

namespace
{

std::string WithPlace(const std::string& text, std::size_t offset)
{
    if (offset == FormulaError::kNowhere)
        return text;
    return text + " (character " + std::to_string(offset + 1) + ")";
}

} // namespace

FormulaError::FormulaError(const std::string& text, std::size_t offset)
    : std::runtime_error(WithPlace(text, offset))
    , m_offset(offset)
{}

FormulaError::FormulaError(std::string_view expression, const FormulaError& inner)
    : std::runtime_error("in expression " + QuotedForMessage(expression) + ": " + inner.what())
    , m_offset(inner.m_offset)
{}

std::string QuotedForMessage(std::string_view text)
{
    constexpr std::size_t kLongest = 60;
    std::string quoted = "'";
    for (const char c : text.substr(0, kLongest)) {
        if (c >= 0x20 && c < 0x7F) {
            quoted += c;
            continue;
        }
        char hex[8];
        std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        quoted += hex;
    }
    quoted += text.size() > kLongest ? "...'" : "'";
    return quoted;
}

} // namespace KxGenApi
