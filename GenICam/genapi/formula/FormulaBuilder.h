// SPDX-License-Identifier: Apache-2.0
// Puts the steps of a formula together and computes what is constant at once.
#pragma once

#include "formula/FormulaArithmetic.h"
#include "formula/FormulaError.h"
#include "formula/FormulaProgram.h"
#include "formula/FormulaSteps.h"

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
                // "1/0" is an error of each evaluation and none of the formula: the step stays and
                // raises it.
            }
        }
        const Operand left = PlaceOf(first);
        const Operand right = &first == &second ? left : PlaceOf(second);
        return Append({RunOf<Number>(opcode), left, right, left, offset});
    }

    Value Select(const Value& condition, const Value& whenTrue, const Value& whenFalse)
    {
        if (condition.IsKnown() && whenTrue.IsKnown() && whenFalse.IsKnown())
            return condition.Value() != Number() ? whenTrue : whenFalse;
        return Append({RunOf<Number>(Opcode::Select), PlaceOf(condition), PlaceOf(whenTrue),
                       PlaceOf(whenFalse), Step<Number>::kNoOffset});
    }

    /// Ends the program with that value as its result.
    void End(const Value& value)
    {
        const Operand place = PlaceOf(value);
        m_program.push_back({RunOfEnd<Number>(), place, place, place, Step<Number>::kNoOffset});
    }

    /// Copies without spare capacity: compiled formulas stay for as long as their node map.
    std::vector<Step<Number>> Program() const { return {m_program.begin(), m_program.end()}; }
    std::vector<Number> Constants() const { return {m_constants.begin(), m_constants.end()}; }

private:
    Operand PlaceOf(const Value& value)
    {
        if (!value.IsKnown())
            return value.Place();
        m_constants.push_back(value.Value());
        return {OperandSource::Constant, m_constants.size() - 1};
    }

    Value Append(const Step<Number>& step)
    {
        if (m_program.size() == FormulaLimits::kSteps)
            throw FormulaError("more than " + std::to_string(FormulaLimits::kSteps) + " operations");
        m_program.push_back(step);
        return Value::At({OperandSource::Result, m_program.size() - 1});
    }

    std::vector<Step<Number>> m_program;
    std::vector<Number> m_constants;
};

} // namespace KxGenApi
