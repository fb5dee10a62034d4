// SPDX-License-Identifier: Apache-2.0
// Addresses of GigE Vision cameras, and who has opened a camera.
#include "Child.h"
#include "SimulatorFixture.h"

#include <unistd.h>

namespace
{

using namespace KxTest;
using namespace KxApi;

class Network : public Simulator
{
protected:
    GenApi::INodeMap& Map() { return *Interface("KxSim_GEV").GetIKxPort()->GetINodeMap(); }

    /// Lets the features of devices be about the camera that has to be forced.
    void Select()
    {
        const IKxDeviceInfo* const info = Find(kElsewhere);
        IKxInterface& interface = Interface("KxSim_GEV");
        uint32_t index = 0;
        while (interface.GetIKxDeviceInfo(index) != info)
            ++index;
        Set(Map(), "DeviceSelector", std::to_string(index));
        ASSERT_EQ(Get(Map(), "DeviceID"), kElsewhere.camera);
    }

    void Force(const char* address, const char* mask, const char* gateway)
    {
        Select();
        Set(Map(), "GevDeviceForceIPAddress", address);
        Set(Map(), "GevDeviceForceSubnetMask", mask);
        Set(Map(), "GevDeviceForceGateway", gateway);
        Execute(Map(), "GevDeviceForceIP");
    }
};

TEST_F(Network, ACameraInAnotherSubnetIsReachedOnceItIsForced)
{
    ASSERT_EQ(Find(kElsewhere)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_NOACCESS);
    EXPECT_EQ(ErrorOf([&] { Open(kElsewhere); }), GenTL::GC_ERR_ACCESS_DENIED);
    Select();
    EXPECT_EQ(Get(Map(), "GevDeviceMACAddress"), "02:4b:58:00:20:03");
    EXPECT_EQ(Get(Map(), "GevDeviceIPAddress"), "10.1.2.3");
    EXPECT_EQ(Get(Map(), "GevDeviceForceIPAddress"), "10.1.2.3") << "what it has, until somebody writes";
    EXPECT_EQ(Get(Map(), "DeviceAccessStatus"), "NoAccess");

    Force("192.168.10.77", "255.255.255.0", "192.168.10.254");
    EXPECT_TRUE(GenApi::CCommandPtr(Map().GetNode("GevDeviceForceIP"))->IsDone());
    EXPECT_TRUE(Interface("KxSim_GEV").UpdateDeviceList());
    EXPECT_EQ(Get(Map(), "GevDeviceIPAddress"), "192.168.10.77");
    EXPECT_EQ(Get(Map(), "DeviceAccessStatus"), "ReadWrite");
    const DevicePtr device = Open(kElsewhere);
    EXPECT_EQ(Get(device, "GevCurrentIPAddress"), "192.168.10.77");
    EXPECT_EQ(Get(*device->GetIKxLocalPort()->GetINodeMap(), "GevDeviceIPAddress"), "192.168.10.77");
    EXPECT_EQ(ErrorOf([&] { Force("192.168.10.78", "255.255.255.0", "0.0.0.0"); }),
              GenTL::GC_ERR_ACCESS_DENIED)
        << "it is open";
}

TEST_F(Network, AddressesThatNoDeviceCanHaveAreRefused)
{
    for (const auto& [address, mask] :
         {std::pair("255.255.255.255", "255.255.255.0"), std::pair("192.168.10.0", "255.255.255.0"),
          std::pair("192.168.10.255", "255.255.255.0"),
          std::pair("192.168.10.1", "255.255.255.0"), // the adapter's
          std::pair("192.168.10.77", "255.0.255.0")})
        EXPECT_EQ(ErrorOf([&, a = address, m = mask] { Force(a, m, "0.0.0.0"); }),
                  GenTL::GC_ERR_INVALID_VALUE)
            << address << ' ' << mask;
    EXPECT_EQ(Get(Map(), "GevDeviceIPAddress"), "10.1.2.3");
    Force("192.168.10.77", "255.255.255.0", "0.0.0.0");
    Force("0.0.0.0", "0.0.0.0", "0.0.0.0");
    EXPECT_EQ(Find(kElsewhere)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_NOACCESS) << "back to its own";
}

TEST_F(Network, DiscoveryFindsWhomItAddresses)
{
    const auto count = [&] {
        Interface("KxSim_GEV").UpdateDeviceList();
        return Interface("KxSim_GEV").GetDeviceCount();
    };
    EXPECT_EQ(count(), 3U);
    Set(Map(), "DeviceSelector", "2");
    Set(Map(), "GevDiscoveryAllowsBroadcastOfAcknowledge", "0");
    EXPECT_EQ(count(), 2U) << "from another subnet no answer to one address comes back";
    Set(Map(), "GevDiscoveryAllowsBroadcastOfAcknowledge", "1");
    Set(Map(), "GevDeviceDiscoveryCommandDestinationIPAddress", "10.255.255.255");
    EXPECT_EQ(count(), 1U);
    Set(Map(), "GevDeviceDiscoveryCommandDestinationIPAddress", "192.168.10.22");
    ASSERT_EQ(count(), 1U);
    EXPECT_EQ(Interface("KxSim_GEV").GetIKxDeviceInfo(0)->GetID(), kPolarized.camera);
    EXPECT_EQ(Get(Map(), "DeviceID"), kPolarized.camera) << "the selector doesn't stay behind the end";
    Set(Map(), "GevDeviceDiscoveryCommandDestinationIPAddress", "192.168.77.1");
    EXPECT_EQ(count(), 0U);
    EXPECT_EQ(Map().GetNode("DeviceSelector")->GetAccessMode(), GenApi::NA);
    EXPECT_EQ(Map().GetNode("DeviceID")->GetAccessMode(), GenApi::NA);
}

TEST_F(Network, ADeviceOpenHereIsToldSo)
{
    {
        const DevicePtr device = Open(kColour);
        EXPECT_EQ(Find(kColour)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE);
        EXPECT_EQ(ErrorOf([&] { Open(kColour); }), GenTL::GC_ERR_RESOURCE_IN_USE);
    }
    EXPECT_EQ(Find(kColour)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_READWRITE);
    const DevicePtr device = Open(kColour, KxDeviceAccess_ReadOnly);
    EXPECT_EQ(Find(kColour)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY);
}

TEST_F(Network, ADeviceOpenInAnotherProcessIsBusyUntilThatEnds)
{
    for (const auto access : {KxDeviceAccess_Control, KxDeviceAccess_Exclusive}) {
        int ready[2] = {};
        ASSERT_EQ(pipe(ready), 0);
        Child child([&] {
            const DevicePtr device = Open(kMono, access);
            if (write(ready[1], "x", 1) == 1)
                pause();
        });
        close(ready[1]); // a child that can't open it leaves nobody to wait for
        char letter = 0;
        ASSERT_EQ(read(ready[0], &letter, 1), 1);
        close(ready[0]);
        EXPECT_EQ(Find(kMono)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_BUSY);
        EXPECT_EQ(ErrorOf([&] { Open(kMono); }), GenTL::GC_ERR_ACCESS_DENIED);
        const int32_t expected =
            access == KxDeviceAccess_Control ? GenTL::GC_ERR_SUCCESS : GenTL::GC_ERR_ACCESS_DENIED;
        EXPECT_EQ(ErrorOf([&] { Open(kMono, KxDeviceAccess_ReadOnly); }), expected) << "may others read?";
        EXPECT_EQ(Find(kBayer)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_READWRITE);
        child.Kill();
        EXPECT_EQ(Find(kMono)->GetAccessStatus(), GenTL::DEVICE_ACCESS_STATUS_READWRITE);
        Open(kMono);
        CloseSystem(); // the next child is to come without it
    }
}

} // namespace
