// SPDX-License-Identifier: Apache-2.0
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

using testing::ElementsAre;

constexpr const char* kNodes = R"(
    <Category Name="Root"><pFeature>Width</pFeature><pFeature>Mode</pFeature><pFeature>Other</pFeature></Category>
    <Integer Name="Width"><pValue>Conv</pValue><pMax>Max</pMax></Integer>
    <IntConverter Name="Conv"><Constant Name="K">2</Constant><FormulaTo>FROM*K</FormulaTo><FormulaFrom>TO/K</FormulaFrom>
        <pValue>Reg</pValue></IntConverter>
    <IntReg Name="Reg"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>
        <pInvalidator>Reset</pInvalidator><Endianess>BigEndian</Endianess></IntReg>
    <Command Name="Reset"><Value>0</Value><CommandValue>1</CommandValue></Command>
    <IntSwissKnife Name="Max"><pVariable Name="A.Entry.On">Mode</pVariable><Formula>A.Entry.On</Formula></IntSwissKnife>
    <Enumeration Name="Mode"><EnumEntry Name="On"><Value>1</Value></EnumEntry><EnumEntry Name="Off"><Value>0</Value></EnumEntry>
        <Value>0</Value></Enumeration>
    <Integer Name="Other"><Value>0</Value></Integer>
    <Port Name="Device"/>)";

TEST(Subtree, IsWhatANodeNeeds)
{
    const auto whole = ReadNodes(kNodes);
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
    const auto whole = ReadNodes(kNodes);
    for (const char* node : {"EnumEntry_Mode_On", "_Conv_K", "Conv_ConvertTo"}) {
        const auto part = ExtractSubtree(*whole, whole->FindNode(node));
        EXPECT_NE(part->FindNode(node), kNoNode);
        EXPECT_EQ(Content(*ReadDescription(WriteXml(*part))), Content(*part)) << node;
    }
}

TEST(Subtree, OfRootIsAllThatFeaturesNeedAndOutlivesTheWhole)
{
    auto whole = ReadNodes(kNodes);
    const auto part = ExtractSubtree(*whole, whole->FindNode("Root"));
    const std::vector<std::string> expected = Content(*whole);
    whole.reset();
    EXPECT_EQ(Content(*part), expected);
}

} // namespace
} // namespace KxGenApi
