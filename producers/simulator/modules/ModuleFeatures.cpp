// SPDX-License-Identifier: Apache-2.0
// Node maps of system, local device and stream, by the naming convention of GenTL.

#include "modules/Device.h"
#include "modules/Stream.h"
#include "modules/System.h"

namespace KxSim
{
namespace
{

/// A text of an info command, read anew each time.
template <class Info>
void BindText(CRegisterMap& map, const std::string& feature, Info info)
{
    const std::string name = CFeatureList::RegisterOf(feature);
    map.At(name).beforeRead = [&map, name, info](size_t index) { map.SetText(name, info(index), index); };
}

template <class Value>
void BindInteger(CRegisterMap& map, const std::string& feature, Value value)
{
    const std::string name = CFeatureList::RegisterOf(feature);
    map.At(name).beforeRead = [&map, name, value](size_t index) {
        map.SetInteger(name, static_cast<int64_t>(value(index)), index);
    };
}

CEntry TypeEntry(ETechnology technology)
{
    return {ConventionName(technology), static_cast<int64_t>(technology), ""};
}

} // namespace

void CSystem::DescribePort()
{
    CFeatureList list;
    list.Category("SystemInformation", "The producer");
    const auto text = [&](const char* name, const char* tip, GenTL::TL_INFO_CMD command) {
        list.Add(String(name, tip).ReadOnly().Length(256).Default(UpToNul(GetSystemInfo(command).bytes)));
    };
    text("TLID", "Identifier of the producer", GenTL::TL_INFO_ID);
    text("TLVendorName", "Maker of the producer", GenTL::TL_INFO_VENDOR);
    text("TLModelName", "Model of the producer", GenTL::TL_INFO_MODEL);
    text("TLVersion", "Version of the producer", GenTL::TL_INFO_VERSION);
    text("TLFileName", "Name of its file", GenTL::TL_INFO_NAME);
    text("TLDisplayName", "Name for users", GenTL::TL_INFO_DISPLAYNAME);
    text("TLPath", "Path of its file", GenTL::TL_INFO_PATHNAME);
    list.Add(Enumeration("TLType", "Technology").ReadOnly().Expert().Entries({{"Mixed", 0, "Several"}}));
    list.Add(Integer("GenTLVersionMajor", "Version of GenTL, major number").ReadOnly().Expert().Default(1));
    list.Add(Integer("GenTLVersionMinor", "Version of GenTL, minor number").ReadOnly().Expert().Default(6));
    list.Add(Integer("GenTLSFNCVersionMajor", "Version of the naming convention, major number")
                 .ReadOnly()
                 .Expert()
                 .Default(1));
    list.Add(Integer("GenTLSFNCVersionMinor", "Version of the naming convention, minor number")
                 .ReadOnly()
                 .Expert()
                 .Default(2));

    list.Category("InterfaceEnumeration", "The interfaces");
    list.Add(Command("InterfaceUpdateList", "Looks for interfaces anew"));
    list.Add(Integer("InterfaceUpdateTimeout", "How long that may take")
                 .Expert()
                 .Range("1", "60000")
                 .Unit("ms")
                 .Default(1000));
    list.Add(Integer("InterfaceSelector", "Which interface the features below are about")
                 .Range("0", std::to_string(m_world.Adapters().size() - 1))
                 .NotStored());
    list.Add(String("InterfaceID", "Its identifier").ReadOnly().SelectedBy({"InterfaceSelector"}));
    list.Add(
        String("InterfaceDisplayName", "Its name for users").ReadOnly().SelectedBy({"InterfaceSelector"}));
    const auto gev = [&](const char* name, const char* tip, const char* as) {
        list.Add(Integer(name, tip)
                     .Wide()
                     .ReadOnly()
                     .Expert()
                     .As(as)
                     .SelectedBy({"InterfaceSelector"})
                     .AvailableIf("(InterfaceSelector = 1)"));
    };
    gev("GevInterfaceMACAddress", "Address of the adapter", "MACAddress");
    gev("GevInterfaceDefaultIPAddress", "IP address of the adapter", "IPV4Address");
    gev("GevInterfaceDefaultSubnetMask", "Subnet mask of the adapter", "IPV4Address");
    gev("GevInterfaceDefaultGateway", "Gateway of the adapter", "IPV4Address");
    m_port.Publish(list, {"KxSimulator_System", "Simulated cameras", "TLPort", "000000000001"});

    CRegisterMap& map = m_port.Registers();
    const auto& adapters = m_world.Adapters();
    BindText(map, "InterfaceID", [&](size_t i) { return adapters[i]->id; });
    BindText(map, "InterfaceDisplayName", [&](size_t i) { return adapters[i]->displayName; });
    BindInteger(map, "GevInterfaceMACAddress", [&](size_t i) { return adapters[i]->mac; });
    BindInteger(map, "GevInterfaceDefaultIPAddress", [&](size_t i) { return adapters[i]->ip.address; });
    BindInteger(map, "GevInterfaceDefaultSubnetMask", [&](size_t i) { return adapters[i]->ip.mask; });
    BindInteger(map, "GevInterfaceDefaultGateway", [&](size_t i) { return adapters[i]->ip.gateway; });
    map.At("InterfaceUpdateListReg").afterWrite = [this, &map](size_t) {
        UpdateInterfaceList();
        map.SetInteger("InterfaceUpdateListReg", 0);
    };
}

void CDevice::DescribePort()
{
    const CCameraModel& model = m_camera->Model();
    CFeatureList list;
    list.Category("DeviceInformation", "The device");
    const auto text = [&](const char* name, const char* tip, const std::string& value) {
        list.Add(String(name, tip).ReadOnly().Default(value));
    };
    text("DeviceID", "Its identifier on the interface", m_camera->Id());
    text("DeviceSerialNumber", "Its serial number", model.serial);
    list.Add(String("DeviceUserID", "Name that the user gave it").ReadOnly().Expert().Volatile());
    text("DeviceVendorName", "Its maker", "Kestrix");
    text("DeviceModelName", "Its model", model.model);
    text("DeviceFamilyName", "Its family", "KX simulated cameras");
    text("DeviceVersion", "Its version", "1.0.0");
    text("DeviceManufacturerInfo", "What its maker says of it", model.about);
    list.Add(Enumeration("DeviceType", "Technology")
                 .ReadOnly()
                 .Expert()
                 .Entries({TypeEntry(model.technology)})
                 .Default(static_cast<int64_t>(model.technology)));
    text("DeviceDisplayName", "Its name for users", Format("Kestrix %s (%s)", model.model, model.serial));
    list.Add(Integer("DeviceTimestampFrequency", "Ticks of its time stamps in a second")
                 .Wide()
                 .ReadOnly()
                 .Unit("Hz")
                 .Default(1000000000));
    list.Add(Enumeration("DeviceAccessStatus", "How it is opened")
                 .ReadOnly()
                 .Expert()
                 .Entries({{"OpenReadWrite", GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE, ""},
                           {"OpenReadOnly", GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY, ""}})
                 .Default(static_cast<int64_t>(m_access == GenTL::DEVICE_ACCESS_READONLY
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
    const bool isGev = model.technology == ETechnology::GEV;
    if (isGev) {
        list.Add(Integer("GevDeviceMACAddress", "Its address")
                     .Wide()
                     .ReadOnly()
                     .Expert()
                     .As("MACAddress")
                     .Default(static_cast<int64_t>(model.mac)));
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
    list.Add(
        Integer("StreamSelector", "Which stream the features below are about").Range("0", "0").NotStored());
    list.Add(
        String("StreamID", "Its identifier").ReadOnly().Default(StreamId()).SelectedBy({"StreamSelector"}));
    m_port.Publish(
        list, {"KxSimulator_Device", "Simulated camera, seen from the host", "DevicePort", "000000000003"});

    CRegisterMap& map = m_port.Registers();
    BindText(map, "DeviceUserID", [this](size_t) { return m_camera->GetUserId(); });
    if (isGev) {
        BindInteger(map, "GevDeviceIPAddress", [this](size_t) { return m_camera->GetIp().address; });
        BindInteger(map, "GevDeviceSubnetMask", [this](size_t) { return m_camera->GetIp().mask; });
        BindInteger(map, "GevDeviceGateway", [this](size_t) { return m_camera->GetIp().gateway; });
    }
}

void CStream::DescribePort()
{
    const ETechnology technology = m_device->Camera().Model().technology;
    CFeatureList list;
    list.Category("StreamInformation", "The stream");
    list.Add(String("StreamID", "Its identifier").ReadOnly().Expert().Default(m_id));
    list.Add(Enumeration("StreamType", "Technology")
                 .ReadOnly()
                 .Expert()
                 .Entries({TypeEntry(technology)})
                 .Default(static_cast<int64_t>(technology)));
    list.Category("BufferHandlingControl", "Its buffers");
    list.Add(
        Enumeration("StreamBufferHandlingMode", "What happens when images come faster than they are fetched")
            .Entries({{"OldestFirst", 0, "Each buffer is delivered; images without a buffer are lost"},
                      {"OldestFirstOverwrite", 1, "Without a buffer, the oldest that waits is filled anew"},
                      {"NewestOnly", 2, "Only the newest waits"}}));
    struct CCounter
    {
        const char *name, *toolTip;
        GenTL::STREAM_INFO_CMD command;
    };
    static constexpr CCounter kCounters[] = {
        {"StreamAnnouncedBufferCount", "Announced buffers", GenTL::STREAM_INFO_NUM_ANNOUNCED},
        {"StreamAnnounceBufferMinimum", "Buffers that have to be announced",
         GenTL::STREAM_INFO_BUF_ANNOUNCE_MIN},
        {"StreamDeliveredFrameCount", "Images delivered since the start", GenTL::STREAM_INFO_NUM_DELIVERED},
        {"StreamLostFrameCount", "Images lost since the start for want of a buffer",
         GenTL::STREAM_INFO_NUM_UNDERRUN},
        {"StreamInputBufferCount", "Buffers that wait for images", GenTL::STREAM_INFO_NUM_QUEUED},
        {"StreamOutputBufferCount", "Buffers that wait to be fetched", GenTL::STREAM_INFO_NUM_AWAIT_DELIVERY},
        {"StreamStartedFrameCount", "Images begun since the stream was opened",
         GenTL::STREAM_INFO_NUM_STARTED},
        {"PayloadSize", "Bytes of an image with all that comes with it", GenTL::STREAM_INFO_PAYLOAD_SIZE},
        {"StreamChunkCountMaximum", "Most chunks of an image", GenTL::STREAM_INFO_NUM_CHUNKS_MAX},
        {"StreamBufferAlignment", "Alignment of buffers", GenTL::STREAM_INFO_BUF_ALIGNMENT},
    };
    for (const CCounter& counter : kCounters)
        list.Add(Integer(counter.name, counter.toolTip).Wide().ReadOnly().Expert().Volatile());
    list.Add(Boolean("StreamIsGrabbing", "Whether images are taken over").ReadOnly().Expert().Volatile());
    m_port.Publish(list,
                   {"KxSimulator_Stream", "Stream of a simulated camera", "StreamPort", "000000000004"});

    CRegisterMap& map = m_port.Registers();
    const auto number = [this](GenTL::STREAM_INFO_CMD command) {
        const CInfo info = GetInfo(command);
        uint64_t value = 0;
        info.bytes.copy(reinterpret_cast<char*>(&value), sizeof value);
        return value;
    };
    for (const CCounter& counter : kCounters)
        BindInteger(map, counter.name,
                    [number, command = counter.command](size_t) { return number(command); });
    BindInteger(map, "StreamIsGrabbing", [number](size_t) { return number(GenTL::STREAM_INFO_IS_GRABBING); });
    map.At("StreamBufferHandlingModeReg").afterWrite = [this, &map](size_t) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_handling = static_cast<EBufferHandling>(map.GetInteger("StreamBufferHandlingModeReg"));
    };
}

CStream::CStream(std::shared_ptr<CDevice> device, std::string id)
    : m_device(std::move(device))
    , m_id(std::move(id))
    , m_port({m_id, m_device->Camera().Model().model, m_device->TlType(), "TLDataStream", "StreamPort"},
             EByteOrder::Little)
{
    DescribePort();
}

} // namespace KxSim
