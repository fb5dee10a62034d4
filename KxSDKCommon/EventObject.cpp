// SPDX-License-Identifier: Apache-2.0
#include "PosixLock.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxSDKCommon/EventObject.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <optional>

namespace KxApi
{

using Detail::CPosixLock;

namespace
{

constexpr long kNanosecondsPerSecond = 1000000000;

timespec DeadlineIn(unsigned int nMilliseconds) noexcept
{
    timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += nMilliseconds / 1000;
    deadline.tv_nsec += static_cast<long>(nMilliseconds % 1000) * 1000000;
    // A deadline on the full second isn't carried; the system refuses it, and the wait ends as timed out.
    if (deadline.tv_nsec > kNanosecondsPerSecond) {
        deadline.tv_nsec -= kNanosecondsPerSecond;
        ++deadline.tv_sec;
    }
    return deadline;
}

/// One wait on the condition: until it is signalled or, if there is a deadline, until that.
int WaitOnce(pthread_cond_t& condition, pthread_mutex_t& mutex,
             const std::optional<timespec>& deadline) noexcept
{
    return deadline ? pthread_cond_timedwait(&condition, &mutex, &*deadline)
                    : pthread_cond_wait(&condition, &mutex);
}

std::optional<timespec> OptionalDeadline(unsigned int nMilliseconds) noexcept
{
    if (nMilliseconds == kWaitInfinite)
        return std::nullopt;
    return DeadlineIn(nMilliseconds);
}

void InitMutexAndCondition(pthread_mutex_t& mutex, pthread_cond_t& condition)
{
    if (const int nError = pthread_cond_init(&condition, nullptr))
        throw BAD_ALLOC_EXCEPTION("pthread_cond_init failed with error %d", nError);
    if (const int nError = pthread_mutex_init(&mutex, nullptr)) {
        pthread_cond_destroy(&condition);
        throw BAD_ALLOC_EXCEPTION("pthread_mutex_init failed with error %d", nError);
    }
}

/// What the events of one wait on several share.
struct CWaitState
{
    CWaitState(size_t nCount, bool bWaitAllEvents)
        : vecFlags(nCount)
        , bWaitAll(bWaitAllEvents)
    {
        InitMutexAndCondition(mutex, condition);
    }
    CWaitState(const CWaitState&) = delete;
    CWaitState& operator=(const CWaitState&) = delete;
    ~CWaitState()
    {
        pthread_cond_destroy(&condition);
        pthread_mutex_destroy(&mutex);
    }

    /// An event was signalled; its mutex is held.
    void OnSet(size_t nIndex) noexcept
    {
        const CPosixLock lock(mutex);
        vecFlags[nIndex] = true;
        if (!bWaitAll || std::find(vecFlags.begin(), vecFlags.end(), false) == vecFlags.end())
            pthread_cond_signal(&condition);
    }

    pthread_mutex_t mutex; // guards the rest
    pthread_cond_t condition;
    std::vector<bool> vecFlags; // per event, whether it was seen signalled
    const bool bWaitAll;
};

/// Signalled events: how many, and the first of them.
struct CTally
{
    unsigned int nCount = 0;
    unsigned int nLowest = 0;

    void Add(unsigned int nIndex) noexcept
    {
        if (nCount++ == 0)
            nLowest = nIndex;
    }
    bool Suffices(unsigned int nOf, bool bAll) const noexcept
    {
        return nCount == nOf || (nCount > 0 && !bAll);
    }
};

} // namespace

struct _SKxMultiEventsWaiter
{
    CWaitState* pState;
    size_t nIndex; // of the event in the caller's array
};

CEventObject::CEventObject(void* pSecurity, bool bManualReset, bool bInitialState, const char* szName)
    : m_bManualReset(bManualReset)
    , m_pSecurity(pSecurity)
    , m_szName(szName)
{
    static_cast<void>(m_pSecurity);
    static_cast<void>(m_szName);
    InitMutexAndCondition(m_mutex, m_condition);
    if (bInitialState)
        SetEvent();
}

CEventObject::~CEventObject()
{
    {
        const CPosixLock lock(m_mutex);
        m_bDestroying = true;
    }
    pthread_cond_destroy(&m_condition);
    pthread_mutex_destroy(&m_mutex);
}

void CEventObject::SetEvent()
{
    if (m_bDestroying)
        return;
    const CPosixLock lock(m_mutex);
    m_bSignaled = true;
    for (const _SKxMultiEventsWaiter* const pWaiter : m_vecWaiters)
        pWaiter->pState->OnSet(pWaiter->nIndex);
    pthread_cond_signal(&m_condition);
}

void CEventObject::ResetEvent()
{
    if (m_bDestroying)
        return;
    const CPosixLock lock(m_mutex);
    m_bSignaled = false;
}

/// Takes the signal without the lock. In one step, so that it ends one wait only.
bool CEventObject::TryTake() noexcept
{
    if (!m_bSignaled.load())
        return false;
    return m_bManualReset || m_bSignaled.exchange(false);
}

/// Whether the event is signalled at the end of a wait, which resets an automatic one; the mutex is held.
bool CEventObject::Consume() noexcept
{
    return m_bManualReset ? m_bSignaled.load() : m_bSignaled.exchange(false);
}

unsigned int CEventObject::Poll() noexcept
{
    if (pthread_mutex_trylock(&m_mutex) != 0)
        return kWaitTimeout;
    const bool bSignaled = Consume();
    pthread_mutex_unlock(&m_mutex);
    return bSignaled ? 0 : kWaitTimeout;
}

unsigned int CEventObject::Wait(unsigned int nMilliseconds) noexcept
{
    const std::optional<timespec> deadline = OptionalDeadline(nMilliseconds);
    const CPosixLock lock(m_mutex);
    for (;;) {
        if (Consume())
            return 0;
        const int nError = WaitOnce(m_condition, m_mutex, deadline);
        if (nError == 0 || !deadline)
            continue;
        // A signal that comes with the end of the time is used up by the wait that reports the time-out.
        const bool bSignaled = Consume();
        return bSignaled && nError != ETIMEDOUT ? kWaitFailed : kWaitTimeout;
    }
}

unsigned int WaitForSingleObject(void* hEvent, unsigned int nMilliseconds)
{
    if (!hEvent)
        return kWaitFailed;
    auto& event = *static_cast<CEventObject*>(hEvent);
    if (event.TryTake())
        return 0;
    return nMilliseconds == 0 ? event.Poll() : event.Wait(nMilliseconds);
}

/// One wait on several events.
class CMultiWait
{
public:
    CMultiWait(unsigned int nCount, void* const* pEvents, bool bWaitAll) noexcept
        : m_nCount(nCount)
        , m_pEvents(pEvents)
        , m_bWaitAll(bWaitAll)
    {}

    bool HasNull() const noexcept
    {
        return std::find(m_pEvents, m_pEvents + m_nCount, nullptr) != m_pEvents + m_nCount;
    }

    unsigned int Poll() const
    {
        std::vector<bool> vecSignaled(m_nCount);
        CTally tally;
        for (unsigned int i = 0; i < m_nCount; ++i) {
            vecSignaled[i] = IsSignaledNow(Event(i));
            if (vecSignaled[i])
                tally.Add(i);
        }
        if (!tally.Suffices(m_nCount, m_bWaitAll))
            return kWaitTimeout;
        for (unsigned int i = 0; i < m_nCount; ++i) {
            if (vecSignaled[i] && !Event(i).m_bManualReset)
                Event(i).m_bSignaled = false;
        }
        return tally.nLowest;
    }

    unsigned int Wait(unsigned int nMilliseconds) const
    {
        CWaitState state(m_nCount, m_bWaitAll);
        std::vector<_SKxMultiEventsWaiter> vecWaiters(m_nCount);
        const CTally tally = Watched(state, vecWaiters, nMilliseconds);
        return tally.Suffices(m_nCount, m_bWaitAll) ? tally.nLowest : kWaitTimeout;
    }

private:
    CEventObject& Event(unsigned int nIndex) const noexcept
    {
        return *static_cast<CEventObject*>(m_pEvents[nIndex]);
    }

    static bool IsSignaledNow(CEventObject& event) noexcept
    {
        if (event.m_bSignaled)
            return true;
        if (pthread_mutex_trylock(&event.m_mutex) != 0)
            return false;
        const bool bSignaled = event.m_bSignaled;
        pthread_mutex_unlock(&event.m_mutex);
        return bSignaled;
    }

    /// Waits while the events know of the waiters, and gives what was signalled at the end.
    CTally Watched(CWaitState& state, std::vector<_SKxMultiEventsWaiter>& vecWaiters,
                   unsigned int nMilliseconds) const
    {
        unsigned int nAdded = 0;
        try {
            for (; nAdded < m_nCount; ++nAdded) {
                vecWaiters[nAdded] = {&state, nAdded};
                const CPosixLock lock(Event(nAdded).m_mutex);
                Event(nAdded).m_vecWaiters.push_back(&vecWaiters[nAdded]);
            }
        } catch (...) {
            for (unsigned int i = 0; i < nAdded; ++i)
                Leave(Event(i), vecWaiters[i]);
            throw;
        }
        WaitUntilMet(state, nMilliseconds);
        // The events may have changed since, for they were looked at without their locks. All signals found
        // are used up, also when they don't suffice.
        CTally tally;
        for (unsigned int i = 0; i < m_nCount; ++i) {
            if (Leave(Event(i), vecWaiters[i], true))
                tally.Add(i);
        }
        return tally;
    }

    void WaitUntilMet(CWaitState& state, unsigned int nMilliseconds) const noexcept
    {
        const std::optional<timespec> deadline = OptionalDeadline(nMilliseconds);
        const CPosixLock lock(state.mutex);
        for (;;) {
            CTally tally;
            for (unsigned int i = 0; i < m_nCount; ++i) {
                state.vecFlags[i] = Event(i).m_bSignaled;
                if (state.vecFlags[i])
                    tally.Add(i);
            }
            if (tally.Suffices(m_nCount, m_bWaitAll) || WaitOnce(state.condition, state.mutex, deadline) != 0)
                return;
        }
    }

    static bool Leave(CEventObject& event, const _SKxMultiEventsWaiter& waiter,
                      bool bConsume = false) noexcept
    {
        const CPosixLock lock(event.m_mutex);
        auto& vecWaiters = event.m_vecWaiters;
        vecWaiters.erase(std::find(vecWaiters.begin(), vecWaiters.end(), &waiter));
        return bConsume && event.Consume();
    }

    const unsigned int m_nCount;
    void* const* const m_pEvents;
    const bool m_bWaitAll;
};

unsigned int WaitForMultipleObjects(unsigned int nCount, void* const* pEvents, bool bWaitAll,
                                    unsigned int nMilliseconds)
{
    if (nCount == 0 || !pEvents)
        return kWaitFailed;
    const CMultiWait wait(nCount, pEvents, bWaitAll);
    if (wait.HasNull())
        return kWaitFailed;
    return GenICam::GuardBadAlloc(
        [&] { return nMilliseconds == 0 ? wait.Poll() : wait.Wait(nMilliseconds); });
}

} // namespace KxApi
