// SPDX-License-Identifier: Apache-2.0
// Saving the features of a node map and bringing them back.
#include "ToolsTestSupport.h"

#include <sstream>

using namespace GenApi;
using namespace GenICam;
using namespace KxGenApiTest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
std::string Streamed(const std::string& name, const std::string& target, const std::string& extra = "")
{
    return "<Integer Name=\"" + name + "\"><Streamable>Yes</Streamable><pValue>" + target + "</pValue>" +
           extra + "</Integer>";
}

/// Two gains by selector, a width with a limit that depends on an offset that comes later, a name.
std::string Camera()
{
    return "<Category Name=\"Root\"><pFeature>Analog</pFeature><pFeature>Format</pFeature></Category>"
           "<Category Name=\"Analog\"><pFeature>GainSelector</pFeature><pFeature>Gain</pFeature></Category>"
           "<Category "
           "Name=\"Format\"><pFeature>Width</pFeature><pFeature>OffsetX</pFeature><pFeature>Serial</pFeature>"
           "<pFeature>Volatile</pFeature><pFeature>Hidden</pFeature><pFeature>Start</"
           "pFeature><pFeature>Name</pFeature>"
           "<pFeature>Gain</pFeature></Category>" +
           Enumeration("GainSelector", 0, {"Red", "Blue"}, "<Streamable>Yes</Streamable>",
                       "<pSelected>Gain</pSelected>") +
           "<Integer Name=\"Gain\"><Streamable>Yes</Streamable><pIndex>GainSelectorReg</pIndex>"
           "<pValueIndexed "
           "Index=\"0\">GainRedReg</pValueIndexed><pValueDefault>GainBlueReg</pValueDefault></Integer>" +
           IntReg("GainRedReg", 4) + IntReg("GainBlueReg", 8) +
           "<Integer Name=\"Width\"><Streamable>Yes</Streamable><pValue>WidthReg</pValue><Min>8</Min>"
           "<pMax>WidthMax</pMax></Integer>" +
           IntReg("WidthReg", 12) +
           "<IntSwissKnife Name=\"WidthMax\"><pVariable "
           "Name=\"O\">OffsetXReg</pVariable><Formula>640-O</Formula>"
           "</IntSwissKnife>" +
           Streamed("OffsetX", "OffsetXReg") + IntReg("OffsetXReg", 16) + Streamed("Serial", "SerialReg") +
           IntReg("SerialReg", 20, 4, "Device", "LittleEndian", "RO") +
           "<Integer Name=\"Volatile\"><pValue>GainRedReg</pValue></Integer>"
           "<Integer Name=\"Hidden\"><Visibility>Invisible</Visibility><Streamable>Yes</Streamable>"
           "<pValue>HiddenReg</pValue></Integer>" +
           IntReg("HiddenReg", 24) + Streamed("NoFeature", "HiddenReg") +
           "<Command Name=\"Start\"><Streamable>Yes</Streamable><pValue>HiddenReg</pValue>"
           "<CommandValue>1</CommandValue></Command>"
           "<StringReg Name=\"Name\"><Streamable>Yes</Streamable><Address>32</Address><Length>16</Length>"
           "<AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>";
}

std::vector<std::string> Lines(const CFeatureBag& bag)
{
    std::vector<std::string> lines;
    for (const CFeatureBag::CEntry& entry : bag)
        lines.push_back(std::string(entry.Name) + entry.Selectors.c_str() + "=" + entry.Value.c_str());
    return lines;
}

std::vector<std::string> ToStd(const gcstring_vector& texts)
{
    std::vector<std::string> out;
    for (const gcstring& text : texts)
        out.emplace_back(text);
    return out;
}

CFeatureBag Parse(const std::string& lines)
{
    CFeatureBag bag;
    std::istringstream stream("# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n" + lines);
    stream >> bag;
    return bag;
}
} // namespace

TEST(FeatureBag, StoresStreamableFeaturesSelectedOnesBeforeTheirSelector)
{
    CTestMap map(Camera());
    map.memory.Word(0) = 1;
    map.memory.Word(4) = 11;
    map.memory.Word(8) = 22;
    map.memory.Word(12) = 320;
    map.SetText("Name", "left");
    CFeatureBag bag;
    EXPECT_EQ(bag.StoreToBag(map), 7);
    EXPECT_THAT(Lines(bag),
                ElementsAre("Gain{GainSelector=Red}=11", "Gain{GainSelector=Blue}=22", "GainSelector=Blue",
                            "Width=320", "OffsetX=0", "Hidden=0", "Name=left"));
    EXPECT_EQ(map.memory.Word(0), 1u) << "the selector is as before";
}

TEST(FeatureBag, StopsAtTheLimit)
{
    CTestMap map(Camera());
    CFeatureBag bag;
    EXPECT_EQ(bag.StoreToBag(map, 1), 1);
    EXPECT_THAT(Lines(bag), ElementsAre("Gain{GainSelector=Red}=0"));
    EXPECT_EQ(bag.StoreToBag(map, 0), 0);
    EXPECT_TRUE(bag.empty());
}

TEST(FeatureBag, BringsFeaturesBackWhateverTheirOrder)
{
    CTestMap source(Camera()), target(Camera());
    source.memory.Word(0) = 1;
    source.memory.Word(4) = 11;
    source.memory.Word(8) = 22;
    source.memory.Word(12) = 640;
    target.memory.Word(12) = 8;
    target.memory.Word(16) = 600; // leaves room for no more than 40 pixels
    CFeatureBag bag, again;
    bag.StoreToBag(source);
    gcstring_vector errors;
    EXPECT_TRUE(bag.LoadFromBag(target, true, &errors)) << testing::PrintToString(ToStd(errors));
    EXPECT_EQ(target.memory.Word(0), 1u);
    EXPECT_EQ(target.memory.Word(4), 11u);
    EXPECT_EQ(target.memory.Word(8), 22u);
    EXPECT_EQ(target.memory.Word(12), 640u);
    again.StoreToBag(target);
    EXPECT_TRUE(again == bag);
}

TEST(FeatureBag, SurvivesTheWayThroughText)
{
    CTestMap source(Camera()), target(Camera());
    source.memory.Word(4) = 99;
    CFeatureBag bag, read;
    bag.StoreToBag(source);
    std::stringstream stream;
    stream << bag;
    stream >> read;
    EXPECT_TRUE(read == bag);
    EXPECT_TRUE(read.LoadFromBag(target));
    EXPECT_EQ(target.memory.Word(4), 99u);
}

TEST(FeatureBag, ReportsWhatCannotBeLoadedAndGoesOn)
{
    CTestMap map(Camera());
    const CFeatureBag bag =
        Parse("Unknown\t1\nSerial\t5\nGain\t{GainSelector=Green}\t1\nGain\t{NoSelector=1}\t1\n"
              "Gain\t{GainSelector}\t1\nWidth\tabc\nRoot\t1\nVolatile\t77\nOffsetX\t8\n");
    gcstring_vector errors;
    EXPECT_FALSE(CFeatureBag(bag).LoadFromBag(map, true, &errors));
    EXPECT_THAT(ToStd(errors),
                ElementsAre(HasSubstr("Unknown: "), HasSubstr("Serial: "),
                            HasSubstr("Gain{GainSelector=Green}: "), HasSubstr("Gain{NoSelector=1}: "),
                            HasSubstr("Gain{GainSelector}: "), HasSubstr("Width: "), HasSubstr("Root: ")));
    EXPECT_EQ(map.memory.Word(16), 8u);
    EXPECT_EQ(map.memory.Word(4), 77u) << "features that are not streamable are written all the same";
    EXPECT_NO_THROW(EXPECT_FALSE(CFeatureBag(bag).LoadFromBag(map)));
}

TEST(FeatureBag, ComparesTheTextsItReadsBack)
{
    CTestMap map(
        "<Category Name=\"Root\"><pFeature>Level</pFeature></Category>"
        "<FloatReg Name=\"Level\"><Streamable>Yes</Streamable><Address>0</Address><Length>4</Length>"
        "<AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess></FloatReg>");
    CFeatureBag exact = Parse("Level\t0.5\n"), other = Parse("Level\t0.50\n");
    EXPECT_TRUE(exact.LoadFromBag(map));
    EXPECT_FALSE(other.LoadFromBag(map));
    EXPECT_TRUE(other.LoadFromBag(map, false)) << "without verification nothing is read back";
}

TEST(FeatureBag, TellsFeaturesThatCannotBeRead)
{
    CTestMap map("<Category Name=\"Root\"><pFeature>Mode</pFeature><pFeature>Good</pFeature></Category>" +
                 Enumeration("Mode", 0, {"A"}, "<Streamable>Yes</Streamable>") + Streamed("Good", "GoodReg") +
                 IntReg("GoodReg", 4));
    map.memory.Word(0) = 7; // no entry
    CFeatureBag bag;
    EXPECT_THROW(bag.StoreToBag(map), InvalidArgumentException);
    EXPECT_TRUE(bag.empty());
    gcstring_vector errors;
    EXPECT_EQ(bag.StoreToBag(map, -1, &errors), 1);
    EXPECT_THAT(ToStd(errors), ElementsAre(HasSubstr("Mode: ")));
}

TEST(FeatureBag, RefusesSelectorsOfAbsurdRange)
{
    CTestMap map("<Category Name=\"Root\"><pFeature>Entry</pFeature></Category>"
                 "<Integer Name=\"Index\"><Value>0</Value><pSelected>Entry</pSelected></Integer>" +
                 Streamed("Entry", "EntryReg") + IntReg("EntryReg", 0));
    CFeatureBag bag;
    EXPECT_THAT(RaisedBy<RuntimeException>([&] { bag.StoreToBag(map); }), HasSubstr("Entry"));
}

TEST(FeatureBag, OrdersNestedSelectorsFromWithin)
{
    CTestMap map(
        "<Category "
        "Name=\"Root\"><pFeature>Outer</pFeature><pFeature>Index</pFeature><pFeature>Value</pFeature>"
        "<pFeature>Other</pFeature></Category>" +
        Enumeration("Outer", 0, {"A", "B"}, "<Streamable>Yes</Streamable>",
                    "<pSelected>Other</pSelected><pSelected>Index</pSelected>") +
        "<Integer "
        "Name=\"Index\"><Streamable>Yes</Streamable><pValue>IndexReg</pValue><Min>0</Min><Max>1</Max>"
        "<pSelected>Value</pSelected></Integer>" +
        IntReg("IndexReg", 4) + Streamed("Value", "ValueReg") + IntReg("ValueReg", 8) +
        Streamed("Other", "OtherReg") + IntReg("OtherReg", 12));
    CFeatureBag bag;
    bag.StoreToBag(map);
    EXPECT_THAT(Lines(bag),
                ElementsAre("Value{Outer=A,Index=0}=0", "Value{Outer=A,Index=1}=0",
                            "Value{Outer=B,Index=0}=0", "Value{Outer=B,Index=1}=0", "Index{Outer=A}=0",
                            "Index{Outer=B}=0", "Other{Outer=A}=0", "Other{Outer=B}=0", "Outer=A"));
    EXPECT_TRUE(bag.LoadFromBag(map));
}

TEST(FeatureBag, RefusesToStreamLineBreaks)
{
    CTestMap map(Camera());
    map.SetText("Name", "a\nb");
    CFeatureBag bag;
    bag.StoreToBag(map);
    EXPECT_THAT(RaisedBy<RuntimeException>([&] { bag.ToString(); }), HasSubstr("Name"));
}

TEST(FeatureBag, TakesSingleFeaturesByHand)
{
    CTestMap map(Camera());
    map.memory.Word(20) = 5;
    CFeatureBag bag;
    IPersistScript& script = bag;
    script.PersistFeature(*CValuePtr(map["Serial"]));
    EXPECT_THAT(Lines(bag), ElementsAre("Serial=5"));
}

TEST(FeatureBag, NeedsANodeMap)
{
    CFeatureBag bag;
    EXPECT_THROW(bag.StoreToBag(nullptr), InvalidArgumentException);
    EXPECT_THROW(bag.LoadFromBag(nullptr), InvalidArgumentException);
    CTestMap withoutRoot("<Integer Name=\"I\"><Value>0</Value></Integer>");
    EXPECT_EQ(bag.StoreToBag(withoutRoot), 0);
}
