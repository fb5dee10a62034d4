// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// A mutex that Clang's thread-safety analysis understands. Nothing but this header is needed to use it.

#include <Base/GCThreadSafety.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace KxApi
{

/// A mutex, not recursive. Members that it guards say KXGC_GUARDED_BY(m_mutex).
class KXGC_CAPABILITY("mutex") CKxMutex
{
public:
    CKxMutex() = default;
    CKxMutex(const CKxMutex&) = delete;
    CKxMutex& operator=(const CKxMutex&) = delete;

private:
    friend class CKxMutexLock;
    std::mutex m_mutex;
};

/// Holds a mutex as long as it lives, but for stretches between Unlock and Lock, and waits. Of one thread.
///
/// Waits have no predicate: the analysis doesn't see into one. `while (!m_isReady) lock.Wait(m_changed);`
class KXGC_SCOPED_CAPABILITY CKxMutexLock
{
public:
    explicit CKxMutexLock(CKxMutex& mutex) KXGC_ACQUIRE(mutex)
        : m_lock(mutex.m_mutex)
    {}
    CKxMutexLock(const CKxMutexLock&) = delete;
    CKxMutexLock& operator=(const CKxMutexLock&) = delete;
    ~CKxMutexLock() KXGC_RELEASE() = default;

    void Unlock() KXGC_RELEASE() { m_lock.unlock(); }
    void Lock() KXGC_ACQUIRE() { m_lock.lock(); }

    void Wait(std::condition_variable& condition) { condition.wait(m_lock); }
    /// False when the time has come.
    template <class Clock, class Duration>
    bool WaitUntil(std::condition_variable& condition, const std::chrono::time_point<Clock, Duration>& time)
    {
        return condition.wait_until(m_lock, time) == std::cv_status::no_timeout;
    }

private:
    std::unique_lock<std::mutex> m_lock;
};

} // namespace KxApi
