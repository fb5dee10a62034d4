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
    static constexpr std::size_t kSteps =
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

inline constexpr Opcode kLastOpcode = Opcode::RoundTo;

/// Where a step finds a number.
enum class OperandSource : std::uint8_t
{
    Variable,
    Constant,
    Result ///< of an earlier step
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
    static_assert(3 * FormulaLimits::kSteps <= (1U << kIndexBits), "each operand could be another constant");

    std::uint16_t m_bits;
};

/// One operation, and the function that carries it out and goes on with the next: every step jumps to its
/// successor directly, which a processor predicts far better than the one jump of an interpreter's loop.
///
/// The result of a step lies at the step's own index. There are no branches: both sides of ?:, && and || are
/// always evaluated, and a zero divisor in the branch not taken is an error too. So a shared expression is
/// simply an operand of several others.
template <typename Number>
struct Step
{
    /// @param sources where the operands lie, by OperandSource
    /// @param result place for the step's own result
    using Run = Number (*)(const Step* self, const Number* const* sources, Number* result);

    static constexpr std::uint16_t kNoOffset = 0xFFFF;
    static_assert(FormulaLimits::kTextLength < kNoOffset);

    Run run;
    Operand first;
    Operand second;       ///< same as the first for operations on one number
    Operand third;        ///< Select only, else same as the first
    std::uint16_t offset; ///< of the operator in the formula's text, for messages
};

} // namespace KxGenApi
