// SPDX-License-Identifier: Apache-2.0
// A producer that is open.
#pragma once

#include "CTransportInterface.h"

#include <KxApi_TL/IKxSystem.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace KxApi
{
namespace Detail
{

class CTransportSystem final : public IKxSystemReleasable, public IKxSystemInfo
{
public:
    /// Opens the producer. Raises CKxGenTLErrorException.
    explicit CTransportSystem(std::shared_ptr<CKxGenTLLib> lib);
    CTransportSystem(const CTransportSystem&) = delete;
    CTransportSystem& operator=(const CTransportSystem&) = delete;
    ~CTransportSystem();

    int32_t GetKxSystemVendor() const override;
    const IKxSystemInfo* GetIKxSystemInfo() const override { return this; }
    bool UpdateInterfaceList() override;
    uint32_t GetInterfaceCount() const override;
    IKxInterface* GetIKxInterface(uint32_t nIndex) const override;
    IKxPort* GetIKxPort() override { return m_port.get(); }
    void Hold();
    void Release() override;

    GenICam::gcstring GetVendor() const override { return m_facts.vendor; }
    GenICam::gcstring GetModel() const override { return m_facts.model; }
    GenICam::gcstring GetVersion() const override { return m_facts.version; }
    GenICam::gcstring GetTLType() const override { return m_facts.type; }
    GenICam::gcstring GetName() const override { return m_facts.name; }
    GenICam::gcstring GetPathName() const override { return m_facts.pathName; }
    GenICam::gcstring GetDisplayName() const override { return m_facts.displayName; }
    int32_t GetGenTLVersionMajor() const override { return m_facts.versionMajor; }
    int32_t GetGenTLVersionMinor() const override { return m_facts.versionMinor; }

private:
    using Present = std::vector<CTransportInterface*>;

    /// What the producer tells of itself. Asked once: it may be slow to answer in the midst of a search.
    struct CFacts
    {
        CFacts(CKxGenTLLib& lib, GenTL::TL_HANDLE handle);

        GenICam::gcstring vendor, model, version, type, name, pathName, displayName;
        int32_t versionMajor, versionMinor;
    };

    Present Search() KXGC_REQUIRES(m_locks.search);
    GenTL::TL_HANDLE Handle() const { return m_handle.get(); }

    struct CClose
    {
        using pointer = GenTL::TL_HANDLE;
        CKxGenTLLib* lib;
        void operator()(GenTL::TL_HANDLE handle) const { lib->TLClose(handle); }
    };

    const std::shared_ptr<CKxGenTLLib> m_lib;
    const std::unique_ptr<void, CClose> m_handle;
    const CFacts m_facts;
    mutable CSystemLocks m_locks;
    /// All ever seen, since users keep pointers to them.
    std::map<std::string, std::unique_ptr<CTransportInterface>> m_known KXGC_GUARDED_BY(m_locks.search);
    Present m_present KXGC_GUARDED_BY(m_locks.lists);
    std::unique_ptr<CModulePort> m_port;
};

} // namespace Detail
} // namespace KxApi
