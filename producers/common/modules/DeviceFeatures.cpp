// SPDX-License-Identifier: Apache-2.0
// Node map of a local device.

#include "ModuleFeatures.h"

namespace KxProducer
{

void PublishDevice(CFeaturePort& port, const CDescriptionHead& head, const CDeviceFacts& device,
                   std::function<std::string()> userId, const std::function<CIpConfig()>& ip)
{
    CFeatureList list;
    list.Category("DeviceInformation", "The device");
    const auto text = [&](const char* name, const char* tip, const std::string& value) {
        list.Add(String(name, tip).ReadOnly().Default(value));
    };
    text("DeviceID", "Its identifier on the interface", device.id);
    text("DeviceSerialNumber", "Its serial number", device.serial);
    list.Add(String("DeviceUserID", "Name that the user gave it").ReadOnly().Expert().Volatile());
    text("DeviceVendorName", "Its maker", device.vendor);
    text("DeviceModelName", "Its model", device.model);
    text("DeviceFamilyName", "Its family", device.family);
    text("DeviceVersion", "Its version", device.version);
    text("DeviceManufacturerInfo", "What its maker says of it", device.about);
    list.Add(Enumeration("DeviceType", "Technology")
                 .ReadOnly()
                 .Expert()
                 .Entries({{ConventionName(device.technology), 0, ""}}));
    text("DeviceDisplayName", "Its name for users", device.displayName);
    list.Add(Integer("DeviceTimestampFrequency", "Ticks of its time stamps in a second")
                 .Wide()
                 .ReadOnly()
                 .Unit("Hz")
                 .Default(device.timestampFrequency));
    list.Add(Enumeration("DeviceAccessStatus", "How it is opened")
                 .ReadOnly()
                 .Expert()
                 .Entries({{"OpenReadWrite", GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE, ""},
                           {"OpenReadOnly", GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY, ""}})
                 .Default(static_cast<int64_t>(device.access == GenTL::DEVICE_ACCESS_READONLY
                                                   ? GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY
                                                   : GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE)));
    list.Add(Enumeration("DeviceChunkDataFormat", "Layout of chunks")
                 .ReadOnly()
                 .Expert()
                 .Entries({{"GigEVision", 0, "Length and ID behind the data"}}));
    list.Add(Enumeration("DeviceEventDataFormat", "Layout of events")
                 .ReadOnly()
                 .Expert()
                 .Entries({{"Custom", 0, "Just the data"}}));
    const bool isGev = device.technology == ETechnology::GEV;
    if (isGev) {
        list.Add(Integer("GevDeviceMACAddress", "Its address")
                     .Wide()
                     .ReadOnly()
                     .Expert()
                     .As("MACAddress")
                     .Default(static_cast<int64_t>(device.mac)));
        for (const char* name : {"GevDeviceIPAddress", "GevDeviceSubnetMask", "GevDeviceGateway"})
            list.Add(Integer(name, "Of its present configuration")
                         .ReadOnly()
                         .Expert()
                         .As("IPV4Address")
                         .Volatile());
    }
    list.Category("DeviceControl", "How the device is talked to");
    list.Add(Enumeration("DeviceEndianessMechanism", "How byte orders are told")
                 .Expert()
                 .Entries({{"Legacy", 0, ""}, {"Standard", 1, ""}})
                 .Default(1));
    list.Add(Float("LinkCommandTimeout", "How long an answer may take")
                 .Guru()
                 .Range("1", "10000000")
                 .Unit("us")
                 .Default(200000.0));
    list.Add(Integer("LinkCommandRetryCount", "How often a question is put again")
                 .Guru()
                 .Range("0", "10")
                 .Default(3));
    list.Category("StreamEnumeration", "The streams");
    const size_t last = device.streamIds.empty() ? 0 : device.streamIds.size() - 1;
    list.Add(Integer("StreamSelector", "Which stream the features below are about")
                 .Range("0", std::to_string(last))
                 .NotStored());
    list.Add(String("StreamID", "Its identifier").ReadOnly().SelectedBy({"StreamSelector"}));
    port.Publish(list, head);

    for (size_t i = 0; i < device.streamIds.size(); ++i)
        port.Registers().SetText("StreamIDReg", device.streamIds[i], i);
    port.BindText("DeviceUserID", [userId = std::move(userId)](size_t) { return userId(); });
    if (isGev) {
        port.BindInteger("GevDeviceIPAddress", [ip](size_t) { return ip().address; });
        port.BindInteger("GevDeviceSubnetMask", [ip](size_t) { return ip().mask; });
        port.BindInteger("GevDeviceGateway", [ip](size_t) { return ip().gateway; });
    }
}

} // namespace KxProducer
