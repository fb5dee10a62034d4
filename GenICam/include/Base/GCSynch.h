// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Locks: recursive within one process, named between processes.

#include <Base/GCString.h>
#include <Base/GCThreadSafety.h>

#include <pthread.h>

#include <atomic>
#include <mutex>

namespace GenICam
{
/// A recursive lock: the thread that holds it may take it again, and gives it back as often.
///
/// Taking it a second time costs a comparison, for node maps take it on every access. Any thread. Unlock on a
/// lock that the thread doesn't hold raises LogicalErrorException.
class KXGC_CAPABILITY("lock") CLock
{
public:
    CLock() noexcept = default;
    CLock(const CLock&) = delete;
    CLock& operator=(const CLock&) = delete;
    ~CLock() = default;

    /// Waits until the lock is free and takes it.
    void Lock() KXGC_ACQUIRE()
    {
        const pthread_t self = pthread_self();
        if (m_owner.load(std::memory_order_relaxed) != self) {
            m_mutex.lock();
            m_owner.store(self, std::memory_order_relaxed);
        }
        ++m_depth;
    }

    /// Takes the lock if that is possible without waiting; tells whether it did.
    bool TryLock() KXGC_TRY_ACQUIRE(true)
    {
        const pthread_t self = pthread_self();
        if (m_owner.load(std::memory_order_relaxed) != self) {
            if (!m_mutex.try_lock())
                return false;
            m_owner.store(self, std::memory_order_relaxed);
        }
        ++m_depth;
        return true;
    }

    /// Gives the lock back once.
    void Unlock() KXGC_RELEASE()
    {
        if (m_owner.load(std::memory_order_relaxed) != pthread_self())
            RaiseNotHeld();
        if (--m_depth == 0) {
            m_owner.store(pthread_t(), std::memory_order_relaxed);
            m_mutex.unlock();
        }
    }

private:
    [[noreturn]] GCBASE_API static void RaiseNotHeld();

    std::mutex m_mutex;
    // Only the owner writes its own identity here, so a thread that reads its own may rely on it without
    // m_mutex.
    std::atomic<pthread_t> m_owner{};
    size_t m_depth = 0; // touched by the owner only
};

/// The same; elsewhere the lock of the operating system's own kind.
class CLockEx : public CLock
{};

/// Holds a lock as long as it lives.
class KXGC_SCOPED_CAPABILITY AutoLock
{
public:
    AutoLock(CLock& lock) KXGC_ACQUIRE(lock)
        : m_lock(lock)
    {
        m_lock.Lock();
    }
    AutoLock(const AutoLock&) = delete;
    AutoLock& operator=(const AutoLock&) = delete;
    ~AutoLock() KXGC_RELEASE() { m_lock.Unlock(); }

private:
    CLock& m_lock;
};

/// An object that brings its lock along: `LockableObject<T>::Lock guard(object);` holds it.
template <class Object>
class LockableObject : public Object
{
public:
    class Lock
    {
    public:
        Lock(const LockableObject<Object>& object) KXGC_NO_THREAD_SAFETY_ANALYSIS // the lock is within it
            : m_lock(&object.m_Lock)
        {
            m_lock->Lock();
        }
        Lock(Lock&& other) noexcept
            : m_lock(other.m_lock)
        {
            other.m_lock = nullptr;
        }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;
        ~Lock() KXGC_NO_THREAD_SAFETY_ANALYSIS
        {
            if (m_lock)
                m_lock->Unlock();
        }

    private:
        CLock* m_lock; // null once another guard has taken over
    };

    Lock GetLock() const { return Lock(*this); }

    mutable CLock m_Lock;
};

/// A lock by name, shared by all processes of the machine and, as long as they run, freed when one of them
/// ends.
///
/// Not recursive. One object is for one thread at a time.
class GCBASE_API CGlobalLock
{
public:
    /// `name` may have letters, digits, '_', '-' and '.'; all else counts as '_'. Raises
    /// InvalidArgumentException for an empty name or one above 200 bytes.
    explicit CGlobalLock(const gcstring& name);
    explicit CGlobalLock(const char* name)
        : CGlobalLock(gcstring(name))
    {}
    CGlobalLock(const CGlobalLock&) = delete;
    CGlobalLock& operator=(const CGlobalLock&) = delete;
    /// Frees the lock if it is held.
    ~CGlobalLock();

    /// False when the lock can't be made, say for want of rights.
    bool IsValid() const noexcept { return m_file >= 0; }
    /// Waits up to `timeoutMs` milliseconds; tells whether the lock was taken.
    bool Lock(unsigned int timeoutMs);
    bool TryLock() { return Lock(0); }
    void Unlock();

private:
    int m_file = -1;
    bool m_held = false;
};

/// Frees a global lock, which the caller has taken, at the end of the block.
class CGlobalLockUnlocker
{
public:
    explicit CGlobalLockUnlocker(CGlobalLock& lock) noexcept
        : m_lock(&lock)
    {}
    CGlobalLockUnlocker(const CGlobalLockUnlocker&) = delete;
    CGlobalLockUnlocker& operator=(const CGlobalLockUnlocker&) = delete;
    ~CGlobalLockUnlocker() { UnlockEarly(); }
    void UnlockEarly()
    {
        if (m_lock)
            m_lock->Unlock();
        m_lock = nullptr;
    }

private:
    CGlobalLock* m_lock;
};
} // namespace GenICam
