// SPDX-License-Identifier: Apache-2.0
// Precedence, grouping and what is no formula: the same for both kinds of numbers.
#include "FormulaTestSupport.h"

using namespace KxGenApi;
using testing::HasSubstr;

namespace
{

template <typename Number>
std::string CompileError(std::string_view text, const FormulaDialect& dialect = kDialect)
{
    FormulaNames names;
    names.variables = {"A", "B"};
    return ErrorOf([&] { Formula<Number>::Compile(text, names, dialect); });
}

TEST(FormulaSyntax, OperatorsBindInTheOrderThatDescriptionFilesRelyOn)
{
    // clang-format off
    const Row<std::int64_t> rows[] = {
        {"-2**2", 4}, {"-(2**2)", -4}, {"~1**2", 4}, {"-~-1", 0}, {"+7", 7},
        // powers, shifts and the operators on bits are one level, tighter than products
        {"2**3**2", 64}, {"1|2&4", 0}, {"6^3|8&12", 12}, {"2<<1**2", 16}, {"1+2<<3", 17}, {"16/2<<1", 4},
        {"12/6&4", 3}, {"12/2|4", 2}, {"12/2^4", 2}, {"64/8>>2", 32}, {"12/2**2", 3}, {"8%3&6", 0},
        {"2+3*4", 14}, {"20-3-2", 15}, {"100/10/5", 2}, {"17%10*2", 14}, {"1+1=2", 1},
        // comparisons and logical operators are one level, so comparisons next to && need brackets
        {"1||1&&0", 0}, {"3>2>1", 0}, {"0=0=0", 0}, {"5>0&&-1<0", 0}, {"(5>0)&&(-1<0)", 1},
        {"(1+2)*(3+4)", 21}, {"((((5))))", 5},
        {"3*-2", -6}, {"6/+2", 3}, {"5=-5", 0}, {"1-(-1)", 2}, {"-(-2)", 2},
        {" \t1\r\n+ 2 ", 3}, {"010", 10}, {"0x1F+0xff", 286},
    };
    // clang-format on
    for (const auto& row : rows) {
        EXPECT_EQ(Int(row.text), row.value) << row.text;
        EXPECT_EQ(Flt(row.text), static_cast<double>(row.value)) << row.text;
    }
    EXPECT_EQ(Int("A=7||B=7", {{"A", 7}, {"B", -3}}), 0);
}

TEST(FormulaSyntax, ConditionsTakeWholeComparisonsAndGroupToTheLeft)
{
    // clang-format off
    const Row<std::int64_t> rows[] = {
        {"1=2?3:4+5", 9}, {"0?2:3+1", 4}, {"1?2:3+1", 2}, {"1?2+3:4", 5}, {"2>1?10:20", 10},
        {"1+0?2:3", 2}, {"1?0:1?2:3", 3}, {"0?0:0?2:3", 3}, {"0?0:1?2:3", 2}, {"1?(1?2:3):4", 2},
        {"0?1:(0?2:3)", 3}, {"(1?2:3)*4", 8}, {"-5?1:2", 1},
    };
    // clang-format on
    for (const auto& row : rows) {
        EXPECT_EQ(Int(row.text), row.value) << row.text;
        EXPECT_EQ(Flt(row.text), static_cast<double>(row.value)) << row.text;
    }
    const std::string_view chain = "A>5?1:A<3?2:3"; // (A>5 ? 1 : A<3) ? 2 : 3
    EXPECT_EQ(Int(chain, {{"A", 7}}), 2);
    EXPECT_EQ(Int(chain, {{"A", 1}}), 2);
    EXPECT_EQ(Int(chain, {{"A", 4}}), 3);
}

struct BadText
{
    std::string_view text;
    std::string_view error;
};

TEST(FormulaSyntax, ErrorsTellWhatIsWrongAndWhere)
{
    const BadText rows[] = {
        {"", "an operand is missing at the end (character 1)"},
        {"  ", "an operand is missing at the end (character 3)"},
        {"1+", "an operand is missing at the end (character 3)"},
        {"*2", "an operand is missing before '*' (character 1)"},
        {"1+*2", "an operand is missing before '*' (character 3)"},
        {"()", "an operand is missing before ')' (character 2)"},
        {"SGN()", "an operand is missing before ')' (character 5)"},
        {"1 2", "an operator is missing before '2' (character 3)"},
        {"A B", "an operator is missing before 'B' (character 3)"},
        {"(1)(2)", "an operator is missing before '(' (character 4)"},
        {"1~2", "an operator is missing before '~' (character 2)"},
        {"(1+2", "'(' is never closed (character 1)"},
        {"1+2)", "')' without '(' (character 4)"},
        {"A?1", "'?' without ':' (character 2)"},
        {"(A?1)+2", "'?' without ':' (character 3)"},
        {"A:1", "':' without '?' (character 2)"},
        {"A?1:2:3", "':' without '?' (character 6)"},
        {"A?B?1:2:3", "a condition between '?' and ':' needs brackets (character 4)"},
        {"1,2", "',' outside the arguments of a function (character 2)"},
        {"(1,2)", "',' outside the arguments of a function (character 3)"},
        {"SGN(1,2)", "function 'SGN' does not take 2 arguments (character 1)"},
        {"SGN", "unknown name 'SGN' (character 1)"},
        {"C+1", "unknown name 'C' (character 1)"},
        {"1+a", "unknown name 'a' (character 3)"},
        {"A.Max", "unknown name 'A.Max' (character 1)"},
        {"A(1)", "unknown function 'A' (character 1)"},
        {"MAX(1,2)", "unknown function 'MAX' (character 1)"},
        {"A+-B", "a sign directly after '+' or '-' needs brackets (character 3)"},
        {"A- -B", "a sign directly after '+' or '-' needs brackets (character 4)"},
        {"A-+B", "a sign directly after '+' or '-' needs brackets (character 3)"},
        {"--A", "a sign directly after '+' or '-' needs brackets (character 2)"},
        {"A=>B", "an operand is missing before '>' (character 3)"},
        {"A=<B", "an operand is missing before '<' (character 3)"},
        {"A and B", "an operator is missing before 'and' (character 3)"},
        {"!A", "unexpected '!' (character 1)"},
        {"A;", "unexpected ';' (character 2)"},
        {"\"A\"", "unexpected '\"' (character 1)"},
        {".5", "unexpected '.' (character 1)"},
        {"2A", "'2A' is neither a number nor a name (character 1)"},
        {"0x", "'0x' is neither a number nor a name (character 1)"},
        {"0X1F", "'0X1F' is neither a number nor a name (character 1)"},
        {"1.2.3", "'1.2.3' is neither a number nor a name (character 1)"},
        {"1e", "'1e' is neither a number nor a name (character 1)"},
        {"A\xC3\xA4", "unexpected '\\xC3' (character 2)"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CompileError<std::int64_t>(row.text), row.error) << row.text;
        EXPECT_EQ(CompileError<double>(row.text), row.error) << row.text;
    }
    EXPECT_EQ(CompileError<double>(std::string_view("1\0+2", 4)), "unexpected '\\x00' (character 2)");
}

TEST(FormulaSyntax, OffsetsPointIntoTheText)
{
    try {
        Int("1 + FOO");
        FAIL() << "no error";
    } catch (const FormulaError& error) {
        EXPECT_EQ(error.Offset(), 4U);
    }
}

TEST(FormulaSyntax, LongNamesAreCutInMessages)
{
    const std::string error = CompileError<double>(std::string(5'000, 'n'));
    EXPECT_THAT(error, HasSubstr("nnn...'"));
    EXPECT_LT(error.size(), 120U);
}

TEST(FormulaSyntax, DoubledEqualityIsAnExtension)
{
    EXPECT_EQ(Int("(3==3)+(3!=4)*2+(3!=3)*4"), 3);
    EXPECT_EQ(Flt("(3==3)+(3!=4)*2+(3!=3)*4"), 3.0);
    EXPECT_EQ(CompileError<std::int64_t>("A==B", kStrictDialect),
              "an operand is missing before '=' (character 3)");
    EXPECT_EQ(CompileError<double>("A!=B", kStrictDialect), "unexpected '!' (character 2)");
    EXPECT_EQ(CompileError<double>("A<>B", kStrictDialect), "no error");
}

TEST(FormulaSyntax, DecimalsInIntegerFormulasAreAnExtension)
{
    EXPECT_EQ(Int("A*4.0", {{"A", 3}}), 12);
    EXPECT_EQ(Int("2e3+1.+20e-1"), 2003);
    EXPECT_EQ(Int("1e300"), kMaxInteger);

    EXPECT_EQ(CompileError<std::int64_t>("A*0.5"), // half a unit more or less would be a guess
              "number with a fraction '0.5' in an integer formula (character 3)");
    EXPECT_EQ(CompileError<std::int64_t>("A*4.0", kStrictDialect),
              "decimal number '4.0' in an integer formula (character 3)");
    EXPECT_EQ(CompileError<std::int64_t>("1e3", kStrictDialect),
              "decimal number '1e3' in an integer formula (character 1)");
    EXPECT_EQ(Evaluate<double>("0.5", {}, kStrictDialect), 0.5);
}

} // namespace
