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
    void Release() override;

    GenICam::gcstring GetVendor() const override { return Text(GenTL::TL_INFO_VENDOR); }
    GenICam::gcstring GetModel() const override { return Text(GenTL::TL_INFO_MODEL); }
    GenICam::gcstring GetVersion() const override { return Text(GenTL::TL_INFO_VERSION); }
    GenICam::gcstring GetTLType() const override { return Text(GenTL::TL_INFO_TLTYPE); }
    GenICam::gcstring GetName() const override { return Text(GenTL::TL_INFO_NAME); }
    GenICam::gcstring GetPathName() const override { return Text(GenTL::TL_INFO_PATHNAME); }
    GenICam::gcstring GetDisplayName() const override { return Text(GenTL::TL_INFO_DISPLAYNAME); }
    int32_t GetGenTLVersionMajor() const override;
    int32_t GetGenTLVersionMinor() const override;

private:
    GenICam::gcstring Text(GenTL::TL_INFO_CMD command) const;
    int32_t Version(GenTL::TL_INFO_CMD command, int32_t fallback) const;
    GenTL::TL_HANDLE Handle() const { return m_handle.get(); }

    struct CClose
    {
        using pointer = GenTL::TL_HANDLE;
        CKxGenTLLib* lib;
        void operator()(GenTL::TL_HANDLE handle) const { lib->TLClose(handle); }
    };

    const std::shared_ptr<CKxGenTLLib> m_lib;
    const std::unique_ptr<void, CClose> m_handle;
    mutable GenICam::CLock m_lock; // guards the lists, and the producer's functions for lists
    std::map<std::string, std::unique_ptr<CTransportInterface>> m_known; // all ever seen
    std::vector<CTransportInterface*> m_present;
    std::unique_ptr<CModulePort> m_port;
};

} // namespace Detail
} // namespace KxApi
