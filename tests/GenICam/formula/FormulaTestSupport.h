// SPDX-License-Identifier: Apache-2.0
// Formulas with their variables in one line.
#pragma once

#include "formula/Formula.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KxGenApi
{

inline constexpr std::int64_t kMaxInteger = std::numeric_limits<std::int64_t>::max();
inline constexpr std::int64_t kMinInteger = std::numeric_limits<std::int64_t>::min();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

template <typename Number>
using Values = std::vector<std::pair<std::string_view, Number>>;

template <typename Number>
Number Evaluate(std::string_view text, const Values<Number>& values = {},
                const FormulaDialect& dialect = kDialect)
{
    FormulaNames names;
    std::vector<Number> numbers;
    for (const auto& [name, number] : values) {
        names.variables.push_back(name);
        numbers.push_back(number);
    }
    return Formula<Number>::Compile(text, names, dialect).Evaluate(numbers.data());
}

inline std::int64_t Int(std::string_view text, const Values<std::int64_t>& values = {})
{
    return Evaluate<std::int64_t>(text, values);
}

inline double Flt(std::string_view text, const Values<double>& values = {})
{
    return Evaluate<double>(text, values);
}

/// What the error says, "no error" when there is none.
template <typename Function>
std::string ErrorOf(const Function& function)
{
    try {
        function();
    } catch (const FormulaError& error) {
        return error.what();
    }
    return "no error";
}

template <typename Number>
struct Row
{
    std::string_view text;
    Number value;
};

} // namespace KxGenApi
