// SPDX-License-Identifier: Apache-2.0

#include "CAcquisition.h"

#include "GenTLInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <GenApi/INodeMap.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

using Clock = std::chrono::steady_clock;
using State = CStreamBuffer::EState;

/// Without an image for so long, the device is asked whether it is still there.
constexpr auto kQuietTime = std::chrono::seconds(1);
/// Rounds of waiting in which a producer that has no buffer takes none back, until it is given up.
constexpr int kMaxVainRounds = 4;

GenApi::INodeMap& RemoteMap(const CStreamHandle& stream)
{
    return *stream.Device()->GetIKxRemotePort()->GetINodeMap();
}

} // namespace

CAcquisition::CAcquisition(std::shared_ptr<CStreamHandle> stream, CSettings settings)
    : m_stream(std::move(stream))
    , m_settings(std::move(settings))
    , m_pool(m_stream)
    , m_control(RemoteMap(*m_stream))
    , m_nToCome(m_settings.nImages)
{}

CAcquisition::~CAcquisition() = default;

void CAcquisition::Start()
{
    CKxGenTLLib& lib = m_stream->Lib();
    const char* const szStream = m_stream->ID().c_str();
    try {
        const GenApi::INodeMap& map = RemoteMap(*m_stream);
        m_control.Lock();
        m_defaults = ReadImageDefaults(map, m_stream->Device()->TickNs());
        m_pool.Announce(m_settings.nBuffers, PayloadSize(*m_stream, map), m_settings.memory,
                        m_settings.chunks);
        m_thread = std::make_unique<CEventThread>(m_stream->Device()->Lib(), m_stream->Get(),
                                                  GenTL::EVENT_NEW_BUFFER, szStream);
        // Endless whatever is asked for, since buffers that can't be used don't count.
        CheckGenTL(lib,
                   lib.DSStartAcquisition(m_stream->Get(), GenTL::ACQ_START_FLAGS_DEFAULT, GENTL_INFINITE),
                   "DSStartAcquisition", szStream);
        m_isStreamStarted = true;
        m_control.Start();
        {
            const CKxMutexLock lock(m_mutex);
            m_isRunning = true;
        }
        m_lastSign = Clock::now();
        m_thread->Start(shared_from_this(), "KxStream");
    } catch (...) {
        TearDown(false);
        throw;
    }
}

void CAcquisition::Stop()
{
    if (m_thread->IsOwnThread()) {
        m_thread->RequestStop();
        return;
    }
    bool wasRunning = false;
    {
        const CKxMutexLock lock(m_mutex);
        wasRunning = m_isRunning;
        m_isStopAwaited = true;
    }
    const bool isThreadOver = m_thread->Stop();
    if (!isThreadOver)
        TearDown(true);
    std::deque<CReady> unwanted;
    StoredErrorPtr error;
    {
        const CKxMutexLock lock(m_mutex);
        unwanted.swap(m_ready);
        error = std::exchange(m_stopError, nullptr);
    }
    if (!isThreadOver && wasRunning)
        throw RUNTIME_EXCEPTION(
            "The producer does not return from EventGetData of stream '%s'; its thread is "
            "left alone",
            m_stream->ID().c_str());
    if (error)
        error->Raise();
}

bool CAcquisition::IsRunning() const
{
    const CKxMutexLock lock(m_mutex);
    return m_isRunning;
}

IKxStreamImageReleasable* CAcquisition::Fetch(std::chrono::milliseconds timeout)
{
    if (m_settings.pCallback)
        throw LOGICAL_ERROR_EXCEPTION("The images of stream '%s' go to a callback", m_stream->ID().c_str());
    const auto end = Clock::now() + timeout;
    CKxMutexLock lock(m_mutex);
    ++m_nFetching;
    m_changed.notify_all();
    while (m_ready.empty() && m_isRunning && lock.WaitUntil(m_changed, end)) {
        // Woken for nothing.
    }
    --m_nFetching;
    if (m_ready.empty()) {
        if (m_failure)
            m_failure->Raise();
        return nullptr;
    }
    CReady ready = std::move(m_ready.front());
    m_ready.pop_front();
    m_changed.notify_all();
    lock.Unlock();
    if (ready.error)
        ready.error->Raise();
    MarkHandedOut(*ready.buffer);
    try {
        ready.buffer->AttachChunkData();
    } catch (const GenICam::GenericException&) {
        // The image counts for more; AttachChunkData tells it to whom it concerns.
    }
    return ready.buffer->HandOut(weak_from_this());
}

CKxStreamStatistics CAcquisition::Statistics() const
{
    CKxStreamStatistics statistics;
    bool isTornDown = false;
    {
        const CKxMutexLock lock(m_mutex);
        statistics = m_statistics;
        isTornDown = m_isTornDown;
    }
    if (!isTornDown)
        statistics.nUnderrun = Underruns();
    return statistics;
}

uint64_t CAcquisition::Underruns() const
{
    return static_cast<uint64_t>(std::max<int64_t>(m_stream->Info(GenTL::STREAM_INFO_NUM_UNDERRUN, 0), 0));
}

bool CAcquisition::BeforeWait()
{
    if (m_settings.pCallback)
        return true;
    // One image ahead, so that a fetch without wait finds it, and no more: which images are dropped when
    // nobody fetches them is for the producer to decide.
    CKxMutexLock lock(m_mutex);
    while (!m_isEnding && m_ready.size() >= std::max<size_t>(m_nFetching, 1))
        lock.Wait(m_changed);
    return !m_isEnding;
}

CAcquisition::BufferPtr CAcquisition::Received(const CEvent& event)
{
    GenTL::BUFFER_HANDLE hBuffer = nullptr; // the first member of the event's data
    if (event.size < sizeof(hBuffer))
        throw RUNTIME_EXCEPTION("New-buffer event of %zu bytes; Min = %zu", event.size, sizeof(hBuffer));
    std::memcpy(&hBuffer, event.data, sizeof(hBuffer));
    BufferPtr buffer = m_pool.Find(hBuffer);
    if (!buffer)
        throw RUNTIME_EXCEPTION("The producer delivered buffer %p, which was never announced", hBuffer);
    const CKxMutexLock lock(m_mutex);
    if (buffer->eState != State::Queued)
        throw RUNTIME_EXCEPTION("The producer delivered buffer %p, which it did not have", hBuffer);
    buffer->eState = State::Waiting;
    return buffer;
}

bool CAcquisition::OnEvent(const CEvent& event)
{
    try {
        return Process(event);
    } catch (...) {
        return EndBy(StoreCaught()); // there is no memory
    }
}

bool CAcquisition::Process(const CEvent& event)
{
    BufferPtr buffer;
    try {
        buffer = Received(event);
    } catch (const GenICam::GenericException&) {
        if (++m_nUnusableInRow >= kMaxFailuresInRow)
            return EndBy(StoreCaught());
        Refuse(StoreCaught());
        return true;
    }
    m_nUnusableInRow = 0;
    m_lastSign = Clock::now();
    const bool isUsed = Use(buffer);
    if (!RetryRefused())
        return false;
    return !isUsed || m_nToCome == kKxEndless || --m_nToCome > 0;
}

bool CAcquisition::Use(const BufferPtr& buffer)
{
    if (!Read(*buffer)) {
        Requeue(*buffer);
        return false;
    }
    if (m_settings.pCallback) {
        HandToCallback(*buffer);
        Requeue(*buffer);
    } else {
        const CKxMutexLock lock(m_mutex);
        m_ready.push_back({buffer, nullptr});
        m_changed.notify_all();
    }
    return true;
}

void CAcquisition::CountFrame(uint64_t frameID)
{
    const uint64_t nMissing = m_frames.Missing(frameID);
    if (nMissing > 0) {
        const CKxMutexLock lock(m_mutex);
        m_statistics.nLost += nMissing;
    }
}

bool CAcquisition::Read(CStreamBuffer& buffer)
{
    CBufferAtProducer atProducer{m_stream->Lib(), m_stream->Get(), buffer.hBuffer, buffer.Base(),
                                 buffer.Size()};
    AskFirst(atProducer);
    if (!IsFilled(atProducer))
        return false;
    try {
        buffer.ReadContent(atProducer, m_defaults);
        if (buffer.Content().isEmpty) {
            const CKxMutexLock lock(m_mutex);
            ++m_statistics.nRefused;
            return false;
        }
        // What came before the first image of this acquisition was of another one.
        CountFrame(buffer.Content().frameID);
    } catch (const GenICam::GenericException&) {
        if (m_frames.HasBegun())
            CountFrame(ReadFrameID(atProducer)); // it did arrive
        Refuse(StoreCaught());
        return false;
    }
    try {
        buffer.ReadChunkList(atProducer);
    } catch (const GenICam::GenericException&) {
        CallOnError(*StoreCaught(), false); // the image is there all the same
    }
    return true;
}

void CAcquisition::MarkHandedOut(CStreamBuffer& buffer)
{
    const CKxMutexLock lock(m_mutex);
    buffer.eState = State::HandedOut;
    ++m_statistics.nDelivered;
    if (buffer.IsIncomplete())
        ++m_statistics.nIncomplete;
}

void CAcquisition::HandToCallback(CStreamBuffer& buffer)
{
    try {
        buffer.AttachChunkData();
    } catch (const GenICam::GenericException&) {
        CallOnError(*StoreCaught(), false);
    }
    MarkHandedOut(buffer);
    try {
        m_settings.pCallback->OnImage(&buffer);
    } catch (...) {
        {
            const CKxMutexLock lock(m_mutex);
            ++m_statistics.nCallbackErrors;
        }
        const GenICam::gcstring text = TextOfCaught();
        CallOnError(
            *Store(RUNTIME_EXCEPTION("The callback raised with image %llu: %s",
                                     static_cast<unsigned long long>(buffer.GetFrameID()), text.c_str())),
            false);
    }
    buffer.DetachChunkData();
}

void CAcquisition::TakeBack(CStreamBuffer& buffer) { Requeue(buffer); }

GenTL::GC_ERROR CAcquisition::QueueLocked(CStreamBuffer& buffer)
{
    const GenTL::GC_ERROR error = m_stream->Lib().DSQueueBuffer(m_stream->Get(), buffer.hBuffer);
    const bool wasRefused = buffer.eState == State::Refused;
    buffer.eState = error == GenTL::GC_ERR_SUCCESS ? State::Queued : State::Refused;
    if (error == GenTL::GC_ERR_SUCCESS && wasRefused)
        --m_nNotQueueable;
    if (error != GenTL::GC_ERR_SUCCESS && !wasRefused)
        ++m_nNotQueueable;
    return error;
}

void CAcquisition::Requeue(CStreamBuffer& buffer)
{
    const CKxMutexLock lock(m_mutex);
    buffer.eState = State::Idle;
    if (!m_isEnding)
        QueueLocked(buffer); // one that is refused is tried again later
}

/// Tries once more to give back what the producer didn't take; false when it takes nothing any more.
bool CAcquisition::RetryRefused()
{
    const CKxMutexLock lock(m_mutex);
    if (m_nNotQueueable == 0 || m_isEnding)
        return true;
    GenTL::GC_ERROR error = GenTL::GC_ERR_SUCCESS;
    for (const auto& [hBuffer, buffer] : m_pool.All()) {
        if (buffer->eState == State::Refused)
            error = QueueLocked(*buffer);
    }
    m_nVainRounds = m_nNotQueueable == m_pool.Count() ? m_nVainRounds + 1 : 0;
    if (m_nVainRounds < kMaxVainRounds)
        return true;
    m_failure = Store(KX_GENTL_ERROR_EXCEPTION(
        &m_stream->Lib(), static_cast<GenTL::GC_ERROR_LIST>(error), "DSQueueBuffer",
        "%d = DSQueueBuffer of '%s', which takes no buffer back any more", error, m_stream->ID().c_str()));
    return false;
}

void CAcquisition::Refuse(const StoredErrorPtr& error)
{
    {
        const CKxMutexLock lock(m_mutex);
        ++m_statistics.nRefused;
        if (!m_settings.pCallback) {
            m_ready.push_back({nullptr, error});
            m_changed.notify_all();
        }
    }
    CallOnError(*error, false);
}

void CAcquisition::CallOnError(const CStoredError& error, bool bEnded) noexcept
{
    if (!m_settings.pCallback)
        return;
    try {
        m_settings.pCallback->OnError(error.Get(), bEnded);
    } catch (...) {
        const CKxMutexLock lock(m_mutex);
        ++m_statistics.nCallbackErrors;
    }
}

bool CAcquisition::OnIdle()
{
    CTransportDevice& device = *m_stream->Device();
    bool isLost = device.IsLost();
    if (!isLost && Clock::now() - m_lastSign > kQuietTime) {
        m_lastSign = Clock::now();
        isLost = device.CheckLost();
    }
    if (!isLost)
        return RetryRefused();
    return EndBy(Store(RUNTIME_EXCEPTION("Device '%s' does not answer any more",
                                         device.GetIKxDeviceInfo()->GetDisplayName().c_str())));
}

bool CAcquisition::OnFailure(GenTL::GC_ERROR error, int nInRow)
{
    const bool isHopeless = error == GenTL::GC_ERR_INVALID_HANDLE || error == GenTL::GC_ERR_NOT_INITIALIZED ||
                            nInRow >= kMaxFailuresInRow;
    if (!isHopeless)
        return true;
    const StoredErrorPtr failure = Store(
        KX_GENTL_ERROR_EXCEPTION(&m_stream->Lib(), static_cast<GenTL::GC_ERROR_LIST>(error), "EventGetData",
                                 "%d = EventGetData of stream '%s'", error, m_stream->ID().c_str()));
    m_stream->Device()->CheckLost();
    return EndBy(failure);
}

bool CAcquisition::EndBy(StoredErrorPtr error)
{
    const CKxMutexLock lock(m_mutex);
    if (!m_failure)
        m_failure = std::move(error);
    return false;
}

void CAcquisition::OnStopRequest() noexcept
{
    const CKxMutexLock lock(m_mutex);
    m_isEnding = true;
    m_changed.notify_all();
}

void CAcquisition::OnEnd() noexcept
{
    TearDown(false);
    StoredErrorPtr error;
    {
        const CKxMutexLock lock(m_mutex);
        error = m_failure;
        // Without a callback nobody would hear of it but StopAcquisition.
        if (!error && !m_isStopAwaited && m_settings.pCallback)
            error = std::exchange(m_stopError, nullptr);
    }
    if (error)
        CallOnError(*error, true);
}

void CAcquisition::TearDown(bool isThreadLeftAlone) noexcept
{
    {
        const CKxMutexLock lock(m_mutex);
        if (std::exchange(m_isTornDown, true))
            return;
        m_isEnding = true;
        m_changed.notify_all();
    }
    const bool isLost = m_stream->Device()->IsLost();
    StoredErrorPtr firstError;
    const auto step = [&](auto&& undo) {
        try {
            undo();
        } catch (...) {
            if (!firstError && !isLost) // of a device that is gone nothing else is to be expected
                firstError = StoreCaught();
        }
    };
    CKxGenTLLib& lib = m_stream->Lib();
    const GenTL::DS_HANDLE hStream = m_stream->Get();
    step([this] { m_control.Stop(); });
    const uint64_t nUnderrun = Underruns();
    if (m_isStreamStarted) {
        step([&] {
            const GenTL::GC_ERROR error = lib.DSStopAcquisition(hStream, GenTL::ACQ_STOP_FLAGS_DEFAULT);
            if (error != GenTL::GC_ERR_SUCCESS)
                lib.DSStopAcquisition(hStream, GenTL::ACQ_STOP_FLAGS_KILL);
            CheckGenTL(lib, error, "DSStopAcquisition", m_stream->ID().c_str());
        });
    }
    lib.DSFlushQueue(hStream, GenTL::ACQ_QUEUE_ALL_DISCARD);
    m_pool.Revoke(isThreadLeftAlone);
    m_settings.memory.reset(); // the allocator is to be told when the last buffer is gone
    if (m_thread)
        m_thread->Unregister();
    step([this] { m_control.Unlock(); });
    const CKxMutexLock lock(m_mutex);
    m_statistics.nUnderrun = nUnderrun;
    m_stopError = firstError;
    m_isRunning = false;
    m_changed.notify_all();
}

} // namespace Detail
} // namespace KxApi
