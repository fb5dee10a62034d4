// SPDX-License-Identifier: Apache-2.0
// A thread that waits for the events of a module.
#pragma once

#include <KxApi_TL/CKxGenTLLib.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// An event that arrived. Lives during the call only.
struct CEvent
{
    CKxGenTLLib& lib;
    GenTL::EVENT_HANDLE handle;
    const uint8_t* data;
    size_t size;

    /// A value of the event as text or number; empty or `fallback` when it has none of that kind.
    std::string Text(GenTL::EVENT_DATA_INFO_CMD command) const;
    int64_t Number(GenTL::EVENT_DATA_INFO_CMD command, int64_t fallback) const;
    /// The same as bytes.
    std::vector<uint8_t> Bytes(GenTL::EVENT_DATA_INFO_CMD command) const;
};

/// What is done with events. All calls come from the thread, and end it by false or by an exception.
class CEventSink
{
public:
    CEventSink() = default;
    CEventSink(const CEventSink&) = delete;
    CEventSink& operator=(const CEventSink&) = delete;
    virtual ~CEventSink() = default;

    /// Before each wait; returns when an event is wanted or OnStopRequest was called.
    virtual bool BeforeWait() { return true; }
    virtual bool OnEvent(const CEvent& event) = 0;
    /// A wait ended without event, after kEventWaitMs or some time less.
    virtual bool OnIdle() { return true; }
    /// A wait failed; `nInRow` counts from 1.
    virtual bool OnFailure(GenTL::GC_ERROR error, int nInRow) = 0;
    /// The last call, unless the thread was left alone.
    virtual void OnEnd() noexcept {}

    /// In the thread that asks for the stop.
    virtual void OnStopRequest() noexcept {}
};

/// Longest time of one wait in milliseconds: a producer that doesn't heed EventKill delays a stop by no more.
inline constexpr uint64_t kEventWaitMs = 250;

/// Waits that fail as often one after the other end a thread.
inline constexpr int kMaxFailuresInRow = 10;

/// Registers an event of a module, waits for it in a thread of its own once that is started, and unregisters
/// it. A thread that the producer doesn't return from its wait is left alone: it keeps the sink and the
/// producer's library until it comes back, and calls nothing any more. One thread at a time, except that Stop
/// may come from anywhere.
class CEventThread
{
public:
    /// Raises CKxGenTLErrorException.
    CEventThread(std::shared_ptr<CKxGenTLLib> lib, GenTL::EVENTSRC_HANDLE hSource, GenTL::EVENT_TYPE type,
                 const char* szObject);
    CEventThread(const CEventThread&) = delete;
    CEventThread& operator=(const CEventThread&) = delete;
    /// Stops and unregisters.
    ~CEventThread();

    /// @param szName of the thread, up to 15 letters. Raises RuntimeException when there is no thread to
    /// have.
    void Start(std::shared_ptr<CEventSink> sink, const char* szName);

    /// Asks for the stop without waiting for it.
    void RequestStop() noexcept;

    /// Waits for the end, however long the sink works, but only kHangMs for the producer; false when the
    /// thread was left alone. From inside the thread it returns at once.
    bool Stop() noexcept;

    bool IsOwnThread() const noexcept;

    void Unregister() noexcept;

private:
    struct CState;
    static void Run(const std::shared_ptr<CState>& state) noexcept;
    static void Loop(CState& state);

    const std::shared_ptr<CState> m_state;
};

} // namespace Detail
} // namespace KxApi
