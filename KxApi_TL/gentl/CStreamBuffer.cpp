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
    : CImageView(static_cast<CImageOwner&>(*this), 0)
    , m_memory(std::move(memory))
    , m_size(size)
    , m_alignment(alignment)
    , m_base(m_memory->Allocate(size, alignment, m_context))
    , m_chunks(std::move(chunks))
{}

CStreamBuffer::CStreamBuffer(std::shared_ptr<void> keeper, void* memory, size_t size,
                             std::shared_ptr<CChunkView> chunks)
    : CImageView(static_cast<CImageOwner&>(*this), 0)
    , m_keeper(std::move(keeper))
    , m_size(size)
    , m_alignment(1)
    , m_base(memory)
    , m_chunks(std::move(chunks))
{}

CStreamBuffer::~CStreamBuffer()
{
    if (m_memory)
        m_memory->Deallocate(m_base, m_size, m_alignment, m_context);
}

void CStreamBuffer::ReadContent(CBufferAtProducer& buffer, const CImageDefaults& defaults)
{
    Renew();
    for (const std::unique_ptr<CPart>& part : m_parts)
        part->Renew();
    m_content = CBufferContent();
    m_content = ReadBufferContent(buffer, defaults);
}

IKxStreamImage* CStreamBuffer::Part(uint32_t nIndex)
{
    if (nIndex == 0)
        return this;
    return GenICam::GuardBadAlloc([&]() -> IKxStreamImage* {
        while (m_parts.size() < nIndex)
            m_parts.push_back(std::make_unique<CPart>(static_cast<CImageOwner&>(*this), m_parts.size() + 1));
        return m_parts[nIndex - 1].get();
    });
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

void CStreamBuffer::AttachChunks()
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
