// SPDX-License-Identifier: Apache-2.0
#include "PosixLock.h"

#include <KxSDKCommon/CLockBySemaphore.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <cerrno>
#include <cstring>

namespace KxApi
{

CLockBySemaphore::CLockBySemaphore(int64_t nMax)
    : m_nMax(nMax)
    , m_sem()
    , m_nCount(nMax)
{
    if (const int nError = pthread_mutex_init(&m_sem.mutex, nullptr))
        throw KX_LINUX_ERROR_EXCEPTION(nError, "pthread_mutex_init",
                                       "0 != pthread_mutex_init(&m_sem.mutex) [Error=0x%x %s]",
                                       static_cast<unsigned int>(nError), std::strerror(nError));
    if (const int nError = pthread_cond_init(&m_sem.condition, nullptr)) {
        pthread_mutex_destroy(&m_sem.mutex);
        throw KX_LINUX_ERROR_EXCEPTION(nError, "pthread_cond_init",
                                       "0 != pthread_cond_init(&m_sem.condition) [Error=0x%x %s]",
                                       static_cast<unsigned int>(nError), std::strerror(nError));
    }
}

CLockBySemaphore::~CLockBySemaphore()
{
    pthread_cond_destroy(&m_sem.condition);
    pthread_mutex_destroy(&m_sem.mutex);
}

void CLockBySemaphore::mLock(int64_t n)
{
    const Detail::CPosixLock lock(m_sem.mutex);
    for (int64_t i = 0; i < n; ++i) {
        while (m_nCount >= m_nMax) {
            const int nError = pthread_cond_wait(&m_sem.condition, &m_sem.mutex);
            if (nError != 0 && nError != EINTR)
                break;
        }
    }
    ++m_nCount;
}

void CLockBySemaphore::mUnlock(int64_t n)
{
    for (int64_t i = 0; i < n; ++i) {
        {
            const Detail::CPosixLock lock(m_sem.mutex);
            if (m_nCount <= 0)
                return;
            --m_nCount;
        }
        pthread_cond_signal(&m_sem.condition);
    }
}

} // namespace KxApi
