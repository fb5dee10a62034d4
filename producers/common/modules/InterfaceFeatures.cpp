// SPDX-License-Identifier: Apache-2.0
// Node map of an interface.

#include "ModuleFeatures.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>

namespace KxProducer
{
namespace
{

constexpr char kHasDevices[] = "(KxDeviceCount > 0)";

} // namespace

void AddInterfaceInformation(CFeatureList& list, const CAdapterFacts& adapter)
{
    const bool isGev = adapter.technology == ETechnology::GEV;
    list.Category("InterfaceInformation", "The interface");
    list.Add(String("InterfaceID", "Its identifier").ReadOnly().Expert().Default(adapter.id));
    list.Add(String("InterfaceDisplayName", "Its name for users")
                 .ReadOnly()
                 .Expert()
                 .Default(adapter.displayName));
    list.Add(Enumeration("InterfaceType", "Technology")
                 .ReadOnly()
                 .Expert()
                 .Entries({{ConventionName(adapter.technology), 0, ""}}));
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
                     .Default(static_cast<int64_t>(adapter.mac)));
        list.Add(Integer("GevInterfaceSubnetSelector", "Which of its subnets")
                     .Expert()
                     .Range("0", "0")
                     .NotStored());
        list.Add(address("GevInterfaceSubnetIPAddress", "Its IP address there", adapter.ip.address)
                     .SelectedBy({"GevInterfaceSubnetSelector"}));
        list.Add(address("GevInterfaceSubnetMask", "Subnet mask there", adapter.ip.mask)
                     .SelectedBy({"GevInterfaceSubnetSelector"}));
        list.Add(Integer("GevInterfaceGatewaySelector", "Which of its gateways")
                     .Expert()
                     .Range("0", "0")
                     .NotStored());
        list.Add(address("GevInterfaceGateway", "The gateway", adapter.ip.gateway)
                     .SelectedBy({"GevInterfaceGatewaySelector"}));
    }
}

void AddDeviceEnumeration(CFeatureList& list, ETechnology technology)
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
               .Default(technology == ETechnology::U3V ? 1 : 2));
    device(Integer("DeviceTLVersionMinor", "Version of its technology, minor number").ReadOnly());
    if (technology != ETechnology::GEV)
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

void AddDiscoveryControl(CFeatureList& list)
{
    list.Category("KxDiscoveryControl", "How devices are looked for, from the next update of the list");
    list.Add(Integer("GevDeviceDiscoveryCommandDestinationIPAddress",
                     "Where the question goes: to all, to a subnet, to one device")
                 .Custom()
                 .Expert()
                 .As("IPV4Address")
                 .Default(int64_t{0xFFFFFFFF}));
    list.Add(Boolean("GevDiscoveryAllowsBroadcastOfAcknowledge",
                     "Whether devices may answer to all, which those of other subnets need")
                 .Custom()
                 .Expert()
                 .Default(1));
}

void BindDeviceEnumeration(CFeaturePort& port, CInterfaceModule& interface)
{
    CRegisterMap& map = port.Registers();
    port.BindCommand("DeviceUpdateList", [&interface, &map](size_t) {
        interface.Search(static_cast<uint64_t>(map.GetInteger("DeviceUpdateTimeoutReg")));
        interface.UpdateDeviceList();
    });
    port.BindInteger("KxDeviceCount", [&interface](size_t) { return interface.GetDeviceCount(); });
    port.BindInteger("KxDeviceSelectorMax", [&interface](size_t) {
        return std::max<int64_t>(int64_t{interface.GetDeviceCount()} - 1, 0);
    });
    struct CText
    {
        const char* name;
        GenTL::DEVICE_INFO_CMD command;
    };
    static constexpr CText kTexts[] = {{"DeviceID", GenTL::DEVICE_INFO_ID},
                                       {"DeviceVendorName", GenTL::DEVICE_INFO_VENDOR},
                                       {"DeviceModelName", GenTL::DEVICE_INFO_MODEL},
                                       {"DeviceSerialNumber", GenTL::DEVICE_INFO_SERIAL_NUMBER},
                                       {"DeviceUserID", GenTL::DEVICE_INFO_USER_DEFINED_NAME}};
    const auto bytes = [&interface](size_t index, GenTL::DEVICE_INFO_CMD command) {
        const std::string id = interface.GetDeviceId(static_cast<uint32_t>(index));
        return interface.GetDeviceInfo(id, command).bytes;
    };
    for (const CText& text : kTexts)
        port.BindText(text.name,
                      [bytes, command = text.command](size_t i) { return UpToNul(bytes(i, command)); });
    port.BindInteger("DeviceAccessStatus", [bytes](size_t i) {
        int32_t status = GenTL::DEVICE_ACCESS_STATUS_UNKNOWN;
        bytes(i, GenTL::DEVICE_INFO_ACCESS_STATUS).copy(reinterpret_cast<char*>(&status), sizeof status);
        return status;
    });
}

namespace
{

std::string IpText(uint32_t ip)
{
    return Format("%u.%u.%u.%u", ip >> 24, ip >> 16 & 0xFF, ip >> 8 & 0xFF, ip & 0xFF);
}

/// Throws for an address that no device on the adapter can have.
void CheckAddress(const CIpConfig& config, const CAdapterFacts& adapter, const std::string& id)
{
    const uint32_t host = config.address & ~config.mask;
    const bool isContiguous = config.mask != 0 && ((~config.mask + 1) & ~config.mask) == 0;
    const bool isHost = config.address >> 28 < 0xE && host != 0 && host != ~config.mask;
    if (config.address != 0 && (!isContiguous || !isHost || config.address == adapter.ip.address))
        Fail(GenTL::GC_ERR_INVALID_VALUE, "%s with mask %s can't be the address of device '%s'",
             IpText(config.address).c_str(), IpText(config.mask).c_str(), id.c_str());
}

} // namespace

void BindGevDevices(CFeaturePort& port, CInterfaceModule& interface, IGevDevices& devices,
                    const CAdapterFacts& adapter)
{
    port.BindInteger("GevDeviceMACAddress",
                     [&devices](size_t i) { return static_cast<int64_t>(devices.GetMac(i)); });
    // Addresses written but not given yet, by device.
    const auto forced = std::make_shared<std::map<std::string, CIpConfig>>();
    const auto id = [&interface](size_t i) { return interface.GetDeviceId(static_cast<uint32_t>(i)); };
    const auto wanted = [id, forced, &devices](size_t i) {
        const auto place = forced->find(id(i));
        return place == forced->end() ? devices.GetIp(i) : place->second; // untouched ones are what they are
    };
    struct CAddress
    {
        const char *current, *forced;
        uint32_t CIpConfig::*part;
    };
    static constexpr CAddress kAddresses[] = {
        {"GevDeviceIPAddress", "GevDeviceForceIPAddress", &CIpConfig::address},
        {"GevDeviceSubnetMask", "GevDeviceForceSubnetMask", &CIpConfig::mask},
        {"GevDeviceGateway", "GevDeviceForceGateway", &CIpConfig::gateway}};
    for (const CAddress& address : kAddresses) {
        const auto part = address.part;
        port.BindInteger(address.current, [&devices, part](size_t i) { return devices.GetIp(i).*part; });
        port.BindInteger(address.forced, [wanted, part](size_t i) { return wanted(i).*part; });
        port.BindWrite(address.forced, [id, wanted, forced, part](int64_t value, size_t i) {
            CIpConfig config = wanted(i);
            config.*part = static_cast<uint32_t>(value);
            (*forced)[id(i)] = config;
        });
    }
    port.BindCommand("GevDeviceForceIP", [id, wanted, forced, &devices, &adapter](size_t i) {
        const CIpConfig config = wanted(i);
        CheckAddress(config, adapter, id(i));
        devices.ForceIp(i, config);
        forced->erase(id(i));
    });
}

} // namespace KxProducer
