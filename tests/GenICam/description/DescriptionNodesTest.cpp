// SPDX-License-Identifier: Apache-2.0
// Which nodes there are, and what they are made of.
#include "DescriptionTestSupport.h"

#include <GenApi/Types.h>

#include <gmock/gmock.h>

#include <cmath>

namespace KxGenApi
{
namespace
{

using testing::ElementsAre;

TEST(DescriptionNodes, AreNumberedByFirstMention)
{
    const auto description = ReadNodes(R"(
        <Category Name="Root"><pFeature>Width</pFeature><pFeature>Mode</pFeature></Category>
        <IntReg Name="Register"><pIsLocked>Lock</pIsLocked><Address>0</Address><Length>4</Length>
            <AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
        <Group Comment="a"><Group Comment="b">
            <Enumeration Name="Mode"><EnumEntry Name="On"><pIsAvailable>Flag</pIsAvailable><Value>1</Value></EnumEntry>
                <pValue>Width</pValue></Enumeration>
        </Group></Group>
        <!-- comment --><?instruction?>
        <Extension><Anything Name="Width"/></Extension>
        <Integer Name="Width"><Extension/><ToolTip>t</ToolTip><Extension>x<y/></Extension><Value>5</Value></Integer>
        <Integer Name="Flag"><Value>1</Value></Integer><Integer Name="Lock"><Value>0</Value></Integer>
        <Port Name="Device"/>)");
    EXPECT_THAT(AllNames(*description), ElementsAre("Root", "Width", "Mode", "Register", "Lock", "Device",
                                                    "EnumEntry_Mode_On", "Flag"));
    EXPECT_EQ(description->FindNode("Flag"), 7u);
    EXPECT_EQ(description->FindNode("flag"), kNoNode);
    EXPECT_EQ(description->FindNode(""), kNoNode);
    EXPECT_EQ(description->Node(description->FindNode("Register")).position.line, 4u);
    EXPECT_EQ(description->Node(description->FindNode("Register")).position.column, 9u);
}

TEST(DescriptionNodes, TellDeviceAndKinds)
{
    const auto description =
        ReadNodes("<Node Name='N'/><Category Name='C' NameSpace='Standard'/><Port Name='P'/>"
                  "<TextDesc Name='T'><p1212Parser>P</p1212Parser><Key>0x81</Key></TextDesc>");
    EXPECT_EQ(description->Device().modelName, "M");
    EXPECT_EQ(description->Device().productGuid, "P");
    EXPECT_EQ(description->Device().schemaMinor, 1);
    EXPECT_EQ(description->Device().subMinor, 4);
    EXPECT_EQ(description->Node(1).type, NodeType::Category);
    EXPECT_EQ(description->Node(1).nameSpace, GenApi::Standard);
    EXPECT_EQ(description->Node(2).nameSpace, GenApi::Custom);
    EXPECT_EQ(description->Find(3, Prop::Other)->attribute, "p1212Parser");
    EXPECT_EQ(ReadDescription("<g:RegisterDescription xmlns:g='http://www.genicam.org/GenApi/Version_1_0'>"
                              "<g:Integer Name='I'><g:Value>7</g:Value></g:Integer></g:RegisterDescription>")
                  ->Find(0, Prop::Value)
                  ->integer,
              7);
}

struct Literal
{
    const char* text;
    const char* result; // the number, or the class of the exception
};

class IntegerLiteral : public testing::TestWithParam<Literal>
{};

TEST_P(IntegerLiteral, IsReadOrRefused)
{
    const std::string nodes =
        std::string("<Integer Name='I'><Value>") + GetParam().text + "</Value></Integer>";
    std::string result;
    const std::string error =
        ErrorOf([&] { result = std::to_string(ReadNodes(nodes)->Find(0, Prop::Value)->integer); });
    EXPECT_EQ(error == "nothing" ? result : error.substr(0, error.find(':')), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, IntegerLiteral,
    testing::Values(Literal{"42", "42"}, Literal{"\n\t42 ", "42"}, Literal{"-7", "-7"}, Literal{"+7", "7"},
                    Literal{"010", "10"}, Literal{"0x1f", "31"}, Literal{"0X1F", "31"},
                    Literal{"-0x10", "-16"}, Literal{"9223372036854775807", "9223372036854775807"},
                    Literal{"-9223372036854775808", "-9223372036854775808"},
                    Literal{"0x8000000000000000", "-9223372036854775808"},
                    Literal{"9223372036854775808", "Property"}, Literal{"0x10000000000000000", "Property"},
                    Literal{"4 2", "Property"}, Literal{"4.0", "Property"}, Literal{"1e3", "Property"},
                    Literal{"", "Property"}, Literal{"0x", "Property"}, Literal{"--1", "Property"},
                    Literal{"+", "Property"}, Literal{"1f", "Property"}));

class RealLiteral : public testing::TestWithParam<Literal>
{};

TEST_P(RealLiteral, IsReadOrRefused)
{
    const std::string nodes = std::string("<Float Name='F'><Value>") + GetParam().text + "</Value></Float>";
    double result = 0;
    const std::string error = ErrorOf([&] { result = ReadNodes(nodes)->Find(0, Prop::Value)->real; });
    const std::string expected = GetParam().result;
    if (expected == "Property") {
        EXPECT_EQ(error.substr(0, 8), "Property");
    } else if (expected == "nan") {
        EXPECT_TRUE(error == "nothing" && std::isnan(result));
    } else {
        EXPECT_TRUE(error == "nothing" && result == std::stod(expected)) << error << " " << result;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RealLiteral,
    testing::Values(Literal{"1.5", "1.5"}, Literal{" -2.00 ", "-2"}, Literal{"1e+06", "1e6"},
                    Literal{"5.", "5"}, Literal{".5", "0.5"}, Literal{"0x20", "32"}, Literal{"INF", "inf"},
                    Literal{"-INF", "-inf"}, Literal{"NaN", "nan"}, Literal{"1e999", "inf"},
                    Literal{"-1e999", "-inf"}, Literal{"1e-999", "0"}, Literal{"1,5", "Property"},
                    Literal{"1.5 us", "Property"}, Literal{"infinity!", "Property"},
                    Literal{"e5", "Property"}, Literal{"", "Property"}, Literal{"+-1", "Property"}));

TEST(DescriptionNodes, FormulasMakeNodesOfTheirConstantsAndExpressions)
{
    const auto description = ReadNodes(R"(
        <SwissKnife Name="S"><pVariable Name="V">I</pVariable><Constant Name="C">1.5</Constant>
            <Expression Name="A">V*C</Expression><Expression Name="B">A+1</Expression><Formula>B/2</Formula></SwissKnife>
        <Integer Name="I"><Value>4</Value></Integer>
        <IntConverter Name="X"><pVariable Name="V">I</pVariable><Constant Name="K">2</Constant>
            <FormulaTo>FROM*K</FormulaTo><FormulaFrom>TO/K</FormulaFrom><pValue>I</pValue></IntConverter>)");
    EXPECT_THAT(AllNames(*description),
                ElementsAre("S", "I", "_S_C", "_S_A", "_S_B", "X", "_X_K", "X_ConvertTo", "X_ConvertFrom"));
    const auto node = [&](const char* name) { return description->Node(description->FindNode(name)); };
    EXPECT_EQ(node("_S_C").type, NodeType::Float);
    EXPECT_TRUE(node("_S_C").synthetic);
    EXPECT_EQ(description->Find(description->FindNode("_S_C"), Prop::Value)->real, 1.5);
    EXPECT_EQ(node("_S_B").type, NodeType::SwissKnife);
    EXPECT_EQ(node("_X_K").type, NodeType::Integer);
    EXPECT_EQ(node("X_ConvertTo").type, NodeType::IntSwissKnife);
    EXPECT_EQ(TextOf(*description, "X_ConvertTo", Prop::Formula), "FROM*K");
    EXPECT_EQ(TextOf(*description, "X_ConvertFrom", Prop::Formula), "TO/K");
    EXPECT_EQ(TextOf(*description, "X_ConvertFrom", Prop::pVariable), "I");
    EXPECT_EQ(description->Find(description->FindNode("X"), Prop::FormulaTo)->node,
              description->FindNode("X_ConvertTo"));
    // B uses A, and A uses neither: no circle.
    EXPECT_EQ(description->Find(description->FindNode("_S_B"), Prop::Expression)->node,
              description->FindNode("_S_A"));
    EXPECT_EQ(description->Find(description->FindNode("_S_A"), Prop::Expression), nullptr);
    EXPECT_EQ(TextOf(*description, "_S_A", Prop::Formula), "V*C");
}

TEST(DescriptionNodes, RegistersMakeNodesOfTheirAddressFormulas)
{
    const auto description = ReadNodes(kPort + R"(
        <IntReg Name="R"><IntSwissKnife Name="Off"><pVariable Name="V">I</pVariable><Constant Name="C">4</Constant>
            <Formula>V*C</Formula></IntSwissKnife><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort>
            <Endianess>LittleEndian</Endianess></IntReg>
        <Integer Name="I"><Value>4</Value></Integer>)");
    EXPECT_THAT(AllNames(*description), ElementsAre("Device", "R", "_R_Off", "I", "__R_Off_C"));
    const Property* const term = description->Find(1, Prop::IntSwissKnife);
    ASSERT_TRUE(term);
    EXPECT_EQ(description->Node(term->node).name, "_R_Off");
    EXPECT_EQ(term->attribute, "Off");
    EXPECT_TRUE(description->Node(term->node).synthetic);
}

TEST(DescriptionNodes, StructEntriesInheritWhatTheyDoNotSay)
{
    const auto description = ReadNodes(kPort + R"(
        <Integer Name="I"><Value>4</Value></Integer><Integer Name="J"><Value>4</Value></Integer>
        <StructReg Comment="Word"><Visibility>Expert</Visibility><pIsLocked>I</pIsLocked><Address>0x100</Address>
            <IntSwissKnife Name="Off"><Formula>8</Formula></IntSwissKnife><Length>4</Length><AccessMode>RW</AccessMode>
            <pPort>Device</pPort><Cachable>NoCache</Cachable><pInvalidator>I</pInvalidator>
            <Endianess>BigEndian</Endianess>
            <StructEntry Name="A"><Bit>3</Bit></StructEntry>
            <StructEntry Name="B" NameSpace="Standard"><DisplayName>b</DisplayName><Visibility>Guru</Visibility>
                <AccessMode>RO</AccessMode><pInvalidator>J</pInvalidator><LSB>15</LSB><MSB>8</MSB><Sign>Signed</Sign>
            </StructEntry></StructReg>)");
    EXPECT_THAT(AllNames(*description), ElementsAre("Device", "I", "J", "Off", "A", "B"));
    const auto properties = [&](const char* node) {
        std::vector<std::pair<Prop, std::string>> list;
        for (const Property& property : description->Properties(description->FindNode(node)))
            list.emplace_back(property.id, property.text);
        return list;
    };
    using P = std::pair<Prop, std::string>;
    EXPECT_THAT(properties("A"),
                ElementsAre(P{Prop::Visibility, "Expert"}, P{Prop::pIsLocked, "I"}, P{Prop::Address, "0x100"},
                            P{Prop::pAddress, "Off"}, P{Prop::Length, "4"}, P{Prop::AccessMode, "RW"},
                            P{Prop::pPort, "Device"}, P{Prop::Cachable, "NoCache"},
                            P{Prop::pInvalidator, "I"}, P{Prop::Bit, "3"}, P{Prop::Endianess, "BigEndian"}));
    EXPECT_EQ(TextOf(*description, "B", Prop::Visibility), "Guru");
    EXPECT_EQ(TextOf(*description, "B", Prop::AccessMode), "RO");
    EXPECT_EQ(TextOf(*description, "B", Prop::Sign), "Signed");
    EXPECT_EQ(TextOf(*description, "B", Prop::Address), "0x100");
    EXPECT_THAT(DependentNames(*description, "I"), ElementsAre("A", "B"));
    EXPECT_THAT(DependentNames(*description, "J"), ElementsAre("B"));
    EXPECT_EQ(description->Node(description->FindNode("B")).type, NodeType::StructEntry);
    EXPECT_EQ(description->Node(description->FindNode("B")).nameSpace, GenApi::Standard);
    EXPECT_FALSE(description->Node(description->FindNode("Off")).synthetic);
}

} // namespace
} // namespace KxGenApi
