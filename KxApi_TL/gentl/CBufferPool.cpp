// SPDX-License-Identifier: Apache-2.0

#include "CBufferPool.h"

#include "GenTLInfo.h"

#include <Base/GCException.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>

#include <algorithm>

namespace KxApi
{
namespace Detail
{
namespace
{

/// More than any image has; a producer that asks for more is in error.
constexpr int64_t kMaxPayloadSize = int64_t{1} << 32;
constexpr int64_t kMaxAlignment = int64_t{1} << 20;
/// Of the process's own memory: a line of the cache.
constexpr size_t kOwnAlignment = 64;

size_t Alignment(const CStreamHandle& stream, bool isOwnMemory)
{
    const int64_t alignment = stream.Info(GenTL::STREAM_INFO_BUF_ALIGNMENT, 1);
    if (alignment < 1 || alignment > kMaxAlignment || (alignment & (alignment - 1)) != 0)
        throw RUNTIME_EXCEPTION("Stream '%s' tells of an alignment of %lld bytes; it must be a power of 2, "
                                "Max = %lld",
                                stream.ID().c_str(), static_cast<long long>(alignment),
                                static_cast<long long>(kMaxAlignment));
    const auto needed = static_cast<size_t>(alignment);
    return isOwnMemory ? std::max(needed, kOwnAlignment) : needed;
}

} // namespace

size_t PayloadSize(const CStreamHandle& stream, const GenApi::INodeMap& remoteMap)
{
    int64_t size = 0;
    if (stream.Info(GenTL::STREAM_INFO_DEFINES_PAYLOADSIZE, 0) != 0)
        size = stream.Info(GenTL::STREAM_INFO_PAYLOAD_SIZE, 0);
    else if (auto* const pSize = dynamic_cast<GenApi::IInteger*>(remoteMap.GetNode("PayloadSize")))
        size = pSize->GetValue();
    else
        throw RUNTIME_EXCEPTION("Neither stream '%s' nor its device tell the size of a buffer",
                                stream.ID().c_str());
    if (size < 1 || size > kMaxPayloadSize)
        throw RUNTIME_EXCEPTION("Stream '%s' tells of buffers of %lld bytes; Min = 1, Max = %lld",
                                stream.ID().c_str(), static_cast<long long>(size),
                                static_cast<long long>(kMaxPayloadSize));
    return static_cast<size_t>(size);
}

namespace
{

/// What producers answer that allow no memory but their own.
bool MeansOwnMemoryOnly(GenTL::GC_ERROR error)
{
    return error == GenTL::GC_ERR_NOT_IMPLEMENTED || error == GenTL::GC_ERR_NOT_AVAILABLE ||
           error == GenTL::GC_ERR_ACCESS_DENIED || error == GenTL::GC_ERR_INVALID_ADDRESS;
}

} // namespace

void CBufferPool::Add(GenTL::BUFFER_HANDLE hBuffer, std::shared_ptr<CStreamBuffer> buffer)
{
    if (!hBuffer || !m_buffers.emplace(hBuffer, buffer).second) {
        m_stream.Keep(std::move(buffer));
        throw RUNTIME_EXCEPTION("A new buffer of '%s' has %s", m_stream.ID().c_str(),
                                hBuffer ? "the handle of another one" : "no handle");
    }
    buffer->hBuffer = hBuffer;
}

void CBufferPool::AnnounceOne(size_t size, size_t alignment, const std::shared_ptr<CBufferMemory>& memory,
                              const std::shared_ptr<CChunkView>& chunks)
{
    CKxGenTLLib& lib = m_stream.Lib();
    const char* const szStream = m_stream.ID().c_str();
    GenTL::BUFFER_HANDLE hBuffer = nullptr;
    if (!m_takesNoMemory) {
        const auto buffer = std::make_shared<CStreamBuffer>(memory, size, alignment, chunks);
        const GenTL::GC_ERROR error =
            lib.DSAnnounceBuffer(m_stream.Get(), buffer->Base(), size, nullptr, &hBuffer);
        m_takesNoMemory = m_buffers.empty() && memory->IsOwn() && MeansOwnMemoryOnly(error);
        if (!m_takesNoMemory) {
            CheckGenTL(lib, error, "DSAnnounceBuffer", szStream);
            return Add(hBuffer, buffer);
        }
    }
    CheckGenTL(lib, lib.DSAllocAndAnnounceBuffer(m_stream.Get(), size, nullptr, &hBuffer),
               "DSAllocAndAnnounceBuffer", szStream);
    void* base = nullptr;
    size_t baseSize = sizeof base;
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
    CheckGenTL(lib,
               lib.DSGetBufferInfo(m_stream.Get(), hBuffer, GenTL::BUFFER_INFO_BASE, &type, &base, &baseSize),
               "DSGetBufferInfo", szStream);
    if (!base)
        throw RUNTIME_EXCEPTION("A buffer that the producer allocated for '%s' has no address", szStream);
    Add(hBuffer, std::make_shared<CStreamBuffer>(m_keeper, base, size, chunks));
}

void CBufferPool::Announce(uint32_t count, size_t size, const std::shared_ptr<CBufferMemory>& memory,
                           const std::shared_ptr<CChunkView>& chunks)
{
    const size_t alignment = Alignment(m_stream, memory->IsOwn());
    const int64_t least = m_stream.Info(GenTL::STREAM_INFO_BUF_ANNOUNCE_MIN, 1);
    if (least > int64_t{kKxMaxBufferCount})
        throw RUNTIME_EXCEPTION("Stream '%s' asks for %lld buffers; Max = %u", m_stream.ID().c_str(),
                                static_cast<long long>(least), kKxMaxBufferCount);
    CKxGenTLLib& lib = m_stream.Lib();
    const char* const szStream = m_stream.ID().c_str();
    for (int64_t i = 0; i < std::max(int64_t{count}, least); ++i)
        AnnounceOne(size, alignment, memory, chunks);
    for (const auto& [hBuffer, buffer] : m_buffers) {
        CheckGenTL(lib, lib.DSQueueBuffer(m_stream.Get(), hBuffer), "DSQueueBuffer", szStream);
        buffer->eState = CStreamBuffer::EState::Queued;
    }
}

void CBufferPool::Revoke(bool keepAll) noexcept
{
    for (const auto& [hBuffer, buffer] : m_buffers) {
        // The application looks into the producer's memory still: it goes with the stream, which the image
        // keeps.
        if (buffer->IsProducers() && buffer->eState == CStreamBuffer::EState::HandedOut)
            continue;
        void* memory = nullptr;
        void* context = nullptr;
        const GenTL::GC_ERROR error =
            m_stream.Lib().DSRevokeBuffer(m_stream.Get(), hBuffer, &memory, &context);
        if (keepAll || error != GenTL::GC_ERR_SUCCESS)
            m_stream.Keep(buffer);
    }
    m_buffers.clear();
}

std::shared_ptr<CStreamBuffer> CBufferPool::Find(GenTL::BUFFER_HANDLE hBuffer) const
{
    const auto place = m_buffers.find(hBuffer);
    return place == m_buffers.end() ? nullptr : place->second;
}

} // namespace Detail
} // namespace KxApi
