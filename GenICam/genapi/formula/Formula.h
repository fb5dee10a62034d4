// SPDX-License-Identifier: Apache-2.0
// Formulas of SwissKnife and Converter nodes: compiled once, evaluated often.
#pragma once

#include "formula/FormulaDialect.h"
#include "formula/FormulaError.h"
#include "formula/FormulaProgram.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace KxGenApi
{

/// What a formula may mention besides the built-in functions. A name found in several lists means the first
/// of them.
struct FormulaNames
{
    using NamedText = std::pair<std::string_view, std::string_view>;

    std::vector<std::string_view> variables; ///< Evaluate takes their values in this order
    std::vector<NamedText> constants;        ///< name and number
    std::vector<NamedText> expressions; ///< name and sub-formula over variables, constants, other expressions
};

/// A formula over one kind of number, an immutable value: any thread may evaluate it at any time.
///
/// Precedence from tight to loose, every level left to right:
///     prefix - + ~    ** & | ^ << >>    * / %    + -    = <> < > <= >= && ||    ?:
///
/// std::int64_t: arithmetic wraps, shift counts are modulo 64, ** goes through double. Functions: SGN NEG.
/// double: bit operators work on 32-bit integers; all functions.
template <typename Number>
class Formula
{
public:
    /// Reads nothing of the names but those that the formula mentions, and keeps no reference to any text.
    /// @throws FormulaError unknown name, syntax, an expression that uses itself, a limit of FormulaLimits
    static Formula Compile(std::string_view text, const FormulaNames& names,
                           const FormulaDialect& dialect = kDialect);

    /// Neither allocates nor blocks.
    /// @param values one for each variable of the names it was compiled with; those it doesn't use are not
    /// read
    /// @throws FormulaError division or modulo by zero, bit operand outside 32 bits (double)
    Number Evaluate(const Number* values) const;

    /// Whether the formula or an expression that it mentions reads the variable.
    bool Uses(std::size_t variable) const;

    /// Operations per evaluation, after constants have been folded.
    std::size_t StepCount() const { return m_program.size() - 1; }

private:
    Formula(std::vector<Step<Number>> program, std::vector<Number> constants);

    std::vector<Step<Number>> m_program; ///< the last step ends it
    std::vector<Number> m_constants;
};

extern template class Formula<std::int64_t>;
extern template class Formula<double>;

using IntegerFormula = Formula<std::int64_t>;
using FloatFormula = Formula<double>;

} // namespace KxGenApi
