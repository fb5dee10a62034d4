// SPDX-License-Identifier: Apache-2.0
#include "Allocator.h"
#include "CameraFixture.h"

#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelComponent.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <fstream>
#include <set>

namespace
{

using namespace KxApi;
using namespace KxTest;
using testing::ElementsAre;

class Stream : public StreamFixture
{
protected:
    bool Deliver(int nImages) const
    {
        bool isDelivered = true;
        for (int i = 0; i < nImages; ++i)
            isDelivered = camera->Deliver() && isDelivered;
        return isDelivered;
    }
};

TEST_F(Stream, StartsBeforeTheCameraAndStopsAfterItWithTheFeaturesLocked)
{
    Receiver receiver;
    EXPECT_FALSE(m_stream->IsAcquiring());
    m_stream->StartAcquisition(&receiver, kKxEndless);
    EXPECT_TRUE(m_stream->IsAcquiring());
    EXPECT_EQ(camera->QueuedCount(), kKxDefaultBufferCount);
    EXPECT_THROW(m_stream->StartAcquisition(&receiver, kKxEndless), GenICam::LogicalErrorException);
    m_stream->StopAcquisition();
    EXPECT_FALSE(m_stream->IsAcquiring());
    m_stream->StopAcquisition();
    EXPECT_THAT(camera->TakeLog(), ElementsAre("lock", "stream starts", "camera starts", "camera stops",
                                               "stream stops", "unlock"));
    EXPECT_THROW(m_stream->StartAcquisition(&receiver, 0), GenICam::InvalidArgumentException);
}

TEST_F(Stream, GivesEachImageToTheCallbackInPlaceAndReusesItsBuffer)
{
    Receiver receiver;
    std::set<const void*> addresses;
    receiver.onImage = [&](IKxStreamImage& image) {
        addresses.insert(image.GetImageBuffer());
        uint64_t written = 0; // by the producer, into the buffer's first bytes
        std::memcpy(&written, image.GetImageBuffer(), sizeof(written));
        EXPECT_EQ(written, image.GetFrameID());
    };
    m_stream->SetBufferCount(3);
    m_stream->StartAcquisition(&receiver, kKxEndless);
    std::set<const void*> announced;
    for (const FakeBuffer& buffer : camera->buffers)
        announced.insert(buffer.base);
    for (size_t i = 0; i < 10; ++i) {
        ASSERT_TRUE(Deliver(1));
        ASSERT_TRUE(receiver.Gets(i + 1));
        ASSERT_TRUE(Eventually([&] { return camera->QueuedCount() == 3; }));
    }
    m_stream->StopAcquisition();
    EXPECT_THAT(receiver.IDs(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_EQ(addresses, announced) << "the very memory that was announced, all of it";
    EXPECT_EQ(m_stream->GetStatistics().nDelivered, 10U);
    EXPECT_THAT(receiver.Errors(), testing::IsEmpty());
}

TEST_F(Stream, EndsByItselfAfterTheImagesAskedFor)
{
    for (int round = 0; round < 2; ++round) {
        Receiver receiver;
        m_stream->StartAcquisition(&receiver, 2);
        Deliver(3); // the last one may be too late for the camera
        EXPECT_TRUE(Eventually([&] { return !m_stream->IsAcquiring(); }));
        EXPECT_EQ(receiver.IDs().size(), 2U);
        EXPECT_THAT(camera->TakeLog(), testing::Contains("camera stops"));
    }
    m_stream->StartAcquisition(nullptr, 2);
    Deliver(3);
    EXPECT_TRUE(Fetch());
    EXPECT_TRUE(Fetch());
    EXPECT_FALSE(Fetch()) << "returns at once when all is over";
    EXPECT_FALSE(m_stream->IsAcquiring());
}

TEST_F(Stream, GivesImagesToWhoFetchesThem)
{
    EXPECT_THROW(m_stream->FetchImage(0), GenICam::LogicalErrorException) << "not started";
    m_stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_FALSE(ImagePtr(m_stream->FetchImage(0)));
    EXPECT_FALSE(ImagePtr(m_stream->FetchImage(20)));
    std::thread camThread([&] { Deliver(1); });
    const ImagePtr first = Fetch();
    camThread.join();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->GetFrameID(), 1U);
    EXPECT_TRUE(Deliver(2));
    EXPECT_TRUE(Eventually([&] { return bool(ImagePtr(m_stream->FetchImage(0))); })) << "one that is there";
    m_stream->StopAcquisition();
    EXPECT_FALSE(Fetch());
    Receiver receiver;
    m_stream->StartAcquisition(&receiver, kKxEndless);
    EXPECT_THROW(m_stream->FetchImage(0), GenICam::LogicalErrorException) << "they go to the callback";
    m_stream->StopAcquisition();
}

TEST_F(Stream, ImagesHeldByTheApplicationStayValidAndComeBack)
{
    m_stream->SetBufferCount(2);
    m_stream->StartAcquisition(nullptr, kKxEndless);
    ASSERT_TRUE(Deliver(2));
    ImagePtr first = Fetch(), second = Fetch();
    ASSERT_TRUE(first && second);
    EXPECT_FALSE(camera->Deliver()) << "no buffer is left";
    second.Reset();
    EXPECT_TRUE(camera->Deliver());
    EXPECT_EQ(m_stream->GetStatistics().nUnderrun, 1U);
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(m_stream->GetStatistics().nLost, 1U);
    m_stream->StopAcquisition();
    m_stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_EQ(camera->QueuedCount(), 2U) << "new ones";
    m_stream.Reset();
    m_device.Reset();
    EXPECT_EQ(camera->access, 0) << "an image that is held doesn't keep the device open";
    uint64_t written = 0;
    std::memcpy(&written, first->GetImageBuffer(), sizeof(written));
    EXPECT_EQ(written, 1U);
}

TEST_F(Stream, TellsWhatTheProducerTellsOfAnImage)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->Deliver({{GenTL::BUFFER_INFO_WIDTH, ToldSize(20)},
                     {GenTL::BUFFER_INFO_HEIGHT, ToldSize(10)},
                     {GenTL::BUFFER_INFO_XPADDING, ToldSize(4)},
                     {GenTL::BUFFER_INFO_XOFFSET, ToldSize(8)},
                     {GenTL::BUFFER_INFO_YOFFSET, ToldSize(6)},
                     {GenTL::BUFFER_INFO_IMAGEOFFSET, ToldSize(16)},
                     {GenTL::BUFFER_INFO_PIXELFORMAT, ToldU64(KxPixelFormat_Mono16)},
                     {GenTL::BUFFER_INFO_TIMESTAMP, ToldU64(123)},
                     {GenTL::BUFFER_INFO_TIMESTAMP_NS, ToldU64(123000)},
                     {GenTL::BUFFER_INFO_FRAMEID, ToldU64(77)}});
    const ImagePtr image = Fetch();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->GetImageWidth(), 20U);
    EXPECT_EQ(image->GetImageHeight(), 10U);
    EXPECT_EQ(image->GetImageLinePitch(), 44U);
    EXPECT_EQ(image->GetImagePlanePitch(), 440U);
    EXPECT_EQ(image->GetOffsetX(), 8U);
    EXPECT_EQ(image->GetOffsetY(), 6U);
    EXPECT_EQ(image->GetImagePixelFormat(), KxPixelFormat_Mono16);
    EXPECT_EQ(image->GetTimestamp(), 123U);
    EXPECT_EQ(image->GetTimestampNs(), 123000U);
    EXPECT_EQ(image->GetFrameID(), 77U);
    EXPECT_FALSE(image->IsIncomplete());
    // An image as all others: pixels, windows and copies.
    auto* const pLine = static_cast<uint8_t*>(image->GetImageBuffer()) + 3 * 44;
    pLine[10] = 0x34;
    pLine[11] = 0x12;
    EXPECT_EQ(image->GetIKxPixelComponentValue(5, 3)->GetValue(0), 0x1234);
    EXPECT_EQ(image->GetROIImage(4, 2, 8, 4)->GetIKxPixelComponentValue(1, 1)->GetValue(0), 0x1234);
    const CKxAutoPtr<IKxImageBufferReleasable> copy(CreateIKxImageBuffer(nullptr));
    copy->CopyImage(image.Get());
    EXPECT_EQ(copy->GetIKxImage()->GetIKxPixelComponentValue(5, 3)->GetValue(0), 0x1234);
}

FakePart Part(ptrdiff_t place, uint64_t format, size_t width, size_t height, int32_t type, uint64_t source)
{
    using namespace GenTL;
    return {place,
            {{BUFFER_PART_INFO_DATA_FORMAT, ToldU64(format)},
             {BUFFER_PART_INFO_WIDTH, ToldSize(width)},
             {BUFFER_PART_INFO_HEIGHT, ToldSize(height)},
             {BUFFER_PART_INFO_DATA_TYPE, ToldSize(static_cast<size_t>(type))},
             {BUFFER_PART_INFO_SOURCE_ID, ToldU64(source)},
             {BUFFER_PART_INFO_REGION_ID, ToldU64(source + 1)}}};
}

TEST_F(Stream, GivesAllPartsOfABufferEachWithItsOwnFormat)
{
    const FakeInfos multiPart{{GenTL::BUFFER_INFO_PAYLOADTYPE, ToldSize(GenTL::PAYLOAD_TYPE_MULTI_PART)}};
    FakeParts parts{Part(16, KxPixelFormat_Coord3D_C16, 20, 10, GenTL::PART_DATATYPE_3D_IMAGE, 5),
                    Part(0, 0x01080FFF, 20, 10, GenTL::PART_DATATYPE_2D_IMAGE, 5), // that nobody knows
                    Part(1000, KxPixelFormat_Mono8, 40, 20, GenTL::PART_DATATYPE_2D_IMAGE, 6),
                    Part(2000, KxPixelFormat_Confidence8, 20, 10, GenTL::PART_DATATYPE_CONFIDENCE_MAP, 5)};
    // Padding in bytes, and in pixels as the standard's text has it: the size tells.
    parts[0].infos[GenTL::BUFFER_PART_INFO_XPADDING] = ToldSize(4);
    parts[0].infos[GenTL::BUFFER_PART_INFO_DATA_SIZE] = ToldSize(44 * 10);
    m_stream->StartAcquisition(nullptr, kKxEndless);
    ASSERT_TRUE(camera->Deliver(multiPart, parts));
    parts[0].infos[GenTL::BUFFER_PART_INFO_DATA_SIZE] = ToldSize(48 * 10);
    ASSERT_TRUE(camera->Deliver(multiPart, parts));
    for (const size_t linePitch : {44U, 48U}) {
        const ImagePtr range = Fetch();
        ASSERT_TRUE(range);
        ASSERT_EQ(range->GetPartCount(), 3U);
        EXPECT_EQ(range->GetImagePixelFormat(), KxPixelFormat_Coord3D_C16);
        EXPECT_EQ(range->GetImageLinePitch(), linePitch);
        EXPECT_EQ(range->GetPartDataType(), GenTL::PART_DATATYPE_3D_IMAGE);
        EXPECT_EQ(range->GetSourceID(), 5U);
        EXPECT_EQ(range->GetIKxPart(0), range.Get());
        IKxStreamImage& intensity = *range->GetIKxPart(1);
        EXPECT_EQ(intensity.GetImageWidth(), 40U);
        EXPECT_EQ(intensity.GetRegionID(), 7U);
        EXPECT_EQ(intensity.GetFrameID(), range->GetFrameID());
        EXPECT_EQ(static_cast<uint8_t*>(intensity.GetImageBuffer()) -
                      static_cast<uint8_t*>(range->GetImageBuffer()),
                  984);
        EXPECT_EQ(intensity.GetROIImage(8, 4, 8, 8)->GetImageWidth(), 8U);
        EXPECT_EQ(intensity.GetIKxPart(2)->GetPartDataType(), GenTL::PART_DATATYPE_CONFIDENCE_MAP);
        EXPECT_THROW(intensity.GetIKxPart(3), GenICam::OutOfRangeException);
    }
    for (const ptrdiff_t place : {-1, 3000, 5000}) {
        camera->Deliver(multiPart, {Part(place, KxPixelFormat_Mono16, 64, 48, 1, 0)});
        EXPECT_THROW(Fetch(), GenICam::RuntimeException) << "outside of the buffer";
    }
    parts[0].infos[GenTL::BUFFER_PART_INFO_HEIGHT] = ToldSize(SIZE_MAX / 5);
    camera->Deliver(multiPart, parts);
    EXPECT_THAT(FetchError(), testing::HasSubstr("does not fit into a buffer of 4096 bytes"));
}

TEST_F(Stream, HandsOutTheBytesOfCompressedImages)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->Deliver({{GenTL::BUFFER_INFO_PAYLOADTYPE, ToldSize(GenTL::PAYLOAD_TYPE_JPEG)},
                     {GenTL::BUFFER_INFO_SIZE_FILLED, ToldSize(1000)}});
    const ImagePtr image = Fetch();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->GetPartDataType(), GenTL::PART_DATATYPE_JPEG);
    EXPECT_EQ(image->GetImageBuffer(), nullptr);
    EXPECT_EQ(image->GetEncodedSize(), 1000U);
    uint64_t written = 0;
    std::memcpy(&written, image->GetEncodedData(), sizeof(written));
    EXPECT_EQ(written, image->GetFrameID());
    EXPECT_THROW(image->GetROIImage(0, 0, 1, 1), GenICam::RuntimeException);
}

TEST_F(Stream, TurnsPixelsOfTheOtherByteOrderRound)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    for (FakeBuffer& buffer : camera->buffers)
        std::memcpy(static_cast<uint8_t*>(buffer.base) + 10, "\x12\x34", 2);
    camera->Deliver({{GenTL::BUFFER_INFO_HEIGHT, ToldSize(10)},
                     {GenTL::BUFFER_INFO_PIXELFORMAT, ToldU64(KxPixelFormat_Mono16)},
                     {GenTL::BUFFER_INFO_PIXEL_ENDIANNESS,
                      Told<int32_t>(GenTL::PIXELENDIANNESS_BIG, GenTL::INFO_DATATYPE_INT32)}});
    EXPECT_EQ(Fetch()->GetIKxPixelComponentValue(5, 0)->GetValue(0), 0x1234);
}

TEST_F(Stream, TakesBuffersOfTheProducersOwnMemoryWhereItAllowsNoOther)
{
    camera->Set("DSAnnounceBuffer", GenTL::GC_ERR_NOT_IMPLEMENTED);
    m_stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_EQ(camera->QueuedCount(), kKxDefaultBufferCount);
    ASSERT_TRUE(Deliver(1));
    ImagePtr image = Fetch();
    ASSERT_TRUE(image);
    EXPECT_THAT(camera->buffers,
                testing::Contains(testing::Field(&FakeBuffer::base, image->GetImageBuffer())));
    m_stream.Reset();
    m_device.Reset();
    uint64_t written = 0;
    std::memcpy(&written, image->GetImageBuffer(), sizeof(written));
    EXPECT_EQ(written, 1U) << "the image keeps the stream open, which has its memory";
    EXPECT_NE(camera->access, 0);
    image.Reset();
    EXPECT_EQ(camera->access, 0);
}

TEST_F(Stream, TakesFromTheFeaturesWhatTheProducerDoesNotTell)
{
    camera->deviceInfos[GenTL::DEVICE_INFO_TIMESTAMP_FREQUENCY] = ToldU64(1000000);
    for (const GenTL::BUFFER_INFO_CMD command :
         {GenTL::BUFFER_INFO_WIDTH, GenTL::BUFFER_INFO_HEIGHT, GenTL::BUFFER_INFO_PIXELFORMAT,
          GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE, GenTL::BUFFER_INFO_PAYLOADTYPE,
          GenTL::BUFFER_INFO_IMAGEPRESENT, GenTL::BUFFER_INFO_IS_INCOMPLETE, GenTL::BUFFER_INFO_NEW_DATA,
          GenTL::BUFFER_INFO_CONTAINS_CHUNKDATA, GenTL::BUFFER_INFO_SIZE_FILLED})
        camera->bufferInfos[command] = Untold();
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->Deliver({{GenTL::BUFFER_INFO_TIMESTAMP, ToldU64(5)}});
    ImagePtr image = Fetch();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->GetImageWidth(), 64U);
    EXPECT_EQ(image->GetImageHeight(), 48U);
    EXPECT_EQ(image->GetImagePixelFormat(), KxPixelFormat_Mono8);
    EXPECT_EQ(image->GetTimestampNs(), 5000U);
    EXPECT_FALSE(image->IsIncomplete());
    camera->Deliver({{GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE, ToldU64(3)},
                     {GenTL::BUFFER_INFO_PIXELFORMAT, ToldU64(0x0101)}});
    image = Fetch();
    EXPECT_EQ(image->GetImagePixelFormat(), KxPixelFormat_Mono8) << "codes of 16 bits aren't ours";
}

TEST_F(Stream, CountsWhatIsIncompleteAndWhatIsLost)
{
    Receiver receiver;
    m_stream->StartAcquisition(&receiver, kKxEndless);
    const auto deliver = [&](uint64_t id, FakeInfos infos = {}) {
        infos.emplace(GenTL::BUFFER_INFO_FRAMEID, ToldU64(id));
        ASSERT_TRUE(camera->Deliver(std::move(infos)));
        ASSERT_TRUE(Eventually([&] { return camera->QueuedCount() == kKxDefaultBufferCount; }));
    };
    deliver(65530);
    deliver(65533); // two are missing
    deliver(3);     // 65534, 65535, 1 and 2, after which 16 bits begin anew
    deliver(3, {{GenTL::BUFFER_INFO_IS_INCOMPLETE, ToldBool(true)}}); // none
    deliver(4, {{GenTL::BUFFER_INFO_SIZE_FILLED, ToldSize(100)}});    // less than the image has
    deliver(1);                                                       // counted anew: none
    deliver(UINT64_MAX);                                              // no camera is that fast: none
    m_stream->StopAcquisition();
    const CKxStreamStatistics statistics = m_stream->GetStatistics();
    EXPECT_EQ(statistics.nDelivered, 7U);
    EXPECT_EQ(statistics.nIncomplete, 2U);
    EXPECT_EQ(statistics.nLost, 6U);
    EXPECT_EQ(statistics.nRefused, 0U);
}

TEST_F(Stream, UsesTheMemoryOfAnAllocator)
{
    Allocator allocator;
    m_stream->SetAllocator(&allocator);
    m_stream->SetBufferCount(5);
    m_stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_EQ(allocator.Held(), 5U);
    ASSERT_TRUE(Deliver(1));
    ImagePtr image = Fetch();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->GetUserContext(), &allocator);
    m_stream->StopAcquisition();
    EXPECT_EQ(allocator.Held(), 1U) << "the image's";
    allocator.empty = true;
    EXPECT_THROW(m_stream->StartAcquisition(nullptr, kKxEndless), GenICam::BadAllocException);
    EXPECT_FALSE(m_stream->IsAcquiring());
    m_stream->SetAllocator(nullptr);
    EXPECT_FALSE(allocator.IsDeregistered());
    image.Reset();
    EXPECT_TRUE(allocator.IsDeregistered());
}

TEST_F(Stream, AnnouncesAsManyBuffersOfTheSizeThatAreNeeded)
{
    EXPECT_EQ(m_stream->GetPayloadSize(), 4096U) << "as the camera tells";
    m_stream->SetBufferCount(1);
    m_stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_EQ(camera->QueuedCount(), 2U) << "the producer needs two";
    m_stream->StopAcquisition();
    camera->streamInfos = {{GenTL::STREAM_INFO_DEFINES_PAYLOADSIZE, ToldBool(true)},
                           {GenTL::STREAM_INFO_PAYLOAD_SIZE, ToldSize(10000)},
                           {GenTL::STREAM_INFO_BUF_ALIGNMENT, ToldSize(4096)}};
    EXPECT_EQ(m_stream->GetPayloadSize(), 10000U) << "as the stream tells";
    m_stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_EQ(camera->buffers.front().size, 10000U);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(camera->buffers.front().base) % 4096, 0U);
    EXPECT_THROW(m_stream->SetBufferCount(0), GenICam::OutOfRangeException);
    EXPECT_THROW(m_stream->SetBufferCount(kKxMaxBufferCount + 1), GenICam::OutOfRangeException);
}

TEST_F(Stream, ShowsTheChunksOfAnImageWhileItIsThere)
{
    const GenApi::CIntegerPtr chunkGain = Integer(m_device->GetIKxRemotePort(), "ChunkGain");
    camera->chunks = {{0xC001, 4000, 4}};
    Receiver receiver;
    std::vector<int64_t> seen;
    receiver.onImage = [&](IKxStreamImage& image) {
        EXPECT_TRUE(image.HasChunkData());
        seen.push_back(chunkGain->GetValue());
    };
    m_stream->StartAcquisition(&receiver, kKxEndless);
    const auto deliver = [&](uint32_t value) {
        for (const FakeBuffer& buffer : camera->buffers)
            std::memcpy(static_cast<uint8_t*>(buffer.base) + 4000, &value, sizeof(value));
        ASSERT_TRUE(Deliver(1));
    };
    deliver(31);
    ASSERT_TRUE(receiver.Gets(1));
    ASSERT_TRUE(Eventually([&] { return camera->QueuedCount() == kKxDefaultBufferCount; }));
    EXPECT_FALSE(GenApi::IsReadable(chunkGain->GetAccessMode())) << "gone with the image";
    deliver(32);
    ASSERT_TRUE(receiver.Gets(2));
    m_stream->StopAcquisition();
    EXPECT_THAT(seen, ElementsAre(31, 32));

    m_stream->StartAcquisition(nullptr, 2);
    deliver(33);
    const ImagePtr first = Fetch();
    ASSERT_TRUE(first);
    ASSERT_TRUE(Deliver(1));
    ImagePtr second = Fetch();
    ASSERT_TRUE(second);
    std::memset(static_cast<uint8_t*>(second->GetImageBuffer()) + 4000, 0, 4);
    EXPECT_EQ(chunkGain->GetValue(), 0) << "of the last one";
    first->AttachChunkData();
    EXPECT_EQ(chunkGain->GetValue(), 33);
    second.Reset();
    EXPECT_EQ(chunkGain->GetValue(), 33) << "another image went";
    m_stream.Reset();
    EXPECT_FALSE(GenApi::IsReadable(chunkGain->GetAccessMode())) << "gone with the stream";
}

TEST_F(Stream, HandsOutChunksWithoutImage)
{
    camera->chunks = {{0xC001, 0, 4}};
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->Deliver({{GenTL::BUFFER_INFO_PAYLOADTYPE, ToldSize(GenTL::PAYLOAD_TYPE_CHUNK_ONLY)}});
    const ImagePtr image = Fetch();
    ASSERT_TRUE(image);
    EXPECT_TRUE(image->HasChunkData());
    EXPECT_EQ(image->GetImageBuffer(), nullptr);
    EXPECT_EQ(image->GetImagePixelFormat(), KxPixelFormat_None);
    EXPECT_THROW(image->GetROIImage(0, 0, 1, 1), GenICam::RuntimeException);
    EXPECT_EQ(Integer(m_device->GetIKxRemotePort(), "ChunkGain")->GetValue(), 1) << "the frame's ID";
}

/// Bytes of the process that lie in memory.
size_t ResidentBytes()
{
    size_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * 4096;
}

TEST_F(Stream, AThousandRoundsLeaveThreadsAndMemoryWhereTheyWere)
{
    m_stream.Reset();
    m_device.Reset();
    const auto round = [&](int i) {
        const DevicePtr device = Open();
        device->GetIKxLocalPort()->GetINodeMap();
        Receiver receiver; // has to outlive the acquisition
        const StreamPtr stream = OpenStream(device);
        stream->StartAcquisition(i % 2 ? &receiver : nullptr, kKxEndless);
        camera->Deliver();
        if (i % 2)
            ASSERT_TRUE(receiver.Gets(1));
        else
            ASSERT_TRUE(ImagePtr(stream->FetchImage(kLongMs)));
        if (i % 3)
            stream->StopAcquisition();
    };
    size_t nThreads = 0;
    [[maybe_unused]] size_t nBytes = 0;
    for (int i = 0; i < 1000; ++i) {
        ASSERT_NO_FATAL_FAILURE(round(i));
        if (i == 100) { // what allocators and node maps keep has settled
            nThreads = ThreadCount();
            nBytes = ResidentBytes();
        }
    }
    EXPECT_TRUE(Eventually([&] { return ThreadCount() <= nThreads; })) << ThreadCount();
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they keep what is freed
    // A round has buffers of 32 KiB and node maps of far more: what leaks would show.
    EXPECT_LT(ResidentBytes(), nBytes + 8 * 1024 * 1024);
#endif
}

} // namespace
