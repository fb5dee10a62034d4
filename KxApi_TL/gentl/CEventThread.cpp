// SPDX-License-Identifier: Apache-2.0

#include "CEventThread.h"

#include "GenTLInfo.h"

#include <Base/GCException.h>
#include <KxSDKCommon/KxMutex.h>

#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <system_error>
#include <thread>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

using Clock = std::chrono::steady_clock;

/// How long a wait of the producer may outlast the stop.
constexpr auto kHangTime = std::chrono::seconds(3);
constexpr auto kPauseAfterFailure = std::chrono::milliseconds(20);
/// Room for an event of a producer that doesn't tell its size, and the most that is believed of one that
/// does.
constexpr size_t kDefaultEventSize = 4096;
constexpr size_t kMaxEventSize = 16 * 1024 * 1024;

enum class EPhase
{
    Idle,    // not started
    Working, // in the sink, or between
    Waiting, // in the producer
    Ended
};

} // namespace

std::vector<uint8_t> CEvent::Bytes(GenTL::EVENT_DATA_INFO_CMD command) const
{
    size_t needed = 0;
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
    if (lib.EventGetDataInfo(handle, data, size, command, &type, nullptr, &needed) != GenTL::GC_ERR_SUCCESS ||
        needed > kMaxEventSize)
        return {};
    std::vector<uint8_t> bytes(needed);
    if (lib.EventGetDataInfo(handle, data, size, command, &type, bytes.data(), &needed) !=
        GenTL::GC_ERR_SUCCESS)
        return {};
    bytes.resize(std::min(needed, bytes.size()));
    return bytes;
}

std::string CEvent::Text(GenTL::EVENT_DATA_INFO_CMD command) const
{
    return GetInfoText([&](GenTL::INFO_DATATYPE* type, char* text, size_t* length) {
               return lib.EventGetDataInfo(handle, data, size, command, type, text, length);
           })
        .c_str();
}

int64_t CEvent::Number(GenTL::EVENT_DATA_INFO_CMD command, int64_t fallback) const
{
    return GetInfoInteger(
        [&](GenTL::INFO_DATATYPE* type, void* value, size_t* length) {
            return lib.EventGetDataInfo(handle, data, size, command, type, value, length);
        },
        fallback);
}

/// What the thread needs, also when it is left alone.
struct CEventThread::CState
{
    std::shared_ptr<CKxGenTLLib> lib;
    GenTL::EVENTSRC_HANDLE hSource = nullptr;
    GenTL::EVENT_TYPE type = GenTL::EVENT_ERROR;
    GenTL::EVENT_HANDLE hEvent = nullptr;
    std::atomic<bool> isRegistered{true};

    CKxMutex mutex; // nothing is called with it held
    std::condition_variable changed;
    /// From the start to the end of the thread.
    std::shared_ptr<CEventSink> sink KXGC_GUARDED_BY(mutex);
    EPhase phase KXGC_GUARDED_BY(mutex) = EPhase::Idle;
    bool isStopRequested KXGC_GUARDED_BY(mutex) = false;
    /// Of the producer's return, once the stop is requested.
    Clock::time_point limit KXGC_GUARDED_BY(mutex);
    bool isLeftAlone KXGC_GUARDED_BY(mutex) = false;
    /// Until somebody has waited for its end.
    std::thread thread KXGC_GUARDED_BY(mutex);
    std::thread::id id KXGC_GUARDED_BY(mutex);

    bool IsOver() const KXGC_REQUIRES(mutex)
    {
        return phase == EPhase::Idle || phase == EPhase::Ended || isLeftAlone;
    }

    bool Enter(EPhase next)
    {
        const CKxMutexLock lock(mutex);
        phase = next;
        changed.notify_all();
        return !isStopRequested;
    }
};

CEventThread::CEventThread(std::shared_ptr<CKxGenTLLib> lib, GenTL::EVENTSRC_HANDLE hSource,
                           GenTL::EVENT_TYPE type, const char* szObject)
    : m_state(std::make_shared<CState>())
{
    CheckGenTL(*lib, lib->GCRegisterEvent(hSource, type, &m_state->hEvent), "GCRegisterEvent", szObject);
    if (!m_state->hEvent) {
        lib->GCUnregisterEvent(hSource, type);
        throw RUNTIME_EXCEPTION("GCRegisterEvent of '%s' gave no handle", szObject);
    }
    m_state->lib = std::move(lib);
    m_state->hSource = hSource;
    m_state->type = type;
}

CEventThread::~CEventThread()
{
    Stop();
    Unregister();
    const CKxMutexLock lock(m_state->mutex);
    if (m_state->thread.joinable())
        m_state->thread.detach(); // nobody is left who could wait for this very thread
}

void CEventThread::Start(std::shared_ptr<CEventSink> sink, const char* szName)
{
    const CKxMutexLock lock(m_state->mutex);
    m_state->sink = std::move(sink);
    m_state->phase = EPhase::Working;
    try {
        m_state->thread = std::thread([state = m_state] { Run(state); });
        m_state->id = m_state->thread.get_id();
        pthread_setname_np(m_state->thread.native_handle(), szName);
    } catch (const std::system_error& e) {
        m_state->sink.reset();
        m_state->phase = EPhase::Idle;
        throw RUNTIME_EXCEPTION("Thread %s could not be started: %s", szName, e.what());
    }
}

void CEventThread::RequestStop() noexcept
{
    std::shared_ptr<CEventSink> sink;
    {
        const CKxMutexLock lock(m_state->mutex);
        if (m_state->phase == EPhase::Idle || m_state->phase == EPhase::Ended ||
            std::exchange(m_state->isStopRequested, true))
            return;
        m_state->limit = Clock::now() + kHangTime;
        sink = m_state->sink;
    }
    if (sink)
        sink->OnStopRequest();
    if (m_state->isRegistered)
        m_state->lib->EventKill(m_state->hEvent);
}

bool CEventThread::IsOwnThread() const noexcept
{
    const CKxMutexLock lock(m_state->mutex);
    return m_state->phase != EPhase::Idle && m_state->id == std::this_thread::get_id();
}

bool CEventThread::Stop() noexcept
{
    RequestStop();
    if (IsOwnThread())
        return true;
    CKxMutexLock lock(m_state->mutex);
    while (!m_state->IsOver()) {
        if (m_state->phase == EPhase::Working)
            lock.Wait(m_state->changed); // it doesn't enter the producer any more
        else if (!lock.WaitUntil(m_state->changed, m_state->limit) && m_state->phase == EPhase::Waiting)
            m_state->isLeftAlone = true;
    }
    std::thread thread = std::move(m_state->thread);
    const bool isLeftAlone = m_state->isLeftAlone;
    lock.Unlock();
    if (thread.joinable())
        isLeftAlone ? thread.detach() : thread.join();
    return !isLeftAlone;
}

void CEventThread::Unregister() noexcept
{
    if (m_state->isRegistered.exchange(false))
        m_state->lib->GCUnregisterEvent(m_state->hSource, m_state->type);
}

void CEventThread::Run(const std::shared_ptr<CState>& state) noexcept
{
    try {
        Loop(*state);
    } catch (...) {
        // A sink ends its thread by an exception only when there is nobody to tell it to.
    }
    std::shared_ptr<CEventSink> sink;
    bool isLeftAlone = false;
    {
        const CKxMutexLock lock(state->mutex);
        isLeftAlone = state->isLeftAlone;
        state->phase = isLeftAlone ? EPhase::Ended : EPhase::Working;
        sink = std::move(state->sink);
    }
    if (isLeftAlone)
        return;
    sink->OnEnd();
    // Before the end is told, since what the sink owns is to be gone then. Its last owner may be this thread.
    sink.reset();
    const CKxMutexLock lock(state->mutex);
    state->phase = EPhase::Ended;
    state->changed.notify_all();
}

void CEventThread::Loop(CState& state)
{
    CKxGenTLLib& lib = *state.lib;
    const size_t sizeTold = static_cast<size_t>(GetInfoInteger(
        [&](auto... arguments) {
            return lib.EventGetInfo(state.hEvent, GenTL::EVENT_SIZE_MAX, arguments...);
        },
        0));
    // More than is told, for producers that tell less than they write.
    std::vector<uint8_t> data(std::clamp(sizeTold, kDefaultEventSize, kMaxEventSize));
    CEventSink& sink = [&state]() -> CEventSink& {
        const CKxMutexLock lock(state.mutex);
        return *state.sink;
    }();
    int nFailures = 0;
    while (sink.BeforeWait() && state.Enter(EPhase::Waiting)) {
        size_t size = data.size();
        const GenTL::GC_ERROR error = lib.EventGetData(state.hEvent, data.data(), &size, kEventWaitMs);
        if (!state.Enter(EPhase::Working))
            return;
        bool isGoingOn = true;
        if (error == GenTL::GC_ERR_SUCCESS && size <= data.size()) {
            nFailures = 0;
            isGoingOn = sink.OnEvent({lib, state.hEvent, data.data(), size});
        } else if (error == GenTL::GC_ERR_TIMEOUT) {
            isGoingOn = sink.OnIdle();
        } else {
            isGoingOn =
                sink.OnFailure(error == GenTL::GC_ERR_SUCCESS ? GenTL::GC_ERR_ERROR : error, ++nFailures);
            std::this_thread::sleep_for(kPauseAfterFailure);
        }
        if (!isGoingOn)
            return;
    }
}

} // namespace Detail
} // namespace KxApi
