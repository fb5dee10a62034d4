// SPDX-License-Identifier: Apache-2.0
// Chunks of USB3 Vision buffers.
#pragma once

#include <GenApi/ChunkAdapter.h>

namespace GenApi
{

#pragma pack(push, 1)
/// What follows the data of a chunk; least significant byte first.
typedef struct U3V_CHUNK_TRAILER
{
    uint32_t ChunkID;
    uint32_t ChunkLength;
} U3V_CHUNK_TRAILER;
#pragma pack(pop)

/// Buffers made of chunks, each followed by its ID and the length of its data, 4 bytes each with the least
/// significant byte first.
class GENAPI_DECL CChunkAdapterU3V : public CChunkAdapter
{
public:
    CChunkAdapterU3V(INodeMap* pNodeMap = nullptr, int64_t MaxChunkCacheSize = -1);

    bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) override;
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                      AttachStatistics_t* pAttachStatistics = nullptr) override;
};

} // namespace GenApi
