// SPDX-License-Identifier: Apache-2.0
// Saving the images of an acquisition while it runs.
#pragma once

#include "ImageWriter.h"
#include "StoredImage.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace KxApps
{

/// Bytes that a queue may have on this machine: a quarter of its memory, 2 GiB at most.
uint64_t QueueMemory();

struct RecordingOptions
{
    ImageOutput output;
    uint64_t memory = QueueMemory(); ///< bytes of the images that wait to be written
    size_t expectedBytes = 0;        ///< of an image, such as the stream's payload size; 0 if not known
    uint64_t maxImages = 0;          ///< ends the recording, as the next two do; 0 for no limit
    double maxSeconds = 0;
    uint64_t maxBytes = 0; ///< of images, as they come
};

enum class RecordingState
{
    Recording, ///< images are taken
    Finishing, ///< those that wait are written
    Done,
    Failed, ///< an error ended it; what was written before is there
};

/// How a recording goes.
struct RecordingStatus
{
    RecordingState state = RecordingState::Recording;
    uint64_t come = 0; ///< images that Add was given while it recorded, all that follow included
    uint64_t written = 0;
    uint64_t lost = 0;       ///< the queue was full, or the recording failed before they were written
    uint64_t empty = 0;      ///< images without anything to save
    uint64_t incomplete = 0; ///< of those that were taken
    uint64_t queued = 0;     ///< images that wait
    uint64_t queuedBytes = 0;
    uint64_t maxQueuedBytes = 0;
    uint64_t writtenBytes = 0;
    double seconds = 0;     ///< since the first image, until the last one was written
    double comingRate = 0;  ///< bytes a second, from the first image to the last one
    double writingRate = 0; ///< bytes a second of all writers while they wrote
    std::string warning;    ///< why single images were lost; empty when none was
    std::string error;      ///< what ended a failed recording

    /// What became of it, in a sentence.
    std::string Report() const;
    /// Why images are missing: the error or the warning, empty without either.
    const std::string& Cause() const { return error.empty() ? warning : error; }
};

/// Writes images in threads of its own. Any thread.
class Recorder
{
public:
    /// Raises what the output objects to, with the path.
    explicit Recorder(RecordingOptions options);
    /// As Stop and Wait.
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Copies an image into the queue. Never waits for the disk: false when the image isn't taken, since the
    /// queue is full, nothing is recorded any more or there is nothing in it. Raises what copying raises.
    bool Add(KxApi::IKxStreamImage& image);
    /// Queues an image that is in memory already, whatever the queue's limit.
    bool Add(StoredImagePtr image);

    /// Takes no more images; those that wait are written.
    void Stop();
    /// Forgets the images that wait, too.
    void Cancel();
    /// Waits until all is written after Stop, a limit, or a failure; false when the time is over before.
    bool WaitFor(std::chrono::milliseconds time);

    RecordingStatus Status() const;
    const std::string& Output() const { return m_options.output.name; }

private:
    using Clock = std::chrono::steady_clock;
    struct Entry
    {
        StoredImagePtr image;
        uint64_t number;
    };

    bool BeginImage(size_t bytes);
    void Queue(StoredImagePtr image);
    void CheckLimits();
    void Run(ImageWriter& writer);
    bool Next(Entry& entry);
    void OnWritten(const Entry& entry, uint64_t bytes, Clock::duration time);
    void OnBroken(const Entry& entry, const GenICam::GenericException& error);
    void OnFailure(const GenICam::GenericException& error);
    void FinishWriters();
    double WritingRate() const;
    std::string Warning() const;

    const RecordingOptions m_options;
    ImagePool m_pool;
    std::vector<std::unique_ptr<ImageWriter>> m_writers;

    mutable std::mutex m_mutex; // for all that follows; never held while an image is copied or written
    mutable std::condition_variable m_changed;
    std::deque<Entry> m_queue;
    RecordingStatus m_status;
    uint64_t m_taken = 0;
    uint64_t m_comeBytes = 0;
    Clock::time_point m_first, m_last, m_end; // images that came; the last writing
    Clock::duration m_writing{};              // time that writers spent, added up
    size_t m_running = 0;                     // writers
    std::vector<std::thread> m_threads;
};

} // namespace KxApps
