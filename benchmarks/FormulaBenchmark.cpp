// SPDX-License-Identifier: Apache-2.0
// Evaluating a compiled formula of ten operators, beside the peer's evaluator.

#include "formula/Formula.h"

#include <arv.h>
#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>

namespace
{

// Ten operators, none of which can be folded away: every operand is a variable.
constexpr char kFloatFormula[] = "(A + B) * C - D / (A + C) + (B - D) * (A * B + C)";
constexpr char kIntegerFormula[] = "((A + B) * C - (D >> B)) & (A * D + (C << B) | D - A)";

constexpr const char* kNames[] = {"A", "B", "C", "D"};

struct Unref
{
    void operator()(ArvEvaluator* evaluator) const { g_object_unref(evaluator); }
};

using Evaluator = std::unique_ptr<ArvEvaluator, Unref>;

KxGenApi::FormulaNames Names()
{
    KxGenApi::FormulaNames names;
    names.variables.assign(std::begin(kNames), std::end(kNames));
    return names;
}

void Float(benchmark::State& state)
{
    const auto formula = KxGenApi::FloatFormula::Compile(kFloatFormula, Names());
    double values[] = {1.5, 2.5, 3.5, 4.5};
    if (formula.Evaluate(values) != (1.5 + 2.5) * 3.5 - 4.5 / (1.5 + 3.5) + (2.5 - 4.5) * (1.5 * 2.5 + 3.5))
        throw std::runtime_error("wrong result");
    for (auto _ : state) {
        benchmark::DoNotOptimize(values);
        benchmark::DoNotOptimize(formula.Evaluate(values));
    }
}
BENCHMARK(Float)->Name("Formula/float");

void FloatPeer(benchmark::State& state)
{
    const Evaluator evaluator(arv_evaluator_new(kFloatFormula));
    double value = 1.5;
    for (const char* const name : kNames)
        arv_evaluator_set_double_variable(evaluator.get(), name, value++);
    for (auto _ : state)
        benchmark::DoNotOptimize(arv_evaluator_evaluate_as_double(evaluator.get(), nullptr));
}
BENCHMARK(FloatPeer)->Name("Formula/float/peer");

void Integer(benchmark::State& state)
{
    const auto formula = KxGenApi::IntegerFormula::Compile(kIntegerFormula, Names());
    int64_t values[] = {5, 2, 7, 90};
    // Bit operators bind tighter than the others here.
    if (formula.Evaluate(values) != (((5 + 2) * 7 - (90 >> 2)) & (5 * 90 + ((7 << 2) | 90) - 5)))
        throw std::runtime_error("wrong result");
    for (auto _ : state) {
        benchmark::DoNotOptimize(values);
        benchmark::DoNotOptimize(formula.Evaluate(values));
    }
}
BENCHMARK(Integer)->Name("Formula/integer");

void IntegerPeer(benchmark::State& state)
{
    const Evaluator evaluator(arv_evaluator_new(kIntegerFormula));
    const int64_t values[] = {5, 2, 7, 90};
    for (size_t i = 0; i < std::size(kNames); ++i)
        arv_evaluator_set_int64_variable(evaluator.get(), kNames[i], values[i]);
    for (auto _ : state)
        benchmark::DoNotOptimize(arv_evaluator_evaluate_as_int64(evaluator.get(), nullptr));
}
BENCHMARK(IntegerPeer)->Name("Formula/integer/peer");

} // namespace
