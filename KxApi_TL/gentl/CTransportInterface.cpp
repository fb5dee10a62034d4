// SPDX-License-Identifier: Apache-2.0

#include "CTransportInterface.h"

#include "GenTLInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>

#include <algorithm>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

GenICam::gcstring InterfaceText(CKxGenTLLib& lib, GenTL::TL_HANDLE hTL, const GenICam::gcstring& id,
                                GenTL::INTERFACE_INFO_CMD command)
{
    return GetInfoText(
        [&](auto... arguments) { return lib.TLGetInterfaceInfo(hTL, id.c_str(), command, arguments...); });
}

} // namespace

bool CDeviceInfo::SetFacts(CDeviceFacts facts)
{
    if (facts == m_facts)
        return false;
    m_facts = std::move(facts);
    return true;
}

CTransportInterface::CTransportInterface(IKxSystem& system, CKxGenTLLib& lib, GenTL::TL_HANDLE hTL,
                                         CSystemLocks& locks, const GenICam::gcstring& id)
    : m_system(system)
    , m_lib(lib)
    , m_hTL(hTL)
    , m_locks(locks)
    , m_id(id)
    , m_displayName(InterfaceText(lib, hTL, id, GenTL::INTERFACE_INFO_DISPLAYNAME))
    , m_type(InterfaceText(lib, hTL, id, GenTL::INTERFACE_INFO_TLTYPE))
    , m_port(std::make_unique<CModulePort>(lib, [this] { return Open(); }))
{}

CTransportInterface::~CTransportInterface()
{
    m_port.reset(); // its node map reads through the handle
    if (m_handle)
        m_lib.IFClose(m_handle);
}

GenTL::IF_HANDLE CTransportInterface::Open()
{
    const GenICam::AutoLock lock(m_openLock);
    if (!m_handle) {
        GenTL::IF_HANDLE handle = nullptr;
        CheckGenTL(m_lib, m_lib.TLOpenInterface(m_hTL, m_id.c_str(), &handle), "TLOpenInterface",
                   m_id.c_str());
        if (!handle)
            throw RUNTIME_EXCEPTION("TLOpenInterface of '%s' gave no handle", m_id.c_str());
        m_handle = handle;
    }
    return m_handle;
}

bool CTransportInterface::Owns(const IKxDeviceInfo* info) const
{
    const GenICam::AutoLock lock(m_locks.lists);
    return std::any_of(m_known.begin(), m_known.end(),
                       [info](const auto& known) { return known.second.get() == info; });
}

GenTL::DEV_HANDLE CTransportInterface::OpenDevice(const GenICam::gcstring& id,
                                                  GenTL::DEVICE_ACCESS_FLAGS access)
{
    const GenICam::AutoLock lock(m_openLock);
    GenTL::DEV_HANDLE device = nullptr;
    CheckGenTL(m_lib, m_lib.IFOpenDevice(Open(), id.c_str(), access, &device), "IFOpenDevice", id.c_str());
    if (!device)
        throw RUNTIME_EXCEPTION("IFOpenDevice of '%s' gave no handle", id.c_str());
    return device;
}

void CTransportInterface::CloseDevice(GenTL::DEV_HANDLE handle) noexcept
{
    const GenICam::AutoLock lock(m_openLock);
    m_lib.DevClose(handle);
}

CDeviceFacts CTransportInterface::ReadFacts(GenTL::IF_HANDLE handle, const GenICam::gcstring& id) const
{
    const auto text = [&](GenTL::DEVICE_INFO_CMD command) {
        return GetInfoText([&](auto... arguments) {
            return m_lib.IFGetDeviceInfo(handle, id.c_str(), command, arguments...);
        });
    };
    CDeviceFacts facts;
    facts.vendor = text(GenTL::DEVICE_INFO_VENDOR);
    facts.model = text(GenTL::DEVICE_INFO_MODEL);
    facts.type = text(GenTL::DEVICE_INFO_TLTYPE);
    facts.displayName = text(GenTL::DEVICE_INFO_DISPLAYNAME);
    if (facts.displayName.empty())
        facts.displayName = facts.vendor + " " + facts.model + " (" + id + ")";
    facts.accessStatus = GetInfoNumber<int32_t>(
        [&](auto... arguments) {
            return m_lib.IFGetDeviceInfo(handle, id.c_str(), GenTL::DEVICE_INFO_ACCESS_STATUS, arguments...);
        },
        GenTL::DEVICE_ACCESS_STATUS_UNKNOWN);
    facts.userDefinedName = text(GenTL::DEVICE_INFO_USER_DEFINED_NAME);
    facts.serialNumber = text(GenTL::DEVICE_INFO_SERIAL_NUMBER);
    facts.version = text(GenTL::DEVICE_INFO_VERSION);
    return facts;
}

/// What the producer tells, put beside the list that readers see.
std::vector<CTransportInterface::CFound> CTransportInterface::Search()
{
    const GenTL::IF_HANDLE handle = Open();
    // What the producer tells of changes isn't used: not all of them notice a changed access status.
    GenTL::bool8_t changedByProducer = false;
    CheckGenTL(m_lib, m_lib.IFUpdateDeviceList(handle, &changedByProducer, kUpdateTimeoutMs),
               "IFUpdateDeviceList", m_id.c_str());
    uint32_t count = 0;
    CheckGenTL(m_lib, m_lib.IFGetNumDevices(handle, &count), "IFGetNumDevices", m_id.c_str());
    if (count > kMaxListLength)
        throw RUNTIME_EXCEPTION("Interface '%s' tells of %u devices; Max = %u", m_id.c_str(), count,
                                kMaxListLength);
    std::vector<CFound> found;
    for (uint32_t i = 0; i < count; ++i) {
        GenICam::gcstring id;
        CheckGenTL(
            m_lib,
            GetText([&](char* text, size_t* size) { return m_lib.IFGetDeviceID(handle, i, text, size); }, id),
            "IFGetDeviceID", m_id.c_str());
        found.push_back({id, ReadFacts(handle, id)});
    }
    return found;
}

/// Makes what was found the list that readers see; true when it differs from what they saw.
bool CTransportInterface::Exchange(std::vector<CFound> found)
{
    const GenICam::AutoLock lock(m_locks.lists);
    std::vector<CDeviceInfo*> present;
    present.reserve(found.size());
    for (const CFound& device : found) {
        std::unique_ptr<CDeviceInfo>& info = m_known[device.id.c_str()];
        if (!info)
            info = std::make_unique<CDeviceInfo>(m_locks, device.id);
        present.push_back(info.get());
    }
    bool changed = present != m_present;
    for (size_t i = 0; i < found.size(); ++i) {
        if (present[i]->SetFacts(std::move(found[i].facts)))
            changed = true;
    }
    m_present = std::move(present);
    return changed;
}

bool CTransportInterface::UpdateDeviceList()
{
    return GenICam::GuardBadAlloc([this] {
        bool changed = false;
        {
            const GenICam::AutoLock lock(m_locks.search);
            changed = Exchange(Search());
        }
        // The module's selector of devices has another range now. Outside the locks, which the node map's
        // users take inside that of the map.
        if (changed)
            m_port->Invalidate();
        return changed;
    });
}

uint32_t CTransportInterface::GetDeviceCount() const
{
    const GenICam::AutoLock lock(m_locks.lists);
    return static_cast<uint32_t>(m_present.size());
}

const IKxDeviceInfo* CTransportInterface::GetIKxDeviceInfo(uint32_t nIndex) const
{
    const GenICam::AutoLock lock(m_locks.lists);
    KXGC_CHECK_RANGE(rlBelowMax, "nIndex", nIndex, m_present.size());
    return m_present[nIndex];
}

} // namespace Detail
} // namespace KxApi
