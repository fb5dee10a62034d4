// SPDX-License-Identifier: Apache-2.0

#include "Stream.h"

#include "modules/Device.h"

#include <algorithm>
#include <cstring>

namespace KxSim
{
namespace
{

constexpr size_t kMinBuffers = 1;
constexpr size_t kMaxBufferSize = size_t{1} << 40U;

} // namespace

bool CStream::HasEvent(GenTL::EVENT_TYPE type) const
{
    return type == GenTL::EVENT_NEW_BUFFER || type == GenTL::EVENT_ERROR;
}

std::string CStream::BlockOf(const CBuffer& buffer)
{
    const GenTL::EVENT_NEW_BUFFER_DATA data = {buffer.GetHandle(), buffer.user};
    return {reinterpret_cast<const char*>(&data), sizeof data};
}

std::shared_ptr<CEventQueue> CStream::MakeQueue(GenTL::EVENT_TYPE type)
{
    if (type != GenTL::EVENT_NEW_BUFFER)
        return CModule::MakeQueue(type);
    auto queue = std::make_shared<CEventQueue>(type, [self = weak_from_this()](const std::string& block) {
        if (const std::shared_ptr<CStream> stream = self.lock())
            stream->OnTaken(block);
    });
    // What came before anybody asked for events isn't lost.
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const BufferPtr& buffer : m_output)
        queue->Push(BlockOf(*buffer));
    return queue;
}

void CStream::OnTaken(const std::string& block)
{
    GenTL::EVENT_NEW_BUFFER_DATA data{};
    std::memcpy(&data, block.data(), std::min(block.size(), sizeof data));
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto place = std::find_if(m_output.begin(), m_output.end(), [&](const BufferPtr& buffer) {
        return buffer->GetHandle() == data.BufferHandle;
    });
    if (place == m_output.end())
        return;
    (*place)->state = EBufferState::Idle;
    m_output.erase(place);
}

std::shared_ptr<CBuffer> CStream::Find(void* handle) const
{
    std::shared_ptr<CBuffer> buffer = Handles().Get<CBuffer>(handle);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (std::find(m_buffers.begin(), m_buffers.end(), buffer) == m_buffers.end())
        Fail(GenTL::GC_ERR_INVALID_HANDLE, "Buffer %p is none of stream '%s'", handle, m_id.c_str());
    return buffer;
}

std::shared_ptr<CBuffer> CStream::Announce(void* memory, size_t size, void* user)
{
    if (size == 0 || size > kMaxBufferSize)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "A buffer can't have %zu bytes", size);
    auto buffer = std::make_shared<CBuffer>();
    if (!memory)
        buffer->owned = std::make_unique<uint8_t[]>(size);
    buffer->base = memory ? static_cast<uint8_t*>(memory) : buffer->owned.get();
    buffer->size = size;
    buffer->user = user;
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const BufferPtr& other : m_buffers) {
        if (other->base == buffer->base)
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The memory at %p is announced already", memory);
        if ((other->owned == nullptr) != (buffer->owned == nullptr))
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "A stream takes either its own memory or its user's");
    }
    m_buffers.push_back(buffer);
    Handles().Add(buffer);
    return buffer;
}

void CStream::Revoke(const BufferPtr& buffer, void** memory, void** user)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (buffer->state != EBufferState::Idle)
        Fail(GenTL::GC_ERR_BUSY, "The buffer is still queued");
    if (memory)
        *memory = buffer->owned ? nullptr : buffer->base;
    if (user)
        *user = buffer->user;
    m_buffers.erase(std::find(m_buffers.begin(), m_buffers.end(), buffer));
    Handles().Remove(*buffer);
}

void CStream::Queue(const BufferPtr& buffer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (buffer->state != EBufferState::Idle)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The buffer is queued already");
    buffer->state = EBufferState::Input;
    buffer->hasNewData = false;
    buffer->frame = CFrameInfo();
    m_input.push_back(buffer);
}

/// Takes a buffer that is in no queue any more, or in that of the output, into the input or out of all.
void CStream::TakeBack(const BufferPtr& buffer, EBufferState state)
{
    if (buffer->state == EBufferState::Output) {
        if (const auto queue = FindQueue(GenTL::EVENT_NEW_BUFFER))
            queue->Remove(BlockOf(*buffer));
        m_output.erase(std::find(m_output.begin(), m_output.end(), buffer));
    } else if (buffer->state == EBufferState::Input) {
        m_input.erase(std::find(m_input.begin(), m_input.end(), buffer));
    }
    buffer->state = state;
    if (state == EBufferState::Input)
        m_input.push_back(buffer);
}

void CStream::WaitUntilFilled(Lock& lock)
{
    m_filled.wait(lock, [this] { return !m_isFilling; });
}

void CStream::Flush(GenTL::ACQ_QUEUE_TYPE operation)
{
    Lock lock(m_mutex);
    WaitUntilFilled(lock);
    const auto move = [this](EBufferState from, EBufferState to) {
        for (const BufferPtr& buffer : m_buffers) {
            if (buffer->state == from)
                TakeBack(buffer, to);
        }
    };
    switch (operation) {
    case GenTL::ACQ_QUEUE_INPUT_TO_OUTPUT:
        while (!m_input.empty()) {
            const BufferPtr buffer = m_input.front();
            m_input.pop_front();
            PutOut(buffer);
        }
        return;
    case GenTL::ACQ_QUEUE_OUTPUT_DISCARD:
        return move(EBufferState::Output, EBufferState::Idle);
    case GenTL::ACQ_QUEUE_ALL_TO_INPUT:
        move(EBufferState::Output, EBufferState::Input);
        [[fallthrough]];
    case GenTL::ACQ_QUEUE_UNQUEUED_TO_INPUT:
        return move(EBufferState::Idle, EBufferState::Input);
    case GenTL::ACQ_QUEUE_ALL_DISCARD:
        move(EBufferState::Output, EBufferState::Idle);
        return move(EBufferState::Input, EBufferState::Idle);
    default:
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "There is no way %d to flush", operation);
    }
}

void* CStream::GetBuffer(uint32_t index) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (index >= m_buffers.size())
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There are %zu buffers, none with index %u", m_buffers.size(),
             index);
    return m_buffers[index]->GetHandle();
}

void CStream::Start(uint64_t count)
{
    if (count == 0)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "An acquisition of 0 images makes no sense");
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_isStarted)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The acquisition is started already");
    if (m_buffers.size() < kMinBuffers)
        Fail(GenTL::GC_ERR_INVALID_BUFFER, "%zu buffers are announced, %zu are needed", m_buffers.size(),
             kMinBuffers);
    m_isStarted = m_isGrabbing = true;
    m_left = count;
    m_delivered = m_underruns = 0;
}

void CStream::Stop()
{
    Lock lock(m_mutex);
    if (!m_isStarted)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The acquisition isn't started");
    m_isStarted = m_isGrabbing = false;
    WaitUntilFilled(lock);
}

CStream::BufferPtr CStream::TakeInput()
{
    if (m_input.empty() && m_handling != EBufferHandling::OldestFirst && !m_output.empty())
        TakeBack(m_output.front(), EBufferState::Input);
    if (m_input.empty())
        return nullptr;
    BufferPtr buffer = m_input.front();
    m_input.pop_front();
    buffer->state = EBufferState::Filling;
    return buffer;
}

void CStream::PutOut(const BufferPtr& buffer)
{
    if (m_handling == EBufferHandling::NewestOnly) {
        while (!m_output.empty())
            TakeBack(m_output.front(), EBufferState::Input);
    }
    buffer->state = EBufferState::Output;
    m_output.push_back(buffer);
    Fire(GenTL::EVENT_NEW_BUFFER, BlockOf(*buffer));
}

void CStream::Deliver(CFrameInfo info, const std::function<void(uint8_t*, size_t)>& fill)
{
    BufferPtr buffer;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_isGrabbing)
            return;
        ++m_started;
        buffer = TakeInput();
        if (!buffer) {
            ++m_underruns;
            return;
        }
        m_isFilling = true;
    }
    // Of an incomplete image the upper half comes; of one that is too large, what there is room for.
    info.sizeFilled = std::min(buffer->size, info.isIncomplete ? info.dataSize / 2 : info.dataSize);
    if (info.sizeFilled < info.dataSize) {
        info.isIncomplete = true;
        info.deliveredHeight = info.height * info.sizeFilled / info.dataSize;
        info.chunks.clear();
        info.chunkSize = 0;
    }
    fill(buffer->base, info.sizeFilled);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        buffer->frame = std::move(info);
        buffer->hasNewData = true;
        m_isFilling = false;
        ++m_delivered;
        if (m_left != GENTL_INFINITE && --m_left == 0)
            m_isGrabbing = false;
        PutOut(buffer);
    }
    m_filled.notify_all();
}

size_t CStream::Count(EBufferState state) const
{
    return static_cast<size_t>(
        std::count_if(m_buffers.begin(), m_buffers.end(),
                      [state](const BufferPtr& buffer) { return buffer->state == state; }));
}

CInfo CStream::GetInfo(GenTL::STREAM_INFO_CMD command)
{
    if (command == GenTL::STREAM_INFO_PAYLOAD_SIZE)
        return SizeInfo(m_device->PayloadSize());
    const std::lock_guard<std::mutex> lock(m_mutex);
    switch (command) {
    case GenTL::STREAM_INFO_ID:
        return TextInfo(m_id);
    case GenTL::STREAM_INFO_NUM_DELIVERED:
        return UInt64Info(m_delivered);
    case GenTL::STREAM_INFO_NUM_UNDERRUN:
        return UInt64Info(m_underruns);
    case GenTL::STREAM_INFO_NUM_ANNOUNCED:
        return SizeInfo(m_buffers.size());
    case GenTL::STREAM_INFO_NUM_QUEUED:
        return SizeInfo(Count(EBufferState::Input) + Count(EBufferState::Filling));
    case GenTL::STREAM_INFO_NUM_AWAIT_DELIVERY:
        return SizeInfo(Count(EBufferState::Output));
    case GenTL::STREAM_INFO_NUM_STARTED:
        return UInt64Info(m_started);
    case GenTL::STREAM_INFO_IS_GRABBING:
        return BoolInfo(m_isGrabbing);
    case GenTL::STREAM_INFO_DEFINES_PAYLOADSIZE:
        return BoolInfo(m_device->DefinesPayloadSize());
    case GenTL::STREAM_INFO_TLTYPE:
        return TextInfo(m_device->TlType());
    case GenTL::STREAM_INFO_NUM_CHUNKS_MAX:
        return SizeInfo(m_device->MaxChunks());
    case GenTL::STREAM_INFO_BUF_ANNOUNCE_MIN:
        return SizeInfo(kMinBuffers);
    case GenTL::STREAM_INFO_BUF_ALIGNMENT:
        return SizeInfo(1);
    case GenTL::STREAM_INFO_FLOW_TABLE:
    case GenTL::STREAM_INFO_GENDC_PREFETCH_DESCRIPTOR:
        Fail(GenTL::GC_ERR_NO_DATA, "There are no flows");
    default:
        FailUnknownInfo(command);
    }
}

CInfo CStream::GetBufferInfo(CBuffer& buffer, GenTL::BUFFER_INFO_CMD command)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const CFrameInfo& frame = buffer.frame;
    switch (command) {
    case GenTL::BUFFER_INFO_BASE:
        return PointerInfo(buffer.base);
    case GenTL::BUFFER_INFO_SIZE:
        return SizeInfo(buffer.size);
    case GenTL::BUFFER_INFO_USER_PTR:
        return PointerInfo(buffer.user);
    case GenTL::BUFFER_INFO_TIMESTAMP:
    case GenTL::BUFFER_INFO_TIMESTAMP_NS:
        return UInt64Info(frame.timestampNs);
    case GenTL::BUFFER_INFO_NEW_DATA:
        return BoolInfo(buffer.hasNewData);
    case GenTL::BUFFER_INFO_IS_QUEUED:
        return BoolInfo(buffer.state != EBufferState::Idle);
    case GenTL::BUFFER_INFO_IS_ACQUIRING:
        return BoolInfo(buffer.state == EBufferState::Filling);
    case GenTL::BUFFER_INFO_IS_INCOMPLETE:
        return BoolInfo(frame.isIncomplete);
    case GenTL::BUFFER_INFO_TLTYPE:
        return TextInfo(m_device->TlType());
    case GenTL::BUFFER_INFO_SIZE_FILLED:
        return SizeInfo(frame.sizeFilled);
    case GenTL::BUFFER_INFO_DATA_SIZE:
        return SizeInfo(frame.dataSize);
    case GenTL::BUFFER_INFO_WIDTH:
        return SizeInfo(frame.width);
    case GenTL::BUFFER_INFO_HEIGHT:
        return SizeInfo(frame.height);
    case GenTL::BUFFER_INFO_XOFFSET:
        return SizeInfo(frame.offsetX);
    case GenTL::BUFFER_INFO_YOFFSET:
        return SizeInfo(frame.offsetY);
    case GenTL::BUFFER_INFO_XPADDING:
    case GenTL::BUFFER_INFO_YPADDING:
    case GenTL::BUFFER_INFO_IMAGEOFFSET:
        return SizeInfo(0);
    case GenTL::BUFFER_INFO_FRAMEID:
        return UInt64Info(frame.frameId);
    case GenTL::BUFFER_INFO_IMAGEPRESENT:
        return BoolInfo(buffer.hasNewData);
    case GenTL::BUFFER_INFO_PAYLOADTYPE:
        return SizeInfo(GenTL::PAYLOAD_TYPE_IMAGE);
    case GenTL::BUFFER_INFO_PIXELFORMAT:
        return UInt64Info(frame.pixelFormat);
    case GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE:
        return UInt64Info(GenTL::PIXELFORMAT_NAMESPACE_PFNC_32BIT);
    case GenTL::BUFFER_INFO_DELIVERED_IMAGEHEIGHT:
        return SizeInfo(frame.deliveredHeight);
    case GenTL::BUFFER_INFO_DELIVERED_CHUNKPAYLOADSIZE:
        return SizeInfo(frame.chunkSize);
    case GenTL::BUFFER_INFO_CHUNKLAYOUTID:
        return UInt64Info(frame.chunkLayout);
    case GenTL::BUFFER_INFO_PIXEL_ENDIANNESS:
        return Int32Info(GenTL::PIXELENDIANNESS_LITTLE);
    case GenTL::BUFFER_INFO_DATA_LARGER_THAN_BUFFER:
        return BoolInfo(frame.dataSize > buffer.size);
    case GenTL::BUFFER_INFO_CONTAINS_CHUNKDATA:
        return BoolInfo(!frame.chunks.empty());
    case GenTL::BUFFER_INFO_IS_COMPOSITE:
        return BoolInfo(false);
    case GenTL::BUFFER_INFO_FILENAME:
        Fail(GenTL::GC_ERR_NO_DATA, "The buffer holds no file");
    default:
        FailUnknownInfo(command);
    }
}

std::vector<GenTL::SINGLE_CHUNK_DATA> CStream::GetChunks(CBuffer& buffer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (buffer.frame.chunks.empty())
        Fail(GenTL::GC_ERR_NO_DATA, "The buffer holds no chunks");
    return buffer.frame.chunks;
}

void CStream::Close()
{
    m_device->Detach(*this);
    CModule::Close(); // events end here: nobody waits for what isn't coming
    Lock lock(m_mutex);
    m_isStarted = m_isGrabbing = false;
    WaitUntilFilled(lock);
    for (const BufferPtr& buffer : m_buffers)
        Handles().Remove(*buffer);
    m_input.clear();
    m_output.clear();
    m_buffers.clear();
}

} // namespace KxSim
