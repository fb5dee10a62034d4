// SPDX-License-Identifier: Apache-2.0
// Holding a POSIX mutex for the length of a block.
#pragma once

#include <pthread.h>

namespace KxApi
{
namespace Detail
{

class CPosixLock
{
public:
    explicit CPosixLock(pthread_mutex_t& mutex) noexcept
        : m_mutex(mutex)
    {
        pthread_mutex_lock(&m_mutex);
    }
    CPosixLock(const CPosixLock&) = delete;
    CPosixLock& operator=(const CPosixLock&) = delete;
    ~CPosixLock() { pthread_mutex_unlock(&m_mutex); }

private:
    pthread_mutex_t& m_mutex;
};

} // namespace Detail
} // namespace KxApi
