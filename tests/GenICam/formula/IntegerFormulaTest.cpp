// SPDX-License-Identifier: Apache-2.0
#include "FormulaTestSupport.h"

using namespace KxGenApi;

namespace
{

const std::string kDivisionByZero = "division by zero (character 2)";

TEST(IntegerFormula, DividesTowardsZero)
{
    const Row<std::int64_t> rows[] = {
        {"7/2", 3}, {"-7/2", -3}, {"7/-2", -3}, {"7%3", 1}, {"-7%3", -1}, {"7%-3", 1}, {"0/5", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Int(row.text), row.value) << row.text;
}

TEST(IntegerFormula, WrapsAroundInsteadOfOverflowing)
{
    const Values<std::int64_t> values = {{"MAX", kMaxInteger}, {"MIN", kMinInteger}, {"M1", -1}};
    const Row<std::int64_t> rows[] = {
        {"MAX+1", kMinInteger}, {"MIN-1", kMaxInteger},    {"MAX*2", -2},           {"MIN*M1", kMinInteger},
        {"-MIN", kMinInteger},  {"NEG(MIN)", kMinInteger}, {"MIN/M1", kMinInteger}, {"MIN%M1", 0},
        {"MAX*MAX", 1},         {"~MAX", kMinInteger},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Int(row.text, values), row.value) << row.text;
}

TEST(IntegerFormula, LiteralsSaturate)
{
    const Row<std::int64_t> rows[] = {
        {"9223372036854775807", kMaxInteger},        {"9223372036854775808", kMaxInteger},
        {"99999999999999999999999999", kMaxInteger}, {"0x7FFFFFFFFFFFFFFF", kMaxInteger},
        {"0xFFFFFFFFFFFFFFFF", kMaxInteger},         {"0xFFFFFFFF", 4294967295},
        {"-9223372036854775808", -kMaxInteger},      {"010", 10},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Int(row.text), row.value) << row.text;
}

TEST(IntegerFormula, ShiftsCountModulo64)
{
    const Row<std::int64_t> rows[] = {
        {"1<<4", 16},    {"1<<64", 1},   {"1<<-1", kMinInteger}, {"1<<63", kMinInteger}, {"256>>4", 16},
        {"256>>68", 16}, {"-16>>2", -4}, {"-1>>63", -1},         {"-1<<1", -2},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Int(row.text), row.value) << row.text;
}

TEST(IntegerFormula, PowersGoThroughDouble)
{
    const Row<std::int64_t> rows[] = {
        {"2**10", 1024},
        {"2**0", 1},
        {"0**0", 1},
        {"2**-1", 0},
        {"(-2)**3", -8},
        {"2**62", std::int64_t(1) << 62},
        {"2**63", kMinInteger},
        {"2**64", kMinInteger},
        {"10**400", kMinInteger},
        {"(-2)**63", kMinInteger},
        {"(-10)**401", kMinInteger},
        {"0**-1", kMinInteger},
        {"3**39", 4052555153018976256}, // ...267 exactly
    };
    for (const auto& row : rows)
        EXPECT_EQ(Int(row.text), row.value) << row.text;
}

TEST(IntegerFormula, ComparesAndCombinesToOneAndZero)
{
    const Values<std::int64_t> values = {{"A", 5}, {"B", -3}, {"Z", 0}};
    const Row<std::int64_t> rows[] = {
        {"A=5", 1},  {"A<>5", 0}, {"A<5", 0},    {"A<=5", 1},    {"A>B", 1},    {"A>=6", 0},
        {"A&&B", 1}, {"A&&Z", 0}, {"Z||B", 1},   {"Z||Z", 0},    {"A&4", 4},    {"A|8", 13},
        {"A^1", 4},  {"~A", -6},  {"SGN(A)", 1}, {"SGN(B)", -1}, {"sgn(Z)", 0}, {"neg(A)", -5},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Int(row.text, values), row.value) << row.text;
}

TEST(IntegerFormula, KnowsNoOtherFunctions)
{
    for (const std::string_view text : {"ABS(-1)", "ROUND(1)", "SQRT(4)", "E()", "PI()"})
        EXPECT_THROW(Int(text), FormulaError) << text;
    EXPECT_EQ(ErrorOf([] { Int("PI"); }), "unknown name 'PI' (character 1)");
}

TEST(IntegerFormula, ZeroDivisorsAreErrorsOfEachEvaluationAndNotOfTheFormula)
{
    FormulaNames names;
    names.variables = {"A", "Z"};
    for (const std::string_view text : {"A/Z", "A%Z", "1/0", "5%0"}) {
        const auto formula = IntegerFormula::Compile(text, names);
        const std::int64_t values[] = {1, 0};
        EXPECT_EQ(ErrorOf([&] { formula.Evaluate(values); }), kDivisionByZero) << text;
    }
}

TEST(IntegerFormula, EvaluatesBothBranchesAndBothSides)
{
    const Values<std::int64_t> zero = {{"Z", 0}};
    for (const std::string_view text :
         {"(Z=0)?5:(1/Z)", "(Z=1)?(1/Z):5", "(Z=0)||(1/Z)", "Z&&(1/Z)", "1?2:1/0"})
        EXPECT_THROW(Int(text, zero), FormulaError) << text;
    EXPECT_EQ(Int("(Z=0)?5:(10/Z)", {{"Z", 5}}), 2);
}

} // namespace
