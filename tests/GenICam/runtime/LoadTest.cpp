// SPDX-License-Identifier: Apache-2.0
// From a description to a node map: references and factories.
#include "TestMap.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

using namespace GenApi;
using namespace KxTest;

namespace
{

CNodeMapFactory FactoryOf(const std::string& xml, ECacheUsage_t usage = CacheUsage_Automatic)
{
    return CNodeMapFactory(ContentType_Xml, xml.data(), xml.size(), usage);
}

} // namespace

TEST(MapReference, RaisesWhileEmptyAndTakesOneMapOnly)
{
    CNodeMapRef map("Camera");
    NodeList_t nodes;
    for (const auto& call : std::vector<std::function<void()>>{
             [&] { map._GetNode("X"); }, [&] { map._GetNodes(nodes); }, [&] { map._Poll(1); },
             [&] { map._InvalidateNodes(); }, [&] { map._Connect(static_cast<IPort*>(nullptr)); },
             [&] { map._Connect(static_cast<IPort*>(nullptr), "D"); }, [&] { map._GetLock(); },
             [&] { map._GetNumNodes(); }, [&] { map._GetModelName(); }})
    {
        const Raised raised = RaisedBy(call);
        EXPECT_EQ(raised.kind, "Access");
        EXPECT_EQ(raised.description, "Feature not present (reference not valid)");
    }
    map._Destroy();
    const std::string xml = DescriptionAsXml("Integer X { Value 1 }");
    map._LoadXMLFromString(xml.c_str());
    const Raised again = RaisedBy([&] { map._LoadXMLFromString(xml.c_str()); });
    EXPECT_EQ(again.kind, "Runtime");
    EXPECT_EQ(again.description, "Node map already created");
    EXPECT_EQ(map._GetDeviceName(), "Camera");
    EXPECT_EQ(map._GetNode("X")->GetDeviceName(), "Camera");
    map._Destroy();
    EXPECT_EQ(map._Ptr, nullptr);
    map._LoadXMLFromString(xml.c_str());
    EXPECT_NE(map._GetNode("X"), nullptr);
}

TEST(MapReference, CopiesShareTheMapUntilTheLastOneGoes)
{
    CNodeMapRef copy;
    INode* pNode = nullptr;
    {
        CNodeMapRef map;
        map._LoadXMLFromString(DescriptionAsXml("Integer X { Value 1 }").c_str());
        copy = map;
        pNode = map._GetNode("X");
        CNodeMapRef third(map);
        third._GetNode("X")->ImposeVisibility(Guru);
    }
    EXPECT_EQ(copy._GetNode("X"), pNode);
    EXPECT_EQ(pNode->GetVisibility(), Guru);
    copy = nullptr;
    EXPECT_EQ(KindRaisedBy([&] { copy._GetNode("X"); }), "Access");
}

TEST(MapReference, LoadsFilesWithVariablesInTheirNames)
{
    char folder[] = "/tmp/kxapi-load-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    const std::string file = std::string(folder) + "/map.xml";
    std::ofstream(file) << DescriptionAsXml("Integer X { Value 1 }");
    setenv("KXAPI_TEST_FOLDER", folder, 1);
    CNodeMapRef map;
    map._LoadXMLFromFile("$(KXAPI_TEST_FOLDER)/map.xml");
    EXPECT_NE(map._GetNode("X"), nullptr);
    const auto loading = [](const char* name, auto method) {
        return KindRaisedBy([&] { (CNodeMapRef().*method)(name); });
    };
    EXPECT_EQ(loading((file + "x").c_str(), &CNodeMapRef::_LoadXMLFromFile), "Runtime");
    EXPECT_EQ(loading("", &CNodeMapRef::_LoadXMLFromFile), "InvalidArgument");
    EXPECT_EQ(loading(folder, &CNodeMapRef::_LoadXMLFromFile), "Runtime");
    EXPECT_EQ(KindRaisedBy([] { CNodeMapRef()._LoadXMLFromZIPData("PK\3\4 and nothing", 16); }), "Runtime");
    unlink(file.c_str());
    rmdir(folder);
}

TEST(MapReference, TellsWhatTheHeadOfTheDescriptionSays)
{
    TestMap test("");
    EXPECT_EQ(test.map._GetModelName(), "Model");
    EXPECT_EQ(test.map._GetVendorName(), "Vendor");
    EXPECT_EQ(test.map._GetToolTip(), "Tip");
    EXPECT_EQ(test.map._GetStandardNameSpace(), "None");
    EXPECT_EQ(test.map._GetVersionGuid(), "22222222-2222-2222-2222-222222222222");
    Version_t version;
    test.map._GetDeviceVersion(version);
    EXPECT_EQ(version.Major * 100 + version.Minor * 10 + version.SubMinor, 234);
    test.map._GetSchemaVersion(version);
    EXPECT_EQ(version.Major * 10 + version.Minor, 11);
}

TEST(Map, ConnectsPortsByTheirName)
{
    TestMap test("Port Second { } Integer X { Value 1 } IntReg R { at 0 4 RW; Little } "
                 "IntReg R2 { Address 0; Length 4; AccessMode RW; pPort Second; Little }",
                 false);
    FakePort second;
    second.Put(0, {2});
    EXPECT_TRUE(test.map._Connect(&second, "Second"));
    EXPECT_EQ(test.Int("R2").GetValue(), 2);
    EXPECT_EQ(test.Get("R").GetAccessMode(), NI);
    EXPECT_FALSE(test.map._Connect(&test.port, "Third"));
    EXPECT_FALSE(test.map._Connect(&test.port, "X"));
    EXPECT_TRUE(test.map._Connect(static_cast<IPort*>(nullptr), "Second"));
    EXPECT_EQ(test.Get("R2").GetAccessMode(), NI);
}

TEST(Factory, MakesMapsThatShareNothingButTheDescription)
{
    CNodeMapFactory factory =
        FactoryOf(DescriptionAsXml("Integer X { Value 1 } IntReg R { at 0 4 RW; Little }"));
    CNodeMapRef a(factory.CreateNodeMap("A")), b(factory.CreateNodeMap("B"));
    factory = CNodeMapFactory();
    FakePort portA, portB;
    a._Connect(&portA);
    b._Connect(&portB);
    CIntegerPtr(a._GetNode("X"))->SetValue(5);
    CIntegerPtr(a._GetNode("R"))->SetValue(6);
    EXPECT_EQ(CIntegerPtr(b._GetNode("X"))->GetValue(), 1);
    EXPECT_EQ(CIntegerPtr(b._GetNode("R"))->GetValue(), 0);
    EXPECT_EQ(a._Ptr->GetDeviceName() + b._Ptr->GetDeviceName(), "AB");
    EXPECT_TRUE(factory.IsEmpty());
    EXPECT_EQ(KindRaisedBy([&] { factory.CreateNodeMap(); }), "LogicalError");
    EXPECT_EQ(KindRaisedBy([&] { factory.ExtractSubtree("X"); }), "LogicalError");
}

TEST(Factory, SharesDescriptionsAsToldAndOnlyWhileTheyAreInUse)
{
    const std::string xml = DescriptionAsXml("Integer X { Value 20260 }");
    const auto forceRead = [&] {
        return KindRaisedBy([&] { FactoryOf(xml, CacheUsage_ForceRead).LoadAndInject(); });
    };
    CNodeMapFactory::ClearCache();
    EXPECT_EQ(forceRead(), "Runtime") << "nobody has it yet";
    {
        CNodeMapFactory own = FactoryOf(xml, CacheUsage_Ignore);
        own.LoadAndInject();
        EXPECT_EQ(forceRead(), "Runtime") << "not offered";
        CNodeMapFactory offered = FactoryOf(xml, CacheUsage_ForceWrite);
        offered.LoadAndInject();
        EXPECT_EQ(forceRead(), "none");
        CNodeMapRef map(FactoryOf(xml, CacheUsage_ForceRead).CreateNodeMap());
        EXPECT_EQ(CIntegerPtr(map._GetNode("X"))->GetValue(), 20260);
    }
    EXPECT_EQ(forceRead(), "Runtime") << "the last user has gone";
}

TEST(Factory, TellsHowFarItIs)
{
    CNodeMapFactory none, factory = FactoryOf(DescriptionAsXml("Integer X { Value 1 }"));
    const auto states = [](const CNodeMapFactory& of) {
        return std::string{of.IsEmpty() ? 'E' : '-', of.IsLoaded() ? 'L' : '-',
                           of.IsPreprocessed() ? 'P' : '-',
                           of.IsCameraDescriptionFileDataReleased() ? 'R' : '-'};
    };
    EXPECT_EQ(states(none), "E---");
    EXPECT_EQ(states(factory), "----");
    EXPECT_EQ(KindRaisedBy([&] { factory.ToXml(); }), "LogicalError") << "not preprocessed";
    factory.LoadAndInject();
    EXPECT_EQ(states(factory), "-L--");
    factory.Preprocess();
    EXPECT_EQ(states(factory), "-LP-");
    CLock lock; // outlives its maps
    {
        CNodeMapRef own(factory.CreateNodeMap(lock)), again(factory.CreateNodeMap("Again"));
        EXPECT_EQ(states(factory), "-LPR");
        EXPECT_EQ(&own._Ptr->GetLock(), &lock);
        EXPECT_NE(&again._Ptr->GetLock(), &lock);
        EXPECT_EQ(CIntegerPtr(again._GetNode("X"))->GetValue(), 1);
    }
    EXPECT_TRUE(lock.TryLock());
    lock.Unlock();
    for (const auto& call :
         {+[](CNodeMapFactory& f) { f.LoadAndInject(); }, +[](CNodeMapFactory& f) { f.Preprocess(); },
          +[](CNodeMapFactory& f) { f.ToString(); }})
        EXPECT_EQ(KindRaisedBy([&] { call(none); }), "LogicalError");
}

TEST(Factory, CutsOutANodeWithAllItNeeds)
{
    CNodeMapFactory factory = FactoryOf(DescriptionAsXml(R"(
        Category Root { pFeature Gain; pFeature Other }
        Integer Gain { pIsAvailable Flag; pValue Reg; pMax Knife }
        Integer Flag { Value 1 }
        IntSwissKnife Knife { pVariable[Name=L] Limit; Formula L*2 }
        Integer Limit { Value 50 }
        IntReg Reg { at 0 4 RW; Little }
        Integer Other { Value 1 })"));
    CNodeMapRef part(factory.ExtractSubtree("Gain").CreateNodeMap());
    FakePort port;
    EXPECT_TRUE(part._Connect(&port));
    CIntegerPtr gain(part._GetNode("Gain"));
    EXPECT_EQ(gain->GetMax(), 100);
    gain->SetValue(7);
    EXPECT_EQ(port.Peek(0, 1).front(), 7);
    EXPECT_EQ(part._GetNode("Other"), nullptr);
    EXPECT_TRUE(part._GetNode("Gain")->IsFeature());
    EXPECT_EQ(KindRaisedBy([&] { factory.ExtractSubtree("Nobody"); }), "InvalidArgument");
}
