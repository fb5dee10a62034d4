// SPDX-License-Identifier: Apache-2.0

#include "CTransportStream.h"

#include "CAcquisition.h"
#include "DeviceEvents.h"
#include "GenTLInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <GenApi/EventAdapterGeneric.h>
#include <GenApi/INodeMap.h>

#include <chrono>
#include <utility>

namespace KxApi
{
namespace Detail
{

int64_t CStreamHandle::Info(GenTL::STREAM_INFO_CMD command, int64_t fallback) const
{
    return GetInfoInteger(
        [&](auto... arguments) { return Lib().DSGetInfo(m_hStream, command, arguments...); }, fallback);
}

CTransportStream::CTransportStream(std::shared_ptr<CStreamHandle> handle)
    : m_handle(std::move(handle))
    , m_chunks(std::make_shared<CChunkView>(m_handle->Device()))
    , m_memory(std::make_shared<CBufferMemory>(nullptr))
{
    CModulePort::CTraits traits;
    traits.onNodeMap = [this](GenApi::INodeMap& map) {
        m_events = std::make_unique<GenApi::CEventAdapterGeneric>(&map);
        m_eventThread =
            m_handle->Device()->TakeEvents(m_handle->Get(), GenTL::EVENT_MODULE, "KxStreamEvents",
                                           [this](const CEvent& event) { DeliverEvent(event, *m_events); });
    };
    m_port = std::make_unique<CModulePort>(
        m_handle->Lib(), [this] { return m_handle->Get(); }, std::move(traits));
}

CTransportStream::~CTransportStream()
{
    m_eventThread.reset();
    m_events.reset();
    m_port.reset();
}

void CTransportStream::SetBufferCount(uint32_t nCount)
{
    KXGC_CHECK_RANGE(rlFromMin, "nCount", nCount, 1);
    KXGC_CHECK_RANGE(rlUpToMax, "nCount", nCount, kKxMaxBufferCount);
    const CKxMutexLock lock(m_settingsMutex);
    m_nBufferCount = nCount;
}

uint32_t CTransportStream::GetBufferCount() const
{
    const CKxMutexLock lock(m_settingsMutex);
    return m_nBufferCount;
}

void CTransportStream::SetAllocator(IKxAllocator* pAllocator)
{
    GenICam::GuardBadAlloc([&] {
        auto memory = std::make_shared<CBufferMemory>(pAllocator);
        const CKxMutexLock lock(m_settingsMutex);
        m_memory.swap(memory); // what it held goes after the lock
    });
}

size_t CTransportStream::GetPayloadSize() const
{
    return PayloadSize(*m_handle, *m_handle->Device()->GetIKxRemotePort()->GetINodeMap());
}

std::shared_ptr<CAcquisition> CTransportStream::Present() const
{
    const CKxMutexLock lock(m_settingsMutex);
    return m_acquisition;
}

void CTransportStream::StartAcquisition(IKxStreamCallback* pCallback, uint64_t nImages)
{
    if (nImages == 0)
        throw INVALID_ARGUMENT_EXCEPTION("nImages = 0: no image to acquire");
    if (m_handle->Device()->GetAccess() == KxDeviceAccess_ReadOnly)
        throw ACCESS_EXCEPTION("Stream '%s' can't be started: its device is open read-only",
                               m_handle->ID().c_str());
    std::shared_ptr<CAcquisition> acquisition; // in the end the one before, which goes after the lock
    const CKxMutexLock control(m_controlMutex);
    if (IsAcquiring())
        throw LOGICAL_ERROR_EXCEPTION("Stream '%s' is acquiring", m_handle->ID().c_str());
    GenICam::GuardBadAlloc([&] {
        CAcquisition::CSettings settings;
        {
            const CKxMutexLock lock(m_settingsMutex);
            settings.nBuffers = m_nBufferCount;
            settings.memory = m_memory;
        }
        settings.chunks = m_chunks;
        settings.pCallback = pCallback;
        settings.nImages = nImages;
        acquisition = std::make_shared<CAcquisition>(m_handle, std::move(settings));
        acquisition->Start();
    });
    const CKxMutexLock lock(m_settingsMutex);
    m_acquisition.swap(acquisition);
}

void CTransportStream::StopAcquisition()
{
    if (const std::shared_ptr<CAcquisition> acquisition = Present())
        acquisition->Stop();
}

bool CTransportStream::IsAcquiring() const
{
    const std::shared_ptr<CAcquisition> acquisition = Present();
    return acquisition && acquisition->IsRunning();
}

IKxStreamImageReleasable* CTransportStream::FetchImage(uint32_t nTimeoutMs)
{
    const std::shared_ptr<CAcquisition> acquisition = Present();
    if (!acquisition)
        throw LOGICAL_ERROR_EXCEPTION("Stream '%s' was not started", m_handle->ID().c_str());
    return acquisition->Fetch(std::chrono::milliseconds(nTimeoutMs));
}

CKxStreamStatistics CTransportStream::GetStatistics() const
{
    const std::shared_ptr<CAcquisition> acquisition = Present();
    return acquisition ? acquisition->Statistics() : CKxStreamStatistics();
}

void CTransportStream::Release()
{
    try {
        StopAcquisition();
    } catch (const GenICam::GenericException&) {
        // There is nobody to do anything about it.
    }
    m_chunks->Close();
    delete this;
}

IKxStreamReleasable* OpenTransportStream(const std::shared_ptr<CTransportDevice>& device,
                                         GenTL::DS_HANDLE hStream, const GenICam::gcstring& id)
{
    std::shared_ptr<CStreamHandle> handle;
    try {
        handle = std::make_shared<CStreamHandle>(device, hStream, id);
    } catch (...) {
        device->Lib()->DSClose(hStream);
        throw;
    }
    return new CTransportStream(std::move(handle));
}

} // namespace Detail
} // namespace KxApi
