// SPDX-License-Identifier: Apache-2.0
// Images of an acquisition, kept in memory beyond the stream's buffers.
#pragma once

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace KxApi
{
struct IKxStreamImage;
}

namespace KxApps
{

/// What is known of an image beside its pixels.
struct ImageNotes
{
    uint64_t frameId = 0;     ///< number as the device counts
    uint64_t timestampNs = 0; ///< of the device's clock, 0 when it doesn't tell
    uint64_t hostNs = 0;      ///< when it came to this computer, nanoseconds since 1970
    bool isIncomplete = false;
};

/// A copy of an image. Read by one thread at a time, but for its notes.
class StoredImage
{
public:
    StoredImage(const StoredImage&) = delete;
    StoredImage& operator=(const StoredImage&) = delete;
    StoredImage(StoredImage&&) = delete;
    StoredImage& operator=(StoredImage&&) = delete;
    ~StoredImage() = default;

    const ImageNotes& Notes() const { return m_notes; }
    /// Whether the bytes are a JPEG file, from a camera that compresses, and no pixels.
    bool IsEncoded() const { return m_isEncoded; }
    /// The pixels; those of an encoded image are its bytes in one line of Mono8.
    KxApi::IKxImage& Image() const { return *m_buffer->GetIKxImage(); }
    /// Memory of the image: line after line, plane after plane.
    const uint8_t* Data() const;
    size_t Size() const;

private:
    friend class ImagePool;

    explicit StoredImage(size_t capacity);
    void Copy(KxApi::IKxStreamImage& image);

    KxApi::CKxAutoPtr<KxApi::IKxImageBufferReleasable, KxApi::IKxImageBuffer> m_buffer;
    size_t m_capacity; // bytes that are there without another allocation
    ImageNotes m_notes;
    bool m_isEncoded = false;
};

using StoredImagePtr = std::shared_ptr<const StoredImage>;

/// Memory for images, bounded, and used again when an image is let go of. A thread of its own keeps some of
/// it ready, so that who copies an image neither asks the system for memory nor touches it first. Any thread.
class ImagePool
{
public:
    /// @param maxBytes of all images together
    /// @param expectedBytes of an image, 0 if not known: memory is got ready for such
    /// @param maxImages that will be needed at once
    ImagePool(uint64_t maxBytes, size_t expectedBytes, uint64_t maxImages = ~uint64_t{0});
    ~ImagePool();
    ImagePool(const ImagePool&) = delete;
    ImagePool& operator=(const ImagePool&) = delete;

    /// Bytes that an image takes; 0 for one that has nothing to keep, such as one of chunk data alone.
    static size_t SizeOf(KxApi::IKxStreamImage& image);
    /// A copy of an image that takes bytes, null when the memory is used up. Copies may outlive the pool.
    /// Raises what copying raises.
    StoredImagePtr Copy(KxApi::IKxStreamImage& image);

    uint64_t MaxBytes() const;

private:
    struct State;
    class Filler;

    std::shared_ptr<State> m_state; // shared with the images
    std::unique_ptr<Filler> m_filler;
};

} // namespace KxApps
