// SPDX-License-Identifier: Apache-2.0
// Chunks of IIDC buffers.
#pragma once

#include <GenApi/ChunkAdapter.h>
#include <GenApi/Compatibility.h>

namespace GenApi
{

#pragma pack(push, 1)
/// What follows the data of a chunk, least significant byte first. The length is that of data and trailer
/// together; its bits stand behind it once more, inverted.
typedef struct DCAM_CHUNK_TRAILER
{
    GUID ChunkID;
    uint32_t ChunkLength;
    uint32_t InverseChunkLength;

    explicit DCAM_CHUNK_TRAILER()
        : ChunkID()
        , ChunkLength(0)
        , InverseChunkLength(0)
    {}
} DCAM_CHUNK_TRAILER;

/// What may stand at the end of a buffer.
typedef struct DCAM_CHECKSUM
{
    uint32_t CRCChecksum;
} DCAM_CHECKSUM;
#pragma pack(pop)

/// Fills an ID.
inline void SET_GUID(GUID& guid, uint32_t l, uint16_t w1, uint16_t w2, uint8_t b1, uint8_t b2, uint8_t b3,
                     uint8_t b4, uint8_t b5, uint8_t b6, uint8_t b7, uint8_t b8)
{
    const uint8_t bytes[8] = {b1, b2, b3, b4, b5, b6, b7, b8};
    guid.Data1 = l;
    guid.Data2 = w1;
    guid.Data3 = w2;
    for (int i = 0; i < 8; ++i)
        guid.Data4[i] = bytes[i];
}

/// Buffers made of chunks, each followed by its trailer, with or without a checksum at the end. The ChunkID
/// of a port node is the 16 bytes of an ID as they lie in memory.
class GENAPI_DECL CChunkAdapterDcam : public CChunkAdapter
{
public:
    CChunkAdapterDcam(INodeMap* pNodeMap = nullptr, int64_t MaxChunkCacheSize = -1);

    bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) override;
    void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                      AttachStatistics_t* pAttachStatistics = nullptr) override;

    /// Whether the buffer ends with a checksum.
    bool HasCRC(uint8_t* pBuffer, int64_t BufferLength);
    /// Whether that checksum is right; RuntimeException if there is none.
    bool CheckCRC(uint8_t* pBuffer, int64_t BufferLength);

protected:
    /// Checksum of bytes: the CCITT polynomial 0x1021, beginning with 0.
    uint32_t CRC16(const unsigned char* pData, uint32_t Length);
    /// Whether the bytes are chunks from end to end.
    bool CheckBuffer(const unsigned char* pBuffer, uint32_t Length);
};

} // namespace GenApi
