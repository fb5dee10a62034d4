// SPDX-License-Identifier: Apache-2.0
// A lock that counts.
#pragma once

#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <pthread.h>

#include <cstdint>

namespace KxApi
{

/// A number of units that threads take and give back. A new lock is fully taken: units have to be given back
/// before the first can be had. Any thread.
class KXSDK_COMMON_API CLockBySemaphore
{
public:
    /// @param nMax number of units. Raises CKxLinuxErrorException when the system has no lock to give.
    explicit CLockBySemaphore(int64_t nMax);
    CLockBySemaphore(const CLockBySemaphore&) = delete;
    CLockBySemaphore& operator=(const CLockBySemaphore&) = delete;
    ~CLockBySemaphore();

    /// Waits for a unit and takes it.
    void Lock() { mLock(1); }
    /// Gives a unit back; nothing when none is taken.
    void Unlock() { mUnlock(1); }

    /// Waits in as many rounds as there are units but one, and takes one unit. With one unit it takes it at
    /// once.
    void LockMaxMinusOne() { mLock(m_nMax - 1); }
    /// Gives up to as many units back as there are but one.
    void UnlockMaxMinusOne() { mUnlock(m_nMax - 1); }

protected:
    /// Waits `n` times until a unit is free (not at all for `n` below 1) and takes one, whatever `n` is.
    void mLock(int64_t n);
    /// Gives back up to `n` units, as many as are taken.
    void mUnlock(int64_t n);

private:
    struct CSemaphore
    {
        pthread_mutex_t mutex;
        pthread_cond_t condition;
    };

    const int64_t m_nMax;
    CSemaphore m_sem;
    int64_t m_nCount; // units taken; guarded by m_sem.mutex
};

} // namespace KxApi
