// SPDX-License-Identifier: Apache-2.0
#include "ImageRing.h"

#include <KxApi_TL/IKxStream.h>

namespace KxApps
{

uint64_t TimeOf(const ImageNotes& notes) { return notes.timestampNs ? notes.timestampNs : notes.hostNs; }

ImageRing::ImageRing(double seconds, uint64_t maxBytes, size_t expectedBytes)
    : m_lengthNs(static_cast<uint64_t>(seconds * 1e9))
    , m_pool(maxBytes, expectedBytes)
{}

void ImageRing::DropOld(uint64_t newest)
{
    // A clock that was set back makes everything old.
    const auto isOld = [&](const ImageNotes& notes) { return newest - TimeOf(notes) > m_lengthNs; };
    while (!m_images.empty() && isOld(m_images.front()->Notes())) {
        m_images.pop_front();
        m_isShort = false;
    }
}

void ImageRing::Add(KxApi::IKxStreamImage& image)
{
    if (IsHeld() || ImagePool::SizeOf(image) == 0)
        return;
    StoredImagePtr copy;
    while (!(copy = m_pool.Copy(image))) {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (m_images.empty())
            return; // its images are in use elsewhere, or one is larger than the memory
        m_images.pop_front();
        m_isShort = true;
    }
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (m_isHeld)
        return;
    DropOld(TimeOf(copy->Notes()));
    m_images.push_back(std::move(copy));
}

void ImageRing::Hold()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_isHeld = true;
}

void ImageRing::Resume()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_isHeld = false;
}

bool ImageRing::IsHeld() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_isHeld;
}

void ImageRing::Clear()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_images.clear();
    m_isShort = false;
}

std::vector<StoredImagePtr> ImageRing::Images() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return {m_images.begin(), m_images.end()};
}

ImageRing::Fill ImageRing::GetFill() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    Fill fill;
    fill.images = m_images.size();
    fill.maxBytes = m_pool.MaxBytes();
    fill.isShort = m_isShort;
    for (const StoredImagePtr& image : m_images)
        fill.bytes += image->Size();
    if (!m_images.empty())
        fill.seconds =
            static_cast<double>(TimeOf(m_images.back()->Notes()) - TimeOf(m_images.front()->Notes())) * 1e-9;
    return fill;
}

} // namespace KxApps
