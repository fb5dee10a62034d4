// SPDX-License-Identifier: Apache-2.0
// What each operation computes. Used for evaluation and for folding constants, so both agree.
#pragma once

#include "formula/FormulaError.h"
#include "formula/FormulaProgram.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace KxGenApi
{

[[noreturn]] void ThrowDivisionByZero(std::size_t offset);
[[noreturn]] void ThrowBitOperandOutOfRange(double value, std::size_t offset);

/// Nearest integer, halves away from zero; saturates, NaN is 0.
inline std::int64_t RoundedToInteger(double value)
{
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr double kTwoTo63 = 9223372036854775808.0;
    const double rounded = std::round(value);
    if (rounded >= kTwoTo63)
        return Limits::max();
    if (rounded < -kTwoTo63)
        return Limits::min();
    return std::isnan(rounded) ? 0 : static_cast<std::int64_t>(rounded);
}

/// Apply is always inlined, because each step of a program applies one operation known at compile time: of
/// the switch nothing is left but that.
template <typename Number>
struct Arithmetic;

/// Two's complement that wraps: computed unsigned, where that is defined.
template <>
struct Arithmetic<std::int64_t>
{
    using Number = std::int64_t;
    using Unsigned = std::uint64_t;

    static Number Wrapped(Unsigned value) { return static_cast<Number>(value); }
    static Unsigned Bits(Number value) { return static_cast<Unsigned>(value); }
    static unsigned ShiftCount(Number value) { return static_cast<unsigned>(Bits(value) & 63U); }

    /// Through double, so large powers are rounded, and what doesn't fit is the smallest integer.
    static Number Power(Number base, Number exponent)
    {
        constexpr double kTwoTo63 = 9223372036854775808.0;
        const double power = std::pow(static_cast<double>(base), static_cast<double>(exponent));
        return power >= -kTwoTo63 && power < kTwoTo63 ? static_cast<Number>(power)
                                                      : std::numeric_limits<Number>::min();
    }

    // The smallest integer divided by -1 doesn't fit either, and traps on many processors.
    static Number Divide(Number a, Number b, std::size_t offset)
    {
        if (b == 0)
            ThrowDivisionByZero(offset);
        return b == -1 ? Wrapped(0U - Bits(a)) : a / b;
    }
    static Number Modulo(Number a, Number b, std::size_t offset)
    {
        if (b == 0)
            ThrowDivisionByZero(offset);
        return b == -1 ? 0 : a % b;
    }

    [[gnu::always_inline]] static inline Number Apply(Opcode opcode, Number a, Number b, std::size_t offset)
    {
        // clang-format off
        switch (opcode) {
        case Opcode::Negate: return Wrapped(0U - Bits(a));
        case Opcode::Complement: return ~a;
        case Opcode::Power: return Power(a, b);
        case Opcode::BitAnd: return a & b;
        case Opcode::BitOr: return a | b;
        case Opcode::BitXor: return a ^ b;
        case Opcode::ShiftLeft: return Wrapped(Bits(a) << ShiftCount(b));
        case Opcode::ShiftRight: return a >> ShiftCount(b);
        case Opcode::Multiply: return Wrapped(Bits(a) * Bits(b));
        case Opcode::Divide: return Divide(a, b, offset);
        case Opcode::Modulo: return Modulo(a, b, offset);
        case Opcode::Add: return Wrapped(Bits(a) + Bits(b));
        case Opcode::Subtract: return Wrapped(Bits(a) - Bits(b));
        case Opcode::Equal: return a == b;
        case Opcode::NotEqual: return a != b;
        case Opcode::Less: return a < b;
        case Opcode::Greater: return a > b;
        case Opcode::LessEqual: return a <= b;
        case Opcode::GreaterEqual: return a >= b;
        case Opcode::LogicalAnd: return (a != 0) & (b != 0);
        case Opcode::LogicalOr: return (a != 0) | (b != 0);
        case Opcode::Sign: return (a > 0) - (a < 0);
        default: return 0; // the operator table gives integer formulas no other operation
        }
        // clang-format on
    }
};

/// IEEE arithmetic; bit operators work on 32-bit integers.
template <>
struct Arithmetic<double>
{
    using Number = double;

    static Number Truth(bool value) { return value ? 1.0 : 0.0; }

    static std::int32_t Integer(Number value, std::size_t offset)
    {
        if (!(value > -2147483649.0 && value < 2147483648.0))
            ThrowBitOperandOutOfRange(value, offset);
        return static_cast<std::int32_t>(value);
    }
    static std::uint32_t Bits(Number value, std::size_t offset)
    {
        return static_cast<std::uint32_t>(Integer(value, offset));
    }
    static Number OfBits(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }
    static Number NonZero(Number value, std::size_t offset)
    {
        if (value == 0.0)
            ThrowDivisionByZero(offset);
        return value;
    }

    /// Rounds to so many digits after the point, or before it when negative.
    static Number RoundedTo(Number value, Number digits)
    {
        const Number scale = std::pow(10.0, std::fabs(std::trunc(digits)));
        if (digits < 0)
            return std::isinf(scale) ? 0.0 : std::round(value / scale) * scale;
        const Number scaled = value * scale;
        return std::isfinite(scaled) ? std::round(scaled) / scale
                                     : value; // so many digits leave the value alone
    }

    [[gnu::always_inline]] static inline Number Apply(Opcode opcode, Number a, Number b, std::size_t offset)
    {
        // clang-format off
        switch (opcode) {
        case Opcode::Negate: return -a;
        case Opcode::Complement: return OfBits(~Bits(a, offset));
        case Opcode::Power: return std::pow(a, b);
        case Opcode::BitAnd: return OfBits(Bits(a, offset) & Bits(b, offset));
        case Opcode::BitOr: return OfBits(Bits(a, offset) | Bits(b, offset));
        case Opcode::BitXor: return OfBits(Bits(a, offset) ^ Bits(b, offset));
        case Opcode::ShiftLeft: return OfBits(Bits(a, offset) << (Bits(b, offset) & 31U));
        case Opcode::ShiftRight: return Integer(a, offset) >> (Bits(b, offset) & 31U);
        case Opcode::Multiply: return a * b;
        case Opcode::Divide: return a / NonZero(b, offset);
        case Opcode::Modulo: return std::fmod(a, NonZero(b, offset));
        case Opcode::Add: return a + b;
        case Opcode::Subtract: return a - b;
        case Opcode::Equal: return Truth(a == b);
        case Opcode::NotEqual: return Truth(a != b);
        case Opcode::Less: return Truth(a < b);
        case Opcode::Greater: return Truth(a > b);
        case Opcode::LessEqual: return Truth(a <= b);
        case Opcode::GreaterEqual: return Truth(a >= b);
        case Opcode::LogicalAnd: return Truth((a != 0.0) & (b != 0.0));
        case Opcode::LogicalOr: return Truth((a != 0.0) | (b != 0.0));
        case Opcode::Select: break; // takes three operands: the callers compute it
        case Opcode::Sign: return Truth(a > 0.0) - Truth(a < 0.0);
        case Opcode::Abs: return std::fabs(a);
        case Opcode::Sqrt: return std::sqrt(a);
        case Opcode::Sin: return std::sin(a);
        case Opcode::Cos: return std::cos(a);
        case Opcode::Tan: return std::tan(a);
        case Opcode::Asin: return std::asin(a);
        case Opcode::Acos: return std::acos(a);
        case Opcode::Atan: return std::atan(a);
        case Opcode::Exp: return std::exp(a);
        case Opcode::Ln: return std::log(a);
        case Opcode::Lg: return std::log10(a);
        case Opcode::Trunc: return std::trunc(a);
        case Opcode::Floor: return std::floor(a);
        case Opcode::Ceil: return std::ceil(a);
        case Opcode::Round: return std::round(a);
        case Opcode::RoundTo: return RoundedTo(a, b);
        }
        // clang-format on
        return 0.0;
    }
};

} // namespace KxGenApi
