// SPDX-License-Identifier: Apache-2.0
#include "formula/FormulaParser.h"

#include "formula/FormulaError.h"

#include <string>

namespace KxGenApi
{

template <typename Number>
FormulaParser<Number>::FormulaParser(std::string_view text, bool isExpression, const FormulaDialect& dialect,
                                     NameResolver<Number>& names, FormulaBuilder<Number>& builder)
    : m_lexer(text, dialect)
    , m_isExpression(isExpression)
    , m_dialect(dialect)
    , m_names(names)
    , m_builder(builder)
{
    if (text.size() > FormulaLimits::kTextLength)
        throw FormulaError("text of " + std::to_string(text.size()) +
                           " characters is longer than the limit of " +
                           std::to_string(FormulaLimits::kTextLength));
}

template <typename Number>
auto FormulaParser<Number>::Parse() -> Value
{
    Token token = m_lexer.Next();
    for (; token.kind != TokenKind::End; token = m_lexer.Next()) {
        if (m_operandExpected)
            TakeOperand(token);
        else
            TakeOperator(token);
    }
    if (m_operandExpected)
        throw FormulaError("an operand is missing at the end", token.offset);
    EndGroup();
    if (!m_waiting.empty())
        throw FormulaError("'(' is never closed", m_waiting.back().offset);
    return PopOperand();
}

template <typename Number>
void FormulaParser<Number>::TakeOperand(const Token& token)
{
    const bool isSign =
        token.kind == TokenKind::Operator && token.binaryOperator->precedence == Precedence::Sum;
    if (isSign)
        return TakeSign(token);
    m_afterSign = false;
    switch (token.kind) {
    case TokenKind::Number:
        return PushOperand(LiteralValue(token));
    case TokenKind::Name:
        return TakeName(token);
    case TokenKind::Open:
        return Wait(Waiting::Bracket, token);
    case TokenKind::Complement:
        return WaitForOperand(Waiting::Prefix, Opcode::Complement, Precedence::Prefix, token.offset);
    default:
        throw FormulaError("an operand is missing before " + QuotedForMessage(token.text), token.offset);
    }
}

template <typename Number>
void FormulaParser<Number>::TakeSign(const Token& token)
{
    // "A--B" and "A+-B" are more often a slip than meant, and other evaluators refuse them; a sign after any
    // other operator is fine.
    if (m_afterSign)
        throw FormulaError("a sign directly after '+' or '-' needs brackets", token.offset);
    m_afterSign = true;
    if (token.binaryOperator->opcode == Opcode::Subtract)
        WaitForOperand(Waiting::Prefix, Opcode::Negate, Precedence::Prefix, token.offset);
}

template <typename Number>
auto FormulaParser<Number>::LiteralValue(const Token& token) const -> Value
{
    if (kIntegers && token.literal.decimal) {
        if (!m_dialect.integralDecimals)
            throw FormulaError("decimal number " + QuotedForMessage(token.text) + " in an integer formula",
                               token.offset);
        if (!IsIntegral(token.literal))
            throw FormulaError("number with a fraction " + QuotedForMessage(token.text) +
                                   " in an integer formula",
                               token.offset);
    }
    return Value::Known(ValueOf<Number>(token.literal));
}

template <typename Number>
void FormulaParser<Number>::TakeName(const Token& token)
{
    if (m_lexer.AtOpen()) {
        if (IsFunction(token.text, kIntegers)) {
            m_lexer.Next();
            return Wait(Waiting::Call, token);
        }
    } else if (Value value = Value::Known(Number()); m_names.Resolve(token.text, value)) {
        return PushOperand(value);
    }
    if constexpr (!kIntegers) {
        if (const auto* constant = FindNamedConstant(token.text)) {
            if (m_lexer.AtOpen()) {
                m_lexer.Next();
                if (const Token close = m_lexer.Next(); close.kind != TokenKind::Close)
                    throw FormulaError(QuotedForMessage(token.text) + " takes no argument", close.offset);
            }
            return PushOperand(Value::Known(constant->value));
        }
    }
    const char* const what = m_lexer.AtOpen() ? "unknown function " : "unknown name ";
    throw FormulaError(what + QuotedForMessage(token.text), token.offset);
}

template <typename Number>
void FormulaParser<Number>::TakeOperator(const Token& token)
{
    switch (token.kind) {
    case TokenKind::Operator:
        ApplyDownTo(token.binaryOperator->precedence);
        WaitForOperand(Waiting::Binary, token.binaryOperator->opcode, token.binaryOperator->precedence,
                       token.offset);
        m_afterSign = token.binaryOperator->precedence == Precedence::Sum;
        return;
    case TokenKind::Question:
        return TakeQuestion(token);
    case TokenKind::Colon:
        return TakeColon(token);
    case TokenKind::Comma:
        return TakeComma(token);
    case TokenKind::Close:
        return TakeClose(token);
    default:
        throw FormulaError("an operator is missing before " + QuotedForMessage(token.text), token.offset);
    }
}

template <typename Number>
void FormulaParser<Number>::TakeQuestion(const Token& token)
{
    ApplyDownTo(Precedence::Comparison);
    if (TopIs(Waiting::Question))
        throw FormulaError("a condition between '?' and ':' needs brackets", token.offset);
    if (TopIs(Waiting::Colon))
        ApplySelect(); // a ? b : c ? d : e means (a ? b : c) ? d : e
    Wait(Waiting::Question, token);
}

template <typename Number>
void FormulaParser<Number>::TakeColon(const Token& token)
{
    ApplyDownTo(Precedence::Comparison);
    if (!TopIs(Waiting::Question))
        throw FormulaError("':' without '?'", token.offset);
    m_waiting.back().waiting = Waiting::Colon;
    m_operandExpected = true;
}

template <typename Number>
void FormulaParser<Number>::TakeComma(const Token& token)
{
    EndGroup();
    if (!TopIs(Waiting::Call))
        throw FormulaError("',' outside the arguments of a function", token.offset);
    ++m_waiting.back().arguments;
    m_operandExpected = true;
}

template <typename Number>
void FormulaParser<Number>::TakeClose(const Token& token)
{
    EndGroup();
    if (m_waiting.empty())
        throw FormulaError("')' without '('", token.offset);
    const Item item = m_waiting.back();
    m_waiting.pop_back();
    if (item.waiting == Waiting::Bracket)
        return;

    const std::size_t arguments = item.arguments + 1;
    const Function* const function = FindFunction(item.name, arguments, kIntegers);
    if (!function)
        throw FormulaError("function " + QuotedForMessage(item.name) + " does not take " +
                               std::to_string(arguments) + " arguments",
                           item.offset);
    const Value last = PopOperand();
    const std::uint16_t offset = StepOffset(item.offset);
    PushOperand(arguments == 1 ? m_builder.Operation(function->opcode, last, last, offset)
                               : m_builder.Operation(function->opcode, PopOperand(), last, offset));
}

/// Everything since the last bracket, comma or beginning becomes one value.
template <typename Number>
void FormulaParser<Number>::EndGroup()
{
    ApplyDownTo(Precedence::Comparison);
    if (TopIs(Waiting::Question))
        throw FormulaError("'?' without ':'", m_waiting.back().offset);
    if (TopIs(Waiting::Colon))
        ApplySelect();
}

/// Applies the operators that wait and bind at least as tightly as that, which makes all of them
/// left-associative.
template <typename Number>
void FormulaParser<Number>::ApplyDownTo(Precedence loosest)
{
    while ((TopIs(Waiting::Prefix) || TopIs(Waiting::Binary)) && m_waiting.back().precedence <= loosest) {
        const Item item = m_waiting.back();
        m_waiting.pop_back();
        ApplyOperator(item);
    }
}

template <typename Number>
void FormulaParser<Number>::ApplyOperator(const Item& item)
{
    const Value last = PopOperand();
    const std::uint16_t offset = StepOffset(item.offset);
    PushOperand(item.waiting == Waiting::Prefix
                    ? m_builder.Operation(item.opcode, last, last, offset)
                    : m_builder.Operation(item.opcode, PopOperand(), last, offset));
}

template <typename Number>
void FormulaParser<Number>::ApplySelect()
{
    m_waiting.pop_back();
    const Value whenFalse = PopOperand();
    const Value whenTrue = PopOperand();
    const Value condition = PopOperand();
    PushOperand(m_builder.Select(condition, whenTrue, whenFalse));
}

template <typename Number>
void FormulaParser<Number>::Wait(Waiting waiting, const Token& token)
{
    m_waiting.push_back({waiting, Opcode::Select, Precedence::Condition, token.offset, token.text, 0});
    m_operandExpected = true;
}

template <typename Number>
void FormulaParser<Number>::WaitForOperand(Waiting waiting, Opcode opcode, Precedence precedence,
                                           std::size_t offset)
{
    m_waiting.push_back({waiting, opcode, precedence, offset, {}, 0});
    m_operandExpected = true;
}

template <typename Number>
void FormulaParser<Number>::PushOperand(const Value& value)
{
    m_operands.push_back(value);
    m_operandExpected = false;
}

template <typename Number>
auto FormulaParser<Number>::PopOperand() -> Value
{
    const Value value = m_operands.back();
    m_operands.pop_back();
    return value;
}

template <typename Number>
std::uint16_t FormulaParser<Number>::StepOffset(std::size_t offset) const
{
    return m_isExpression ? Step<Number>::kNoOffset : static_cast<std::uint16_t>(offset);
}

template class FormulaParser<std::int64_t>;
template class FormulaParser<double>;

} // namespace KxGenApi
