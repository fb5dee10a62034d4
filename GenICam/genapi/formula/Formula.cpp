// SPDX-License-Identifier: Apache-2.0
#include "formula/Formula.h"

#include "formula/FormulaArithmetic.h"
#include "formula/FormulaCompiler.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace KxGenApi
{

namespace
{

std::size_t PlaceOf(std::size_t stepOffset)
{
    return stepOffset == Step<double>::kNoOffset ? FormulaError::kNowhere : stepOffset;
}

} // namespace

void ThrowDivisionByZero(std::size_t offset) { throw FormulaError("division by zero", PlaceOf(offset)); }

void ThrowBitOperandOutOfRange(double value, std::size_t offset)
{
    char text[128];
    std::snprintf(text, sizeof text,
                  "bit operand %.17g is outside the 32-bit range -2147483648 to 2147483647", value);
    throw FormulaError(text, PlaceOf(offset));
}

template <typename Number>
Formula<Number>::Formula(std::vector<Step<Number>> program, std::vector<Number> constants)
    : m_program(std::move(program))
    , m_constants(std::move(constants))
{}

template <typename Number>
Formula<Number> Formula<Number>::Compile(std::string_view text, const FormulaNames& names,
                                         const FormulaDialect& dialect)
{
    FormulaCompiler<Number> compiler(names, dialect);
    const FormulaValue<Number> value = compiler.Compile(text);
    FormulaBuilder<Number>& builder = compiler.Builder();
    builder.End(value);
    return Formula(builder.Program(), builder.Constants());
}

template <typename Number>
Number Formula<Number>::Evaluate(const Number* values) const
{
    // Left uninitialised: a step reads only results of earlier ones.
    Number results[FormulaLimits::kSteps];
    const Number* const sources[] = {values, m_constants.data(), results};
    return m_program.front().run(m_program.data(), sources, results);
}

template <typename Number>
bool Formula<Number>::Uses(std::size_t variable) const
{
    if (variable >= FormulaLimits::kVariables)
        return false;
    const Operand place(OperandSource::Variable, variable);
    return std::any_of(m_program.begin(), m_program.end(), [place](const Step<Number>& step) {
        return step.first == place || step.second == place || step.third == place;
    });
}

template class Formula<std::int64_t>;
template class Formula<double>;

} // namespace KxGenApi
