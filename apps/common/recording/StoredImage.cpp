// SPDX-License-Identifier: Apache-2.0
#include "StoredImage.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/KxApi_TL.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

using namespace KxApi;

namespace KxApps
{

namespace
{

constexpr size_t kKeptReady = 8; // images of memory that wait for use while there may be more

const IKxPixelFormatInfoInside& InfoOf(const IKxImage& image)
{
    return dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfo(image.GetImagePixelFormat()));
}

size_t BytesOf(const IKxImage& image)
{
    return InfoOf(image).GetImageSize(image.GetImageHeight(), image.GetImageLinePitch());
}

// What stands between the lines of a copy is whatever the memory held before, and must not get into files.
void ClearBetweenLines(const IKxImage& image)
{
    const IKxPixelFormatInfoInside& info = InfoOf(image);
    const size_t pitch = image.GetImageLinePitch(), used = info.GetLinePitch(image.GetImageWidth(), 1);
    if (info.GetPlaneCount() > 1 || pitch == used)
        return;
    auto* line = static_cast<uint8_t*>(image.GetImageBuffer());
    for (size_t y = 0; y < image.GetImageHeight(); ++y, line += pitch)
        std::memset(line + used, 0, pitch - used);
}

uint64_t Now()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

} // namespace

StoredImage::StoredImage(size_t capacity)
    : m_buffer(CreateIKxImageBuffer(nullptr))
    , m_capacity(capacity)
{
    m_buffer->CreateBuffer(capacity, 1, KxPixelFormat_Mono8, KxMemoryInitialization_Zero);
}

void StoredImage::Copy(IKxStreamImage& image)
{
    m_notes = {image.GetFrameID(), image.GetTimestampNs(), Now(), image.IsIncomplete()};
    m_isEncoded = image.GetEncodedSize() > 0;
    if (m_isEncoded) {
        m_buffer->SetSize(image.GetEncodedSize(), 1, KxPixelFormat_Mono8, 1);
        std::memcpy(Image().GetImageBuffer(), image.GetEncodedData(), image.GetEncodedSize());
    } else {
        m_buffer->CopyImage(&image);
        ClearBetweenLines(Image());
    }
    m_capacity = std::max(m_capacity, Size());
}

const uint8_t* StoredImage::Data() const { return static_cast<const uint8_t*>(Image().GetImageBuffer()); }

size_t StoredImage::Size() const { return BytesOf(Image()); }

struct ImagePool::State
{
    using Slot = std::unique_ptr<StoredImage>;

    explicit State(uint64_t bytes)
        : maxBytes(bytes)
    {}

    /// Free memory of at least that size, or room for new memory, which is counted as used: then `isNew`.
    /// Neither when all is used.
    Slot Take(size_t bytes, bool& isNew)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        // From the end: what was let go of last is in the processor's memory still.
        const auto found = std::find_if(free.rbegin(), free.rend(),
                                        [bytes](const Slot& slot) { return slot->m_capacity >= bytes; });
        if (found != free.rend()) {
            Slot slot = std::move(*found);
            free.erase(std::next(found).base());
            freeChanged.notify_one();
            return slot;
        }
        // Images have become larger: the smaller ones' memory makes room.
        while (usedBytes + bytes > maxBytes && !free.empty()) {
            usedBytes -= free.back()->m_capacity;
            free.pop_back();
        }
        isNew = Reserve(bytes);
        return nullptr;
    }
    bool Reserve(size_t bytes)
    {
        if (usedBytes + bytes > maxBytes)
            return false;
        usedBytes += bytes;
        return true;
    }
    void GiveBack(Slot slot)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        free.push_back(std::move(slot));
    }
    void Forget(size_t bytes)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        usedBytes -= bytes;
    }

    const CKxApiAutoInitTerm sdk; // buffers need it
    const uint64_t maxBytes;
    std::mutex mutex;
    std::condition_variable freeChanged;
    uint64_t usedBytes = 0; // of all memory, free or not
    std::vector<Slot> free;
};

/// The thread that keeps memory ready.
class ImagePool::Filler
{
public:
    Filler(std::shared_ptr<State> state, size_t bytes, uint64_t count)
        : m_state(std::move(state))
        , m_bytes(bytes)
        , m_left(count)
        , m_thread([this] { Run(); })
    {}
    ~Filler()
    {
        {
            const std::lock_guard<std::mutex> guard(m_state->mutex);
            m_isStopped = true;
        }
        m_state->freeChanged.notify_one();
        m_thread.join();
    }
    Filler(const Filler&) = delete;
    Filler& operator=(const Filler&) = delete;

private:
    void Run()
    {
        std::unique_lock<std::mutex> lock(m_state->mutex);
        while (m_left > 0) {
            m_state->freeChanged.wait(lock,
                                      [this] { return m_isStopped || m_state->free.size() < kKeptReady; });
            if (m_isStopped || !m_state->Reserve(m_bytes))
                return;
            lock.unlock();
            State::Slot slot = Made();
            lock.lock();
            if (!slot) {
                m_state->usedBytes -= m_bytes;
                return; // whoever needs memory meets the same lack, and tells it
            }
            m_state->free.insert(m_state->free.begin(), std::move(slot)); // the warm ones first
            --m_left;
        }
    }
    State::Slot Made() const
    {
        try {
            return State::Slot(new StoredImage(m_bytes));
        } catch (const GenICam::GenericException&) {
            return nullptr;
        }
    }

    const std::shared_ptr<State> m_state;
    const size_t m_bytes;
    uint64_t m_left; // images of memory still to be made
    bool m_isStopped = false;
    std::thread m_thread; // last: it uses the others
};

ImagePool::ImagePool(uint64_t maxBytes, size_t expectedBytes, uint64_t maxImages)
    : m_state(std::make_shared<State>(maxBytes))
    , m_filler(expectedBytes > 0 ? std::make_unique<Filler>(m_state, expectedBytes, maxImages) : nullptr)
{}

ImagePool::~ImagePool() = default;

uint64_t ImagePool::MaxBytes() const { return m_state->maxBytes; }

size_t ImagePool::SizeOf(IKxStreamImage& image)
{
    if (image.GetEncodedSize() > 0)
        return image.GetEncodedSize();
    return image.GetImageBuffer() ? BytesOf(image) : 0;
}

StoredImagePtr ImagePool::Copy(IKxStreamImage& image)
{
    const size_t bytes = SizeOf(image);
    bool isNew = false;
    State::Slot slot = m_state->Take(bytes, isNew);
    if (isNew) {
        try {
            slot.reset(new StoredImage(bytes));
        } catch (...) {
            m_state->Forget(bytes);
            throw;
        }
    }
    if (!slot)
        return nullptr;
    const std::shared_ptr<StoredImage> kept(
        slot.release(), [state = m_state](StoredImage* pImage) { state->GiveBack(State::Slot(pImage)); });
    kept->Copy(image);
    return kept;
}

} // namespace KxApps
