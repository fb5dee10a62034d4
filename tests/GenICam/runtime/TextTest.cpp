// SPDX-License-Identifier: Apache-2.0
// Values as text and texts as values.
#include "TestMap.h"

#include <clocale>
#include <limits>

using namespace GenApi;
using namespace KxTest;

namespace
{

constexpr int64_t kMaxInteger = std::numeric_limits<int64_t>::max();
constexpr int64_t kMinInteger = std::numeric_limits<int64_t>::min();

std::string IntegerShownAs(const char* representation)
{
    return std::string("Integer X { Value 0; ") +
           (*representation ? std::string("Representation ") + representation : "") + " }";
}

} // namespace

TEST(Text, IntegersAreShownInTheirRepresentation)
{
    struct Case
    {
        const char* representation;
        int64_t value;
        const char* text;
    };
    for (const Case& c : {
             Case{"", 1234, "1234"},
             Case{"Linear", -5, "-5"},
             Case{"Logarithmic", kMinInteger, "-9223372036854775808"},
             Case{"PureNumber", kMaxInteger, "9223372036854775807"},
             Case{"HexNumber", 0xabc, "0xabc"},
             Case{"HexNumber", 0, "0"},
             Case{"HexNumber", -1, "0xffffffffffffffff"},
             Case{"Boolean", 1, "true"},
             Case{"Boolean", 0, "false"},
             Case{"IPV4Address", 0xc0a80001, "192.168.0.1"},
             Case{"IPV4Address", 0x10a000001, "10.0.0.1"},
             Case{"MACAddress", 0x001122aabbcc, "00:11:22:aa:bb:cc"},
             Case{"MACAddress", 0x7f001122aabbcc, "00:11:22:aa:bb:cc"},
         })
    {
        TestMap test(IntegerShownAs(c.representation));
        test.Int("X").SetValue(c.value);
        EXPECT_EQ(test.Value("X").ToString(), c.text) << c.representation;
    }
}

TEST(Text, IntegersAreReadFromTheirRepresentation)
{
    constexpr int64_t kRefused = -4711;
    struct Case
    {
        const char *representation, *text;
        int64_t value;
    };
    for (const Case& c : {
             Case{"Linear", "42", 42},
             Case{"Linear", "-42", -42},
             Case{"Linear", "10.5", 10},
             Case{"Linear", "1e3", 1},
             Case{"Linear", "010", 10},
             Case{"Linear", "0x1F", 31},
             Case{"Linear", "99999999999999999999", kMaxInteger},
             Case{"Linear", "-99999999999999999999", kMinInteger},
             Case{"Linear", "0xFFFFFFFFFFFFFFFF", -1},
             Case{"Linear", "", kRefused},
             Case{"Linear", "abc", kRefused},
             Case{"Linear", "-", kRefused},
             Case{"HexNumber", "0xff", 255},
             Case{"HexNumber", "1f", 1},
             Case{"IPV4Address", "192.168.0.1", 0xc0a80001},
             Case{"IPV4Address", "192.168.0", kRefused},
             Case{"IPV4Address", "3232235521", kRefused},
             Case{"MACAddress", "00:11:22:AA:bb:C", 0x001122aabb0c},
             Case{"MACAddress", "1234", kRefused},
             Case{"Boolean", "true", 1},
             Case{"Boolean", "false", 0},
             Case{"Boolean", "1", kRefused},
             Case{"Boolean", "True", kRefused},
         })
    {
        SCOPED_TRACE(std::string(c.representation) + " " + c.text);
        TestMap test(IntegerShownAs(c.representation));
        test.Int("X").SetValue(kRefused);
        EXPECT_EQ(KindRaisedBy([&] { test.Value("X").FromString(c.text); }),
                  c.value == kRefused ? "InvalidArgument" : "none");
        EXPECT_EQ(test.Int("X").GetValue(), c.value);
    }
}

TEST(Text, FloatsAreShownInTheirNotationAndPrecision)
{
    struct Case
    {
        const char* notation;
        double value;
        const char* text;
    };
    for (const Case& c : {
             Case{"", 0.30000001, "0.3"},
             Case{"", 1234567, "1.23457e+06"},
             Case{"DisplayNotation Automatic; DisplayPrecision 3", 2.71828, "2.72"},
             Case{"DisplayNotation Fixed", 2.5, "2.500000"},
             Case{"DisplayNotation Fixed; DisplayPrecision 2", -0.126, "-0.13"},
             Case{"DisplayNotation Scientific; DisplayPrecision 1", 12345, "1.2e+04"},
         })
    {
        TestMap test(std::string("Float X { Value 0; ") + c.notation + " }");
        test.Flt("X").SetValue(c.value);
        EXPECT_EQ(test.Value("X").ToString(), c.text) << c.notation;
    }
    for (const char* precision : {"-3", "400", "2000000000", "9223372036854775807"}) {
        TestMap test(std::string("Float X { Value 0.5; DisplayNotation Fixed; DisplayPrecision ") +
                     precision + " }");
        EXPECT_LE(test.Value("X").ToString().size(), 2000u) << precision;
    }
}

TEST(Text, FloatsAreReadUpToWhatIsNoNumber)
{
    TestMap test("Float X { Value 0 }");
    for (const auto& [text, value] :
         {std::pair{"2.5", 2.5}, {"-1e-3", -0.001}, {"7", 7.0}, {"3,5", 3.0}, {"1.5 mm", 1.5}})
    {
        test.Value("X").FromString(text);
        EXPECT_EQ(test.Flt("X").GetValue(), value) << text;
    }
    for (const char* text : {"", "abc", "nan", "inf", "-inf", "1e999"})
        EXPECT_EQ(KindRaisedBy([&] { test.Value("X").FromString(text); }), "InvalidArgument") << text;
}

TEST(Text, RegistersAreShownAndReadAsHexDigits)
{
    TestMap test("Register X { at 0 4 RW; Cachable NoCache }");
    test.port.Put(0, {0x01, 0xab, 0, 0xff});
    EXPECT_EQ(test.Value("X").ToString(), "0x01ab00ff");
    for (const auto& [text, shown] :
         {std::pair{"0x11223344", "0x11223344"}, {"aABB", "0xaabb3344"}, {"0x1122334455", "0x11223344"}})
    {
        test.Value("X").FromString(text);
        EXPECT_EQ(test.Value("X").ToString(), shown) << text;
    }
    for (const char* text : {"0x123", "0xgg"})
        EXPECT_NE(KindRaisedBy([&] { test.Value("X").FromString(text); }), "none") << text;
}

TEST(Text, CategoriesShowTheirNameAndTextsThemselves)
{
    TestMap test("Category Root { pFeature S } String S { Value some  text }");
    EXPECT_EQ(test.Value("Root").ToString(), "Root");
    EXPECT_EQ(test.Value("S").ToString(), "some  text");
    test.Value("S").FromString("\xc3\xa4 <&>");
    EXPECT_EQ(test.Get<IString>("S").GetValue(), "\xc3\xa4 <&>");
}

TEST(Text, UnitAndRepresentationComeFromTheTargetUnlessGiven)
{
    TestMap test(R"(
        Integer A { pValue R }
        Integer B { pValue R; Unit cm; Representation Logarithmic }
        IntSwissKnife K { Formula 1 }
        IntReg Plain { at 8 4 RW; Little }
        IntReg R { at 0 4 RW; Little; Unit mm; Representation HexNumber })");
    EXPECT_EQ(test.Int("A").GetUnit(), "mm");
    EXPECT_EQ(test.Int("A").GetRepresentation(), HexNumber);
    EXPECT_EQ(test.Int("B").GetUnit(), "cm");
    EXPECT_EQ(test.Int("B").GetRepresentation(), Logarithmic);
    EXPECT_EQ(test.Int("K").GetRepresentation(), PureNumber);
    EXPECT_EQ(test.Int("Plain").GetRepresentation(), PureNumber);
}

TEST(Text, TheProgramsLocaleDoesNotMatter)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const char* found = nullptr;
    for (const char* name :
         {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "fr_FR.utf8", "ru_RU.UTF-8"})
        if (!found && std::setlocale(LC_ALL, name))
            found = name;
    if (!found)
        GTEST_SKIP() << "this machine has no locale with a comma as decimal point";
    TestMap test("Float X { Value 1.5; Max 20.5 } SwissKnife K { Formula 2.5*2 } "
                 "Converter C { FormulaTo FROM*1.5; FormulaFrom TO/1.5; pValue X }");
    EXPECT_EQ(test.Flt("X").GetMax(), 20.5);
    EXPECT_EQ(test.Value("X").ToString(), "1.5");
    test.Value("X").FromString("2.25");
    EXPECT_EQ(test.Flt("X").GetValue(), 2.25);
    EXPECT_EQ(test.Flt("K").GetValue(), 5.0);
    EXPECT_EQ(test.Flt("C").GetValue(), 1.5);
    std::setlocale(LC_ALL, before.c_str());
}
