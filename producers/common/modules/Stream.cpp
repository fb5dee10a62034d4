// SPDX-License-Identifier: Apache-2.0

#include "Stream.h"

#include <algorithm>

namespace KxProducer
{
namespace
{

using KxApi::CKxMutexLock;

constexpr size_t kMaxBufferSize = size_t{1} << 40U;

} // namespace

CStream::CStream(std::string id, CPortFacts facts)
    : m_id(std::move(id))
    , m_port(std::move(facts), EByteOrder::Little)
    , m_queues(std::make_shared<CStreamQueues>())
{}

bool CStream::HasEvent(GenTL::EVENT_TYPE type) const
{
    return type == GenTL::EVENT_NEW_BUFFER || type == GenTL::EVENT_ERROR;
}

std::shared_ptr<CEventSource> CStream::SourceOf(GenTL::EVENT_TYPE type)
{
    if (type == GenTL::EVENT_NEW_BUFFER)
        return m_queues;
    return CModule::SourceOf(type);
}

CStream::BufferPtr CStream::Find(void* handle) const
{
    BufferPtr buffer = Handles().Get<CBuffer>(handle);
    const CKxMutexLock lock(m_queues->mutex);
    const std::vector<BufferPtr>& all = m_queues->All();
    if (std::find(all.begin(), all.end(), buffer) == all.end())
        Fail(GenTL::GC_ERR_INVALID_HANDLE, "Buffer %p is none of stream '%s'", handle, m_id.c_str());
    return buffer;
}

CStream::BufferPtr CStream::Announce(void* memory, size_t size, void* user)
{
    if (size == 0 || size > kMaxBufferSize)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "A buffer can't have %zu bytes", size);
    auto buffer = std::make_shared<CBuffer>();
    if (!memory)
        buffer->owned = std::make_unique<uint8_t[]>(size);
    buffer->base = memory ? static_cast<uint8_t*>(memory) : buffer->owned.get();
    buffer->size = size;
    buffer->user = user;
    const CKxMutexLock lock(m_queues->mutex);
    for (const BufferPtr& other : m_queues->All()) {
        if (other->base == buffer->base)
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The memory at %p is announced already", memory);
        if ((other->owned == nullptr) != (buffer->owned == nullptr))
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "A stream takes either its own memory or its user's");
    }
    m_queues->Add(buffer);
    Handles().Add(buffer);
    return buffer;
}

void CStream::Revoke(const BufferPtr& buffer, void** memory, void** user)
{
    const CKxMutexLock lock(m_queues->mutex);
    if (buffer->state != EBufferState::Idle)
        Fail(GenTL::GC_ERR_BUSY, "The buffer is still queued");
    if (memory)
        *memory = buffer->owned ? nullptr : buffer->base;
    if (user)
        *user = buffer->user;
    m_queues->Remove(buffer);
    Handles().Remove(*buffer);
}

void CStream::Queue(const BufferPtr& buffer)
{
    bool isGrabbing = false;
    {
        const CKxMutexLock lock(m_queues->mutex);
        if (buffer->state != EBufferState::Idle)
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The buffer is queued already");
        buffer->hasNewData = false;
        buffer->frame = CFrameInfo();
        m_queues->Put(buffer, EBufferState::Input);
        isGrabbing = m_isGrabbing;
    }
    if (isGrabbing)
        OnInput();
}

void CStream::WaitUntilFilled(CKxMutexLock& lock)
{
    while (m_queues->CountOf(EBufferState::Filling) > 0)
        lock.Wait(m_filled);
}

void CStream::Flush(GenTL::ACQ_QUEUE_TYPE operation)
{
    Recall();
    if (FlushQueues(operation))
        OnInput();
}

/// True when buffers wait for images that come.
bool CStream::FlushQueues(GenTL::ACQ_QUEUE_TYPE operation)
{
    CKxMutexLock lock(m_queues->mutex);
    WaitUntilFilled(lock);
    switch (operation) {
    case GenTL::ACQ_QUEUE_INPUT_TO_OUTPUT:
        m_queues->Move(EBufferState::Input, EBufferState::Output);
        break;
    case GenTL::ACQ_QUEUE_OUTPUT_DISCARD:
        m_queues->Move(EBufferState::Output, EBufferState::Idle);
        break;
    case GenTL::ACQ_QUEUE_ALL_TO_INPUT:
        m_queues->Move(EBufferState::Output, EBufferState::Input);
        [[fallthrough]];
    case GenTL::ACQ_QUEUE_UNQUEUED_TO_INPUT:
        m_queues->Move(EBufferState::Idle, EBufferState::Input);
        break;
    case GenTL::ACQ_QUEUE_ALL_DISCARD:
        m_queues->Move(EBufferState::Output, EBufferState::Idle);
        m_queues->Move(EBufferState::Input, EBufferState::Idle);
        break;
    default:
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "There is no way %d to flush", operation);
    }
    return m_isGrabbing && m_queues->CountOf(EBufferState::Input) > 0;
}

void* CStream::GetBuffer(uint32_t index) const
{
    const CKxMutexLock lock(m_queues->mutex);
    const std::vector<BufferPtr>& all = m_queues->All();
    if (index >= all.size())
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There are %zu buffers, none with index %u", all.size(), index);
    return all[index]->GetHandle();
}

void CStream::Start(uint64_t count)
{
    if (count == 0)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "An acquisition of 0 images makes no sense");
    {
        const CKxMutexLock lock(m_queues->mutex);
        if (m_isStarted)
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The acquisition is started already");
        if (m_queues->All().size() < MinBuffers())
            Fail(GenTL::GC_ERR_INVALID_BUFFER, "%zu buffers are announced, %zu are needed",
                 m_queues->All().size(), MinBuffers());
        m_isStarted = m_isGrabbing = true;
        m_left = count;
        m_delivered = m_underruns = 0;
    }
    try {
        OnStart();
        OnInput();
    } catch (...) {
        const CKxMutexLock lock(m_queues->mutex);
        m_isStarted = m_isGrabbing = false;
        throw;
    }
}

void CStream::Stop()
{
    {
        const CKxMutexLock lock(m_queues->mutex);
        if (!m_isStarted)
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The acquisition isn't started");
        m_isStarted = m_isGrabbing = false;
    }
    OnStop();
    Recall();
    CKxMutexLock lock(m_queues->mutex);
    WaitUntilFilled(lock);
}

bool CStream::IsGrabbing() const
{
    const CKxMutexLock lock(m_queues->mutex);
    return m_isGrabbing;
}

CStream::BufferPtr CStream::Take()
{
    const CKxMutexLock lock(m_queues->mutex);
    return m_isGrabbing ? m_queues->TakeInput() : nullptr;
}

void CStream::Complete(const BufferPtr& buffer, CFrameInfo info)
{
    {
        const CKxMutexLock lock(m_queues->mutex);
        if (m_left == 0) {
            m_queues->PutFirst(buffer); // more than were wanted
        } else {
            buffer->frame = std::move(info);
            buffer->hasNewData = true;
            ++m_begun;
            ++m_delivered;
            if (m_left != GENTL_INFINITE && --m_left == 0)
                m_isGrabbing = false;
            m_queues->PutFilled(buffer);
        }
    }
    m_filled.notify_all();
}

void CStream::Return(const BufferPtr& buffer)
{
    {
        const CKxMutexLock lock(m_queues->mutex);
        m_queues->PutFirst(buffer);
    }
    m_filled.notify_all();
}

void CStream::CountLost()
{
    const CKxMutexLock lock(m_queues->mutex);
    if (m_isGrabbing) {
        ++m_begun;
        ++m_underruns;
    }
}

void CStream::Deliver(CFrameInfo info, const std::function<void(uint8_t*, size_t)>& fill)
{
    const BufferPtr buffer = Take();
    if (!buffer)
        return CountLost();
    // Of an incomplete image the upper half comes; of one that is too large, what there is room for.
    info.sizeFilled = std::min(buffer->size, info.isIncomplete ? info.dataSize / 2 : info.dataSize);
    if (info.sizeFilled < info.dataSize) {
        info.isIncomplete = true;
        info.deliveredHeight = info.height * info.sizeFilled / info.dataSize;
        info.chunks.clear();
        info.chunkSize = 0;
        for (CPartInfo& part : info.parts) {
            const size_t came = info.sizeFilled - std::min(info.sizeFilled, part.offset);
            part.deliveredHeight = part.size ? part.height * std::min(came, part.size) / part.size : 0;
        }
    }
    try {
        fill(buffer->base, info.sizeFilled);
    } catch (...) {
        Return(buffer);
        throw;
    }
    Complete(buffer, std::move(info));
}

std::vector<GenTL::SINGLE_CHUNK_DATA> CStream::GetChunks(const CBuffer& buffer) const
{
    const CKxMutexLock lock(m_queues->mutex);
    if (buffer.frame.chunks.empty())
        Fail(GenTL::GC_ERR_NO_DATA, "The buffer holds no chunks");
    return buffer.frame.chunks;
}

uint32_t CStream::GetPartCount(const CBuffer& buffer) const
{
    const CKxMutexLock lock(m_queues->mutex);
    if (buffer.frame.payloadType != GenTL::PAYLOAD_TYPE_MULTI_PART)
        Fail(GenTL::GC_ERR_NO_DATA, "The buffer has no parts");
    return static_cast<uint32_t>(buffer.frame.parts.size());
}

void CStream::Close()
{
    CModule::Close(); // events end here: nobody waits for what isn't coming
    bool wasStarted = false;
    {
        const CKxMutexLock lock(m_queues->mutex);
        wasStarted = m_isStarted;
        m_isStarted = m_isGrabbing = false;
    }
    if (wasStarted)
        OnStop();
    Recall();
    CKxMutexLock lock(m_queues->mutex);
    WaitUntilFilled(lock);
    for (const BufferPtr& buffer : m_queues->All())
        Handles().Remove(*buffer);
    m_queues->Clear();
}

} // namespace KxProducer
