// SPDX-License-Identifier: Apache-2.0
// Features that choose what other features stand for.
#include "TestMap.h"

using namespace GenApi;
using namespace KxTest;

namespace
{

constexpr const char* kOutline = R"(
    Category Root { pFeature Outer }
    Integer Outer { pValue OuterReg; pSelected Inner }
    IntReg OuterReg { at 0 4 RW; Little }
    Integer Inner { Value 0; pSelected Gain; pSelected Loose }
    Integer Gain { pValue GainReg }
    IntReg GainReg { pIndex Inner; at 0x100 4 RW; Little }
    Integer Loose { Value 3 }
    Integer OnLoose { pValue Loose }
    Integer Indexed { pIndex Inner; ValueIndexed[Index=0] 5; ValueDefault 6 }
    Integer Register { Value 0; pSelected Raw }
    IntReg Raw { at 0x200 4 RW; Little }
    Integer OnRaw { pValue Raw })";

std::string Selected(const TestMap& test, const char* name)
{
    FeatureList_t features;
    test.Get<ISelector>(name).GetSelectedFeatures(features);
    return NamesOf(features);
}

std::string Selecting(const TestMap& test, const char* name)
{
    FeatureList_t features;
    test.Get<ISelector>(name).GetSelectingFeatures(features);
    return NamesOf(features);
}

} // namespace

TEST(Selector, KnowsWhatItSelectsDirectlyAndThroughOthers)
{
    TestMap test(kOutline);
    EXPECT_TRUE(test.Get<ISelector>("Outer").IsSelector());
    EXPECT_FALSE(test.Get<ISelector>("Gain").IsSelector());
    EXPECT_EQ(Selected(test, "Gain"), "");
    EXPECT_EQ(Selected(test, "Register"), "OnRaw Raw");
    EXPECT_EQ(Selected(test, "Inner"), "Gain Loose OnLoose");
    EXPECT_EQ(Selected(test, "Outer"), "Gain GainReg Indexed Inner")
        << "what a value links to Inner, no more";
    EXPECT_EQ(Selecting(test, "Gain"), "Inner Outer");
    EXPECT_EQ(Selecting(test, "Inner"), "Outer");
    EXPECT_EQ(Selecting(test, "Outer"), "");
}

TEST(Selector, UsingItAsAnIndexAloneDoesNotSelect)
{
    TestMap test("Integer S { Value 0; pSelected A } Integer A { Value 0 } "
                 "Integer I { pIndex S; ValueIndexed[Index=0] 5; ValueDefault 6 }");
    EXPECT_EQ(Selected(test, "S"), "A");
    EXPECT_EQ(Selecting(test, "I"), "");
}

TEST(Selector, FiresWhatItSelectsButNotTheOtherWayRound)
{
    TestMap test(kOutline);
    CallbackLog log(test);
    test.Int("Inner").SetValue(1);
    EXPECT_EQ(log.Take(), "Gain GainReg Indexed Inner Loose OnLoose");
}

TEST(Selector, OfANodeWithoutAddressLinkInvalidatesItAllTheSame)
{
    TestMap test(R"(
        Integer S { pValue SReg; pSelected X }
        IntReg SReg { at 0 4 RW; Little }
        Integer X { pValue XReg }
        IntReg XReg { at 4 4 RW; Cachable NoCache; Little })");
    CallbackLog log(test);
    test.Int("S").SetValue(1);
    EXPECT_EQ(log.Take(), "S SReg X");
    test.Int("X").SetValue(1);
    EXPECT_EQ(log.Take(), "X XReg");
}
