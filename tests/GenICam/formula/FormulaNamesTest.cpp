// SPDX-License-Identifier: Apache-2.0
// Variables, constants and expressions.
#include "FormulaTestSupport.h"

using namespace KxGenApi;

namespace
{

TEST(FormulaNames, AreCaseSensitiveAndMayContainDots)
{
    const Values<std::int64_t> values = {
        {"gain", 1}, {"Gain", 10}, {"Gain.Max", 100}, {"Mode.Entry.2x2", 1000}, {"_9", 5}};
    EXPECT_EQ(Int("gain+Gain+Gain.Max+Mode.Entry.2x2+_9", values), 1116);
    EXPECT_THROW(Int("GAIN", values), FormulaError);
}

TEST(FormulaNames, OfVariablesHideThoseOfFunctionsExceptInCalls)
{
    EXPECT_EQ(Flt("E+PI", {{"E", 1.0}, {"PI", 2.0}}), 3.0);
    EXPECT_DOUBLE_EQ(Flt("E()+E", {{"E", 1.0}}), 3.718281828459045);
    EXPECT_EQ(Flt("ABS(ABS)", {{"ABS", -4.0}}), 4.0);
}

TEST(FormulaNames, MeanTheFirstOfSeveral)
{
    FormulaNames names;
    names.variables = {"X", "X"};
    names.constants = {{"X", "7"}, {"C", "1"}};
    names.constants.resize(50, {"C", "2"});
    names.expressions = {{"C", "3"}};
    const std::int64_t values[] = {5, 6};
    EXPECT_EQ(IntegerFormula::Compile("X*10+C", names).Evaluate(values), 51);
}

TEST(FormulaNames, OfVariablesThatAFormulaReadsAreKnown)
{
    FormulaNames names;
    names.variables = {"A", "B", "C", "D"};
    names.expressions = {{"TWICE", "C*2"}, {"UNUSED", "D"}};
    const auto formula = FloatFormula::Compile("1 ? A : TWICE", names);
    EXPECT_TRUE(formula.Uses(0));
    EXPECT_FALSE(formula.Uses(1));
    EXPECT_TRUE(formula.Uses(2));
    EXPECT_FALSE(formula.Uses(3));
    EXPECT_FALSE(formula.Uses(1U << 20U));
    EXPECT_TRUE(FloatFormula::Compile("B", names).Uses(1)) << "a formula without any operation";
    EXPECT_TRUE(FloatFormula::Compile("1?2:D", names).Uses(3)) << "the third operand";
}

TEST(FormulaConstants, TakeSignsHexAndBlanks)
{
    const std::pair<std::string_view, std::int64_t> integers[] = {
        {"5", 5},
        {" -5 ", -5},
        {"+5", 5},
        {"0xFF", 255},
        {"-0x10", -16},
        {"4.0", 4},
        {"1e3", 1000},
        {"0x100000000", 4294967296},
        {"-9223372036854775808", kMinInteger},
        {"99999999999999999999", kMaxInteger},
    };
    for (const auto& [text, value] : integers) {
        FormulaNames names;
        names.constants = {{"C", text}};
        EXPECT_EQ(IntegerFormula::Compile("C", names).Evaluate(nullptr), value) << text;
    }
    const std::pair<std::string_view, double> floats[] = {
        {"1.5", 1.5}, {"-1.5e2", -150.0}, {"\t2\n", 2.0}, {"0xFFFFFFFF", 4294967295.0}, {"-0x10", -16.0},
    };
    for (const auto& [text, value] : floats) {
        FormulaNames names;
        names.constants = {{"C", text}};
        EXPECT_EQ(FloatFormula::Compile("C", names).Evaluate(nullptr), value) << text;
    }
}

TEST(FormulaConstants, ThatAreNoNumbersMatterOnlyWhenUsed)
{
    for (const std::string_view text : {"", "  ", "-", "abc", "1+2", "5 5", "0x", "--5", "nan", "1.5x"}) {
        FormulaNames names;
        names.constants = {{"C", text}};
        EXPECT_EQ(ErrorOf([&] { FloatFormula::Compile("1+C", names); }),
                  "constant 'C' is not a number: '" + std::string(text) + "'");
        EXPECT_NO_THROW(FloatFormula::Compile("1", names)) << text;
    }
}

TEST(FormulaExpressions, CanBeManySideBySide)
{
    std::vector<std::string> texts;
    std::string sum = "0";
    for (std::size_t i = 0; i < 2 * FormulaLimits::kExpressionDepth; ++i)
        sum += "+" + texts.emplace_back("X" + std::to_string(i));
    FormulaNames names;
    for (const std::string& name : texts)
        names.expressions.emplace_back(name, "2");
    EXPECT_EQ(IntegerFormula::Compile(sum, names).Evaluate(nullptr), 256);
}

TEST(FormulaExpressions, AreComputedOnce)
{
    FormulaNames names;
    names.variables = {"V"};
    names.expressions = {{"X", "V*V*V+1"}};
    EXPECT_EQ(IntegerFormula::Compile("X", names).StepCount(), 3U);
    EXPECT_EQ(IntegerFormula::Compile("X+X+X+X", names).StepCount(), 6U);
    EXPECT_EQ(IntegerFormula::Compile("(1<<8)-1+V", names).StepCount(), 1U)
        << "constants are computed beforehand";
}

TEST(FormulaExpressions, ThatUseThemselvesAreErrors)
{
    FormulaNames names;
    names.expressions = {{"A", "A+1"}, {"B", "C"}, {"C", "D*2"}, {"D", "B"}, {"GOOD", "1"}};
    EXPECT_EQ(ErrorOf([&] { IntegerFormula::Compile("A", names); }),
              "in expression 'A': expression 'A' uses itself");
    EXPECT_EQ(ErrorOf([&] { IntegerFormula::Compile("B", names); }),
              "in expression 'D': expression 'B' uses itself");
    EXPECT_EQ(IntegerFormula::Compile("GOOD", names).Evaluate(nullptr), 1);
}

TEST(FormulaExpressions, AreNamedInErrors)
{
    FormulaNames names;
    names.variables = {"V"};
    names.expressions = {{"OUTER", "1+INNER"}, {"INNER", "V+W"}, {"QUOTIENT", "1/V"}};
    EXPECT_EQ(ErrorOf([&] { IntegerFormula::Compile("OUTER", names); }),
              "in expression 'INNER': unknown name 'W' (character 3)");
    const std::int64_t zero = 0;
    const auto quotient = IntegerFormula::Compile("QUOTIENT+1", names);
    EXPECT_EQ(ErrorOf([&] { quotient.Evaluate(&zero); }), "division by zero")
        << "no place in the formula's own text";
}

} // namespace
