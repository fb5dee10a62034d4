// SPDX-License-Identifier: Apache-2.0
#include "formula/FormulaCompiler.h"

#include "formula/FormulaLiteral.h"

#include <algorithm>
#include <string>

namespace KxGenApi
{

template <typename Number>
FormulaCompiler<Number>::FormulaCompiler(const FormulaNames& names, const FormulaDialect& dialect)
    : m_names(names)
    , m_dialect(dialect)
    , m_expressions(names.expressions.size())
{
    if (names.variables.size() > FormulaLimits::kVariables)
        throw FormulaError(std::to_string(names.variables.size()) + " variables are more than the limit of " +
                           std::to_string(FormulaLimits::kVariables));
    m_entries.reserve(names.variables.size() + names.constants.size() + names.expressions.size());
    for (std::size_t i = 0; i < names.variables.size(); ++i)
        m_entries.push_back({names.variables[i], Meaning::Variable, i});
    for (std::size_t i = 0; i < names.constants.size(); ++i)
        m_entries.push_back({names.constants[i].first, Meaning::Constant, i});
    for (std::size_t i = 0; i < names.expressions.size(); ++i)
        m_entries.push_back({names.expressions[i].first, Meaning::Expression, i});
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry& left, const Entry& right) { return left.name < right.name; });
}

template <typename Number>
auto FormulaCompiler<Number>::Compile(std::string_view text) -> Value
{
    return FormulaParser<Number>(text, false, m_dialect, *this, m_builder).Parse();
}

template <typename Number>
bool FormulaCompiler<Number>::Resolve(std::string_view name, Value& value)
{
    const auto found =
        std::lower_bound(m_entries.begin(), m_entries.end(), name,
                         [](const Entry& entry, std::string_view wanted) { return entry.name < wanted; });
    if (found == m_entries.end() || found->name != name)
        return false;
    switch (found->meaning) {
    case Meaning::Variable:
        value = Value::At({OperandSource::Variable, found->index});
        break;
    case Meaning::Constant:
        value = ConstantValue(found->index);
        break;
    case Meaning::Expression:
        value = ExpressionValue(found->index);
        break;
    }
    return true;
}

template <typename Number>
auto FormulaCompiler<Number>::ConstantValue(std::size_t index) const -> Value
{
    const auto& [name, text] = m_names.constants[index];
    const std::optional<Number> number = ParseConstant<Number>(text);
    if (!number)
        throw FormulaError("constant " + QuotedForMessage(name) +
                           " is not a number: " + QuotedForMessage(text));
    return Value::Known(*number);
}

template <typename Number>
auto FormulaCompiler<Number>::ExpressionValue(std::size_t index) -> Value
{
    Expression& expression = m_expressions[index];
    if (expression.value)
        return *expression.value;
    const auto& [name, text] = m_names.expressions[index];
    if (expression.inProgress)
        throw FormulaError("expression " + QuotedForMessage(name) + " uses itself");
    if (m_depth == FormulaLimits::kExpressionDepth)
        throw FormulaError("expressions use each other more than " +
                           std::to_string(FormulaLimits::kExpressionDepth) + " levels deep");
    expression.inProgress = true;
    ++m_depth;
    try {
        expression.value = FormulaParser<Number>(text, true, m_dialect, *this, m_builder).Parse();
    } catch (const FormulaError& error) {
        // The innermost of several is where the fault lies; the chain to it would only blur that.
        if (m_innermostTold)
            throw;
        m_innermostTold = true;
        throw FormulaError(name, error);
    }
    --m_depth;
    return *expression.value;
}

template class FormulaCompiler<std::int64_t>;
template class FormulaCompiler<double>;

} // namespace KxGenApi
