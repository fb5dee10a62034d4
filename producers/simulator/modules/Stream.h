// SPDX-License-Identifier: Apache-2.0
// The data stream of a device, and its buffers.
#pragma once

#include "modules/Module.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace KxSim
{

class CDevice;

/// What is known of an image.
struct CFrameInfo
{
    uint64_t frameId = 0;
    uint64_t timestampNs = 0;
    size_t width = 0, height = 0, offsetX = 0, offsetY = 0;
    size_t deliveredHeight = 0;
    uint64_t pixelFormat = 0;
    size_t dataSize = 0;   // that it takes
    size_t sizeFilled = 0; // that came
    bool isIncomplete = false;
    std::vector<GenTL::SINGLE_CHUNK_DATA> chunks;
    size_t chunkSize = 0;
    uint64_t chunkLayout = 0;
};

enum class EBufferState
{
    Idle,
    Input,
    Filling,
    Output
};

struct CBuffer final : CHandled
{
    uint8_t* base = nullptr;
    size_t size = 0;
    void* user = nullptr;
    std::unique_ptr<uint8_t[]> owned; // memory of ours
    EBufferState state = EBufferState::Idle;
    bool hasNewData = false;
    CFrameInfo frame;
};

enum class EBufferHandling
{
    OldestFirst,
    OldestFirstOverwrite,
    NewestOnly
};

/// All functions may be called from any thread.
class CStream final : public CModule, public std::enable_shared_from_this<CStream>
{
public:
    CStream(std::shared_ptr<CDevice> device, std::string id);

    CPort* GetPort() override { return &m_port; }
    void Close() override;
    CDevice& Device() const { return *m_device; }
    const std::string& Id() const { return m_id; }

    /// Announces memory of the caller's, or of ours where it gives none.
    std::shared_ptr<CBuffer> Announce(void* memory, size_t size, void* user);
    void Revoke(const std::shared_ptr<CBuffer>& buffer, void** memory, void** user);
    void Queue(const std::shared_ptr<CBuffer>& buffer);
    void Flush(GenTL::ACQ_QUEUE_TYPE operation);
    void* GetBuffer(uint32_t index) const;
    void Start(uint64_t count);
    void Stop();
    CInfo GetInfo(GenTL::STREAM_INFO_CMD command);
    CInfo GetBufferInfo(CBuffer& buffer, GenTL::BUFFER_INFO_CMD command);
    std::vector<GenTL::SINGLE_CHUNK_DATA> GetChunks(CBuffer& buffer);
    /// Throws if the buffer is none of this stream's.
    std::shared_ptr<CBuffer> Find(void* handle) const;

    /// An image of the camera's: `fill` writes as many bytes of it as it is told.
    void Deliver(CFrameInfo info, const std::function<void(uint8_t*, size_t)>& fill);

protected:
    bool HasEvent(GenTL::EVENT_TYPE type) const override;
    std::shared_ptr<CEventQueue> MakeQueue(GenTL::EVENT_TYPE type) override;

private:
    using BufferPtr = std::shared_ptr<CBuffer>;
    using Lock = std::unique_lock<std::mutex>;

    void DescribePort();
    void OnTaken(const std::string& block);
    BufferPtr TakeInput();
    void PutOut(const BufferPtr& buffer);
    void TakeBack(const BufferPtr& buffer, EBufferState state);
    void WaitUntilFilled(Lock& lock);
    static std::string BlockOf(const CBuffer& buffer);
    size_t Count(EBufferState state) const;

    const std::shared_ptr<CDevice> m_device;
    const std::string m_id;
    CPort m_port;

    mutable std::mutex m_mutex; // of all below; that of an event queue may be taken inside it
    std::condition_variable m_filled;
    std::vector<BufferPtr> m_buffers; // in the order of their announcement
    std::deque<BufferPtr> m_input, m_output;
    bool m_isGrabbing = false;
    bool m_isStarted = false; // from start to stop, also when the number of images is reached
    bool m_isFilling = false;
    EBufferHandling m_handling = EBufferHandling::OldestFirst;
    uint64_t m_left = 0;
    uint64_t m_delivered = 0, m_underruns = 0, m_started = 0;
};

} // namespace KxSim
