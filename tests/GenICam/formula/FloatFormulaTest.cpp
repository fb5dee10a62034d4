// SPDX-License-Identifier: Apache-2.0
#include "FormulaTestSupport.h"

#include <cmath>

using namespace KxGenApi;
using testing::HasSubstr;

namespace
{

TEST(FloatFormula, ReadsDecimals)
{
    const Row<double> rows[] = {
        {"1.5", 1.5},
        {"5.", 5.0},
        {"1e3", 1000.0},
        {"1E+3", 1000.0},
        {"25e-1", 2.5},
        {"5.e1", 50.0},
        {"0.1", 0.1},
        {"010", 10.0},
        {"1e400", kInfinity},
        {"1e-400", 0.0},
        {"1.797693134862316e308", kInfinity},
        {"0.0e999999999999999999999", 0.0},
        {"12345678901234567890", 12345678901234567890.0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Flt(row.text), row.value) << row.text;
    EXPECT_EQ(Flt("1" + std::string(400, '0')), kInfinity);
    EXPECT_EQ(Flt("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(Flt("0." + std::string(400, '0') + "1e401"), 1.0);
}

TEST(FloatFormula, TakesHexLiteralsAs32BitsWithSign)
{
    const Row<double> rows[] = {
        {"0x10", 16.0},       {"0x7FFFFFFF", 2147483647.0}, {"0x80000000", -2147483648.0},
        {"0xFFFFFFFF", -1.0}, {"0x1FFFFFFFE", -2.0},        {"0x100000000", 0.0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Flt(row.text), row.value) << row.text;
}

TEST(FloatFormula, ComputesWithIeeeArithmetic)
{
    const Values<double> values = {{"X", 2.5}, {"N", -2.5}, {"Z", 0.0}};
    const Row<double> rows[] = {
        {"7/2", 3.5},           {"2**-1", 0.5},   {"0**0", 1.0},     {"2**0.5", std::sqrt(2.0)},
        {"2**2000", kInfinity}, {"7.5%2", 1.5},   {"-7.5%2", -1.5},  {"7.5%-2", 1.5},
        {"X+N", 0.0},           {"X*N", -6.25},   {"X=2.5", 1.0},    {"X<>2.5", 0.0},
        {"X<N", 0.0},           {"X>=2.5", 1.0},  {"0.5&&0.1", 1.0}, {"Z||0.1", 1.0},
        {"Z&&1", 0.0},          {"0.5?1:2", 1.0}, {"Z?1:2", 2.0},    {"1e308*10", kInfinity},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Flt(row.text, values), row.value) << row.text;
}

TEST(FloatFormula, HasTheFunctionsInAnyCase)
{
    const Values<double> values = {{"X", 2.5}, {"N", -2.5}};
    const Row<double> rows[] = {
        {"SGN(N)", -1.0},        {"Sgn(X)", 1.0},     {"SGN(0)", 0.0},    {"NEG(X)", -2.5},
        {"ABS(N)", 2.5},         {"SQRT(16)", 4.0},   {"EXP(0)", 1.0},    {"LN(1)", 0.0},
        {"LG(1000)", 3.0},       {"TRUNC(N)", -2.0},  {"FLOOR(N)", -3.0}, {"CEIL(N)", -2.0},
        {"floor(X)", 2.0},       {"ceil(X)", 3.0},    {"trunc(X)", 2.0},  {"ROUND(X)", 3.0},
        {"ROUND(N)", -3.0},      {"round(2.4)", 2.0}, {"ABS (N)", 2.5},   {"SQRT(ABS(-9))+1", 4.0},
        {"ROUND(X?1.2:3)", 1.0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Flt(row.text, values), row.value) << row.text;

    const Row<double> transcendental[] = {
        {"SIN(1)", 0.8414709848078965},    {"COS(1)", 0.5403023058681398},    {"TAN(1)", 1.5574077246549023},
        {"ASIN(0.5)", 0.5235987755982989}, {"ACOS(0.5)", 1.0471975511965979}, {"ATAN(1)", 0.7853981633974483},
        {"EXP(1)", 2.718281828459045},     {"LN(10)", 2.302585092994046},     {"LG(2)", 0.3010299956639812},
        {"E", 2.718281828459045},          {"e()", 2.718281828459045},        {"2*PI", 6.283185307179586},
        {"Pi ( )", 3.141592653589793},
    };
    for (const auto& row : transcendental)
        EXPECT_DOUBLE_EQ(Flt(row.text), row.value) << row.text;
    for (const std::string_view text :
         {"LOG(1)", "MIN(1,2)", "POW(1,2)", "ATAN2(1,2)", "PI(1)", "ABS(1,2)", "ABS"})
        EXPECT_THROW(Flt(text), FormulaError) << text;
}

TEST(FloatFormula, RoundsToDigitsHalvesAwayFromZero)
{
    const Row<double> rows[] = {
        {"ROUND(2.25,1)", 2.3},  {"ROUND(-2.25,1)", -2.3},   {"ROUND(1234.5678,2)", 1234.57},
        {"ROUND(7.5,0)", 8.0},   {"ROUND(1250,-2)", 1300.0}, {"ROUND(-1250,-2)", -1300.0},
        {"ROUND(1.5,400)", 1.5}, {"ROUND(1e300,20)", 1e300}, {"ROUND(1.5,-400)", 0.0},
    };
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(Flt(row.text), row.value) << row.text;
}

TEST(FloatFormula, OutsideOfAFunctionsDomainIsNoError)
{
    EXPECT_TRUE(std::isnan(Flt("SQRT(-1)")));
    EXPECT_TRUE(std::isnan(Flt("ACOS(2)")));
    EXPECT_EQ(Flt("LN(0)"), -kInfinity);
    EXPECT_EQ(Flt("0**-1"), kInfinity);
}

TEST(FloatFormula, BitOperatorsTruncateTo32Bits)
{
    const Row<double> rows[] = {
        {"6.9&3.9", 2.0},
        {"-2.9|0", -2.0},
        {"5^1", 4.0},
        {"~0", -1.0},
        {"~5.7", -6.0},
        {"1<<31", -2147483648.0},
        {"1<<32", 1.0},
        {"1<<-1", -2147483648.0},
        {"-16>>2", -4.0},
        {"256>>36", 16.0},
        {"2147483647.5&-1", 2147483647.0},
        {"-2147483648.5|0", -2147483648.0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Flt(row.text), row.value) << row.text;
}

TEST(FloatFormula, BitOperandsOutside32BitsAreErrorsOfTheEvaluation)
{
    FormulaNames names;
    names.variables = {"X"};
    for (const std::string_view text : {"X&1", "1|X", "1^X", "X<<1", "1>>X", "~X"}) {
        const auto formula = FloatFormula::Compile(text, names);
        for (const double bad : {2147483648.0, -2147483649.0, 1e300, kInfinity, std::nan("")})
            EXPECT_THAT(ErrorOf([&] { formula.Evaluate(&bad); }), HasSubstr("32-bit range"))
                << text << ' ' << bad;
        const double good = 5.0;
        EXPECT_NO_THROW(formula.Evaluate(&good)) << text;
    }
    EXPECT_EQ(ErrorOf([] { Flt("1+2147483648&1"); }),
              "bit operand 2147483648 is outside the 32-bit range -2147483648 to 2147483647 (character 13)");
}

TEST(FloatFormula, ZeroDivisorsAreErrorsInTheBranchNotTakenToo)
{
    for (const std::string_view text : {"1/Z", "1%Z", "1/(-Z)", "(Z=0)?5:(1/Z)", "(Z=0)||(1/Z)", "Z/Z"})
        EXPECT_THAT(ErrorOf([&] { Flt(text, {{"Z", 0.0}}); }), HasSubstr("division by zero")) << text;
    EXPECT_EQ(Flt("(Z=0)?5:(1/Z)", {{"Z", 4.0}}), 0.25);
}

} // namespace
