// SPDX-License-Identifier: Apache-2.0
// Saving the features of a node map and bringing them back.
#include "ToolsTestSupport.h"

#include <sstream>
#include <stdexcept>
#include <utility>

using namespace GenApi;
using namespace GenICam;
using namespace KxGenApiTest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
std::string Streamed(const std::string& name)
{
    return "Integer " + name + " { Streamable Yes; pValue " + name + "Reg } ";
}

/// Two gains by selector, a width with a limit that depends on an offset that comes later, a name.
constexpr const char* kCamera = R"(
    Category Root { pFeature Analog; pFeature Format }
    Category Analog { pFeature GainSelector; pFeature Gain }
    Category Format {
        pFeature Width; pFeature OffsetX; pFeature Serial; pFeature Volatile; pFeature Hidden; pFeature Start;
        pFeature Name; pFeature Gain }
    Enumeration GainSelector {
        Streamable Yes; EnumEntry Red { Value 0 } EnumEntry Blue { Value 1 }
        pValue GainSelectorReg; pSelected Gain }
    Integer Gain {
        Streamable Yes; pIndex GainSelectorReg; pValueIndexed[Index=0] GainRedReg; pValueDefault GainBlueReg }
    Integer Width { Streamable Yes; pValue WidthReg; Min 8; pMax WidthMax }
    IntSwissKnife WidthMax { pVariable[Name=O] OffsetXReg; Formula 640-O }
    Integer OffsetX { Streamable Yes; pValue OffsetXReg } Integer Serial { Streamable Yes; pValue SerialReg }
    Integer Hidden { Visibility Invisible; Streamable Yes; pValue HiddenReg }
    Integer NoFeature { Streamable Yes; pValue HiddenReg } Integer Volatile { pValue GainRedReg }
    Command Start { Streamable Yes; pValue HiddenReg; CommandValue 1 }
    StringReg Name { Streamable Yes; at 32 16 RW }
    IntReg GainSelectorReg { at 0 4 RW; Little }
    IntReg GainRedReg { at 4 4 RW; Little } IntReg GainBlueReg { at 8 4 RW; Little }
    IntReg WidthReg { at 12 4 RW; Little } IntReg OffsetXReg { at 16 4 RW; Little }
    IntReg SerialReg { at 20 4 RO; Little } IntReg HiddenReg { at 24 4 RW; Little })";

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
    CTestMap map(kCamera);
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

TEST(FeatureBag, StopsAtTheLimitAndTakesWhatTheFilterNames)
{
    CTestMap map(kCamera);
    for (const auto& [limit, count] : {std::pair{0, 1}, {1, 1}, {2, 2}, {-1, 7}}) {
        CFeatureBag bag;
        EXPECT_EQ(bag.StoreToBag(map, limit), count) << limit;
        EXPECT_EQ(bag.begin()->Selectors, "{GainSelector=Red}");
        EXPECT_EQ(bag.StoreToBag(map, limit), count);
        EXPECT_EQ(bag.size(), 2u * static_cast<size_t>(count)) << "a second store appends";
    }
    CFeatureBag bag;
    gcstring_vector none, some{"Gain", "Nobody", "GainSelector"};
    EXPECT_EQ(bag.StoreToBag(map, -1, &none), 0);
    EXPECT_EQ(bag.StoreToBag(map, -1, &some), 3);
    EXPECT_THAT(Lines(bag),
                ElementsAre("Gain{GainSelector=Red}=0", "Gain{GainSelector=Blue}=0", "GainSelector=Red"));
}

// The very bytes that other programs write and read.
TEST(FeatureBag, WritesTheTextThatOthersWrite)
{
    const std::string entries = "EnumEntry x { Value 0 } EnumEntry y { Value 1 } Value ";
    CTestMap map("Category Root { pFeature Plain; pFeature A; pFeature Gain; pFeature Offs }"
                 "Enumeration A { " +
                 entries + "1; pSelected Gain; pSelected Offs } Enumeration B { " + entries +
                 "0; pSelected Offs } " + Streamed("Plain") + Streamed("Gain") + Streamed("Offs") +
                 IntReg("PlainReg", 4) + IntReg("GainReg", 8) + IntReg("OffsReg", 12));
    map.memory.Word(4) = 5;
    CFeatureBag bag;
    EXPECT_EQ(bag.StoreToBag(map), 10);
    EXPECT_EQ(
        std::string(bag.ToString()),
        "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n"
        "# GenApi persistence file (version 3.4.0)\n"
        "# Device = Vendor::Model -- Tip -- Device version = 2.3.4 -- Product GUID = "
        "11111111-1111-1111-1111-111111111111 -- Product version GUID = "
        "22222222-2222-2222-2222-222222222222\n"
        "Plain\t5\n"
        "Gain\t{A=x}\t0\nGain\t{A=y}\t0\nA\ty\n"
        "Offs\t{B=x\tA=x}\t0\nOffs\t{B=x\tA=y}\t0\nOffs\t{B=y\tA=x}\t0\nOffs\t{B=y\tA=y}\t0\nB\tx\nA\ty\n");
    EXPECT_TRUE(bag.LoadFromBag(map));
    EXPECT_EQ(map.Text("A") + map.Text("B"), "yx");
}

TEST(FeatureBag, BringsFeaturesBackWhateverTheirOrder)
{
    CTestMap source(kCamera), target(kCamera);
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

TEST(FeatureBag, ReportsWhatCannotBeLoadedAndGoesOn)
{
    CTestMap map(kCamera);
    const CFeatureBag bag = Parse("Unknown\t1\nSerial\t5\nGain\t{GainSelector=Green}\t1\nWidth\tabc\n"
                                  "Volatile\t77\nOffsetX\t8\nHidden\t 7 \n");
    gcstring_vector errors{"of before"};
    EXPECT_FALSE(CFeatureBag(bag).LoadFromBag(map, true, &errors));
    const auto selector = HasSubstr("Error while writing selector 'GainSelector': ");
    EXPECT_THAT(ToStd(errors),
                ElementsAre("Error while writing node: 'Unknown' not found ",
                            HasSubstr("Error while writing node 'Serial': "), selector,
                            HasSubstr("Error while writing node 'Width': "), selector,
                            "Error while verifying node 'Hidden'. Expected ' 7 ', but found '7'"));
    EXPECT_EQ(map.memory.Word(16), 8u);
    EXPECT_EQ(map.memory.Word(4), 77u) << "features that are not streamable are written all the same";
    EXPECT_NO_THROW(EXPECT_FALSE(CFeatureBag(bag).LoadFromBag(map)));
    EXPECT_TRUE(Parse("Gain\t{GainSelector=Green}\t1\nGain\t{NoSelector=1}\t9\n").LoadFromBag(map))
        << "selectors alone make no failure, and unknown ones are passed over";
    EXPECT_EQ(map.Int("Gain"), 9);
    EXPECT_TRUE(Parse("Gain\t{NoSelector=1,GainSelector=Blue}\t6\n").LoadFromBag(map)) << "files of before";
    EXPECT_EQ(map.memory.Word(8), 6u);
    Register(map["GainSelector"], [](INode*) { throw std::runtime_error("as ports may"); });
    EXPECT_TRUE(Parse("Gain\t{GainSelector=Red}\t1\n").LoadFromBag(map, false, &errors));
    EXPECT_THAT(ToStd(errors), ElementsAre(selector));
}

// Limits that hang on one another don't matter, nor do locks; what is imposed on a feature does.
TEST(FeatureBag, LeavesAloneWhatIsReadOnly)
{
    CTestMap map("Integer Locked { pIsLocked One; pValue R; Max 1 } Integer One { Value 1 }"
                 "Integer Fixed { ImposedAccessMode RO; pValue R } IntReg R { at 4 4 RW; Little }");
    EXPECT_TRUE(Parse("Locked\t5\n").LoadFromBag(map, false));
    EXPECT_FALSE(Parse("Fixed\t6\n").LoadFromBag(map, false));
    EXPECT_EQ(map.memory.Word(4), 5u);
}

TEST(FeatureBag, ComparesTheTextsItReadsBack)
{
    CTestMap map("Category Root { pFeature Level } FloatReg Level { Streamable Yes; at 0 4 RW; Little }");
    CFeatureBag exact = Parse("Level\t0.5\n"), other = Parse("Level\t0.50\n");
    EXPECT_TRUE(exact.LoadFromBag(map));
    EXPECT_FALSE(other.LoadFromBag(map));
    EXPECT_TRUE(other.LoadFromBag(map, false)) << "without verification nothing is read back";
}

TEST(FeatureBag, TellsFeaturesThatCannotBeRead)
{
    CTestMap map("Category Root { pFeature Mode; pFeature Good }"
                 "Enumeration Mode { Streamable Yes; EnumEntry A { Value 0 } pValue ModeReg }" +
                 IntReg("ModeReg", 0) + Streamed("Good") + IntReg("GoodReg", 4));
    map.memory.Word(0) = 7; // no entry
    CFeatureBag bag;
    EXPECT_THROW(bag.StoreToBag(map), InvalidArgumentException);
    EXPECT_TRUE(bag.empty());
    gcstring_vector errors;
    EXPECT_EQ(bag.StoreToBag(map, -1, nullptr, &errors), 1);
    EXPECT_THAT(ToStd(errors), ElementsAre(HasSubstr("Mode: ")));
}

TEST(FeatureBag, RefusesSelectorsOfAbsurdRange)
{
    CTestMap map("Category Root { pFeature Entry } Integer Index { Value 0; pSelected Entry }" +
                 Streamed("Entry") + IntReg("EntryReg", 0));
    CFeatureBag bag;
    EXPECT_THAT(RaisedBy<RuntimeException>([&] { bag.StoreToBag(map); }), HasSubstr("Entry"));
}

TEST(FeatureBag, TellsSelectorsBehindWhatTheySelect)
{
    CTestMap map("Category Root { pFeature Outer; pFeature Index; pFeature Value; pFeature Other }"
                 "Enumeration Outer { Streamable Yes; EnumEntry A { Value 0 } EnumEntry B { Value 1 }"
                 "    pValue OuterReg; pSelected Other; pSelected Index }"
                 "Integer Index { Streamable Yes; pValue IndexReg; Min 0; Max 1; pSelected Value }" +
                 Streamed("Value") + Streamed("Other") + IntReg("OuterReg", 0) + IntReg("IndexReg", 4) +
                 IntReg("ValueReg", 8) + IntReg("OtherReg", 12));
    CFeatureBag bag;
    bag.StoreToBag(map);
    EXPECT_THAT(Lines(bag), ElementsAre("Value{Outer=A\tIndex=0}=0", "Value{Outer=A\tIndex=1}=0",
                                        "Value{Outer=B\tIndex=0}=0", "Value{Outer=B\tIndex=1}=0", "Outer=A",
                                        "Index=0", "Other{Outer=A}=0", "Other{Outer=B}=0", "Outer=A"));
    EXPECT_TRUE(bag.LoadFromBag(map));
}

TEST(FeatureBag, RefusesToStreamLineBreaks)
{
    CTestMap map(kCamera);
    map.SetText("Name", "a\nb");
    CFeatureBag bag;
    bag.StoreToBag(map);
    EXPECT_THAT(RaisedBy<RuntimeException>([&] { bag.ToString(); }), HasSubstr("Name"));
}

TEST(FeatureBag, TakesSingleFeaturesByHand)
{
    CTestMap map(kCamera);
    map.memory.Word(20) = 5;
    CFeatureBag bag;
    IPersistScript& script = bag;
    script.PersistFeature(*CValuePtr(map["Serial"]));
    CSelectorSet selectors(map["Gain"]);
    script.PersistFeature(*CValuePtr(map["Gain"]), &selectors);
    EXPECT_THAT(Lines(bag), ElementsAre("Serial=5", "Gain{GainSelector=Red}=0"));
}

// The device hears of both, whatever comes of them.
TEST(FeatureBag, RunsTheStandardsCommandsAroundStoreAndLoad)
{
    std::string commands;
    int address = 0;
    for (const char* name : {"DeviceFeaturePersistenceStart", "DeviceFeaturePersistenceEnd",
                             "DeviceRegistersStreamingStart", "DeviceRegistersStreamingEnd"})
    {
        const std::string reg = std::string(name) + "Reg";
        commands += std::string("Command ") + name + "[NameSpace=Standard] { pValue " + reg +
                    "; CommandValue 1 } " + IntReg(reg, address += 4);
    }
    CTestMap map(commands);
    const auto runs = [&] {
        std::string text;
        for (size_t i = 4; i <= 16; i += 4)
            text += std::to_string(std::exchange(map.memory.Word(i), 0u));
        return text;
    };
    CFeatureBag bag;
    bag.StoreToBag(map);
    EXPECT_EQ(runs(), "1100");
    EXPECT_FALSE(Parse("Nobody\t1\n").LoadFromBag(map, false));
    EXPECT_EQ(runs(), "0011");
}

TEST(FeatureBagger, BagsAndUnbagsUserAndSequencerSets)
{
    // The features' values live in the set that is loaded; saving is seen by its command alone.
    CTestMap map(R"(Category Root { pFeature Gain }
        Enumeration UserSetSelector[NameSpace=Standard] {
            EnumEntry Default { Value 0 } EnumEntry UserSet1 { Value 1 } Value 0 }
        Enumeration UserSetFeatureSelector[NameSpace=Standard] { EnumEntry Gain { Value 0 } Value 0 }
        Boolean UserSetFeatureEnable[NameSpace=Standard] { Value 1 }
        Command UserSetLoad[NameSpace=Standard] { pValue GainReg; CommandValue 9 }
        Command UserSetSave[NameSpace=Standard] { pValue SaveReg; CommandValue 7 }
        Enumeration SequencerSetSelector[NameSpace=Standard] { EnumEntry Zero { Value 0 } Value 0 }
        Enumeration SequencerFeatureSelector[NameSpace=Standard] { EnumEntry Gain { Value 0 } Value 0 }
        Boolean SequencerFeatureEnable[NameSpace=Standard] { Value 1 }
        Command SequencerSetLoad[NameSpace=Standard] { pValue GainReg; CommandValue 4 } )" +
                 Streamed("Gain") + IntReg("GainReg", 0) + IntReg("SaveReg", 12));
    map.memory.Word(0) = 3;
    CFeatureBagger bagger, again;
    ASSERT_EQ(bagger.Bag(map, true, true, true), 4u);
    EXPECT_EQ(map.memory.Word(0), 3u) << "the features are as before";
    std::stringstream text;
    text << bagger;
    const std::string mark = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n";
    EXPECT_THAT(text.str(),
                HasSubstr("# {4709CB3C-7322-4460-84C3-DA11DDA09939}\n# GenApi CFeatureBagger persistence "
                          "file (version 3.4.0)\n# Device = "));
    EXPECT_THAT(text.str(), HasSubstr("\n[All]\n" + mark + "Gain\t3\n[UserSet.Default]\n" + mark +
                                      "Gain\t9\n[UserSet.UserSet1]\n" + mark +
                                      "Gain\t9\n[SequencerSet.Zero]\n" + mark + "Gain\t4\n"));
    text >> again;
    ASSERT_EQ(again.size(), 4u);
    EXPECT_TRUE(again.at(3) == bagger.at(3));
    map.memory.Word(0) = 0;
    EXPECT_TRUE(again.UnBag(map));
    EXPECT_EQ(map.memory.Word(12), 7u) << "UserSet1 was saved";
    EXPECT_EQ(map.memory.Word(0), 3u) << "the present features come last";
    map.SetText("UserSetSelector", "Default");
    Register(map["UserSetLoad"], [loads = 0](INode*) mutable {
        if (++loads == 2)
            throw std::runtime_error("cable pulled");
    });
    EXPECT_THROW(again.Bag(map, true, true), std::runtime_error);
    EXPECT_EQ(map.memory.Word(0), 3u);
    EXPECT_EQ(map.Text("UserSetSelector"), "Default");
    EXPECT_EQ(again.size(), 4u) << "it keeps what it had";
    std::istringstream plain(mark + "Gain\t5\n");
    plain >> again;
    ASSERT_EQ(again.size(), 1u);
    EXPECT_EQ(again.begin()->GetBagName(), "All");
    EXPECT_THROW(again.at(1), std::out_of_range);
}

TEST(FeatureBag, NeedsANodeMap)
{
    CFeatureBag bag;
    EXPECT_THROW(bag.StoreToBag(nullptr), InvalidArgumentException);
    EXPECT_THROW(bag.LoadFromBag(nullptr), InvalidArgumentException);
    CTestMap withoutFeatures("Integer I { Value 0 }");
    EXPECT_EQ(bag.StoreToBag(withoutFeatures), 0);
}
