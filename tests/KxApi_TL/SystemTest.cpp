// SPDX-License-Identifier: Apache-2.0
#include "InThreads.h"
#include "Producers.h"
#include "TestCameras.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace KxApi;
using namespace KxTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

void SetWorld(const char* world) { setenv("KXAPI_FAKE_WORLD", world, 1); }

struct CountWatcher
{
    explicit CountWatcher(IKxInterface& rInterface)
        : interface(rInterface)
    {}
    void OnChange(GenApi::INode* node)
    {
        ++changes;
        EXPECT_EQ(node->GetNodeMap(), interface.GetIKxPort()->GetINodeMap());
        EXPECT_EQ(interface.GetDeviceCount(), 1U);
    }

    IKxInterface& interface;
    int changes = 0;
};

class System : public testing::Test
{
protected:
    static SystemPtr Open() { return SystemPtr(CreateIKxSystem(Fake("Transport").c_str())); }
    static std::vector<std::string> DeviceIDs(const IKxInterface& interface)
    {
        std::vector<std::string> ids;
        for (uint32_t i = 0; i < interface.GetDeviceCount(); ++i)
            ids.emplace_back(interface.GetIKxDeviceInfo(i)->GetID().c_str());
        return ids;
    }

    const LoadedProducer m_producer{"Transport"}; // for what happened in it, also when it is closed
    CKxApiAutoInitTerm m_sdk;
};

TEST_F(System, TellsOfItselfItsInterfacesAndTheirDevices)
{
    SetWorld("GEV=camA/1,camB/3;U3V=");
    const SystemPtr system = Open();
    const IKxSystemInfo& info = *system->GetIKxSystemInfo();
    EXPECT_STREQ(info.GetVendor().c_str(), "Kestrix");
    EXPECT_STREQ(info.GetVersion().c_str(), "1.2.3");
    EXPECT_STREQ(info.GetDisplayName().c_str(), "Fake transport");
    EXPECT_STREQ(info.GetName().c_str(), "") << "what the producer doesn't tell is empty";
    EXPECT_EQ(info.GetGenTLVersionMajor(), 1);
    EXPECT_EQ(info.GetGenTLVersionMinor(), 5);
    EXPECT_EQ(system->GetKxSystemVendor(), KxSystemVendor_Kestrix);

    EXPECT_EQ(system->GetInterfaceCount(), 0U);
    EXPECT_TRUE(system->UpdateInterfaceList());
    ASSERT_EQ(system->GetInterfaceCount(), 2U);
    IKxInterface& gev = *system->GetIKxInterface(0);
    EXPECT_EQ(gev.GetIKxSystem(), system.Get());
    EXPECT_STREQ(gev.GetIKxInterfaceInfo()->GetDisplayName().c_str(), "Interface GEV");
    EXPECT_STREQ(gev.GetIKxInterfaceInfo()->GetTLType().c_str(), "GEV");

    EXPECT_TRUE(gev.UpdateDeviceList());
    EXPECT_THAT(DeviceIDs(gev), ElementsAre("camA", "camB"));
    const IKxDeviceInfo& device = *gev.GetIKxDeviceInfo(1);
    EXPECT_STREQ(device.GetVendor().c_str(), "Kestrix");
    EXPECT_STREQ(device.GetModel().c_str(), "Cam");
    EXPECT_STREQ(device.GetTLType().c_str(), "GEV");
    EXPECT_STREQ(device.GetDisplayName().c_str(), "Kestrix Cam (camB)");
    EXPECT_EQ(device.GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_NOACCESS);
    EXPECT_STREQ(device.GetUserDefinedName().c_str(), "");
    EXPECT_STREQ(device.GetSerialNumber().c_str(), "SN-camB");

    EXPECT_THROW(system->GetIKxInterface(2), GenICam::OutOfRangeException);
    EXPECT_THROW(gev.GetIKxDeviceInfo(2), GenICam::OutOfRangeException);
}

TEST_F(System, UpdatesTellChangesAndOnlyChanges)
{
    SetWorld("GEV=camA/1,camB/3;U3V=");
    const SystemPtr system = Open();
    EXPECT_TRUE(system->UpdateInterfaceList());
    EXPECT_FALSE(system->UpdateInterfaceList());
    IKxInterface& gev = *system->GetIKxInterface(0);
    EXPECT_TRUE(gev.UpdateDeviceList());
    EXPECT_FALSE(gev.UpdateDeviceList());
    EXPECT_FALSE(system->GetIKxInterface(1)->UpdateDeviceList()) << "no device then, none now";

    const IKxDeviceInfo* const camB = gev.GetIKxDeviceInfo(1);
    SetWorld("GEV=camA/1,camB/1;U3V=");
    EXPECT_TRUE(gev.UpdateDeviceList()) << "the access status changed";
    EXPECT_EQ(camB->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_READWRITE);

    SetWorld("GEV=camB/1;U3V=");
    EXPECT_TRUE(gev.UpdateDeviceList());
    EXPECT_EQ(gev.GetIKxDeviceInfo(0), camB) << "a device keeps its object";

    SetWorld("CXP=;GEV=camB/1");
    EXPECT_TRUE(system->UpdateInterfaceList());
    ASSERT_EQ(system->GetInterfaceCount(), 2U);
    EXPECT_EQ(system->GetIKxInterface(1), &gev) << "an interface keeps its object";

    SetWorld("CXP=");
    EXPECT_TRUE(system->UpdateInterfaceList());
    EXPECT_EQ(system->GetInterfaceCount(), 1U);
    EXPECT_STREQ(gev.GetIKxInterfaceInfo()->GetTLType().c_str(), "GEV") << "valid for its holders";
    EXPECT_STREQ(camB->GetID().c_str(), "camB");
}

TEST_F(System, ReadingWhatIsKnownNeverWaitsForASearch)
{
    SetWorld("GEV=camA/1");
    const SystemPtr system = Open();
    system->UpdateInterfaceList();
    IKxInterface& gev = *system->GetIKxInterface(0);
    gev.UpdateDeviceList();
    SetWorld("GEV~=camA/3,camB/1");
    std::thread search([&] { gev.UpdateDeviceList(); });
    m_producer.Call("KxFakeAwaitSlowCall");
    // The search goes on until it is let go below: what waited for it would never return.
    EXPECT_EQ(system->GetInterfaceCount(), 1U);
    EXPECT_STREQ(system->GetIKxSystemInfo()->GetDisplayName().c_str(), "Fake transport");
    EXPECT_THAT(DeviceIDs(gev), ElementsAre("camA"));
    const IKxDeviceInfo& device = *gev.GetIKxDeviceInfo(0);
    EXPECT_EQ(device.GetAccessStatus(), 1) << "all facts of the old list";
    EXPECT_THROW(CreateIKxDevice(&gev, &device, KxDeviceAccess_Control), CKxGenTLErrorException)
        << "the fake opens none, but answers at once";
    m_producer.Call("KxFakeLetGo");
    search.join();
    EXPECT_THAT(DeviceIDs(gev), ElementsAre("camA", "camB"));
    EXPECT_EQ(device.GetAccessStatus(), 3);
}

TEST_F(System, FailedUpdatesLeaveTheOldListAndTellTheProducersWords)
{
    SetWorld("GEV=camA/1");
    const SystemPtr system = Open();
    system->UpdateInterfaceList();
    IKxInterface& gev = *system->GetIKxInterface(0);
    gev.UpdateDeviceList();
    SetWorld("GEV!=");
    try {
        gev.UpdateDeviceList();
        FAIL() << "the error went unnoticed";
    } catch (const CKxGenTLErrorException& e) {
        EXPECT_EQ(e.GetError(), GenTL::GC_ERR_IO);
        EXPECT_STREQ(e.GetFunctionName().c_str(), "IFUpdateDeviceList");
        EXPECT_THAT(e.GetDescription(), HasSubstr("the wire is cut"));
    }
    EXPECT_THAT(DeviceIDs(gev), ElementsAre("camA"));
    SetWorld("GEV?=");
    EXPECT_THROW(gev.UpdateDeviceList(), GenICam::RuntimeException);
    EXPECT_THAT(DeviceIDs(gev), ElementsAre("camA"));
}

TEST_F(System, NodeMapOfAnInterfaceFollowsItsDevices)
{
    SetWorld("GEV=camA/1,camB/3");
    const SystemPtr system = Open();
    system->UpdateInterfaceList();
    IKxInterface& gev = *system->GetIKxInterface(0);
    gev.UpdateDeviceList();
    GenApi::INodeMap* const map = gev.GetIKxPort()->GetINodeMap();
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(gev.GetIKxPort()->GetINodeMap(), map);
    const GenApi::CIntegerPtr count(map->GetNode("DeviceCount"));
    EXPECT_EQ(count->GetValue(), 2);
    // A user who looks at the interface again whenever the node changes.
    CountWatcher watcher(gev);
    const GenApi::CallbackHandleType handle =
        GenApi::Register(count->GetNode(), watcher, &CountWatcher::OnChange);
    SetWorld("GEV=camA/1");
    gev.UpdateDeviceList();
    EXPECT_EQ(watcher.changes, 1);
    EXPECT_EQ(count->GetValue(), 1);
    count->GetNode()->DeregisterCallback(handle);
    // The producer claims to have written, and took no byte.
    EXPECT_THROW(count->SetValue(5), GenICam::GenericException);
    // Module without the register: its error arrives through the node.
    const GenApi::CIntegerPtr ofSystem(system->GetIKxPort()->GetINodeMap()->GetNode("DeviceCount"));
    EXPECT_THROW(ofSystem->GetValue(), CKxGenTLErrorException);
}

TEST_F(System, IsSharedAndClosedBehindItsInterfacesWhenTheLastHolderLetsGo)
{
    SetWorld("GEV=camA/1");
    for (int round = 0; round < 3; ++round) {
        SystemPtr first = Open(), second = Open();
        EXPECT_EQ(first.Get(), second.Get());
        first->UpdateInterfaceList();
        first->GetIKxInterface(0)->GetIKxPort()->GetINodeMap();
        first.Reset();
        EXPECT_THAT(m_producer.Camera().TakeLog(), IsEmpty());
        EXPECT_EQ(second->GetInterfaceCount(), 1U);
        second.Reset();
        EXPECT_THAT(m_producer.Camera().TakeLog(), ElementsAre("close system"));
    }
}

TEST_F(System, ManyThreadsUpdateAndReadAtOnce)
{
    SetWorld("GEV=camA/1,camB/3;U3V=camC/1");
    const SystemPtr system = Open();
    system->UpdateInterfaceList();
    std::atomic<int> failures{0};
    InThreads(4, [&](int i) {
        for (int round = 0; round < 100; ++round) {
            try {
                IKxInterface& gev = *system->GetIKxInterface(0);
                if (i % 2) {
                    system->UpdateInterfaceList();
                    gev.UpdateDeviceList();
                } else {
                    const GenApi::CIntegerPtr count(gev.GetIKxPort()->GetINodeMap()->GetNode("DeviceCount"));
                    failures += count->GetValue() != 2;
                    for (const std::string& id : DeviceIDs(gev))
                        failures += id.compare(0, 3, "cam") != 0;
                }
            } catch (const GenICam::GenericException&) {
                ++failures;
            }
        }
    });
    EXPECT_EQ(failures, 0);
}

TEST_F(System, NeedsTheSdkStarted)
{
    Terminate();
    EXPECT_THROW(Open(), GenICam::LogicalErrorException);
    CIKxSystemPtrArray systems;
    EXPECT_THROW(OpenIKxSystems(systems), GenICam::LogicalErrorException);
    Initialize();
    EXPECT_THROW(CreateIKxSystem(Fake("Failing").c_str()), GenICam::RuntimeException);
    // Loads, but can't be opened.
    EXPECT_THROW(CreateIKxSystem(Fake("Complete").c_str()), CKxGenTLErrorException);
}

} // namespace
