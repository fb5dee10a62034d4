// SPDX-License-Identifier: Apache-2.0
#include "formula/FormulaSteps.h"

#include "formula/FormulaArithmetic.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace KxGenApi
{

namespace
{

template <typename Number>
Number Load(Operand operand, const Number* const* sources)
{
    return sources[static_cast<std::size_t>(operand.Source())][operand.Index()];
}

// Optimised builds turn the last call into a jump. Others stack one small frame per step, which the limit of
// steps keeps below a megabyte.
template <typename Number, Opcode opcode>
Number RunStep(const Step<Number>* self, const Number* const* sources, Number* result)
{
    const Number first = Load(self->first, sources);
    const Number second = Load(self->second, sources);
    if constexpr (opcode == Opcode::Select)
        *result = first != Number() ? second : Load(self->third, sources);
    else
        *result = Arithmetic<Number>::Apply(opcode, first, second, self->offset);
    return self[1].run(self + 1, sources, result + 1);
}

template <typename Number>
Number RunEnd(const Step<Number>* self, const Number* const* sources, Number*)
{
    return Load(self->first, sources);
}

template <typename Number, std::size_t... opcodes>
typename Step<Number>::Run Pick(Opcode opcode, std::index_sequence<opcodes...>)
{
    static constexpr typename Step<Number>::Run kRuns[] = {&RunStep<Number, static_cast<Opcode>(opcodes)>...};
    return kRuns[static_cast<std::size_t>(opcode)];
}

} // namespace

template <typename Number>
typename Step<Number>::Run RunOf(Opcode opcode)
{
    constexpr std::size_t kOpcodes = static_cast<std::size_t>(kLastOpcode) + 1;
    return Pick<Number>(opcode, std::make_index_sequence<kOpcodes>());
}

template <typename Number>
typename Step<Number>::Run RunOfEnd()
{
    return &RunEnd<Number>;
}

template Step<std::int64_t>::Run RunOf<std::int64_t>(Opcode);
template Step<double>::Run RunOf<double>(Opcode);
template Step<std::int64_t>::Run RunOfEnd<std::int64_t>();
template Step<double>::Run RunOfEnd<double>();

} // namespace KxGenApi
