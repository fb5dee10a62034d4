// SPDX-License-Identifier: Apache-2.0
#include "formula/FormulaOperators.h"

#include <algorithm>

namespace KxGenApi
{

namespace
{

// clang-format off
// An operator stands ahead of those that it begins with.
constexpr BinaryOperator kBinaryOperators[] = {
    {"**", Opcode::Power,        Precedence::Bits,       false},
    {"<<", Opcode::ShiftLeft,    Precedence::Bits,       false},
    {">>", Opcode::ShiftRight,   Precedence::Bits,       false},
    {"&&", Opcode::LogicalAnd,   Precedence::Comparison, false},
    {"||", Opcode::LogicalOr,    Precedence::Comparison, false},
    {"<>", Opcode::NotEqual,     Precedence::Comparison, false},
    {"<=", Opcode::LessEqual,    Precedence::Comparison, false},
    {">=", Opcode::GreaterEqual, Precedence::Comparison, false},
    {"==", Opcode::Equal,        Precedence::Comparison, true},
    {"!=", Opcode::NotEqual,     Precedence::Comparison, true},
    {"&",  Opcode::BitAnd,       Precedence::Bits,       false},
    {"|",  Opcode::BitOr,        Precedence::Bits,       false},
    {"^",  Opcode::BitXor,       Precedence::Bits,       false},
    {"*",  Opcode::Multiply,     Precedence::Product,    false},
    {"/",  Opcode::Divide,       Precedence::Product,    false},
    {"%",  Opcode::Modulo,       Precedence::Product,    false},
    {"+",  Opcode::Add,          Precedence::Sum,        false},
    {"-",  Opcode::Subtract,     Precedence::Sum,        false},
    {"=",  Opcode::Equal,        Precedence::Comparison, false},
    {"<",  Opcode::Less,         Precedence::Comparison, false},
    {">",  Opcode::Greater,      Precedence::Comparison, false},
};

constexpr Function kFunctions[] = {
    {"SGN",   1, Opcode::Sign,    true},
    {"NEG",   1, Opcode::Negate,  true},
    {"ABS",   1, Opcode::Abs,     false},
    {"SQRT",  1, Opcode::Sqrt,    false},
    {"SIN",   1, Opcode::Sin,     false},
    {"COS",   1, Opcode::Cos,     false},
    {"TAN",   1, Opcode::Tan,     false},
    {"ASIN",  1, Opcode::Asin,    false},
    {"ACOS",  1, Opcode::Acos,    false},
    {"ATAN",  1, Opcode::Atan,    false},
    {"EXP",   1, Opcode::Exp,     false},
    {"LN",    1, Opcode::Ln,      false},
    {"LG",    1, Opcode::Lg,      false},
    {"TRUNC", 1, Opcode::Trunc,   false},
    {"FLOOR", 1, Opcode::Floor,   false},
    {"CEIL",  1, Opcode::Ceil,    false},
    {"ROUND", 1, Opcode::Round,   false},
    {"ROUND", 2, Opcode::RoundTo, false},
};

constexpr NamedConstant kNamedConstants[] = {
    {"E",  2.71828182845904523536},
    {"PI", 3.14159265358979323846},
};
// clang-format on

// Of the locale's letters none belongs to a function's name, so this needs no <cctype>.
bool EqualInAnyCase(std::string_view name, std::string_view upperCase)
{
    return std::equal(name.begin(), name.end(), upperCase.begin(), upperCase.end(),
                      [](char c, char upper) { return (c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c) == upper; });
}

} // namespace

const BinaryOperator* FindBinaryOperator(std::string_view text, bool withDoubledEquality)
{
    const auto* found = std::find_if(std::begin(kBinaryOperators), std::end(kBinaryOperators),
                                     [&](const BinaryOperator& row) {
                                         return text.substr(0, row.symbol.size()) == row.symbol &&
                                                (withDoubledEquality || !row.doubledEquality);
                                     });
    return found == std::end(kBinaryOperators) ? nullptr : found;
}

const Function* FindFunction(std::string_view name, std::size_t arguments, bool integerFormula)
{
    const auto* found = std::find_if(std::begin(kFunctions), std::end(kFunctions), [&](const Function& row) {
        return row.arguments == arguments && (row.inIntegerFormulas || !integerFormula) &&
               EqualInAnyCase(name, row.name);
    });
    return found == std::end(kFunctions) ? nullptr : found;
}

bool IsFunction(std::string_view name, bool integerFormula)
{
    return std::any_of(std::begin(kFunctions), std::end(kFunctions), [&](const Function& row) {
        return (row.inIntegerFormulas || !integerFormula) && EqualInAnyCase(name, row.name);
    });
}

const NamedConstant* FindNamedConstant(std::string_view name)
{
    const auto* found =
        std::find_if(std::begin(kNamedConstants), std::end(kNamedConstants),
                     [&](const NamedConstant& row) { return EqualInAnyCase(name, row.name); });
    return found == std::end(kNamedConstants) ? nullptr : found;
}

} // namespace KxGenApi
