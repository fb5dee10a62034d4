// SPDX-License-Identifier: Apache-2.0
// The operators and functions that formulas know.
#pragma once

#include "formula/FormulaProgram.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KxGenApi
{

/// How tightly operators bind, tightest first.
enum class Precedence : std::uint8_t
{
    Prefix,
    Bits,
    Product,
    Sum,
    Comparison,
    Condition
};

struct BinaryOperator
{
    std::string_view symbol;
    Opcode opcode;
    Precedence precedence;
    bool doubledEquality; ///< only in dialects that have it
};

struct Function
{
    std::string_view name;
    std::size_t arguments;
    Opcode opcode;
    bool inIntegerFormulas;
};

struct NamedConstant
{
    std::string_view name;
    double value;
};

/// The longest operator that the text begins with, null when there is none.
const BinaryOperator* FindBinaryOperator(std::string_view text, bool withDoubledEquality);

/// The function of that name for that number of arguments, null when there is none. Any case.
const Function* FindFunction(std::string_view name, std::size_t arguments, bool integerFormula);

/// Whether there is a function of that name, for any number of arguments. Any case.
bool IsFunction(std::string_view name, bool integerFormula);

/// E or PI, null for other names. Any case.
const NamedConstant* FindNamedConstant(std::string_view name);

} // namespace KxGenApi
