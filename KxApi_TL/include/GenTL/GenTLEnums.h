// SPDX-License-Identifier: Apache-2.0
/* Enumerations of the GenTL 1.6 interface. Behind each info command stands the type of its value. */
#pragma once

/* NOLINTBEGIN(modernize-*): the header serves C as well. */

#include <stdint.h>

#ifdef __cplusplus
namespace GenTL
{
extern "C" {
#endif

/* clang-format off */

/* Results of all functions. */
enum GC_ERROR_LIST
{
    GC_ERR_SUCCESS            = 0,
    GC_ERR_ERROR              = -1001,
    GC_ERR_NOT_INITIALIZED    = -1002,
    GC_ERR_NOT_IMPLEMENTED    = -1003,
    GC_ERR_RESOURCE_IN_USE    = -1004,
    GC_ERR_ACCESS_DENIED      = -1005,
    GC_ERR_INVALID_HANDLE     = -1006,
    GC_ERR_INVALID_ID         = -1007,
    GC_ERR_NO_DATA            = -1008,
    GC_ERR_INVALID_PARAMETER  = -1009,
    GC_ERR_IO                 = -1010,
    GC_ERR_TIMEOUT            = -1011,
    GC_ERR_ABORT              = -1012,
    GC_ERR_INVALID_BUFFER     = -1013,
    GC_ERR_NOT_AVAILABLE      = -1014,
    GC_ERR_INVALID_ADDRESS    = -1015,
    GC_ERR_BUFFER_TOO_SMALL   = -1016,
    GC_ERR_INVALID_INDEX      = -1017,
    GC_ERR_PARSING_CHUNK_DATA = -1018,
    GC_ERR_INVALID_VALUE      = -1019,
    GC_ERR_RESOURCE_EXHAUSTED = -1020,
    GC_ERR_OUT_OF_MEMORY      = -1021,
    GC_ERR_BUSY               = -1022,
    GC_ERR_AMBIGUOUS          = -1023,
    GC_ERR_CUSTOM_ID          = -10000
};
typedef int32_t GC_ERROR;

/* Types of the values that the info functions return. */
enum INFO_DATATYPE_LIST
{
    INFO_DATATYPE_UNKNOWN    = 0,
    INFO_DATATYPE_STRING     = 1,
    INFO_DATATYPE_STRINGLIST = 2,
    INFO_DATATYPE_INT16      = 3,
    INFO_DATATYPE_UINT16     = 4,
    INFO_DATATYPE_INT32      = 5,
    INFO_DATATYPE_UINT32     = 6,
    INFO_DATATYPE_INT64      = 7,
    INFO_DATATYPE_UINT64     = 8,
    INFO_DATATYPE_FLOAT64    = 9,
    INFO_DATATYPE_PTR        = 10,
    INFO_DATATYPE_BOOL8      = 11,
    INFO_DATATYPE_SIZET      = 12,
    INFO_DATATYPE_BUFFER     = 13,
    INFO_DATATYPE_PTRDIFF    = 14,
    INFO_DATATYPE_CUSTOM_ID  = 1000
};
typedef int32_t INFO_DATATYPE;

/* Encoding of texts. */
enum TL_CHAR_ENCODING_LIST
{
    TL_CHAR_ENCODING_ASCII = 0,
    TL_CHAR_ENCODING_UTF8  = 1
};
typedef int32_t TL_CHAR_ENCODING;

/* Facts of a producer: GCGetInfo, TLGetInfo. */
enum TL_INFO_CMD_LIST
{
    TL_INFO_ID              = 0,   /* STRING */
    TL_INFO_VENDOR          = 1,   /* STRING */
    TL_INFO_MODEL           = 2,   /* STRING */
    TL_INFO_VERSION         = 3,   /* STRING */
    TL_INFO_TLTYPE          = 4,   /* STRING */
    TL_INFO_NAME            = 5,   /* STRING */
    TL_INFO_PATHNAME        = 6,   /* STRING */
    TL_INFO_DISPLAYNAME     = 7,   /* STRING */
    TL_INFO_CHAR_ENCODING   = 8,   /* INT32 */
    TL_INFO_GENTL_VER_MAJOR = 9,   /* UINT32 */
    TL_INFO_GENTL_VER_MINOR = 10,  /* UINT32 */
    TL_INFO_CUSTOM_ID       = 1000
};
typedef int32_t TL_INFO_CMD;

/* Facts of an interface: TLGetInterfaceInfo, IFGetInfo. */
enum INTERFACE_INFO_CMD_LIST
{
    INTERFACE_INFO_ID          = 0,   /* STRING */
    INTERFACE_INFO_DISPLAYNAME = 1,   /* STRING */
    INTERFACE_INFO_TLTYPE      = 2,   /* STRING */
    INTERFACE_INFO_CUSTOM_ID   = 1000
};
typedef int32_t INTERFACE_INFO_CMD;

/* How IFOpenDevice opens a device; they cannot be combined. */
enum DEVICE_ACCESS_FLAGS_LIST
{
    DEVICE_ACCESS_UNKNOWN   = 0,
    DEVICE_ACCESS_NONE      = 1,
    DEVICE_ACCESS_READONLY  = 2,
    DEVICE_ACCESS_CONTROL   = 3,
    DEVICE_ACCESS_EXCLUSIVE = 4,
    DEVICE_ACCESS_CUSTOM_ID = 1000
};
typedef int32_t DEVICE_ACCESS_FLAGS;

/* Values of DEVICE_INFO_ACCESS_STATUS. */
enum DEVICE_ACCESS_STATUS_LIST
{
    DEVICE_ACCESS_STATUS_UNKNOWN        = 0,
    DEVICE_ACCESS_STATUS_READWRITE      = 1,
    DEVICE_ACCESS_STATUS_READONLY       = 2,
    DEVICE_ACCESS_STATUS_NOACCESS       = 3,
    DEVICE_ACCESS_STATUS_BUSY           = 4,
    DEVICE_ACCESS_STATUS_OPEN_READWRITE = 5,
    DEVICE_ACCESS_STATUS_OPEN_READONLY  = 6,
    DEVICE_ACCESS_STATUS_CUSTOM_ID      = 1000
};
typedef int32_t DEVICE_ACCESS_STATUS;

/* Facts of a device: IFGetDeviceInfo, DevGetInfo. */
enum DEVICE_INFO_CMD_LIST
{
    DEVICE_INFO_ID                  = 0,   /* STRING */
    DEVICE_INFO_VENDOR              = 1,   /* STRING */
    DEVICE_INFO_MODEL               = 2,   /* STRING */
    DEVICE_INFO_TLTYPE              = 3,   /* STRING */
    DEVICE_INFO_DISPLAYNAME         = 4,   /* STRING */
    DEVICE_INFO_ACCESS_STATUS       = 5,   /* INT32 */
    DEVICE_INFO_USER_DEFINED_NAME   = 6,   /* STRING */
    DEVICE_INFO_SERIAL_NUMBER       = 7,   /* STRING */
    DEVICE_INFO_VERSION             = 8,   /* STRING */
    DEVICE_INFO_TIMESTAMP_FREQUENCY = 9,   /* UINT64 */
    DEVICE_INFO_CUSTOM_ID           = 1000
};
typedef int32_t DEVICE_INFO_CMD;

/* How DSStopAcquisition stops. */
enum ACQ_STOP_FLAGS_LIST
{
    ACQ_STOP_FLAGS_DEFAULT   = 0,
    ACQ_STOP_FLAGS_KILL      = 1,
    ACQ_STOP_FLAGS_CUSTOM_ID = 1000
};
typedef int32_t ACQ_STOP_FLAGS;

/* How DSStartAcquisition starts. */
enum ACQ_START_FLAGS_LIST
{
    ACQ_START_FLAGS_DEFAULT   = 0,
    ACQ_START_FLAGS_CUSTOM_ID = 1000
};
typedef int32_t ACQ_START_FLAGS;

/* What DSFlushQueue moves. */
enum ACQ_QUEUE_TYPE_LIST
{
    ACQ_QUEUE_INPUT_TO_OUTPUT   = 0,
    ACQ_QUEUE_OUTPUT_DISCARD    = 1,
    ACQ_QUEUE_ALL_TO_INPUT      = 2,
    ACQ_QUEUE_UNQUEUED_TO_INPUT = 3,
    ACQ_QUEUE_ALL_DISCARD       = 4,
    ACQ_QUEUE_CUSTOM_ID         = 1000
};
typedef int32_t ACQ_QUEUE_TYPE;

/* Facts of a data stream: DSGetInfo. */
enum STREAM_INFO_CMD_LIST
{
    STREAM_INFO_ID                        = 0,   /* STRING */
    STREAM_INFO_NUM_DELIVERED             = 1,   /* UINT64 */
    STREAM_INFO_NUM_UNDERRUN              = 2,   /* UINT64 */
    STREAM_INFO_NUM_ANNOUNCED             = 3,   /* SIZET */
    STREAM_INFO_NUM_QUEUED                = 4,   /* SIZET */
    STREAM_INFO_NUM_AWAIT_DELIVERY        = 5,   /* SIZET */
    STREAM_INFO_NUM_STARTED               = 6,   /* UINT64 */
    STREAM_INFO_PAYLOAD_SIZE              = 7,   /* SIZET */
    STREAM_INFO_IS_GRABBING               = 8,   /* BOOL8 */
    STREAM_INFO_DEFINES_PAYLOADSIZE       = 9,   /* BOOL8 */
    STREAM_INFO_TLTYPE                    = 10,  /* STRING */
    STREAM_INFO_NUM_CHUNKS_MAX            = 11,  /* SIZET */
    STREAM_INFO_BUF_ANNOUNCE_MIN          = 12,  /* SIZET */
    STREAM_INFO_BUF_ALIGNMENT             = 13,  /* SIZET */
    STREAM_INFO_FLOW_TABLE                = 14,  /* BUFFER */
    STREAM_INFO_GENDC_PREFETCH_DESCRIPTOR = 15,  /* BUFFER */
    STREAM_INFO_CUSTOM_ID                 = 1000
};
typedef int32_t STREAM_INFO_CMD;

/* Facts of a buffer: DSGetBufferInfo. */
enum BUFFER_INFO_CMD_LIST
{
    BUFFER_INFO_BASE                       = 0,   /* PTR */
    BUFFER_INFO_SIZE                       = 1,   /* SIZET */
    BUFFER_INFO_USER_PTR                   = 2,   /* PTR */
    BUFFER_INFO_TIMESTAMP                  = 3,   /* UINT64 */
    BUFFER_INFO_NEW_DATA                   = 4,   /* BOOL8 */
    BUFFER_INFO_IS_QUEUED                  = 5,   /* BOOL8 */
    BUFFER_INFO_IS_ACQUIRING               = 6,   /* BOOL8 */
    BUFFER_INFO_IS_INCOMPLETE              = 7,   /* BOOL8 */
    BUFFER_INFO_TLTYPE                     = 8,   /* STRING */
    BUFFER_INFO_SIZE_FILLED                = 9,   /* SIZET */
    BUFFER_INFO_WIDTH                      = 10,  /* SIZET */
    BUFFER_INFO_HEIGHT                     = 11,  /* SIZET */
    BUFFER_INFO_XOFFSET                    = 12,  /* SIZET */
    BUFFER_INFO_YOFFSET                    = 13,  /* SIZET */
    BUFFER_INFO_XPADDING                   = 14,  /* SIZET */
    BUFFER_INFO_YPADDING                   = 15,  /* SIZET */
    BUFFER_INFO_FRAMEID                    = 16,  /* UINT64 */
    BUFFER_INFO_IMAGEPRESENT               = 17,  /* BOOL8 */
    BUFFER_INFO_IMAGEOFFSET                = 18,  /* SIZET */
    BUFFER_INFO_PAYLOADTYPE                = 19,  /* SIZET */
    BUFFER_INFO_PIXELFORMAT                = 20,  /* UINT64 */
    BUFFER_INFO_PIXELFORMAT_NAMESPACE      = 21,  /* UINT64 */
    BUFFER_INFO_DELIVERED_IMAGEHEIGHT      = 22,  /* SIZET */
    BUFFER_INFO_DELIVERED_CHUNKPAYLOADSIZE = 23,  /* SIZET */
    BUFFER_INFO_CHUNKLAYOUTID              = 24,  /* UINT64 */
    BUFFER_INFO_FILENAME                   = 25,  /* STRING */
    BUFFER_INFO_PIXEL_ENDIANNESS           = 26,  /* INT32 */
    BUFFER_INFO_DATA_SIZE                  = 27,  /* SIZET */
    BUFFER_INFO_TIMESTAMP_NS               = 28,  /* UINT64 */
    BUFFER_INFO_DATA_LARGER_THAN_BUFFER    = 29,  /* BOOL8 */
    BUFFER_INFO_CONTAINS_CHUNKDATA         = 30,  /* BOOL8 */
    BUFFER_INFO_IS_COMPOSITE               = 31,  /* BOOL8 */
    BUFFER_INFO_CUSTOM_ID                  = 1000
};
typedef int32_t BUFFER_INFO_CMD;

/* Facts of a part of a buffer: DSGetBufferPartInfo. */
enum BUFFER_PART_INFO_CMD_LIST
{
    BUFFER_PART_INFO_BASE                  = 0,   /* PTR */
    BUFFER_PART_INFO_DATA_SIZE             = 1,   /* SIZET */
    BUFFER_PART_INFO_DATA_TYPE             = 2,   /* SIZET */
    BUFFER_PART_INFO_DATA_FORMAT           = 3,   /* UINT64 */
    BUFFER_PART_INFO_DATA_FORMAT_NAMESPACE = 4,   /* UINT64 */
    BUFFER_PART_INFO_WIDTH                 = 5,   /* SIZET */
    BUFFER_PART_INFO_HEIGHT                = 6,   /* SIZET */
    BUFFER_PART_INFO_XOFFSET               = 7,   /* SIZET */
    BUFFER_PART_INFO_YOFFSET               = 8,   /* SIZET */
    BUFFER_PART_INFO_XPADDING              = 9,   /* SIZET */
    BUFFER_PART_INFO_SOURCE_ID             = 10,  /* UINT64 */
    BUFFER_PART_INFO_DELIVERED_IMAGEHEIGHT = 11,  /* SIZET */
    BUFFER_PART_INFO_REGION_ID             = 12,  /* UINT64 */
    BUFFER_PART_INFO_DATA_PURPOSE_ID       = 13,  /* UINT64 */
    BUFFER_PART_INFO_CUSTOM_ID             = 1000
};
typedef int32_t BUFFER_PART_INFO_CMD;

/* Values of BUFFER_INFO_PAYLOADTYPE. */
enum PAYLOADTYPE_INFO_IDS
{
    PAYLOAD_TYPE_UNKNOWN         = 0,
    PAYLOAD_TYPE_IMAGE           = 1,
    PAYLOAD_TYPE_RAW_DATA        = 2,
    PAYLOAD_TYPE_FILE            = 3,
    PAYLOAD_TYPE_CHUNK_DATA      = 4,
    PAYLOAD_TYPE_JPEG            = 5,
    PAYLOAD_TYPE_JPEG2000        = 6,
    PAYLOAD_TYPE_H264            = 7,
    PAYLOAD_TYPE_CHUNK_ONLY      = 8,
    PAYLOAD_TYPE_DEVICE_SPECIFIC = 9,
    PAYLOAD_TYPE_MULTI_PART      = 10,
    PAYLOAD_TYPE_GENDC           = 11,
    PAYLOAD_TYPE_CUSTOM_ID       = 1000
};
typedef int32_t PAYLOADTYPE_INFO_ID;

/* Values of BUFFER_INFO_PIXELFORMAT_NAMESPACE. */
enum PIXELFORMAT_NAMESPACE_IDS
{
    PIXELFORMAT_NAMESPACE_UNKNOWN    = 0,
    PIXELFORMAT_NAMESPACE_GEV        = 1,
    PIXELFORMAT_NAMESPACE_IIDC       = 2,
    PIXELFORMAT_NAMESPACE_PFNC_16BIT = 3,
    PIXELFORMAT_NAMESPACE_PFNC_32BIT = 4,
    PIXELFORMAT_NAMESPACE_CUSTOM_ID  = 1000
};
typedef int32_t PIXELFORMAT_NAMESPACE_ID;

/* Values of BUFFER_INFO_PIXEL_ENDIANNESS. */
enum PIXELENDIANNESS_IDS
{
    PIXELENDIANNESS_UNKNOWN = 0,
    PIXELENDIANNESS_LITTLE  = 1,
    PIXELENDIANNESS_BIG     = 2
};
typedef int32_t PIXELENDIANNESS_ID;

/* Values of BUFFER_PART_INFO_DATA_TYPE. */
enum PARTDATATYPE_IDS
{
    PART_DATATYPE_UNKNOWN             = 0,
    PART_DATATYPE_2D_IMAGE            = 1,
    PART_DATATYPE_2D_PLANE_BIPLANAR   = 2,
    PART_DATATYPE_2D_PLANE_TRIPLANAR  = 3,
    PART_DATATYPE_2D_PLANE_QUADPLANAR = 4,
    PART_DATATYPE_3D_IMAGE            = 5,
    PART_DATATYPE_3D_PLANE_BIPLANAR   = 6,
    PART_DATATYPE_3D_PLANE_TRIPLANAR  = 7,
    PART_DATATYPE_3D_PLANE_QUADPLANAR = 8,
    PART_DATATYPE_CONFIDENCE_MAP      = 9,
    PART_DATATYPE_JPEG                = 10,
    PART_DATATYPE_JPEG2000            = 11,
    PART_DATATYPE_CUSTOM_ID           = 1000
};
typedef int32_t PARTDATATYPE_ID;

/* Facts of a port: GCGetPortInfo. */
enum PORT_INFO_CMD_LIST
{
    PORT_INFO_ID            = 0,   /* STRING */
    PORT_INFO_VENDOR        = 1,   /* STRING */
    PORT_INFO_MODEL         = 2,   /* STRING */
    PORT_INFO_TLTYPE        = 3,   /* STRING */
    PORT_INFO_MODULE        = 4,   /* STRING */
    PORT_INFO_LITTLE_ENDIAN = 5,   /* BOOL8 */
    PORT_INFO_BIG_ENDIAN    = 6,   /* BOOL8 */
    PORT_INFO_ACCESS_READ   = 7,   /* BOOL8 */
    PORT_INFO_ACCESS_WRITE  = 8,   /* BOOL8 */
    PORT_INFO_ACCESS_NA     = 9,   /* BOOL8 */
    PORT_INFO_ACCESS_NI     = 10,  /* BOOL8 */
    PORT_INFO_VERSION       = 11,  /* STRING */
    PORT_INFO_PORTNAME      = 12,  /* STRING */
    PORT_INFO_CUSTOM_ID     = 1000
};
typedef int32_t PORT_INFO_CMD;

/* Values of URL_INFO_SCHEME. */
enum URL_SCHEME_IDS
{
    URL_SCHEME_LOCAL     = 0,
    URL_SCHEME_HTTP      = 1,
    URL_SCHEME_FILE      = 2,
    URL_SCHEME_CUSTOM_ID = 1000
};
typedef int32_t URL_SCHEME_ID;

/* Facts of the place of an XML file: GCGetPortURLInfo. */
enum URL_INFO_CMD_LIST
{
    URL_INFO_URL                   = 0,   /* STRING */
    URL_INFO_SCHEMA_VER_MAJOR      = 1,   /* INT32 */
    URL_INFO_SCHEMA_VER_MINOR      = 2,   /* INT32 */
    URL_INFO_FILE_VER_MAJOR        = 3,   /* INT32 */
    URL_INFO_FILE_VER_MINOR        = 4,   /* INT32 */
    URL_INFO_FILE_VER_SUBMINOR     = 5,   /* INT32 */
    URL_INFO_FILE_SHA1_HASH        = 6,   /* BUFFER */
    URL_INFO_FILE_REGISTER_ADDRESS = 7,   /* UINT64 */
    URL_INFO_FILE_SIZE             = 8,   /* UINT64 */
    URL_INFO_SCHEME                = 9,   /* INT32 */
    URL_INFO_FILENAME              = 10,  /* STRING */
    URL_INFO_CUSTOM_ID             = 1000
};
typedef int32_t URL_INFO_CMD;

/* Events that GCRegisterEvent registers. */
enum EVENT_TYPE_LIST
{
    EVENT_ERROR              = 0,
    EVENT_NEW_BUFFER         = 1,
    EVENT_FEATURE_INVALIDATE = 2,
    EVENT_FEATURE_CHANGE     = 3,
    EVENT_REMOTE_DEVICE      = 4,
    EVENT_MODULE             = 5,
    EVENT_CUSTOM_ID          = 1000
};
typedef int32_t EVENT_TYPE;

/* Facts of an event object: EventGetInfo. */
enum EVENT_INFO_CMD_LIST
{
    EVENT_EVENT_TYPE         = 0,   /* INT32 */
    EVENT_NUM_IN_QUEUE       = 1,   /* SIZET */
    EVENT_NUM_FIRED          = 2,   /* UINT64 */
    EVENT_SIZE_MAX           = 3,   /* SIZET */
    EVENT_INFO_DATA_SIZE_MAX = 4,   /* SIZET */
    EVENT_INFO_CUSTOM_ID     = 1000
};
typedef int32_t EVENT_INFO_CMD;

/* Facts of the data of an event: EventGetDataInfo. */
enum EVENT_DATA_INFO_CMD_LIST
{
    EVENT_DATA_ID        = 0,
    EVENT_DATA_VALUE     = 1,
    EVENT_DATA_NUMID     = 2,   /* UINT64 */
    EVENT_DATA_CUSTOM_ID = 1000
};
typedef int32_t EVENT_DATA_INFO_CMD;

/* Facts of a flow: DSGetFlowInfo. */
enum FLOW_INFO_CMD_LIST
{
    FLOW_INFO_SIZE      = 0,   /* SIZET */
    FLOW_INFO_CUSTOM_ID = 1000
};
typedef int32_t FLOW_INFO_CMD;

/* Facts of a segment of a buffer: DSGetBufferSegmentInfo. */
enum SEGMENT_INFO_CMD_LIST
{
    SEGMENT_INFO_BASE          = 0,   /* PTR */
    SEGMENT_INFO_SIZE          = 1,   /* SIZET */
    SEGMENT_INFO_IS_INCOMPLETE = 2,   /* BOOL8 */
    SEGMENT_INFO_SIZE_FILLED   = 3,   /* SIZET */
    SEGMENT_INFO_DATA_SIZE     = 4,   /* SIZET */
    SEGMENT_INFO_CUSTOM_ID     = 1000
};
typedef int32_t SEGMENT_INFO_CMD;

/* clang-format on */

#ifdef __cplusplus
} /* extern "C" */
} /* namespace GenTL */
#endif

/* NOLINTEND(modernize-*) */
