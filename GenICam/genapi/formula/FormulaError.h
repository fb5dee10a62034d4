// SPDX-License-Identifier: Apache-2.0
// What is wrong with a formula, at compile time or for the values at hand.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace KxGenApi
{

/// The text says what is wrong and at which character (counted from 1); the node is for the caller to add.
class FormulaError : public std::runtime_error
{
public:
    /// Offset() of errors that cannot be told a place.
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    explicit FormulaError(const std::string& text, std::size_t offset = kNowhere);

    /// The same error, told to lie in an expression that the formula mentions.
    FormulaError(std::string_view expression, const FormulaError& inner);

    /// Index of the character in the formula, or in the expression that the text names.
    std::size_t Offset() const noexcept { return m_offset; }

private:
    std::size_t m_offset;
};

/// The text in quotes and fit for a message: cut when long, bytes that cannot be printed as hex.
std::string QuotedForMessage(std::string_view text);

} // namespace KxGenApi
