// SPDX-License-Identifier: Apache-2.0
// Chunks of GigE Vision buffers.
#pragma once

#include <GenApi/ChunkAdapter.h>

namespace GenApi
{

/// Buffers made of chunks, each followed by its ID and the length of its data, 4 bytes each with the most
/// significant byte first.
class GENAPI_DECL CChunkAdapterGEV : public CChunkAdapter
{
public:
    explicit CChunkAdapterGEV(INodeMap* pNodeMap = nullptr, int64_t MaxChunkCacheSize = -1);

    bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) override;
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                      AttachStatistics_t* pAttachStatistics = nullptr) override;
};

} // namespace GenApi
