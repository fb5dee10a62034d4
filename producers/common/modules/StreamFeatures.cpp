// SPDX-License-Identifier: Apache-2.0
// Node map of a stream, by the naming convention of GenTL.

#include "Stream.h"

namespace KxProducer
{
namespace
{

struct CCounter
{
    const char *name, *toolTip;
    GenTL::STREAM_INFO_CMD command;
};
constexpr CCounter kCounters[] = {
    {"StreamAnnouncedBufferCount", "Announced buffers", GenTL::STREAM_INFO_NUM_ANNOUNCED},
    {"StreamAnnounceBufferMinimum", "Buffers that have to be announced", GenTL::STREAM_INFO_BUF_ANNOUNCE_MIN},
    {"StreamDeliveredFrameCount", "Images delivered since the start", GenTL::STREAM_INFO_NUM_DELIVERED},
    {"StreamLostFrameCount", "Images lost since the start for want of a buffer",
     GenTL::STREAM_INFO_NUM_UNDERRUN},
    {"StreamInputBufferCount", "Buffers that wait for images", GenTL::STREAM_INFO_NUM_QUEUED},
    {"StreamOutputBufferCount", "Buffers that wait to be fetched", GenTL::STREAM_INFO_NUM_AWAIT_DELIVERY},
    {"StreamStartedFrameCount", "Images begun since the stream was opened", GenTL::STREAM_INFO_NUM_STARTED},
    {"PayloadSize", "Bytes of an image with all that comes with it", GenTL::STREAM_INFO_PAYLOAD_SIZE},
    {"StreamChunkCountMaximum", "Most chunks of an image", GenTL::STREAM_INFO_NUM_CHUNKS_MAX},
    {"StreamBufferAlignment", "Alignment of buffers", GenTL::STREAM_INFO_BUF_ALIGNMENT},
};

} // namespace

void CStream::DescribePort(const CDescriptionHead& head, const char* type)
{
    CFeatureList list;
    list.Category("StreamInformation", "The stream");
    list.Add(String("StreamID", "Its identifier").ReadOnly().Expert().Default(m_id));
    list.Add(Enumeration("StreamType", "Technology").ReadOnly().Expert().Entries({{type, 0, ""}}));
    list.Category("BufferHandlingControl", "Its buffers");
    list.Add(
        Enumeration("StreamBufferHandlingMode", "What happens when images come faster than they are fetched")
            .Entries({{"OldestFirst", 0, "Each buffer is delivered; images without a buffer are lost"},
                      {"OldestFirstOverwrite", 1, "Without a buffer, the oldest that waits is filled anew"},
                      {"NewestOnly", 2, "Only the newest waits"}}));
    for (const CCounter& counter : kCounters)
        list.Add(Integer(counter.name, counter.toolTip).Wide().ReadOnly().Expert().Volatile());
    list.Add(Boolean("StreamIsGrabbing", "Whether images are taken over").ReadOnly().Expert().Volatile());
    m_port.Publish(list, head);

    const auto number = [this](GenTL::STREAM_INFO_CMD command) {
        const CInfo info = GetInfo(command);
        uint64_t value = 0;
        info.bytes.copy(reinterpret_cast<char*>(&value), sizeof value);
        return static_cast<int64_t>(value);
    };
    for (const CCounter& counter : kCounters)
        m_port.BindInteger(counter.name,
                           [number, command = counter.command](size_t) { return number(command); });
    m_port.BindInteger("StreamIsGrabbing",
                       [number](size_t) { return number(GenTL::STREAM_INFO_IS_GRABBING); });
    m_port.BindWrite("StreamBufferHandlingMode", [this](int64_t value, size_t) {
        const KxApi::CKxMutexLock lock(m_queues->mutex);
        m_queues->handling = static_cast<EBufferHandling>(value);
    });
}

} // namespace KxProducer
