// SPDX-License-Identifier: Apache-2.0
// What is written says the same as what was read.
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

TEST(WriteXml, SaysTheSameInTheSameOrder)
{
    const auto first = ReadNodes(R"(
        <Category Name="Root" NameSpace="Standard"><pFeature>Mode</pFeature><pFeature>X</pFeature></Category>
        <Enumeration Name="Mode"><ToolTip>a &lt;b&gt; &amp; "c"
line &#13;&#9; end </ToolTip><EnumEntry Name="On" NameSpace="Standard"><pIsAvailable>I</pIsAvailable><Value>1</Value>
            <NumericValue>2.5</NumericValue><IsSelfClearing>Yes</IsSelfClearing></EnumEntry><pValue>R</pValue><pSelected>X</pSelected></Enumeration>
        <Converter Name="X"><pVariable Name="V.Entry.On">Mode</pVariable><Constant Name="C">1.5</Constant>
            <Expression Name="E">V*C</Expression><FormulaTo>FROM&lt;E</FormulaTo><FormulaFrom>TO</FormulaFrom>
            <pValue>F</pValue><Slope>Increasing</Slope></Converter>
        <Integer Name="I"><pIndex>Mode</pIndex><ValueIndexed Index="1">7</ValueIndexed><pValueIndexed Index="2">R</pValueIndexed>
            <ValueDefault>0</ValueDefault></Integer>
        <IntReg Name="R"><IntSwissKnife Name="Off"><Constant Name="K">4</Constant><Formula>K</Formula></IntSwissKnife>
            <Address>0x10</Address><pIndex Offset="0x20">J</pIndex><pIndex pOffset="J">J</pIndex><Length>4</Length>
            <AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
        <Integer Name="J"><Value>1</Value></Integer>
        <StructReg Comment="S"><Visibility>Expert</Visibility><Address>0</Address><IntSwissKnife Name="SOff"><Formula>8</Formula></IntSwissKnife>
            <Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><PollingTime>100</PollingTime>
            <pInvalidator>R</pInvalidator><Endianess>LittleEndian</Endianess>
            <StructEntry Name="A"><ToolTip>t</ToolTip><pInvalidator>I</pInvalidator><LSB>0</LSB><MSB>3</MSB><Sign>Signed</Sign></StructEntry>
            <StructEntry Name="B"><AccessMode>RO</AccessMode><Bit>5</Bit><Representation>Boolean</Representation></StructEntry></StructReg>
        <FloatReg Name="F"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></FloatReg>
        <String Name="T"><Value> two  blanks </Value></String><Command Name="Z"><Value>0</Value><CommandValue>1</CommandValue></Command>
        <TextDesc Name="D"><Key>0x81</Key></TextDesc>
        <Port Name="Device"><ChunkID>9C40</ChunkID></Port>)");
    const std::string xml = WriteXml(*first);
    const auto second = ReadDescription(xml);
    EXPECT_EQ(Content(*second), Content(*first));
    EXPECT_EQ(WriteXml(*second), xml);
    EXPECT_EQ(second->Device().modelName, "M");
    EXPECT_EQ(second->Device().subMinor, 4);
    EXPECT_EQ(second->Device().versionGuid, "G");
}

TEST(WriteXml, KeepsTheOrderOfNodes)
{
    const auto first = ReadOutline(
        "Integer A { pValue C } Integer B { pValue D } Integer C { Value 1 } Integer D { Value 1 }");
    EXPECT_EQ(AllNames(*ReadDescription(WriteXml(*first))), AllNames(*first));
}

} // namespace
} // namespace KxGenApi
