// SPDX-License-Identifier: Apache-2.0
// A background thread that can be asked to stop.
#pragma once

#include <KxSDKCommon/EventObject.h>

#include <atomic>

namespace KxApi
{

/// What the body of a worker looks at between its steps. Any thread.
struct IWorker
{
    /// Whether a stop was asked for, after a pause of up to that time; kWaitInfinite waits for the request.
    virtual bool IsStopRequest(unsigned int nMilliseconds) = 0;

    /// The event behind it, to be waited on together with others; null while it is being destroyed.
    virtual void* GetStopRequestEvent() = 0;

protected:
    ~IWorker() = default;
};

/// Base of a background thread: a subclass does its work in mWork and returns soon after a stop was asked
/// for. Its destructor calls Stop, before the members that mWork uses go.
///
/// States: not started, running, stop requested, and by the end of Stop not started again. Start and Stop:
/// one thread at a time, and never the worker's own.
class KXSDK_COMMON_API CWorker : public IWorker
{
public:
    /// The name is kept, not copied. Raises BadAllocException.
    explicit CWorker(const char* szName);
    CWorker(const CWorker&) = delete;
    CWorker& operator=(const CWorker&) = delete;

    bool IsStopRequest(unsigned int nMilliseconds) override;
    void* GetStopRequestEvent() override;

    virtual ~CWorker();

    /// Asks for the stop and waits for the end of mWork; nothing when no thread exists.
    virtual void Stop();

    /// Starts the thread, after a Stop. Should the system have no thread to give, none runs.
    void Start();

protected:
    /// The work, in the thread of its own. Must not throw.
    virtual int mWork() = 0;

    /// Below 2: priority within the default scheduling; else round robin asked for.
    int m_nPriority = 1;

private:
    static void* ThreadBody(void* pWorker);
    void ApplyPriority();

    const char* const m_szName;
    CEventObject m_objStopRequest;
    std::atomic<bool> m_bRunning{false};
    pthread_t m_hThread = 0;
    // Held by the worker while mWork runs, so that to take it is to wait for the end.
    pthread_mutex_t m_objMutex = PTHREAD_MUTEX_INITIALIZER;
};

} // namespace KxApi
