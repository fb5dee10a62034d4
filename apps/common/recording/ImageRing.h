// SPDX-License-Identifier: Apache-2.0
// The last seconds of an acquisition, in memory.
#pragma once

#include "StoredImage.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

namespace KxApps
{

/// Keeps copies of the latest images. When it is held, it takes no more, and what it has can be stepped
/// through and saved. Any thread.
class ImageRing
{
public:
    /// @param seconds that are kept, by the device's time stamps, or by the computer's clock without them
    /// @param maxBytes of memory; where the seconds need more, the ring is shorter
    /// @param expectedBytes of an image, 0 if not known
    ImageRing(double seconds, uint64_t maxBytes, size_t expectedBytes);

    /// Copies an image in place of those that are too old; nothing while the ring is held.
    void Add(KxApi::IKxStreamImage& image);

    void Hold();
    void Resume();
    bool IsHeld() const;
    void Clear();

    /// What is in the ring, the oldest first. They stay valid; but memory that is still in use when the ring
    /// goes on is missing in it.
    std::vector<StoredImagePtr> Images() const;

    struct Fill
    {
        size_t images = 0;
        double seconds = 0; ///< from the first to the last
        uint64_t bytes = 0;
        uint64_t maxBytes = 0;
        bool isShort = false; ///< the memory doesn't suffice for the seconds
    };
    Fill GetFill() const;

private:
    void DropOld(uint64_t newest);

    const uint64_t m_lengthNs;
    ImagePool m_pool;
    mutable std::mutex m_mutex; // never held while an image is copied
    std::deque<StoredImagePtr> m_images;
    bool m_isHeld = false;
    bool m_isShort = false;
};

/// When an image was taken: by the device's clock, or when it came.
uint64_t TimeOf(const ImageNotes& notes);

} // namespace KxApps
