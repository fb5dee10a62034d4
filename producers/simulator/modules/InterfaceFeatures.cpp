// SPDX-License-Identifier: Apache-2.0
// Node map of an interface, by the naming convention of GenTL.

#include "modules/Interface.h"

#include <algorithm>

namespace KxSim
{
namespace
{

constexpr char kHasDevices[] = "(KxDeviceCount > 0)";

void DescribeDevices(const CAdapter& adapter, CFeatureList& list)
{
    list.Category("DeviceEnumeration", "The devices on the interface, as of the last update of the list");
    list.Add(Command("DeviceUpdateList", "Looks for devices anew").Expert());
    list.Add(Integer("DeviceUpdateTimeout", "How long that may take")
                 .Expert()
                 .Range("1", "60000")
                 .Unit("ms")
                 .Default(1000));
    list.Add(Integer("KxDeviceCount", "How many devices there are")
                 .Custom()
                 .ReadOnly()
                 .Expert()
                 .Volatile()
                 .ChangedBy({"DeviceUpdateList"}));
    list.Add(Integer("KxDeviceSelectorMax", "Index of the last device")
                 .Custom()
                 .ReadOnly()
                 .Invisible()
                 .Volatile()
                 .ChangedBy({"DeviceUpdateList"}));
    list.Add(Integer("DeviceSelector", "Which device the features below are about")
                 .Expert()
                 .Range("0", "KxDeviceSelectorMax")
                 .ChangedBy({"DeviceUpdateList"})
                 .AvailableIf(kHasDevices)
                 .NotStored());
    const auto device = [&](CFeature feature) {
        list.Add(feature.Expert().SelectedBy({"DeviceSelector"}).AvailableIf(kHasDevices));
    };
    for (const char* name :
         {"DeviceID", "DeviceVendorName", "DeviceModelName", "DeviceSerialNumber", "DeviceUserID"})
        device(String(name, "Of the selected device").ReadOnly().Volatile());
    device(Enumeration("DeviceAccessStatus", "How the selected device can be opened, or is")
               .ReadOnly()
               .Volatile()
               .Entries({{"Unknown", 0, ""},
                         {"ReadWrite", 1, "It is free"},
                         {"ReadOnly", 2, "It can be read"},
                         {"NoAccess", 3, "It can't be reached"},
                         {"Busy", 4, "Another process has it"},
                         {"OpenReadWrite", 5, "It is open here"},
                         {"OpenReadOnly", 6, "It is open here for reading"}}));
    device(Integer("DeviceTLVersionMajor", "Version of its technology, major number")
               .ReadOnly()
               .Default(adapter.technology == ETechnology::U3V ? 1 : 2));
    device(Integer("DeviceTLVersionMinor", "Version of its technology, minor number").ReadOnly());
    if (adapter.technology != ETechnology::GEV)
        return;
    device(Integer("GevDeviceMACAddress", "Its address").Wide().ReadOnly().Volatile().As("MACAddress"));
    for (const char* name : {"GevDeviceIPAddress", "GevDeviceSubnetMask", "GevDeviceGateway"})
        device(Integer(name, "Of its present configuration").ReadOnly().Volatile().As("IPV4Address"));
    device(
        Integer("GevDeviceForceIPAddress", "IP address that GevDeviceForceIP gives it; 0 for its first one")
            .As("IPV4Address")
            .NotStored()
            .Volatile());
    device(Integer("GevDeviceForceSubnetMask", "Subnet mask that GevDeviceForceIP gives it")
               .As("IPV4Address")
               .NotStored()
               .Volatile());
    device(Integer("GevDeviceForceGateway", "Gateway that GevDeviceForceIP gives it; 0 for none")
               .As("IPV4Address")
               .NotStored()
               .Volatile());
    device(Command("GevDeviceForceIP",
                   "Gives the selected device the addresses above, until the end of the process"));
}

} // namespace

void CInterface::DescribePort()
{
    const bool isGev = m_adapter.technology == ETechnology::GEV;
    CFeatureList list;
    list.Category("InterfaceInformation", "The interface");
    list.Add(String("InterfaceID", "Its identifier").ReadOnly().Expert().Default(m_adapter.id));
    list.Add(String("InterfaceDisplayName", "Its name for users")
                 .ReadOnly()
                 .Expert()
                 .Default(m_adapter.displayName));
    list.Add(Enumeration("InterfaceType", "Technology")
                 .ReadOnly()
                 .Expert()
                 .Entries({{ConventionName(m_adapter.technology), 0, ""}}));
    list.Add(Integer("InterfaceTLVersionMajor", "Version of the technology, major number")
                 .ReadOnly()
                 .Expert()
                 .Default(isGev ? 2 : 1));
    list.Add(
        Integer("InterfaceTLVersionMinor", "Version of the technology, minor number").ReadOnly().Expert());
    if (isGev) {
        const auto address = [&](const char* name, const char* tip, uint32_t value) {
            return Integer(name, tip)
                .ReadOnly()
                .Expert()
                .As("IPV4Address")
                .Default(static_cast<int64_t>(value));
        };
        list.Add(Integer("GevInterfaceMACAddress", "Its address")
                     .Wide()
                     .ReadOnly()
                     .Expert()
                     .As("MACAddress")
                     .Default(static_cast<int64_t>(m_adapter.mac)));
        list.Add(Integer("GevInterfaceSubnetSelector", "Which of its subnets")
                     .Expert()
                     .Range("0", "0")
                     .NotStored());
        list.Add(address("GevInterfaceSubnetIPAddress", "Its IP address there", m_adapter.ip.address)
                     .SelectedBy({"GevInterfaceSubnetSelector"}));
        list.Add(address("GevInterfaceSubnetMask", "Subnet mask there", m_adapter.ip.mask)
                     .SelectedBy({"GevInterfaceSubnetSelector"}));
        list.Add(Integer("GevInterfaceGatewaySelector", "Which of its gateways")
                     .Expert()
                     .Range("0", "0")
                     .NotStored());
        list.Add(address("GevInterfaceGateway", "The gateway", m_adapter.ip.gateway)
                     .SelectedBy({"GevInterfaceGatewaySelector"}));
    }
    DescribeDevices(m_adapter, list);
    if (isGev) {
        list.Category("KxDiscoveryControl", "How devices are looked for, from the next update of the list");
        list.Add(Integer("GevDeviceDiscoveryCommandDestinationIPAddress",
                         "Where the question goes: to all, to a subnet, to one device")
                     .Custom()
                     .Expert()
                     .As("IPV4Address")
                     .Default(static_cast<int64_t>(m_adapter.discoveryDestination)));
        list.Add(Boolean("GevDiscoveryAllowsBroadcastOfAcknowledge",
                         "Whether devices may answer to all, which those of other subnets need")
                     .Custom()
                     .Expert()
                     .Default(m_adapter.allowsBroadcastAnswers ? 1 : 0));
    }
    list.Category("KxFaultControl", "What goes wrong with the cameras");
    std::vector<CEntry> cameras;
    for (const auto& camera : m_adapter.cameras)
        cameras.push_back({camera->Id(), static_cast<int64_t>(cameras.size()), camera->Model().about, true});
    for (CEntry& entry : cameras)
        std::replace(entry.name.begin(), entry.name.end(), '-', '_');
    list.Add(Enumeration("KxCameraSelector", "Which camera, whether listed or not")
                 .Custom()
                 .Guru()
                 .Entries(cameras)
                 .NotStored());
    list.Add(Boolean("KxCameraPlugged", "Whether the camera is plugged in")
                 .Custom()
                 .Guru()
                 .NotStored()
                 .Volatile()
                 .SelectedBy({"KxCameraSelector"}));
    list.Add(
        Boolean("KxCameraDescriptionTruncated", "Whether only half of the camera's description can be read")
            .Custom()
            .Guru()
            .NotStored()
            .Volatile()
            .SelectedBy({"KxCameraSelector"}));
    m_port.Publish(list, {"KxSimulator_Interface", m_adapter.displayName, "InterfacePort",
                          Format("%012d", 10 + static_cast<int>(m_adapter.technology))});
    BindDevices();
    BindFaults();
    if (isGev)
        BindGev();
}

void CInterface::BindDevices()
{
    CRegisterMap& map = m_port.Registers();
    map.At("DeviceUpdateListReg").afterWrite = [this, &map](size_t) {
        UpdateDeviceList();
        map.SetInteger("DeviceUpdateListReg", 0);
    };
    map.At("KxDeviceCountReg").beforeRead = [this, &map](size_t) {
        map.SetInteger("KxDeviceCountReg", static_cast<int64_t>(m_devices.size()));
    };
    map.At("KxDeviceSelectorMaxReg").beforeRead = [this, &map](size_t) {
        map.SetInteger("KxDeviceSelectorMaxReg",
                       m_devices.empty() ? 0 : static_cast<int64_t>(m_devices.size()) - 1);
    };
    struct CText
    {
        const char* name;
        GenTL::DEVICE_INFO_CMD command;
    };
    static constexpr CText kTexts[] = {{"DeviceIDReg", GenTL::DEVICE_INFO_ID},
                                       {"DeviceVendorNameReg", GenTL::DEVICE_INFO_VENDOR},
                                       {"DeviceModelNameReg", GenTL::DEVICE_INFO_MODEL},
                                       {"DeviceSerialNumberReg", GenTL::DEVICE_INFO_SERIAL_NUMBER},
                                       {"DeviceUserIDReg", GenTL::DEVICE_INFO_USER_DEFINED_NAME}};
    for (const CText& text : kTexts) {
        map.At(text.name).beforeRead = [this, &map, &text](size_t i) {
            map.SetText(text.name, UpToNul(GetDeviceInfo(ListedCamera(i), text.command).bytes), i);
        };
    }
    map.At("DeviceAccessStatusReg").beforeRead = [this, &map](size_t i) {
        map.SetInteger("DeviceAccessStatusReg", AccessStatus(ListedCamera(i)), i);
    };
}

void CInterface::BindFaults()
{
    CRegisterMap& map = m_port.Registers();
    const auto flag = [this, &map](const char* name, bool (CCamera::*get)() const,
                                   void (CCamera::*set)(bool)) {
        map.At(name).beforeRead = [this, &map, name, get](size_t i) {
            map.SetInteger(name, ((*m_adapter.cameras.at(i)).*get)() ? 1 : 0, i);
        };
        map.At(name).afterWrite = [this, &map, name, set](size_t i) {
            ((*m_adapter.cameras.at(i)).*set)(map.GetFlag(name, i));
        };
    };
    flag("KxCameraPluggedReg", &CCamera::IsPlugged, &CCamera::SetPlugged);
    flag("KxCameraDescriptionTruncatedReg", &CCamera::IsTruncated, &CCamera::SetTruncated);
}

void CInterface::BindGev()
{
    CRegisterMap& map = m_port.Registers();
    map.At("GevDeviceMACAddressReg").beforeRead = [this, &map](size_t i) {
        map.SetInteger("GevDeviceMACAddressReg", static_cast<int64_t>(ListedCamera(i).Model().mac), i);
    };
    struct CAddress
    {
        const char *current, *forced;
        uint32_t CIpConfig::*part;
    };
    static constexpr CAddress kAddresses[] = {
        {"GevDeviceIPAddressReg", "GevDeviceForceIPAddressReg", &CIpConfig::address},
        {"GevDeviceSubnetMaskReg", "GevDeviceForceSubnetMaskReg", &CIpConfig::mask},
        {"GevDeviceGatewayReg", "GevDeviceForceGatewayReg", &CIpConfig::gateway}};
    for (const CAddress& address : kAddresses) {
        map.At(address.current).beforeRead = [this, &map, &address](size_t i) {
            map.SetInteger(address.current, ListedCamera(i).GetIp().*address.part, i);
        };
        // What nobody has written yet is what the device has.
        map.At(address.forced).beforeRead = [this, &map, &address](size_t i) {
            CCamera& camera = ListedCamera(i);
            const auto& forced = m_forced[camera.Id()];
            map.SetInteger(address.forced, (forced ? *forced : camera.GetIp()).*address.part, i);
        };
        map.At(address.forced).afterWrite = [this, &map, &address](size_t i) {
            CCamera& camera = ListedCamera(i);
            auto& forced = m_forced[camera.Id()];
            if (!forced)
                forced = camera.GetIp();
            (*forced).*address.part = static_cast<uint32_t>(map.GetInteger(address.forced, i));
        };
    }
    map.At("GevDeviceForceIPReg").afterWrite = [this, &map](size_t i) {
        map.SetInteger("GevDeviceForceIPReg", 0, i);
        ForceIp(ListedCamera(i));
    };
    map.At("GevDeviceDiscoveryCommandDestinationIPAddressReg").afterWrite = [this, &map](size_t) {
        m_adapter.discoveryDestination =
            static_cast<uint32_t>(map.GetInteger("GevDeviceDiscoveryCommandDestinationIPAddressReg"));
    };
    map.At("GevDiscoveryAllowsBroadcastOfAcknowledgeReg").afterWrite = [this, &map](size_t) {
        m_adapter.allowsBroadcastAnswers = map.GetFlag("GevDiscoveryAllowsBroadcastOfAcknowledgeReg");
    };
}

void CInterface::ForceIp(CCamera& camera)
{
    const GenTL::DEVICE_ACCESS_STATUS status = AccessStatus(camera);
    if (status != GenTL::DEVICE_ACCESS_STATUS_READWRITE && status != GenTL::DEVICE_ACCESS_STATUS_NOACCESS)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is open, its address can't be forced",
             camera.Id().c_str());
    const auto& chosen = m_forced[camera.Id()];
    const CIpConfig config = chosen ? *chosen : camera.GetIp();
    const auto text = [](uint32_t ip) {
        return Format("%u.%u.%u.%u", ip >> 24, ip >> 16 & 0xFF, ip >> 8 & 0xFF, ip & 0xFF);
    };
    const uint32_t host = config.address & ~config.mask;
    const bool isContiguous = config.mask != 0 && ((~config.mask + 1) & ~config.mask) == 0;
    const bool isHost = config.address >> 28 < 0xE && host != 0 && host != ~config.mask;
    if (config.address != 0 && (!isContiguous || !isHost || config.address == m_adapter.ip.address))
        Fail(GenTL::GC_ERR_INVALID_VALUE, "%s with mask %s can't be the address of device '%s'",
             text(config.address).c_str(), text(config.mask).c_str(), camera.Id().c_str());
    camera.ForceIp(config);
    m_forced.erase(camera.Id());
}

} // namespace KxSim
