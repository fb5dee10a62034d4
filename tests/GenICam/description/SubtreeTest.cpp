// SPDX-License-Identifier: Apache-2.0
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

using testing::ElementsAre;

constexpr const char* kNodes = R"(
    Category Root { pFeature Width; pFeature Mode; pFeature Other }
    Integer Width { pValue Conv; pMax Max }
    IntConverter Conv { Constant[Name=K] 2; FormulaTo FROM*K; FormulaFrom TO/K; pValue Reg }
    IntReg Reg { at 0 4 RW; pInvalidator Reset; Big } Command Reset { Value 0; CommandValue 1 }
    IntSwissKnife Max { pVariable[Name=A.Entry.On] Mode; Formula A.Entry.On }
    Enumeration Mode { EnumEntry On { Value 1 } EnumEntry Off { Value 0 } Value 0 }
    Integer Other { Value 0 } Port Device { })";

TEST(Subtree, IsWhatANodeNeeds)
{
    const auto whole = ReadOutline(kNodes);
    const auto part = ExtractSubtree(*whole, whole->FindNode("Width"));
    std::vector<std::string> names = AllNames(*part);
    std::sort(names.begin(), names.end());
    EXPECT_THAT(names,
                ElementsAre("Conv", "Conv_ConvertFrom", "Conv_ConvertTo", "Device", "EnumEntry_Mode_Off",
                            "EnumEntry_Mode_On", "Max", "Mode", "Reg", "Reset", "Root", "Width", "_Conv_K"));
    EXPECT_THAT(DependentNames(*part, "Width"), ElementsAre("Root"));
    EXPECT_TRUE(part->Node(part->FindNode("Width")).isFeature);
    EXPECT_FALSE(part->Node(part->FindNode("Mode")).isFeature);
    EXPECT_EQ(part->Device().modelName, "M");
    EXPECT_EQ(part->Node(part->Find(part->FindNode("Width"), Prop::pMax)->node).name, "Max");
    EXPECT_EQ(Content(*ReadDescription(WriteXml(*part))), Content(*part));
}

TEST(Subtree, OfElementsThatAreNodesHoldsTheirOwner)
{
    const auto whole = ReadOutline(kNodes);
    for (const char* node : {"EnumEntry_Mode_On", "_Conv_K", "Conv_ConvertTo"}) {
        const auto part = ExtractSubtree(*whole, whole->FindNode(node));
        EXPECT_NE(part->FindNode(node), kNoNode);
        EXPECT_EQ(Content(*ReadDescription(WriteXml(*part))), Content(*part)) << node;
    }
}

TEST(Subtree, OfRootIsAllThatFeaturesNeedAndOutlivesTheWhole)
{
    auto whole = ReadOutline(kNodes);
    const auto part = ExtractSubtree(*whole, whole->FindNode("Root"));
    const std::vector<std::string> expected = Content(*whole);
    whole.reset();
    EXPECT_EQ(Content(*part), expected);
}

} // namespace
} // namespace KxGenApi
