// SPDX-License-Identifier: Apache-2.0
// Which nodes there are, and what they are made of.
#include "DescriptionTestSupport.h"

#include <GenApi/Types.h>

#include <gmock/gmock.h>

#include <sstream>

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

/// The value of that text, or the class of the exception.
template <class Number>
std::string ReadAs(const char* kind, const std::string& text, Number Property::*member)
{
    const std::string node = std::string("<") + kind + " Name='N'><Value>" + text + "</Value></" + kind + ">";
    std::ostringstream result;
    const std::string error = ErrorOf([&] { result << ReadNodes(node)->Find(0, Prop::Value)->*member; });
    return error == "nothing" ? result.str() : error.substr(0, error.find(':'));
}

TEST(DescriptionNodes, ReadIntegersOrRefuseThem)
{
    for (const auto& [text, result] : {std::pair{"42", "42"},
                                       {"\n\t42 ", "42"},
                                       {"-7", "-7"},
                                       {"+7", "7"},
                                       {"010", "10"},
                                       {"0x1f", "31"},
                                       {"0X1F", "31"},
                                       {"-0x10", "-16"},
                                       {"9223372036854775807", "9223372036854775807"},
                                       {"-9223372036854775808", "-9223372036854775808"},
                                       {"0x8000000000000000", "-9223372036854775808"}})
        EXPECT_EQ(ReadAs("Integer", text, &Property::integer), result) << text;
    for (const char* text :
         {"9223372036854775808", "0x10000000000000000", "4 2", "4.0", "1e3", "", "0x", "--1", "+", "1f"})
        EXPECT_EQ(ReadAs("Integer", text, &Property::integer), "Property") << text;
}

TEST(DescriptionNodes, ReadRealsOrRefuseThem)
{
    for (const auto& [text, result] : {std::pair{"1.5", "1.5"},
                                       {" -2.00 ", "-2"},
                                       {"1e+06", "1e+06"},
                                       {"5.", "5"},
                                       {".5", "0.5"},
                                       {"0x20", "32"},
                                       {"INF", "inf"},
                                       {"-INF", "-inf"},
                                       {"NaN", "nan"},
                                       {"1e999", "inf"},
                                       {"-1e999", "-inf"},
                                       {"1e-999", "0"}})
        EXPECT_EQ(ReadAs("Float", text, &Property::real), result) << text;
    for (const char* text : {"1,5", "1.5 us", "infinity!", "e5", "", "+-1"})
        EXPECT_EQ(ReadAs("Float", text, &Property::real), "Property") << text;
}

TEST(DescriptionNodes, FormulasMakeNodesOfTheirConstantsAndExpressions)
{
    const auto description = ReadOutline(R"(
        SwissKnife S { pVariable[Name=V] I; Constant[Name=C] 1.5; Expression[Name=A] V*C;
                       Expression[Name=B] A+1; Formula B/2 } Integer I { Value 4 }
        IntConverter X { pVariable[Name=V] I; Constant[Name=K] 2; FormulaTo FROM*K; FormulaFrom TO/K;
                         pValue I })");
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
    const auto description = ReadOutline(R"(Port Device { }
        IntReg R { IntSwissKnife Off { pVariable[Name=V] I; Constant[Name=C] 4; Formula V*C }
                   Length 4; AccessMode RO; pPort Device; Little } Integer I { Value 4 })");
    EXPECT_THAT(AllNames(*description), ElementsAre("Device", "R", "_R_Off", "I", "__R_Off_C"));
    const Property* const term = description->Find(1, Prop::IntSwissKnife);
    ASSERT_TRUE(term);
    EXPECT_EQ(description->Node(term->node).name, "_R_Off");
    EXPECT_EQ(term->attribute, "Off");
    EXPECT_TRUE(description->Node(term->node).synthetic);
}

TEST(DescriptionNodes, StructEntriesInheritWhatTheyDoNotSay)
{
    const auto description = ReadOutline(R"(Port Device { } Integer I { Value 4 } Integer J { Value 4 }
        StructReg Word { Visibility Expert; pIsLocked I; Address 0x100; IntSwissKnife Off { Formula 8 }
            Length 4; AccessMode RW; pPort Device; Cachable NoCache; pInvalidator I; Big;
            StructEntry A { Bit 3 }
            StructEntry B[NameSpace=Standard] { DisplayName b; Visibility Guru; AccessMode RO; pInvalidator J;
                LSB 15; MSB 8; Sign Signed } })");
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
