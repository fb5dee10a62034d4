// SPDX-License-Identifier: Apache-2.0
#include "ToolsTestSupport.h"

using namespace GenApi;
using namespace KxGenApiTest;
using testing::ElementsAre;

namespace
{
/// An outer selector of three entries, one of them not available, and an inner one whose range depends on it:
/// 10 to 14 in steps of 2 for A, nothing for C.
std::string Nested()
{
    return "<Enumeration Name=\"Outer\"><EnumEntry Name=\"A\"><Value>0</Value></EnumEntry>"
           "<EnumEntry Name=\"B\"><pIsAvailable>Never</pIsAvailable><Value>1</Value></EnumEntry>"
           "<EnumEntry Name=\"C\"><Value>2</Value></EnumEntry><EnumEntry "
           "Name=\"D\"><Value>3</Value></EnumEntry>"
           "<pValue>OuterReg</pValue><pSelected>Inner</pSelected></Enumeration>" +
           IntReg("OuterReg", 0) + "<Integer Name=\"Never\"><Value>0</Value></Integer>" +
           "<Integer Name=\"Inner\"><pValue>InnerReg</pValue><Min>10</Min><pMax>InnerMax</pMax><Inc>2</Inc>"
           "<pSelected>Target</pSelected></Integer>" +
           IntReg("InnerReg", 4) +
           "<IntSwissKnife Name=\"InnerMax\"><pVariable Name=\"O\">OuterReg</pVariable>"
           "<Formula>(O=0) ? 14 : ((O=2) ? 9 : 11)</Formula></IntSwissKnife>"
           "<Integer Name=\"Target\"><Value>0</Value></Integer>";
}

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
    CTestMap map(Nested());
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
    CTestMap map(Nested());
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
    const auto selector = [](const std::string& name, const std::string& selected) {
        return "<Boolean Name=\"" + name + "\"><Value>0</Value>" + selected + "</Boolean>";
    };
    const std::string deep = "<pSelected>Deep</pSelected>", both = deep + "<pSelected>Offs</pSelected>";
    CTestMap map(
        selector("A", both) + selector("B", both) + selector("C", deep) +
        "<Integer Name=\"Offs\"><Value>0</Value></Integer><Integer Name=\"Deep\"><Value>0</Value></Integer>");
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
    CTestMap map(Nested());
    CSelectorSet set(map["Target"]);
    ASSERT_TRUE(set.SetFirst());
    ASSERT_TRUE(set.SetNext());
    map.SetInt("Inner", 10);
    EXPECT_TRUE(set.SetNext(false));
    EXPECT_EQ(set.ToString(), "[Outer=A, Inner=12]");
}

TEST(SelectorSet, IsEmptyForAFeatureWithoutSelectors)
{
    CTestMap map(Nested());
    CSelectorSet set(map["Outer"]);
    EXPECT_TRUE(set.IsEmpty());
    EXPECT_THAT(AllSettings(set), ElementsAre("[]"));
    EXPECT_FALSE(CSelectorSet(map["Target"]).IsEmpty());
    EXPECT_THROW(CSelectorSet(nullptr), GenICam::InvalidArgumentException);
}

TEST(SelectorSet, LeavesSelectorsAloneThatCannotBeWritten)
{
    CTestMap map(
        "<Integer Name=\"Fixed\"><pValue>FixedReg</pValue><pSelected>Target</pSelected></Integer>" +
        IntReg("FixedReg", 0, 4, "Device", "LittleEndian", "RO") +
        "<Boolean Name=\"Switch\"><pValue>SwitchReg</pValue><pSelected>Target</pSelected></Boolean>" +
        IntReg("SwitchReg", 4) + "<Integer Name=\"Target\"><Value>0</Value></Integer>");
    CSelectorSet set(map["Target"]);
    EXPECT_THAT(AllSettings(set), ElementsAre("[Switch=0]", "[Switch=1]"));
}

TEST(SelectorSet, ReachesBothEndsOfTheIntegers)
{
    CTestMap map(
        "<Integer Name=\"Wide\"><Value>0</Value><Min>-9223372036854775807</Min>"
        "<Max>9223372036854775807</Max><Inc>9223372036854775807</Inc><pSelected>Target</pSelected></Integer>"
        "<Integer Name=\"Target\"><Value>0</Value></Integer>");
    CSelectorSet set(map["Target"]);
    EXPECT_THAT(AllSettings(set),
                ElementsAre("[Wide=-9223372036854775807]", "[Wide=0]", "[Wide=9223372036854775807]"));
}

TEST(SelectorSet, SurvivesSelectorsInACircle)
{
    CTestMap map(
        "<Integer Name=\"A\"><Value>0</Value><Min>0</Min><Max>1</Max><pSelected>B</pSelected></Integer>"
        "<Integer Name=\"B\"><Value>0</Value><Min>0</Min><Max>1</Max><pSelected>A</pSelected></Integer>");
    CSelectorSet set(map["A"]);
    EXPECT_THAT(AllSettings(set), ElementsAre("[B=0]", "[B=1]"));
}

TEST(SelectorSet, RefusesEndlessChains)
{
    std::string chain;
    for (int i = 0; i < 2000; ++i)
        chain += "<Boolean Name=\"S" + std::to_string(i) + "\"><Value>0</Value><pSelected>S" +
                 std::to_string(i + 1) + "</pSelected></Boolean>";
    CTestMap map(chain + "<Boolean Name=\"S2000\"><Value>0</Value></Boolean>");
    EXPECT_EQ(RaisedBy<GenICam::RuntimeException>([&] { CSelectorSet set(map["S3"]); }), "nothing thrown");
    EXPECT_THAT(RaisedBy<GenICam::RuntimeException>([&] { CSelectorSet set(map["S2000"]); }),
                testing::HasSubstr("64"));
}
