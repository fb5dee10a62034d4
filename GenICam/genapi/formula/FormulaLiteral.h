// SPDX-License-Identifier: Apache-2.0
// Numbers as formulas and constants write them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace KxGenApi
{

/// A number as it stands in a formula; without sign.
struct Literal
{
    std::string_view text;
    bool hex = false;
    bool decimal = false; ///< with a point or an exponent
};

/// The number that the text, which begins with a digit, begins with.
Literal ScanLiteral(std::string_view text);

/// The value in a formula over that kind of number: integers saturate, in a formula over doubles a hex
/// literal is a 32-bit integer with sign (0xFFFFFFFF is -1).
template <typename Number>
Number ValueOf(const Literal& literal);

/// Whether a decimal literal has no fraction: "4.0", "25e-1" does have one.
bool IsIntegral(const Literal& literal);

/// The value of a constant: optional sign, then decimal or hex at full width, blanks around it. Nothing when
/// the text isn't a number.
template <typename Number>
std::optional<Number> ParseConstant(std::string_view text);

} // namespace KxGenApi
