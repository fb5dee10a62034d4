// SPDX-License-Identifier: Apache-2.0
// Chunks of buffers whose layout somebody else knows, such as a GenTL producer.
#pragma once

#include <Base/GCString.h>
#include <GenApi/ChunkAdapter.h>

#include <cstddef>

namespace GenApi
{

/// Place of a chunk in its buffer; layout as in the GenTL interface.
typedef struct
{
    uint64_t ChunkID;
    ptrdiff_t ChunkOffset;
    size_t ChunkLength;
} SingleChunkData_t;

/// The same with the ID in hexadecimal digits.
typedef struct
{
    GenICam::gcstring ChunkID;
    ptrdiff_t ChunkOffset;
    size_t ChunkLength;
} SingleChunkDataStr_t;

/// Buffers that come with a list of their chunks.
class GENAPI_DECL CChunkAdapterGeneric : public CChunkAdapter
{
public:
    explicit CChunkAdapterGeneric(INodeMap* pNodeMap = nullptr, int64_t MaxChunkCacheSize = -1);

    /// Shows the chunks of a list. Raises RuntimeException, and shows nothing, if one lies outside the
    /// buffer.
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength, const SingleChunkData_t* ChunkData,
                      int64_t NumChunks, AttachStatistics_t* pAttachStatistics = nullptr);
    /// The same; InvalidArgumentException for an ID that is no hexadecimal number of up to 16 digits.
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength, const SingleChunkDataStr_t* ChunkData,
                      int64_t NumChunks, AttachStatistics_t* pAttachStatistics = nullptr);

    /// False: without its list no buffer has a layout.
    bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) override;
    /// Raises InvalidArgumentException: the list is needed.
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                      AttachStatistics_t* pAttachStatistics = nullptr) override;

private:
    template <class Chunk, class ToId>
    void AttachList(uint8_t* pBuffer, int64_t bufferLength, const Chunk* chunks, int64_t numChunks, ToId toId,
                    AttachStatistics_t* pAttachStatistics);
};

} // namespace GenApi
