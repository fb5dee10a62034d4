// SPDX-License-Identifier: Apache-2.0
// Compiles and evaluates whatever comes, and compares the outcome with that of a direct evaluation of the
// text.
//
// Input: one byte of options, the values of four variables (8 bytes each), then lines: the formula;
// "Cname=number" and "Ename=text" for constants and expressions.

#include "DirectEvaluator.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <string_view>

using namespace KxGenApi;

namespace
{

constexpr std::size_t kVariables = 4;
constexpr std::size_t kHead = 1 + kVariables * sizeof(std::int64_t);

std::string_view TakeLine(std::string_view& rest)
{
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    return line;
}

FormulaNames NamesOf(std::string_view rest)
{
    FormulaNames names;
    names.variables = {"A", "B", "E", "Gain.Max"};
    while (!rest.empty()) {
        const std::string_view line = TakeLine(rest);
        const std::size_t equals = line.find('=');
        if (line.empty() || equals == std::string_view::npos)
            continue;
        auto& list = line.front() == 'C' ? names.constants : names.expressions;
        list.emplace_back(line.substr(1, equals - 1), line.substr(equals + 1));
    }
    return names;
}

template <typename Number>
Outcome<Number> CompiledOutcome(std::string_view text, const FormulaNames& names, const Number* values,
                                const FormulaDialect& dialect)
{
    using Kind = typename Outcome<Number>::Kind;
    std::optional<Formula<Number>> formula;
    try {
        formula = Formula<Number>::Compile(text, names, dialect);
    } catch (const FormulaError& error) {
        if (std::strlen(error.what()) > 400)
            std::terminate(); // messages stay short whatever the text
        return {Kind::BadText, Number()};
    }
    try {
        return {Kind::Value, formula->Evaluate(values)};
    } catch (const FormulaError&) {
        return {Kind::BadValues, Number()};
    }
}

template <typename Number>
bool Same(Number left, Number right)
{
    return left == right || (std::isnan(static_cast<double>(left)) && std::isnan(static_cast<double>(right)));
}

template <typename Number>
void Check(std::string_view text, const FormulaNames& names, const Number* values,
           const FormulaDialect& dialect)
{
    using Kind = typename Outcome<Number>::Kind;
    const Outcome<Number> compiled = CompiledOutcome(text, names, values, dialect);
    const Outcome<Number> direct = DirectEvaluator<Number>(names, values, dialect).Evaluate(text);
    if (direct.kind == Kind::BeyondLimit)
        return;
    if (compiled.kind == direct.kind && (compiled.kind != Kind::Value || Same(compiled.value, direct.value)))
        return;
    std::fprintf(stderr, "outcome %d value %.17g, directly %d value %.17g\n", static_cast<int>(compiled.kind),
                 static_cast<double>(compiled.value), static_cast<int>(direct.kind),
                 static_cast<double>(direct.value));
    std::terminate();
}

template <typename Number>
void CheckBytes(const std::uint8_t* data, std::size_t size)
{
    const FormulaDialect dialect{(data[0] & 2U) != 0, (data[0] & 8U) != 0};
    Number values[kVariables];
    static_assert(sizeof values == kHead - 1);
    std::memcpy(values, data + 1, sizeof values);
    std::string_view rest(reinterpret_cast<const char*>(data + kHead), size - kHead);
    const std::string_view text = TakeLine(rest);
    Check<Number>(text, NamesOf(rest), values, dialect);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < kHead)
        return 0;
    if (data[0] & 1U)
        CheckBytes<double>(data, size);
    else
        CheckBytes<std::int64_t>(data, size);
    return 0;
}
