// SPDX-License-Identifier: Apache-2.0
/* The C interface between GenTL producers and consumers, version 1.6, for C and C++. All structures are
 * packed to one byte, and every function that a version has must be exported; a consumer finds later ones
 * missing in older producers. A producer defines GCTLIDLL and gets its functions exported. */
#pragma once

/* NOLINTBEGIN(modernize-*): the header serves C as well. */

#include <GenTL/GenTLEnums.h>
#include <stddef.h>
#include <stdint.h>

#define GC_GENTL_HEADER_VERSION_MAJOR 1
#define GC_GENTL_HEADER_VERSION_MINOR 6
#define GC_GENTL_HEADER_VERSION_SUBMINOR 0
#define GC_GENTL_HEADER_VERSION_CODE(major, minor, subminor) (((major) << 24) + ((minor) << 16) + (subminor))
#define GC_GENTL_HEADER_VERSION                                                                              \
    GC_GENTL_HEADER_VERSION_CODE(GC_GENTL_HEADER_VERSION_MAJOR, GC_GENTL_HEADER_VERSION_MINOR,               \
                                 GC_GENTL_HEADER_VERSION_SUBMINOR)

#if defined(__i386__)
#define GC_CALLTYPE __attribute__((stdcall))
#else
#define GC_CALLTYPE
#endif
#if defined(GCTLIDLL)
#define GC_IMPORT_EXPORT __attribute__((visibility("default")))
#else
#define GC_IMPORT_EXPORT
#endif
#define GC_API GC_IMPORT_EXPORT GC_ERROR GC_CALLTYPE
/* Type of a pointer to one of the functions. */
#define GC_API_P(function) typedef GC_ERROR(GC_CALLTYPE* function)

#ifdef __cplusplus
namespace GenTL
{
extern "C" {
typedef bool bool8_t;
#else
typedef uint8_t bool8_t;
#endif

typedef void* TL_HANDLE;
typedef void* IF_HANDLE;
typedef void* DEV_HANDLE;
typedef void* DS_HANDLE;
typedef void* PORT_HANDLE;
typedef void* BUFFER_HANDLE;
typedef void* EVENTSRC_HANDLE;
typedef void* EVENT_HANDLE;

#define GENTL_INVALID_HANDLE NULL
/* Timeouts are in milliseconds; this one never ends. Also an acquisition without an end. */
#define GENTL_INFINITE 0xFFFFFFFFFFFFFFFFULL

#define TLTypeMixedName "Mixed"
#define TLTypeCustomName "Custom"
#define TLTypeGEVName "GEV"
#define TLTypeCLName "CL"
#define TLTypeIIDCName "IIDC"
#define TLTypeUVCName "UVC"
#define TLTypeCXPName "CXP"
#define TLTypeCLHSName "CLHS"
#define TLTypeU3VName "U3V"
#define TLTypeETHERNETName "Ethernet"
#define TLTypePCIName "PCI"

#pragma pack(push, 1)

/* What EVENT_NEW_BUFFER delivers. */
typedef struct S_EVENT_NEW_BUFFER
{
    BUFFER_HANDLE BufferHandle;
    void* pUserPointer; /* given with the announcement of the buffer */
} EVENT_NEW_BUFFER_DATA;

typedef struct S_PORT_REGISTER_STACK_ENTRY
{
    uint64_t Address;
    void* pBuffer;
    size_t Size;
} PORT_REGISTER_STACK_ENTRY;

typedef struct S_SINGLE_CHUNK_DATA
{
    uint64_t ChunkID;
    ptrdiff_t ChunkOffset; /* from the start of the buffer */
    size_t ChunkLength;
} SINGLE_CHUNK_DATA;

typedef struct S_DS_BUFFER_INFO_STACKED
{
    BUFFER_INFO_CMD iInfoCmd;
    INFO_DATATYPE iType;
    void* pBuffer;
    size_t iSize;
    GC_ERROR iResult;
} DS_BUFFER_INFO_STACKED;

typedef struct S_DS_BUFFER_PART_INFO_STACKED
{
    uint32_t iPartIndex;
    BUFFER_PART_INFO_CMD iInfoCmd;
    GC_ERROR iResult;
    INFO_DATATYPE iType;
    void* pBuffer;
    size_t iSize;
} DS_BUFFER_PART_INFO_STACKED;

#pragma pack(pop)

/* Functions. Those that return a value of varying size write the size it needs into the size argument when
 * the buffer is null; EventGetData is the exception, where a null buffer drops the event. */
/* clang-format off */

/* Since 1.0 */
GC_API GCGetInfo(TL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API GCGetLastError(GC_ERROR* piErrorCode, char* sErrText, size_t* piSize);
GC_API GCInitLib(void);
GC_API GCCloseLib(void);
GC_API GCReadPort(PORT_HANDLE hPort, uint64_t iAddress, void* pBuffer, size_t* piSize);
GC_API GCWritePort(PORT_HANDLE hPort, uint64_t iAddress, const void* pBuffer, size_t* piSize);
GC_API GCGetPortURL(PORT_HANDLE hPort, char* sURL, size_t* piSize);
GC_API GCGetPortInfo(PORT_HANDLE hPort, PORT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                     size_t* piSize);
GC_API GCRegisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID, EVENT_HANDLE* phEvent);
GC_API GCUnregisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID);
GC_API EventGetData(EVENT_HANDLE hEvent, void* pBuffer, size_t* piSize, uint64_t iTimeout);
GC_API EventGetDataInfo(EVENT_HANDLE hEvent, const void* pInBuffer, size_t iInSize,
                        EVENT_DATA_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pOutBuffer,
                        size_t* piOutSize);
GC_API EventGetInfo(EVENT_HANDLE hEvent, EVENT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                    size_t* piSize);
GC_API EventFlush(EVENT_HANDLE hEvent);
GC_API EventKill(EVENT_HANDLE hEvent);
GC_API TLOpen(TL_HANDLE* phTL);
GC_API TLClose(TL_HANDLE hTL);
GC_API TLGetInfo(TL_HANDLE hTL, TL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API TLGetNumInterfaces(TL_HANDLE hTL, uint32_t* piNumIfaces);
GC_API TLGetInterfaceID(TL_HANDLE hTL, uint32_t iIndex, char* sID, size_t* piSize);
GC_API TLGetInterfaceInfo(TL_HANDLE hTL, const char* sIfaceID, INTERFACE_INFO_CMD iInfoCmd,
                          INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API TLOpenInterface(TL_HANDLE hTL, const char* sIfaceID, IF_HANDLE* phIface);
GC_API TLUpdateInterfaceList(TL_HANDLE hTL, bool8_t* pbChanged, uint64_t iTimeout);
GC_API IFClose(IF_HANDLE hIface);
GC_API IFGetInfo(IF_HANDLE hIface, INTERFACE_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                 size_t* piSize);
GC_API IFGetNumDevices(IF_HANDLE hIface, uint32_t* piNumDevices);
GC_API IFGetDeviceID(IF_HANDLE hIface, uint32_t iIndex, char* sIDeviceID, size_t* piSize);
GC_API IFUpdateDeviceList(IF_HANDLE hIface, bool8_t* pbChanged, uint64_t iTimeout);
GC_API IFGetDeviceInfo(IF_HANDLE hIface, const char* sDeviceID, DEVICE_INFO_CMD iInfoCmd,
                       INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API IFOpenDevice(IF_HANDLE hIface, const char* sDeviceID, DEVICE_ACCESS_FLAGS iOpenFlag,
                    DEV_HANDLE* phDevice);
GC_API DevGetPort(DEV_HANDLE hDevice, PORT_HANDLE* phRemoteDevice);
GC_API DevGetNumDataStreams(DEV_HANDLE hDevice, uint32_t* piNumDataStreams);
GC_API DevGetDataStreamID(DEV_HANDLE hDevice, uint32_t iIndex, char* sDataStreamID, size_t* piSize);
GC_API DevOpenDataStream(DEV_HANDLE hDevice, const char* sDataStreamID, DS_HANDLE* phDataStream);
GC_API DevGetInfo(DEV_HANDLE hDevice, DEVICE_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                  size_t* piSize);
GC_API DevClose(DEV_HANDLE hDevice);
GC_API DSAnnounceBuffer(DS_HANDLE hDataStream, void* pBuffer, size_t iSize, void* pPrivate,
                        BUFFER_HANDLE* phBuffer);
GC_API DSAllocAndAnnounceBuffer(DS_HANDLE hDataStream, size_t iSize, void* pPrivate, BUFFER_HANDLE* phBuffer);
GC_API DSFlushQueue(DS_HANDLE hDataStream, ACQ_QUEUE_TYPE iOperation);
GC_API DSStartAcquisition(DS_HANDLE hDataStream, ACQ_START_FLAGS iStartFlags, uint64_t iNumToAcquire);
GC_API DSStopAcquisition(DS_HANDLE hDataStream, ACQ_STOP_FLAGS iStopFlags);
GC_API DSGetInfo(DS_HANDLE hDataStream, STREAM_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                 size_t* piSize);
GC_API DSGetBufferID(DS_HANDLE hDataStream, uint32_t iIndex, BUFFER_HANDLE* phBuffer);
GC_API DSClose(DS_HANDLE hDataStream);
GC_API DSRevokeBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, void** pBuffer, void** pPrivate);
GC_API DSQueueBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer);
GC_API DSGetBufferInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, BUFFER_INFO_CMD iInfoCmd,
                       INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
/* Since 1.1 */
GC_API GCGetNumPortURLs(PORT_HANDLE hPort, uint32_t* piNumURLs);
GC_API GCGetPortURLInfo(PORT_HANDLE hPort, uint32_t iURLIndex, URL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType,
                        void* pBuffer, size_t* piSize);
GC_API GCReadPortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY* pEntries, size_t* piNumEntries);
GC_API GCWritePortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY* pEntries, size_t* piNumEntries);
/* Since 1.3 */
GC_API DSGetBufferChunkData(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, SINGLE_CHUNK_DATA* pChunkData,
                            size_t* piNumChunks);
/* Since 1.4 */
GC_API IFGetParentTL(IF_HANDLE hIface, TL_HANDLE* phSystem);
GC_API DevGetParentIF(DEV_HANDLE hDevice, IF_HANDLE* phIface);
GC_API DSGetParentDev(DS_HANDLE hDataStream, DEV_HANDLE* phDevice);
/* Since 1.5 */
GC_API DSGetNumBufferParts(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t* piNumParts);
GC_API DSGetBufferPartInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t iPartIndex,
                           BUFFER_PART_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                           size_t* piSize);
/* Since 1.6 */
GC_API DSAnnounceCompositeBuffer(DS_HANDLE hDataStream, size_t iNumSegments, void** ppSegments,
                                 size_t* piSizes, void* pPrivate, BUFFER_HANDLE* phBuffer);
GC_API DSGetBufferInfoStacked(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                              DS_BUFFER_INFO_STACKED* pInfoStacked, size_t iNumInfos);
GC_API DSGetBufferPartInfoStacked(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                                  DS_BUFFER_PART_INFO_STACKED* pInfoStacked, size_t iNumInfos);
GC_API DSGetNumFlows(DS_HANDLE hDataStream, uint32_t* piNumFlows);
GC_API DSGetFlowInfo(DS_HANDLE hDataStream, uint32_t iFlowIndex, FLOW_INFO_CMD iInfoCmd,
                     INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API DSGetNumBufferSegments(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t* piNumSegments);
GC_API DSGetBufferSegmentInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t iSegmentIndex,
                              SEGMENT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                              size_t* piSize);

GC_API_P(PGCGetInfo)(TL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API_P(PGCGetLastError)(GC_ERROR* piErrorCode, char* sErrText, size_t* piSize);
GC_API_P(PGCInitLib)(void);
GC_API_P(PGCCloseLib)(void);
GC_API_P(PGCReadPort)(PORT_HANDLE hPort, uint64_t iAddress, void* pBuffer, size_t* piSize);
GC_API_P(PGCWritePort)(PORT_HANDLE hPort, uint64_t iAddress, const void* pBuffer, size_t* piSize);
GC_API_P(PGCGetPortURL)(PORT_HANDLE hPort, char* sURL, size_t* piSize);
GC_API_P(PGCGetPortInfo)(PORT_HANDLE hPort, PORT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                         size_t* piSize);
GC_API_P(PGCRegisterEvent)(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID, EVENT_HANDLE* phEvent);
GC_API_P(PGCUnregisterEvent)(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID);
GC_API_P(PEventGetData)(EVENT_HANDLE hEvent, void* pBuffer, size_t* piSize, uint64_t iTimeout);
GC_API_P(PEventGetDataInfo)(EVENT_HANDLE hEvent, const void* pInBuffer, size_t iInSize,
                            EVENT_DATA_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pOutBuffer,
                            size_t* piOutSize);
GC_API_P(PEventGetInfo)(EVENT_HANDLE hEvent, EVENT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                        size_t* piSize);
GC_API_P(PEventFlush)(EVENT_HANDLE hEvent);
GC_API_P(PEventKill)(EVENT_HANDLE hEvent);
GC_API_P(PTLOpen)(TL_HANDLE* phTL);
GC_API_P(PTLClose)(TL_HANDLE hTL);
GC_API_P(PTLGetInfo)(TL_HANDLE hTL, TL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                     size_t* piSize);
GC_API_P(PTLGetNumInterfaces)(TL_HANDLE hTL, uint32_t* piNumIfaces);
GC_API_P(PTLGetInterfaceID)(TL_HANDLE hTL, uint32_t iIndex, char* sID, size_t* piSize);
GC_API_P(PTLGetInterfaceInfo)(TL_HANDLE hTL, const char* sIfaceID, INTERFACE_INFO_CMD iInfoCmd,
                              INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API_P(PTLOpenInterface)(TL_HANDLE hTL, const char* sIfaceID, IF_HANDLE* phIface);
GC_API_P(PTLUpdateInterfaceList)(TL_HANDLE hTL, bool8_t* pbChanged, uint64_t iTimeout);
GC_API_P(PIFClose)(IF_HANDLE hIface);
GC_API_P(PIFGetInfo)(IF_HANDLE hIface, INTERFACE_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                     size_t* piSize);
GC_API_P(PIFGetNumDevices)(IF_HANDLE hIface, uint32_t* piNumDevices);
GC_API_P(PIFGetDeviceID)(IF_HANDLE hIface, uint32_t iIndex, char* sIDeviceID, size_t* piSize);
GC_API_P(PIFUpdateDeviceList)(IF_HANDLE hIface, bool8_t* pbChanged, uint64_t iTimeout);
GC_API_P(PIFGetDeviceInfo)(IF_HANDLE hIface, const char* sDeviceID, DEVICE_INFO_CMD iInfoCmd,
                           INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API_P(PIFOpenDevice)(IF_HANDLE hIface, const char* sDeviceID, DEVICE_ACCESS_FLAGS iOpenFlag,
                        DEV_HANDLE* phDevice);
GC_API_P(PDevGetPort)(DEV_HANDLE hDevice, PORT_HANDLE* phRemoteDevice);
GC_API_P(PDevGetNumDataStreams)(DEV_HANDLE hDevice, uint32_t* piNumDataStreams);
GC_API_P(PDevGetDataStreamID)(DEV_HANDLE hDevice, uint32_t iIndex, char* sDataStreamID, size_t* piSize);
GC_API_P(PDevOpenDataStream)(DEV_HANDLE hDevice, const char* sDataStreamID, DS_HANDLE* phDataStream);
GC_API_P(PDevGetInfo)(DEV_HANDLE hDevice, DEVICE_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                      size_t* piSize);
GC_API_P(PDevClose)(DEV_HANDLE hDevice);
GC_API_P(PDSAnnounceBuffer)(DS_HANDLE hDataStream, void* pBuffer, size_t iSize, void* pPrivate,
                            BUFFER_HANDLE* phBuffer);
GC_API_P(PDSAllocAndAnnounceBuffer)(DS_HANDLE hDataStream, size_t iSize, void* pPrivate,
                                    BUFFER_HANDLE* phBuffer);
GC_API_P(PDSFlushQueue)(DS_HANDLE hDataStream, ACQ_QUEUE_TYPE iOperation);
GC_API_P(PDSStartAcquisition)(DS_HANDLE hDataStream, ACQ_START_FLAGS iStartFlags, uint64_t iNumToAcquire);
GC_API_P(PDSStopAcquisition)(DS_HANDLE hDataStream, ACQ_STOP_FLAGS iStopFlags);
GC_API_P(PDSGetInfo)(DS_HANDLE hDataStream, STREAM_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                     size_t* piSize);
GC_API_P(PDSGetBufferID)(DS_HANDLE hDataStream, uint32_t iIndex, BUFFER_HANDLE* phBuffer);
GC_API_P(PDSClose)(DS_HANDLE hDataStream);
GC_API_P(PDSRevokeBuffer)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, void** pBuffer, void** pPrivate);
GC_API_P(PDSQueueBuffer)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer);
GC_API_P(PDSGetBufferInfo)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, BUFFER_INFO_CMD iInfoCmd,
                           INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API_P(PGCGetNumPortURLs)(PORT_HANDLE hPort, uint32_t* piNumURLs);
GC_API_P(PGCGetPortURLInfo)(PORT_HANDLE hPort, uint32_t iURLIndex, URL_INFO_CMD iInfoCmd,
                            INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API_P(PGCReadPortStacked)(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY* pEntries, size_t* piNumEntries);
GC_API_P(PGCWritePortStacked)(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY* pEntries, size_t* piNumEntries);
GC_API_P(PDSGetBufferChunkData)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, SINGLE_CHUNK_DATA* pChunkData,
                                size_t* piNumChunks);
GC_API_P(PIFGetParentTL)(IF_HANDLE hIface, TL_HANDLE* phSystem);
GC_API_P(PDevGetParentIF)(DEV_HANDLE hDevice, IF_HANDLE* phIface);
GC_API_P(PDSGetParentDev)(DS_HANDLE hDataStream, DEV_HANDLE* phDevice);
GC_API_P(PDSGetNumBufferParts)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t* piNumParts);
GC_API_P(PDSGetBufferPartInfo)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t iPartIndex,
                               BUFFER_PART_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                               size_t* piSize);
GC_API_P(PDSAnnounceCompositeBuffer)(DS_HANDLE hDataStream, size_t iNumSegments, void** ppSegments,
                                     size_t* piSizes, void* pPrivate, BUFFER_HANDLE* phBuffer);
GC_API_P(PDSGetBufferInfoStacked)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                                  DS_BUFFER_INFO_STACKED* pInfoStacked, size_t iNumInfos);
GC_API_P(PDSGetBufferPartInfoStacked)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                                      DS_BUFFER_PART_INFO_STACKED* pInfoStacked, size_t iNumInfos);
GC_API_P(PDSGetNumFlows)(DS_HANDLE hDataStream, uint32_t* piNumFlows);
GC_API_P(PDSGetFlowInfo)(DS_HANDLE hDataStream, uint32_t iFlowIndex, FLOW_INFO_CMD iInfoCmd,
                         INFO_DATATYPE* piType, void* pBuffer, size_t* piSize);
GC_API_P(PDSGetNumBufferSegments)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t* piNumSegments);
GC_API_P(PDSGetBufferSegmentInfo)(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t iSegmentIndex,
                                  SEGMENT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                                  size_t* piSize);

/* clang-format on */

#ifdef __cplusplus
} /* extern "C" */
} /* namespace GenTL */
#endif

/* NOLINTEND(modernize-*) */
