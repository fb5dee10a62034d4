// SPDX-License-Identifier: Apache-2.0

#include "BufferInfo.h"

#include "GenDc.h"
#include "GenTLInfo.h"
#include "ImageInfo.h"

#include <Base/GCException.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>

#include <algorithm>
#include <cstring>

namespace KxApi
{
namespace Detail
{
void CToldInfos::Ask(CKxGenTLLib& lib, GenTL::DS_HANDLE hStream, GenTL::BUFFER_HANDLE hBuffer,
                     Commands commands)
{
    if (!lib.DSGetBufferInfoStacked || m_count + commands.size() > kMost)
        return;
    const size_t first = m_count;
    size_t last = first;
    for (const GenTL::BUFFER_INFO_CMD command : commands) {
        m_values[last].fill(0);
        m_entries[last] = {command, GenTL::INFO_DATATYPE_UNKNOWN, m_values[last].data(), kValueSize,
                           GenTL::GC_ERR_NOT_IMPLEMENTED};
        ++last;
    }
    if (lib.DSGetBufferInfoStacked(hStream, hBuffer, &m_entries[first], last - first) ==
        GenTL::GC_ERR_SUCCESS)
        m_count = last;
}

bool CToldInfos::Get(GenTL::BUFFER_INFO_CMD command, GenTL::INFO_DATATYPE& type, void* value, size_t& size,
                     GenTL::GC_ERROR& result) const
{
    for (size_t i = 0; i < m_count; ++i) {
        const GenTL::DS_BUFFER_INFO_STACKED& entry = m_entries[i];
        if (entry.iInfoCmd != command)
            continue;
        std::memcpy(value, m_values[i].data(), std::min(size, kValueSize));
        type = entry.iType;
        size = entry.iSize;
        result = entry.iResult;
        return true;
    }
    return false;
}

uint64_t Info(const CBufferAtProducer& buffer, GenTL::BUFFER_INFO_CMD command, uint64_t fallback)
{
    return static_cast<uint64_t>(GetInfoInteger(
        [&](GenTL::INFO_DATATYPE* type, void* value, size_t* size) {
            GenTL::GC_ERROR result = GenTL::GC_ERR_SUCCESS;
            return buffer.told.Get(command, *type, value, *size, result)
                       ? result
                       : buffer.lib.DSGetBufferInfo(buffer.hStream, buffer.hBuffer, command, type, value,
                                                    size);
        },
        static_cast<int64_t>(fallback)));
}

namespace
{

struct CPayload
{
    bool canHaveImage;
    bool hasChunks;
    bool hasParts = false;
    int32_t encodedAs = 0; // kind of part, of a compressed image
    bool isContainer = false;
};

CPayload ReadPayload(const CBufferAtProducer& buffer)
{
    const uint64_t type = Info(buffer, GenTL::BUFFER_INFO_PAYLOADTYPE, GenTL::PAYLOAD_TYPE_IMAGE);
    const bool hasChunks = Info(buffer, GenTL::BUFFER_INFO_CONTAINS_CHUNKDATA, 0) != 0;
    switch (type) {
    case GenTL::PAYLOAD_TYPE_IMAGE:
    case GenTL::PAYLOAD_TYPE_UNKNOWN:
        return {true, hasChunks};
    case GenTL::PAYLOAD_TYPE_CHUNK_DATA:
        return {true, true};
    case GenTL::PAYLOAD_TYPE_CHUNK_ONLY:
        return {false, true};
    case GenTL::PAYLOAD_TYPE_JPEG:
        return {true, hasChunks, false, GenTL::PART_DATATYPE_JPEG};
    case GenTL::PAYLOAD_TYPE_JPEG2000:
        return {true, hasChunks, false, GenTL::PART_DATATYPE_JPEG2000};
    case GenTL::PAYLOAD_TYPE_MULTI_PART:
        if (buffer.lib.DSGetNumBufferParts && buffer.lib.DSGetBufferPartInfo)
            return {true, hasChunks, true};
        throw RUNTIME_EXCEPTION("A buffer has several parts, and the producer no functions that tell them");
    case GenTL::PAYLOAD_TYPE_GENDC:
        return {true, false, false, 0, true};
    default:
        throw RUNTIME_EXCEPTION(
            "Payload type %llu of a buffer is not supported: neither images nor chunk data",
            static_cast<unsigned long long>(type));
    }
}

uint64_t IntegerFeature(const GenApi::INodeMap& map, const char* szName)
{
    try {
        if (auto* const pInteger = dynamic_cast<GenApi::IInteger*>(map.GetNode(szName)))
            return static_cast<uint64_t>(pInteger->GetValue());
        if (auto* const pEnumeration = dynamic_cast<GenApi::IEnumeration*>(map.GetNode(szName)))
            return static_cast<uint64_t>(pEnumeration->GetIntValue());
    } catch (const GenICam::GenericException&) {
        // Told by the buffers, then.
    }
    return 0;
}

} // namespace

CImageDefaults ReadImageDefaults(const GenApi::INodeMap& map, double tickNs)
{
    return {IntegerFeature(map, "Width"), IntegerFeature(map, "Height"), IntegerFeature(map, "PixelFormat"),
            tickNs};
}

void AskFirst(CBufferAtProducer& buffer)
{
    buffer.told.Ask(buffer.lib, buffer.hStream, buffer.hBuffer,
                    {GenTL::BUFFER_INFO_NEW_DATA, GenTL::BUFFER_INFO_FRAMEID, GenTL::BUFFER_INFO_TIMESTAMP,
                     GenTL::BUFFER_INFO_TIMESTAMP_NS, GenTL::BUFFER_INFO_IS_INCOMPLETE,
                     GenTL::BUFFER_INFO_DATA_LARGER_THAN_BUFFER, GenTL::BUFFER_INFO_SIZE_FILLED,
                     GenTL::BUFFER_INFO_PAYLOADTYPE, GenTL::BUFFER_INFO_CONTAINS_CHUNKDATA,
                     GenTL::BUFFER_INFO_IMAGEPRESENT, GenTL::BUFFER_INFO_PIXEL_ENDIANNESS});
}

bool IsFilled(const CBufferAtProducer& buffer) { return Info(buffer, GenTL::BUFFER_INFO_NEW_DATA, 1) != 0; }

uint64_t ReadFrameID(const CBufferAtProducer& buffer) { return Info(buffer, GenTL::BUFFER_INFO_FRAMEID, 0); }

CBufferContent ReadBufferContent(CBufferAtProducer& buffer, const CImageDefaults& defaults)
{
    CBufferContent content;
    content.frameID = ReadFrameID(buffer);
    content.timestamp = Info(buffer, GenTL::BUFFER_INFO_TIMESTAMP, 0);
    const auto timestampNs = static_cast<uint64_t>(static_cast<double>(content.timestamp) * defaults.tickNs);
    content.timestampNs = Info(buffer, GenTL::BUFFER_INFO_TIMESTAMP_NS, timestampNs);
    content.isIncomplete = Info(buffer, GenTL::BUFFER_INFO_IS_INCOMPLETE, 0) != 0 ||
                           Info(buffer, GenTL::BUFFER_INFO_DATA_LARGER_THAN_BUFFER, 0) != 0;
    content.sizeFilled =
        std::min(static_cast<size_t>(Info(buffer, GenTL::BUFFER_INFO_SIZE_FILLED, buffer.size)), buffer.size);
    if (content.sizeFilled == 0) {
        // Some producers give buffers so that were being filled when the stream began; others never tell.
        content.isEmpty = content.isIncomplete;
        if (content.isEmpty)
            return content;
        content.sizeFilled = buffer.size;
    }
    const CPayload payload = ReadPayload(buffer);
    content.hasChunks = payload.hasChunks;
    if (payload.hasParts)
        ReadParts(buffer, content);
    else if (payload.isContainer)
        ReadGenDc(buffer.base, buffer.size, content);
    else if (payload.encodedAs != 0)
        ReadEncoded(buffer, payload.encodedAs, content);
    else if (payload.canHaveImage && Info(buffer, GenTL::BUFFER_INFO_IMAGEPRESENT, 1) != 0)
        ReadImage(buffer, defaults, content);
    TurnBytes(buffer, content);
    return content;
}

bool ReadChunks(const CBufferAtProducer& buffer, std::vector<GenApi::SingleChunkData_t>& chunks)
{
    constexpr size_t kMaxChunks = 65536;
    chunks.clear();
    if (!buffer.lib.DSGetBufferChunkData)
        return false;
    size_t count = 0;
    GenTL::GC_ERROR error = buffer.lib.DSGetBufferChunkData(buffer.hStream, buffer.hBuffer, nullptr, &count);
    if (error == GenTL::GC_ERR_NOT_IMPLEMENTED)
        return false;
    if (error == GenTL::GC_ERR_NO_DATA)
        return true;
    CheckGenTL(buffer.lib, error, "DSGetBufferChunkData", "image");
    if (count > kMaxChunks)
        throw RUNTIME_EXCEPTION("Buffer with %zu chunks; Max = %zu", count, kMaxChunks);
    std::vector<GenTL::SINGLE_CHUNK_DATA> told(count);
    error = buffer.lib.DSGetBufferChunkData(buffer.hStream, buffer.hBuffer, told.data(), &count);
    CheckGenTL(buffer.lib, error, "DSGetBufferChunkData", "image");
    told.resize(std::min(count, told.size()));
    for (const GenTL::SINGLE_CHUNK_DATA& chunk : told)
        chunks.push_back({chunk.ChunkID, chunk.ChunkOffset, chunk.ChunkLength});
    return true;
}

} // namespace Detail
} // namespace KxApi
