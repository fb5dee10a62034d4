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

std::size_t PlaceOf(std::size_t instructionOffset)
{
    return instructionOffset == Instruction::kNoOffset ? FormulaError::kNowhere : instructionOffset;
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
Formula<Number>::Formula(std::vector<Instruction> program, std::vector<Number> constants, Operand result)
    : m_program(std::move(program))
    , m_constants(std::move(constants))
    , m_result(result)
{}

template <typename Number>
Formula<Number> Formula<Number>::Compile(std::string_view text, const FormulaNames& names,
                                         const FormulaDialect& dialect)
{
    FormulaCompiler<Number> compiler(names, dialect);
    const FormulaValue<Number> value = compiler.Compile(text);
    FormulaBuilder<Number>& builder = compiler.Builder();
    const Operand result = builder.PlaceOf(value);
    return Formula(builder.TakeProgram(), builder.TakeConstants(), result);
}

template <typename Number>
Number Formula<Number>::Evaluate(const Number* values) const
{
    // Left uninitialised: an instruction reads only results of earlier ones.
    Number results[FormulaLimits::kInstructions];
    const Number* const sources[] = {values, m_constants.data(), results};
    const auto load = [&sources](Operand operand) {
        return sources[static_cast<std::size_t>(operand.Source())][operand.Index()];
    };

    Number* next = results;
    for (const Instruction& instruction : m_program) {
        const Number first = load(instruction.first);
        const Number second = load(instruction.second);
        *next++ = instruction.opcode == Opcode::Select
                      ? (first != Number() ? second : load(instruction.third))
                      : Arithmetic<Number>::Apply(instruction.opcode, first, second, instruction.offset);
    }
    return load(m_result);
}

template <typename Number>
bool Formula<Number>::Uses(std::size_t variable) const
{
    if (variable >= FormulaLimits::kVariables)
        return false;
    const Operand place(OperandSource::Variable, variable);
    return m_result == place ||
           std::any_of(m_program.begin(), m_program.end(), [place](const Instruction& i) {
               return i.first == place || i.second == place || i.third == place;
           });
}

template class Formula<std::int64_t>;
template class Formula<double>;

} // namespace KxGenApi
