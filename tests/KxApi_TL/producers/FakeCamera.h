// SPDX-License-Identifier: Apache-2.0
// A producer with one camera, which a test in the same process leads by the hand: it decides when an image
// comes, what the producer tells of it, and which function fails.
#pragma once

#include "FakeAnswers.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace KxTest
{

/// An event that waits: of the kind for buffers with the handle as ID.
struct FakeEvent
{
    FakeInfo id;
    FakeInfo value;
};

struct FakeEventQueue
{
    std::deque<FakeEvent> events;
    bool isKilled = false;
};

/// A part of what a buffer holds, at so many bytes from its beginning.
struct FakePart
{
    ptrdiff_t place;
    FakeInfos infos;
};
using FakeParts = std::vector<FakePart>;

struct FakeBuffer
{
    void* base = nullptr;
    size_t size = 0;
    bool isQueued = false;
    FakeInfos infos;
    FakeParts parts;
    std::vector<uint8_t> owned; // memory of the producer's
};

/// Registers of the camera.
enum FakeRegister : uint64_t
{
    kFakeWidth = 0x100,
    kFakeHeight = 0x104,
    kFakePixelFormat = 0x108,
    kFakePayloadSize = 0x10C,
    kFakeLock = 0x110,
    kFakeStart = 0x114,
    kFakeStop = 0x118,
    kFakeGain = 0x11C,
};

class FakeCamera
{
public:
    std::mutex mutex; // guards all but the atomic members
    std::condition_variable changed;

    // What is wrong:
    std::map<std::string, int32_t> errors; ///< functions that fail, with their errors
    FakeInfos bufferInfos;                 ///< in place of what would be told
    FakeInfos streamInfos;
    FakeInfos deviceInfos;
    std::map<char, std::string> descriptions; ///< of the modules 'r'emote, 'l'ocal, 's'tream, instead of ours
    std::atomic<bool> isHanging{false};       ///< waits for events neither time out nor can be killed
    std::atomic<int> hangingCount{0};         ///< of these waits
    std::atomic<bool> isUnplugged{false};
    std::map<char, std::vector<std::string>> urls; ///< of the modules' descriptions, instead of ours
    std::map<uint64_t, size_t> shortReads;         ///< registers of which so few bytes come
    size_t eventSize = sizeof(GenTL::EVENT_NEW_BUFFER_DATA); ///< bytes of a new-buffer event

    // What is:
    std::map<uint64_t, uint32_t> registers{
        {kFakeWidth, 64}, {kFakeHeight, 48}, {kFakePayloadSize, 4096}, {kFakePixelFormat, 0x01080001},
        {kFakeLock, 0},   {kFakeStart, 0},   {kFakeStop, 0},           {kFakeGain, 7}};
    int32_t access = 0; ///< that the device is open for; 0 when it is closed
    bool isStreamOpen = false;
    bool isStarted = false;
    uint64_t underruns = 0;
    uint64_t frameID = 1;                                      ///< of the next image
    std::vector<std::string> log;                              ///< what happened, in order
    std::map<std::pair<char, int32_t>, FakeEventQueue> queues; ///< by module and kind
    std::deque<FakeBuffer> buffers;                            ///< those that were ever announced
    std::deque<FakeBuffer*> input;
    std::vector<GenTL::SINGLE_CHUNK_DATA> chunks; ///< of each image
    std::vector<uint8_t> content;                 ///< of each image, instead of its frame ID

    /// Puts an image of the present size into the next buffer; false when there is none.
    bool Deliver(FakeInfos infos = {}, FakeParts parts = {})
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const uint64_t id = frameID++;
        if (!isStarted || input.empty()) {
            ++underruns;
            return false;
        }
        FakeBuffer& buffer = *input.front();
        input.pop_front();
        buffer.isQueued = false;
        std::memcpy(buffer.base, &id, std::min(buffer.size, sizeof(id)));
        std::copy_n(content.data(), std::min(buffer.size, content.size()),
                    static_cast<uint8_t*>(buffer.base));
        buffer.infos = std::move(infos);
        buffer.parts = std::move(parts);
        buffer.infos.emplace(GenTL::BUFFER_INFO_FRAMEID, ToldU64(id));
        PushLocked('s', GenTL::EVENT_NEW_BUFFER,
                   {Told<void*>(&buffer, GenTL::INFO_DATATYPE_PTR), Told<void*>(nullptr, 10)});
        return true;
    }

    void Push(char module, int32_t kind, FakeEvent event)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        PushLocked(module, kind, std::move(event));
    }

    void Set(const std::string& function, int32_t error)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        errors[function] = error;
    }
    uint32_t Register(uint64_t address)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return registers[address];
    }
    size_t QueuedCount()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return input.size();
    }
    std::vector<std::string> TakeLog()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return std::exchange(log, {});
    }
    /// Ends the hanging of all waits.
    void LetGo()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isHanging = false;
        changed.notify_all();
    }

private:
    void PushLocked(char module, int32_t kind, FakeEvent event)
    {
        const auto place = queues.find({module, kind});
        if (place == queues.end())
            return;
        place->second.events.push_back(std::move(event));
        changed.notify_all();
    }
};

} // namespace KxTest

/// The camera of the loaded producer, to be looked up in its file.
extern "C" __attribute__((visibility("default"))) KxTest::FakeCamera* KxFakeCamera();
