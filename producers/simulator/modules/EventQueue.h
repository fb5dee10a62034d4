// SPDX-License-Identifier: Apache-2.0
// Events of one type of a module, waiting to be fetched.
#pragma once

#include "modules/Handles.h"

#include <GenTL/GenTL.h>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>

namespace KxSim
{

/// Any thread.
class CEventQueue : public CHandled
{
public:
    static constexpr size_t kMaxBlock = 1024; // bytes of an event
    static constexpr size_t kMaxWaiting = 4096;

    /// `taken` hears of each block that is fetched or dropped; it runs without the queue's lock.
    explicit CEventQueue(GenTL::EVENT_TYPE type, std::function<void(const std::string&)> taken = nullptr)
        : m_type(type)
        , m_taken(std::move(taken))
    {}

    GenTL::EVENT_TYPE GetType() const { return m_type; }
    void Push(std::string block);
    /// Takes back a block that waits; false if it doesn't.
    bool Remove(const std::string& block);
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
    const std::function<void(const std::string&)> m_taken;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::string> m_blocks;
    uint64_t m_fired = 0;
    uint64_t m_kills = 0;
    bool m_isClosed = false;
};

/// Blocks as EventGetData hands them out.
std::string FeatureBlock(const std::string& name);
std::string FeatureBlock(const std::string& name, const std::string& value);
std::string ErrorBlock(GenTL::GC_ERROR code, const std::string& text);
std::string GenApiEventBlock(uint64_t id, const std::string& data);

/// What EventGetDataInfo tells of a block.
struct CInfo EventBlockInfo(GenTL::EVENT_TYPE type, const std::string& block,
                            GenTL::EVENT_DATA_INFO_CMD command);

} // namespace KxSim
