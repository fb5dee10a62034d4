// SPDX-License-Identifier: Apache-2.0
// An interface of a producer, and what is known of its devices.
#pragma once

#include "CModulePort.h"

#include <Base/GCSynch.h>
#include <KxApi_TL/IKxInterface.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// Longest time, in milliseconds, that a search for interfaces or devices may take.
inline constexpr uint64_t kUpdateTimeoutMs = 1000;
/// More interfaces or devices than any computer has; a producer that tells more is in error.
inline constexpr uint32_t kMaxListLength = 4096;

struct CDeviceFacts
{
    GenICam::gcstring vendor;
    GenICam::gcstring model;
    GenICam::gcstring type;
    GenICam::gcstring displayName;
    int32_t accessStatus = GenTL::DEVICE_ACCESS_STATUS_UNKNOWN;
    GenICam::gcstring userDefinedName;
    GenICam::gcstring serialNumber;
    GenICam::gcstring version;

    bool operator==(const CDeviceFacts& other) const { return Tied(*this) == Tied(other); }

private:
    static std::tuple<const GenICam::gcstring&, const GenICam::gcstring&, const GenICam::gcstring&,
                      const GenICam::gcstring&, const int32_t&, const GenICam::gcstring&,
                      const GenICam::gcstring&, const GenICam::gcstring&>
    Tied(const CDeviceFacts& facts)
    {
        return std::tie(facts.vendor, facts.model, facts.type, facts.displayName, facts.accessStatus,
                        facts.userDefinedName, facts.serialNumber, facts.version);
    }
};

class CDeviceInfo final : public IKxDeviceInfo
{
public:
    /// @param lock guards the facts; outlives this object.
    CDeviceInfo(GenICam::CLock& lock, const GenICam::gcstring& id)
        : m_lock(lock)
        , m_id(id)
    {}

    /// Whether they are other facts than before. With the lock held.
    bool SetFacts(CDeviceFacts facts);

    GenICam::gcstring GetID() const override { return m_id; }
    GenICam::gcstring GetVendor() const override { return Get(&CDeviceFacts::vendor); }
    GenICam::gcstring GetModel() const override { return Get(&CDeviceFacts::model); }
    GenICam::gcstring GetTLType() const override { return Get(&CDeviceFacts::type); }
    GenICam::gcstring GetDisplayName() const override { return Get(&CDeviceFacts::displayName); }
    int32_t GetAccessStatus() const override { return Get(&CDeviceFacts::accessStatus); }
    GenICam::gcstring GetUserDefinedName() const override { return Get(&CDeviceFacts::userDefinedName); }
    GenICam::gcstring GetSerialNumber() const override { return Get(&CDeviceFacts::serialNumber); }
    GenICam::gcstring GetVersion() const override { return Get(&CDeviceFacts::version); }

private:
    template <class T>
    T Get(T CDeviceFacts::*member) const
    {
        const GenICam::AutoLock lock(m_lock);
        return m_facts.*member;
    }

    GenICam::CLock& m_lock;
    const GenICam::gcstring m_id;
    CDeviceFacts m_facts;
};

class CTransportInterface final : public IKxInterface, public IKxInterfaceInfo
{
public:
    /// @param lock the system's; all arguments outlive this object.
    CTransportInterface(IKxSystem& system, CKxGenTLLib& lib, GenTL::TL_HANDLE hTL, GenICam::CLock& lock,
                        const GenICam::gcstring& id);
    CTransportInterface(const CTransportInterface&) = delete;
    CTransportInterface& operator=(const CTransportInterface&) = delete;
    ~CTransportInterface();

    IKxSystem* GetIKxSystem() const override { return &m_system; }
    IKxPort* GetIKxPort() override { return m_port.get(); }
    const IKxInterfaceInfo* GetIKxInterfaceInfo() const override { return this; }
    bool UpdateDeviceList() override;
    uint32_t GetDeviceCount() const override;
    const IKxDeviceInfo* GetIKxDeviceInfo(uint32_t nIndex) const override;

    GenICam::gcstring GetDisplayName() const override { return m_displayName; }
    GenICam::gcstring GetTLType() const override { return m_type; }
    GenICam::gcstring GetID() const override { return m_id; }

    const GenICam::gcstring& GetProducerPath() const { return m_lib.GetPath(); }
    /// Whether the info is one of this interface's.
    bool Owns(const IKxDeviceInfo* info) const;
    /// Opens a device. Raises CKxGenTLErrorException.
    GenTL::DEV_HANDLE OpenDevice(const GenICam::gcstring& id, GenTL::DEVICE_ACCESS_FLAGS access);
    void CloseDevice(GenTL::DEV_HANDLE handle) noexcept;

private:
    GenTL::IF_HANDLE Open();
    bool ReadDeviceList();
    CDeviceFacts ReadFacts(GenTL::IF_HANDLE handle, const GenICam::gcstring& id) const;

    IKxSystem& m_system;
    CKxGenTLLib& m_lib;
    const GenTL::TL_HANDLE m_hTL;
    GenICam::CLock&
        m_lock; // guards the members behind it, and the calls of the producer's functions for lists
    const GenICam::gcstring m_id;
    const GenICam::gcstring m_displayName;
    const GenICam::gcstring m_type;
    GenTL::IF_HANDLE m_handle = nullptr;
    std::map<std::string, std::unique_ptr<CDeviceInfo>>
        m_known; // all ever seen, since users keep pointers to them
    std::vector<CDeviceInfo*> m_present;
    std::unique_ptr<CModulePort> m_port;
};

} // namespace Detail
} // namespace KxApi
