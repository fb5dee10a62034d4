// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <GenApi/ChunkAdapterGeneric.h>

namespace GenApi
{

CChunkAdapterGeneric::CChunkAdapterGeneric(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize)
{}

template <class Chunk, class ToId>
void CChunkAdapterGeneric::AttachList(uint8_t* pBuffer, int64_t bufferLength, const Chunk* chunks,
                                      int64_t numChunks, ToId toId, AttachStatistics_t* pAttachStatistics)
{
    if (!pBuffer || bufferLength < 0 || numChunks < 0 || (!chunks && numChunks > 0))
        throw RUNTIME_EXCEPTION("A buffer of %lld bytes with %lld chunks needs both buffer and list",
                                static_cast<long long>(bufferLength), static_cast<long long>(numChunks));
    for (int64_t i = 0; i < numChunks; ++i) {
        const int64_t offset = chunks[i].ChunkOffset;
        const size_t length = chunks[i].ChunkLength;
        toId(chunks[i]);
        const bool inside =
            offset >= 0 && offset <= bufferLength && length <= static_cast<size_t>(bufferLength - offset);
        if (inside)
            continue;
        RefuseBuffer();
        throw RUNTIME_EXCEPTION("Chunk %lld: %zu bytes at %lld lie outside the buffer of %lld bytes",
                                static_cast<long long>(i), length, static_cast<long long>(offset),
                                static_cast<long long>(bufferLength));
    }
    int64_t left = numChunks;
    const auto next = [&](CChunk& chunk) {
        if (left == 0)
            return false;
        const Chunk& entry = chunks[--left];
        chunk = {toId(entry), entry.ChunkOffset, static_cast<int64_t>(entry.ChunkLength)};
        return true;
    };
    AttachChunks(pBuffer, next, pAttachStatistics);
}

namespace
{
// Where nobody tells the length, every chunk lies inside.
constexpr int64_t kUnknownLength = INT64_MAX;
} // namespace

void CChunkAdapterGeneric::AttachBuffer(uint8_t* pBuffer, SingleChunkData_t* ChunkData, int64_t NumChunks,
                                        AttachStatistics_t* pAttachStatistics)
{
    AttachBuffer(pBuffer, kUnknownLength, ChunkData, NumChunks, pAttachStatistics);
}

void CChunkAdapterGeneric::AttachBuffer(uint8_t* pBuffer, SingleChunkDataStr_t* ChunkData, int64_t NumChunks,
                                        AttachStatistics_t* pAttachStatistics)
{
    AttachBuffer(pBuffer, kUnknownLength, ChunkData, NumChunks, pAttachStatistics);
}

void CChunkAdapterGeneric::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                        const SingleChunkData_t* ChunkData, int64_t NumChunks,
                                        AttachStatistics_t* pAttachStatistics)
{
    AttachList(
        pBuffer, BufferLength, ChunkData, NumChunks,
        [](const SingleChunkData_t& chunk) { return chunk.ChunkID; }, pAttachStatistics);
}

void CChunkAdapterGeneric::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                        const SingleChunkDataStr_t* ChunkData, int64_t NumChunks,
                                        AttachStatistics_t* pAttachStatistics)
{
    AttachList(
        pBuffer, BufferLength, ChunkData, NumChunks,
        [](const SingleChunkDataStr_t& chunk) { return ToNumber(chunk.ChunkID); }, pAttachStatistics);
}

bool CChunkAdapterGeneric::CheckBufferLayout(uint8_t*, int64_t) { return false; }

void CChunkAdapterGeneric::AttachBuffer(uint8_t*, int64_t, AttachStatistics_t*) {}

} // namespace GenApi
