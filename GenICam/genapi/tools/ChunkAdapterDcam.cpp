// SPDX-License-Identifier: Apache-2.0
#include "ByteOrder.h"

#include <Base/GCException.h>
#include <GenApi/ChunkAdapterDcam.h>

namespace GenApi
{
namespace
{
using Bytes = KxGenApi::LittleEndianBytes;

constexpr int64_t kDcamTrailer = sizeof(DCAM_CHUNK_TRAILER);
constexpr int64_t kChecksum = sizeof(DCAM_CHECKSUM);
static_assert(kDcamTrailer == 24);

/// Length of the last chunk before `end` with its trailer; 0 if there is none.
int64_t LastChunk(const uint8_t* buffer, int64_t end)
{
    if (end < kDcamTrailer)
        return 0;
    const uint32_t length = Bytes::Get<uint32_t>(buffer + end - 8);
    const uint32_t inverse = Bytes::Get<uint32_t>(buffer + end - 4);
    return length == static_cast<uint32_t>(~inverse) && length >= kDcamTrailer && length <= end ? length : 0;
}

bool IsChunks(const uint8_t* buffer, int64_t length)
{
    int64_t end = buffer ? length : 0;
    if (end <= 0)
        return false;
    for (int64_t chunk; end > 0 && (chunk = LastChunk(buffer, end)) > 0;)
        end -= chunk;
    return end == 0;
}
} // namespace

CChunkAdapterDcam::CChunkAdapterDcam(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize)
{}

bool CChunkAdapterDcam::CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength)
{
    return IsChunks(pBuffer, BufferLength) || HasCRC(pBuffer, BufferLength);
}

void CChunkAdapterDcam::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                     AttachStatistics_t* pAttachStatistics)
{
    if (!CheckBufferLayout(pBuffer, BufferLength))
        throw RUNTIME_EXCEPTION("Chunk buffer: %lld bytes are not made of chunks",
                                static_cast<long long>(BufferLength));
    AttachStatistics_t statistics{static_cast<int>(m_ppChunkPorts->size()), 0, 0};
    {
        // Readers see the old buffer or the new one, never some of each.
        const AutoLock lock(GetLock());
        ForgetChunks();
        int64_t end = HasCRC(pBuffer, BufferLength) ? BufferLength - kChecksum : BufferLength;
        for (int64_t length; end > 0 && (length = LastChunk(pBuffer, end)) > 0; end -= length) {
            ++statistics.NumChunks;
            bool attached = false;
            for (CChunkPort* const port : *m_ppChunkPorts) {
                if (port->GetAccessMode() != NA ||
                    !port->CheckChunkID(pBuffer + end - kDcamTrailer, sizeof(GUID)))
                    continue; // of several chunks with one ID the last one counts
                AttachChunk(*port, pBuffer, {0, end - length, length - kDcamTrailer});
                attached = true;
            }
            statistics.NumAttachedChunks += attached ? 1 : 0;
        }
    }
    if (pAttachStatistics)
        *pAttachStatistics = statistics;
    InvalidatePorts();
}

bool CChunkAdapterDcam::HasCRC(uint8_t* pBuffer, int64_t BufferLength)
{
    return !IsChunks(pBuffer, BufferLength) && BufferLength > kChecksum &&
           IsChunks(pBuffer, BufferLength - kChecksum);
}

bool CChunkAdapterDcam::CheckCRC(uint8_t* pBuffer, int64_t BufferLength)
{
    if (!HasCRC(pBuffer, BufferLength))
        throw RUNTIME_EXCEPTION("Chunk buffer: %lld bytes end without a checksum",
                                static_cast<long long>(BufferLength));
    const auto length = static_cast<uint32_t>(BufferLength - kChecksum);
    return CRC16(pBuffer, length) == Bytes::Get<uint32_t>(pBuffer + length);
}

uint32_t CChunkAdapterDcam::CRC16(const unsigned char* pData, uint32_t Length)
{
    uint32_t crc = 0;
    for (uint32_t i = 0; i < Length; ++i) {
        crc ^= static_cast<uint32_t>(pData[i]) << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = ((crc << 1) ^ ((crc & 0x8000) != 0 ? 0x1021u : 0u)) & 0xFFFF;
    }
    return crc;
}

bool CChunkAdapterDcam::CheckBuffer(const unsigned char* pBuffer, uint32_t Length)
{
    return IsChunks(pBuffer, Length);
}

} // namespace GenApi
