// SPDX-License-Identifier: Apache-2.0
// Reads one text, that of a formula or of an expression that it mentions.
#pragma once

#include "formula/FormulaBuilder.h"
#include "formula/FormulaLexer.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <vector>

namespace KxGenApi
{

/// Tells the parser what a name stands for.
template <typename Number>
class NameResolver
{
public:
    virtual ~NameResolver() = default;

    /// False when the name is unknown.
    /// @throws FormulaError when it stands for something that is wrong
    virtual bool Resolve(std::string_view name, FormulaValue<Number>& value) = 0;
};

/// Operator precedence on stacks of its own: brackets nested however deep take memory in proportion to the
/// text, and no call stack.
template <typename Number>
class FormulaParser
{
public:
    using Value = FormulaValue<Number>;

    /// @param isExpression whether offsets in the text mean nothing to who only knows the formula
    FormulaParser(std::string_view text, bool isExpression, const FormulaDialect& dialect,
                  NameResolver<Number>& names, FormulaBuilder<Number>& builder);

    /// To be called once. @throws FormulaError
    Value Parse();

private:
    /// What waits on the stack for its operands or its end.
    enum class Waiting : std::uint8_t
    {
        Prefix,
        Binary,
        Bracket,
        Call,
        Question, ///< of a ?: whose colon is still to come
        Colon
    };

    struct Item
    {
        Waiting waiting;
        Opcode opcode;         ///< of operators
        Precedence precedence; ///< of operators
        std::size_t offset;
        std::string_view name; ///< of the function called
        std::size_t arguments; ///< of it that are complete
    };

    static constexpr bool kIntegers = std::is_same_v<Number, std::int64_t>;

    void TakeOperand(const Token& token);
    void TakeOperator(const Token& token);
    void TakeSign(const Token& token);
    void TakeName(const Token& token);
    void TakeQuestion(const Token& token);
    void TakeColon(const Token& token);
    void TakeComma(const Token& token);
    void TakeClose(const Token& token);
    Value LiteralValue(const Token& token) const;

    void Wait(Waiting waiting, const Token& token);
    void WaitForOperand(Waiting waiting, Opcode opcode, Precedence precedence, std::size_t offset);
    void PushOperand(const Value& value);
    void ApplyDownTo(Precedence loosest);
    void ApplyOperator(const Item& item);
    void ApplySelect();
    void EndGroup();
    bool TopIs(Waiting waiting) const { return !m_waiting.empty() && m_waiting.back().waiting == waiting; }
    Value PopOperand();
    std::uint16_t StepOffset(std::size_t offset) const;

    FormulaLexer m_lexer;
    const bool m_isExpression;
    const FormulaDialect& m_dialect;
    NameResolver<Number>& m_names;
    FormulaBuilder<Number>& m_builder;
    std::vector<Value> m_operands;
    std::vector<Item> m_waiting;
    bool m_operandExpected = true;
    bool m_afterSign = false;
};

extern template class FormulaParser<std::int64_t>;
extern template class FormulaParser<double>;

} // namespace KxGenApi
