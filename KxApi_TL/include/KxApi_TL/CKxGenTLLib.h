// SPDX-License-Identifier: Apache-2.0
// The functions of one GenTL producer.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/KxApi_TLLinkage.h>

#include <GenTL/GenTL.h>

#include <cstdint>
#include <memory>

// The functions of the interface, in the order of the versions that brought them: up to DSGetBufferInfo 1.0,
// then 1.1 (port URLs), 1.3 (chunk data), 1.4 (parents), 1.5 (parts) and 1.6.
// clang-format off
#define KXAPI_GENTL_FUNCTIONS(X)                                                                            \
    X(GCGetInfo) X(GCGetLastError) X(GCInitLib) X(GCCloseLib) X(GCReadPort) X(GCWritePort)                  \
    X(GCGetPortURL) X(GCGetPortInfo) X(GCRegisterEvent) X(GCUnregisterEvent) X(EventGetData)                \
    X(EventGetDataInfo) X(EventGetInfo) X(EventFlush) X(EventKill) X(TLOpen) X(TLClose) X(TLGetInfo)        \
    X(TLGetNumInterfaces) X(TLGetInterfaceID) X(TLGetInterfaceInfo) X(TLOpenInterface)                      \
    X(TLUpdateInterfaceList) X(IFClose) X(IFGetInfo) X(IFGetNumDevices) X(IFGetDeviceID)                    \
    X(IFUpdateDeviceList) X(IFGetDeviceInfo) X(IFOpenDevice) X(DevGetPort) X(DevGetNumDataStreams)          \
    X(DevGetDataStreamID) X(DevOpenDataStream) X(DevGetInfo) X(DevClose) X(DSAnnounceBuffer)                \
    X(DSAllocAndAnnounceBuffer) X(DSFlushQueue) X(DSStartAcquisition) X(DSStopAcquisition) X(DSGetInfo)     \
    X(DSGetBufferID) X(DSClose) X(DSRevokeBuffer) X(DSQueueBuffer) X(DSGetBufferInfo)                       \
    X(GCGetNumPortURLs) X(GCGetPortURLInfo) X(GCReadPortStacked) X(GCWritePortStacked)                      \
    X(DSGetBufferChunkData) X(IFGetParentTL) X(DevGetParentIF) X(DSGetParentDev) X(DSGetNumBufferParts)     \
    X(DSGetBufferPartInfo) X(DSAnnounceCompositeBuffer) X(DSGetBufferInfoStacked)                           \
    X(DSGetBufferPartInfoStacked) X(DSGetNumFlows) X(DSGetFlowInfo) X(DSGetNumBufferSegments)               \
    X(DSGetBufferSegmentInfo)
// clang-format on

namespace KxApi
{

/// Table of a producer's functions: lib.GCReadPort(hPort, ...). Every pointer may be null, since older
/// producers lack newer functions; those of a loaded producer (Load) that version 1.0 has are there. A table
/// of its own, filled by hand, serves wherever no library stands behind the functions.
///
/// The table doesn't change once it is filled and may be read from any thread; which of the functions may run
/// at the same time, the GenTL standard says.
class KXAPI_TL_API CKxGenTLLib
{
public:
#define KXAPI_GENTL_MEMBER(function) GenTL::P##function function = nullptr;
    KXAPI_GENTL_FUNCTIONS(KXAPI_GENTL_MEMBER)
#undef KXAPI_GENTL_MEMBER

    CKxGenTLLib() = default;
    virtual ~CKxGenTLLib() = default;
    CKxGenTLLib(const CKxGenTLLib&) = delete;
    CKxGenTLLib& operator=(const CKxGenTLLib&) = delete;

    /// Loads a producer and initialises it (GCInitLib). All who load the same file share one table; the
    /// producer is closed (GCCloseLib) and unloaded when the last of them lets go, which has to happen after
    /// all its handles are closed. Any thread; loading and unloading take turns. Raises RuntimeException,
    /// with path and cause, when the file is no library, lacks functions that every version has, or fails to
    /// initialise.
    static std::shared_ptr<CKxGenTLLib> Load(const GenICam::gcstring& strPath);

    /// Path of the producer's file with all links followed; empty for a table filled by hand.
    const GenICam::gcstring& GetPath() const { return m_strPath; }

    /// The newest version of the interface whose functions are all there, as minor number of version 1; -1
    /// when even those of 1.0 are not.
    int32_t GetVersionMinorByFunctions() const;

protected:
    GenICam::gcstring m_strPath;
};

} // namespace KxApi
