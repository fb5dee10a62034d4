// SPDX-License-Identifier: Apache-2.0
// What references resolve to and what follows from them.
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNodes = R"(
    <Category Name="Root"><pFeature>Cat</pFeature><pFeature>Sel</pFeature></Category>
    <Category Name="Cat"><pFeature>Width</pFeature></Category>
    <Category Name="Apart"><pFeature>Lone</pFeature></Category>
    <Integer Name="Lone"><Value>1</Value></Integer>
    <Integer Name="Width"><pIsImplemented>Flag</pIsImplemented><pIsAvailable>Flag</pIsAvailable>
        <pIsLocked>Lock</pIsLocked><pBlockPolling>Block</pBlockPolling><pError>Err</pError><pAlias>Alias</pAlias>
        <pValueCopy>Copy</pValueCopy><pValue>Reg</pValue><pMin>Lim</pMin><pMax>Lim</pMax><pInc>Inc</pInc></Integer>
    <IntReg Name="Reg"><pAddress>Addr</pAddress><pIndex pOffset="Stride">Sel</pIndex><pLength>Len</pLength>
        <AccessMode>RW</AccessMode><pPort>Device</pPort><pInvalidator>Cmd</pInvalidator><Endianess>BigEndian</Endianess></IntReg>
    <Enumeration Name="Sel"><EnumEntry Name="E"><Value>0</Value></EnumEntry><Value>0</Value>
        <pSelected>Width</pSelected><pSelected>Sub</pSelected></Enumeration>
    <Integer Name="Sub"><Value>0</Value><pSelected>Width</pSelected></Integer>
    <Command Name="Cmd"><pValue>Reg2</pValue><pCommandValue>CmdVal</pCommandValue></Command>
    <IntReg Name="Reg2"><Address>0</Address><Length>4</Length><AccessMode>WO</AccessMode><pPort>Device</pPort>
        <Endianess>BigEndian</Endianess></IntReg>
    <Integer Name="Flag"><Value>1</Value></Integer><Integer Name="Lock"><Value>0</Value></Integer>
    <Integer Name="Block"><Value>0</Value></Integer><Integer Name="Err"><Value>0</Value></Integer>
    <Integer Name="Alias"><Value>0</Value></Integer><Integer Name="Copy"><Value>0</Value></Integer>
    <Integer Name="Lim"><Value>0</Value></Integer><Integer Name="Inc"><Value>1</Value></Integer>
    <Integer Name="Addr"><Value>0</Value></Integer><Integer Name="Stride"><Value>0</Value></Integer>
    <Integer Name="Len"><Value>4</Value></Integer><Integer Name="CmdVal"><Value>1</Value></Integer>
    <Port Name="Device"/>)";

TEST(DescriptionLinks, DependentsAreWhatChangesWithANode)
{
    const auto description = ReadNodes(kNodes);
    const std::pair<const char*, std::vector<std::string>> expected[] = {
        {"Flag", {"Width"}},
        {"Lock", {"Width"}},
        {"Lim", {"Width"}},
        {"Inc", {"Width"}},
        {"Reg", {"Width"}},
        {"Width", {"Cat"}},
        {"Addr", {"Reg"}},
        {"Stride", {"Reg"}},
        {"Len", {"Reg"}},
        {"Device", {"Reg", "Reg2"}},
        {"Cmd", {"Reg"}},
        {"Reg2", {"Cmd"}},
        {"CmdVal", {"Cmd"}},
        {"EnumEntry_Sel_E", {"Sel"}},
        {"Sel", {"Reg", "Root", "Sub", "Width"}},
        {"Sub", {"Width"}},
        {"Cat", {"Root"}},
        {"Root", {}},
        {"Block", {"Width"}},
        {"Err", {}},
        {"Alias", {}},
        {"Copy", {}},
    };
    for (const auto& [node, dependents] : expected)
        EXPECT_EQ(DependentNames(*description, node), dependents) << node;
}

TEST(DescriptionLinks, VariablesReadTheSideThatTheirNameTells)
{
    const char* const widthAndMode = R"(
        <Integer Name="Width"><Value>1</Value></Integer>
        <Enumeration Name="Mode" NameSpace="Standard"><EnumEntry Name="On"><Value>1</Value></EnumEntry><Value>1</Value></Enumeration>)";
    const auto partOf = [&](const std::string& name, const std::string& target) {
        const auto description =
            ReadNodes(widthAndMode + ("<IntSwissKnife Name=\"S\"><pVariable Name=\"" + name + "\">" + target +
                                      "</pVariable><Formula>1</Formula></IntSwissKnife>"));
        EXPECT_EQ(DependentNames(*description, target.substr(target.rfind(':') + 1)),
                  std::vector<std::string>{"S"});
        return description->Find(description->FindNode("S"), Prop::pVariable)->part;
    };
    for (const auto& [name, part] : {std::pair{"V", RefPart::Value},
                                     {"Max", RefPart::Value},
                                     {"V.Value", RefPart::Value},
                                     {"V.Min", RefPart::Min},
                                     {"V.Max", RefPart::Max},
                                     {"V.Inc", RefPart::Inc},
                                     {"V.AccessMode", RefPart::AccessMode},
                                     {"V.Entry.On", RefPart::Entry},
                                     {"V.Entry", RefPart::Unknown},
                                     {"V.min", RefPart::Unknown},
                                     {"A.B.Max", RefPart::Unknown},
                                     {"V..Max", RefPart::Unknown}})
        EXPECT_EQ(partOf(name, "Width"), part) << name;
    EXPECT_EQ(partOf("V.Min", "Cust::Width"), RefPart::Min);
    EXPECT_EQ(partOf("V.Entry.On", "Std::Mode"), RefPart::Entry);
    EXPECT_THROW(partOf("V", "Width.Max"), GenICam::RuntimeException) << "a suffix of the text names no node";
}

// Width's limit needs OffsetX, whose limit needs Width.
TEST(DescriptionLinks, LimitsAndInvalidatorsMayGoInCircles)
{
    EXPECT_EQ(
        ErrorOfNodes(
            kPort + R"(
        <Integer Name="Width"><pValue>WidthReg</pValue><pMax>WidthMax</pMax></Integer>
        <Integer Name="OffsetX"><pIsLocked>Width</pIsLocked><pValue>OffsetReg</pValue><pMax>OffsetMax</pMax></Integer>
        <IntSwissKnife Name="WidthMax"><pVariable Name="O">OffsetX</pVariable><Formula>99-O</Formula></IntSwissKnife>
        <IntSwissKnife Name="OffsetMax"><pVariable Name="W">Width</pVariable><pVariable Name="M.Min">OffsetX</pVariable>
            <Formula>99-W</Formula></IntSwissKnife>
        <Integer Name="Sel"><pValue>OffsetReg</pValue><pSelected>Sel</pSelected></Integer>)" +
            IntReg("WidthReg") +
            "<IntReg Name='OffsetReg'><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>"
            "<pPort>Device</pPort><pInvalidator>OffsetReg</pInvalidator><pInvalidator>OffsetX</pInvalidator>"
            "<Endianess>BigEndian</Endianess></IntReg>"),
        "nothing");
}

struct Cycle
{
    const char* nodes;
    const char* chain;
};

class ValueCycle : public testing::TestWithParam<Cycle>
{};

TEST_P(ValueCycle, IsAnErrorThatNamesTheChain)
{
    const std::string error = ErrorOfNodes(kPort + GetParam().nodes);
    EXPECT_EQ(error.substr(0, 9), "Runtime: ");
    EXPECT_THAT(error, testing::HasSubstr(std::string("its value depends on itself: ") + GetParam().chain));
    EXPECT_THAT(error, testing::HasSubstr("line "));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ValueCycle,
    testing::Values(
        Cycle{"<Integer Name='A'><pValue>A</pValue></Integer>", "A -> A"},
        Cycle{"<Integer Name='A'><pValue>B</pValue></Integer><Float Name='B'><pValue>C</pValue></Float>"
              "<IntSwissKnife Name='C'><pVariable Name='V'>A</pVariable><Formula>V</Formula></IntSwissKnife>",
              "A -> B -> C -> A"},
        Cycle{"<IntReg "
              "Name='R'><pAddress>A</pAddress><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</"
              "pPort>"
              "<Endianess>BigEndian</Endianess></IntReg><Integer Name='A'><pValue>R</pValue></Integer>",
              "R -> A -> R"},
        Cycle{"<IntReg Name='R'><Address>0</Address><pIndex pOffset='R'>I</pIndex><Length>4</Length>"
              "<AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>"
              "<Integer Name='I'><Value>1</Value></Integer>",
              "R -> R"},
        Cycle{"<StringReg Name='R'><Address>0</Address><pLength>L</pLength><AccessMode>RO</AccessMode>"
              "<pPort>Device</pPort></StringReg><Integer Name='L'><pIndex>L</pIndex><ValueIndexed "
              "Index='0'>1</ValueIndexed>"
              "<ValueDefault>1</ValueDefault></Integer>",
              "L -> L"},
        Cycle{
            "<SwissKnife Name='S'><Expression Name='A'>B+1</Expression><Expression Name='B'>A+1</Expression>"
            "<Formula>A</Formula></SwissKnife>",
            "_S_A -> _S_B -> _S_A"},
        Cycle{"<Category Name='A'><pFeature>B</pFeature></Category><Category "
              "Name='B'><pFeature>A</pFeature></Category>",
              "A -> B -> A"},
        Cycle{"<Integer Name='A'><pValueCopy>A</pValueCopy><pValue>B</pValue></Integer>"
              "<Integer Name='B'><Value>1</Value></Integer>",
              "A -> A"}));

} // namespace
} // namespace KxGenApi
