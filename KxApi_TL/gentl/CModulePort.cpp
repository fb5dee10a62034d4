// SPDX-License-Identifier: Apache-2.0

#include "CModulePort.h"

#include "GenTLInfo.h"
#include "PortUrls.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <GenApi/INodeMap.h>

namespace KxApi
{
namespace Detail
{

GenTL::PORT_HANDLE CModulePort::Handle()
{
    GenTL::PORT_HANDLE handle = m_handle;
    if (!handle) {
        handle = m_open();
        m_handle = handle;
    }
    return handle;
}

GenApi::INodeMap* CModulePort::GetINodeMap()
{
    // Callbacks of nodes come here too, with the map's lock held: they must not wait for the making of a map.
    if (GenApi::INodeMap* const map = m_map)
        return map;
    return GenICam::GuardBadAlloc([this]() -> GenApi::INodeMap* {
        const CKxMutexLock lock(m_mutex);
        if (!m_file) {
            const GenTL::PORT_HANDLE handle = Handle();
            GenICam::gcstring name = GetInfoText([&](auto... arguments) {
                return m_lib.GCGetPortInfo(handle, GenTL::PORT_INFO_PORTNAME, arguments...);
            });
            if (name.empty())
                name = m_traits.nameIfUntold;
            auto file = std::make_unique<CKxXMLFile>(&m_lib, handle, GetAccessMode(), "Device");
            LoadDescription(*file, ReadPortUrls(m_lib, handle), this, name);
            m_file = std::move(file);
            m_map = m_file->GetNodeMap();
            if (m_traits.onNodeMap)
                m_traits.onNodeMap(*m_map);
        }
        return m_map;
    });
}

GenICam::gcstring CModulePort::GetDescriptionName()
{
    GetINodeMap();
    const CKxMutexLock lock(m_mutex);
    return m_file->GetXMLFileName();
}

void CModulePort::SaveDescription(const GenICam::gcstring& strFileName)
{
    GetINodeMap();
    const CKxMutexLock lock(m_mutex);
    m_file->SaveToFile(strFileName);
}

void CModulePort::Invalidate()
{
    if (GenApi::INodeMap* const map = m_map)
        map->InvalidateNodes();
}

bool CModulePort::IsAllowed(GenTL::PORT_INFO_CMD command) const
{
    // A producer that doesn't tell lets its registers decide.
    return GetInfoNumber<uint8_t>(
               [&](auto... arguments) { return m_lib.GCGetPortInfo(m_handle, command, arguments...); }, 1) !=
           0;
}

GenApi::EAccessMode CModulePort::GetAccessMode() const
{
    if (!m_handle)
        return GenApi::RW; // the module isn't asked before it is open
    const bool canRead = IsAllowed(GenTL::PORT_INFO_ACCESS_READ);
    const bool canWrite = !m_traits.isReadOnly && IsAllowed(GenTL::PORT_INFO_ACCESS_WRITE);
    if (canRead)
        return canWrite ? GenApi::RW : GenApi::RO;
    return canWrite ? GenApi::WO : GenApi::NA;
}

void CModulePort::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    size_t size = static_cast<size_t>(Length);
    const GenTL::GC_ERROR error = m_lib.GCReadPort(Handle(), static_cast<uint64_t>(Address), pBuffer, &size);
    if (error != GenTL::GC_ERR_SUCCESS)
        throw KX_GENTL_ERROR_EXCEPTION(&m_lib, static_cast<GenTL::GC_ERROR_LIST>(error), "GCReadPort",
                                       "%d = GCReadPort of %lld bytes at 0x%llx", error,
                                       static_cast<long long>(Length),
                                       static_cast<unsigned long long>(Address));
    if (size != static_cast<size_t>(Length))
        throw RUNTIME_EXCEPTION("GCReadPort gave %zu bytes of %lld at 0x%llx", size,
                                static_cast<long long>(Length), static_cast<unsigned long long>(Address));
}

void CModulePort::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    if (m_traits.isReadOnly)
        throw ACCESS_EXCEPTION("Write of %lld bytes at 0x%llx: the device is open read-only",
                               static_cast<long long>(Length), static_cast<unsigned long long>(Address));
    size_t size = static_cast<size_t>(Length);
    const GenTL::GC_ERROR error = m_lib.GCWritePort(Handle(), static_cast<uint64_t>(Address), pBuffer, &size);
    if (error != GenTL::GC_ERR_SUCCESS)
        throw KX_GENTL_ERROR_EXCEPTION(&m_lib, static_cast<GenTL::GC_ERROR_LIST>(error), "GCWritePort",
                                       "%d = GCWritePort of %lld bytes at 0x%llx", error,
                                       static_cast<long long>(Length),
                                       static_cast<unsigned long long>(Address));
    if (size != static_cast<size_t>(Length))
        throw RUNTIME_EXCEPTION("GCWritePort took %zu bytes of %lld at 0x%llx", size,
                                static_cast<long long>(Length), static_cast<unsigned long long>(Address));
}

} // namespace Detail
} // namespace KxApi
