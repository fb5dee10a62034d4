// SPDX-License-Identifier: Apache-2.0
#include "Recorder.h"

#include "Counted.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxStream.h>

#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <exception>

namespace KxApps
{

namespace
{

double Seconds(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

std::string Text(const char* format, ...) __attribute__((format(printf, 1, 2)));

std::string Text(const char* format, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}

unsigned long long Number(uint64_t value) { return value; }

// Memory is got ready for no more images than will come.
uint64_t CountOf(const RecordingOptions& options)
{
    return options.maxImages > 0 ? options.maxImages : ~uint64_t{0};
}

} // namespace

uint64_t QueueMemory()
{
    constexpr uint64_t kMost = uint64_t{2} << 30;
    const auto pages = static_cast<uint64_t>(std::max(sysconf(_SC_PHYS_PAGES), 0L));
    return std::min(kMost, pages * static_cast<uint64_t>(sysconf(_SC_PAGESIZE)) / 4);
}

std::string RecordingStatus::Report() const
{
    std::string text = Text("%s written, %.1f MB in %.1f s", Counted(written, "image").c_str(),
                            static_cast<double>(writtenBytes) / 1e6, seconds);
    if (lost > 0)
        text += Text(", %llu lost", Number(lost));
    if (incomplete > 0)
        text += Text(", %llu incomplete", Number(incomplete));
    if (empty > 0)
        text += Text(", %llu without an image in them", Number(empty));
    return text;
}

Recorder::Recorder(RecordingOptions options)
    : m_options(std::move(options))
    , m_pool(m_options.memory, m_options.expectedBytes, CountOf(m_options))
    , m_writers(m_options.output.Open())
    , m_running(m_writers.size())
{
    m_status.maxQueuedBytes = m_options.memory;
    for (const auto& writer : m_writers)
        m_threads.emplace_back([this, &writer] { Run(*writer); });
}

Recorder::~Recorder()
{
    Stop();
    for (std::thread& thread : m_threads)
        thread.join();
}

// Counts an image; false when nothing is recorded any more.
bool Recorder::BeginImage(size_t bytes)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (m_status.state != RecordingState::Recording)
        return false;
    m_last = Clock::now();
    if (m_status.come++ == 0)
        m_first = m_end = m_last;
    m_comeBytes += bytes; // written or not: the two rates tell how much is missing
    return true;
}

bool Recorder::Add(KxApi::IKxStreamImage& image)
{
    const size_t bytes = ImagePool::SizeOf(image);
    if (!BeginImage(bytes))
        return false;
    if (bytes == 0) {
        const std::lock_guard<std::mutex> guard(m_mutex);
        ++m_status.empty;
        return false;
    }
    StoredImagePtr copy = m_pool.Copy(image);
    if (copy) {
        Queue(std::move(copy));
        return true;
    }
    const std::lock_guard<std::mutex> guard(m_mutex);
    ++m_status.lost;
    m_status.warning = Warning();
    return false;
}

bool Recorder::Add(StoredImagePtr image)
{
    if (!BeginImage(image->Size()))
        return false;
    Queue(std::move(image));
    return true;
}

void Recorder::Queue(StoredImagePtr image)
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (m_status.state == RecordingState::Failed) { // meanwhile
            ++m_status.lost;
            return;
        }
        m_status.queuedBytes += image->Size();
        m_status.incomplete += image->Notes().isIncomplete ? 1U : 0U;
        m_queue.push_back({std::move(image), m_taken++});
        CheckLimits();
    }
    m_changed.notify_all();
}

void Recorder::CheckLimits()
{
    const bool isFull = (m_options.maxImages > 0 && m_taken >= m_options.maxImages) ||
                        (m_options.maxBytes > 0 && m_comeBytes >= m_options.maxBytes) ||
                        (m_options.maxSeconds > 0 && Seconds(m_last - m_first) >= m_options.maxSeconds);
    if (isFull && m_status.state == RecordingState::Recording)
        m_status.state = RecordingState::Finishing;
}

void Recorder::Stop()
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (m_status.state == RecordingState::Recording)
            m_status.state = RecordingState::Finishing;
    }
    m_changed.notify_all();
}

void Recorder::Cancel()
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_status.lost += m_queue.size();
        m_status.queuedBytes = 0;
        m_queue.clear();
    }
    Stop();
}

bool Recorder::WaitFor(std::chrono::milliseconds time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, time, [this] { return m_running == 0; });
}

RecordingStatus Recorder::Status() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    RecordingStatus status = m_status;
    status.queued = m_queue.size();
    status.writingRate = WritingRate();
    if (status.come > 0) {
        const bool isOver = status.state == RecordingState::Done || status.state == RecordingState::Failed;
        status.seconds = Seconds((isOver ? m_end : Clock::now()) - m_first);
        const double coming = Seconds(m_last - m_first);
        status.comingRate = coming > 0 ? static_cast<double>(m_comeBytes) / coming : 0;
    }
    return status;
}

// The writers work side by side, so that the time they spent tells only together with their number.
double Recorder::WritingRate() const
{
    const double seconds = Seconds(m_writing) / static_cast<double>(m_writers.size());
    return seconds > 0 ? static_cast<double>(m_status.writtenBytes) / seconds : 0;
}

std::string Recorder::Warning() const
{
    const double coming = Seconds(m_last - m_first);
    return Text(
        "'%.120s' is too slow: %.0f MB/s come, %.0f MB/s are written, and the queue of %.0f MB is full",
        m_options.output.name.c_str(), coming > 0 ? static_cast<double>(m_comeBytes) / coming / 1e6 : 0.0,
        WritingRate() / 1e6, static_cast<double>(m_options.memory) / 1e6);
}

bool Recorder::Next(Entry& entry)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_queue.empty() || m_status.state != RecordingState::Recording; });
    if (m_queue.empty())
        return false;
    entry = std::move(m_queue.front());
    m_queue.pop_front();
    return true;
}

void Recorder::Run(ImageWriter& writer)
{
    for (Entry entry; Next(entry); entry.image.reset()) {
        try {
            const Clock::time_point begin = Clock::now();
            const uint64_t bytes = writer.Write(*entry.image, entry.number);
            OnWritten(entry, bytes, Clock::now() - begin);
        } catch (const GenICam::GenericException& e) {
            if (entry.image->IsEncoded() && entry.image->Notes().isIncomplete)
                OnBroken(entry, e); // the next one may be whole
            else
                OnFailure(e);
        } catch (const std::exception& e) {
            OnFailure(RUNTIME_EXCEPTION("%s", e.what()));
        }
    }
    FinishWriters();
}

void Recorder::OnWritten(const Entry& entry, uint64_t bytes, Clock::duration time)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    ++m_status.written;
    m_status.writtenBytes += bytes;
    m_status.queuedBytes -= std::min<uint64_t>(m_status.queuedBytes, entry.image->Size());
    m_writing += time;
    m_end = Clock::now();
}

void Recorder::OnBroken(const Entry& entry, const GenICam::GenericException& error)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    ++m_status.lost;
    --m_status.incomplete; // each is counted once
    m_status.queuedBytes -= std::min<uint64_t>(m_status.queuedBytes, entry.image->Size());
    m_status.warning = Text("image %llu came incomplete and can't be decoded: %s",
                            Number(entry.image->Notes().frameId), error.GetDescription());
    m_end = Clock::now();
}

void Recorder::OnFailure(const GenICam::GenericException& error)
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_status.lost += 1 + m_queue.size();
        m_status.queuedBytes = 0;
        m_queue.clear();
        m_end = Clock::now();
        if (m_status.error.empty())
            m_status.error = m_status.written == 0 ? error.GetDescription()
                                                   : Text("%s; %s before can be read", error.GetDescription(),
                                                          Counted(m_status.written, "image").c_str());
        m_status.state = RecordingState::Failed;
    }
    m_changed.notify_all();
}

// The last one out.
void Recorder::FinishWriters()
{
    bool isFailed = false;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (m_running > 1) {
            --m_running;
            return;
        }
        isFailed = m_status.state == RecordingState::Failed;
    }
    if (!isFailed) {
        try {
            for (const auto& writer : m_writers)
                writer->Finish();
        } catch (const GenICam::GenericException& e) {
            OnFailure(e);
            --m_status.lost; // no image is missing
        }
    }
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_end = Clock::now();
        if (m_status.state != RecordingState::Failed)
            m_status.state = RecordingState::Done;
        m_running = 0;
    }
    m_changed.notify_all();
}

} // namespace KxApps
