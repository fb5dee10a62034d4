// SPDX-License-Identifier: Apache-2.0
// The system and the interfaces of a fake producer: one interface "GEV" with the camera "cam", unless a test
// writes others into the environment variable KXAPI_FAKE_WORLD, where each update of a list reads them anew:
// "GEV=camA/1,camB/3;U3V=camC/1;CXP!=": interfaces with their devices, each with its access status. An
// interface with "!" answers updates with an I/O error, one with "?" tells of a million devices, in one with
// "~" a search lasts until KxFakeLetGo is called. Texts that nobody needs are NOT_AVAILABLE. Built with
// FAKE_SLOW, GCInitLib lasts until KxFakeLetGo is called, and TLOpen until it is called once more.

#define GCTLIDLL
#include "FakeWorld.h"

#include <cstdlib>
#include <new>
#include <sstream>

namespace
{

using namespace GenTL;
using namespace KxTest;

struct Interface
{
    std::string id;
    char manner = ' '; ///< one of "!?~" that stands behind its ID
    bool isOpen = false;
    std::map<std::string, int32_t> devices; ///< by their IDs with their access status
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

void ReadWorld()
{
    const char* const world = std::getenv("KXAPI_FAKE_WORLD");
    g_present.clear();
    std::istringstream entries(world ? world : "GEV=cam/1");
    for (std::string entry; std::getline(entries, entry, ';');) {
        const std::string id = entry.substr(0, entry.find_first_of("!?~="));
        Interface& interface = g_interfaces[id];
        interface.id = id;
        interface.manner = entry.at(id.size());
        interface.devices.clear();
        std::istringstream devices(entry.substr(entry.find('=') + 1));
        for (std::string device; std::getline(devices, device, ',');) {
            const size_t slash = device.find('/');
            interface.devices[device.substr(0, slash)] = std::stoi(device.substr(slash + 1));
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

Interface* ToInterface(const void* handle)
{
    for (auto& [id, interface] : g_interfaces) {
        if (&interface == handle && interface.isOpen)
            return &interface;
    }
    return nullptr;
}

} // namespace

GenTL::GC_ERROR KxTest::ReadDeviceCount(const void* handle, uint64_t address, void* buffer, size_t* size)
{
    // Registers may be read while lists are updated.
    const std::lock_guard<std::mutex> lock(g_mutex);
    const Interface* const interface = ToInterface(handle);
    if (address != 8 || *size != 4 || !interface)
        return GC_ERR_INVALID_ADDRESS;
    const uint32_t count = static_cast<uint32_t>(interface->devices.size());
    std::memcpy(buffer, &count, sizeof(count));
    return GC_ERR_SUCCESS;
}

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
    const std::lock_guard<std::mutex> lock(g_camera.mutex);
    g_camera.log.emplace_back(isTidy ? "close system" : "close system with open interfaces");
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
GC_API IFGetInfo(IF_HANDLE, INTERFACE_INFO_CMD, INFO_DATATYPE*, void*, size_t*)
{
    return GC_ERR_NOT_IMPLEMENTED;
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
    if (!interface)
        return GC_ERR_INVALID_HANDLE;
    if (interface->manner == '~')
        BeSlow();
    return interface->manner == '!' ? GC_ERR_IO : GC_ERR_SUCCESS;
}
GC_API IFGetNumDevices(IF_HANDLE handle, uint32_t* count)
{
    const Interface& interface = *ToInterface(handle);
    *count = interface.manner == '?' ? 1000000 : static_cast<uint32_t>(interface.devices.size());
    return GC_ERR_SUCCESS;
}
GC_API IFGetDeviceID(IF_HANDLE handle, uint32_t index, char* id, size_t* size)
{
    return Text(std::next(ToInterface(handle)->devices.begin(), index)->first, nullptr, id, size);
}
GC_API IFGetDeviceInfo(IF_HANDLE handle, const char* id, DEVICE_INFO_CMD command, INFO_DATATYPE* type,
                       void* buffer, size_t* size)
{
    const Interface& interface = *ToInterface(handle);
    const auto device = interface.devices.find(id);
    if (device == interface.devices.end())
        return GC_ERR_INVALID_ID;
    const FakeInfos infos{{DEVICE_INFO_VENDOR, ToldText("Kestrix")},
                          {DEVICE_INFO_MODEL, ToldText("Cam")},
                          {DEVICE_INFO_TLTYPE, ToldText(interface.id)},
                          {DEVICE_INFO_SERIAL_NUMBER, ToldText("SN-" + device->first)},
                          {DEVICE_INFO_ACCESS_STATUS, Told(device->second, INFO_DATATYPE_INT32)}};
    return AnswerBy({&infos}, command, type, buffer, size);
}

} // namespace GenTL
