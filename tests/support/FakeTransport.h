// SPDX-License-Identifier: Apache-2.0
// Systems, interfaces and devices for tests, without producers: what they tell is set, and may change at any
// time.
#pragma once

#include "FakePort.h"
#include "Outline.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxSystem.h>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace KxTest
{

/// What is told of a camera. The addresses are GigE Vision's.
struct FakeCamera
{
    std::string id;
    int32_t status = 1;
    uint64_t mac = 0;
    uint32_t ip = 0;
    uint32_t mask = 0;
    uint32_t gateway = 0;
    std::string name = id;
};

/// The info of one ID, which lives as long as the interface.
class FakeDeviceInfo final : public KxApi::IKxDeviceInfo
{
public:
    FakeDeviceInfo(std::mutex& mutex, std::string type)
        : m_mutex(mutex)
        , m_type(std::move(type))
    {}

    void Set(const FakeCamera& camera) { m_camera = camera; }

    GenICam::gcstring GetID() const override { return Get(&FakeCamera::id).c_str(); }
    GenICam::gcstring GetVendor() const override { return "Fake"; }
    GenICam::gcstring GetModel() const override { return "Fake camera"; }
    GenICam::gcstring GetTLType() const override { return m_type.c_str(); }
    GenICam::gcstring GetDisplayName() const override { return Get(&FakeCamera::name).c_str(); }
    int32_t GetAccessStatus() const override { return Get(&FakeCamera::status); }
    GenICam::gcstring GetUserDefinedName() const override { return "left"; }
    GenICam::gcstring GetSerialNumber() const override { return "4711"; }
    GenICam::gcstring GetVersion() const override { return "1.2"; }

private:
    template <class T>
    T Get(T FakeCamera::*member) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_camera.*member;
    }

    std::mutex& m_mutex;
    const std::string m_type;
    FakeCamera m_camera;
};

/// An interface with a list of cameras. One of the type "GEV" has a node map with the features of GigE
/// Vision.
class FakeInterface final : public KxApi::IKxInterface, public KxApi::IKxInterfaceInfo, public KxApi::IKxPort
{
public:
    static constexpr uint64_t kMac = 0x001122334455;
    static constexpr uint32_t kIP = 0xC0A80001; // 192.168.0.1
    static constexpr uint32_t kMask = 0xFFFFFF00;

    FakeInterface(KxApi::IKxSystem& system, std::string name, std::string type)
        : m_system(system)
        , m_name(std::move(name))
        , m_type(std::move(type))
    {}

    /// Runs in UpdateDeviceList; what it throws leaves the call. As all of these it is set before the window
    /// is shown.
    std::function<void()> onUpdate;
    /// Runs in each question about the list.
    std::function<void()> onAsk;
    /// Runs in GetINodeMap.
    std::function<void()> onNodeMap;
    /// Whether UpdateDeviceList finds changes.
    std::atomic<bool> searchable{true};
    /// Another description than that of a network card.
    std::string outline = kOutline;

    /// Changes what is there; UpdateDeviceList tells of it.
    void SetCameras(const std::vector<FakeCamera>& cameras)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_cameras = cameras;
        m_changed = true;
    }

    KxApi::IKxSystem* GetIKxSystem() const override { return &m_system; }
    KxApi::IKxPort* GetIKxPort() override { return this; }
    const KxApi::IKxInterfaceInfo* GetIKxInterfaceInfo() const override { return this; }
    GenICam::gcstring GetDisplayName() const override { return m_name.c_str(); }
    GenICam::gcstring GetTLType() const override { return m_type.c_str(); }
    GenICam::gcstring GetID() const override { return m_name.c_str(); }

    bool UpdateDeviceList() override
    {
        if (onUpdate)
            onUpdate();
        return searchable && Refresh();
    }
    /// Brings the list up to date, whoever searches.
    bool Refresh()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!std::exchange(m_changed, false))
            return false;
        m_present.clear();
        for (const FakeCamera& camera : m_cameras) {
            std::unique_ptr<FakeDeviceInfo>& info = m_known[camera.id];
            if (!info)
                info = std::make_unique<FakeDeviceInfo>(m_mutex, m_type);
            info->Set(camera);
            m_present.push_back(info.get());
        }
        return true;
    }
    uint32_t GetDeviceCount() const override
    {
        if (onAsk)
            onAsk();
        const std::lock_guard<std::mutex> lock(m_mutex);
        return static_cast<uint32_t>(m_present.size());
    }
    const KxApi::IKxDeviceInfo* GetIKxDeviceInfo(uint32_t nIndex) const override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (nIndex >= m_present.size())
            throw OUT_OF_RANGE_EXCEPTION("no device %u", nIndex);
        return m_present[nIndex];
    }

    GenApi::INodeMap* GetINodeMap() override
    {
        if (onNodeMap)
            onNodeMap();
        if (!m_map) {
            m_map = std::make_unique<GenApi::CNodeMapRef>("Interface");
            m_map->_LoadXMLFromString(DescriptionAsXml(outline).c_str());
            m_map->_Connect(&m_port);
        }
        return m_map->_Ptr;
    }

    /// A number of the node map, in host order.
    int64_t Value(const char* feature)
    {
        return GenApi::CIntegerPtr(GetINodeMap()->GetNode(feature))->GetValue();
    }

private:
    /// The registers: those of the card are memory, those of a camera lie in what is known of it.
    class Registers final : public FakePort
    {
    public:
        explicit Registers(FakeInterface& interface)
            : m_interface(interface)
        {
            PutNumber(0x10, kMac, 8);
            PutNumber(0x20, kIP, 4);
            PutNumber(0x24, kMask, 4);
            PutNumber(0x40, 0xFFFFFFFF, 4);
        }

        void Read(void* pBuffer, int64_t address, int64_t length) override
        {
            const std::lock_guard<std::mutex> lock(m_interface.m_mutex);
            const std::vector<FakeCamera>& cameras = m_interface.m_cameras;
            PutNumber(0x34, cameras.empty() ? 0 : cameras.size() - 1, 4);
            for (size_t i = 0; i < cameras.size(); ++i) {
                const auto block = static_cast<int64_t>(0x1000 + i * 0x100);
                if (address < block || address >= block + 0x100)
                    continue;
                PutNumber(block, cameras[i].mac, 8);
                PutNumber(block + 8, cameras[i].ip, 4);
                PutNumber(block + 0xC, cameras[i].mask, 4);
                PutNumber(block + 0x10, cameras[i].gateway, 4);
                Bytes id(cameras[i].id.begin(), cameras[i].id.end());
                id.resize(0x40);
                Put(block + 0x40, id);
            }
            FakePort::Read(pBuffer, address, length);
        }

        void Write(const void* pBuffer, int64_t address, int64_t length) override
        {
            FakePort::Write(pBuffer, address, length);
            if (address != 0x50)
                return;
            const std::lock_guard<std::mutex> lock(m_interface.m_mutex);
            const auto block = static_cast<int64_t>(0x1000 + Number(0x30) * 0x100);
            FakeCamera& camera = m_interface.m_cameras.at(Number(0x30));
            camera.ip = Number(block + 0x14);
            camera.mask = Number(block + 0x18);
            camera.gateway = Number(block + 0x1C);
            const bool reached = ((camera.ip ^ kIP) & kMask) == 0 && camera.mask == kMask && camera.ip != kIP;
            camera.status = reached ? 1 : 3;
            m_interface.m_changed = true;
        }

    private:
        void PutNumber(int64_t address, uint64_t value, size_t length)
        {
            Bytes bytes;
            for (size_t i = 0; i < length; ++i)
                bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
            Put(address, bytes);
        }
        uint32_t Number(int64_t address)
        {
            uint32_t value = 0;
            const Bytes bytes = Peek(address, 4);
            for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
                value = value << 8 | *byte;
            return value;
        }

        FakeInterface& m_interface;
    };

    static constexpr char kOutline[] = R"(
        IntReg GevInterfaceMACAddress { at 0x10 8 RO; Cachable NoCache; Little; Representation MACAddress }
        IntReg GevInterfaceSubnetIPAddress { at 0x20 4 RO; Little; Representation IPV4Address }
        IntReg GevInterfaceSubnetMask { at 0x24 4 RO; Little; Representation IPV4Address }
        IntReg GevInterfaceGateway { at 0x28 4 RO; Little; Representation IPV4Address }
        Integer DeviceSelector { pValue SelectorReg; Min 0; pMax MaxReg }
        IntReg SelectorReg { at 0x30 4 RW; Little }
        IntReg MaxReg { at 0x34 4 RO; Cachable NoCache; Little }
        StringReg DeviceID { pIndex[Offset=0x100] DeviceSelector; at 0x1040 0x40 RO; Cachable NoCache }
        IntReg GevDeviceMACAddress { pIndex[Offset=0x100] DeviceSelector; at 0x1000 8 RO; Cachable NoCache; Little; Representation MACAddress }
        IntReg GevDeviceIPAddress { pIndex[Offset=0x100] DeviceSelector; at 0x1008 4 RO; Cachable NoCache; Little; Representation IPV4Address }
        IntReg GevDeviceSubnetMask { pIndex[Offset=0x100] DeviceSelector; at 0x100C 4 RO; Cachable NoCache; Little; Representation IPV4Address }
        IntReg GevDeviceGateway { pIndex[Offset=0x100] DeviceSelector; at 0x1010 4 RO; Cachable NoCache; Little; Representation IPV4Address }
        IntReg GevDeviceForceIPAddress { pIndex[Offset=0x100] DeviceSelector; at 0x1014 4 RW; Little; Representation IPV4Address }
        IntReg GevDeviceForceSubnetMask { pIndex[Offset=0x100] DeviceSelector; at 0x1018 4 RW; Little; Representation IPV4Address }
        IntReg GevDeviceForceGateway { pIndex[Offset=0x100] DeviceSelector; at 0x101C 4 RW; Little; Representation IPV4Address }
        Command GevDeviceForceIP { pValue ForceReg; CommandValue 1 }
        IntReg ForceReg { at 0x50 4 WO; Little }
        IntReg GevDeviceDiscoveryCommandDestinationIPAddress { at 0x40 4 RW; Little; Representation IPV4Address }
        Boolean GevDiscoveryAllowsBroadcastOfAcknowledge { pValue BroadcastReg }
        IntReg BroadcastReg { at 0x44 4 RW; Little })";

    KxApi::IKxSystem& m_system;
    const std::string m_name;
    const std::string m_type;
    mutable std::mutex m_mutex; // guards what follows
    std::vector<FakeCamera> m_cameras;
    bool m_changed = false;
    std::map<std::string, std::unique_ptr<FakeDeviceInfo>> m_known;
    std::vector<FakeDeviceInfo*> m_present;
    Registers m_port{*this}; // outlives the map
    std::unique_ptr<GenApi::CNodeMapRef> m_map;
};

/// A system whose interfaces are there from the first UpdateInterfaceList on.
class FakeSystem final : public KxApi::IKxSystemReleasable, public KxApi::IKxSystemInfo
{
public:
    explicit FakeSystem(std::string name, int32_t vendor = KxApi::KxSystemVendor_Other)
        : m_name(std::move(name))
        , m_vendor(vendor)
    {}

    /// Run in UpdateInterfaceList, and in each question about the system; what they throw leaves the call.
    std::function<void()> onUpdate;
    std::function<void()> onAsk;

    FakeInterface& Add(std::string name, std::string type, const std::vector<FakeCamera>& cameras = {})
    {
        m_interfaces.push_back(std::make_unique<FakeInterface>(*this, std::move(name), std::move(type)));
        m_interfaces.back()->SetCameras(cameras);
        m_changed = true;
        return *m_interfaces.back();
    }

    /// Brings the lists up to date, as the search for changes does.
    void Update()
    {
        m_changed = false;
        for (const auto& interface : m_interfaces)
            interface->Refresh();
    }

    int32_t GetKxSystemVendor() const override { return m_vendor; }
    const KxApi::IKxSystemInfo* GetIKxSystemInfo() const override { return this; }
    bool UpdateInterfaceList() override
    {
        if (onUpdate)
            onUpdate();
        return m_changed.exchange(false);
    }
    uint32_t GetInterfaceCount() const override
    {
        Ask();
        return static_cast<uint32_t>(m_interfaces.size());
    }
    KxApi::IKxInterface* GetIKxInterface(uint32_t nIndex) const override
    {
        return m_interfaces.at(nIndex).get();
    }
    KxApi::IKxPort* GetIKxPort() override { return nullptr; }
    void Release() override {}

    GenICam::gcstring GetVendor() const override { return "Fake"; }
    GenICam::gcstring GetModel() const override { return "Fake producer"; }
    GenICam::gcstring GetVersion() const override { return "2.1"; }
    GenICam::gcstring GetTLType() const override { return "Mixed"; }
    GenICam::gcstring GetName() const override { return "fake.cti"; }
    GenICam::gcstring GetPathName() const override { return "/opt/fake.cti"; }
    GenICam::gcstring GetDisplayName() const override
    {
        Ask();
        return m_name.c_str();
    }
    int32_t GetGenTLVersionMajor() const override { return 1; }
    int32_t GetGenTLVersionMinor() const override { return 5; }

private:
    void Ask() const
    {
        if (onAsk)
            onAsk();
    }

    const std::string m_name;
    const int32_t m_vendor;
    std::atomic<bool> m_changed{false};
    std::vector<std::unique_ptr<FakeInterface>> m_interfaces;
};

} // namespace KxTest
