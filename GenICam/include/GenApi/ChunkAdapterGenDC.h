// SPDX-License-Identifier: Apache-2.0
// Chunks of GenDC containers.
#pragma once

#include <GenApi/ChunkAdapterU3V.h>

namespace GenApi
{

#pragma pack(push, 1)
/// What follows the data of a chunk; least significant byte first.
typedef struct GENDC_CHUNK_TRAILER
{
    uint32_t ChunkID;
    uint32_t ChunkLength;
} GENDC_CHUNK_TRAILER;
#pragma pack(pop)

/// Buffers as CChunkAdapterU3V knows them: the chunk part of a container has that form.
class GENAPI_DECL CChunkAdapterGenDC : public CChunkAdapterU3V
{
public:
    CChunkAdapterGenDC(INodeMap* pNodeMap = nullptr, int64_t MaxChunkCacheSize = -1)
        : CChunkAdapterU3V(pNodeMap, MaxChunkCacheSize)
    {}
};

} // namespace GenApi
