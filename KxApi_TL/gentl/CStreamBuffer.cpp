// SPDX-License-Identifier: Apache-2.0

#include "CStreamBuffer.h"

#include "CChunkView.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>

#include <cstdint>
#include <new>
#include <utility>

namespace KxApi
{
namespace Detail
{

CBufferMemory::~CBufferMemory()
{
    if (m_pAllocator)
        m_pAllocator->OnDeregister();
}

void* CBufferMemory::Allocate(size_t size, size_t alignment, void*& context) const
{
    void* memory = nullptr;
    if (m_pAllocator)
        m_pAllocator->Allocate(&memory, size, &context);
    else
        memory = ::operator new(size, std::align_val_t(alignment), std::nothrow);
    if (!memory)
        throw BAD_ALLOC_EXCEPTION("There is no memory for an image buffer of %zu bytes", size);
    if (m_pAllocator && reinterpret_cast<uintptr_t>(memory) % alignment != 0) {
        Deallocate(memory, size, alignment, context);
        throw RUNTIME_EXCEPTION("The allocator's memory %p has not the alignment %zu that the stream needs",
                                memory, alignment);
    }
    return memory;
}

void CBufferMemory::Deallocate(void* memory, size_t size, size_t alignment, void* context) const noexcept
{
    if (m_pAllocator)
        m_pAllocator->Deallocate(memory, size, context);
    else
        ::operator delete(memory, std::align_val_t(alignment));
}

CStreamBuffer::CStreamBuffer(std::shared_ptr<CBufferMemory> memory, size_t size, size_t alignment,
                             std::shared_ptr<CChunkView> chunks)
    : m_memory(std::move(memory))
    , m_size(size)
    , m_alignment(alignment)
    , m_base(m_memory->Allocate(size, alignment, m_context))
    , m_chunks(std::move(chunks))
{}

CStreamBuffer::~CStreamBuffer() { m_memory->Deallocate(m_base, m_size, m_alignment, m_context); }

void CStreamBuffer::ReadContent(const CBufferAtProducer& buffer, const CImageDefaults& defaults)
{
    m_roi.reset(); // a window of the image before
    m_content = CBufferContent();
    m_content = ReadBufferContent(buffer, defaults);
}

void CStreamBuffer::ReadChunkList(const CBufferAtProducer& buffer)
{
    if (!std::exchange(m_content.hasChunks, false))
        return;
    m_content.areChunksListed = ReadChunks(buffer, m_chunkList);
    m_content.hasChunks = true;
}

IKxStreamImageReleasable* CStreamBuffer::HandOut(std::weak_ptr<CBufferTaker> taker)
{
    m_taker = std::move(taker);
    m_self = shared_from_this();
    return this;
}

void CStreamBuffer::Release()
{
    const std::shared_ptr<CStreamBuffer> self = std::move(m_self);
    DetachChunkData();
    if (const std::shared_ptr<CBufferTaker> taker = m_taker.lock())
        taker->TakeBack(*this);
}

void* CStreamBuffer::GetImageBuffer() const
{
    return m_content.hasImage ? static_cast<unsigned char*>(m_base) + m_content.place : nullptr;
}

void CStreamBuffer::CheckHasImage() const
{
    if (!m_content.hasImage)
        throw RUNTIME_EXCEPTION("There is no available image.");
}

IKxImage* CStreamBuffer::GetROIImage(size_t x, size_t y, size_t w, size_t h)
{
    CheckHasImage();
    if (!m_roi)
        m_roi.emplace(this);
    GenICam::GuardBadAlloc([&] { m_roi->SetROI(x, y, w, h); });
    return &*m_roi;
}

IKxPixelComponent* CStreamBuffer::GetIKxPixelComponentValue(size_t x, size_t y)
{
    CheckHasImage();
    if (!m_component)
        m_component.emplace();
    m_component->SetPixelComponent(this, x, y);
    return &*m_component;
}

void CStreamBuffer::AttachChunkData()
{
    if (m_content.hasChunks)
        m_chunks->Attach(*this);
}

void CStreamBuffer::DetachChunkData() noexcept
{
    if (m_content.hasChunks)
        m_chunks->Detach(*this);
}

} // namespace Detail
} // namespace KxApi
