// SPDX-License-Identifier: Apache-2.0

#include "Interface.h"

#include "modules/System.h"

#include <algorithm>
#include <utility>

namespace KxSim
{

CInterface::CInterface(std::shared_ptr<CSystem> parent, CAdapter& adapter)
    : m_parent(std::move(parent))
    , m_adapter(adapter)
    , m_port({adapter.id, "KxSimulator", TlType(adapter.technology), "TLInterface", "InterfacePort"},
             EByteOrder::Little)
{
    DescribePort();
}

void CInterface::DescribePort()
{
    CFeatureList list;
    AddInterfaceInformation(list, m_adapter);
    AddDeviceEnumeration(list, m_adapter.technology);
    if (m_adapter.technology == ETechnology::GEV)
        AddDiscoveryControl(list);
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
    BindDeviceEnumeration(m_port, *this);
    BindFaults();
    if (m_adapter.technology == ETechnology::GEV) {
        BindGevDevices(m_port, *this, *this, m_adapter);
        BindDiscovery();
    }
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

void CInterface::BindDiscovery()
{
    m_port.BindWrite("GevDeviceDiscoveryCommandDestinationIPAddress", [this](int64_t value, size_t) {
        m_adapter.discoveryDestination = static_cast<uint32_t>(value);
    });
    m_port.BindWrite("GevDiscoveryAllowsBroadcastOfAcknowledge",
                     [this](int64_t value, size_t) { m_adapter.allowsBroadcastAnswers = value != 0; });
    // The adapter keeps them from one opening to the next.
    m_port.Registers().SetInteger("GevDeviceDiscoveryCommandDestinationIPAddressReg",
                                  m_adapter.discoveryDestination);
    m_port.Registers().SetInteger("GevDiscoveryAllowsBroadcastOfAcknowledgeReg",
                                  m_adapter.allowsBroadcastAnswers ? 1 : 0);
}

void CInterface::ForceIp(size_t index, const CIpConfig& config)
{
    CCamera& camera = ListedCamera(index);
    const GenTL::DEVICE_ACCESS_STATUS status = AccessStatus(camera);
    if (status != GenTL::DEVICE_ACCESS_STATUS_READWRITE && status != GenTL::DEVICE_ACCESS_STATUS_NOACCESS)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is open, its address can't be forced",
             camera.Id().c_str());
    camera.ForceIp(config);
}

void* CInterface::GetParentHandle() const { return m_parent->GetHandle(); }

CInfo CInterface::GetInfo(GenTL::INTERFACE_INFO_CMD command)
{
    return m_parent->GetInterfaceInfo(m_adapter.id, command);
}

void CInterface::Close()
{
    while (!m_open.empty())
        std::shared_ptr<CDevice>(m_open.back())->Close();
    CModule::Close();
    m_parent->Detach(*this);
}

bool CInterface::UpdateDeviceList()
{
    std::vector<std::shared_ptr<CCamera>> found;
    for (const std::shared_ptr<CCamera>& camera : m_adapter.cameras) {
        if (camera->IsPlugged() && m_adapter.Hears(*camera))
            found.push_back(camera);
    }
    const bool hasChanged = found != m_devices;
    m_devices = std::move(found);
    // The selector stays on a device. The producer's lock guards the registers as well.
    const int64_t last = std::max<int64_t>(0, static_cast<int64_t>(m_devices.size()) - 1);
    CRegisterMap& map = m_port.Registers();
    map.SetInteger("DeviceSelectorReg", std::min(map.GetInteger("DeviceSelectorReg"), last));
    return hasChanged;
}

CCamera& CInterface::ListedCamera(size_t index) const
{
    if (index >= m_devices.size())
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There are %zu devices, none with index %zu", m_devices.size(),
             index);
    return *m_devices[index];
}

std::shared_ptr<CCamera> CInterface::FindCamera(const std::string& id) const
{
    for (const std::shared_ptr<CCamera>& camera : m_adapter.cameras) {
        if (camera->Id() == id && camera->IsPlugged() && m_adapter.Hears(*camera))
            return camera;
    }
    Fail(GenTL::GC_ERR_INVALID_ID, "There is no device '%s' on interface '%s'", id.c_str(),
         m_adapter.id.c_str());
}

const CDevice* CInterface::FindOpen(const CCamera& camera) const
{
    const auto place =
        std::find_if(m_open.begin(), m_open.end(),
                     [&](const std::shared_ptr<CDevice>& device) { return &device->Camera() == &camera; });
    return place == m_open.end() ? nullptr : place->get();
}

GenTL::DEVICE_ACCESS_STATUS CInterface::AccessStatus(CCamera& camera)
{
    if (const CDevice* const device = FindOpen(camera))
        return device->Access() == GenTL::DEVICE_ACCESS_READONLY ? GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY
                                                                 : GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE;
    if (!m_adapter.Reaches(camera))
        return GenTL::DEVICE_ACCESS_STATUS_NOACCESS;
    return camera.AccessLock().IsTakenElsewhere() ? GenTL::DEVICE_ACCESS_STATUS_BUSY
                                                  : GenTL::DEVICE_ACCESS_STATUS_READWRITE;
}

CInfo CInterface::GetDeviceInfo(const std::string& id, GenTL::DEVICE_INFO_CMD command)
{
    const auto listed =
        std::find_if(m_devices.begin(), m_devices.end(),
                     [&](const std::shared_ptr<CCamera>& camera) { return camera->Id() == id; });
    return GetDeviceInfo(listed == m_devices.end() ? *FindCamera(id) : **listed, command);
}

CInfo CInterface::GetDeviceInfo(CCamera& camera, GenTL::DEVICE_INFO_CMD command)
{
    const CCameraModel& model = camera.Model();
    switch (command) {
    case GenTL::DEVICE_INFO_ID:
        return TextInfo(camera.Id());
    case GenTL::DEVICE_INFO_VENDOR:
        return TextInfo("Kestrix");
    case GenTL::DEVICE_INFO_MODEL:
        return TextInfo(model.model);
    case GenTL::DEVICE_INFO_TLTYPE:
        return TextInfo(TlType(model.technology));
    case GenTL::DEVICE_INFO_DISPLAYNAME:
        return TextInfo(Format("Kestrix %s (%s)", model.model, model.serial));
    case GenTL::DEVICE_INFO_ACCESS_STATUS:
        return Int32Info(AccessStatus(camera));
    case GenTL::DEVICE_INFO_USER_DEFINED_NAME:
        return TextInfo(camera.GetUserId());
    case GenTL::DEVICE_INFO_SERIAL_NUMBER:
        return TextInfo(model.serial);
    case GenTL::DEVICE_INFO_VERSION:
        return TextInfo("1.0.0");
    case GenTL::DEVICE_INFO_TIMESTAMP_FREQUENCY:
        return UInt64Info(1000000000);
    default:
        FailUnknownInfo(command);
    }
}

std::shared_ptr<CDeviceModule> CInterface::OpenDevice(const std::string& id,
                                                      GenTL::DEVICE_ACCESS_FLAGS access)
{
    if (access < GenTL::DEVICE_ACCESS_READONLY || access > GenTL::DEVICE_ACCESS_EXCLUSIVE)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "There is no access %d to a device", access);
    const std::shared_ptr<CCamera> camera = FindCamera(id);
    if (FindOpen(*camera))
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Device '%s' is open already", id.c_str());
    if (!m_adapter.Reaches(*camera))
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' lies in another subnet than interface '%s'",
             id.c_str(), m_adapter.id.c_str());
    if (!camera->AccessLock().Take(access))
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is open in another process", id.c_str());
    auto device = std::make_shared<CDevice>(shared_from_this(), camera, access);
    Handles().Add(device);
    device->Start();
    m_open.push_back(device);
    return device;
}

void CInterface::Detach(const CDevice& device)
{
    m_open.erase(std::remove_if(m_open.begin(), m_open.end(),
                                [&](const std::shared_ptr<CDevice>& open) { return open.get() == &device; }),
                 m_open.end());
}

} // namespace KxSim
