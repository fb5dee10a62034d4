// SPDX-License-Identifier: Apache-2.0
// The form in which a compiled formula is kept.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KxGenApi
{

/// Limits that keep hostile descriptions within bounds; real formulas stay far below them. Nesting needs no
/// limit of its own: the compiler doesn't recurse on brackets, so the length bounds it.
struct FormulaLimits
{
    static constexpr std::size_t kTextLength = 65'000;
    static constexpr std::size_t kInstructions =
        4'096; ///< all expressions included; the results fill 32 KB of stack
    static constexpr std::size_t kVariables = 16'384;
    static constexpr std::size_t kExpressionDepth = 64; ///< expressions that use expressions
};

enum class Opcode : std::uint8_t
{
    // prefix operators
    Negate,
    Complement,
    // binary operators
    Power,
    BitAnd,
    BitOr,
    BitXor,
    ShiftLeft,
    ShiftRight,
    Multiply,
    Divide,
    Modulo,
    Add,
    Subtract,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    LogicalAnd,
    LogicalOr,
    // condition ? a : b
    Select,
    // functions
    Sign,
    Abs,
    Sqrt,
    Sin,
    Cos,
    Tan,
    Asin,
    Acos,
    Atan,
    Exp,
    Ln,
    Lg,
    Trunc,
    Floor,
    Ceil,
    Round,
    RoundTo
};

/// Where an instruction finds a number.
enum class OperandSource : std::uint8_t
{
    Variable,
    Constant,
    Result ///< of an earlier instruction
};

/// A source and an index into it, packed into 16 bits.
class Operand
{
public:
    constexpr Operand(OperandSource source, std::size_t index)
        : m_bits(static_cast<std::uint16_t>((static_cast<unsigned>(source) << kIndexBits) | index))
    {}

    constexpr OperandSource Source() const { return static_cast<OperandSource>(m_bits >> kIndexBits); }
    constexpr std::size_t Index() const { return m_bits & ((1U << kIndexBits) - 1U); }

    friend constexpr bool operator==(Operand left, Operand right) { return left.m_bits == right.m_bits; }

private:
    static constexpr unsigned kIndexBits = 14;
    static_assert(FormulaLimits::kVariables <= (1U << kIndexBits));
    static_assert(3 * FormulaLimits::kInstructions <= (1U << kIndexBits),
                  "each operand could be another constant");

    std::uint16_t m_bits;
};

/// One operation. Its result lies at its own index, for there are no jumps: both sides of ?:, && and || are
/// always evaluated, and a zero divisor in the branch not taken is an error too. So a shared expression is
/// simply an operand of several others.
struct Instruction
{
    static constexpr std::uint16_t kNoOffset = 0xFFFF;
    static_assert(FormulaLimits::kTextLength < kNoOffset);

    Opcode opcode;
    Operand first;
    Operand second;       ///< same as the first for operations on one number
    Operand third;        ///< Select only
    std::uint16_t offset; ///< of the operator in the formula's text, for messages
};

} // namespace KxGenApi
