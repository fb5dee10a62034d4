// SPDX-License-Identifier: Apache-2.0
// Names of the functions of the GenTL interface, for tables of them.
#pragma once

// Calls X(name) for each function, in the order of the versions that brought them: up to DSGetBufferInfo 1.0,
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
