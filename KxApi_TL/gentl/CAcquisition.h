// SPDX-License-Identifier: Apache-2.0
// One acquisition of a stream, from its start to its end.
#pragma once

#include "CBufferPool.h"
#include "CEventThread.h"
#include "Caught.h"
#include "DeviceControl.h"
#include "FrameCounter.h"

#include <KxSDKCommon/KxMutex.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>

namespace KxApi
{
namespace Detail
{

/// Shared by its stream and, while it runs, by its thread, which does all that happens between start and end:
/// it waits for filled buffers, hands them out, and undoes at last what Start did. When the producer doesn't
/// let the thread go, Stop undoes it.
///
/// Running; ended by Stop, by the last image asked for, or by a failure. Any thread.
class CAcquisition final : public CEventSink,
                           public CBufferTaker,
                           public std::enable_shared_from_this<CAcquisition>
{
public:
    struct CSettings
    {
        uint32_t nBuffers = 0;
        std::shared_ptr<CBufferMemory> memory;
        std::shared_ptr<CChunkView> chunks;
        IKxStreamCallback* pCallback = nullptr; ///< null for images that are fetched
        uint64_t nImages = 0;
    };

    CAcquisition(std::shared_ptr<CStreamHandle> stream, CSettings settings);
    ~CAcquisition() override;

    /// To be called once, before all else. After an exception nothing runs.
    void Start();
    /// As IKxStream::StopAcquisition.
    void Stop();
    bool IsRunning() const;
    /// As IKxStream::FetchImage.
    IKxStreamImageReleasable* Fetch(std::chrono::milliseconds timeout);
    CKxStreamStatistics Statistics() const;

    bool BeforeWait() override;
    bool OnEvent(const CEvent& event) override;
    bool OnIdle() override;
    bool OnFailure(GenTL::GC_ERROR error, int nInRow) override;
    void OnEnd() noexcept override;
    void OnStopRequest() noexcept override;
    void TakeBack(CStreamBuffer& buffer) override;

private:
    using BufferPtr = std::shared_ptr<CStreamBuffer>;

    /// What waits to be fetched: an image, or why there is none.
    struct CReady
    {
        BufferPtr buffer;
        StoredErrorPtr error;
    };

    BufferPtr Received(const CEvent& event);
    bool Process(const CEvent& event);
    bool Use(const BufferPtr& buffer);
    bool Read(CStreamBuffer& buffer);
    void HandToCallback(CStreamBuffer& buffer);
    void MarkHandedOut(CStreamBuffer& buffer);
    void CountFrame(uint64_t frameID);
    void Requeue(CStreamBuffer& buffer);
    GenTL::GC_ERROR QueueLocked(CStreamBuffer& buffer) KXGC_REQUIRES(m_mutex);
    bool RetryRefused();
    void Refuse(const StoredErrorPtr& error);
    void CallOnError(const CStoredError& error, bool bEnded) noexcept;
    bool EndBy(StoredErrorPtr error);
    void TearDown(bool isThreadLeftAlone) noexcept;
    uint64_t Underruns() const;

    const std::shared_ptr<CStreamHandle> m_stream;
    CSettings m_settings;
    CImageDefaults m_defaults;

    // Of the start and the end, which never coincide, and in between of the thread:
    CBufferPool m_pool;
    CDeviceControl m_control;
    bool m_isStreamStarted = false;
    std::unique_ptr<CEventThread> m_thread;

    // Of the thread:
    CFrameCounter m_frames;
    uint64_t m_nToCome;
    int m_nUnusableInRow = 0;
    std::chrono::steady_clock::time_point m_lastSign; // of the device

    /// Guards the states of the buffers as well; held while a buffer is queued; taken last.
    mutable CKxMutex m_mutex;
    std::condition_variable m_changed;
    std::deque<CReady> m_ready KXGC_GUARDED_BY(m_mutex);
    size_t m_nFetching KXGC_GUARDED_BY(m_mutex) = 0;
    size_t m_nNotQueueable KXGC_GUARDED_BY(m_mutex) = 0; // buffers that the producer didn't take back
    int m_nVainRounds KXGC_GUARDED_BY(m_mutex) = 0;      // without any buffer that it takes back
    CKxStreamStatistics m_statistics KXGC_GUARDED_BY(m_mutex);
    bool m_isRunning KXGC_GUARDED_BY(m_mutex) = false;
    bool m_isEnding KXGC_GUARDED_BY(m_mutex) = false; // no buffer is queued any more
    bool m_isTornDown KXGC_GUARDED_BY(m_mutex) = false;
    bool m_isStopAwaited KXGC_GUARDED_BY(m_mutex) = false; // by somebody who is to get m_stopError
    StoredErrorPtr m_failure KXGC_GUARDED_BY(m_mutex);     // by which the acquisition ended
    StoredErrorPtr m_stopError KXGC_GUARDED_BY(m_mutex);
};

} // namespace Detail
} // namespace KxApi
