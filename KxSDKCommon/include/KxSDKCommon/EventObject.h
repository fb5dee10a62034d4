// SPDX-License-Identifier: Apache-2.0
// Events that threads wait on, one or several at a time.
#pragma once

#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <pthread.h>

#include <atomic>
#include <vector>

namespace KxApi
{

struct _SKxMultiEventsWaiter;

/// Time-out in milliseconds that never comes.
inline constexpr unsigned int kWaitInfinite = 0xFFFFFFFF;
/// Results of the waits other than the index of an event: the time ran out; a null object or a failed wait.
inline constexpr unsigned int kWaitTimeout = 258;
inline constexpr unsigned int kWaitFailed = 0xFFFFFFFF;

/// A signal between threads. An event with automatic reset is taken by the wait that it ends; one with manual
/// reset stays signalled until ResetEvent. Any thread; all waits must have ended before it is destroyed.
class KXSDK_COMMON_API CEventObject
{
public:
    /// @param pSecurity,szName kept for the form's sake and not used; the name isn't copied.
    /// Raises BadAllocException when the system has no lock to give.
    CEventObject(void* pSecurity, bool bManualReset, bool bInitialState, const char* szName);
    CEventObject(const CEventObject&) = delete;
    CEventObject& operator=(const CEventObject&) = delete;
    ~CEventObject();

    /// Signals the event, which wakes one thread that waits on it alone, and the waits on several whose
    /// condition is met now.
    void SetEvent();

    /// Takes the signal back.
    void ResetEvent();

    /// True from the beginning of the destructor on.
    bool IsDestroying() const noexcept { return m_bDestroying; }

private:
    friend class CMultiWait;
    friend KXSDK_COMMON_API unsigned int WaitForSingleObject(void* hEvent, unsigned int nMilliseconds);

    bool TryTake() noexcept;
    bool Consume() noexcept;
    unsigned int Poll() noexcept;
    unsigned int Wait(unsigned int nMilliseconds) noexcept;

    // May be held when the mutex of a wait on several events is taken, never the other way round. Guards all
    // members but m_bSignaled and m_bDestroying, which are read without it and written under it (a wait that
    // takes the signal of an automatic event does so in one step).
    pthread_mutex_t m_mutex;
    pthread_cond_t m_condition;
    const bool m_bManualReset;
    std::atomic<bool> m_bSignaled{false};
    std::vector<_SKxMultiEventsWaiter*> m_vecWaiters;
    std::atomic<bool> m_bDestroying{false};
    void* const m_pSecurity;
    const char* const m_szName;
};

/// Waits until the event is signalled.
/// @param hEvent a CEventObject.
/// @param nMilliseconds 0 looks and returns; kWaitInfinite waits without limit.
/// Returns 0, kWaitTimeout, or kWaitFailed (also for a null event). A look at an event that another thread is
/// just working on counts as a time-out.
KXSDK_COMMON_API unsigned int WaitForSingleObject(void* hEvent, unsigned int nMilliseconds);

/// Waits for one or all of several different events.
/// @param nCount number of events; @param pEvents CEventObjects; @param bWaitAll all, and not any, must be
/// signalled.
/// @param nMilliseconds as above.
/// Returns the lowest index of the signalled events, kWaitTimeout, or kWaitFailed (no events, or one is
/// null). All automatic events found signalled at the end are reset, even if the time ran out before all of
/// them were; only with the time-out 0 does a failed wait for all leave them alone. Raises BadAllocException.
KXSDK_COMMON_API unsigned int WaitForMultipleObjects(unsigned int nCount, void* const* pEvents, bool bWaitAll,
                                                     unsigned int nMilliseconds);

} // namespace KxApi
