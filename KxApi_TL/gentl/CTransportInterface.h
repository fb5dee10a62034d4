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
/// The locks of one system. None is held while another thread's reading of a list waits for the producer.
struct CSystemLocks
{
    GenICam::CLock search; ///< one search at a time; held during it, since producers share their lists
    GenICam::CLock lists;  ///< what readers see; held for moments, taken inside `search`
};

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
    /// @param locks outlive this object.
    CDeviceInfo(CSystemLocks& locks, const GenICam::gcstring& id)
        : m_locks(locks)
        , m_id(id)
    {}

    /// Whether they are other facts than before. With the lists' lock held, which is the same for all infos
    /// of a system; the analysis can't know that.
    bool SetFacts(CDeviceFacts facts) KXGC_NO_THREAD_SAFETY_ANALYSIS;

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
        const GenICam::AutoLock lock(m_locks.lists);
        return m_facts.*member;
    }

    CSystemLocks& m_locks;
    const GenICam::gcstring m_id;
    CDeviceFacts m_facts KXGC_GUARDED_BY(m_locks.lists);
};

class CTransportInterface final : public IKxInterface, public IKxInterfaceInfo
{
public:
    /// @param locks the system's; all arguments outlive this object.
    CTransportInterface(IKxSystem& system, CKxGenTLLib& lib, GenTL::TL_HANDLE hTL, CSystemLocks& locks,
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
    struct CFound
    {
        GenICam::gcstring id;
        CDeviceFacts facts;
    };

    GenTL::IF_HANDLE Open();
    std::vector<CFound> Search();
    CDeviceFacts ReadFacts(GenTL::IF_HANDLE handle, const GenICam::gcstring& id) const;
    bool Exchange(std::vector<CFound> found);

    IKxSystem& m_system;
    CKxGenTLLib& m_lib;
    const GenTL::TL_HANDLE m_hTL;
    CSystemLocks& m_locks;
    const GenICam::gcstring m_id;
    const GenICam::gcstring m_displayName;
    const GenICam::gcstring m_type;
    /// Held while the interface is opened, and while one of its devices is opened or closed. Taken inside the
    /// search's, never the other way round.
    GenICam::CLock m_openLock;
    GenTL::IF_HANDLE m_handle KXGC_GUARDED_BY(m_openLock) = nullptr;
    /// All ever seen, since users keep pointers to them.
    std::map<std::string, std::unique_ptr<CDeviceInfo>> m_known KXGC_GUARDED_BY(m_locks.lists);
    std::vector<CDeviceInfo*> m_present KXGC_GUARDED_BY(m_locks.lists);
    std::unique_ptr<CModulePort> m_port;
};

} // namespace Detail
} // namespace KxApi
