// SPDX-License-Identifier: Apache-2.0
// What can be done with a node: flags, imposed modes, targets, ports.
#include "TestMap.h"

using namespace GenApi;
using namespace KxTest;

namespace
{

const char* ModeName(EAccessMode mode)
{
    constexpr const char* kNames[] = {"NI", "NA", "WO", "RO", "RW"};
    return mode >= NI && mode <= RW ? kNames[mode] : "undefined";
}

std::string ModeOf(const TestMap& test, const char* name) { return ModeName(test.Get(name).GetAccessMode()); }

struct Case
{
    const char* nodes;
    const char* mode; ///< of the node X
};

void ExpectModes(const std::vector<Case>& cases, EAccessMode portMode = RW)
{
    for (const Case& c : cases) {
        SCOPED_TRACE(c.nodes);
        TestMap test(c.nodes, false);
        test.port.mode = portMode;
        test.map._Connect(&test.port);
        EXPECT_EQ(ModeOf(test, "X"), c.mode);
    }
}

} // namespace

TEST(AccessMode, FlagsAndImposedModeLimitInTheirOrder)
{
    ExpectModes({
        {"Integer X { Value 1 }", "RW"},
        {"Integer X { pIsImplemented F; Value 1 } Integer F { Value 0 }", "NI"},
        {"Integer X { pIsImplemented F; pIsAvailable F; pIsLocked F; Value 1 } Integer F { Value 0 }", "NI"},
        {"Integer X { pIsImplemented F; pIsAvailable F; Value 1 } Integer F { Value 1 }", "RW"},
        {"Integer X { pIsAvailable F; Value 1 } Integer F { Value 0 }", "NA"},
        {"Integer X { pIsAvailable F; Value 1 } Integer F { Value 2 }", "RW"},
        {"Integer X { pIsAvailable F; Value 1 } Integer F { Value -1 }", "RW"},
        {"Integer X { pIsLocked F; Value 1 } Integer F { Value 1 }", "RO"},
        {"Integer X { pIsLocked F; Value 1 } Integer F { Value 2 }", "RO"},
        {"Integer X { pIsLocked F; pValue R } Integer F { Value 1 } IntReg R { at 0 4 WO; Little }", "NA"},
        {"Integer X { pIsLocked F; Value 1 } Boolean F { Value true }", "RO"},
        {"Integer X { pIsAvailable F; Value 1 } IntSwissKnife F { Formula 1 > 2 }", "NA"},
        {"Integer X { ImposedAccessMode RO; Value 1 }", "RO"},
        {"Integer X { ImposedAccessMode WO; Value 1 }", "WO"},
        {"Integer X { ImposedAccessMode WO; pValue R } IntReg R { at 0 4 RO; Little }", "NA"},
        {"Integer X { pIndex I; ValueIndexed[Index=0] 1; ValueDefault 2 } IntReg I { at 0 4 WO; Little }",
         "NA"},
        // A flag that cannot be read leaves the node unavailable, whichever flag it is.
        {"Integer X { pIsImplemented F; Value 1 } IntReg F { at 0 4 WO; Little }", "NA"},
        {"Integer X { pIsAvailable F; Value 1 } IntReg F { at 0 4 WO; Little }", "NA"},
        {"Integer X { pIsLocked F; Value 1 } IntReg F { at 0 4 WO; Little }", "NA"},
    });
}

// Whoever asks what can be done with a node is never answered by an exception.
TEST(AccessMode, FlagsWithoutAProperValueRaiseNothing)
{
    const std::string kinds = R"(
        Category Root { pFeature Cat } Category Cat { pFeature Shown; pFeature Locked }
        Integer Shown { pIsImplemented Flag; pIsAvailable Flag; Value 1 }
        Integer Locked { pIsLocked Flag; Value 1 } IntReg R { at 0 4 RW; Cachable NoCache; Little } )";
    const auto modes = [](TestMap& test) {
        test.Int("Shown").GetMin();
        test.Int("Locked").GetInc();
        EXPECT_EQ(test.Get("Root").GetAccessMode(), RO);
        return std::pair{test.Get("Shown").GetAccessMode(), test.Get("Locked").GetAccessMode()};
    };
    const auto unlocked = std::pair{RW, RW}, locked = std::pair{RW, RO};
    TestMap enumeration(kinds + "Enumeration Flag { EnumEntry A { Value 2; NumericValue 0 } pValue R }");
    enumeration.port.Put(0, {9});
    EXPECT_EQ(modes(enumeration), locked) << "no entry, but not 0";
    enumeration.port.Put(0, {2});
    EXPECT_EQ(modes(enumeration), locked) << "the number of the entry plays no part";
    TestMap boolean(kinds + "Boolean Flag { pValue R; OnValue 1; OffValue 2 }");
    boolean.port.Put(0, {9});
    EXPECT_EQ(modes(boolean), locked);
    TestMap formula(kinds + "IntSwissKnife Flag { pVariable[Name=V] R; Formula 1/V }");
    EXPECT_EQ(modes(formula), unlocked);
    TestMap broken(kinds + "Integer Flag { pValue R }");
    broken.port.onRead = [] { throw 5; };
    EXPECT_EQ(modes(broken), unlocked);
    broken.port.onRead = nullptr;
    broken.port.Put(0, {1});
    EXPECT_EQ(modes(broken), locked) << "an answer in want of a better one isn't kept";
}

TEST(AccessMode, UnverifiedWritesDoNotReachWhatIsReadOnlyForEver)
{
    TestMap test(R"(
        IntReg Fixed { at 0 4 RO; Little } MaskedIntReg Part { at 0 4 RO; Bit 1; Little }
        Integer Imposed { ImposedAccessMode RO; pValue R } Integer Over { pValue Imposed }
        Boolean Flag { pValue Imposed } Enumeration Mode { EnumEntry A { Value 0 } pValue Imposed }
        Float Real { pValue Imposed } Integer Own { ImposedAccessMode RO; Value 1 }
        Integer Copies { pValue R; pValueCopy Fixed } StringReg Text { ImposedAccessMode RO; at 8 4 RW }
        Integer Locked { pIsLocked One; pValue R } Integer Gone { pIsAvailable Zero; pValue R; Max 1 }
        Integer One { Value 1 } Integer Zero { Value 0 } IntReg R { at 4 4 RW; Little })");
    for (const char* name :
         {"Fixed", "Part", "Imposed", "Over", "Flag", "Mode", "Real", "Own", "Copies", "Text"})
        EXPECT_EQ(KindRaisedBy([&] { test.Value(name).FromString(*name == 'M' ? "A" : "1", false); }),
                  "Access")
            << name;
    EXPECT_EQ(test.port.TakeAccesses(), "");
    test.Int("Locked").SetValue(2, false);
    test.Int("Gone").SetValue(3, false);
    EXPECT_EQ(test.port.TakeAccesses(), "w4:4 w4:4");
    test.Get("R").ImposeAccessMode(RO);
    EXPECT_EQ(KindRaisedBy([&] { test.Int("Locked").SetValue(4, false); }), "Access");
}

TEST(AccessMode, PassesUpwardsFromTheRegister)
{
    const std::string ro = " IntReg R { at 0 4 RO; Little }", wo = " IntReg R { at 0 4 WO; Little }";
    for (const std::string node :
         {"Integer X { pValue R }", "Boolean X { pValue R }", "Float X { pValue R }",
          "Command X { pValue R; CommandValue 1 }", "Enumeration X { EnumEntry A { Value 0 } pValue R }",
          "Converter X { FormulaTo FROM; FormulaFrom TO; pValue R }",
          "IntConverter X { FormulaTo FROM; FormulaFrom TO; pValue R; Slope Increasing }"})
    {
        ExpectModes({{(node + ro).c_str(), "RO"}, {(node + wo).c_str(), "WO"}});
    }
    // Not downwards to it, nor sideways.
    TestMap test("Integer X { ImposedAccessMode RO; pValue R } Integer Y { pValue R } "
                 "IntReg R { at 0 4 RW; Little }");
    EXPECT_EQ(ModeOf(test, "R") + ModeOf(test, "Y"), "RWRW");
}

TEST(AccessMode, OfARegisterIsLimitedByThePort)
{
    ExpectModes({{"IntReg X { at 0 4 RW; Little }", "RO"},
                 {"IntReg X { at 0 4 WO; Little }", "NA"},
                 {"Integer X { pValue R } IntReg R { at 0 4 RW; Little }", "RO"}},
                RO);
    ExpectModes({{"IntReg X { at 0 4 RO; Little }", "NA"}, {"StringReg X { at 0 4 RW }", "WO"}}, WO);
    ExpectModes({{"IntReg X { at 0 4 RO; Little }", "NI"}}, NI);

    TestMap test("Integer X { pValue R } IntReg R { at 0 4 RW; Little } SwissKnife K { pVariable[Name=R] R; "
                 "Formula R }",
                 false);
    EXPECT_EQ(ModeOf(test, "Device") + ModeOf(test, "R") + ModeOf(test, "X") + ModeOf(test, "K"), "NINININI");
    EXPECT_EQ(KindRaisedBy([&] { test.Int("X").GetValue(); }), "Access");
    test.map._Connect(&test.port);
    test.Int("X").SetValue(4);
    EXPECT_EQ(ModeOf(test, "X"), "RW");
    test.map._Connect(static_cast<IPort*>(nullptr));
    EXPECT_EQ(ModeOf(test, "X"), "NI");
}

TEST(AccessMode, OfFormulasFollowsTheirVariables)
{
    const std::string knife = "SwissKnife X { pVariable[Name=V] V; Formula V } ";
    ExpectModes({
        {(knife + "Integer V { Value 1 }").c_str(), "RO"},
        {(knife + "IntReg V { at 0 4 WO; Little }").c_str(), "RO"},
        {(knife + "Integer V { pIsAvailable Z; Value 1 } Integer Z { Value 0 }").c_str(), "NA"},
        {(knife + "Integer V { pIsImplemented Z; Value 1 } Integer Z { Value 0 }").c_str(), "NI"},
    });
    const std::string two = "SwissKnife X { pVariable[Name=A] A; pVariable[Name=B] B; Formula A+B } "
                            "Integer Zero { Value 0 } ";
    ExpectModes({
        {(two + "Integer A { pIsImplemented Zero; Value 1 } Integer B { pIsAvailable Zero; Value 1 }")
             .c_str(),
         "NI"},
        {(two + "Integer A { pIsAvailable Zero; Value 1 } Integer B { pIsImplemented Zero; Value 1 }")
             .c_str(),
         "NI"},
    });
    const std::string converter = "Converter X { pVariable[Name=V] V; FormulaTo FROM*V; FormulaFrom TO/V; "
                                  "pValue T } Integer T { Value 1 } Integer Zero { Value 0 } ";
    ExpectModes({
        {(converter + "Integer V { Value 1 }").c_str(), "RW"},
        {(converter + "Integer V { pIsAvailable Zero; Value 1 }").c_str(), "NA"},
    });
    TestMap test(knife + "IntReg V { at 0 4 WO; Little }");
    EXPECT_EQ(KindRaisedBy([&] { test.Flt("X").GetValue(); }), "Access");
}

TEST(AccessMode, OfCategoriesAndEnumerationsFollowsTheirParts)
{
    const std::string flags = " Integer Zero { Value 0 }"
                              " Integer Ni { pIsImplemented Zero; Value 1 }"
                              " Integer Na { pIsAvailable Zero; Value 1 } Integer Wo { ImposedAccessMode WO; "
                              "Value 1 }";
    const auto category = [&](const char* parts) {
        return std::string("Category X { ") + parts + " }" + flags;
    };
    const auto choice = [&](const char* first, const char* second) {
        return std::string("Enumeration X { EnumEntry A { ") + first + " Value 0 } EnumEntry B { " + second +
               " Value 1 } Value 0 }" + flags;
    };
    const char *ni = "pIsImplemented Zero;", *na = "pIsAvailable Zero;";
    ExpectModes({
        {category("").c_str(), "NI"},
        {category("pFeature Ni").c_str(), "NI"},
        {category("pFeature Ni; pFeature Na").c_str(), "RO"},
        {category("pFeature Wo").c_str(), "RO"},
        {choice("", "").c_str(), "RW"},
        {choice(ni, ni).c_str(), "NI"},
        {choice(ni, na).c_str(), "NA"},
        {choice(na, na).c_str(), "NA"},
        {choice(ni, "").c_str(), "RW"},
        {choice(na, "").c_str(), "RW"},
    });
    ExpectModes({
        {category("pIsImplemented Zero; pFeature Wo").c_str(), "NI"},
        {category("pIsAvailable Zero; pIsLocked Zero; pFeature Wo").c_str(), "RO"},
    });
    TestMap missing(category("pIsImplemented Zero; pFeature Wo") + " Category Root { pFeature X }");
    EXPECT_EQ(missing.Get("Root").GetAccessMode(), NI);
    EXPECT_EQ(missing.Get("Wo").GetAccessMode(), WO);
    TestMap empty("Category X { }");
    EXPECT_EQ(empty.Get("X").GetVisibility(), Invisible);
}

TEST(AccessMode, CanBeImposedAndGivenBackAtRunTime)
{
    TestMap test("Integer X { pValue R } Integer Y { pValue X } IntReg R { at 0 4 RW; Little }");
    INode& x = test.Get("X");
    for (const auto& [imposed, mode] :
         {std::pair{RO, "RO"}, {WO, "WO"}, {NA, "NA"}, {NI, "NI"}, {RW, "RW"}, {RO, "RO"}, {RW, "RW"}})
    {
        x.ImposeAccessMode(imposed);
        EXPECT_EQ(ModeOf(test, "X"), mode);
        EXPECT_EQ(ModeOf(test, "Y"), mode);
        EXPECT_EQ(ModeOf(test, "R"), "RW");
    }
}

TEST(AccessMode, WritingWithoutVerificationPassesSomeLimitsButNotAll)
{
    const std::string zero = " Integer Zero { Value 0 } Integer One { Value 1 }";
    struct Write
    {
        const char* node;
        int64_t value;
        const char* raised;     ///< verified
        const char* unverified; ///< not
    };
    for (const Write& c : {
             Write{"Integer X { Value 0; Max 5 }", 6, "OutOfRange", "none"},
             Write{"Integer X { Value 0; Inc 2 }", 3, "OutOfRange", "none"},
             Write{"Integer X { pIsLocked One; Value 0 }", 3, "Access", "none"},
             Write{"Integer X { pIsAvailable Zero; Value 0 }", 3, "Access", "none"},
             Write{"Integer X { pIsImplemented Zero; Value 0 }", 3, "Access", "Access"},
             Write{"Integer X { pValue R } IntReg R { at 0 4 RO; Little }", 3, "Access", "Access"},
             Write{"Integer X { pValue Y; Max 10 } Integer Y { Value 0; Max 5 }", 6, "OutOfRange", "none"},
             Write{"Integer X { pValue R } IntReg R { at 0 1 RW; Little }", 256, "OutOfRange", "none"},
         })
    {
        SCOPED_TRACE(c.node);
        TestMap test(c.node + zero);
        EXPECT_EQ(KindRaisedBy([&] { test.Int("X").SetValue(c.value); }), c.raised);
        EXPECT_EQ(KindRaisedBy([&] { test.Int("X").SetValue(c.value, false); }), c.unverified);
    }
    TestMap test("IntReg R { at 0 1 RW; Little }");
    test.port.mode = RO;
    EXPECT_EQ(KindRaisedBy([&] { test.Int("R").SetValue(1); }), "Access");
    test.Int("R").SetValue(0x1fe, false);
    EXPECT_EQ(test.port.Peek(0, 2), (FakePort::Bytes{0xfe, 0}));
}

TEST(AccessMode, ImposedLimitsAreShownButNotEnforced)
{
    TestMap test("Integer X { Value 0; Min 0; Max 10 } Float F { Value 0; Min 0; Max 10 }");
    const auto limits = [](auto& node) { return std::pair{node.GetMin(), node.GetMax()}; };
    IInteger& x = test.Int("X");
    x.ImposeMin(-5);
    x.ImposeMax(20);
    EXPECT_EQ(limits(x), (std::pair<int64_t, int64_t>(0, 10))) << "never looser than by nature";
    x.ImposeMin(8);
    x.ImposeMax(4);
    EXPECT_EQ(limits(x), (std::pair<int64_t, int64_t>(8, 4)));
    x.SetValue(6);
    IFloat& f = test.Flt("F");
    f.ImposeMin(2.5);
    f.ImposeMax(7.5);
    EXPECT_EQ(limits(f), std::pair(2.5, 7.5));
    f.SetValue(9);
    EXPECT_EQ(f.GetValue(), 9);
}

TEST(AccessMode, ImposedLimitsBindTheNodesAbove)
{
    TestMap test(R"(
        Integer Top { pValue Mid } Integer OwnMax { pValue Mid; Max 90 } Float Real { pValue Mid }
        Integer Mid { Value 0; Min 0; Max 100 }
        IntSwissKnife Shown { pVariable[Name=V.Max] Mid; Formula V.Max }
        Integer Rounded { pValue FMid } Float FMid { Value 0; Min 0; Max 10 })");
    EXPECT_EQ(test.Int("Shown").GetValue(), 100);
    test.Int("Mid").ImposeMin(3);
    test.Int("Mid").ImposeMax(20);
    test.Flt("FMid").ImposeMax(2.5);
    EXPECT_EQ(test.Int("Top").GetMin(), 3);
    EXPECT_EQ(test.Int("Top").GetMax(), 20);
    EXPECT_EQ(test.Int("Shown").GetValue(), 20);
    EXPECT_EQ(test.Int("OwnMax").GetMax(), 90);
    EXPECT_EQ(test.Flt("Real").GetMax(), 20);
    EXPECT_EQ(test.Int("Rounded").GetMax(), 3);
    EXPECT_EQ(KindRaisedBy([&] { test.Int("Top").SetValue(30); }), "OutOfRange");
    test.Int("Mid").SetValue(30);
    EXPECT_EQ(test.Int("Mid").GetValue(true), 30);
    EXPECT_EQ(KindRaisedBy([&] { test.Int("Top").GetValue(true); }), "OutOfRange");
}

TEST(AccessMode, VisibilityIsTheNodesOwnAndCanOnlyBecomeStricter)
{
    TestMap test("Integer X { pValue Y } Integer Y { Visibility Guru; Value 1 }");
    EXPECT_EQ(test.Get("X").GetVisibility(), Beginner);
    INode& y = test.Get("Y");
    for (const auto& [imposed, seen] : {std::pair{Beginner, Guru}, {Invisible, Invisible}, {Expert, Guru}}) {
        y.ImposeVisibility(imposed);
        EXPECT_EQ(y.GetVisibility(), seen);
    }
}

TEST(AccessMode, EntriesAreReadOnlyUnlessTheirFlagsSayMore)
{
    TestMap test(R"(
        Enumeration E {
            EnumEntry A { Value 0 }
            EnumEntry B { pIsAvailable Zero; Value 1 }
            EnumEntry C { pIsImplemented Zero; Value 2 }
            EnumEntry D { pIsLocked One; Value 3 }
            pValue R }
        Integer Zero { Value 0 } Integer One { Value 1 }
        IntReg R { at 0 4 WO; Little })");
    std::string modes;
    for (const char* entry : {"EnumEntry_E_A", "EnumEntry_E_B", "EnumEntry_E_C", "EnumEntry_E_D"})
        modes += ModeOf(test, entry);
    EXPECT_EQ(modes, "RONANIRO");
    EXPECT_EQ(ModeOf(test, "E"), "WO");
    test.Enum("E") = "D";
    EXPECT_EQ(test.port.Peek(0, 1).front(), 3) << "locked entries can be chosen";
}
