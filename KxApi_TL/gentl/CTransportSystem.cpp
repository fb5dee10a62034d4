// SPDX-License-Identifier: Apache-2.0

#include "CTransportSystem.h"

#include "CSharedByPath.h"
#include "GenTLInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <KxApi_TL/KxApi_TL.h>

#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr char kOwnVendor[] = "Kestrix";

GenTL::TL_HANDLE OpenSystem(CKxGenTLLib& lib)
{
    GenTL::TL_HANDLE handle = nullptr;
    CheckGenTL(lib, lib.TLOpen(&handle), "TLOpen", lib.GetPath().c_str());
    if (!handle)
        throw RUNTIME_EXCEPTION("TLOpen of '%s' gave no handle", lib.GetPath().c_str());
    return handle;
}

/// The systems that are open. TLOpen of a producer doesn't meet its TLClose.
using COpenSystems = CSharedByPath<CTransportSystem>;

COpenSystems& OpenSystems()
{
    // Never destroyed: static objects of the program may release their systems later than this would go.
    static COpenSystems* const systems = new COpenSystems;
    return *systems;
}

} // namespace

CTransportSystem::CTransportSystem(std::shared_ptr<CKxGenTLLib> lib)
    : m_lib(std::move(lib))
    , m_handle(OpenSystem(*m_lib), CClose{m_lib.get()})
    , m_facts(*m_lib, Handle())
    , m_port(std::make_unique<CModulePort>(*m_lib, [this] { return Handle(); }))
{}

CTransportSystem::~CTransportSystem()
{
    m_known.clear(); // closes the interfaces before the system
    m_port.reset();
}

void CTransportSystem::Hold() { OpenSystems().Of(m_lib->GetPath().c_str()).Hold(); }

void CTransportSystem::Release() { OpenSystems().Of(m_lib->GetPath().c_str()).LetGo(); }

CTransportSystem::CFacts::CFacts(CKxGenTLLib& lib, GenTL::TL_HANDLE handle)
{
    const auto text = [&](GenTL::TL_INFO_CMD command) {
        return GetInfoText([&](auto... arguments) { return lib.TLGetInfo(handle, command, arguments...); });
    };
    const auto number = [&](GenTL::TL_INFO_CMD command, int32_t fallback) {
        return static_cast<int32_t>(GetInfoNumber<uint32_t>(
            [&](auto... arguments) { return lib.TLGetInfo(handle, command, arguments...); },
            static_cast<uint32_t>(fallback)));
    };
    vendor = text(GenTL::TL_INFO_VENDOR);
    model = text(GenTL::TL_INFO_MODEL);
    version = text(GenTL::TL_INFO_VERSION);
    type = text(GenTL::TL_INFO_TLTYPE);
    name = text(GenTL::TL_INFO_NAME);
    pathName = text(GenTL::TL_INFO_PATHNAME);
    displayName = text(GenTL::TL_INFO_DISPLAYNAME);
    versionMajor = number(GenTL::TL_INFO_GENTL_VER_MAJOR, 1);
    versionMinor = number(GenTL::TL_INFO_GENTL_VER_MINOR, lib.GetVersionMinorByFunctions());
}

int32_t CTransportSystem::GetKxSystemVendor() const
{
    return GetVendor() == kOwnVendor ? KxSystemVendor_Kestrix : KxSystemVendor_Other;
}

/// What the producer tells, put beside the list that readers see.
CTransportSystem::Present CTransportSystem::Search()
{
    const char* const path = m_lib->GetPath().c_str();
    GenTL::bool8_t changedByProducer = false;
    CheckGenTL(*m_lib, m_lib->TLUpdateInterfaceList(Handle(), &changedByProducer, kUpdateTimeoutMs),
               "TLUpdateInterfaceList", path);
    uint32_t count = 0;
    CheckGenTL(*m_lib, m_lib->TLGetNumInterfaces(Handle(), &count), "TLGetNumInterfaces", path);
    if (count > kMaxListLength)
        throw RUNTIME_EXCEPTION("Producer '%s' tells of %u interfaces; Max = %u", path, count,
                                kMaxListLength);
    Present present;
    for (uint32_t i = 0; i < count; ++i) {
        GenICam::gcstring id;
        const auto read = [&](char* text, size_t* size) {
            return m_lib->TLGetInterfaceID(Handle(), i, text, size);
        };
        CheckGenTL(*m_lib, GetText(read, id), "TLGetInterfaceID", path);
        std::unique_ptr<CTransportInterface>& known = m_known[id.c_str()];
        if (!known)
            known = std::make_unique<CTransportInterface>(*this, *m_lib, Handle(), m_locks, id);
        present.push_back(known.get());
    }
    return present;
}

bool CTransportSystem::UpdateInterfaceList()
{
    return GenICam::GuardBadAlloc([this] {
        const GenICam::AutoLock search(m_locks.search);
        Present present = Search();
        const GenICam::AutoLock lists(m_locks.lists);
        const bool changed = present != m_present;
        m_present = std::move(present);
        return changed;
    });
}

uint32_t CTransportSystem::GetInterfaceCount() const
{
    const GenICam::AutoLock lock(m_locks.lists);
    return static_cast<uint32_t>(m_present.size());
}

IKxInterface* CTransportSystem::GetIKxInterface(uint32_t nIndex) const
{
    const GenICam::AutoLock lock(m_locks.lists);
    KXGC_CHECK_RANGE(rlBelowMax, "nIndex", nIndex, m_present.size());
    return m_present[nIndex];
}

} // namespace Detail

IKxSystemReleasable* CreateIKxSystem(const GenICam::gcstring& strPath)
{
    CheckKxApiInitialized();
    return GenICam::GuardBadAlloc([&] {
        const std::shared_ptr<CKxGenTLLib> lib = CKxGenTLLib::Load(strPath);
        return Detail::OpenSystems().Of(lib->GetPath().c_str()).Take([&] {
            return std::make_unique<Detail::CTransportSystem>(lib);
        });
    });
}

IKxSystemReleasable* HoldIKxSystem(IKxSystem* pSystem)
{
    auto* const pOwn = dynamic_cast<Detail::CTransportSystem*>(pSystem);
    if (pOwn)
        pOwn->Hold();
    return pOwn;
}

} // namespace KxApi
