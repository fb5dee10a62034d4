// SPDX-License-Identifier: Apache-2.0
// Hostile formulas end in an error that tells the limit, and those within the limits work.
#include "FormulaTestSupport.h"

using namespace KxGenApi;

namespace
{

std::string Repeated(std::string_view text, std::size_t times)
{
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

TEST(FormulaLimits, BoundTheText)
{
    const std::size_t limit = FormulaLimits::kTextLength;
    EXPECT_EQ(Int(std::string(limit - 1, ' ') + "7"), 7);
    EXPECT_EQ(ErrorOf([&] { Int(std::string(limit, ' ') + "7"); }),
              "text of 65001 characters is longer than the limit of 65000");
}

TEST(FormulaLimits, LetBracketsAndPrefixesNestAsDeepAsTheTextIsLong)
{
    const std::size_t depth = FormulaLimits::kTextLength / 2 - 1;
    EXPECT_EQ(Int(std::string(depth, '(') + "7" + std::string(depth, ')')), 7);
    EXPECT_THROW(Int(std::string(depth, '(')), FormulaError);
    EXPECT_THROW(Flt(std::string(depth, ')')), FormulaError);
    EXPECT_EQ(Int(std::string(60'000, '~') + "7"), 7);
    EXPECT_EQ(Flt(Repeated("ABS(", 10'000) + "-7" + std::string(10'000, ')')), 7.0);
}

TEST(FormulaLimits, AllowAConditionForEachOfManyEntries)
{
    std::string text;
    for (int i = 0; i < 1'000; ++i)
        text += "(V=" + std::to_string(i) + ")?" + std::to_string(i * 3) + ":(";
    text += "-1" + std::string(1'000, ')');
    EXPECT_EQ(Int(text, {{"V", 0}}), 0);
    EXPECT_EQ(Int(text, {{"V", 999}}), 2'997);
    EXPECT_EQ(Int(text, {{"V", 1'000}}), -1);
}

TEST(FormulaLimits, BoundTheProgram)
{
    const std::size_t limit = FormulaLimits::kSteps;
    const Values<std::int64_t> one = {{"V", 1}};
    EXPECT_EQ(Int("V" + Repeated("+V", limit), one), static_cast<std::int64_t>(limit) + 1);
    EXPECT_EQ(Int("V" + Repeated("+1", limit), one), static_cast<std::int64_t>(limit) + 1);
    EXPECT_EQ(ErrorOf([&] { Int("V" + Repeated("+V", limit + 1), one); }), "more than 4096 operations");
    EXPECT_EQ(Int("V" + Repeated("*1<<1-1", 20), one), Int("V" + Repeated("*2-1", 20), one));
}

TEST(FormulaLimits, HoldForAllExpressionsTogether)
{
    FormulaNames names;
    names.variables = {"V"};
    const std::string half = "V" + Repeated("+V", FormulaLimits::kSteps / 2);
    names.expressions = {{"A", half}, {"B", half}};
    const std::int64_t one = 1;
    EXPECT_EQ(IntegerFormula::Compile("B", names).Evaluate(&one), 2'049);
    EXPECT_EQ(ErrorOf([&] { IntegerFormula::Compile("A+B", names); }), "more than 4096 operations");
}

TEST(FormulaLimits, KeepExpressionsThatDoubleEachOtherSmall)
{
    // Textual replacement would make 2^50 operations of this.
    std::vector<std::string> texts(51);
    FormulaNames names;
    names.variables = {"X0"};
    for (std::size_t i = 1; i < texts.size(); ++i)
        texts[i] = "X" + std::to_string(i);
    std::vector<std::string> sums(texts.size());
    for (std::size_t i = 1; i < texts.size(); ++i) {
        const std::string previous = "X" + std::to_string(i - 1);
        sums[i] = previous + "+" + previous;
        names.expressions.emplace_back(texts[i], sums[i]);
    }
    const auto formula = IntegerFormula::Compile("X50", names);
    const std::int64_t one = 1;
    EXPECT_EQ(formula.Evaluate(&one), std::int64_t(1) << 50);
    EXPECT_EQ(formula.StepCount(), 50U);
}

TEST(FormulaLimits, BoundTheDepthOfExpressions)
{
    const auto chain = [](std::size_t length) {
        std::vector<std::string> texts;
        texts.reserve(2 * length);
        FormulaNames names;
        for (std::size_t i = 0; i < length; ++i) {
            const std::string& name = texts.emplace_back("X" + std::to_string(i));
            const std::string& text = texts.emplace_back(i == 0 ? "42" : "X" + std::to_string(i - 1));
            names.expressions.emplace_back(name, text);
        }
        return IntegerFormula::Compile("X" + std::to_string(length - 1), names).Evaluate(nullptr);
    };
    EXPECT_EQ(chain(FormulaLimits::kExpressionDepth), 42);
    EXPECT_EQ(ErrorOf([&] { chain(FormulaLimits::kExpressionDepth + 1); }),
              "in expression 'X1': expressions use each other more than 64 levels deep");
    EXPECT_THROW(chain(10'000), FormulaError);
}

TEST(FormulaLimits, BoundTheVariables)
{
    FormulaNames names;
    names.variables.assign(FormulaLimits::kVariables - 1, "V");
    names.variables.push_back("LAST");
    std::vector<double> values(names.variables.size(), 1.0);
    values.back() = 2.5;
    EXPECT_EQ(FloatFormula::Compile("LAST*2", names).Evaluate(values.data()), 5.0);
    names.variables.push_back("MORE");
    EXPECT_EQ(ErrorOf([&] { FloatFormula::Compile("1", names); }),
              "16385 variables are more than the limit of 16384");
}

} // namespace
