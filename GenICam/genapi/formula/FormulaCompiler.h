// SPDX-License-Identifier: Apache-2.0
// Ties formula, names and expressions together.
#pragma once

#include "formula/Formula.h"
#include "formula/FormulaBuilder.h"
#include "formula/FormulaParser.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace KxGenApi
{

/// Compiles one formula. An expression is compiled when a text first mentions it, and its value shared from
/// then on; one that nobody mentions may contain anything.
template <typename Number>
class FormulaCompiler final : private NameResolver<Number>
{
public:
    using Value = FormulaValue<Number>;

    /// The names and the dialect have to outlive the compiler.
    FormulaCompiler(const FormulaNames& names, const FormulaDialect& dialect);

    /// @throws FormulaError
    Value Compile(std::string_view text);

    FormulaBuilder<Number>& Builder() { return m_builder; }

private:
    enum class Meaning : std::uint8_t
    {
        Variable,
        Constant,
        Expression
    };

    struct Entry
    {
        std::string_view name;
        Meaning meaning;
        std::size_t index; ///< in its list of names
    };

    struct Expression
    {
        std::optional<Value> value; ///< once it has been compiled
        bool inProgress = false;
    };

    bool Resolve(std::string_view name, Value& value) override;
    Value ConstantValue(std::size_t index) const;
    Value ExpressionValue(std::size_t index);

    const FormulaNames& m_names;
    const FormulaDialect& m_dialect;
    std::vector<Entry> m_entries; ///< by name, in order of precedence
    std::vector<Expression> m_expressions;
    std::size_t m_depth = 0;
    bool m_innermostTold = false; ///< whether the error on its way out names its expression
    FormulaBuilder<Number> m_builder;
};

extern template class FormulaCompiler<std::int64_t>;
extern template class FormulaCompiler<double>;

} // namespace KxGenApi
