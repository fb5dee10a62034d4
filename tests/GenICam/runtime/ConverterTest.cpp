// SPDX-License-Identifier: Apache-2.0
// Numbers that come from formulas, converters and numbers of the other kind.
#include "TestMap.h"

#include <cfloat>
#include <limits>
#include <tuple>

using namespace GenApi;
using namespace KxTest;

namespace
{

constexpr int64_t kMaxInteger = std::numeric_limits<int64_t>::max();
constexpr int64_t kMinInteger = std::numeric_limits<int64_t>::min();

std::string Converter(const char* kind, const std::string& formulas, const char* target, const char* tail)
{
    return std::string(kind) + " X { " + formulas + "; pValue T; " + tail + " } " + target;
}

} // namespace

TEST(Converter, WritesThroughFormulaToAndReadsThroughFormulaFrom)
{
    TestMap test(Converter("Converter", "FormulaTo FROM*10; FormulaFrom TO/10", "Integer T { Value 0 }", ""));
    for (const auto& [value, stored] :
         {std::pair{0.5, 5}, {0.249, 2}, {0.25, 3}, {-0.25, -3}, {-0.249, -2}, {1.15, 12}})
    {
        test.Flt("X").SetValue(value);
        EXPECT_EQ(test.Int("T").GetValue(), stored) << value << ": nearest, halves away from zero";
        EXPECT_DOUBLE_EQ(test.Flt("X").GetValue(), stored / 10.0);
    }
    EXPECT_FALSE(test.Flt("X").HasInc());
    TestMap ints(Converter("IntConverter", "pVariable[Name=F] F; FormulaTo FROM/F; FormulaFrom TO*F",
                           "Integer T { Value 3; Min 0; Max 99 } Integer F { Value 4 }", "Slope Increasing"));
    EXPECT_EQ(ints.Int("X").GetValue(), 12);
    ints.Int("X").SetValue(15);
    EXPECT_EQ(ints.Int("T").GetValue(), 3) << "integer division";
    ints.Int("F").SetValue(5);
    EXPECT_EQ(ints.Int("X").GetValue(), 15) << "a variable's change is seen";
}

TEST(Converter, LimitsComeFromTheTargetAsTheSlopeSays)
{
    struct Case
    {
        const char *from, *slope;
        double min, max;
    };
    for (const Case& c :
         {Case{"TO*2", "Slope Increasing", 20, 40}, Case{"-TO", "Slope Decreasing", -20, -10},
          Case{"-TO", "Slope Automatic", -20, -10}, Case{"-TO", "", -20, -10}, Case{"TO*2", "", 20, 40},
          Case{"TO*2", "Slope Varying", -DBL_MAX, DBL_MAX}, Case{"-TO", "Slope Increasing", -10, -20}})
    {
        SCOPED_TRACE(std::string(c.from) + c.slope);
        const std::string formulas = std::string("FormulaTo FROM; FormulaFrom ") + c.from;
        const char* const target = "Integer T { Value 15; Min 10; Max 20 }";
        TestMap test(Converter("Converter", formulas, target, c.slope));
        EXPECT_EQ(test.Flt("X").GetMin(), c.min);
        EXPECT_EQ(test.Flt("X").GetMax(), c.max);
        TestMap ints(Converter("IntConverter", formulas, target, c.slope));
        const bool typeRange = c.max == DBL_MAX, none = *c.slope == '\0';
        EXPECT_EQ(ints.Int("X").GetMin(), typeRange ? kMinInteger : none ? 0 : static_cast<int64_t>(c.min));
        EXPECT_EQ(ints.Int("X").GetMax(), typeRange ? kMaxInteger : none ? 0 : static_cast<int64_t>(c.max));
    }
    TestMap ints(Converter("IntConverter", "FormulaTo FROM; FormulaFrom TO", "Integer T { Value 5 }", ""));
    EXPECT_EQ(KindRaisedBy([&] { ints.Int("X").SetValue(7); }), "OutOfRange") << "no slope: min = max = 0";
    ints.Int("X").SetValue(7, false);
    EXPECT_EQ(ints.Int("T").GetValue(), 7);
}

TEST(Converter, FloatsOnIntegersTakeLimitsUnitAndGrid)
{
    TestMap test(R"(
        Float X { pValue T }
        Integer T { Value 10; Min 10; Max 21; Inc 2; Unit mm; Representation Logarithmic })");
    IFloat& x = test.Flt("X");
    EXPECT_EQ(x.GetMin(), 10);
    EXPECT_EQ(x.GetMax(), 21);
    EXPECT_EQ(x.GetInc(), 2);
    EXPECT_EQ(x.GetUnit(), "mm");
    EXPECT_EQ(x.GetRepresentation(), Logarithmic);
    for (const auto& [value, stored] : {std::pair{12.6, 12}, {13.4, 12}, {13.99, 14}, {14.5, 14}, {15.0, 14}})
    {
        x.SetValue(value);
        EXPECT_EQ(test.Int("T").GetValue(), stored) << value;
    }
    EXPECT_EQ(KindRaisedBy([&] { x.SetValue(9.9); }), "OutOfRange");
    TestMap plain("Float X { pValue T } Integer T { Value 0 }");
    for (const auto& [value, stored] : {std::pair{2.5, 3}, {2.4, 2}, {-2.5, -3}}) {
        plain.Flt("X").SetValue(value);
        EXPECT_EQ(plain.Int("T").GetValue(), stored);
    }
}

TEST(Converter, IntegersOnFloatsRoundHalvesAwayFromZero)
{
    TestMap test("Integer X { pValue T } Float T { Value 0; Min -7.5; Max 9.4 }");
    for (const auto& [value, read] : {std::pair{2.5, 3}, {-2.5, -3}, {2.49, 2}}) {
        test.Flt("T").SetValue(value);
        EXPECT_EQ(test.Int("X").GetValue(), read);
    }
    EXPECT_EQ(test.Int("X").GetMin(), -8);
    EXPECT_EQ(test.Int("X").GetMax(), 9);
    test.Int("X").SetValue(4);
    EXPECT_EQ(test.Flt("T").GetValue(), 4.0);
    TestMap wide(Converter("Converter", "FormulaTo FROM; FormulaFrom TO*1e300", "Float T { Value 1 }", "") +
                 " Integer I { pValue X }");
    EXPECT_EQ(KindRaisedBy([&] { wide.Int("I").GetMax(); }), "Runtime") << "no integer is that large";
}

TEST(Converter, AnIntegersOwnLimitsAddToThoseOfItsTarget)
{
    TestMap test(
        "Integer X { pValue T; Min 0; Max 100; Inc 5 } Integer T { Value 0; Min 10; Max 50; Inc 10 }");
    IInteger& x = test.Int("X");
    EXPECT_EQ(x.GetMin(), 0);
    EXPECT_EQ(x.GetMax(), 100);
    EXPECT_EQ(x.GetInc(), 5);
    for (const int64_t value : {0, 60, 25, 7})
        EXPECT_EQ(KindRaisedBy([&] { x.SetValue(value); }), "OutOfRange") << value;
    x.SetValue(30);
    EXPECT_EQ(test.Int("T").GetValue(), 30);
}

TEST(Formula, VariablesReachEveryPartOfANode)
{
    const std::string nodes = R"(
        Integer I { Value 6; Min 2; Max 40; Inc 4 }
        Float F { Value 2.75; Min -2.5; Max 8.5; Inc 0.5 }
        Enumeration E { EnumEntry A { Value 1 } EnumEntry B { Value 2; NumericValue 2.5 } Value 2 }
        Boolean B { Value true })";
    struct Case
    {
        const char *target, *variable, *formula;
        double real;
        int64_t integer;
    };
    constexpr double kMax = std::numeric_limits<double>::max();
    constexpr int64_t kMaxInteger = std::numeric_limits<int64_t>::max();
    for (const Case& c : {
             Case{"I", "V", "V", 6, 6},
             Case{"I", "V.Value", "V.Value", 6, 6},
             Case{"I", "V.Min", "V.Min", 2, 2},
             Case{"I", "V.Max", "V.Max", 40, 40},
             Case{"I", "V.Inc", "V.Inc", 4, 4},
             Case{"I", "V.AccessMode", "V.AccessMode", RW, RW},
             Case{"F", "V", "V*4", 11, 12}, // integer formulas round first
             Case{"F", "V.Min", "V.Min", -2.5, -3},
             Case{"F", "V.Max", "V.Max", 8.5, 9},
             Case{"F", "V.Inc", "V.Inc", 0.5, 1},
             Case{"E", "V", "V", 2.5, 3}, // the entry's number, where it has one
             Case{"E", "V.Entry.A", "V.Entry.A", 1, 1},
             Case{"E", "V.Entry.B", "V.Entry.B", 2, 2},
             Case{"E", "V.Max", "V.Max", kMax, kMaxInteger},
             Case{"B", "V", "V", 1, 1},
             Case{"I", "Max", "Max", 6, 6},
             Case{"I", "V", "V == 6 ? 4.0 : 1", 4, 4},
             Case{"I", "V", "V != 6", 0, 0},
         })
    {
        SCOPED_TRACE(std::string(c.variable) + " of " + c.target + " in " + c.formula);
        const std::string parts = std::string(" { pVariable[Name=") + c.variable + "] " + c.target +
                                  "; Formula " + c.formula + " } ";
        TestMap test("SwissKnife R" + parts + "IntSwissKnife I64" + parts + nodes);
        EXPECT_EQ(test.Flt("R").GetValue(), c.real);
        EXPECT_EQ(test.Int("I64").GetValue(), c.integer);
    }
    // What is wrong is told when it is used. Without its suffix in the formula a name is unknown.
    for (const auto& [target, variable, formula, kind] : {std::tuple{"I", "V.Foo", "V.Foo", "Runtime"},
                                                          {"I", "V.min", "V.min", "Runtime"},
                                                          {"I", "A.B.Max", "A.B.Max", "Runtime"},
                                                          {"I", "V.Entry.A", "V.Entry.A", "Runtime"},
                                                          {"E", "V.Entry.C", "V.Entry.C", "Runtime"},
                                                          {"I", "V.Max", "V", "LogicalError"},
                                                          {"I", "V", "V.Max", "LogicalError"}})
    {
        TestMap test(std::string("IntSwissKnife S { pVariable[Name=") + variable + "] " + target +
                     "; Formula " + formula + " }" + nodes);
        EXPECT_EQ(KindRaisedBy([&] { test.Int("S").GetValue(); }), kind) << variable << " in " << formula;
    }
}

TEST(Formula, ConstantsAndExpressionsHaveNames)
{
    TestMap test(R"(
        SwissKnife X { pVariable[Name=A] I; Constant[Name=K] 0.5; Expression[Name=TWICE] A+A;
                       Expression[Name=FOURFOLD] 2*TWICE; Formula FOURFOLD+K }
        Integer I { Value 3 })");
    EXPECT_EQ(test.Flt("X").GetValue(), 12.5) << "expressions are used as if they stood in brackets";
    test.Int("I").SetValue(4);
    EXPECT_EQ(test.Flt("X").GetValue(), 16.5);
    EXPECT_EQ(test.Flt("X").GetMin(), -DBL_MAX);
    EXPECT_EQ(test.Flt("X").GetMax(), DBL_MAX);
}

TEST(Formula, BrokenOnesRaiseAtFirstUseAndNameNodeAndFormula)
{
    for (const char* formula : {"1 +", "UNKNOWN + 1", "1/ZERO", "1 % ZERO", "(1", "A ! B"}) {
        SCOPED_TRACE(formula);
        TestMap test(std::string("IntSwissKnife Broken { pVariable[Name=ZERO] Zero; Formula ") + formula +
                     " } Integer Zero { Value 0 } Integer Fine { Value 1 } Integer Above { pValue Broken }");
        const Raised raised = RaisedBy([&] { test.Int("Broken").GetValue(); });
        EXPECT_EQ(raised.kind, "LogicalError");
        EXPECT_NE(raised.what.find("Broken"), std::string::npos) << raised.what;
        EXPECT_NE(raised.what.find(formula), std::string::npos) << raised.what;
        EXPECT_EQ(KindRaisedBy([&] { test.Int("Above").GetValue(); }), "LogicalError");
        EXPECT_EQ(test.Int("Fine").GetValue(), 1);
        GenICam::gcstring_vector errors;
        const bool parses = std::string(formula).find("ZERO") != std::string::npos;
        EXPECT_EQ(test.map._ParseSwissKnifes(&errors), parses);
        EXPECT_EQ(errors.size(), parses ? 0u : 1u);
    }
}

TEST(Formula, ErrorsOfOneReadingDoNotOutliveTheirCause)
{
    TestMap test("IntSwissKnife X { pVariable[Name=D] D; Formula 12/D } Integer D { Value 0 }");
    EXPECT_EQ(KindRaisedBy([&] { test.Int("X").GetValue(); }), "LogicalError");
    test.Int("D").SetValue(4);
    EXPECT_EQ(test.Int("X").GetValue(), 3);
}

TEST(Converter, LimitsStayWithinTheTypeWhereTheyAreLimits)
{
    constexpr double kMax = std::numeric_limits<double>::max();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const auto& [from, slope, min, max] : {std::tuple{"TO*2", "Increasing", -kMax, kMax},
                                                {"TO*2", "Decreasing", kInfinity, -kInfinity},
                                                {"TO*2", "Varying", -kMax, kMax},
                                                {"TO/2", "Automatic", -kMax / 2, kMax / 2}})
    {
        SCOPED_TRACE(std::string(from) + slope);
        TestMap test(std::string("Converter C { FormulaTo FROM; FormulaFrom ") + from + "; pValue F; Slope " +
                     slope + " } Float F { Value 0 }");
        EXPECT_EQ(test.Flt("C").GetMin(), min);
        EXPECT_EQ(test.Flt("C").GetMax(), max);
        EXPECT_FALSE(test.Flt("C").HasInc());
    }
}

// Digits and notation are those of the node that is shown, unless a node has its own.
TEST(Converter, ShowsNumbersAsItsTargetDoes)
{
    TestMap test(R"(
        Float Top { pValue C }
        Converter C { FormulaTo FROM; FormulaFrom TO; pValue Mid }
        Float Mid { pValue F; DisplayNotation Fixed; DisplayPrecision 2 }
        Float F { Value 3 })");
    EXPECT_EQ(test.Value("Top").ToString() + test.Value("F").ToString(), "3.003");
    EXPECT_EQ(test.Flt("Top").GetDisplayPrecision(), 2);
    EXPECT_EQ(test.Flt("Top").GetDisplayNotation(), fnFixed);
    EXPECT_EQ(test.Flt("F").GetDisplayPrecision(), 6);
}
