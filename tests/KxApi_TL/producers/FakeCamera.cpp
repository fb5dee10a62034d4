// SPDX-License-Identifier: Apache-2.0
// The producer of FakeCamera.h: a camera "cam" with one stream "stream", ports and events. Built with
// FAKE_VERSION_1_0_ONLY it lacks what later versions of the interface brought.

#define GCTLIDLL
#include "FakeDescriptions.h"
#include "FakeWorld.h"

namespace
{

using namespace GenTL;
using namespace KxTest;

using Lock = std::unique_lock<std::mutex>;

constexpr uint64_t kXmlAddress = 0x10000;

// Handles are addresses of these.
char g_device, g_remote, g_stream;
using EventKey = std::pair<char, int32_t>;
std::map<EventKey, EventKey> g_events; // by themselves, for handles

/// Modules by the letters that tests name them by; interfaces and systems are 'i'.
char ModuleOf(const void* handle)
{
    return handle == &g_device ? 'l' : handle == &g_remote ? 'r' : handle == &g_stream ? 's' : 'i';
}

/// The error that a test wants of a function.
GC_ERROR Wanted(const char* function)
{
    const auto place = g_camera.errors.find(function);
    return place == g_camera.errors.end() ? GC_ERR_SUCCESS : place->second;
}

#define FAKE_ENTER(function)                                                                                 \
    const Lock lock(g_camera.mutex);                                                                         \
    if (const GC_ERROR wanted = Wanted(function); wanted != GC_ERR_SUCCESS)                                  \
    return wanted

std::string DescriptionOf(char module)
{
    if (const auto place = g_camera.descriptions.find(module); place != g_camera.descriptions.end())
        return place->second;
    return module == 'r'   ? RemoteDescription()
           : module == 'l' ? ModuleDescription("DevicePort")
           : module == 's' ? ModuleDescription("StreamPort")
                           : InterfaceDescription();
}

std::vector<std::string> UrlsOf(char module)
{
    if (const auto place = g_camera.urls.find(module); place != g_camera.urls.end())
        return place->second;
    char text[64];
    std::snprintf(text, sizeof(text), "Local:fake.xml;%llX;%zX", static_cast<unsigned long long>(kXmlAddress),
                  DescriptionOf(module).size());
    return {text};
}

const FakeBuffer* ToBuffer(void* handle)
{
    for (const FakeBuffer& buffer : g_camera.buffers) {
        if (&buffer == handle)
            return &buffer;
    }
    return nullptr;
}

FakeInfos InfosOf(const FakeBuffer& buffer)
{
    const size_t width = g_camera.registers[kFakeWidth], height = g_camera.registers[kFakeHeight];
    return {{BUFFER_INFO_BASE, Told<void*>(buffer.base, INFO_DATATYPE_PTR)},
            {BUFFER_INFO_WIDTH, ToldSize(width)},
            {BUFFER_INFO_HEIGHT, ToldSize(height)},
            {BUFFER_INFO_PIXELFORMAT, ToldU64(g_camera.registers[kFakePixelFormat])},
            {BUFFER_INFO_PIXELFORMAT_NAMESPACE, ToldU64(PIXELFORMAT_NAMESPACE_PFNC_32BIT)},
            {BUFFER_INFO_PAYLOADTYPE, ToldSize(PAYLOAD_TYPE_IMAGE)},
            {BUFFER_INFO_IMAGEPRESENT, ToldBool(true)},
            {BUFFER_INFO_IS_INCOMPLETE, ToldBool(false)},
            {BUFFER_INFO_NEW_DATA, ToldBool(true)},
            {BUFFER_INFO_CONTAINS_CHUNKDATA, ToldBool(!g_camera.chunks.empty())},
            {BUFFER_INFO_SIZE_FILLED, ToldSize(buffer.size)}};
}

const EventKey* ToEvent(void* handle)
{
    for (const auto& [key, same] : g_events) {
        if (&same == handle)
            return &key;
    }
    return nullptr;
}

/// An event as a block of bytes, as EventGetData gives it out: both answers, one behind the other.
std::string Pack(const FakeEvent& event)
{
    std::string block;
    for (const FakeInfo& info : {event.id, event.value}) {
        const uint64_t head[2] = {static_cast<uint64_t>(info.type), info.bytes.size()};
        block.append(reinterpret_cast<const char*>(head), sizeof(head)).append(info.bytes);
    }
    return block;
}

FakeInfo Unpack(const char* block, bool isValue)
{
    uint64_t head[2];
    std::memcpy(head, block, sizeof(head));
    if (isValue)
        return Unpack(block + sizeof(head) + head[1], false);
    return {GC_ERR_SUCCESS, static_cast<int32_t>(head[0]), std::string(block + sizeof(head), head[1])};
}

} // namespace

KxTest::FakeCamera KxTest::g_camera;
KxTest::FakeCamera* KxFakeCamera() { return &g_camera; }

namespace GenTL
{

GC_API IFOpenDevice(IF_HANDLE, const char* id, DEVICE_ACCESS_FLAGS access, DEV_HANDLE* device)
{
    FAKE_ENTER("IFOpenDevice");
    if (std::string(id) != "cam")
        return GC_ERR_INVALID_ID;
    if (g_camera.access != 0)
        return GC_ERR_RESOURCE_IN_USE;
    g_camera.access = access;
    *device = &g_device;
    return GC_ERR_SUCCESS;
}
GC_API DevClose(DEV_HANDLE)
{
    const Lock lock(g_camera.mutex);
    g_camera.log.emplace_back(g_camera.isStreamOpen ? "close with stream" : "close");
    g_camera.access = 0;
    return GC_ERR_SUCCESS;
}
GC_API DevGetInfo(DEV_HANDLE, DEVICE_INFO_CMD command, INFO_DATATYPE* type, void* buffer, size_t* size)
{
    FAKE_ENTER("DevGetInfo");
    return AnswerBy({&g_camera.deviceInfos}, command, type, buffer, size);
}
GC_API DevGetPort(DEV_HANDLE, PORT_HANDLE* port)
{
    FAKE_ENTER("DevGetPort");
    *port = &g_remote;
    return GC_ERR_SUCCESS;
}
GC_API DevGetNumDataStreams(DEV_HANDLE, uint32_t* count)
{
    FAKE_ENTER("DevGetNumDataStreams");
    *count = 1;
    return GC_ERR_SUCCESS;
}
GC_API DevGetDataStreamID(DEV_HANDLE, uint32_t, char* id, size_t* size)
{
    return Answer(ToldText("stream"), nullptr, id, size);
}

GC_API GCGetPortURL(PORT_HANDLE handle, char* url, size_t* size)
{
    FAKE_ENTER("GCGetPortURL");
    return Answer(ToldText(UrlsOf(ModuleOf(handle)).front()), nullptr, url, size);
}
GC_API GCGetPortInfo(PORT_HANDLE handle, PORT_INFO_CMD command, INFO_DATATYPE* type, void* buffer,
                     size_t* size)
{
    // The remote one keeps its name to itself.
    if (command != PORT_INFO_PORTNAME || handle == &g_remote)
        return GC_ERR_NOT_AVAILABLE;
    const char module = ModuleOf(handle);
    const char* const name = module == 'l' ? "DevicePort" : module == 's' ? "StreamPort" : "FakePort";
    return Answer(ToldText(name), type, buffer, size);
}
GC_API GCReadPort(PORT_HANDLE handle, uint64_t address, void* buffer, size_t* size)
{
    FAKE_ENTER("GCReadPort");
    if (g_camera.isUnplugged && handle == &g_remote)
        return GC_ERR_IO;
    if (address == kXmlAddress) {
        const std::string description = DescriptionOf(ModuleOf(handle));
        std::memcpy(buffer, description.data(), std::min(*size, description.size()));
        return GC_ERR_SUCCESS;
    }
    if (ModuleOf(handle) == 'i')
        return ReadDeviceCount(handle, address, buffer, size);
    if (handle != &g_remote || *size != 4 || g_camera.registers.count(address) == 0)
        return GC_ERR_INVALID_ADDRESS;
    std::memcpy(buffer, &g_camera.registers[address], 4);
    if (const auto place = g_camera.shortReads.find(address); place != g_camera.shortReads.end())
        *size = place->second;
    return GC_ERR_SUCCESS;
}
GC_API GCWritePort(PORT_HANDLE handle, uint64_t address, const void* buffer, size_t* size)
{
    FAKE_ENTER("GCWritePort");
    if (g_camera.isUnplugged)
        return GC_ERR_IO;
    if (ModuleOf(handle) == 'i') {
        *size = 0; // claims success, and did nothing
        return GC_ERR_SUCCESS;
    }
    if (handle != &g_remote || *size != 4 || g_camera.registers.count(address) == 0)
        return GC_ERR_INVALID_ADDRESS;
    std::memcpy(&g_camera.registers[address], buffer, 4);
    if (address == kFakeLock)
        g_camera.log.emplace_back(g_camera.registers[address] ? "lock" : "unlock");
    if (address == kFakeStart)
        g_camera.log.emplace_back("camera starts");
    if (address == kFakeStop)
        g_camera.log.emplace_back("camera stops");
    return GC_ERR_SUCCESS;
}

GC_API GCRegisterEvent(EVENTSRC_HANDLE source, EVENT_TYPE kind, EVENT_HANDLE* event)
{
    FAKE_ENTER("GCRegisterEvent");
    const EventKey key{ModuleOf(source), kind};
    if (!g_camera.queues.emplace(key, FakeEventQueue()).second)
        return GC_ERR_RESOURCE_IN_USE;
    *event = &g_events.emplace(key, key).first->second;
    return GC_ERR_SUCCESS;
}
GC_API GCUnregisterEvent(EVENTSRC_HANDLE source, EVENT_TYPE kind)
{
    const Lock lock(g_camera.mutex);
    if (g_camera.queues.erase({ModuleOf(source), kind}) == 0)
        return GC_ERR_INVALID_HANDLE;
    g_camera.changed.notify_all();
    return GC_ERR_SUCCESS;
}
GC_API EventKill(EVENT_HANDLE event)
{
    const Lock lock(g_camera.mutex);
    const EventKey* const key = ToEvent(event);
    const auto queue = key ? g_camera.queues.find(*key) : g_camera.queues.end();
    if (queue == g_camera.queues.end())
        return GC_ERR_INVALID_HANDLE;
    queue->second.isKilled = true;
    g_camera.changed.notify_all();
    return GC_ERR_SUCCESS;
}
GC_API EventGetData(EVENT_HANDLE event, void* buffer, size_t* size, uint64_t timeout)
{
    if (timeout == GENTL_INFINITE)
        return GC_ERR_INVALID_PARAMETER; // a consumer must not hang on a producer
    Lock lock(g_camera.mutex);
    const EventKey* const key = ToEvent(event);
    if (!key)
        return GC_ERR_INVALID_HANDLE;
    const auto isNews = [&] {
        const auto queue = g_camera.queues.find(*key);
        return queue == g_camera.queues.end() || queue->second.isKilled || !queue->second.events.empty();
    };
    g_camera.changed.wait_for(lock, std::chrono::milliseconds(timeout), isNews);
    ++g_camera.hangingCount;
    g_camera.changed.wait(lock, [] { return !g_camera.isHanging; });
    --g_camera.hangingCount;
    const auto queue = g_camera.queues.find(*key);
    if (queue == g_camera.queues.end() || std::exchange(queue->second.isKilled, false))
        return GC_ERR_ABORT;
    if (const GC_ERROR wanted = Wanted("EventGetData"); wanted != GC_ERR_SUCCESS)
        return wanted;
    if (queue->second.events.empty())
        return GC_ERR_TIMEOUT;
    const FakeEvent next = std::move(queue->second.events.front());
    queue->second.events.pop_front();
    const bool isBuffer = key->second == EVENT_NEW_BUFFER;
    const std::string block = isBuffer ? next.id.bytes + next.value.bytes : Pack(next);
    if (*size < block.size())
        return GC_ERR_BUFFER_TOO_SMALL;
    std::memcpy(buffer, block.data(), block.size());
    *size = isBuffer ? g_camera.eventSize : block.size();
    return GC_ERR_SUCCESS;
}
GC_API EventGetDataInfo(EVENT_HANDLE, const void* block, size_t, EVENT_DATA_INFO_CMD command,
                        INFO_DATATYPE* type, void* buffer, size_t* size)
{
    if (command == EVENT_DATA_NUMID)
        return GC_ERR_NOT_AVAILABLE;
    return Answer(Unpack(static_cast<const char*>(block), command == EVENT_DATA_VALUE), type, buffer, size);
}
GC_API EventGetInfo(EVENT_HANDLE, EVENT_INFO_CMD, INFO_DATATYPE*, void*, size_t*)
{
    return GC_ERR_NOT_AVAILABLE;
}
GC_API EventFlush(EVENT_HANDLE) { return GC_ERR_SUCCESS; }

GC_API DevOpenDataStream(DEV_HANDLE, const char*, DS_HANDLE* stream)
{
    FAKE_ENTER("DevOpenDataStream");
    if (std::exchange(g_camera.isStreamOpen, true))
        return GC_ERR_RESOURCE_IN_USE;
    *stream = &g_stream;
    return GC_ERR_SUCCESS;
}
GC_API DSClose(DS_HANDLE)
{
    const Lock lock(g_camera.mutex);
    g_camera.log.emplace_back(g_camera.isStarted         ? "close running stream"
                              : g_camera.buffers.empty() ? "close stream"
                                                         : "close stream with buffers");
    g_camera.isStreamOpen = g_camera.isStarted = false;
    g_camera.buffers.clear();
    g_camera.input.clear();
    return GC_ERR_SUCCESS;
}
GC_API DSGetInfo(DS_HANDLE, STREAM_INFO_CMD command, INFO_DATATYPE* type, void* buffer, size_t* size)
{
    FAKE_ENTER("DSGetInfo");
    const FakeInfos infos{{STREAM_INFO_NUM_UNDERRUN, ToldU64(g_camera.underruns)},
                          {STREAM_INFO_BUF_ANNOUNCE_MIN, ToldSize(2)}};
    return AnswerBy({&g_camera.streamInfos, &infos}, command, type, buffer, size);
}
GC_API DSAnnounceBuffer(DS_HANDLE, void* base, size_t size, void*, BUFFER_HANDLE* handle)
{
    FAKE_ENTER("DSAnnounceBuffer");
    FakeBuffer& buffer = g_camera.buffers.emplace_back();
    buffer.base = base;
    buffer.size = size;
    *handle = &buffer;
    return GC_ERR_SUCCESS;
}
GC_API DSAllocAndAnnounceBuffer(DS_HANDLE, size_t size, void*, BUFFER_HANDLE* handle)
{
    FAKE_ENTER("DSAllocAndAnnounceBuffer");
    FakeBuffer& buffer = g_camera.buffers.emplace_back();
    buffer.owned.resize(size);
    buffer.base = buffer.owned.data();
    buffer.size = size;
    *handle = &buffer;
    return GC_ERR_SUCCESS;
}
GC_API DSRevokeBuffer(DS_HANDLE, BUFFER_HANDLE handle, void**, void**)
{
    FAKE_ENTER("DSRevokeBuffer");
    const FakeBuffer* const buffer = ToBuffer(handle);
    if (!buffer || !buffer->base)
        return GC_ERR_INVALID_HANDLE;
    if (buffer->isQueued)
        return GC_ERR_BUSY;
    static_cast<FakeBuffer*>(handle)->base = nullptr;
    const auto isGone = [](const FakeBuffer& candidate) { return !candidate.base; };
    if (std::all_of(g_camera.buffers.begin(), g_camera.buffers.end(), isGone))
        g_camera.buffers.clear();
    return GC_ERR_SUCCESS;
}
GC_API DSQueueBuffer(DS_HANDLE, BUFFER_HANDLE handle)
{
    FAKE_ENTER("DSQueueBuffer");
    auto* const buffer = static_cast<FakeBuffer*>(handle);
    if (!ToBuffer(handle) || !buffer->base)
        return GC_ERR_INVALID_HANDLE;
    if (std::exchange(buffer->isQueued, true))
        return GC_ERR_RESOURCE_IN_USE;
    g_camera.input.push_back(buffer);
    return GC_ERR_SUCCESS;
}
GC_API DSFlushQueue(DS_HANDLE, ACQ_QUEUE_TYPE)
{
    const Lock lock(g_camera.mutex);
    for (FakeBuffer& buffer : g_camera.buffers)
        buffer.isQueued = false;
    g_camera.input.clear();
    return GC_ERR_SUCCESS;
}
GC_API DSStartAcquisition(DS_HANDLE, ACQ_START_FLAGS, uint64_t)
{
    FAKE_ENTER("DSStartAcquisition");
    g_camera.isStarted = true;
    g_camera.log.emplace_back("stream starts");
    return GC_ERR_SUCCESS;
}
GC_API DSStopAcquisition(DS_HANDLE, ACQ_STOP_FLAGS)
{
    const Lock lock(g_camera.mutex);
    g_camera.isStarted = false;
    g_camera.log.emplace_back("stream stops");
    return Wanted("DSStopAcquisition");
}
GC_API DSGetBufferID(DS_HANDLE, uint32_t, BUFFER_HANDLE*) { return GC_ERR_NOT_IMPLEMENTED; }
GC_API DSGetBufferInfo(DS_HANDLE, BUFFER_HANDLE handle, BUFFER_INFO_CMD command, INFO_DATATYPE* type,
                       void* buffer, size_t* size)
{
    FAKE_ENTER("DSGetBufferInfo");
    const FakeBuffer* const fake = ToBuffer(handle);
    if (!fake)
        return GC_ERR_INVALID_HANDLE;
    const FakeInfos usual = InfosOf(*fake);
    return AnswerBy({&fake->infos, &g_camera.bufferInfos, &usual}, command, type, buffer, size);
}

#ifndef FAKE_VERSION_1_0_ONLY
GC_API GCGetNumPortURLs(PORT_HANDLE handle, uint32_t* count)
{
    FAKE_ENTER("GCGetNumPortURLs");
    *count = static_cast<uint32_t>(UrlsOf(ModuleOf(handle)).size());
    return GC_ERR_SUCCESS;
}
GC_API GCGetPortURLInfo(PORT_HANDLE handle, uint32_t index, URL_INFO_CMD command, INFO_DATATYPE* type,
                        void* buffer, size_t* size)
{
    FAKE_ENTER("GCGetPortURLInfo");
    return command == URL_INFO_URL ? Answer(ToldText(UrlsOf(ModuleOf(handle)).at(index)), type, buffer, size)
                                   : GC_ERR_NOT_AVAILABLE;
}
GC_API DSGetNumBufferParts(DS_HANDLE, BUFFER_HANDLE handle, uint32_t* count)
{
    FAKE_ENTER("DSGetNumBufferParts");
    *count = static_cast<uint32_t>(ToBuffer(handle)->parts.size());
    return GC_ERR_SUCCESS;
}
GC_API DSGetBufferPartInfo(DS_HANDLE, BUFFER_HANDLE handle, uint32_t index, BUFFER_PART_INFO_CMD command,
                           INFO_DATATYPE* type, void* buffer, size_t* size)
{
    FAKE_ENTER("DSGetBufferPartInfo");
    const FakeBuffer& fake = *ToBuffer(handle);
    const FakeInfos base{
        {BUFFER_PART_INFO_BASE,
         Told<void*>(static_cast<uint8_t*>(fake.base) + fake.parts.at(index).place, INFO_DATATYPE_PTR)}};
    return AnswerBy({&fake.parts.at(index).infos, &base}, command, type, buffer, size);
}
GC_API DSGetBufferChunkData(DS_HANDLE, BUFFER_HANDLE, SINGLE_CHUNK_DATA* chunks, size_t* count)
{
    FAKE_ENTER("DSGetBufferChunkData");
    if (chunks)
        std::copy_n(g_camera.chunks.begin(), std::min(*count, g_camera.chunks.size()), chunks);
    *count = g_camera.chunks.size();
    return GC_ERR_SUCCESS;
}
#endif

} // namespace GenTL
