// SPDX-License-Identifier: Apache-2.0
// What nodes tell of themselves and of their neighbours.
#include "TestMap.h"

#include <GenApi/PortWriteList.h>

#include <limits>
#include <memory>
#include <tuple>
#include <utility>

using namespace GenApi;
using namespace KxTest;

namespace
{

constexpr const char* kOutline = R"(
    Category Root { pFeature Gain; pFeature Mode }
    Integer Gain[NameSpace=Standard] {
        ToolTip Short; Description Long words; DisplayName The gain; Visibility Expert; EventID 9a01;
        pIsAvailable Flag; pAlias Other; pInvalidator Watched; pValue GainReg; pMin Low; Max 0x64; pSelected Mode }
    Integer Other { Streamable Yes; pValue GainReg }
    IntReg GainReg { pAddress Base; at 0x10 4 RW; Little }
    Integer Base { Value 0 } Integer Flag { Value 1 } Integer Low { Value 0 } Integer Watched { Value 0 }
    Enumeration Mode { EnumEntry Off { Value 0 } Value 0 }
    Converter Conv { FormulaTo FROM; FormulaFrom TO; pValue Gain })";

std::string Children(const TestMap& test, const char* name, ELinkType type)
{
    NodeList_t nodes;
    test.Get(name).GetChildren(nodes, type);
    return NamesOf(nodes);
}

} // namespace

TEST(Node, TellsWhatTheDescriptionSays)
{
    TestMap test(kOutline);
    INode& gain = test.Get("Gain");
    EXPECT_EQ(gain.GetName(true), "Std::Gain");
    EXPECT_EQ(test.Get("Other").GetName(true), "Cust::Other");
    EXPECT_EQ(gain.GetToolTip(), "Short");
    EXPECT_EQ(gain.GetDescription(), "Long words");
    EXPECT_EQ(gain.GetDisplayName(), "The gain");
    EXPECT_EQ(test.Get("Other").GetDisplayName(), "Other");
    EXPECT_EQ(gain.GetVisibility(), Expert);
    EXPECT_EQ(gain.GetEventID(), "9a01");
    EXPECT_EQ(gain.GetAlias(), &test.Get("Other"));
    EXPECT_EQ(gain.GetCastAlias(), nullptr);
    EXPECT_TRUE(test.Get("Other").IsStreamable());
    EXPECT_FALSE(gain.IsStreamable());
    EXPECT_TRUE(gain.IsFeature() && test.Get("Root").IsFeature());
    EXPECT_FALSE(test.Get("Other").IsFeature() || test.Get("GainReg").IsFeature());
    EXPECT_EQ(gain.GetNodeMap(), test.map._Ptr);
    for (const auto& [name, interface] : {std::pair{"Gain", "IInteger"},
                                          {"Root", "ICategory"},
                                          {"GainReg", "IInteger"},
                                          {"Mode", "IEnumeration"},
                                          {"EnumEntry_Mode_Off", "IEnumEntry"},
                                          {"Conv", "IFloat"},
                                          {"Device", "IPort"}})
        EXPECT_EQ(GetInterfaceName(&test.Get(name)), interface) << name;
}

TEST(Node, IsFoundByItsNameWithOrWithoutItsNameSpace)
{
    TestMap test(kOutline);
    const INode* const gain = &test.Get("Gain");
    EXPECT_EQ(test.map._GetNode("Std::Gain"), gain);
    EXPECT_EQ(test.map._GetNode("Cust::Other"), &test.Get("Other"));
    for (const char* name : {"Cust::Gain", "Std::Other", "gain", "", "Nobody", "Std::", "::Gain"})
        EXPECT_EQ(test.map._GetNode(name), nullptr) << name;
    NodeList_t nodes;
    test.map._GetNodes(nodes);
    EXPECT_EQ(nodes.size(), test.map._GetNumNodes());
    // In the order of their first mention, be it as a reference.
    std::string order;
    for (size_t i = 0; i < 4; ++i)
        order += std::string(nodes[i]->GetName().c_str()) + " ";
    EXPECT_EQ(order, "Root Gain Mode Flag ");
    EXPECT_NE(test.map._GetNode("Conv_ConvertTo"), nullptr);
    EXPECT_EQ(test.Get("Conv_ConvertFrom").GetAccessMode(), RO);
}

TEST(Node, KnowsItsNeighboursByKindOfLink)
{
    TestMap test(kOutline);
    EXPECT_EQ(Children(test, "Gain", ctReadingChildren), "Flag GainReg Low");
    EXPECT_EQ(Children(test, "Gain", ctWritingChildren), "GainReg");
    EXPECT_EQ(Children(test, "Gain", ctInvalidatingChildren), "Flag GainReg Low Watched");
    EXPECT_EQ(Children(test, "GainReg", ctInvalidatingChildren), "Base Device");
    EXPECT_EQ(Children(test, "GainReg", ctWritingChildren), "");
    EXPECT_EQ(Children(test, "Gain", ctTerminalNodes), "GainReg");
    EXPECT_EQ(Children(test, "Root", ctReadingChildren), "Gain Mode");
    const std::string depending = Children(test, "Base", ctDependingNodes);
    for (const char* name : {"GainReg", "Gain", "Other", "Conv", "Root"})
        EXPECT_NE(depending.find(name), std::string::npos) << name << " in " << depending;
    NodeList_t parents;
    test.Get("GainReg").GetParents(parents);
    EXPECT_EQ(NamesOf(parents), "Gain Other");
    EXPECT_EQ(Children(test, "GainReg", ctParentNodes), "Gain Other");
}

TEST(Node, GivesItsPropertiesAsTheyStandInTheDescription)
{
    TestMap test(kOutline + std::string(R"(
        StructReg S { pIndex[Offset=4] Base; at 0 4 RW; Little; StructEntry Bits { Bit 3 } }
        SwissKnife Knife { pVariable[Name=A] Gain; pVariable[Name=B] Low; Formula A < B ? 1 : 2 })"));
    GenICam::gcstring value, attribute;
    const auto property = [&](const char* node, const char* name) {
        value = attribute = "";
        return test.Get(node).GetProperty(name, value, attribute)
                   ? std::string(value.c_str()) + "|" + attribute.c_str()
                   : "no such property";
    };
    EXPECT_EQ(property("Gain", "Max"), "100|");
    EXPECT_EQ(property("Gain", "pValue"), "GainReg|");
    EXPECT_EQ(property("Gain", "Visibility"), "Expert|");
    EXPECT_EQ(property("Gain", "Soup"), "no such property");
    EXPECT_EQ(property("Root", "pFeature").substr(0, 10), "Gain\tMode|");
    EXPECT_EQ(property("Knife", "pVariable").substr(0, 12), "Gain\tLow|A\tB");
    EXPECT_EQ(property("Knife", "Formula"), "A < B ? 1 : 2|");
    // Facts, defaults, and the place among the others.
    for (const auto& [node, name, text] : {std::tuple{"Gain", "NodeType", "Integer|"},
                                           {"Gain", "Streamable", "No|"},
                                           {"Gain", "pTerminal", "GainReg|"},
                                           {"Gain", "IsFeature", "Yes|"},
                                           {"Mode", "pSelecting", "Gain|"},
                                           {"Mode", "pEnumEntry", "EnumEntry_Mode_Off|"},
                                           {"Bits", "NodeType", "MaskedIntReg|"},
                                           {"Bits", "LSB", "3|"},
                                           {"Bits", "MSB", "3|"},
                                           {"Bits", "Sign", "Unsigned|"},
                                           {"Bits", "pIndex", "Base|4"},
                                           {"Bits", "pTerminal", "Bits|"},
                                           {"Conv", "Slope", "Automatic|"},
                                           {"Conv", "pSwissKnifeTo", "Conv_ConvertTo|"},
                                           {"Conv_ConvertTo", "InputDirection", "To|"},
                                           {"Device", "SwapEndianess", "No|"},
                                           {"Device", "pTerminal", "no such property"},
                                           {"EnumEntry_Mode_Off", "DeviceName", "no such property"}})
        EXPECT_EQ(property(node, name), text) << node << " " << name;
    GenICam::gcstring_vector names;
    test.Get("GainReg").GetPropertyNames(names);
    std::string all;
    for (const auto& name : names)
        all += std::string(name.c_str()) + " ";
    EXPECT_EQ(all,
              "AccessMode Address Cachable DeviceName Endianess ExposeStatic ImposedAccessMode IsDeprecated "
              "IsFeature Length Name NameSpace NodeType Representation Sign Streamable Visibility pAddress "
              "pDependent pPort pTerminal ");
}

TEST(Node, OfNoKindIsAValueWithoutText)
{
    TestMap test("Node X { ToolTip t }");
    EXPECT_EQ(test.Get("X").GetPrincipalInterfaceType(), intfIValue);
    EXPECT_EQ(test.Get("X").GetAccessMode(), RW);
    test.Value("X").FromString("anything");
    EXPECT_EQ(test.Value("X").ToString(true), "");
    EXPECT_FALSE(test.Value("X").IsValueCacheValid());
}

// Another description of the same value is found through pCastAlias; pAlias is for readers of the tree.
TEST(Node, GivesItsOtherFaces)
{
    TestMap test(R"(
        Float F { pCastAlias I; Value 1 } Integer I { pCastAlias F; Value 1 } Float E { pCastAlias Mode; Value 1 }
        Float Plain { pAlias I; Value 1 } Enumeration Mode { EnumEntry Off { Value 0 } Value 0 })");
    EXPECT_EQ(CFloatPtr(&test.Get("F")).GetIntAlias(), &test.Int("I"));
    CIntegerRef integer;
    integer.SetReference(&test.Get("I"));
    EXPECT_EQ(integer.GetFloatAlias(), &test.Flt("F"));
    EXPECT_EQ(CFloatPtr(&test.Get("E")).GetEnumAlias(), &test.Enum("Mode"));
    EXPECT_EQ(CFloatPtr(&test.Get("E")).GetIntAlias(), nullptr);
    EXPECT_EQ(CFloatPtr(&test.Get("Plain")).GetIntAlias(), nullptr);
}

TEST(ConcatenatedWrite, WritesInItsOrderAndPassesOverWhatItCannotUse)
{
    TestMap test(R"(
        Integer A { pValue AReg } IntReg AReg { at 0 4 RW; Little }
        Integer B { pValue BReg } IntReg BReg { at 4 4 RW; Little })");
    CallbackLog log(test);
    CNodeWriteConcatenator* const list = test.map._NewNodeWriteConcatenator();
    for (const auto& [name, value] : {std::pair{"B", "1"}, {"A", "2"}, {"Nobody", "3"}, {"B", "soup"}})
        list->Add(name, value);
    GenICam::gcstring_vector errors;
    EXPECT_TRUE(test.map._ConcatenatedWrite(list, true, &errors));
    EXPECT_EQ(errors.size(), 0u);
    EXPECT_EQ(test.port.TakeAccesses(), "w4:4 w0:4 w4:4");
    EXPECT_EQ(test.Int("A").GetValue(), 2);
    EXPECT_EQ(test.Int("B").GetValue(), 0);
    list->Clear();
    list->Add("A", "7");
    test.port.onWrite = [] { throw TIMEOUT_EXCEPTION("cable pulled"); };
    EXPECT_FALSE(test.map._ConcatenatedWrite(list, true, &errors));
    EXPECT_EQ(errors.size(), 1u);
    list->Destroy();
}

namespace
{

/// Takes writes singly or many at once, and tells which.
class StackedPort : public CPortStackedImpl
{
public:
    std::string calls;
    bool isBusy = false;

    EAccessMode GetAccessMode() const override { return RW; }
    void Read(void* pBuffer, int64_t address, int64_t length) override
    {
        calls += "r ";
        memory.Read(pBuffer, address, length);
    }
    void Write(const void* pBuffer, int64_t address, int64_t length) override
    {
        calls += "w ";
        memory.Write(pBuffer, address, length);
    }
    void Write(PORT_REGISTER_STACK_ENTRY* pEntries, size_t count) override
    {
        if (isBusy)
            throw std::runtime_error("busy");
        for (size_t i = 0; i < count; ++i)
            calls +=
                "[" + std::to_string(pEntries[i].Address) + "," + std::to_string(pEntries[i].Size) + "] ";
    }

    FakePort memory;
};

} // namespace

TEST(ConcatenatedWrite, OnAStackedPortIsOneCall)
{
    StackedPort port;
    TestMap test(R"(
        Integer I { pValue IReg; Min 0 } IntReg IReg { at 16 4 RW; Little }
        IntReg J { at 20 4 RW; Little } MaskedIntReg Bits { at 20 4 RW; Bit 3; Little } Float Own { Value 0 })",
                 false);
    ASSERT_TRUE(test.map._Ptr->Connect(&port));
    test.Int("I").SetValue(1);
    EXPECT_EQ(std::exchange(port.calls, ""), "w ");
    CNodeWriteConcatenatorRef list(test.map._NewNodeWriteConcatenator());
    list._Add("I", int64_t{5});
    list._Add("J", 6.6);
    list._Add("I", int64_t{-1});
    list._Add("Own", true);
    list._Add("I", "7");
    GenICam::gcstring_vector errors;
    EXPECT_FALSE(test.map._ConcatenatedWrite(list, true, &errors));
    EXPECT_EQ(port.calls, "[16,4] [20,4] [16,4] ");
    EXPECT_EQ(errors.size(), 1u);
    EXPECT_EQ(std::string(errors.at(0)).find("Error while writing node 'I': "), 0u);
    EXPECT_EQ(test.Int("J").GetValue(), 6);
    EXPECT_EQ(test.Flt("Own").GetValue(), 1);
    port.isBusy = true;
    EXPECT_FALSE(test.map._ConcatenatedWrite(list));
    EXPECT_EQ(test.Int("I").GetValue(), 1) << "what was not taken isn't shown";
    list.Release()->Destroy();
    EXPECT_EQ(KindRaisedBy([&] { list._Clear(); }), "Access");
    EXPECT_TRUE(test.map._Ptr->ConcatenatedWrite(nullptr));
}

TEST(Port, RecordsItsWritesAndDoesThemAgain)
{
    TestMap test("IntReg A { at 0 4 RW; Little } IntReg B { at 4 4 RW; Little }");
    CPortWriteList list;
    CPortRecorderPtr recorder(&test.Get("Device"));
    recorder->StartRecording(&list);
    test.Int("A").SetValue(1);
    test.Int("B").SetValue(2);
    recorder->StopRecording();
    test.Int("A") = 3;
    EXPECT_EQ(test.port.TakeAccesses(), "w0:4 w4:4 w0:4");
    recorder->Replay(&list);
    EXPECT_EQ(test.port.TakeAccesses(), "w0:4 w4:4");
    EXPECT_EQ(test.Int("A").GetValue(), 1) << "and nothing cached stays";
    recorder->Replay(nullptr);
    test.Int("A") = 3;
    test.port.onWrite = [n = 0]() mutable {
        if (++n == 2)
            throw std::runtime_error("cable pulled");
    };
    EXPECT_EQ(KindRaisedBy([&] { recorder->Replay(&list); }), "std");
    EXPECT_EQ(test.Int("A").GetValue(), 1);
    EXPECT_EQ(list.GetCookie(), -1);
}

TEST(Port, OfAProgramInvalidatesItsNodeAndMayGoBeforeTheMap)
{
    struct Registers
    {
        uint32_t value;
    };
    TestMap test("IntReg A { at 0 4 RW; Little } Port Other { } Port Last { }", false);
    {
        CTestPortStruct<Registers> port;
        port.InvalidateNode(); // of no node
        ASSERT_TRUE(test.map._Connect(&port));
        EXPECT_EQ(test.Int("A").GetValue(), 0);
        port.value = 5;
        EXPECT_EQ(test.Int("A").GetValue(), 0);
        port.InvalidateNode();
        EXPECT_EQ(test.Int("A").GetValue(), 5);
        ASSERT_TRUE(test.map._Connect(&port, "Other") && test.map._Connect(&port, "Last"));
        ASSERT_TRUE(test.map._Connect(static_cast<IPort*>(nullptr), "Last"));
    }
    EXPECT_EQ(test.Get("A").GetAccessMode(), NI);
    EXPECT_EQ(test.Get("Other").GetAccessMode(), NI);
    CTestPortStruct<Registers> other;
    {
        CNodeMapRef map;
        map._LoadXMLFromString(DescriptionAsXml("IntReg A { at 0 4 RW; Little }").c_str());
        map._Connect(&other);
    }
    other.InvalidateNode(); // the map has gone
    std::unique_ptr<IPort> owned(new CTestPortStruct<Registers>);
}

TEST(Node, CarriesAPointerOfItsUser)
{
    TestMap test("Integer X { Value 1 }");
    int mine = 0;
    CNodeUserDataPtr node(&test.Get("X"));
    EXPECT_EQ(node->SetUserData(&mine), nullptr);
    test.Get("X").InvalidateNode();
    EXPECT_EQ(node->GetUserData(), &mine);
    EXPECT_EQ(CNodeMapUserDataPtr(test.map._Ptr)->GetUserData(), nullptr);
}

TEST(Reference, ForwardsWhenItIsSet)
{
    enum Choice
    {
        Off,
        On,
        Missing
    };
    TestMap test(
        "Integer X { Value 3 } Enumeration E { EnumEntry A { Value 7 } EnumEntry B { Value 9 } Value 7 }");
    CIntegerRef x;
    EXPECT_EQ(x.GetAccessMode(), NI);
    EXPECT_EQ(RaisedBy([&] { x.SetValue(1); }).description, "Feature not present (reference not valid)");
    x.SetReference(&test.Get("E"));
    EXPECT_EQ(x.GetAccessMode(), NI) << "of another kind";
    x.SetReference(&test.Get("X"));
    x = 4;
    EXPECT_EQ(x() + x.GetMin(), 4 + std::numeric_limits<int64_t>::min());
    CEnumerationTRef<Choice> e;
    e.SetReference(&test.Get("E"));
    e.SetNumEnums(3);
    e.SetEnumReference(Off, "A");
    e.SetEnumReference(On, "B");
    e.SetEnumReference(Missing, "C");
    e.SetEnumReference(17, "A"); // no such place
    e = On;
    EXPECT_EQ(test.Enum("E").GetIntValue(), 9);
    e = "A";
    EXPECT_EQ(e.GetValue(), Off);
    EXPECT_EQ(RaisedBy([&] { e.SetValue(Missing); }).description, "EnumEntry 2 not present");
    EXPECT_EQ(e.GetEntry(Missing), nullptr);
}
