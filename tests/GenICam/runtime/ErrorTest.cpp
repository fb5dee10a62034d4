// SPDX-License-Identifier: Apache-2.0
// Which exception a misuse raises, and what it tells.
#include "TestMap.h"

#include <cmath>
#include <limits>

using namespace GenApi;
using namespace KxTest;

namespace
{

constexpr const char* kOutline = R"(
    Integer Int { Value 10; Min 10; Max 20; Inc 5 }
    Integer BadInc { Value 0; Inc 0 }
    Float Flt { Value 1.5; Min 1; Max 2; Inc 0.25 }
    Float Free { Value 0 }
    Float Listed { Value 1; ValidValueSet 1\;2.5 }
    Integer Na { pIsAvailable Zero; Value 1; Unit mm }
    Integer Ni { pIsImplemented Zero; Value 1 }
    Integer Locked { pIsLocked One; Value 1 }
    Integer Zero { Value 0 } Integer One { Value 1 }
    Integer Ro { pValue RoReg } IntReg RoReg { at 0 4 RO; Little }
    Integer Wo { pValue WoReg } IntReg WoReg { at 4 4 WO; Little }
    Integer Far { pValue Middle } Integer Middle { pValue Far0 } IntReg Far0 { at 8 4 RW; Little }
    String Text { Value x })";

/// An outline of that many levels: '#' stands for the number of one, '~' for that of the one below.
std::string Levels(int count, std::string_view level)
{
    std::string outline;
    for (int i = 1; i <= count; ++i)
        for (const char c : level) {
            if (c == '#' || c == '~')
                outline += std::to_string(c == '#' ? i : i - 1);
            else
                outline += c;
        }
    return outline;
}

} // namespace

TEST(Errors, HaveTheClassOfTheirCauseAndTellValueAndLimit)
{
    TestMap test(kOutline);
    struct Case
    {
        const char* name;
        std::function<void()> call;
        const char* kind;
        std::vector<const char*> words; ///< of the description
    };
    const auto set = [&](const char* name, int64_t value) {
        return [=, &test] { test.Int(name).SetValue(value); };
    };
    const auto setReal = [&](const char* name, double value) {
        return [=, &test] { test.Flt(name).SetValue(value); };
    };
    const double nan = std::nan(""), infinity = std::numeric_limits<double>::infinity();
    for (const Case& c : {
             Case{"Int", set("Int", 5), "OutOfRange", {"5", "10"}},
             Case{"Int", set("Int", 25), "OutOfRange", {"25", "20"}},
             Case{"Int", set("Int", 12), "OutOfRange", {"12", "5"}},
             Case{"Int", set("Int", 15), "none", {}},
             Case{"BadInc", set("BadInc", 1), "LogicalError", {"positive"}},
             Case{"Flt", setReal("Flt", 0.5), "OutOfRange", {"0.5", "1.0"}},
             Case{"Flt", setReal("Flt", 2.5), "OutOfRange", {"2.5", "2.0"}},
             Case{"Flt", setReal("Flt", 1.6), "none", {}},
             Case{"Free", setReal("Free", nan), "none", {}},
             Case{"Free", setReal("Free", infinity), "OutOfRange", {}},
             Case{"Free", setReal("Free", -infinity), "OutOfRange", {}},
             Case{"Free", [&] { test.Flt("Free").GetInc(); }, "Runtime", {"increment"}},
             Case{"Na", set("Na", 1), "Access", {"writable"}},
             Case{"Ni", set("Ni", 1), "Access", {"writable"}},
             Case{"Locked", set("Locked", 1), "Access", {"writable"}},
             Case{"Ro", set("Ro", 1), "Access", {"writable"}},
             Case{"Wo", [&] { test.Int("Wo").GetValue(); }, "Access", {"readable"}},
             Case{"Na", [&] { test.Int("Na").GetValue(); }, "Access", {"readable"}},
             Case{"Ni", [&] { test.Int("Ni").GetValue(); }, "Access", {"readable"}},
             Case{"Na", [&] { test.Value("Na").ToString(); }, "Access", {"readable"}},
             Case{"Na", [&] { test.Int("Na").GetMin(); }, "Access", {"available"}},
             Case{"Ni", [&] { test.Int("Ni").GetMax(); }, "Access", {"available"}},
             Case{"Na", [&] { test.Int("Na").GetInc(); }, "Access", {"available"}},
             Case{"Na", [&] { test.Int("Na").GetUnit(); }, "none", {}},
             Case{"Ni", [&] { test.Int("Ni").GetRepresentation(); }, "none", {}},
             Case{"Ni", [&] { test.Get("Ni").GetDisplayName(); }, "none", {}},
             Case{"Int", [&] { test.Value("Int").FromString("soup"); }, "InvalidArgument", {"soup"}},
         })
    {
        SCOPED_TRACE(c.name);
        const Raised raised = RaisedBy(c.call);
        EXPECT_EQ(raised.kind, c.kind) << raised.what;
        for (const char* word : c.words)
            EXPECT_NE(raised.description.find(word), std::string::npos) << raised.description;
        if (raised.kind != "none") {
            EXPECT_NE(raised.what.find("'" + std::string(c.name) + "'"), std::string::npos) << raised.what;
        }
    }
}

TEST(Errors, NameClassNodeAndCallBesideTheDescription)
{
    TestMap test(kOutline);
    const Raised raised = RaisedBy([&] { test.Int("Int").SetValue(5); });
    for (const char* part : {"OutOfRangeException", "'Int'", "'Int.SetValue()'"})
        EXPECT_NE(raised.what.find(part), std::string::npos) << raised.what;
    EXPECT_EQ(raised.what.find(raised.description), 0u) << raised.what;
    EXPECT_EQ(raised.description.find("SetValue"), std::string::npos) << raised.description;
    for (const auto& [call, name] : std::vector<std::pair<std::function<void()>, const char*>>{
             {[&] { test.Int("Wo").GetValue(); }, "Wo.GetValue()"},
             {[&] { test.Value("Wo").ToString(); }, "Wo.ToString()"},
             {[&] { test.Value("Ro").FromString("1"); }, "Ro.FromString()"},
             {[&] { test.Int("Na").GetMax(); }, "Na.GetMax()"},
         })
        EXPECT_NE(RaisedBy(call).what.find(name), std::string::npos) << RaisedBy(call).what;
}

TEST(Errors, OfThePortPassThroughUnchanged)
{
    struct Private // no exception class at all
    {
        int code;
    };
    TestMap test(kOutline);
    test.port.onRead = [] { throw Private{42}; };
    try {
        test.Int("Far").GetValue();
        FAIL() << "nothing raised";
    } catch (const Private& e) {
        EXPECT_EQ(e.code, 42);
    }
    test.port.onRead = [] { throw std::length_error("short"); };
    EXPECT_THROW(test.Value("Far").ToString(), std::length_error);
    test.port.onRead = [] { throw TIMEOUT_EXCEPTION("no answer after %d ms", 5); };
    try {
        test.Int("Far").GetValue();
        FAIL() << "nothing raised";
    } catch (const GenICam::TimeoutException& e) {
        EXPECT_STREQ(e.GetDescription(), "no answer after 5 ms");
    }
    test.port.onRead = nullptr;
    test.port.Put(8, {7});
    EXPECT_EQ(test.Int("Far").GetValue(), 7) << "and nothing of it stays";
}

TEST(Errors, ValidValuesAreShownButNotEnforced)
{
    TestMap test("Integer X { Value 1; Min 0; Max 5; ValidValueSet 1\\;2\\;4\\;8 }");
    IInteger& x = test.Int("X");
    EXPECT_EQ(x.GetIncMode(), listIncrement);
    EXPECT_EQ(x.GetListOfValidValues(true).size(), 3u);
    EXPECT_EQ(x.GetListOfValidValues(false).size(), 4u);
    x.SetValue(3);
    EXPECT_EQ(x.GetValue(), 3);
}

TEST(Errors, DeepChainsOfNodesAreErrorsAndNoCrash)
{
    constexpr int kDepth = 20000;
    std::string outline = "Integer N0 { Value 7 } ";
    for (int i = 1; i <= kDepth; ++i)
        outline += "Integer N" + std::to_string(i) + " { pValue N" + std::to_string(i - 1) + " } ";
    std::unique_ptr<TestMap> test;
    const Raised load = RaisedBy([&] { test = std::make_unique<TestMap>(outline); });
    if (!test) { // refusing such a file is as good
        EXPECT_EQ(load.kind, "Runtime") << load.what;
        return;
    }
    const std::string last = "N" + std::to_string(kDepth);
    const auto good = [](const Raised& raised) {
        return raised.kind == "LogicalError" || raised.kind == "none";
    };
    for (const auto& call : std::vector<std::function<void()>>{
             [&] { test->Int(last.c_str()).GetValue(); }, [&] { test->Int(last.c_str()).SetValue(1); },
             [&] { test->Get(last.c_str()).GetAccessMode(); }, [&] { test->Int(last.c_str()).GetMax(); },
             [&] { test->Get(last.c_str()).GetCachingMode(); }, [&] { test->Int(last.c_str()).GetUnit(); },
             [&] { test->Int("N0").SetValue(2); }, [&] { test->map._InvalidateNodes(); },
             [&] {
                 NodeList_t nodes;
                 test->Get(last.c_str()).GetChildren(nodes, ctTerminalNodes);
             }})
        EXPECT_PRED1(good, RaisedBy(call));
    EXPECT_EQ(test->Int("N10").GetValue(), 2) << "the map is alive";
}

TEST(Errors, ReferencesThatForkLevelByLevelEnd)
{
    // Nothing is cached, so each level asks twice what lies below it.
    const std::string outline =
        "IntReg N0 { at 0 4 RO; Cachable NoCache; Little } Category C0 { pFeature Hidden } "
        "Integer Hidden { Visibility Guru; Value 1 } " +
        Levels(60, "IntSwissKnife N# { pVariable[Name=A] N~; pVariable[Name=B] N~; Formula A+B } "
                   "Category C# { pFeature C~; pFeature C~ } ");
    TestMap test(outline);
    const Raised raised = RaisedBy([&] { test.Int("N60").GetValue(); });
    EXPECT_EQ(raised.kind, "LogicalError");
    EXPECT_NE(raised.what.find("More than 1000000 nodes"), std::string::npos) << raised.what;
    EXPECT_EQ(test.Int("N3").GetValue(), 0) << "the map is alive";
    EXPECT_EQ(test.Get("C60").GetVisibility(), Guru);
}

TEST(Errors, FlagsThatFailAtEveryLevelEndSoonerThanNodesThatAnswer)
{
    // A failed flag has an answer, so that its node goes on and asks the same again.
    const std::string ladder =
        "IntReg Reg { at 0 4 RO; Cachable NoCache; Little } "
        "IntSwissKnife N0 { pVariable[Name=A] Reg; Formula 1/A } " +
        Levels(40, "IntSwissKnife N# { pIsLocked N~; pVariable[Name=A] N~; Formula A } ");
    for (const std::string& outline : {
             ladder,
             std::string(
                 "Integer N40 { pIsLocked W; pValue Reg; pMin N; pMax N } Integer W { pValue N; pMax M } "
                 "IntSwissKnife M { pVariable[Name=V] N40; pVariable[Name=X.Max] N40; Formula 9-V-X.Max } "
                 "IntSwissKnife N { pIsLocked W; pVariable[Name=V.Max] W; Formula 9-V.Max } "
                 "IntReg Reg { at 0 4 RW; Cachable NoCache; Little }"),
         })
    {
        SCOPED_TRACE(outline.substr(0, 40));
        TestMap test(outline);
        int reads = 0;
        test.port.onRead = [&] { ++reads; };
        EXPECT_EQ(KindRaisedBy([&] { test.Int("N40").GetValue(true); }), "LogicalError");
        EXPECT_LT(reads, 10000);
        EXPECT_EQ(test.Int("Reg").GetValue(), 0) << "the map is alive";
    }
}

TEST(Errors, FlagsThatGoRoundInCirclesAreErrorsAndNoHang)
{
    // Whether a description with such circles is refused or its nodes are is not fixed; that it ends is.
    for (const char* outline : {
             "Integer X { pIsAvailable X; Value 1 }",
             "Integer X { pIsLocked Y; Value 1 } Integer Y { pIsAvailable X; Value 1 }",
             "Integer X { pMin Y; Value 1 } Integer Y { pMin X; Value 1 }",
             "Integer X { pInvalidator Y; Value 1 } Integer Y { pInvalidator X; Value 1 }",
             "Integer X { pSelected Y; Value 1 } Integer Y { Value 0; pSelected X }",
             "Category Root { pFeature C } Category C { pFeature Root; pFeature X } Integer X { Value 1 }",
             "IntReg X { pAddress Y; at 0 4 RW; Little } Integer Y { pIsAvailable X; Value 1 }",
             "Integer X { pIndex Y; pValueIndexed[Index=0] Y; ValueDefault 1 } Integer Y { pMax X; Value 0 }",
         })
    {
        SCOPED_TRACE(outline);
        std::unique_ptr<TestMap> test;
        if (const Raised load = RaisedBy([&] { test = std::make_unique<TestMap>(outline); }); !test) {
            EXPECT_EQ(load.kind, "Runtime") << load.what;
            continue;
        }
        const auto ended = [](const Raised& raised) { return raised.kind != "std"; };
        for (const auto& call : std::vector<std::function<void()>>{
                 [&] { test->Get("X").GetAccessMode(); }, [&] { test->Int("X").GetMin(); },
                 [&] { test->Int("X").SetValue(1); }, [&] { test->Value("X").ToString(); },
                 [&] { test->map._InvalidateNodes(); }})
            EXPECT_PRED1(ended, RaisedBy(call));
    }
}
