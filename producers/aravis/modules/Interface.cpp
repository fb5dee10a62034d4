// SPDX-License-Identifier: Apache-2.0
#include "modules/Interface.h"

#include "modules/Device.h"
#include "modules/System.h"

#include <algorithm>
#include <utility>

namespace KxAravis
{

using KxProducer::Fail;
using KxProducer::TextInfo;

CInterface::CInterface(std::shared_ptr<CSystem> parent, KxProducer::CAdapterFacts facts)
    : m_parent(std::move(parent))
    , m_facts(std::move(facts))
    , m_port({m_facts.id, "KxAravis", KxProducer::TlType(m_facts.technology), "TLInterface", "InterfacePort"},
             KxProducer::EByteOrder::Little)
{}

void CInterface::DescribePort()
{
    KxProducer::CFeatureList list;
    KxProducer::AddInterfaceInformation(list, m_facts);
    KxProducer::AddDeviceEnumeration(list, m_facts.technology);
    AddFeatures(list);
    m_port.Publish(list, {"KxAravis_Interface", m_facts.displayName, "InterfacePort",
                          KxProducer::Format("1%011d", static_cast<int>(m_facts.technology))});
    KxProducer::BindDeviceEnumeration(m_port, *this);
}

void CInterface::Close()
{
    while (!m_open.empty())
        std::shared_ptr<CDevice>(m_open.back())->Close();
    CModule::Close();
    m_parent->Detach(*this);
}

void* CInterface::GetParentHandle() const { return m_parent->GetHandle(); }

KxProducer::CInfo CInterface::GetInfo(GenTL::INTERFACE_INFO_CMD command)
{
    return KxProducer::GetInterfaceFact(command, m_facts.id, m_facts.displayName,
                                        KxProducer::TlType(m_facts.technology));
}

void CInterface::Search(uint64_t timeoutMs)
{
    std::vector<CDeviceFacts> found = Find(timeoutMs);
    const std::lock_guard<std::mutex> lock(m_foundMutex);
    m_found = std::move(found);
}

/// A camera that is open here stays listed, though it may be too busy to answer a search.
void CInterface::KeepOpenOnes(std::vector<CDeviceFacts>& found) const
{
    for (const std::shared_ptr<CDevice>& device : m_open) {
        const CDeviceFacts& facts = device->Facts();
        const bool isFound = std::any_of(found.begin(), found.end(), [&](const CDeviceFacts& candidate) {
            return candidate.id == facts.id;
        });
        if (!isFound)
            found.push_back(facts);
    }
    std::sort(found.begin(), found.end(),
              [](const CDeviceFacts& a, const CDeviceFacts& b) { return a.id < b.id; });
}

bool CInterface::UpdateDeviceList()
{
    std::vector<CDeviceFacts> found;
    {
        const std::lock_guard<std::mutex> lock(m_foundMutex);
        found = m_found;
    }
    KeepOpenOnes(found);
    const bool isSame = std::equal(found.begin(), found.end(), m_devices.begin(), m_devices.end(),
                                   [this](const CDeviceFacts& a, const CDeviceFacts& b) {
                                       return a.id == b.id && StatusOf(a) == StatusOf(b);
                                   });
    m_devices = std::move(found);
    // The selector stays on a device. The producer's lock guards the registers as well.
    const int64_t last = std::max<int64_t>(0, static_cast<int64_t>(m_devices.size()) - 1);
    KxProducer::CRegisterMap& map = m_port.Registers();
    map.SetInteger("DeviceSelectorReg", std::min(map.GetInteger("DeviceSelectorReg"), last));
    return !isSame;
}

const CDeviceFacts& CInterface::Listed(size_t index) const
{
    if (index >= m_devices.size())
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There are %zu devices, none with index %zu", m_devices.size(),
             index);
    return m_devices[index];
}

const CDeviceFacts& CInterface::FindListed(const std::string& id) const
{
    for (const CDeviceFacts& facts : m_devices) {
        if (facts.id == id)
            return facts;
    }
    Fail(GenTL::GC_ERR_INVALID_ID, "There is no device '%s' on interface '%s'", id.c_str(),
         m_facts.id.c_str());
}

const CDevice* CInterface::FindOpen(const std::string& id) const
{
    for (const std::shared_ptr<CDevice>& device : m_open) {
        if (device->Facts().id == id)
            return device.get();
    }
    return nullptr;
}

GenTL::DEVICE_ACCESS_STATUS CInterface::AccessStatus(const CDeviceFacts& facts) const
{
    const CDevice* const device = FindOpen(facts.id);
    if (device && device->IsLost())
        return GenTL::DEVICE_ACCESS_STATUS_NOACCESS;
    if (device)
        return device->Access() == GenTL::DEVICE_ACCESS_READONLY ? GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY
                                                                 : GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE;
    return StatusOf(facts);
}

KxProducer::CInfo CInterface::GetDeviceInfo(const std::string& id, GenTL::DEVICE_INFO_CMD command)
{
    return GetDeviceInfo(FindListed(id), command);
}

KxProducer::CInfo CInterface::GetDeviceInfo(const CDeviceFacts& facts, GenTL::DEVICE_INFO_CMD command) const
{
    switch (command) {
    case GenTL::DEVICE_INFO_ID:
        return TextInfo(facts.id);
    case GenTL::DEVICE_INFO_VENDOR:
        return TextInfo(facts.vendor);
    case GenTL::DEVICE_INFO_MODEL:
        return TextInfo(facts.model);
    case GenTL::DEVICE_INFO_TLTYPE:
        return TextInfo(KxProducer::TlType(facts.technology));
    case GenTL::DEVICE_INFO_DISPLAYNAME:
        return TextInfo(facts.DisplayName());
    case GenTL::DEVICE_INFO_ACCESS_STATUS:
        return KxProducer::Int32Info(AccessStatus(facts));
    case GenTL::DEVICE_INFO_USER_DEFINED_NAME:
        return TextInfo(facts.userName);
    case GenTL::DEVICE_INFO_SERIAL_NUMBER:
        return TextInfo(facts.serial);
    case GenTL::DEVICE_INFO_VERSION:
        return TextInfo(facts.version);
    case GenTL::DEVICE_INFO_TIMESTAMP_FREQUENCY:
        return KxProducer::UInt64Info(1000000000); // the library beneath tells nanoseconds
    default:
        KxProducer::FailUnknownInfo(command);
    }
}

std::shared_ptr<KxProducer::CDeviceModule> CInterface::OpenDevice(const std::string& id,
                                                                  GenTL::DEVICE_ACCESS_FLAGS access)
{
    if (access < GenTL::DEVICE_ACCESS_READONLY || access > GenTL::DEVICE_ACCESS_EXCLUSIVE)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "There is no access %d to a device", access);
    const CDeviceFacts facts = FindListed(id);
    if (FindOpen(id))
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Device '%s' is open already", id.c_str());
    auto device = std::make_shared<CDevice>(shared_from_this(), facts, Connect(facts, access), access);
    KxProducer::Handles().Add(device);
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

} // namespace KxAravis
