// SPDX-License-Identifier: Apache-2.0
// Chunks of buffers whose layout somebody else knows, such as a GenTL producer.
#pragma once

#include <Base/GCString.h>
#include <GenApi/ChunkAdapter.h>

#include <cstddef>

namespace GenApi
{

/// Place of a chunk in its buffer; layout as in the GenTL interface.
#pragma pack(push, 1)
typedef struct SingleChunkData_t
{
    uint64_t ChunkID;
    ptrdiff_t ChunkOffset;
    size_t ChunkLength;
} SingleChunkData_t;

/// The same with the ID in hexadecimal digits.
typedef struct SingleChunkDataStr_t
{
    GenICam::gcstring ChunkID;
    ptrdiff_t ChunkOffset;
    size_t ChunkLength;
} SingleChunkDataStr_t;
#pragma pack(pop)

/// Buffers that come with a list of their chunks.
class GENAPI_DECL CChunkAdapterGeneric : public CChunkAdapter
{
public:
    CChunkAdapterGeneric(INodeMap* pNodeMap = nullptr, int64_t MaxChunkCacheSize = -1);

    /// Shows the chunks of a list. RuntimeException for no buffer or list, or for a text that is no ID of up
    /// to 16 hexadecimal digits. The length of the buffer isn't known here: the list is believed.
    virtual void AttachBuffer(uint8_t* pBuffer, SingleChunkData_t* ChunkData, int64_t NumChunks,
                              AttachStatistics_t* pAttachStatistics = nullptr);
    virtual void AttachBuffer(uint8_t* pBuffer, SingleChunkDataStr_t* ChunkData, int64_t NumChunks,
                              AttachStatistics_t* pAttachStatistics = nullptr);

    /// The same for a buffer of known length: RuntimeException, and nothing shown, if a chunk lies outside.
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength, const SingleChunkData_t* ChunkData,
                      int64_t NumChunks, AttachStatistics_t* pAttachStatistics = nullptr);
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength, const SingleChunkDataStr_t* ChunkData,
                      int64_t NumChunks, AttachStatistics_t* pAttachStatistics = nullptr);

    /// False: without its list no buffer has a layout.
    bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) override;
    /// Does nothing: the list is needed.
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                      AttachStatistics_t* pAttachStatistics = nullptr) override;

private:
    template <class Chunk, class ToId>
    void AttachList(uint8_t* pBuffer, int64_t bufferLength, const Chunk* chunks, int64_t numChunks, ToId toId,
                    AttachStatistics_t* pAttachStatistics);
};

} // namespace GenApi
