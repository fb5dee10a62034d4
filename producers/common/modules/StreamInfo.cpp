// SPDX-License-Identifier: Apache-2.0
// What a stream tells of itself, of its buffers and of their parts.

#include "Stream.h"

namespace KxProducer
{
namespace
{

using KxApi::CKxMutexLock;

} // namespace

CInfo CStream::GetInfo(GenTL::STREAM_INFO_CMD command)
{
    if (command == GenTL::STREAM_INFO_PAYLOAD_SIZE)
        return SizeInfo(PayloadSize());
    const CKxMutexLock lock(m_queues->mutex);
    switch (command) {
    case GenTL::STREAM_INFO_ID:
        return TextInfo(m_id);
    case GenTL::STREAM_INFO_NUM_DELIVERED:
        return UInt64Info(m_delivered);
    case GenTL::STREAM_INFO_NUM_UNDERRUN:
        return UInt64Info(m_underruns);
    case GenTL::STREAM_INFO_NUM_ANNOUNCED:
        return SizeInfo(m_queues->All().size());
    case GenTL::STREAM_INFO_NUM_QUEUED:
        return SizeInfo(m_queues->CountOf(EBufferState::Input) + m_queues->CountOf(EBufferState::Filling));
    case GenTL::STREAM_INFO_NUM_AWAIT_DELIVERY:
        return SizeInfo(m_queues->CountOf(EBufferState::Output));
    case GenTL::STREAM_INFO_NUM_STARTED:
        return UInt64Info(m_begun);
    case GenTL::STREAM_INFO_IS_GRABBING:
        return BoolInfo(m_isGrabbing);
    case GenTL::STREAM_INFO_DEFINES_PAYLOADSIZE:
        return BoolInfo(DefinesPayloadSize());
    case GenTL::STREAM_INFO_TLTYPE:
        return TextInfo(TlType());
    case GenTL::STREAM_INFO_NUM_CHUNKS_MAX:
        return SizeInfo(MaxChunks());
    case GenTL::STREAM_INFO_BUF_ANNOUNCE_MIN:
        return SizeInfo(MinBuffers());
    case GenTL::STREAM_INFO_BUF_ALIGNMENT:
        return SizeInfo(1);
    case GenTL::STREAM_INFO_FLOW_TABLE:
    case GenTL::STREAM_INFO_GENDC_PREFETCH_DESCRIPTOR:
        Fail(GenTL::GC_ERR_NO_DATA, "There are no flows");
    default:
        FailUnknownInfo(command);
    }
}

namespace
{

/// What a payload of several parts tells of each of them, and not of the whole.
bool IsOfParts(GenTL::BUFFER_INFO_CMD command)
{
    switch (command) {
    case GenTL::BUFFER_INFO_WIDTH:
    case GenTL::BUFFER_INFO_HEIGHT:
    case GenTL::BUFFER_INFO_XOFFSET:
    case GenTL::BUFFER_INFO_YOFFSET:
    case GenTL::BUFFER_INFO_XPADDING:
    case GenTL::BUFFER_INFO_PIXELFORMAT:
    case GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE:
    case GenTL::BUFFER_INFO_DELIVERED_IMAGEHEIGHT:
        return true;
    default:
        return false;
    }
}

CInfo FrameFact(const CFrameInfo& frame, GenTL::BUFFER_INFO_CMD command)
{
    switch (command) {
    case GenTL::BUFFER_INFO_TIMESTAMP:
    case GenTL::BUFFER_INFO_TIMESTAMP_NS:
        return UInt64Info(frame.timestampNs);
    case GenTL::BUFFER_INFO_IS_INCOMPLETE:
        return BoolInfo(frame.isIncomplete);
    case GenTL::BUFFER_INFO_SIZE_FILLED:
        return SizeInfo(frame.sizeFilled);
    case GenTL::BUFFER_INFO_DATA_SIZE:
        return SizeInfo(frame.dataSize);
    case GenTL::BUFFER_INFO_WIDTH:
        return SizeInfo(frame.width);
    case GenTL::BUFFER_INFO_HEIGHT:
        return SizeInfo(frame.height);
    case GenTL::BUFFER_INFO_XOFFSET:
        return SizeInfo(frame.offsetX);
    case GenTL::BUFFER_INFO_YOFFSET:
        return SizeInfo(frame.offsetY);
    case GenTL::BUFFER_INFO_XPADDING:
        return SizeInfo(frame.xPadding);
    case GenTL::BUFFER_INFO_YPADDING:
        return SizeInfo(frame.yPadding);
    case GenTL::BUFFER_INFO_IMAGEOFFSET:
        return SizeInfo(frame.imageOffset);
    case GenTL::BUFFER_INFO_FRAMEID:
        return UInt64Info(frame.frameId);
    case GenTL::BUFFER_INFO_PAYLOADTYPE:
        return SizeInfo(static_cast<size_t>(frame.payloadType));
    case GenTL::BUFFER_INFO_PIXELFORMAT:
        return UInt64Info(frame.pixelFormat);
    case GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE:
        return UInt64Info(GenTL::PIXELFORMAT_NAMESPACE_PFNC_32BIT);
    case GenTL::BUFFER_INFO_DELIVERED_IMAGEHEIGHT:
        return SizeInfo(frame.deliveredHeight);
    case GenTL::BUFFER_INFO_DELIVERED_CHUNKPAYLOADSIZE:
        return SizeInfo(frame.chunkSize);
    case GenTL::BUFFER_INFO_CHUNKLAYOUTID:
        return UInt64Info(frame.chunkLayout);
    case GenTL::BUFFER_INFO_PIXEL_ENDIANNESS:
        return Int32Info(frame.isBigEndian ? GenTL::PIXELENDIANNESS_BIG : GenTL::PIXELENDIANNESS_LITTLE);
    case GenTL::BUFFER_INFO_CONTAINS_CHUNKDATA:
        return BoolInfo(!frame.chunks.empty());
    case GenTL::BUFFER_INFO_FILENAME:
        Fail(GenTL::GC_ERR_NO_DATA, "The buffer holds no file");
    default:
        FailUnknownInfo(command);
    }
}

} // namespace

CInfo CStream::GetBufferInfo(const CBuffer& buffer, GenTL::BUFFER_INFO_CMD command)
{
    const CKxMutexLock lock(m_queues->mutex);
    const bool hasParts = buffer.frame.payloadType == GenTL::PAYLOAD_TYPE_MULTI_PART;
    if (hasParts && IsOfParts(command))
        Fail(GenTL::GC_ERR_NO_DATA, "The buffer has parts, which tell it");
    switch (command) {
    case GenTL::BUFFER_INFO_BASE:
        return PointerInfo(buffer.base);
    case GenTL::BUFFER_INFO_SIZE:
        return SizeInfo(buffer.size);
    case GenTL::BUFFER_INFO_USER_PTR:
        return PointerInfo(buffer.user);
    case GenTL::BUFFER_INFO_NEW_DATA:
        return BoolInfo(buffer.hasNewData);
    case GenTL::BUFFER_INFO_IS_QUEUED:
        return BoolInfo(buffer.state != EBufferState::Idle);
    case GenTL::BUFFER_INFO_IS_ACQUIRING:
        return BoolInfo(buffer.state == EBufferState::Filling);
    case GenTL::BUFFER_INFO_TLTYPE:
        return TextInfo(TlType());
    case GenTL::BUFFER_INFO_IMAGEPRESENT:
        return BoolInfo(buffer.hasNewData && !hasParts);
    case GenTL::BUFFER_INFO_DATA_LARGER_THAN_BUFFER:
        return BoolInfo(buffer.frame.dataSize > buffer.size);
    case GenTL::BUFFER_INFO_IS_COMPOSITE:
        return BoolInfo(false);
    default:
        return FrameFact(buffer.frame, command);
    }
}

CInfo CStream::GetPartInfo(const CBuffer& buffer, uint32_t index, GenTL::BUFFER_PART_INFO_CMD command)
{
    const uint32_t count = GetPartCount(buffer);
    if (index >= count)
        Fail(GenTL::GC_ERR_INVALID_INDEX, "The buffer has %u parts, none with index %u", count, index);
    const CKxMutexLock lock(m_queues->mutex);
    const CPartInfo& part = buffer.frame.parts[index];
    switch (command) {
    case GenTL::BUFFER_PART_INFO_BASE:
        return PointerInfo(buffer.base + part.offset);
    case GenTL::BUFFER_PART_INFO_DATA_SIZE:
        return SizeInfo(part.size);
    case GenTL::BUFFER_PART_INFO_DATA_TYPE:
        return SizeInfo(static_cast<size_t>(part.dataType));
    case GenTL::BUFFER_PART_INFO_DATA_FORMAT:
        return UInt64Info(part.pixelFormat);
    case GenTL::BUFFER_PART_INFO_DATA_FORMAT_NAMESPACE:
        return UInt64Info(GenTL::PIXELFORMAT_NAMESPACE_PFNC_32BIT);
    case GenTL::BUFFER_PART_INFO_WIDTH:
        return SizeInfo(part.width);
    case GenTL::BUFFER_PART_INFO_HEIGHT:
        return SizeInfo(part.height);
    case GenTL::BUFFER_PART_INFO_XOFFSET:
        return SizeInfo(part.offsetX);
    case GenTL::BUFFER_PART_INFO_YOFFSET:
        return SizeInfo(part.offsetY);
    case GenTL::BUFFER_PART_INFO_XPADDING:
        return SizeInfo(part.xPadding);
    case GenTL::BUFFER_PART_INFO_SOURCE_ID:
        return UInt64Info(part.sourceId);
    case GenTL::BUFFER_PART_INFO_DELIVERED_IMAGEHEIGHT:
        return SizeInfo(part.deliveredHeight);
    case GenTL::BUFFER_PART_INFO_REGION_ID:
        return UInt64Info(part.regionId);
    case GenTL::BUFFER_PART_INFO_DATA_PURPOSE_ID:
        return UInt64Info(part.purposeId);
    default:
        FailUnknownInfo(command);
    }
}

} // namespace KxProducer
