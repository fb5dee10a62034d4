// SPDX-License-Identifier: Apache-2.0

#include "BufferInfo.h"

#include "GenTLInfo.h"

#include <Base/GCException.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>

namespace KxApi
{
namespace Detail
{
namespace
{

uint64_t Info(const CBufferAtProducer& buffer, GenTL::BUFFER_INFO_CMD command, uint64_t fallback)
{
    return static_cast<uint64_t>(GetInfoInteger(
        [&](auto... arguments) {
            return buffer.lib.DSGetBufferInfo(buffer.hStream, buffer.hBuffer, command, arguments...);
        },
        static_cast<int64_t>(fallback)));
}

/// The code as a number; not an enumerator yet, since it may be any.
uint64_t PixelFormatCode(const CBufferAtProducer& buffer, const CImageDefaults& defaults)
{
    const uint64_t nameSpace =
        Info(buffer, GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE, GenTL::PIXELFORMAT_NAMESPACE_UNKNOWN);
    // Codes of these are other numbers; the camera's feature has the format in the form that we know.
    if (nameSpace == GenTL::PIXELFORMAT_NAMESPACE_IIDC ||
        nameSpace == GenTL::PIXELFORMAT_NAMESPACE_PFNC_16BIT)
        return defaults.pixelFormat;
    return Info(buffer, GenTL::BUFFER_INFO_PIXELFORMAT, defaults.pixelFormat);
}

const IKxPixelFormatInfoInside& KnownFormat(uint64_t code)
{
    const IKxPixelFormatInfo* const info =
        code > UINT32_MAX
            ? nullptr
            : GetIKxPixelFormatInfo(static_cast<EKxPixelFormatNamingConvention_t>(uint32_t(code)));
    const auto* const inside = dynamic_cast<const IKxPixelFormatInfoInside*>(info);
    if (!inside)
        throw RUNTIME_EXCEPTION("Pixel format 0x%08llX of an image is unknown",
                                static_cast<unsigned long long>(code));
    return *inside;
}

struct CPayload
{
    bool canHaveImage;
    bool hasChunks;
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
    default:
        throw RUNTIME_EXCEPTION(
            "Payload type %llu of a buffer is not supported: neither image nor chunk data",
            static_cast<unsigned long long>(type));
    }
}

void ReadImage(const CBufferAtProducer& buffer, const CImageDefaults& defaults, CBufferContent& content)
{
    const auto info = [&buffer](GenTL::BUFFER_INFO_CMD command, uint64_t fallback) {
        return static_cast<size_t>(Info(buffer, command, fallback));
    };
    const IKxPixelFormatInfoInside& format = KnownFormat(PixelFormatCode(buffer, defaults));
    content.pixelFormat = format.GetPixelFormat();
    content.width = info(GenTL::BUFFER_INFO_WIDTH, defaults.width);
    content.height = info(GenTL::BUFFER_INFO_HEIGHT, defaults.height);
    content.deliveredHeight =
        std::min(info(GenTL::BUFFER_INFO_DELIVERED_IMAGEHEIGHT, content.height), content.height);
    content.offsetX = info(GenTL::BUFFER_INFO_XOFFSET, 0);
    content.offsetY = info(GenTL::BUFFER_INFO_YOFFSET, 0);
    content.place = info(GenTL::BUFFER_INFO_IMAGEOFFSET, 0);
    if (content.width == 0 || content.height == 0)
        throw RUNTIME_EXCEPTION("Image of %zu by %zu pixels", content.width, content.height);

    size_t end = 0;
    const bool isTooLong =
        __builtin_add_overflow(format.GetLinePitch(content.width, 1), info(GenTL::BUFFER_INFO_XPADDING, 0),
                               &content.linePitch) ||
        __builtin_mul_overflow(content.linePitch, content.height, &content.planePitch) ||
        __builtin_add_overflow(content.place, format.GetImageSize(content.height, content.linePitch), &end);
    if (isTooLong || end > buffer.size)
        throw RUNTIME_EXCEPTION("Image of %zu by %zu pixels %s at byte %zu does not fit into a buffer of %zu "
                                "bytes",
                                content.width, content.height, format.GetName().c_str(), content.place,
                                buffer.size);
    // Not all producers notice what they didn't receive.
    if (content.sizeFilled < end && content.deliveredHeight == content.height)
        content.isIncomplete = true;
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

bool IsFilled(const CBufferAtProducer& buffer) { return Info(buffer, GenTL::BUFFER_INFO_NEW_DATA, 1) != 0; }

uint64_t ReadFrameID(const CBufferAtProducer& buffer) { return Info(buffer, GenTL::BUFFER_INFO_FRAMEID, 0); }

CBufferContent ReadBufferContent(const CBufferAtProducer& buffer, const CImageDefaults& defaults)
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
    const CPayload payload = ReadPayload(buffer);
    content.hasChunks = payload.hasChunks;
    content.hasImage = payload.canHaveImage && Info(buffer, GenTL::BUFFER_INFO_IMAGEPRESENT, 1) != 0;
    if (content.hasImage)
        ReadImage(buffer, defaults, content);
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
