// SPDX-License-Identifier: Apache-2.0
#include "ToolsTestSupport.h"

using namespace GenApi;
using namespace KxGenApiTest;
using testing::ElementsAre;

namespace
{
/// An outer selector of three entries, one of them not available, and an inner one whose range depends on it:
/// 10 to 14 in steps of 2 for A, nothing for C.
constexpr const char* kNested = R"(
    Enumeration Outer {
        EnumEntry A { Value 0 } EnumEntry B { pIsAvailable Never; Value 1 } EnumEntry C { Value 2 }
        EnumEntry D { Value 3 } pValue OuterReg; pSelected Inner }
    Integer Never { Value 0 }
    Integer Inner { pValue InnerReg; Min 10; pMax InnerMax; Inc 2; pSelected Target }
    IntSwissKnife InnerMax { pVariable[Name=O] OuterReg; Formula (O=0) ? 14 : ((O=2) ? 9 : 11) }
    Integer Target { Value 0 }
    IntReg OuterReg { at 0 4 RW; Little } IntReg InnerReg { at 4 4 RW; Little })";

std::vector<std::string> AllSettings(ISelectorDigit& digit)
{
    std::vector<std::string> settings;
    for (bool set = digit.SetFirst(); set; set = digit.SetNext())
        settings.emplace_back(digit.ToString());
    return settings;
}
} // namespace

TEST(SelectorSet, CountsThroughNestedSelectorsTheInnerOneFastest)
{
    CTestMap map(kNested);
    map.memory.Word(0) = 3;
    map.memory.Word(4) = 10;
    CSelectorSet set(map["Target"]);
    EXPECT_THAT(AllSettings(set), ElementsAre("[Outer=A, Inner=10]", "[Outer=A, Inner=12]",
                                              "[Outer=A, Inner=14]", "[Outer=D, Inner=10]"));
    set.Restore();
    EXPECT_EQ(map.Text("Outer"), "D");
    EXPECT_EQ(map.Int("Inner"), 10);
}

TEST(SelectorSet, ListsOuterSelectorsFirst)
{
    CTestMap map(kNested);
    FeatureList_t list;
    CSelectorSet(map["Target"]).GetSelectorList(list, true);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0]->GetNode()->GetName(), "Outer");
    EXPECT_EQ(list[1]->GetNode()->GetName(), "Inner");
    CSelectorSet(map["Inner"]).GetSelectorList(list, true);
    EXPECT_EQ(list.size(), 3u);
    CSelectorSet(map["Inner"]).GetSelectorList(list);
    EXPECT_EQ(list.size(), 1u);
}

TEST(SelectorSet, CountsTheFirstOfEqualSelectorsFastest)
{
    CTestMap map(R"(
        Boolean A { Value 0; pSelected Deep; pSelected Offs }
        Boolean B { Value 0; pSelected Deep; pSelected Offs }
        Boolean C { Value 0; pSelected Deep } Integer Offs { Value 0 } Integer Deep { Value 0 })");
    CSelectorSet offs(map["Offs"]), deepSet(map["Deep"]);
    EXPECT_THAT(AllSettings(offs), ElementsAre("[B=0, A=0]", "[B=0, A=1]", "[B=1, A=0]", "[B=1, A=1]"));
    EXPECT_EQ(deepSet.ToString(), "[C=0, B=1, A=1]");

    CSelectorState state;
    EXPECT_FALSE(state.SetFirst());
    EXPECT_THROW(state.GetNodeName(), GenICam::OutOfRangeException);
    offs.GetState(state);
    ASSERT_TRUE(state.SetFirst());
    EXPECT_EQ(state.GetNodeName() + "=" + state.GetNodeValue(), "B=1");
    ASSERT_TRUE(state.SetNext());
    EXPECT_FALSE(state.SetNext());
    state.AddSelector("Nobody", "1");
    offs.Restore();
    EXPECT_EQ(offs.ToString(), "[B=0, A=0]");
    EXPECT_TRUE(state.RestoreState(map)) << "unknown names are passed over";
    EXPECT_EQ(offs.ToString(), "[B=1, A=1]");
    state.AddSelector("A", "maybe");
    GenICam::gcstring_vector errors;
    EXPECT_FALSE(state.RestoreState(map, &errors));
    EXPECT_EQ(std::string(errors.at(0)).find("Error while writing selector 'A': "), 0u);
}

TEST(SelectorSet, WritesThePresentSettingAgainWithoutTick)
{
    CTestMap map(kNested);
    CSelectorSet set(map["Target"]);
    ASSERT_TRUE(set.SetFirst());
    ASSERT_TRUE(set.SetNext());
    map.SetInt("Inner", 10);
    EXPECT_TRUE(set.SetNext(false));
    EXPECT_EQ(set.ToString(), "[Outer=A, Inner=12]");
}

TEST(SelectorSet, IsEmptyForAFeatureWithoutSelectors)
{
    CTestMap map(kNested);
    CSelectorSet set(map["Outer"]);
    EXPECT_TRUE(set.IsEmpty());
    EXPECT_THAT(AllSettings(set), ElementsAre("[]"));
    EXPECT_FALSE(CSelectorSet(map["Target"]).IsEmpty());
    EXPECT_THROW(CSelectorSet(nullptr), GenICam::InvalidArgumentException);
}

TEST(SelectorSet, LeavesSelectorsAloneThatCannotBeWritten)
{
    CTestMap map(R"(
        Integer Fixed { pValue FixedReg; pSelected Target } IntReg FixedReg { at 0 4 RO; Little }
        Boolean Switch { pValue SwitchReg; pSelected Target } IntReg SwitchReg { at 4 4 RW; Little }
        Integer Target { Value 0 })");
    CSelectorSet set(map["Target"]);
    EXPECT_THAT(AllSettings(set), ElementsAre("[Switch=0]", "[Switch=1]"));
}

TEST(SelectorSet, ReachesBothEndsOfTheIntegers)
{
    CTestMap map("Integer Wide { Value 0; Min -9223372036854775807; Max 9223372036854775807;"
                 "    Inc 9223372036854775807; pSelected Target } Integer Target { Value 0 }");
    CSelectorSet set(map["Target"]);
    EXPECT_THAT(AllSettings(set),
                ElementsAre("[Wide=-9223372036854775807]", "[Wide=0]", "[Wide=9223372036854775807]"));
}

TEST(SelectorSet, SurvivesSelectorsInACircle)
{
    CTestMap map("Integer A { Value 0; Min 0; Max 1; pSelected B }"
                 "Integer B { Value 0; Min 0; Max 1; pSelected A }");
    CSelectorSet set(map["A"]);
    EXPECT_THAT(AllSettings(set), ElementsAre("[B=0]", "[B=1]"));
}

TEST(SelectorSet, RefusesEndlessChains)
{
    std::string chain;
    for (int i = 0; i < 2000; ++i)
        chain += "Boolean S" + std::to_string(i) + " { Value 0; pSelected S" + std::to_string(i + 1) + " }";
    CTestMap map(chain + "Boolean S2000 { Value 0 }");
    EXPECT_EQ(RaisedBy<GenICam::RuntimeException>([&] { CSelectorSet set(map["S3"]); }), "nothing thrown");
    EXPECT_THAT(RaisedBy<GenICam::RuntimeException>([&] { CSelectorSet set(map["S2000"]); }),
                testing::HasSubstr("64"));
}
