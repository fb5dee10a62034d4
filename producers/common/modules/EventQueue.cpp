// SPDX-License-Identifier: Apache-2.0

#include "EventQueue.h"

#include "common/gentl/Info.h"

#include <algorithm>
#include <chrono>
#include <cstring>

namespace KxProducer
{

using KxApi::CKxMutexLock;

void CBlockSource::Push(std::string block)
{
    {
        const CKxMutexLock lock(mutex);
        if (m_blocks.size() >= kMaxWaiting)
            m_blocks.pop_front();
        m_blocks.push_back(std::move(block));
        ++fired;
    }
    changed.notify_one();
}

void CEventQueue::Get(void* pBuffer, size_t* piSize, uint64_t timeoutMs)
{
    // Longer waits than this would overflow the clock.
    constexpr uint64_t kLongestMs = 365ULL * 24 * 3600 * 1000;
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(std::min(timeoutMs, kLongestMs));
    CKxMutexLock lock(m_source->mutex);
    while (!m_isClosed && m_kills == 0 && m_source->Count() == 0) {
        if (!lock.WaitUntil(m_source->changed, end) && !m_isClosed && m_kills == 0 && m_source->Count() == 0)
            Fail(GenTL::GC_ERR_TIMEOUT, "No event within %llu ms",
                 static_cast<unsigned long long>(timeoutMs));
    }
    if (m_isClosed)
        Fail(GenTL::GC_ERR_ABORT, "The event was unregistered");
    if (m_kills > 0) {
        --m_kills;
        Fail(GenTL::GC_ERR_ABORT, "The wait was ended by EventKill");
    }
    if (pBuffer)
        ReturnBytes(m_source->Front(), pBuffer, piSize);
    else if (piSize)
        *piSize = 0;
    m_source->PopFront();
}

void CEventQueue::Flush()
{
    const CKxMutexLock lock(m_source->mutex);
    while (m_source->Count() > 0)
        m_source->PopFront();
}

void CEventQueue::Kill()
{
    {
        const CKxMutexLock lock(m_source->mutex);
        ++m_kills;
    }
    m_source->changed.notify_one();
}

void CEventQueue::Close()
{
    if (m_source->EndsWithQueue())
        Flush();
    {
        const CKxMutexLock lock(m_source->mutex);
        m_isClosed = true;
    }
    m_source->changed.notify_all();
}

size_t CEventQueue::GetWaiting() const
{
    const CKxMutexLock lock(m_source->mutex);
    return m_source->Count();
}

uint64_t CEventQueue::GetFired() const
{
    const CKxMutexLock lock(m_source->mutex);
    return m_source->fired;
}

std::string FeatureBlock(const std::string& name) { return std::string(name.c_str(), name.size() + 1); }

std::string FeatureBlock(const std::string& name, const std::string& value)
{
    return FeatureBlock(name) + FeatureBlock(value);
}

std::string ErrorBlock(GenTL::GC_ERROR code, const std::string& text)
{
    return Int32Info(code).bytes + FeatureBlock(text);
}

std::string GenApiEventBlock(uint64_t id, const std::string& data) { return UInt64Info(id).bytes + data; }

namespace
{

[[noreturn]] void FailNoNumber() { Fail(GenTL::GC_ERR_NOT_AVAILABLE, "Events of this type have no number"); }

template <class T>
T Front(const std::string& block)
{
    T value{};
    if (block.size() < sizeof value)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "%zu bytes are no event of this type", block.size());
    std::memcpy(&value, block.data(), sizeof value);
    return value;
}

CInfo BufferEventInfo(const std::string& block, GenTL::EVENT_DATA_INFO_CMD command)
{
    const auto data = Front<GenTL::EVENT_NEW_BUFFER_DATA>(block);
    switch (command) {
    case GenTL::EVENT_DATA_ID:
        return PointerInfo(data.BufferHandle);
    case GenTL::EVENT_DATA_VALUE:
        return PointerInfo(data.pUserPointer);
    default:
        FailNoNumber();
    }
}

CInfo FeatureEventInfo(const std::string& block, GenTL::EVENT_DATA_INFO_CMD command)
{
    const std::string name = UpToNul(block);
    switch (command) {
    case GenTL::EVENT_DATA_ID:
        return TextInfo(name);
    case GenTL::EVENT_DATA_VALUE:
        if (block.size() > name.size() + 1)
            return TextInfo(block.c_str() + name.size() + 1);
        Fail(GenTL::GC_ERR_NOT_AVAILABLE, "The event has no value");
    default:
        FailNoNumber();
    }
}

CInfo ErrorEventInfo(const std::string& block, GenTL::EVENT_DATA_INFO_CMD command)
{
    const auto code = Front<int32_t>(block);
    switch (command) {
    case GenTL::EVENT_DATA_ID:
        return Int32Info(code);
    case GenTL::EVENT_DATA_VALUE:
        return TextInfo(block.c_str() + sizeof code);
    default:
        return UInt64Info(static_cast<uint64_t>(code));
    }
}

CInfo GenApiEventInfo(const std::string& block, GenTL::EVENT_DATA_INFO_CMD command)
{
    const auto id = Front<uint64_t>(block);
    switch (command) {
    case GenTL::EVENT_DATA_ID:
        return TextInfo(Format("%04llx", static_cast<unsigned long long>(id)));
    case GenTL::EVENT_DATA_VALUE:
        return {GenTL::INFO_DATATYPE_BUFFER, block.substr(sizeof id)};
    default:
        return UInt64Info(id);
    }
}

} // namespace

CInfo EventBlockInfo(GenTL::EVENT_TYPE type, const std::string& block, GenTL::EVENT_DATA_INFO_CMD command)
{
    if (command < GenTL::EVENT_DATA_ID || command > GenTL::EVENT_DATA_NUMID)
        FailUnknownInfo(command);
    switch (type) {
    case GenTL::EVENT_NEW_BUFFER:
        return BufferEventInfo(block, command);
    case GenTL::EVENT_FEATURE_INVALIDATE:
    case GenTL::EVENT_FEATURE_CHANGE:
        return FeatureEventInfo(block, command);
    case GenTL::EVENT_ERROR:
        return ErrorEventInfo(block, command);
    default:
        return GenApiEventInfo(block, command);
    }
}

} // namespace KxProducer
