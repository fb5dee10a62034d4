// SPDX-License-Identifier: Apache-2.0
// What a description must not be, and what the error then says.
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

#include <utility>

namespace KxGenApi
{
namespace
{

#define PORT "<Port Name='P'/>"

/// Nodes, and the error that they make.
constexpr std::pair<const char*, const char*> kBroken[] = {
    {"<Category Name='C'>\n  <pFeature>Foo</pFeature></Category>",
     "Runtime: line 3, column 3: node 'C': element 'pFeature' names 'Foo', which does not exist"},
    {"<SwissKnife Name='S'><pVariable Name='V'>W.Max</pVariable><Formula>V</Formula></SwissKnife>",
     "Runtime: line 2, column 22: node 'S': element 'pVariable' names 'W.Max', which does not exist"},
    {"<Enumeration Name='E'><EnumEntry Name='A'><Value>1</Value></EnumEntry><Value>1</Value></Enumeration>\n"
     "<SwissKnife Name='S'><pVariable Name='V'>E.Entry.B</pVariable><Formula>V</Formula></SwissKnife>",
     "Runtime: line 3, column 22: node 'S': element 'pVariable' names 'E.Entry.B', which does not exist"},
    {PORT "<IntReg Name='R'><Address>0</Address><pIndex pOffset='X'>R</pIndex></IntReg>",
     "Runtime: line 2, column 54: node 'R': element 'pIndex' names 'X', which does not exist"},
    {"<Category Name='C'><pFeature>Std::C</pFeature></Category>",
     "Runtime: line 2, column 20: node 'C': element 'pFeature' names 'Std::C', which does not exist"},
    {"<Category Name='C'><pFeature/></Category>",
     "Runtime: line 2, column 20: node 'C': element 'pFeature' names '', which does not exist"},
    {"<Node Name='N'/>\n<Group Comment='g'>\n <Port Name='N'/></Group>",
     "Runtime: line 4, column 2: node 'N': is defined a second time; the first definition is in line 2, "
     "column 1"},
    {"<Converter Name='X'><FormulaTo>1</FormulaTo><FormulaFrom>1</FormulaFrom><pValue>X_ConvertTo</pValue>"
     "</Converter><Node Name='X_ConvertTo'/>",
     "Runtime: line 2, column 113: node 'X_ConvertTo': is defined a second time; the first definition is in "
     "line 2, column 21"},
    {"<Node/>", "Runtime: line 2, column 1: element 'Node' has no Name"},
    {"<Node Name='a b'/>",
     "Runtime: line 2, column 1: element 'Node' has the Name 'a b' with a character ' ', which no name may "
     "hold"},
    {"<SwissKnife Name='S'><pVariable>S</pVariable><Formula>1</Formula></SwissKnife>",
     "Runtime: line 2, column 22: node 'S': element 'pVariable' has no Name"},
    {"<SwissKnife Name='S'><Constant>1</Constant><Formula>1</Formula></SwissKnife>",
     "Runtime: line 2, column 22: element 'Constant' has no Name"},
    {"<Complex Name='I'/>", "Runtime: line 2, column 1: element 'Complex' is no node that may stand here"},
    {"<EnumEntry Name='I'><Value>1</Value></EnumEntry>",
     "Runtime: line 2, column 1: element 'EnumEntry' is no node that may stand here"},
    {"<StructEntry Name='I'><Bit>1</Bit></StructEntry>",
     "Runtime: line 2, column 1: element 'StructEntry' is no node that may stand here"},
    {"<Integer Name='I'>\n <Amount>1</Amount></Integer>",
     "Runtime: line 3, column 2: node 'I': element 'Amount' is unknown"},
    {"<Integer Name='I'><Value>1</Value><Formula>1</Formula></Integer>",
     "Runtime: line 2, column 35: node 'I': element 'Formula' is not allowed in a node of kind Integer"},
    {"<Enumeration Name='I'><EnumEntry Name='E'><EntryName>x</EntryName></EnumEntry></Enumeration>",
     "Runtime: line 2, column 43: node 'EnumEntry_I_E': element 'EntryName' is unknown"},
    {"<Integer Name='I'><Value>1</Value><ToolTip>t</ToolTip></Integer>",
     "Runtime: line 2, column 35: node 'I': element 'ToolTip' must stand ahead of 'Value'"},
    {"<Integer Name='I'><Value>1</Value><Min>1</Min><Min>2</Min></Integer>",
     "Runtime: line 2, column 47: node 'I': element 'Min' may stand only once, and excludes its "
     "alternatives"},
    {"<Integer Name='I'><Value>1</Value><pValue>I</pValue></Integer>",
     "Runtime: line 2, column 35: node 'I': element 'pValue' may stand only once, and excludes its "
     "alternatives"},
    {"<Integer Name='I'>text<Value>1</Value></Integer>",
     "Runtime: line 2, column 1: node 'I': holds text between its elements: 'text'"},
    {"text",
     "Runtime: line 1, column 1: element 'RegisterDescription' holds text between its elements: 'text'"},
    {"<Integer Name='I'><Value>1<b/></Value></Integer>",
     "Runtime: line 2, column 19: node 'I': element 'Value' holds the element 'b' where only text may stand"},
    {"<Integer Name='I' Typo='1'><Value>1</Value></Integer>",
     "Runtime: line 2, column 1: node 'I': element 'Integer' has the attribute Typo='1', which is not "
     "allowed"},
    {"<Integer Name='I' NameSpace='Std'><Value>1</Value></Integer>",
     "Runtime: line 2, column 1: node 'I': element 'Integer' has the attribute NameSpace='Std', which is not "
     "allowed"},
    {"<Integer Name='I'><Value Name='x'>1</Value></Integer>",
     "Runtime: line 2, column 19: node 'I': element 'Value' has the unknown attribute 'Name'"},
    {"<Integer Name='I'><Visibility>Novice</Visibility><Value>1</Value></Integer>",
     "Runtime: line 2, column 19: node 'I': element 'Visibility' holds 'Novice', which is none of its words"},
    {PORT "<Register Name='R'><Address>0</Address><Length>4</Length><AccessMode/><pPort>P</pPort></Register>",
     "Runtime: line 2, column 74: node 'R': element 'AccessMode' holds '', which is none of its words"},
    {"<Integer Name='I'>\n<Value>4.0</Value></Integer>",
     "Property: line 3, column 1: node 'I': element 'Value' holds '4.0', which is no integer of 64 bits"},
    {"<Float Name='F'><Value>x</Value></Float>",
     "Property: line 2, column 17: node 'F': element 'Value' holds 'x', which is no number"},
    {"<IntSwissKnife Name='S'><Constant Name='C'>1.5</Constant><Formula>C</Formula></IntSwissKnife>",
     "Property: line 2, column 25: node 'S': element 'Constant' holds '1.5', which is no integer of 64 bits"},
    {"<Integer Name='I'><pIndex>I</pIndex><ValueIndexed Index='x'>1</ValueIndexed></Integer>",
     "Property: line 2, column 37: node 'I': element 'ValueIndexed' holds 'x', which is no integer of 64 "
     "bits"},
    {"<Integer Name='I'><pIndex>I</pIndex><ValueIndexed>1</ValueIndexed></Integer>",
     "Runtime: line 2, column 37: node 'I': element 'ValueIndexed' has no Index"},
    {"<Integer Name='I'><Value>1</Value><ValueDefault>1</ValueDefault></Integer>",
     "Runtime: line 2, column 1: node 'I': has indexed values but no pIndex"},
    {PORT "<IntReg Name='R'><pIndex Offset='1' pOffset='R'>R</pIndex></IntReg>",
     "Runtime: line 2, column 34: node 'R': element 'pIndex' has both Offset and pOffset"},
    {PORT "<Register Name='R'><Address>0</Address><Length>-1</Length></Register>",
     "Runtime: line 2, column 56: node 'R': element 'Length' holds '-1', which is no length"},
};

TEST(BrokenNodes, RaiseAnErrorWithPlaceNodeAndElement)
{
    for (const auto& [nodes, error] : kBroken)
        EXPECT_EQ(ErrorOfNodes(nodes), error);
}

TEST(BrokenNodes, TellTheElementThatTheyLack)
{
    for (const auto& [nodes, error] : {
             std::pair{"Integer I { Min 1 }", "'I': has no Value or pValue or pIndex"},
             {"Float I { }", "'I': has no Value or pValue or pIndex"},
             {"Boolean I { }", "'I': has no Value or pValue"},
             {"String I { }", "'I': has no Value or pValue"},
             {"Command I { Value 1 }", "'I': has no CommandValue or pCommandValue"},
             {"Enumeration I { Value 1 }", "'I': has no EnumEntry"},
             {"Enumeration I { EnumEntry E { } Value 1 }", "'EnumEntry_I_E': has no Value"},
             {"SwissKnife I { }", "'I': has no Formula"},
             {"Converter I { FormulaTo 1 }", "'I': has no FormulaFrom"},
             {"Register I { Length 4; AccessMode RW; pPort P }",
              "'I': has no pIndex or Address or IntSwissKnife or pAddress"},
             {"Register I { Address 4; AccessMode RW; pPort P }", "'I': has no Length or pLength"},
             {"Register I { Address 4; Length 4; pPort P }", "'I': has no AccessMode"},
             {"Register I { Address 4; Length 4; AccessMode RW }", "'I': has no pPort"},
             {"IntReg I { at 0 4 RW }", "'I': has no Endianess"},
             {"FloatReg I { at 0 4 RW }", "'I': has no Endianess"},
             {"StructReg S { at 0 4 RW; StructEntry E { Bit 1 } }", "'E': has no Endianess"},
             {"StructReg S { at 0 4 RW }", "'S': element 'StructReg' has no StructEntry"},
         })
        EXPECT_THAT(ErrorOfNodes(NodesAsXml("Port Device { } Port P { } " + std::string(nodes))),
                    testing::EndsWith(std::string(": node ") + error))
            << nodes;
}

TEST(BrokenNodes, TellWhatKindOfNodeIsNeeded)
{
    for (const auto& [nodes, error] : {
             std::pair{"Category C { } Integer I { pValue C }",
                       "'I': element 'pValue' names 'C', a node of kind Category, where a number is needed"},
             {"String C { Value 1 } Integer I { Value 1; pMax C }",
              "'I': element 'pMax' names 'C', a node of kind String, where a number is needed"},
             {"Port P { } Integer I { pIsLocked P; Value 1 }",
              "'I': element 'pIsLocked' names 'P', a node of kind Port, where a number is needed"},
             {"Command C { Value 1; CommandValue 1 } SwissKnife S { pVariable[Name=V] C; Formula V }",
              "'S': element 'pVariable' names 'C', a node of kind Command, where a number is needed"},
             {"String S { pValue I } Integer I { Value 1 }",
              "'S': element 'pValue' names 'I', a node of kind Integer, where a String is needed"},
             {"Integer I { Value 1 } Register R { Address 0; Length 4; AccessMode RW; pPort I }",
              "'R': element 'pPort' names 'I', a node of kind Integer, where a Port is needed"},
         })
        EXPECT_THAT(ErrorOfNodes(NodesAsXml(nodes)), testing::EndsWith(std::string(": node ") + error))
            << nodes;
}

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
