// SPDX-License-Identifier: Apache-2.0
// A stream that is open.
#pragma once

#include "CChunkView.h"
#include "CStreamHandle.h"

#include <KxApi_TL/IKxStream.h>
#include <KxSDKCommon/KxMutex.h>

#include <memory>

namespace GenApi
{
class CEventAdapterGeneric;
}

namespace KxApi
{
namespace Detail
{

class CAcquisition;

class CTransportStream final : public IKxStreamReleasable
{
public:
    explicit CTransportStream(std::shared_ptr<CStreamHandle> handle);
    CTransportStream(const CTransportStream&) = delete;
    CTransportStream& operator=(const CTransportStream&) = delete;
    ~CTransportStream();

    IKxDevice* GetIKxDevice() const override { return m_handle->Device().get(); }
    GenICam::gcstring GetID() const override { return m_handle->ID(); }
    IKxPort* GetIKxPort() override { return m_port.get(); }
    void SetBufferCount(uint32_t nCount) override;
    uint32_t GetBufferCount() const override;
    void SetAllocator(IKxAllocator* pAllocator) override;
    size_t GetPayloadSize() const override;
    void StartAcquisition(IKxStreamCallback* pCallback, uint64_t nImages) override;
    void StopAcquisition() override;
    bool IsAcquiring() const override;
    IKxStreamImageReleasable* FetchImage(uint32_t nTimeoutMs) override;
    CKxStreamStatistics GetStatistics() const override;
    void Release() override;

private:
    std::shared_ptr<CAcquisition> Present() const;

    const std::shared_ptr<CStreamHandle> m_handle;
    const std::shared_ptr<CChunkView> m_chunks;
    CKxMutex m_controlMutex;          // held while an acquisition is started; taken first of all
    mutable CKxMutex m_settingsMutex; // nothing is taken while holding it
    uint32_t m_nBufferCount KXGC_GUARDED_BY(m_settingsMutex) = kKxDefaultBufferCount;
    std::shared_ptr<CBufferMemory> m_memory KXGC_GUARDED_BY(m_settingsMutex);
    /// The last one; null before the first.
    std::shared_ptr<CAcquisition> m_acquisition KXGC_GUARDED_BY(m_settingsMutex);
    std::unique_ptr<CModulePort> m_port;
    std::unique_ptr<GenApi::CEventAdapterGeneric> m_events;
    std::unique_ptr<CEventThread> m_eventThread;
};

/// Makes the object of an open stream.
IKxStreamReleasable* OpenTransportStream(const std::shared_ptr<CTransportDevice>& device,
                                         GenTL::DS_HANDLE hStream, const GenICam::gcstring& id);

} // namespace Detail
} // namespace KxApi
