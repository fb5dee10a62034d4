// SPDX-License-Identifier: Apache-2.0
// A buffer of a stream, and the image that the producer put into it.
#pragma once

#include "BufferInfo.h"
#include "CImageView.h"

#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxStream.h>

#include <atomic>
#include <cstddef>
#include <memory>
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
class CStreamBuffer final : private CImageOwner,
                            public CImageView<IKxStreamImageReleasable>,
                            public std::enable_shared_from_this<CStreamBuffer>
{
public:
    enum class EState
    {
        Idle,    // nobody's
        Refused, // nobody's, since the producer didn't take it back
        Queued,  // the producer's
        Waiting, // filled, not handed out yet
        HandedOut
    };

    CStreamBuffer(std::shared_ptr<CBufferMemory> memory, size_t size, size_t alignment,
                  std::shared_ptr<CChunkView> chunks);
    /// A buffer in memory of the producer's, which `keeper` keeps.
    CStreamBuffer(std::shared_ptr<void> keeper, void* memory, size_t size,
                  std::shared_ptr<CChunkView> chunks);
    ~CStreamBuffer();

    uint8_t* Base() const override { return static_cast<uint8_t*>(m_base); }
    size_t Size() const { return m_size; }
    bool IsProducers() const { return m_keeper != nullptr; }

    /// Takes over what the producer tells of the image that it has filled in. Raises what ReadBufferContent
    /// raises, after which there is no image.
    void ReadContent(CBufferAtProducer& buffer, const CImageDefaults& defaults);
    /// The same for the chunks, if there are any. Raises what ReadChunks raises, after which there are none.
    void ReadChunkList(const CBufferAtProducer& buffer);
    const CBufferContent& Content() const override { return m_content; }
    const std::vector<GenApi::SingleChunkData_t>& Chunks() const { return m_chunkList; }

    /// Gives the image to the application until its Release, which gives it back to the taker.
    IKxStreamImageReleasable* HandOut(std::weak_ptr<CBufferTaker> taker);

    /// Takes the chunk nodes away from this image, if they show it.
    void DetachChunkData() noexcept;

    void Release() override;

    GenTL::BUFFER_HANDLE hBuffer = nullptr;   ///< once it is announced; the acquisition's
    std::atomic<EState> eState{EState::Idle}; ///< changed under the acquisition's lock

private:
    /// Of a buffer with several; the first is the buffer itself.
    class CPart final : public CImageView<IKxStreamImage>
    {
    public:
        using CImageView::CImageView;
        using CImageView::Renew;
    };

    void* Context() const override { return m_context; }
    IKxStreamImage* Part(uint32_t nIndex) override;
    void AttachChunks() override;

    const std::shared_ptr<CBufferMemory> m_memory; // null for memory of the producer's
    const std::shared_ptr<void> m_keeper;
    const size_t m_size;
    const size_t m_alignment;
    void* m_context = nullptr;
    void* const m_base;
    const std::shared_ptr<CChunkView> m_chunks;
    CBufferContent m_content;
    std::vector<std::unique_ptr<CPart>> m_parts; // from the second on, made when asked for
    std::vector<GenApi::SingleChunkData_t> m_chunkList;
    std::shared_ptr<CStreamBuffer> m_self; // while the application has it
    std::weak_ptr<CBufferTaker> m_taker;
};

} // namespace Detail
} // namespace KxApi
