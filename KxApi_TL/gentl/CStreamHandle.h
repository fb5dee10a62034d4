// SPDX-License-Identifier: Apache-2.0
// A stream of the producer's.
#pragma once

#include "CStreamBuffer.h"
#include "CTransportDevice.h"

#include <KxSDKCommon/KxMutex.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// The producer's stream, with the device it belongs to. Closes it when the last holder lets go.
class CStreamHandle
{
public:
    CStreamHandle(std::shared_ptr<CTransportDevice> device, GenTL::DS_HANDLE hStream, GenICam::gcstring id)
        : m_device(std::move(device))
        , m_hStream(hStream)
        , m_id(std::move(id))
    {}
    CStreamHandle(const CStreamHandle&) = delete;
    CStreamHandle& operator=(const CStreamHandle&) = delete;
    ~CStreamHandle() { Lib().DSClose(m_hStream); }

    const std::shared_ptr<CTransportDevice>& Device() const { return m_device; }
    CKxGenTLLib& Lib() const { return *m_device->Lib(); }
    GenTL::DS_HANDLE Get() const { return m_hStream; }
    const GenICam::gcstring& ID() const { return m_id; }

    /// An info of the stream's, `fallback` when the producer doesn't have it.
    int64_t Info(GenTL::STREAM_INFO_CMD command, int64_t fallback) const;

    /// Keeps a buffer that the producer doesn't give back until the stream is closed. One in the producer's
    /// own memory has nothing to keep, and keeps the stream itself.
    void Keep(std::shared_ptr<CStreamBuffer> buffer)
    {
        if (buffer->IsProducers())
            return;
        const CKxMutexLock lock(m_keptMutex);
        m_kept.push_back(std::move(buffer));
    }

private:
    // Destroyed after the stream is closed, in the reverse order.
    const std::shared_ptr<CTransportDevice> m_device;
    CKxMutex m_keptMutex;
    std::vector<std::shared_ptr<CStreamBuffer>> m_kept KXGC_GUARDED_BY(m_keptMutex);
    const GenTL::DS_HANDLE m_hStream;
    const GenICam::gcstring m_id;
};

} // namespace Detail
} // namespace KxApi
