// SPDX-License-Identifier: Apache-2.0
// A buffer of a stream, and the image that the producer put into it.
#pragma once

#include "BufferInfo.h"

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxStream.h>
#include <KxSDKCommon/KxROIImage.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace KxApi
{
namespace Detail
{

class CChunkView;
class CStreamBuffer;

/// Where the buffers' memory comes from. Tells the application's allocator when the last one is gone.
class CBufferMemory
{
public:
    /// @param pAllocator null for the process's own memory.
    explicit CBufferMemory(IKxAllocator* pAllocator)
        : m_pAllocator(pAllocator)
    {}
    CBufferMemory(const CBufferMemory&) = delete;
    CBufferMemory& operator=(const CBufferMemory&) = delete;
    ~CBufferMemory();

    /// Whether it is the process's own.
    bool IsOwn() const { return !m_pAllocator; }

    /// Raises BadAllocException, RuntimeException when the application's memory isn't aligned as it must be.
    void* Allocate(size_t size, size_t alignment, void*& context) const;
    void Deallocate(void* memory, size_t size, size_t alignment, void* context) const noexcept;

private:
    IKxAllocator* const m_pAllocator;
};

/// Who takes a buffer back that an application gives back. Outlives it or not.
class CBufferTaker
{
public:
    CBufferTaker() = default;
    CBufferTaker(const CBufferTaker&) = delete;
    CBufferTaker& operator=(const CBufferTaker&) = delete;
    virtual ~CBufferTaker() = default;
    virtual void TakeBack(CStreamBuffer& buffer) = 0;
};

/// Shared by its acquisition and, while it has an image of it, by the application.
class CStreamBuffer final : public IKxStreamImageReleasable,
                            public std::enable_shared_from_this<CStreamBuffer>
{
public:
    enum class EState
    {
        Idle,    // nobody's
        Queued,  // the producer's
        Waiting, // filled, not handed out yet
        HandedOut
    };

    CStreamBuffer(std::shared_ptr<CBufferMemory> memory, size_t size, size_t alignment,
                  std::shared_ptr<CChunkView> chunks);
    CStreamBuffer(const CStreamBuffer&) = delete;
    CStreamBuffer& operator=(const CStreamBuffer&) = delete;
    ~CStreamBuffer();

    void* Base() const { return m_base; }
    size_t Size() const { return m_size; }

    /// Takes over what the producer tells of the image that it has filled in. Raises what ReadBufferContent
    /// raises, after which there is no image.
    void ReadContent(const CBufferAtProducer& buffer, const CImageDefaults& defaults);
    /// The same for the chunks, if there are any. Raises what ReadChunks raises, after which there are none.
    void ReadChunkList(const CBufferAtProducer& buffer);
    const CBufferContent& Content() const { return m_content; }
    const std::vector<GenApi::SingleChunkData_t>& Chunks() const { return m_chunkList; }

    /// Gives the image to the application until its Release, which gives it back to the taker.
    IKxStreamImageReleasable* HandOut(std::weak_ptr<CBufferTaker> taker);

    /// Takes the chunk nodes away from this image, if they show it.
    void DetachChunkData() noexcept;

    size_t GetImageWidth() const override { return m_content.width; }
    size_t GetImageHeight() const override { return m_content.height; }
    size_t GetImageLinePitch() const override { return m_content.linePitch; }
    size_t GetImagePlanePitch() const override { return m_content.planePitch; }
    EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override { return m_content.pixelFormat; }
    void* GetImageBuffer() const override;
    void* GetUserContext() const override { return m_context; }
    IKxImage* GetROIImage(size_t x, size_t y, size_t w, size_t h) override;
    IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override;

    uint64_t GetFrameID() const override { return m_content.frameID; }
    uint64_t GetTimestamp() const override { return m_content.timestamp; }
    uint64_t GetTimestampNs() const override { return m_content.timestampNs; }
    bool IsIncomplete() const override { return m_content.isIncomplete; }
    size_t GetDeliveredHeight() const override { return m_content.deliveredHeight; }
    size_t GetOffsetX() const override { return m_content.offsetX; }
    size_t GetOffsetY() const override { return m_content.offsetY; }
    bool HasChunkData() const override { return m_content.hasChunks; }
    void AttachChunkData() override;
    void Release() override;

    GenTL::BUFFER_HANDLE hBuffer = nullptr; ///< once it is announced; the acquisition's
    EState eState = EState::Idle;           ///< guarded by the acquisition's lock

private:
    void CheckHasImage() const;

    const std::shared_ptr<CBufferMemory> m_memory;
    const size_t m_size;
    const size_t m_alignment;
    void* m_context = nullptr;
    void* const m_base;
    const std::shared_ptr<CChunkView> m_chunks;
    CBufferContent m_content;
    std::vector<GenApi::SingleChunkData_t> m_chunkList;
    std::optional<CKxPixelComponent> m_component; // made when asked for
    std::optional<CKxROIImage> m_roi;
    std::shared_ptr<CStreamBuffer> m_self; // while the application has it
    std::weak_ptr<CBufferTaker> m_taker;
};

} // namespace Detail
} // namespace KxApi
