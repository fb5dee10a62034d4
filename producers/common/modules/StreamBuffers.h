// SPDX-License-Identifier: Apache-2.0
// The buffers of a stream, and where each of them is.
#pragma once

#include "common/gentl/Info.h"
#include "common/modules/EventQueue.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace KxProducer
{

/// A part of what a buffer holds.
struct CPartInfo
{
    GenTL::PARTDATATYPE_ID dataType = GenTL::PART_DATATYPE_2D_IMAGE;
    uint64_t pixelFormat = 0;
    size_t offset = 0, size = 0; // in the buffer, in bytes
    size_t width = 0, height = 0, offsetX = 0, offsetY = 0, xPadding = 0;
    size_t deliveredHeight = 0;
    uint64_t sourceId = 0, regionId = 0, purposeId = 0;
};

/// What is known of an image.
struct CFrameInfo
{
    uint64_t frameId = 0;
    uint64_t timestampNs = 0;
    GenTL::PAYLOADTYPE_INFO_ID payloadType = GenTL::PAYLOAD_TYPE_IMAGE;
    size_t width = 0, height = 0, offsetX = 0, offsetY = 0;
    size_t xPadding = 0, yPadding = 0, imageOffset = 0;
    size_t deliveredHeight = 0;
    uint64_t pixelFormat = 0;
    bool isBigEndian = false;
    size_t dataSize = 0;   // that it takes
    size_t sizeFilled = 0; // that came
    bool isIncomplete = false;
    std::vector<CPartInfo> parts; // of a payload of several
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

/// The lock of its stream's queues guards what changes.
struct CBuffer final : CHandled
{
    uint8_t* base = nullptr;
    size_t size = 0;
    void* user = nullptr;
    std::unique_ptr<uint8_t[]> owned; // memory of ours
    EBufferState state = EBufferState::Idle;
    bool hasNewData = false;
    CFrameInfo frame;
    std::shared_ptr<void> driver; // for whoever fills buffers by itself
};

enum class EBufferHandling
{
    OldestFirst,
    OldestFirstOverwrite,
    NewestOnly
};

/// All buffers of a stream, those that wait to be filled, and those that wait to be fetched. The event of new
/// buffers takes its blocks from here: an event and its buffer are one thing.
class CStreamQueues final : public CEventSource
{
public:
    using BufferPtr = std::shared_ptr<CBuffer>;

    void Add(const BufferPtr& buffer) KXGC_REQUIRES(mutex) { m_buffers.push_back(buffer); }
    void Remove(const BufferPtr& buffer) KXGC_REQUIRES(mutex);
    void Clear() KXGC_REQUIRES(mutex);
    const std::vector<BufferPtr>& All() const KXGC_REQUIRES(mutex) { return m_buffers; }
    size_t CountOf(EBufferState state) const KXGC_REQUIRES(mutex);

    /// Moves a buffer from wherever it is.
    void Put(const BufferPtr& buffer, EBufferState state) KXGC_REQUIRES(mutex);
    /// Moves all that are in one state.
    void Move(EBufferState from, EBufferState to) KXGC_REQUIRES(mutex);
    /// The next to be filled, by the handling of buffers; null when there is none.
    BufferPtr TakeInput() KXGC_REQUIRES(mutex);
    /// Is filled anew before the others.
    void PutFirst(const BufferPtr& buffer) KXGC_REQUIRES(mutex);
    /// A filled buffer, by the handling of buffers.
    void PutFilled(const BufferPtr& buffer) KXGC_REQUIRES(mutex);

    size_t Count() const override KXGC_REQUIRES(mutex) { return m_output.size(); }
    std::string Front() const override KXGC_REQUIRES(mutex);
    void PopFront() override KXGC_REQUIRES(mutex);
    /// What came before anybody asked for events isn't lost.
    bool EndsWithQueue() const override { return false; }

    EBufferHandling handling KXGC_GUARDED_BY(mutex) = EBufferHandling::OldestFirst;

private:
    std::vector<BufferPtr> m_buffers KXGC_GUARDED_BY(mutex); // in the order of their announcement
    std::deque<BufferPtr> m_input KXGC_GUARDED_BY(mutex), m_output KXGC_GUARDED_BY(mutex);
};

} // namespace KxProducer
