// SPDX-License-Identifier: Apache-2.0
// Events of one type of a module, waiting to be fetched.
#pragma once

#include "common/modules/Handles.h"

#include <KxSDKCommon/KxMutex.h>

#include <GenTL/GenTL.h>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

namespace KxProducer
{

/// What waits to be fetched. Its owner puts things in, an event queue takes them out, both under one mutex,
/// so that nothing is ever half taken.
class CEventSource
{
public:
    CEventSource() = default;
    CEventSource(const CEventSource&) = delete;
    CEventSource& operator=(const CEventSource&) = delete;
    virtual ~CEventSource() = default;

    virtual size_t Count() const KXGC_REQUIRES(mutex) = 0;
    /// The block that is fetched next.
    virtual std::string Front() const KXGC_REQUIRES(mutex) = 0;
    /// It has been fetched, or is dropped.
    virtual void PopFront() KXGC_REQUIRES(mutex) = 0;
    /// Whether what waits goes when nobody wants to hear of it any more.
    virtual bool EndsWithQueue() const { return true; }

    mutable KxApi::CKxMutex mutex;
    std::condition_variable changed;
    uint64_t fired KXGC_GUARDED_BY(mutex) = 0;
};

/// Blocks of events that are nothing but blocks.
class CBlockSource final : public CEventSource
{
public:
    static constexpr size_t kMaxWaiting = 4096;

    /// Nobody fetches: the oldest go.
    void Push(std::string block);
    size_t Count() const override KXGC_REQUIRES(mutex) { return m_blocks.size(); }
    std::string Front() const override KXGC_REQUIRES(mutex) { return m_blocks.front(); }
    void PopFront() override KXGC_REQUIRES(mutex) { m_blocks.pop_front(); }

private:
    std::deque<std::string> m_blocks KXGC_GUARDED_BY(mutex);
};

/// What a handle of a registered event stands for. Any thread.
class CEventQueue final : public CHandled
{
public:
    static constexpr size_t kMaxBlock = 1024; // bytes of an event

    CEventQueue(GenTL::EVENT_TYPE type, std::shared_ptr<CEventSource> source)
        : m_type(type)
        , m_source(std::move(source))
    {}

    GenTL::EVENT_TYPE GetType() const { return m_type; }
    const std::shared_ptr<CEventSource>& Source() const { return m_source; }
    /// Waits for a block and copies it. A null buffer drops it.
    void Get(void* pBuffer, size_t* piSize, uint64_t timeoutMs);
    void Flush();
    /// One wait, now or later, ends without a block.
    void Kill();
    /// All waits end so.
    void Close();
    size_t GetWaiting() const;
    uint64_t GetFired() const;

private:
    const GenTL::EVENT_TYPE m_type;
    const std::shared_ptr<CEventSource> m_source; // its mutex guards the rest
    uint64_t m_kills KXGC_GUARDED_BY(m_source->mutex) = 0;
    bool m_isClosed KXGC_GUARDED_BY(m_source->mutex) = false;
};

/// Blocks as EventGetData hands them out.
std::string FeatureBlock(const std::string& name);
std::string FeatureBlock(const std::string& name, const std::string& value);
std::string ErrorBlock(GenTL::GC_ERROR code, const std::string& text);
std::string GenApiEventBlock(uint64_t id, const std::string& data);

/// What EventGetDataInfo tells of a block.
struct CInfo EventBlockInfo(GenTL::EVENT_TYPE type, const std::string& block,
                            GenTL::EVENT_DATA_INFO_CMD command);

} // namespace KxProducer
