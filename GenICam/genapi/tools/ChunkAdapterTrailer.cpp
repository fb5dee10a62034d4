// SPDX-License-Identifier: Apache-2.0
// Buffers whose chunks are followed by their ID and length: the two transport standards differ in the byte
// order only.
#include "ByteOrder.h"

#include <Base/GCException.h>
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/ChunkAdapterU3V.h>

namespace GenApi
{
namespace
{
constexpr int64_t kTrailer = 8;

/// Goes from the end of a buffer to its beginning, chunk by chunk. Each step moves on by 8 bytes at least.
template <class Bytes>
class CTrailerWalk
{
public:
    CTrailerWalk(const uint8_t* buffer, int64_t length)
        : m_buffer(buffer)
        , m_end(buffer ? length : -1)
    {}

    /// Takes the last chunk before the present place; false at the beginning, or where there can be none.
    template <class Chunk>
    bool Next(Chunk& chunk)
    {
        if (m_end < kTrailer)
            return false;
        const uint8_t* const trailer = m_buffer + m_end - kTrailer;
        const int64_t length = Bytes::template Get<uint32_t>(trailer + 4);
        if (length > m_end - kTrailer)
            return false;
        m_end -= kTrailer + length;
        chunk.id = Bytes::template Get<uint32_t>(trailer);
        chunk.offset = m_end;
        chunk.length = length;
        return true;
    }

    /// End of the part that has not been gone through; negative for a buffer that is none.
    int64_t Left() const { return m_end; }

private:
    const uint8_t* m_buffer;
    int64_t m_end;
};

struct CPlace
{
    uint64_t id;
    int64_t offset, length;
};

/// Walks to where no chunk is any more.
template <class Bytes>
int64_t Unexplained(const uint8_t* buffer, int64_t length)
{
    CTrailerWalk<Bytes> walk(buffer, length);
    for (CPlace place{}; walk.Next(place);)
        ;
    return length > 0 ? walk.Left() : -1;
}

[[noreturn]] void RaiseLayout(int64_t length, int64_t unexplained)
{
    if (unexplained < 0)
        throw RUNTIME_EXCEPTION("Chunk buffer: %lld bytes are no buffer", static_cast<long long>(length));
    throw RUNTIME_EXCEPTION(
        "Chunk buffer of %lld bytes: the chunk that ends at %lld would begin before the buffer",
        static_cast<long long>(length), static_cast<long long>(unexplained));
}
} // namespace

CChunkAdapterGEV::CChunkAdapterGEV(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize)
{}

bool CChunkAdapterGEV::CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength)
{
    return Unexplained<KxGenApi::BigEndianBytes>(pBuffer, BufferLength) == 0;
}

void CChunkAdapterGEV::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                    AttachStatistics_t* pAttachStatistics)
{
    const int64_t unexplained = Unexplained<KxGenApi::BigEndianBytes>(pBuffer, BufferLength);
    if (unexplained != 0) {
        RefuseBuffer();
        RaiseLayout(BufferLength, unexplained);
    }
    CTrailerWalk<KxGenApi::BigEndianBytes> walk(pBuffer, BufferLength);
    AttachChunks(
        pBuffer, [&walk](CChunk& chunk) { return walk.Next(chunk); }, pAttachStatistics);
}

CChunkAdapterU3V::CChunkAdapterU3V(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize)
{}

bool CChunkAdapterU3V::CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength)
{
    return Unexplained<KxGenApi::LittleEndianBytes>(pBuffer, BufferLength) == 0;
}

void CChunkAdapterU3V::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                    AttachStatistics_t* pAttachStatistics)
{
    const int64_t unexplained = Unexplained<KxGenApi::LittleEndianBytes>(pBuffer, BufferLength);
    if (unexplained != 0) {
        RefuseBuffer();
        RaiseLayout(BufferLength, unexplained);
    }
    CTrailerWalk<KxGenApi::LittleEndianBytes> walk(pBuffer, BufferLength);
    AttachChunks(
        pBuffer, [&walk](CChunk& chunk) { return walk.Next(chunk); }, pAttachStatistics);
}

} // namespace GenApi
