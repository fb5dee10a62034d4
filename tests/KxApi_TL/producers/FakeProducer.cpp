// SPDX-License-Identifier: Apache-2.0
// Producers that have the functions of some version of the interface and do next to nothing: each call
// answers that it isn't implemented. What GCInitLib answers, and which functions are left out, the
// definitions of the build tell.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#ifndef FAKE_INIT_RESULT
#define FAKE_INIT_RESULT 0
#endif

namespace
{

constexpr int32_t kNotImplemented = -1003;

/// What was called, for a test that asks for it: it outlives the library in the environment of the process.
void Log(const char* event)
{
    if (const char* const old = std::getenv("KXAPI_FAKE_PRODUCER_LOG"))
        setenv("KXAPI_FAKE_PRODUCER_LOG", (std::string(old) + event).c_str(), 1);
}

} // namespace

#define FAKE_EXPORT extern "C" __attribute__((visibility("default"))) int32_t

FAKE_EXPORT GCInitLib()
{
    Log("init ");
    return FAKE_INIT_RESULT;
}

FAKE_EXPORT GCCloseLib()
{
    Log("close ");
    return 0;
}

FAKE_EXPORT GCGetLastError(int32_t* code, char* text, size_t* size)
{
    constexpr char kText[] = "the driver is missing";
    *code = FAKE_INIT_RESULT;
    if (text && *size >= sizeof(kText))
        std::memcpy(text, kText, sizeof(kText));
    *size = sizeof(kText);
    return 0;
}

// The functions of version 1.0 that are not written above, without the two that a faulty producer leaves out.
#define FAKE_FUNCTION(name)                                                                                  \
    FAKE_EXPORT name() { return kNotImplemented; }
// clang-format off
#define FAKE_VERSION_1_0(X)                                                                                  \
    X(GCGetInfo)                                                                                             \
    X(GCReadPort)                                                                                            \
    X(GCWritePort) X(GCGetPortURL) X(GCGetPortInfo) X(GCRegisterEvent) X(GCUnregisterEvent) X(EventGetData)  \
        X(EventGetDataInfo) X(EventGetInfo) X(EventFlush) X(EventKill) X(TLOpen) X(TLClose) X(TLGetInfo)     \
            X(TLGetNumInterfaces) X(TLGetInterfaceID) X(TLGetInterfaceInfo) X(TLOpenInterface)               \
                X(TLUpdateInterfaceList) X(IFClose) X(IFGetInfo) X(IFGetNumDevices) X(IFGetDeviceID)         \
                    X(IFUpdateDeviceList) X(IFGetDeviceInfo) X(IFOpenDevice) X(DevGetPort)                   \
                        X(DevGetNumDataStreams) X(DevGetDataStreamID) X(DevOpenDataStream) X(DevGetInfo)     \
                            X(DevClose) X(DSAnnounceBuffer) X(DSAllocAndAnnounceBuffer) X(DSFlushQueue)      \
                                X(DSStartAcquisition) X(DSStopAcquisition) X(DSGetInfo) X(DSGetBufferID)     \
                                    X(DSClose) X(DSRevokeBuffer)
#define FAKE_LATER(X)                                                                                        \
    X(GCGetNumPortURLs) X(GCGetPortURLInfo) X(GCReadPortStacked) X(GCWritePortStacked) X(DSGetBufferChunkData)
#define FAKE_LATEST(X)                                                                                       \
    X(IFGetParentTL)                                                                                         \
    X(DevGetParentIF)                                                                                        \
    X(DSGetParentDev) X(DSGetNumBufferParts) X(DSGetBufferPartInfo) X(DSAnnounceCompositeBuffer)             \
        X(DSGetBufferInfoStacked) X(DSGetBufferPartInfoStacked) X(DSGetNumFlows) X(DSGetFlowInfo)            \
            X(DSGetNumBufferSegments) X(DSGetBufferSegmentInfo)
// clang-format on

FAKE_VERSION_1_0(FAKE_FUNCTION)
#ifndef FAKE_LACKS_QUEUE
FAKE_FUNCTION(DSQueueBuffer)
FAKE_FUNCTION(DSGetBufferInfo)
#endif
#if !defined(FAKE_LACKS_QUEUE) && !defined(FAKE_VERSION_1_0_ONLY)
FAKE_LATER(FAKE_FUNCTION)
#ifndef FAKE_VERSION_1_3_ONLY
FAKE_LATEST(FAKE_FUNCTION)
#endif
#endif
