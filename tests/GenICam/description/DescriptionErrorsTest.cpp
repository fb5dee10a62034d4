// SPDX-License-Identifier: Apache-2.0
// What a description must not be, and what the error then says.
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

struct Broken
{
    const char* subject;
    const char* nodes;
    const char* error;
};

void PrintTo(const Broken& broken, std::ostream* out) { *out << broken.subject; }

class BrokenNodes : public testing::TestWithParam<Broken>
{};

TEST_P(BrokenNodes, RaiseAnErrorWithPlaceNodeAndElement)
{
    EXPECT_EQ(ErrorOfNodes(GetParam().nodes), GetParam().error);
}

#define REGISTER "<Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>P</pPort>"
#define PORT "<Port Name='P'/>"

constexpr Broken kNames[] = {
    {"Dangling", "<Category Name='C'>\n  <pFeature>Foo</pFeature></Category>",
     "Runtime: line 3, column 3: node 'C': element 'pFeature' names 'Foo', which does not exist"},
    {"DanglingVariable",
     "<SwissKnife Name='S'><pVariable Name='V'>W.Max</pVariable><Formula>V</Formula></SwissKnife>",
     "Runtime: line 2, column 22: node 'S': element 'pVariable' names 'W.Max', which does not exist"},
    {"DanglingEntry",
     "<Enumeration Name='E'><EnumEntry Name='A'><Value>1</Value></EnumEntry><Value>1</Value></Enumeration>\n"
     "<SwissKnife Name='S'><pVariable Name='V'>E.Entry.B</pVariable><Formula>V</Formula></SwissKnife>",
     "Runtime: line 3, column 22: node 'S': element 'pVariable' names 'E.Entry.B', which does not exist"},
    {"DanglingOffset", PORT "<IntReg Name='R'><Address>0</Address><pIndex pOffset='X'>R</pIndex></IntReg>",
     "Runtime: line 2, column 54: node 'R': element 'pIndex' names 'X', which does not exist"},
    {"WrongNameSpace", "<Category Name='C'><pFeature>Std::C</pFeature></Category>",
     "Runtime: line 2, column 20: node 'C': element 'pFeature' names 'Std::C', which does not exist"},
    {"EmptyReference", "<Category Name='C'><pFeature/></Category>",
     "Runtime: line 2, column 20: node 'C': element 'pFeature' names '', which does not exist"},
    {"Duplicate", "<Node Name='N'/>\n<Group Comment='g'>\n <Port Name='N'/></Group>",
     "Runtime: line 4, column 2: node 'N': is defined a second time; the first definition is in line 2, "
     "column 1"},
    {"DuplicateOfSynthetic",
     "<Converter Name='X'><FormulaTo>1</FormulaTo><FormulaFrom>1</FormulaFrom><pValue>X_ConvertTo</pValue>"
     "</Converter><Node Name='X_ConvertTo'/>",
     "Runtime: line 2, column 113: node 'X_ConvertTo': is defined a second time; the first definition is in "
     "line 2, "
     "column 21"},
    {"NoName", "<Node/>", "Runtime: line 2, column 1: element 'Node' has no Name"},
    {"NameWithBlank", "<Node Name='a b'/>",
     "Runtime: line 2, column 1: element 'Node' has the Name 'a b' with a character ' ', which no name may "
     "hold"},
    {"NoVariableName", "<SwissKnife Name='S'><pVariable>S</pVariable><Formula>1</Formula></SwissKnife>",
     "Runtime: line 2, column 22: node 'S': element 'pVariable' has no Name"},
    {"NoConstantName", "<SwissKnife Name='S'><Constant>1</Constant><Formula>1</Formula></SwissKnife>",
     "Runtime: line 2, column 22: element 'Constant' has no Name"},
};
INSTANTIATE_TEST_SUITE_P(Names, BrokenNodes, testing::ValuesIn(kNames));

constexpr Broken kStructure[] = {
    {"UnknownNode", "<Complex Name='I'/>",
     "Runtime: line 2, column 1: element 'Complex' is no node that may stand here"},
    {"EntryOutside", "<EnumEntry Name='I'><Value>1</Value></EnumEntry>",
     "Runtime: line 2, column 1: element 'EnumEntry' is no node that may stand here"},
    {"StructEntryOutside", "<StructEntry Name='I'><Bit>1</Bit></StructEntry>",
     "Runtime: line 2, column 1: element 'StructEntry' is no node that may stand here"},
    {"UnknownElement", "<Integer Name='I'>\n <Amount>1</Amount></Integer>",
     "Runtime: line 3, column 2: node 'I': element 'Amount' is unknown"},
    {"ElementOfOtherKind", "<Integer Name='I'><Value>1</Value><Formula>1</Formula></Integer>",
     "Runtime: line 2, column 35: node 'I': element 'Formula' is not allowed in a node of kind Integer"},
    {"InternalNames",
     "<Enumeration Name='I'><EnumEntry Name='E'><EntryName>x</EntryName></EnumEntry></Enumeration>",
     "Runtime: line 2, column 43: node 'EnumEntry_I_E': element 'EntryName' is unknown"},
    {"Order", "<Integer Name='I'><Value>1</Value><ToolTip>t</ToolTip></Integer>",
     "Runtime: line 2, column 35: node 'I': element 'ToolTip' must stand ahead of 'Value'"},
    {"Twice", "<Integer Name='I'><Value>1</Value><Min>1</Min><Min>2</Min></Integer>",
     "Runtime: line 2, column 47: node 'I': element 'Min' may stand only once, and excludes its "
     "alternatives"},
    {"Alternatives", "<Integer Name='I'><Value>1</Value><pValue>I</pValue></Integer>",
     "Runtime: line 2, column 35: node 'I': element 'pValue' may stand only once, and excludes its "
     "alternatives"},
    {"TextBetween", "<Integer Name='I'>text<Value>1</Value></Integer>",
     "Runtime: line 2, column 1: node 'I': holds text between its elements: 'text'"},
    {"TextBetweenNodes", "text",
     "Runtime: line 1, column 1: element 'RegisterDescription' holds text between its elements: 'text'"},
    {"ElementInText", "<Integer Name='I'><Value>1<b/></Value></Integer>",
     "Runtime: line 2, column 19: node 'I': element 'Value' holds the element 'b' where only text may stand"},
    {"Attribute", "<Integer Name='I' Typo='1'><Value>1</Value></Integer>",
     "Runtime: line 2, column 1: node 'I': element 'Integer' has the attribute Typo='1', which is not "
     "allowed"},
    {"NameSpaceWord", "<Integer Name='I' NameSpace='Std'><Value>1</Value></Integer>",
     "Runtime: line 2, column 1: node 'I': element 'Integer' has the attribute NameSpace='Std', which is not "
     "allowed"},
    {"ElementAttribute", "<Integer Name='I'><Value Name='x'>1</Value></Integer>",
     "Runtime: line 2, column 19: node 'I': element 'Value' has the unknown attribute 'Name'"},
    {"Word", "<Integer Name='I'><Visibility>Novice</Visibility><Value>1</Value></Integer>",
     "Runtime: line 2, column 19: node 'I': element 'Visibility' holds 'Novice', which is none of its words"},
    {"EmptyRequiredWord",
     PORT "<Register Name='R'><Address>0</Address><Length>4</Length><AccessMode/><pPort>P</pPort></Register>",
     "Runtime: line 2, column 74: node 'R': element 'AccessMode' holds '', which is none of its words"},
    {"Integer", "<Integer Name='I'>\n<Value>4.0</Value></Integer>",
     "Property: line 3, column 1: node 'I': element 'Value' holds '4.0', which is no integer of 64 bits"},
    {"Real", "<Float Name='F'><Value>x</Value></Float>",
     "Property: line 2, column 17: node 'F': element 'Value' holds 'x', which is no number"},
    {"ConstantOfInteger",
     "<IntSwissKnife Name='S'><Constant Name='C'>1.5</Constant><Formula>C</Formula></IntSwissKnife>",
     "Property: line 2, column 25: node 'S': element 'Constant' holds '1.5', which is no integer of 64 bits"},
    {"Index", "<Integer Name='I'><pIndex>I</pIndex><ValueIndexed Index='x'>1</ValueIndexed></Integer>",
     "Property: line 2, column 37: node 'I': element 'ValueIndexed' holds 'x', which is no integer of 64 "
     "bits"},
    {"NoIndex", "<Integer Name='I'><pIndex>I</pIndex><ValueIndexed>1</ValueIndexed></Integer>",
     "Runtime: line 2, column 37: node 'I': element 'ValueIndexed' has no Index"},
    {"IndexedWithoutIndex", "<Integer Name='I'><Value>1</Value><ValueDefault>1</ValueDefault></Integer>",
     "Runtime: line 2, column 1: node 'I': has indexed values but no pIndex"},
    {"BothOffsets", PORT "<IntReg Name='R'><pIndex Offset='1' pOffset='R'>R</pIndex></IntReg>",
     "Runtime: line 2, column 34: node 'R': element 'pIndex' has both Offset and pOffset"},
    {"NegativeLength", PORT "<Register Name='R'><Address>0</Address><Length>-1</Length></Register>",
     "Runtime: line 2, column 56: node 'R': element 'Length' holds '-1', which is no length"},
};
INSTANTIATE_TEST_SUITE_P(Structure, BrokenNodes, testing::ValuesIn(kStructure));

constexpr Broken kMissing[] = {
    {"IntegerValue", "<Integer Name='I'><Min>1</Min></Integer>",
     "Runtime: line 2, column 1: node 'I': has no Value or pValue or pIndex"},
    {"FloatValue", "<Float Name='I'/>",
     "Runtime: line 2, column 1: node 'I': has no Value or pValue or pIndex"},
    {"BooleanValue", "<Boolean Name='I'/>", "Runtime: line 2, column 1: node 'I': has no Value or pValue"},
    {"StringValue", "<String Name='I'/>", "Runtime: line 2, column 1: node 'I': has no Value or pValue"},
    {"CommandValue", "<Command Name='I'><Value>1</Value></Command>",
     "Runtime: line 2, column 1: node 'I': has no CommandValue or pCommandValue"},
    {"Entries", "<Enumeration Name='I'><Value>1</Value></Enumeration>",
     "Runtime: line 2, column 1: node 'I': has no EnumEntry"},
    {"EntryValue", "<Enumeration Name='I'><EnumEntry Name='E'/><Value>1</Value></Enumeration>",
     "Runtime: line 2, column 23: node 'EnumEntry_I_E': has no Value"},
    {"Formula", "<SwissKnife Name='I'/>", "Runtime: line 2, column 1: node 'I': has no Formula"},
    {"FormulaFrom", "<Converter Name='I'><FormulaTo>1</FormulaTo></Converter>",
     "Runtime: line 2, column 1: node 'I': has no FormulaFrom"},
    {"Address",
     PORT "<Register Name='I'><Length>4</Length><AccessMode>RW</AccessMode><pPort>P</pPort></Register>",
     "Runtime: line 2, column 17: node 'I': has no pIndex or Address or IntSwissKnife or pAddress"},
    {"Length",
     PORT "<Register Name='I'><Address>4</Address><AccessMode>RW</AccessMode><pPort>P</pPort></Register>",
     "Runtime: line 2, column 17: node 'I': has no Length or pLength"},
    {"AccessMode",
     PORT "<Register Name='I'><Address>4</Address><Length>4</Length><pPort>P</pPort></Register>",
     "Runtime: line 2, column 17: node 'I': has no AccessMode"},
    {"Port",
     "<Register Name='I'><Address>4</Address><Length>4</Length><AccessMode>RW</AccessMode></Register>",
     "Runtime: line 2, column 1: node 'I': has no pPort"},
    {"Endianess", PORT "<IntReg Name='I'>" REGISTER "</IntReg>",
     "Runtime: line 2, column 17: node 'I': has no Endianess"},
    {"EndianessOfFloat", PORT "<FloatReg Name='I'>" REGISTER "</FloatReg>",
     "Runtime: line 2, column 17: node 'I': has no Endianess"},
    {"EndianessOfStruct",
     PORT "<StructReg Comment='S'>" REGISTER "<StructEntry Name='E'><Bit>1</Bit></StructEntry></StructReg>",
     "Runtime: line 2, column 121: node 'E': has no Endianess"},
    {"StructEntries", PORT "<StructReg Comment='S'>" REGISTER "</StructReg>",
     "Runtime: line 2, column 17: node 'S': element 'StructReg' has no StructEntry"},
};
INSTANTIATE_TEST_SUITE_P(Missing, BrokenNodes, testing::ValuesIn(kMissing));

constexpr Broken kTargets[] = {
    {"CategoryAsNumber", "<Category Name='C'/><Integer Name='I'><pValue>C</pValue></Integer>",
     "Runtime: line 2, column 39: node 'I': element 'pValue' names 'C', a node of kind Category, where a "
     "number is "
     "needed"},
    {"StringAsNumber",
     "<String Name='C'><Value>1</Value></String><Integer Name='I'><Value>1</Value><pMax>C</pMax></Integer>",
     "Runtime: line 2, column 77: node 'I': element 'pMax' names 'C', a node of kind String, where a number "
     "is needed"},
    {"PortAsFlag", PORT "<Integer Name='I'><pIsLocked>P</pIsLocked><Value>1</Value></Integer>",
     "Runtime: line 2, column 35: node 'I': element 'pIsLocked' names 'P', a node of kind Port, where a "
     "number is "
     "needed"},
    {"CommandAsVariable",
     "<Command Name='C'><Value>1</Value><CommandValue>1</CommandValue></Command><SwissKnife Name='S'>"
     "<pVariable Name='V'>C</pVariable><Formula>V</Formula></SwissKnife>",
     "Runtime: line 2, column 96: node 'S': element 'pVariable' names 'C', a node of kind Command, where a "
     "number is "
     "needed"},
    {"NumberAsString",
     "<String Name='S'><pValue>I</pValue></String><Integer Name='I'><Value>1</Value></Integer>",
     "Runtime: line 2, column 18: node 'S': element 'pValue' names 'I', a node of kind Integer, where a "
     "String is "
     "needed"},
    {"NumberAsPort",
     "<Integer Name='I'><Value>1</Value></Integer><Register Name='R'><Address>0</Address><Length>4</Length>"
     "<AccessMode>RW</AccessMode><pPort>I</pPort></Register>",
     "Runtime: line 2, column 129: node 'R': element 'pPort' names 'I', a node of kind Integer, where a Port "
     "is "
     "needed"},
};
INSTANTIATE_TEST_SUITE_P(Targets, BrokenNodes, testing::ValuesIn(kTargets));

std::string Masked(const std::string& bits, const std::string& order, int length = 4)
{
    return PORT "<MaskedIntReg Name='M'><Address>0</Address><Length>" + std::to_string(length) +
           "</Length><AccessMode>RW</AccessMode><pPort>P</pPort>" + bits + "<Endianess>" + order +
           "</Endianess></MaskedIntReg>";
}

TEST(Bits, HaveToFitOrderAndLength)
{
    const std::string prefix = "Runtime: line 2, column 17: node 'M': ";
    const std::pair<std::string, std::string> cases[] = {
        {Masked("<LSB>0</LSB><MSB>7</MSB>", "LittleEndian"), "nothing"},
        {Masked("<LSB>7</LSB><MSB>0</MSB>", "BigEndian"), "nothing"},
        {Masked("<LSB>5</LSB><MSB>5</MSB>", "BigEndian"), "nothing"},
        {Masked("<Bit>31</Bit>", "LittleEndian"), "nothing"},
        {Masked("<LSB>7</LSB><MSB>0</MSB>", "LittleEndian"),
         prefix + "has LSB 7 and MSB 0, which is the wrong way round for LittleEndian"},
        {Masked("<LSB>0</LSB><MSB>7</MSB>", "BigEndian"),
         prefix + "has LSB 0 and MSB 7, which is the wrong way round for BigEndian"},
        {Masked("<Bit>32</Bit>", "LittleEndian"), prefix + "has bit 32 outside of its length of 4 bytes"},
        {Masked("<LSB>0</LSB><MSB>64</MSB>", "LittleEndian", 16),
         prefix + "has bit 64 outside of its length of 16 bytes"},
        {Masked("<Bit>-1</Bit>", "LittleEndian"), prefix + "has bit -1 outside of its length of 4 bytes"},
        {Masked("<Bit>0</Bit>", "LittleEndian", 0), prefix + "has bit 0 outside of its length of 0 bytes"},
        {Masked("", "LittleEndian"), prefix + "needs either Bit or LSB and MSB"},
        {Masked("<LSB>0</LSB>", "LittleEndian"), prefix + "needs either Bit or LSB and MSB"},
        {Masked("<LSB>0</LSB><MSB>1</MSB><Bit>1</Bit>", "LittleEndian"),
         prefix + "needs either Bit or LSB and MSB"},
    };
    for (const auto& [nodes, error] : cases)
        EXPECT_EQ(ErrorOfNodes(nodes), error) << nodes;
}

TEST(BrokenFiles, AreErrors)
{
    const std::string good = Doc("");
    const auto with = [&](std::string_view from, std::string_view to) {
        std::string text = good;
        return text.replace(text.find(from), from.size(), to);
    };
    const std::pair<std::string, std::string> cases[] = {
        {"", "InvalidArgument: the description is empty"},
        {"plain text", "Runtime: line 1, column 10: not well-formed XML: No document element found"},
        {"<a></b>", "Runtime: line 1, column 6: not well-formed XML: Start-end tags mismatch"},
        {good + "<More/>",
         "Runtime: line 4, column 1: element 'More' follows the end of RegisterDescription"},
        {good + "more",
         "Runtime: line 3, column 23: not well-formed XML: text after the last element: 'more'"},
        {"<Other/>",
         "Runtime: line 1, column 1: element 'Other' stands where RegisterDescription is expected"},
        {with("Version_1_1", "Version_2_0"),
         "Runtime: line 1, column 1: element 'RegisterDescription' has the XML name space "
         "'http://www.genicam.org/GenApi/Version_2_0', which is not that of GenApi 1.0 or 1.1"},
        {with("xmlns=", "xmlns:x="),
         "Runtime: line 1, column 1: element 'RegisterDescription' has no XML name space"},
        {with("MajorVersion=\"2\"", "MajorVersion=\"two\""),
         "Property: line 1, column 1: element 'RegisterDescription' has the attribute MajorVersion='two', "
         "which is no "
         "number from 0 to 65535"},
        {"<!DOCTYPE a [<!ENTITY b \"bbbb\">]>" + good, "Runtime: a DOCTYPE with declarations is not allowed"},
        {good.substr(0, good.size() / 2), "Runtime: line 1, column "},
    };
    for (const auto& [text, error] : cases)
        EXPECT_THAT(ErrorOf([&, &content = text] { ReadDescription(content); }), testing::StartsWith(error))
            << text;
    EXPECT_EQ(ErrorOf([&] { ReadDescription("<!DOCTYPE RegisterDescription>" + good); }), "nothing");
    EXPECT_EQ(ErrorOf([&] { ReadDescription("GET /local.xml\n\n<?xml version='1.0'?>" + good); }), "nothing")
        << "tools leave lines of their own ahead of the declaration";
    EXPECT_EQ(ErrorOf([&] { ReadDescription(good + std::string(1000, '\0')); }), "nothing")
        << "cameras pad with zeros";
}

TEST(BrokenFiles, LongNamesAndControlCharactersDoNotSpoilTheMessage)
{
    const std::string error =
        ErrorOfNodes("<Category Name='" + std::string(1000, 'c') + "'><pFeature>\xC3\xA4" +
                     std::string(57, 'f') + "\xC3\xA4\xC3\xA4</pFeature></Category>");
    EXPECT_EQ(error, "Runtime: line 2, column 1019: node '" + std::string(60, 'c') +
                         "...': element 'pFeature' names '\xC3\xA4" + std::string(57, 'f') +
                         "...', which does not exist");
    EXPECT_THAT(ErrorOfNodes("<Node Name='" + std::string(1025, 'n') + "'/>"),
                testing::HasSubstr("1025 bytes of a name exceed the limit of 1024"));
}

} // namespace
} // namespace KxGenApi
