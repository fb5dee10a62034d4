// SPDX-License-Identifier: Apache-2.0
#include "PosixLock.h"

#include <KxSDKCommon/Worker.h>

#include <sched.h>

#include <algorithm>
#include <cstdint>

namespace KxApi
{

CWorker::CWorker(const char* szName)
    : m_szName(szName)
    , m_objStopRequest(nullptr, true, false, nullptr)
{
    static_cast<void>(m_szName);
}

CWorker::~CWorker() { CWorker::Stop(); }

bool CWorker::IsStopRequest(unsigned int nMilliseconds)
{
    return WaitForSingleObject(GetStopRequestEvent(), nMilliseconds) == 0;
}

void* CWorker::GetStopRequestEvent() { return m_objStopRequest.IsDestroying() ? nullptr : &m_objStopRequest; }

void CWorker::Start()
{
    Stop();
    m_objStopRequest.ResetEvent();
    pthread_t hThread = 0;
    if (pthread_create(&hThread, nullptr, &CWorker::ThreadBody, this) != 0)
        return; // the handle is undefined then
    m_hThread = hThread;
    ApplyPriority();
}

void CWorker::ApplyPriority()
{
    const auto clamp = [this](int nPolicy) {
        return std::clamp(m_nPriority, sched_get_priority_min(nPolicy), sched_get_priority_max(nPolicy));
    };
    if (m_nPriority < 2) {
        int nPolicy = SCHED_OTHER;
        pthread_attr_t attributes;
        if (pthread_attr_init(&attributes) == 0) {
            pthread_attr_getschedpolicy(&attributes, &nPolicy);
            pthread_attr_destroy(&attributes);
        }
        pthread_setschedprio(m_hThread, clamp(nPolicy));
        return;
    }
    m_nPriority = clamp(SCHED_RR);
    sched_param parameter{};
    parameter.sched_priority = m_nPriority;
    // The handle isn't a process id, so the system refuses this and the thread keeps its scheduling.
    sched_setscheduler(static_cast<pid_t>(static_cast<uint32_t>(m_hThread)), SCHED_RR, &parameter);
}

void* CWorker::ThreadBody(void* pWorker)
{
    auto& worker = *static_cast<CWorker*>(pWorker);
    const Detail::CPosixLock lock(worker.m_objMutex);
    worker.m_bRunning = true;
    worker.mWork();
    worker.m_bRunning = false;
    return nullptr;
}

void CWorker::Stop()
{
    if (m_hThread == 0)
        return;
    m_objStopRequest.SetEvent();
    pthread_join(m_hThread, nullptr);
    const Detail::CPosixLock lock(m_objMutex);
    m_hThread = 0;
}

} // namespace KxApi
