// SPDX-License-Identifier: Apache-2.0
#include "modules/ArvFrame.h"

#include "modules/Chunks.h"

namespace KxAravis
{
namespace
{

using KxProducer::CFrameInfo;
using KxProducer::CPartInfo;

struct CPayloadRow
{
    ArvBufferPayloadType type;
    GenTL::PAYLOADTYPE_INFO_ID id;
    bool hasImage; ///< its leader tells size and format
    bool hasChunks;
};

// clang-format off
constexpr CPayloadRow kPayloads[] = {
    {ARV_BUFFER_PAYLOAD_TYPE_IMAGE,               GenTL::PAYLOAD_TYPE_IMAGE,      true,  false},
    {ARV_BUFFER_PAYLOAD_TYPE_RAWDATA,             GenTL::PAYLOAD_TYPE_RAW_DATA,   false, false},
    {ARV_BUFFER_PAYLOAD_TYPE_FILE,                GenTL::PAYLOAD_TYPE_FILE,       false, false},
    {ARV_BUFFER_PAYLOAD_TYPE_CHUNK_DATA,          GenTL::PAYLOAD_TYPE_CHUNK_ONLY, false, true},
    {ARV_BUFFER_PAYLOAD_TYPE_EXTENDED_CHUNK_DATA, GenTL::PAYLOAD_TYPE_CHUNK_DATA, true,  true},
    {ARV_BUFFER_PAYLOAD_TYPE_JPEG,                GenTL::PAYLOAD_TYPE_JPEG,       false, false},
    {ARV_BUFFER_PAYLOAD_TYPE_JPEG2000,            GenTL::PAYLOAD_TYPE_JPEG2000,   false, false},
    {ARV_BUFFER_PAYLOAD_TYPE_H264,                GenTL::PAYLOAD_TYPE_H264,       false, false},
    {ARV_BUFFER_PAYLOAD_TYPE_MULTIPART,           GenTL::PAYLOAD_TYPE_MULTI_PART, false, false},
};
// clang-format on
constexpr CPayloadRow kOtherPayload{ARV_BUFFER_PAYLOAD_TYPE_UNKNOWN, GenTL::PAYLOAD_TYPE_UNKNOWN, false,
                                    false};

CPayloadRow PayloadOf(ArvBufferPayloadType type)
{
    for (const CPayloadRow& row : kPayloads) {
        if (row.type == type)
            return row;
    }
    return kOtherPayload;
}

size_t Size(gint value) { return value > 0 ? static_cast<size_t>(value) : 0; }

/// The numbers of GigE Vision are GenTL's up to maps of confidence.
GenTL::PARTDATATYPE_ID DataTypeOf(ArvBufferPartDataType type)
{
    switch (type) {
    case ARV_BUFFER_PART_DATA_TYPE_JPEG:
        return GenTL::PART_DATATYPE_JPEG;
    case ARV_BUFFER_PART_DATA_TYPE_JPEG2000:
        return GenTL::PART_DATATYPE_JPEG2000;
    default:
        return type > 0 && type <= ARV_BUFFER_PART_DATA_TYPE_CONFIDENCE_MAP
                   ? static_cast<GenTL::PARTDATATYPE_ID>(type)
                   : GenTL::PART_DATATYPE_UNKNOWN;
    }
}

/// Whether a part's size and format can be asked for: the leader that tells them may have been lost.
bool IsImagePart(ArvBuffer& buffer, guint index)
{
    if (index >= arv_buffer_get_n_parts(&buffer))
        return false;
    const ArvBufferPartDataType type = arv_buffer_get_part_data_type(&buffer, index);
    return type >= ARV_BUFFER_PART_DATA_TYPE_2D_IMAGE && type <= ARV_BUFFER_PART_DATA_TYPE_CONFIDENCE_MAP;
}

/// What of an image's part is told alike for the whole image and for one part of several.
CPartInfo PartOf(ArvBuffer& buffer, guint index, const uint8_t* base)
{
    CPartInfo part;
    size_t size = 0;
    const auto* const data = static_cast<const uint8_t*>(arv_buffer_get_part_data(&buffer, index, &size));
    part.dataType = DataTypeOf(arv_buffer_get_part_data_type(&buffer, index));
    part.offset = data ? static_cast<size_t>(data - base) : 0;
    part.size = data ? size : 0;
    part.purposeId = arv_buffer_get_part_component_id(&buffer, index);
    if (!IsImagePart(buffer, index))
        return part;
    gint xPadding = 0, yPadding = 0;
    arv_buffer_get_part_padding(&buffer, index, &xPadding, &yPadding);
    part.pixelFormat = arv_buffer_get_part_pixel_format(&buffer, index);
    part.width = Size(arv_buffer_get_part_width(&buffer, index));
    part.height = Size(arv_buffer_get_part_height(&buffer, index));
    part.offsetX = Size(arv_buffer_get_part_x(&buffer, index));
    part.offsetY = Size(arv_buffer_get_part_y(&buffer, index));
    part.xPadding = Size(xPadding);
    part.deliveredHeight = part.height;
    return part;
}

void AddImage(CFrameInfo& info, ArvBuffer& buffer)
{
    gint xPadding = 0, yPadding = 0;
    arv_buffer_get_image_padding(&buffer, &xPadding, &yPadding);
    info.width = Size(arv_buffer_get_image_width(&buffer));
    info.height = Size(arv_buffer_get_image_height(&buffer));
    info.offsetX = Size(arv_buffer_get_image_x(&buffer));
    info.offsetY = Size(arv_buffer_get_image_y(&buffer));
    info.xPadding = Size(xPadding);
    info.yPadding = Size(yPadding);
    info.pixelFormat = arv_buffer_get_image_pixel_format(&buffer);
    info.deliveredHeight = info.height;
}

} // namespace

EArvBuffer ResultOf(ArvBuffer& buffer)
{
    switch (arv_buffer_get_status(&buffer)) {
    case ARV_BUFFER_STATUS_SUCCESS:
        return EArvBuffer::Image;
    case ARV_BUFFER_STATUS_TIMEOUT:
    case ARV_BUFFER_STATUS_MISSING_PACKETS:
    case ARV_BUFFER_STATUS_WRONG_PACKET_ID:
    case ARV_BUFFER_STATUS_SIZE_MISMATCH:
        return EArvBuffer::Incomplete;
    default:
        return EArvBuffer::Nothing;
    }
}

CUsualImage UsualImageOf(ArvDevice& device)
{
    const auto feature = [&device](const char* name) {
        CArvError error;
        const gint64 value = arv_device_get_integer_feature_value(&device, name, &error);
        return error.IsSet() || value < 0 ? uint64_t{0} : static_cast<uint64_t>(value);
    };
    return {feature("Width"), feature("Height"), feature("OffsetX"), feature("OffsetY"),
            feature("PixelFormat")};
}

CFrameInfo FrameOf(ArvBuffer& buffer, const CUsualImage& usual, bool isBigEndian)
{
    CFrameInfo info;
    info.frameId = arv_buffer_get_frame_id(&buffer);
    info.timestampNs = arv_buffer_get_timestamp(&buffer);
    info.isIncomplete = ResultOf(buffer) == EArvBuffer::Incomplete;
    const auto* const base = static_cast<const uint8_t*>(arv_buffer_get_data(&buffer, &info.sizeFilled));
    info.dataSize = info.sizeFilled;
    const CPayloadRow payload = PayloadOf(arv_buffer_get_payload_type(&buffer));
    info.payloadType = payload.id;
    if (info.isIncomplete) {
        // Its rows are where they belong, whichever of them came.
        info.payloadType = GenTL::PAYLOAD_TYPE_IMAGE;
        info.width = usual.width;
        info.height = info.deliveredHeight = usual.height;
        info.offsetX = usual.offsetX;
        info.offsetY = usual.offsetY;
        info.pixelFormat = usual.pixelFormat;
        return info;
    }
    if (payload.hasImage)
        AddImage(info, buffer);
    if (payload.id == GenTL::PAYLOAD_TYPE_MULTI_PART) {
        const guint count = arv_buffer_get_n_parts(&buffer);
        for (guint i = 0; i < count; ++i)
            info.parts.push_back(PartOf(buffer, i, base));
    }
    if (payload.hasChunks && base) {
        info.chunks = FindChunks(base, info.sizeFilled, isBigEndian);
        info.chunkSize = info.chunks.empty() ? 0 : info.sizeFilled;
    }
    return info;
}

} // namespace KxAravis
