// SPDX-License-Identifier: Apache-2.0
// Choices, switches and their numbers.
#include "TestMap.h"

#include <functional>
#include <limits>

using namespace GenApi;
using namespace KxTest;

namespace
{

constexpr const char* kMode = R"(
    Enumeration Mode {
        EnumEntry Off { DisplayName Switched off; Value 0 }
        EnumEntry On { Value 1; Symbolic Active }
        EnumEntry Half { Value 5; NumericValue 2.5 }
        EnumEntry Away { pIsAvailable Zero; Value 6 }
        EnumEntry Missing { pIsImplemented Zero; Value 7 }
        pValue R }
    Integer Zero { Value 0 }
    Integer AsNumber { pValue Mode }
    SwissKnife AsVariable { pVariable[Name=M] Mode; Formula M }
    IntReg R { at 0 4 RW; Cachable NoCache; Little })";

} // namespace

TEST(Enumeration, IsChosenBySymbolOrInteger)
{
    TestMap test(kMode);
    IEnumeration& mode = test.Enum("Mode");
    mode = "Active";
    EXPECT_EQ(test.port.Peek(0, 1).front(), 1);
    EXPECT_EQ(*mode, "Active");
    EXPECT_EQ(mode.ToString(), "Active");
    EXPECT_EQ(mode.GetIntValue(), 1);
    mode.SetIntValue(5);
    EXPECT_EQ(mode.GetCurrentEntry()->GetSymbolic(), "Half");
    EXPECT_EQ(mode.GetEntryByName("Half"), mode.GetEntry(5));
    EXPECT_EQ(mode.GetEntryByName("On"), nullptr) << "the symbol has taken the name's place";
    EXPECT_EQ(mode.GetEntry(99), nullptr);
    EXPECT_EQ(mode.GetEntryByName(""), nullptr);
    StringList_t symbols;
    mode.GetSymbolics(symbols);
    std::string all;
    for (const auto& symbol : symbols)
        all += std::string(symbol.c_str()) + " ";
    EXPECT_EQ(all, "Off Active Half ");
    NodeList_t entries;
    mode.GetEntries(entries);
    ASSERT_EQ(entries.size(), 5u);
    EXPECT_EQ(entries[0]->GetName(), "EnumEntry_Mode_Off");
    EXPECT_EQ(entries[0], test.map._GetNode("EnumEntry_Mode_Off"));
    EXPECT_EQ(entries[0]->GetDisplayName(), "Switched off");
    EXPECT_EQ(entries[1]->GetDisplayName(), "Active");
    EXPECT_EQ(CEnumEntryPtr(entries[2])->GetNumericValue(), 2.5);
    EXPECT_EQ(CEnumEntryPtr(entries[1])->GetNumericValue(), 1);
    EXPECT_EQ(CValuePtr(entries[2])->ToString(), "5");
}

TEST(Enumeration, RefusesWhatIsNoEntryOrCannotBeChosen)
{
    TestMap test(kMode);
    IEnumeration& mode = test.Enum("Mode");
    for (const bool verify : {true, false}) {
        for (const char* text : {"on", "On", "active", "1", "", "Nothing"})
            EXPECT_EQ(KindRaisedBy([&] { mode.FromString(text, verify); }), "InvalidArgument") << text;
        EXPECT_EQ(KindRaisedBy([&] { mode.SetIntValue(99, verify); }), "InvalidArgument");
    }
    for (const int64_t value : {6, 7}) {
        EXPECT_EQ(KindRaisedBy([&] { mode.SetIntValue(value); }), "Access");
        EXPECT_EQ(KindRaisedBy([&] { mode.FromString(value == 6 ? "Away" : "Missing"); }), "Access");
    }
    EXPECT_EQ(test.port.TakeAccesses(), "");
    mode.SetIntValue(6, false);
    EXPECT_EQ(test.port.Peek(0, 1).front(), 6);
    EXPECT_EQ(mode.GetIntValue(), 6);
    EXPECT_EQ(mode.ToString(), "Away");
    for (const auto& call : {std::function<void()>([&] { mode.GetIntValue(true); }),
                             {[&] { mode.ToString(true); }},
                             {[&] { mode.GetCurrentEntry(true); }}})
        EXPECT_EQ(KindRaisedBy(call), "Access");
    EXPECT_EQ(KindRaisedBy([&] { mode.FromString("Missing", false); }), "Access");
}

TEST(Enumeration, GivesAnUnknownIntegerButNoSymbolForIt)
{
    TestMap test(kMode);
    IEnumeration& mode = test.Enum("Mode");
    test.port.Put(0, {42});
    EXPECT_EQ(mode.GetIntValue(), 42);
    EXPECT_EQ(KindRaisedBy([&] { mode.GetIntValue(true); }), "OutOfRange");
    EXPECT_EQ(KindRaisedBy([&] { mode.GetCurrentEntry(true); }), "OutOfRange");
    EXPECT_EQ(KindRaisedBy([&] { mode.ToString(); }), "InvalidArgument");
    EXPECT_EQ(KindRaisedBy([&] { mode.ToString(true); }), "InvalidArgument");
    EXPECT_EQ(KindRaisedBy([&] { *mode; }), "InvalidArgument");
    EXPECT_EQ(mode.GetCurrentEntry(), nullptr);
    EXPECT_EQ(KindRaisedBy([&] { test.Int("AsNumber").GetValue(); }), "LogicalError");
    EXPECT_EQ(KindRaisedBy([&] { test.Flt("AsVariable").GetValue(); }), "LogicalError");
}

TEST(Enumeration, AsANumberIsTheNumericValueOrTheInteger)
{
    TestMap test(kMode);
    for (const auto& [symbol, integer, real] :
         {std::tuple{"Off", 0, 0.0}, {"Active", 1, 1.0}, {"Half", 3, 2.5}}) {
        test.Enum("Mode") = symbol;
        EXPECT_EQ(test.Int("AsNumber").GetValue(), integer) << symbol;
        EXPECT_EQ(test.Flt("AsVariable").GetValue(), real) << symbol;
    }
}

TEST(Enumeration, GivenANumberChoosesTheNearestAvailableEntry)
{
    TestMap test(R"(
        Enumeration E {
            EnumEntry A { Value 0; NumericValue 1.5 } EnumEntry B { Value 1; NumericValue -3.25 }
            EnumEntry C { Value 2; NumericValue 10 } EnumEntry N { Value 3 }
            EnumEntry X { pIsAvailable Zero; Value 4; NumericValue 99 }
            Value 0 }
        Float F { pValue E } Integer I { pValue E } Integer Zero { Value 0 }
        Converter Twice { FormulaTo FROM*2; FormulaFrom TO/2; pValue E })");
    for (const auto& [number, symbol] :
         {std::pair{1.4, "A"}, {2.0, "A"}, {5.0, "N"}, {1000.0, "C"}, {-5.0, "B"}, {1e300, "A"}})
        for (const bool verify : {true, false}) {
            test.Flt("F").SetValue(number, verify);
            EXPECT_EQ(test.Value("E").ToString(), symbol) << number;
        }
    test.Int("I").SetValue(7);
    EXPECT_EQ(test.Value("E").ToString(), "C");
    test.Int("I").SetValue(-3);
    EXPECT_EQ(test.Flt("F").GetValue(), -3.25);
    EXPECT_EQ(test.Int("I").GetValue(), -3);
    constexpr double kMax = std::numeric_limits<double>::max();
    EXPECT_EQ(test.Flt("F").GetMax(), kMax);
    EXPECT_EQ(test.Flt("Twice").GetMin(), -kMax / 2);
    EXPECT_FALSE(test.Flt("F").HasInc());
    EXPECT_EQ(test.Int("I").GetMax(), std::numeric_limits<int64_t>::max());
}

TEST(Enumeration, OfEntriesWithOneIntegerTheLastIsRead)
{
    TestMap test(R"(
        Enumeration E { EnumEntry A { Value 5 } EnumEntry B { pIsAvailable Flag; Value 5 } Value 5 }
        Integer Flag { Value 1 })");
    test.Enum("E") = "A";
    EXPECT_EQ(test.Value("E").ToString(), "B");
    test.Int("Flag").SetValue(0);
    EXPECT_EQ(test.Value("E").ToString(), "B");
    EXPECT_EQ(KindRaisedBy([&] { test.Value("E").ToString(true); }), "Access");
    EXPECT_EQ(KindRaisedBy([&] { test.Enum("E").SetIntValue(5); }), "Access");
}

TEST(Enumeration, IsReadFromTheDeviceWhileItsEntryClearsItself)
{
    TestMap test(R"(
        Enumeration Auto { EnumEntry Off { Value 0 } EnumEntry Once { Value 1; IsSelfClearing Yes } pValue R }
        IntReg R { at 0 4 RW; Little })");
    IEnumeration& automatic = test.Enum("Auto");
    EXPECT_TRUE(automatic.GetEntryByName("Once")->IsSelfClearing());
    automatic = "Once";
    test.port.TakeAccesses();
    CallbackLog log(test);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(*automatic, "Once");
        EXPECT_EQ(test.port.TakeAccesses(), "r0:4");
    }
    test.port.Put(0, {0});
    EXPECT_EQ(*automatic, "Off");
    EXPECT_EQ(*automatic, "Off");
    test.port.TakeAccesses();
    EXPECT_EQ(*automatic, "Off");
    EXPECT_EQ(test.port.TakeAccesses() + log.Take(), "");
}

TEST(Boolean, MapsOnAndOffToItsOwnValues)
{
    TestMap test(
        "Boolean X { pValue R; OnValue 5; OffValue 9 } IntReg R { at 0 4 RW; Cachable NoCache; Little }");
    IBoolean& x = test.Get<IBoolean>("X");
    x.SetValue(true);
    EXPECT_EQ(test.port.Peek(0, 1).front(), 5);
    EXPECT_TRUE(x.GetValue());
    for (const auto& [text, stored] : {std::pair{"0", 9}, {"1", 5}, {"false", 9}, {"true", 5}}) {
        test.Value("X").FromString(text);
        EXPECT_EQ(test.port.Peek(0, 1).front(), stored);
        EXPECT_EQ(test.Value("X").ToString(), stored == 5 ? "1" : "0");
    }
    for (const char* text : {"True", "yes", "", "2"})
        EXPECT_EQ(KindRaisedBy([&] { test.Value("X").FromString(text); }), "InvalidArgument") << text;
    test.port.Put(0, {1});
    const Raised raised = RaisedBy([&] { x.GetValue(); });
    EXPECT_EQ(raised.kind, "LogicalError");
    for (const char* number : {"1", "5", "9"})
        EXPECT_NE(raised.description.find(number), std::string::npos) << raised.description;
}
