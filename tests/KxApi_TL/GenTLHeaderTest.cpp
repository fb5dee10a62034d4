// SPDX-License-Identifier: Apache-2.0
// The binary interface to producers: sizes, places and numbers as the standard prints them, for 64 bits.
#include <GenTL/GenTL.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace
{

using namespace GenTL;

static_assert(sizeof(void*) != 8 ||
              (sizeof(EVENT_NEW_BUFFER_DATA) == 16 && sizeof(PORT_REGISTER_STACK_ENTRY) == 24 &&
               sizeof(SINGLE_CHUNK_DATA) == 24 && sizeof(DS_BUFFER_INFO_STACKED) == 28 &&
               sizeof(DS_BUFFER_PART_INFO_STACKED) == 32));
static_assert(sizeof(void*) != 8 || (offsetof(DS_BUFFER_INFO_STACKED, pBuffer) == 8 &&
                                     offsetof(DS_BUFFER_INFO_STACKED, iResult) == 24 &&
                                     offsetof(DS_BUFFER_PART_INFO_STACKED, iResult) == 8 &&
                                     offsetof(DS_BUFFER_PART_INFO_STACKED, iType) == 12 &&
                                     offsetof(DS_BUFFER_PART_INFO_STACKED, iSize) == 24 &&
                                     offsetof(SINGLE_CHUNK_DATA, ChunkLength) == 16 &&
                                     offsetof(PORT_REGISTER_STACK_ENTRY, Size) == 16));
static_assert(sizeof(bool8_t) == 1 && sizeof(GC_ERROR) == 4 && std::is_signed_v<GC_ERROR>);
static_assert(GC_GENTL_HEADER_VERSION == 0x01060000);
static_assert(GENTL_INFINITE == ~uint64_t{0});

// One number of each end and of each place where a version added some.
static_assert(GC_ERR_ERROR == -1001 && GC_ERR_TIMEOUT == -1011 && GC_ERR_AMBIGUOUS == -1023 &&
              GC_ERR_CUSTOM_ID == -10000);
static_assert(INFO_DATATYPE_PTRDIFF == 14 && TL_INFO_GENTL_VER_MINOR == 10 && INTERFACE_INFO_TLTYPE == 2);
static_assert(DEVICE_ACCESS_EXCLUSIVE == 4 && DEVICE_ACCESS_STATUS_OPEN_READONLY == 6);
static_assert(DEVICE_INFO_ACCESS_STATUS == 5 && DEVICE_INFO_TIMESTAMP_FREQUENCY == 9);
static_assert(ACQ_STOP_FLAGS_KILL == 1 && ACQ_QUEUE_ALL_DISCARD == 4 && STREAM_INFO_BUF_ALIGNMENT == 13 &&
              STREAM_INFO_GENDC_PREFETCH_DESCRIPTOR == 15);
static_assert(BUFFER_INFO_WIDTH == 10 && BUFFER_INFO_PIXELFORMAT == 20 && BUFFER_INFO_IS_COMPOSITE == 31);
static_assert(BUFFER_PART_INFO_DATA_PURPOSE_ID == 13 && PAYLOAD_TYPE_GENDC == 11 &&
              PIXELFORMAT_NAMESPACE_PFNC_32BIT == 4);
static_assert(PIXELENDIANNESS_BIG == 2 && PART_DATATYPE_JPEG2000 == 11 && PORT_INFO_PORTNAME == 12);
static_assert(URL_SCHEME_FILE == 2 && URL_INFO_FILENAME == 10 && EVENT_MODULE == 5 &&
              EVENT_INFO_DATA_SIZE_MAX == 4);
static_assert(EVENT_DATA_NUMID == 2 && FLOW_INFO_SIZE == 0 && SEGMENT_INFO_DATA_SIZE == 4);
static_assert(DEVICE_INFO_CUSTOM_ID == 1000 && TL_CHAR_ENCODING_UTF8 == 1);

// A prototype and its pointer type are written apart; each must be of the other's type.
#define KXAPI_SAME(function) static_assert(std::is_same_v<decltype(&GenTL::function), GenTL::P##function>)
KXAPI_SAME(GCReadPort);
KXAPI_SAME(GCGetPortURLInfo);
KXAPI_SAME(EventGetDataInfo);
KXAPI_SAME(IFOpenDevice);
KXAPI_SAME(DSRevokeBuffer);
KXAPI_SAME(DSAnnounceCompositeBuffer);
KXAPI_SAME(DSGetBufferPartInfoStacked);
KXAPI_SAME(DSGetBufferSegmentInfo);
#undef KXAPI_SAME

TEST(GenTLHeader, NamesTheTechnologies)
{
    EXPECT_STREQ(TLTypeGEVName, "GEV");
    EXPECT_STREQ(TLTypeU3VName, "U3V");
    EXPECT_STREQ(TLTypeETHERNETName, "Ethernet");
}

} // namespace
