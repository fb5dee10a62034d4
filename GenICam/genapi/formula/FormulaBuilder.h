// SPDX-License-Identifier: Apache-2.0
// Puts the instructions of a formula together and computes what is constant at once.
#pragma once

#include "formula/FormulaArithmetic.h"
#include "formula/FormulaError.h"
#include "formula/FormulaProgram.h"

#include <string>
#include <utility>
#include <vector>

namespace KxGenApi
{

/// A part of a formula: a number already known, or the place where evaluation finds it.
template <typename Number>
class FormulaValue
{
public:
    static FormulaValue Known(Number number) { return {true, number, {OperandSource::Constant, 0}}; }
    static FormulaValue At(Operand place) { return {false, Number(), place}; }

    bool IsKnown() const { return m_known; }
    Number Value() const { return m_number; }
    Operand Place() const { return m_place; } ///< of what isn't known

private:
    FormulaValue(bool known, Number number, Operand place)
        : m_known(known)
        , m_number(number)
        , m_place(place)
    {}

    bool m_known;
    Number m_number;
    Operand m_place;
};

template <typename Number>
class FormulaBuilder
{
public:
    using Value = FormulaValue<Number>;

    /// Operations on one number take it twice.
    Value Operation(Opcode opcode, const Value& first, const Value& second, std::uint16_t offset)
    {
        if (first.IsKnown() && second.IsKnown()) {
            try {
                return Value::Known(Arithmetic<Number>::Apply(opcode, first.Value(), second.Value(), offset));
            } catch (const FormulaError&) {
                // "1/0" is an error of each evaluation and none of the formula: the instruction stays and
                // raises it.
            }
        }
        const Operand left = PlaceOf(first);
        return Append({opcode, left, &first == &second ? left : PlaceOf(second), left, offset});
    }

    Value Select(const Value& condition, const Value& whenTrue, const Value& whenFalse)
    {
        if (condition.IsKnown() && whenTrue.IsKnown() && whenFalse.IsKnown())
            return condition.Value() != Number() ? whenTrue : whenFalse;
        return Append({Opcode::Select, PlaceOf(condition), PlaceOf(whenTrue), PlaceOf(whenFalse),
                       Instruction::kNoOffset});
    }

    /// The place where the finished program finds the value.
    Operand PlaceOf(const Value& value)
    {
        if (!value.IsKnown())
            return value.Place();
        m_constants.push_back(value.Value());
        return {OperandSource::Constant, m_constants.size() - 1};
    }

    std::vector<Instruction> TakeProgram() { return {m_program.begin(), m_program.end()}; }
    std::vector<Number> TakeConstants() { return {m_constants.begin(), m_constants.end()}; }

private:
    Value Append(const Instruction& instruction)
    {
        if (m_program.size() == FormulaLimits::kInstructions)
            throw FormulaError("more than " + std::to_string(FormulaLimits::kInstructions) + " operations");
        m_program.push_back(instruction);
        return Value::At({OperandSource::Result, m_program.size() - 1});
    }

    std::vector<Instruction> m_program;
    std::vector<Number> m_constants;
};

} // namespace KxGenApi
