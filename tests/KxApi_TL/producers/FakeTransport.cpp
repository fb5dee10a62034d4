// SPDX-License-Identifier: Apache-2.0
// A producer whose interfaces and devices a test writes into the environment variable KXAPI_FAKE_WORLD, where
// each update of a list reads them anew: "GEV=camA/1,camB/3;U3V=camC/1;CXP!=": interfaces with their devices,
// each with its access status. An interface with "!" answers updates with an I/O error, one with "?" tells of
// a million devices, in one with "~" a search lasts until KxFakeLetGo is called. Texts that nobody needs are
// NOT_AVAILABLE. Built with FAKE_SLOW, GCInitLib lasts until KxFakeLetGo is called, and TLOpen until it is
// called once more.

#define GCTLIDLL
#include "FakeAnswers.h"
#include "FakeDescriptions.h"

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace GenTL;
using namespace KxTest;

using Devices = std::vector<std::pair<std::string, int32_t>>;

struct Interface
{
    std::string id;
    bool isBroken = false;
    bool isBoundless = false;
    bool isSlow = false;
    bool isOpen = false;
    Devices devices;
};

std::mutex g_mutex;
std::mutex g_slowMutex; // guards the next four
// Never destroyed: a program may end while a call hangs, and its destructor would wait for it.
alignas(std::condition_variable) unsigned char g_slowStorage[sizeof(std::condition_variable)];
std::condition_variable& g_slowChanged = *new (g_slowStorage) std::condition_variable;
int g_slowCalls = 0; ///< that have begun
int g_letGo = 0;     ///< of these, so many may end
bool g_isClosed = false;
bool g_isOpen = false;
std::vector<std::string> g_present;
std::map<std::string, Interface> g_interfaces;

constexpr uint64_t kXmlAddress = 0x10000;
constexpr uint64_t kCountAddress = 0x8;
const std::string& Xml()
{
    static const std::string text =
        Description("<Category Name=\"Root\"><pFeature>DeviceCount</pFeature></Category>\n" +
                    IntReg("DeviceCount", "8", "FakePort") + "<Port Name=\"FakePort\"></Port>\n");
    return text;
}

void ReadWorld()
{
    const char* const world = std::getenv("KXAPI_FAKE_WORLD");
    g_present.clear();
    std::string rest = world ? world : "";
    while (!rest.empty()) {
        const size_t end = std::min(rest.find(';'), rest.size());
        const std::string entry = rest.substr(0, end);
        rest.erase(0, std::min(end + 1, rest.size()));
        const size_t equals = entry.find('=');
        std::string id = entry.substr(0, equals);
        const bool isBroken = id.back() == '!';
        const bool isBoundless = id.back() == '?';
        const bool isSlow = id.back() == '~';
        if (isBroken || isBoundless || isSlow)
            id.pop_back();
        Interface& interface = g_interfaces[id];
        interface.id = id;
        interface.isBroken = isBroken;
        interface.isBoundless = isBoundless;
        interface.isSlow = isSlow;
        interface.devices.clear();
        std::string devices = entry.substr(equals + 1);
        while (!devices.empty()) {
            const size_t comma = std::min(devices.find(','), devices.size());
            const std::string device = devices.substr(0, comma);
            devices.erase(0, std::min(comma + 1, devices.size()));
            const size_t slash = device.find('/');
            interface.devices.emplace_back(device.substr(0, slash), std::stoi(device.substr(slash + 1)));
        }
        g_present.push_back(id);
    }
}

GC_ERROR Text(const std::string& text, INFO_DATATYPE* type, void* buffer, size_t* size)
{
    return Answer(ToldText(text), type, buffer, size);
}

/// Lasts until the test lets go.
void BeSlow()
{
    std::unique_lock<std::mutex> lock(g_slowMutex);
    const int call = ++g_slowCalls;
    g_slowChanged.notify_all();
    g_slowChanged.wait(lock, [call] { return g_letGo >= call; });
}

Interface* ToInterface(void* handle)
{
    for (auto& [id, interface] : g_interfaces) {
        if (&interface == handle && interface.isOpen)
            return &interface;
    }
    return nullptr;
}

const std::pair<std::string, int32_t>* FindDevice(const Interface& interface, const std::string& id)
{
    for (const auto& device : interface.devices) {
        if (device.first == id)
            return &device;
    }
    return nullptr;
}

} // namespace

#define FAKE_FOR_TEST extern "C" __attribute__((visibility("default")))

/// Waits until a slow call has begun that wasn't let go yet.
FAKE_FOR_TEST void KxFakeAwaitSlowCall()
{
    std::unique_lock<std::mutex> lock(g_slowMutex);
    g_slowChanged.wait(lock, [] { return g_slowCalls > g_letGo; });
}
FAKE_FOR_TEST void KxFakeLetGo()
{
    const std::lock_guard<std::mutex> lock(g_slowMutex);
    ++g_letGo;
    g_slowChanged.notify_all();
}
/// Waits for GCCloseLib.
FAKE_FOR_TEST void KxFakeAwaitClosed()
{
    std::unique_lock<std::mutex> lock(g_slowMutex);
    g_slowChanged.wait(lock, [] { return g_isClosed; });
}

namespace GenTL
{

GC_API GCInitLib()
{
#ifdef FAKE_SLOW
    BeSlow();
#endif
    return GC_ERR_SUCCESS;
}
GC_API GCCloseLib()
{
    const std::lock_guard<std::mutex> lock(g_slowMutex);
    g_isClosed = !g_isOpen;
    g_slowChanged.notify_all();
    return g_isOpen ? GC_ERR_BUSY : GC_ERR_SUCCESS;
}
GC_API GCGetLastError(GC_ERROR* code, char* text, size_t* size)
{
    *code = GC_ERR_IO;
    return Text("the wire is cut", nullptr, text, size);
}

GC_API TLGetInfo(TL_HANDLE, TL_INFO_CMD command, INFO_DATATYPE* type, void* buffer, size_t* size)
{
    static const FakeInfos infos{{TL_INFO_VENDOR, ToldText("Kestrix")},
                                 {TL_INFO_MODEL, ToldText("Fake")},
                                 {TL_INFO_VERSION, ToldText("1.2.3")},
                                 {TL_INFO_TLTYPE, ToldText("Mixed")},
                                 {TL_INFO_DISPLAYNAME, ToldText("Fake transport")},
                                 {TL_INFO_GENTL_VER_MAJOR, Told<uint32_t>(1, INFO_DATATYPE_UINT32)},
                                 {TL_INFO_GENTL_VER_MINOR, Told<uint32_t>(5, INFO_DATATYPE_UINT32)}};
    return AnswerBy({&infos}, command, type, buffer, size);
}

GC_API GCGetInfo(TL_INFO_CMD command, INFO_DATATYPE* type, void* buffer, size_t* size)
{
    return TLGetInfo(nullptr, command, type, buffer, size);
}

GC_API TLOpen(TL_HANDLE* handle)
{
#ifdef FAKE_SLOW
    BeSlow();
#endif
    if (std::exchange(g_isOpen, true))
        return GC_ERR_RESOURCE_IN_USE;
    *handle = &g_isOpen;
    return GC_ERR_SUCCESS;
}

GC_API TLClose(TL_HANDLE)
{
    // A consumer that leaves an interface open would be found by the next one.
    const bool isTidy = std::none_of(g_interfaces.begin(), g_interfaces.end(),
                                     [](const auto& entry) { return entry.second.isOpen; });
#ifndef FAKE_SLOW // it closes in a thread that may not touch the environment
    setenv("KXAPI_FAKE_CLOSED", isTidy ? "tidy" : "with open interfaces", 1);
#else
    if (!isTidy)
        return GC_ERR_BUSY;
#endif
    g_isOpen = false;
    return GC_ERR_SUCCESS;
}

GC_API TLUpdateInterfaceList(TL_HANDLE, bool8_t*, uint64_t timeout)
{
    if (timeout == GENTL_INFINITE)
        return GC_ERR_INVALID_PARAMETER; // a consumer must not hang on a producer
    const std::lock_guard<std::mutex> lock(g_mutex);
    ReadWorld();
    return GC_ERR_SUCCESS;
}

GC_API TLGetNumInterfaces(TL_HANDLE, uint32_t* count)
{
    *count = static_cast<uint32_t>(g_present.size());
    return GC_ERR_SUCCESS;
}

GC_API TLGetInterfaceID(TL_HANDLE, uint32_t index, char* id, size_t* size)
{
    return index < g_present.size() ? Text(g_present[index], nullptr, id, size) : GC_ERR_INVALID_INDEX;
}

GC_API TLGetInterfaceInfo(TL_HANDLE, const char* id, INTERFACE_INFO_CMD command, INFO_DATATYPE* type,
                          void* buffer, size_t* size)
{
    return Text(command == INTERFACE_INFO_DISPLAYNAME ? std::string("Interface ") + id : id, type, buffer,
                size);
}

GC_API TLOpenInterface(TL_HANDLE, const char* id, IF_HANDLE* handle)
{
    Interface& interface = g_interfaces[id];
    if (std::exchange(interface.isOpen, true))
        return GC_ERR_RESOURCE_IN_USE;
    *handle = &interface;
    return GC_ERR_SUCCESS;
}

GC_API IFClose(IF_HANDLE handle)
{
    Interface* const interface = ToInterface(handle);
    if (!interface)
        return GC_ERR_INVALID_HANDLE;
    interface->isOpen = false;
    return GC_ERR_SUCCESS;
}

GC_API IFUpdateDeviceList(IF_HANDLE handle, bool8_t*, uint64_t)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    ReadWorld();
    const Interface* const interface = ToInterface(handle);
    if (interface && interface->isSlow)
        BeSlow();
    return !interface ? GC_ERR_INVALID_HANDLE : interface->isBroken ? GC_ERR_IO : GC_ERR_SUCCESS;
}

GC_API IFGetNumDevices(IF_HANDLE handle, uint32_t* count)
{
    const Interface& interface = *ToInterface(handle);
    *count = interface.isBoundless ? 1000000 : static_cast<uint32_t>(interface.devices.size());
    return GC_ERR_SUCCESS;
}

GC_API IFGetDeviceID(IF_HANDLE handle, uint32_t index, char* id, size_t* size)
{
    return Text(ToInterface(handle)->devices.at(index).first, nullptr, id, size);
}

GC_API IFGetDeviceInfo(IF_HANDLE handle, const char* id, DEVICE_INFO_CMD command, INFO_DATATYPE* type,
                       void* buffer, size_t* size)
{
    const Interface& interface = *ToInterface(handle);
    const auto* const device = FindDevice(interface, id);
    if (!device)
        return GC_ERR_INVALID_ID;
    const FakeInfos infos{{DEVICE_INFO_VENDOR, ToldText("Kestrix")},
                          {DEVICE_INFO_MODEL, ToldText("Cam")},
                          {DEVICE_INFO_TLTYPE, ToldText(interface.id)},
                          {DEVICE_INFO_SERIAL_NUMBER, ToldText("SN-" + device->first)},
                          {DEVICE_INFO_ACCESS_STATUS, Told<int32_t>(device->second, INFO_DATATYPE_INT32)}};
    return AnswerBy({&infos}, command, type, buffer, size);
}

GC_API GCGetPortURL(PORT_HANDLE, char* url, size_t* size)
{
    char text[64];
    std::snprintf(text, sizeof(text), "Local:fake.xml;%llX;%zX", static_cast<unsigned long long>(kXmlAddress),
                  Xml().size());
    return Text(text, nullptr, url, size);
}

GC_API GCGetPortInfo(PORT_HANDLE, PORT_INFO_CMD command, INFO_DATATYPE* type, void* buffer, size_t* size)
{
    return command == PORT_INFO_PORTNAME ? Text("FakePort", type, buffer, size) : GC_ERR_NOT_AVAILABLE;
}

GC_API GCReadPort(PORT_HANDLE handle, uint64_t address, void* buffer, size_t* size)
{
    if (address == kXmlAddress && *size <= Xml().size()) {
        std::memcpy(buffer, Xml().data(), *size);
        return GC_ERR_SUCCESS;
    }
    // Registers may be read while lists are updated.
    const std::lock_guard<std::mutex> lock(g_mutex);
    const Interface* const interface = ToInterface(handle);
    if (address != kCountAddress || *size != 4 || !interface)
        return GC_ERR_INVALID_ADDRESS;
    const uint32_t count = static_cast<uint32_t>(interface->devices.size());
    std::memcpy(buffer, &count, sizeof(count));
    return GC_ERR_SUCCESS;
}

GC_API GCWritePort(PORT_HANDLE, uint64_t, const void*, size_t* size)
{
    *size = 0; // claims success, and did nothing
    return GC_ERR_SUCCESS;
}

#define FAKE_ABSENT(name, ...)                                                                               \
    GC_API name(__VA_ARGS__) { return GC_ERR_NOT_IMPLEMENTED; }
FAKE_ABSENT(GCRegisterEvent, EVENTSRC_HANDLE, EVENT_TYPE, EVENT_HANDLE*)
FAKE_ABSENT(GCUnregisterEvent, EVENTSRC_HANDLE, EVENT_TYPE)
FAKE_ABSENT(EventGetData, EVENT_HANDLE, void*, size_t*, uint64_t)
FAKE_ABSENT(EventGetDataInfo, EVENT_HANDLE, const void*, size_t, EVENT_DATA_INFO_CMD, INFO_DATATYPE*, void*,
            size_t*)
FAKE_ABSENT(EventGetInfo, EVENT_HANDLE, EVENT_INFO_CMD, INFO_DATATYPE*, void*, size_t*)
FAKE_ABSENT(EventFlush, EVENT_HANDLE)
FAKE_ABSENT(EventKill, EVENT_HANDLE)
FAKE_ABSENT(IFGetInfo, IF_HANDLE, INTERFACE_INFO_CMD, INFO_DATATYPE*, void*, size_t*)
FAKE_ABSENT(IFOpenDevice, IF_HANDLE, const char*, DEVICE_ACCESS_FLAGS, DEV_HANDLE*)
FAKE_ABSENT(DevGetPort, DEV_HANDLE, PORT_HANDLE*)
FAKE_ABSENT(DevGetNumDataStreams, DEV_HANDLE, uint32_t*)
FAKE_ABSENT(DevGetDataStreamID, DEV_HANDLE, uint32_t, char*, size_t*)
FAKE_ABSENT(DevOpenDataStream, DEV_HANDLE, const char*, DS_HANDLE*)
FAKE_ABSENT(DevGetInfo, DEV_HANDLE, DEVICE_INFO_CMD, INFO_DATATYPE*, void*, size_t*)
FAKE_ABSENT(DevClose, DEV_HANDLE)
FAKE_ABSENT(DSAnnounceBuffer, DS_HANDLE, void*, size_t, void*, BUFFER_HANDLE*)
FAKE_ABSENT(DSAllocAndAnnounceBuffer, DS_HANDLE, size_t, void*, BUFFER_HANDLE*)
FAKE_ABSENT(DSFlushQueue, DS_HANDLE, ACQ_QUEUE_TYPE)
FAKE_ABSENT(DSStartAcquisition, DS_HANDLE, ACQ_START_FLAGS, uint64_t)
FAKE_ABSENT(DSStopAcquisition, DS_HANDLE, ACQ_STOP_FLAGS)
FAKE_ABSENT(DSGetInfo, DS_HANDLE, STREAM_INFO_CMD, INFO_DATATYPE*, void*, size_t*)
FAKE_ABSENT(DSGetBufferID, DS_HANDLE, uint32_t, BUFFER_HANDLE*)
FAKE_ABSENT(DSClose, DS_HANDLE)
FAKE_ABSENT(DSRevokeBuffer, DS_HANDLE, BUFFER_HANDLE, void**, void**)
FAKE_ABSENT(DSQueueBuffer, DS_HANDLE, BUFFER_HANDLE)
FAKE_ABSENT(DSGetBufferInfo, DS_HANDLE, BUFFER_HANDLE, BUFFER_INFO_CMD, INFO_DATATYPE*, void*, size_t*)

} // namespace GenTL
