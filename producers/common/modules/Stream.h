// SPDX-License-Identifier: Apache-2.0
// A data stream and its buffers. Where images come from, a derived class knows.
#pragma once

#include "common/modules/FeaturePort.h"
#include "common/modules/Module.h"
#include "common/modules/StreamBuffers.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace KxProducer
{

/// All functions may be called from any thread, without a lock held.
///
/// Where images come from calls Deliver, or, to fill buffers by itself: Take as many as it likes while the
/// stream grabs, then Complete or Return each. It hears by OnStart, OnStop, OnInput and Recall what consumers
/// do; these run in the consumer's threads, without a lock of the stream held.
class CStream : public CModule
{
public:
    using BufferPtr = std::shared_ptr<CBuffer>;

    CStream(std::string id, CPortFacts facts);

    CPort* GetPort() override { return &m_port; }
    void Close() override;
    const std::string& Id() const { return m_id; }

    /// Announces memory of the caller's, or of ours where it gives none.
    BufferPtr Announce(void* memory, size_t size, void* user);
    void Revoke(const BufferPtr& buffer, void** memory, void** user);
    void Queue(const BufferPtr& buffer);
    void Flush(GenTL::ACQ_QUEUE_TYPE operation);
    void* GetBuffer(uint32_t index) const;
    void Start(uint64_t count);
    void Stop();
    CInfo GetInfo(GenTL::STREAM_INFO_CMD command);
    CInfo GetBufferInfo(const CBuffer& buffer, GenTL::BUFFER_INFO_CMD command);
    CInfo GetPartInfo(const CBuffer& buffer, uint32_t index, GenTL::BUFFER_PART_INFO_CMD command);
    uint32_t GetPartCount(const CBuffer& buffer) const;
    std::vector<GenTL::SINGLE_CHUNK_DATA> GetChunks(const CBuffer& buffer) const;
    /// Throws if the buffer is none of this stream's.
    BufferPtr Find(void* handle) const;

    virtual void* GetParentHandle() const = 0;

    // For where images come from.
    // ---------------------------------------------------------------------------------------------------
    /// An image that `fill` writes: as many bytes as it is told, of one part or of all. Counts as lost when
    /// no buffer is free.
    void Deliver(CFrameInfo info, const std::function<void(uint8_t*, size_t)>& fill);
    /// The next buffer to be filled; null when there is none or the stream doesn't grab.
    BufferPtr Take();
    /// A buffer that was taken holds what the info says.
    void Complete(const BufferPtr& buffer, CFrameInfo info);
    /// A buffer that was taken waits to be filled again, before the others.
    void Return(const BufferPtr& buffer);
    /// An image had no buffer.
    void CountLost();
    bool IsGrabbing() const;

protected:
    /// Describes the stream's features; once, by the constructor of the derived class.
    void DescribePort(const CDescriptionHead& head, const char* type);

    virtual const char* TlType() const = 0;
    virtual size_t PayloadSize() = 0;
    /// Whether consumers take PayloadSize from the stream and not from the camera.
    virtual bool DefinesPayloadSize() const = 0;
    virtual size_t MaxChunks() const { return 0; }
    virtual size_t MinBuffers() const { return 1; }
    virtual void OnStart() {}
    /// Images are no longer wanted. Buffers that are being filled are waited for afterwards.
    virtual void OnStop() {}
    /// A buffer waits to be filled while the stream grabs.
    virtual void OnInput() {}
    /// Buffers that are being filled are waited for: those that would take long are to be given back.
    virtual void Recall() {}

    bool HasEvent(GenTL::EVENT_TYPE type) const override;
    std::shared_ptr<CEventSource> SourceOf(GenTL::EVENT_TYPE type) override;

private:
    bool FlushQueues(GenTL::ACQ_QUEUE_TYPE operation);
    void WaitUntilFilled(KxApi::CKxMutexLock& lock) KXGC_REQUIRES(m_queues->mutex);

    const std::string m_id;
    CFeaturePort m_port;
    const std::shared_ptr<CStreamQueues> m_queues; // its mutex guards the rest
    std::condition_variable m_filled;
    bool m_isGrabbing KXGC_GUARDED_BY(m_queues->mutex) = false;
    // From start to stop, also when the number of images is reached.
    bool m_isStarted KXGC_GUARDED_BY(m_queues->mutex) = false;
    uint64_t m_left KXGC_GUARDED_BY(m_queues->mutex) = 0;
    uint64_t m_delivered KXGC_GUARDED_BY(m_queues->mutex) = 0;
    uint64_t m_underruns KXGC_GUARDED_BY(m_queues->mutex) = 0;
    uint64_t m_begun KXGC_GUARDED_BY(m_queues->mutex) = 0;
};

} // namespace KxProducer
