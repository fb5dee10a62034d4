// SPDX-License-Identifier: Apache-2.0
// Numbers and bytes as text, independent of the program's locale.
#pragma once

#include <GenApi/Types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KxGenApi
{

/// Text of an integer in that representation.
std::string IntegerToText(int64_t value, GenApi::ERepresentation representation);

/// Integer of a text. In the number representations a leading number counts and the rest is ignored, "0x"
/// means hexadecimal, and what is too large saturates; addresses and Booleans must be complete. Nothing if
/// the text is none.
std::optional<int64_t> TextToInteger(std::string_view text, GenApi::ERepresentation representation);

/// Text of a floating-point number.
std::string RealToText(double value, GenApi::EDisplayNotation notation, int64_t precision);

/// What one step of the last digit of a number's text is worth, but for a factor given by an exponent: 0.01
/// for "12.34", 0.1 for "1.2e3".
double UnitOfLastDigit(std::string_view text);

/// Number that the text begins with; nothing if there is none, or if it is not finite.
std::optional<double> TextToReal(std::string_view text);

/// "0x" and two digits for each byte.
std::string BytesToText(const uint8_t* bytes, size_t length);

/// Bytes of hexadecimal digits, with or without "0x"; nothing for an odd count or another character.
std::optional<std::vector<uint8_t>> TextToBytes(std::string_view text);

} // namespace KxGenApi
