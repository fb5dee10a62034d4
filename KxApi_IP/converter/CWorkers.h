// SPDX-License-Identifier: Apache-2.0
// Threads that help with a conversion.
#pragma once

#include <KxSDKCommon/KxMutex.h>

#include <condition_variable>
#include <cstddef>
#include <thread>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// Helpers that sleep between tasks. One thread at a time; the destructor ends the helpers.
class CWorkers
{
public:
    CWorkers() = default;
    CWorkers(const CWorkers&) = delete;
    CWorkers& operator=(const CWorkers&) = delete;
    ~CWorkers();

    /// Sees to so many helpers; fewer when the system gives no more threads. Signals of the process are not
    /// handled in them.
    void SetHelpers(size_t nHelpers);
    size_t GetHelpers() const { return m_threads.size(); }

    /// Calls pTask(pContext, i) for i = 0 in this thread and i = 1 to nHelpers in helpers, all at once, and
    /// returns when all are done. The task must not throw. Allocates nothing.
    void Run(size_t nHelpers, void (*pTask)(void* pContext, size_t nPart), void* pContext);

private:
    void HelperBody(size_t nPart, size_t nRound);
    void EndHelpers();

    std::vector<std::thread> m_threads;

    CKxMutex m_mutex;
    std::condition_variable m_begin;
    std::condition_variable m_end;
    size_t m_nRound KXGC_GUARDED_BY(m_mutex) = 0;   // counts the tasks
    size_t m_nHelpers KXGC_GUARDED_BY(m_mutex) = 0; // that take part in the present task
    size_t m_nBusy KXGC_GUARDED_BY(m_mutex) = 0;
    bool m_ends KXGC_GUARDED_BY(m_mutex) = false;
    void (*m_pTask)(void*, size_t) KXGC_GUARDED_BY(m_mutex) = nullptr;
    void* m_pContext KXGC_GUARDED_BY(m_mutex) = nullptr;
};

} // namespace Detail
} // namespace KxApi
