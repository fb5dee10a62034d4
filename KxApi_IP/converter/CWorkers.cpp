// SPDX-License-Identifier: Apache-2.0
#include "CWorkers.h"

#include <signal.h>

#include <system_error>

namespace KxApi
{
namespace Detail
{
namespace
{

/// Blocks all signals while it lives; a thread started meanwhile keeps them blocked.
class CSignalsBlocked
{
public:
    CSignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    CSignalsBlocked(const CSignalsBlocked&) = delete;
    CSignalsBlocked& operator=(const CSignalsBlocked&) = delete;
    ~CSignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before;
};

} // namespace

CWorkers::~CWorkers() { EndHelpers(); }

void CWorkers::EndHelpers()
{
    {
        const CKxMutexLock lock(m_mutex);
        m_ends = true;
    }
    m_begin.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
    m_threads.clear();
    const CKxMutexLock lock(m_mutex);
    m_ends = false;
}

void CWorkers::SetHelpers(size_t nHelpers)
{
    if (m_threads.size() > nHelpers)
        EndHelpers();
    if (m_threads.size() == nHelpers)
        return;
    m_threads.reserve(nHelpers);
    const size_t nRound = [this] {
        const CKxMutexLock lock(m_mutex);
        return m_nRound;
    }();
    const CSignalsBlocked signals;
    try {
        while (m_threads.size() < nHelpers) {
            const size_t nPart = m_threads.size() + 1;
            m_threads.emplace_back([this, nPart, nRound] { HelperBody(nPart, nRound); });
        }
    } catch (const std::system_error&) {
        return; // those that there are do the work
    }
}

void CWorkers::Run(size_t nHelpers, void (*pTask)(void* pContext, size_t nPart), void* pContext)
{
    if (nHelpers == 0) {
        pTask(pContext, 0);
        return;
    }
    {
        const CKxMutexLock lock(m_mutex);
        m_pTask = pTask;
        m_pContext = pContext;
        m_nHelpers = m_nBusy = nHelpers;
        ++m_nRound;
    }
    m_begin.notify_all();
    pTask(pContext, 0);
    CKxMutexLock lock(m_mutex);
    while (m_nBusy != 0)
        lock.Wait(m_end);
}

void CWorkers::HelperBody(size_t nPart, size_t nRound)
{
    CKxMutexLock lock(m_mutex);
    for (;;) {
        while (!m_ends && m_nRound == nRound)
            lock.Wait(m_begin);
        if (m_ends)
            return;
        nRound = m_nRound;
        if (nPart > m_nHelpers)
            continue;
        const auto pTask = m_pTask;
        void* const pContext = m_pContext;
        lock.Unlock();
        pTask(pContext, nPart);
        lock.Lock();
        if (--m_nBusy == 0)
            m_end.notify_one();
    }
}

} // namespace Detail
} // namespace KxApi
