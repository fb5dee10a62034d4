// SPDX-License-Identifier: Apache-2.0
// Producers that lie, cameras that vanish and applications that throw.
#include "CameraFixture.h"

#include <KxSDKCommon/KxApi_Exception.h>

#include <atomic>
#include <stdexcept>

namespace
{

using namespace KxApi;
using namespace KxTest;
using testing::ElementsAre;
using testing::HasSubstr;

class StreamFault : public StreamFixture
{
protected:
    void TearDown() override
    {
        camera->LetGo();
        StreamFixture::TearDown();
    }
    /// Whether a start fails, and leaves nothing behind.
    std::string StartError() const
    {
        try {
            m_stream->StartAcquisition(nullptr, kKxEndless);
        } catch (const GenICam::GenericException& e) {
            EXPECT_FALSE(m_stream->IsAcquiring());
            EXPECT_TRUE(camera->buffers.empty());
            EXPECT_EQ(camera->Register(kFakeLock), 0U);
            EXPECT_FALSE(camera->isStarted);
            return e.GetDescription();
        }
        return "";
    }
};

TEST_F(StreamFault, AStartThatFailsLeavesEverythingAsItWas)
{
    for (const char* const szFunction :
         {"DSAnnounceBuffer", "DSQueueBuffer", "GCRegisterEvent", "DSStartAcquisition"})
    {
        m_device->GetIKxRemotePort()->GetINodeMap();
        camera->Set(szFunction, GenTL::GC_ERR_IO);
        EXPECT_THAT(StartError(), testing::AllOf(HasSubstr(szFunction), HasSubstr("the wire is cut")));
        camera->Set(szFunction, GenTL::GC_ERR_SUCCESS);
    }
    m_stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_TRUE(camera->Deliver());
    EXPECT_TRUE(Fetch()) << "and works again";
}

TEST_F(StreamFault, AbsurdSizesOfAStreamAreRefusedWithTheirLimits)
{
    camera->registers[kFakePayloadSize] = 0;
    EXPECT_THAT(StartError(), HasSubstr("buffers of 0 bytes; Min = 1"));
    camera->streamInfos[GenTL::STREAM_INFO_DEFINES_PAYLOADSIZE] = ToldBool(true);
    camera->streamInfos[GenTL::STREAM_INFO_PAYLOAD_SIZE] = ToldSize(size_t{1} << 60);
    EXPECT_THAT(StartError(), HasSubstr("Max = 4294967296"));
    camera->streamInfos[GenTL::STREAM_INFO_PAYLOAD_SIZE] = {0, 12, "12345"};
    EXPECT_THAT(StartError(), HasSubstr("Min = 1")) << "a size of five bytes";
    camera->streamInfos = {{GenTL::STREAM_INFO_BUF_ALIGNMENT, ToldSize(3)}};
    camera->registers[kFakePayloadSize] = 4096;
    m_device->GetIKxRemotePort()->GetINodeMap()->InvalidateNodes();
    EXPECT_THAT(StartError(), HasSubstr("alignment of 3 bytes"));
    camera->streamInfos = {{GenTL::STREAM_INFO_BUF_ANNOUNCE_MIN, ToldSize(1000000)}};
    EXPECT_THAT(StartError(), HasSubstr("1000000 buffers; Max = 4096"));
}

TEST_F(StreamFault, BuffersWithoutUsableImageAreRefusedAndTheNextOneArrives)
{
    const std::vector<std::pair<FakeInfos, std::string>> cases{
        {{{GenTL::BUFFER_INFO_PIXELFORMAT, ToldU64(0x01080FFF)}}, "0x01080FFF of an image is unknown"},
        {{{GenTL::BUFFER_INFO_PIXELFORMAT, ToldU64(0xFFFFFFFF)}}, "0xFFFFFFFF of an image is unknown"},
        {{{GenTL::BUFFER_INFO_PIXELFORMAT, ToldU64(0x1000000001080001)}}, "is unknown"},
        {{{GenTL::BUFFER_INFO_PAYLOADTYPE, ToldSize(GenTL::PAYLOAD_TYPE_MULTI_PART)}},
         "None of the 0 parts of a buffer is an image"},
        {{{GenTL::BUFFER_INFO_PAYLOADTYPE, ToldSize(GenTL::PAYLOAD_TYPE_H264)}}, "Payload type 7"},
        {{{GenTL::BUFFER_INFO_HEIGHT, ToldSize(65)}}, "does not fit into a buffer of 4096 bytes"},
        {{{GenTL::BUFFER_INFO_WIDTH, ToldSize(SIZE_MAX)}}, "does not fit"},
        {{{GenTL::BUFFER_INFO_HEIGHT, ToldSize(SIZE_MAX)}}, "does not fit"},
        {{{GenTL::BUFFER_INFO_XPADDING, ToldSize(SIZE_MAX)}}, "does not fit"},
        {{{GenTL::BUFFER_INFO_IMAGEOFFSET, ToldSize(SIZE_MAX)}}, "does not fit"},
        {{{GenTL::BUFFER_INFO_IMAGEOFFSET, ToldSize(1025)}}, "does not fit"},
        {{{GenTL::BUFFER_INFO_WIDTH, ToldSize(63)}, {GenTL::BUFFER_INFO_HEIGHT, ToldSize(66)}}, "63 by 66"}};
    m_stream->StartAcquisition(nullptr, kKxEndless);
    for (const auto& [infos, text] : cases) {
        ASSERT_TRUE(camera->Deliver(infos));
        EXPECT_THAT(FetchError(), HasSubstr(text));
    }
    camera->Deliver();
    EXPECT_EQ(FetchError(), "");
    EXPECT_EQ(m_stream->GetStatistics().nRefused, cases.size());
    EXPECT_EQ(m_stream->GetStatistics().nLost, 0U) << "they did arrive";
    m_stream->StopAcquisition();

    Receiver receiver;
    m_stream->StartAcquisition(&receiver, kKxEndless);
    camera->Deliver(cases[0].first);
    camera->Deliver();
    EXPECT_TRUE(receiver.Gets(1));
    m_stream->StopAcquisition();
    EXPECT_THAT(receiver.Errors(), ElementsAre(HasSubstr(cases[0].second)));
    EXPECT_FALSE(receiver.HasEnded());
}

TEST_F(StreamFault, WhatAProducerGetsWrongOfAnImageIsTakenFromElsewhere)
{
    const FakeInfo zero = ToldSize(0);
    struct Case
    {
        FakeInfos infos;
        size_t height, deliveredHeight;
        bool isIncomplete;
    };
    using namespace GenTL;
    const std::vector<Case> cases{
        {{{BUFFER_INFO_DELIVERED_IMAGEHEIGHT, zero}}, 48, 48, false},
        {{{BUFFER_INFO_HEIGHT, zero}, {BUFFER_INFO_DELIVERED_IMAGEHEIGHT, ToldSize(40)}}, 40, 40, false},
        {{{BUFFER_INFO_WIDTH, zero}, {BUFFER_INFO_HEIGHT, zero}, {BUFFER_INFO_PIXELFORMAT, ToldU64(0)}},
         48,
         48,
         false},
        {{{BUFFER_INFO_DELIVERED_IMAGEHEIGHT, zero}, {BUFFER_INFO_SIZE_FILLED, ToldSize(64 * 20)}},
         48,
         20,
         true},
    };
    m_stream->StartAcquisition(nullptr, kKxEndless);
    for (const Case& expected : cases) {
        camera->Deliver(expected.infos);
        const ImagePtr image = Fetch();
        ASSERT_TRUE(image);
        EXPECT_EQ(image->GetImageWidth(), 64U);
        EXPECT_EQ(image->GetImageHeight(), expected.height);
        EXPECT_EQ(image->GetDeliveredHeight(), expected.deliveredHeight);
        EXPECT_EQ(image->GetImagePixelFormat(), KxPixelFormat_Mono8);
        EXPECT_EQ(image->IsIncomplete(), expected.isIncomplete);
    }
}

TEST_F(StreamFault, WhatComesBeforeTheFirstImageIsNeitherLossNorFault)
{
    const FakeInfos empty{{GenTL::BUFFER_INFO_SIZE_FILLED, ToldSize(0)},
                          {GenTL::BUFFER_INFO_IS_INCOMPLETE, ToldBool(true)},
                          {GenTL::BUFFER_INFO_FRAMEID, ToldU64(0)}};
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->Deliver(empty);
    camera->frameID = 23; // it goes on from an earlier run
    for (int i = 0; i < 3; ++i) {
        camera->Deliver();
        EXPECT_EQ(FetchError(), "");
    }
    const CKxStreamStatistics statistics = m_stream->GetStatistics();
    EXPECT_EQ(statistics.nDelivered, 3U);
    EXPECT_EQ(statistics.nRefused, 1U);
    EXPECT_EQ(statistics.nLost, 0U);
}

TEST_F(StreamFault, BuffersThatTheProducerDoesNotTakeBackAreGivenBackLater)
{
    m_stream->SetBufferCount(2);
    Receiver receiver;
    m_stream->StartAcquisition(&receiver, kKxEndless);
    camera->Set("DSQueueBuffer", GenTL::GC_ERR_BUSY);
    camera->Deliver();
    EXPECT_TRUE(receiver.Gets(1));
    camera->Set("DSQueueBuffer", GenTL::GC_ERR_SUCCESS);
    EXPECT_TRUE(Eventually([&] { return camera->QueuedCount() == 2; }));
    EXPECT_THAT(receiver.Errors(), testing::IsEmpty());
    EXPECT_TRUE(m_stream->IsAcquiring());
    m_stream->StopAcquisition();
}

TEST_F(StreamFault, AProducerThatFailsAgainAndAgainEndsTheAcquisition)
{
    Receiver receiver;
    m_stream->StartAcquisition(&receiver, kKxEndless);
    camera->Set("EventGetData", GenTL::GC_ERR_ERROR);
    EXPECT_TRUE(receiver.GetsErrors(1));
    EXPECT_TRUE(receiver.HasEnded());
    EXPECT_THAT(receiver.Errors(), ElementsAre(HasSubstr("EventGetData")));
    EXPECT_FALSE(m_stream->IsAcquiring());
    EXPECT_THAT(camera->TakeLog(), testing::Contains("unlock"));
    camera->Set("EventGetData", GenTL::GC_ERR_SUCCESS);

    m_stream->StartAcquisition(nullptr, kKxEndless);
    {
        const std::lock_guard<std::mutex> lock(camera->mutex);
        camera->eventSize = 4; // less than a handle has
    }
    for (int i = 0; i < 8; ++i)
        camera->Deliver();
    EXPECT_THAT(FetchError(), HasSubstr("New-buffer event of 4 bytes"));
}

TEST_F(StreamFault, ForeignHandlesAndBuffersDeliveredTwiceAreRefused)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    int foreign = 0;
    const auto event = [](void* handle) {
        return FakeEvent{Told<void*>(handle, GenTL::INFO_DATATYPE_PTR), Told<void*>(nullptr, 10)};
    };
    camera->Push('s', GenTL::EVENT_NEW_BUFFER, event(&foreign));
    EXPECT_THAT(FetchError(), HasSubstr("never announced"));
    FakeBuffer* const buffer = camera->input.front();
    camera->Deliver();
    const ImagePtr image = Fetch();
    ASSERT_TRUE(image);
    camera->Push('s', GenTL::EVENT_NEW_BUFFER, event(buffer));
    EXPECT_THAT(FetchError(), HasSubstr("did not have"));
}

TEST_F(StreamFault, WithoutBufferThatGoesBackTheAcquisitionEnds)
{
    m_stream->SetBufferCount(2);
    Receiver receiver;
    m_stream->StartAcquisition(&receiver, kKxEndless);
    camera->Set("DSQueueBuffer", GenTL::GC_ERR_INVALID_BUFFER);
    camera->Deliver();
    camera->Deliver();
    EXPECT_TRUE(receiver.GetsErrors(1));
    m_stream->StopAcquisition(); // waits for the call that tells it
    EXPECT_THAT(receiver.Errors(), ElementsAre(HasSubstr("takes no buffer back")));
    EXPECT_TRUE(receiver.HasEnded());
}

TEST_F(StreamFault, ACameraUnpluggedWhileImagesAreAwaitedIsTold)
{
    DeviceLog log;
    void* const hCallback = m_device->RegisterCallback(&log);
    Receiver receiver;
    m_stream->StartAcquisition(&receiver, kKxEndless);
    camera->Deliver();
    EXPECT_TRUE(receiver.Gets(1));
    camera->isUnplugged = true; // the producer is silent
    EXPECT_TRUE(receiver.GetsErrors(1));
    EXPECT_TRUE(receiver.HasEnded());
    EXPECT_THAT(receiver.Errors(), ElementsAre(HasSubstr("does not answer any more")));
    EXPECT_TRUE(m_device->IsLost());
    EXPECT_THAT(log.Entries(), ElementsAre(HasSubstr("lost")));
    EXPECT_NO_THROW(m_stream->StopAcquisition()) << "nothing is left to stop";
    m_device->DeregisterCallback(hCallback);
    m_stream.Reset();
    m_device.Reset();
    EXPECT_EQ(camera->access, 0);
}

TEST_F(StreamFault, AFetchThatWaitsEndsWhenTheCameraIsUnplugged)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->isUnplugged = true;
    EXPECT_THAT(FetchError(), HasSubstr("does not answer any more"));
    EXPECT_FALSE(m_stream->IsAcquiring());
}

TEST_F(StreamFault, ACallbackThatThrowsGoesOnGettingImages)
{
    Receiver receiver;
    receiver.onImage = [](const IKxStreamImage& image) {
        if (image.GetFrameID() == 1)
            throw std::runtime_error("my own fault");
        if (image.GetFrameID() == 2)
            throw 42;
    };
    receiver.onError = [](bool) { throw std::runtime_error("mine too"); };
    m_stream->StartAcquisition(&receiver, kKxEndless);
    for (int i = 0; i < 3; ++i)
        camera->Deliver();
    EXPECT_TRUE(receiver.Gets(3));
    m_stream->StopAcquisition();
    EXPECT_THAT(receiver.Errors(),
                ElementsAre("The callback raised with image 1: my own fault",
                            "The callback raised with image 2: exception of an unknown type"));
    EXPECT_FALSE(receiver.HasEnded());
    EXPECT_EQ(m_stream->GetStatistics().nCallbackErrors, 4U);
}

TEST_F(StreamFault, StopEndsAFetchThatWaits)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    std::atomic<bool> isWaiting{false};
    bool isNull = false;
    std::thread thread([&] {
        isWaiting = true;
        isNull = m_stream->FetchImage(0xFFFFFFFF) == nullptr; // fifty days
    });
    EXPECT_TRUE(Eventually([&] { return isWaiting.load(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    m_stream->StopAcquisition();
    thread.join();
    EXPECT_TRUE(isNull);
}

TEST_F(StreamFault, StopAndReleaseWorkFromInsideTheCallback)
{
    Receiver receiver;
    receiver.onImage = [&](IKxStreamImage&) { m_stream->StopAcquisition(); };
    m_stream->StartAcquisition(&receiver, kKxEndless);
    camera->Deliver();
    camera->Deliver();
    EXPECT_TRUE(Eventually([&] { return !m_stream->IsAcquiring(); }));
    EXPECT_EQ(receiver.IDs().size(), 1U);

    Receiver last;
    last.onImage = [&](IKxStreamImage& image) {
        m_stream.Reset();
        m_device.Reset();
        static_cast<uint8_t*>(image.GetImageBuffer())[0] = 1; // still there
    };
    m_stream->StartAcquisition(&last, kKxEndless);
    camera->TakeLog();
    camera->Deliver();
    EXPECT_TRUE(Eventually([&] {
        const std::lock_guard<std::mutex> lock(camera->mutex);
        return camera->access == 0;
    }));
    EXPECT_THAT(camera->TakeLog(),
                ElementsAre("camera stops", "stream stops", "unlock", "close stream", "close"));
}

TEST_F(StreamFault, ANewStartWorksFromTheCallThatTellsTheEnd)
{
    Receiver receiver;
    std::atomic<bool> isRestarted{false};
    receiver.onError = [&](bool bEnded) {
        if (!bEnded || isRestarted)
            return;
        camera->Set("EventGetData", GenTL::GC_ERR_SUCCESS);
        m_stream->StartAcquisition(&receiver, kKxEndless);
        isRestarted = true;
    };
    m_stream->StartAcquisition(&receiver, kKxEndless);
    camera->Set("EventGetData", GenTL::GC_ERR_INVALID_HANDLE);
    EXPECT_TRUE(Eventually([&] { return isRestarted.load(); }));
    EXPECT_TRUE(camera->Deliver());
    EXPECT_TRUE(receiver.Gets(1));
    m_stream->StopAcquisition();
}

TEST_F(StreamFault, AStopThatFailsIsToldAfterAllIsUndone)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->Set("DSStopAcquisition", GenTL::GC_ERR_IO);
    EXPECT_THROW(m_stream->StopAcquisition(), CKxGenTLErrorException);
    EXPECT_FALSE(m_stream->IsAcquiring());
    EXPECT_EQ(camera->Register(kFakeLock), 0U);
    EXPECT_NO_THROW(m_stream->StopAcquisition());
    // The same where the last image ended it.
    m_stream->StartAcquisition(nullptr, 1);
    ASSERT_TRUE(camera->Deliver());
    ASSERT_TRUE(Fetch());
    ASSERT_TRUE(Eventually([this] { return !m_stream->IsAcquiring(); }));
    EXPECT_THROW(m_stream->StopAcquisition(), CKxGenTLErrorException);
}

TEST_F(StreamFault, BuffersThatTheProducerKeepsStayUntilTheStreamIsClosed)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    auto* const memory = static_cast<volatile uint8_t*>(camera->buffers.front().base);
    camera->Set("DSRevokeBuffer", GenTL::GC_ERR_BUSY);
    m_stream->StopAcquisition();
    memory[0] = 1; // the producer writes still: the address sanitizer would see it
    m_stream.Reset();
    EXPECT_THAT(camera->TakeLog(), testing::Contains("close stream with buffers"));
}

TEST_F(StreamFault, AProducerThatHangsInItsWaitIsLeftAlone)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    camera->isHanging = true;
    EXPECT_TRUE(Eventually([&] { return camera->hangingCount == 5; })) << "the stream and the events";
    EXPECT_FALSE(ImagePtr(m_stream->FetchImage(20))) << "the time-out holds all the same";
    EXPECT_THROW(m_stream->StopAcquisition(), GenICam::RuntimeException);
    EXPECT_FALSE(m_stream->IsAcquiring());
    EXPECT_FALSE(camera->isStarted);
    m_stream.Reset();
    m_device.Reset();
    EXPECT_NE(camera->access, 0) << "nothing is closed under the producer's feet";
    camera->LetGo();
    EXPECT_TRUE(Eventually([&] {
        const std::lock_guard<std::mutex> lock(camera->mutex);
        return camera->access == 0;
    })) << "but as soon as it comes back";
}

TEST_F(StreamFault, BrokenChunksCostTheChunksAndNotTheImage)
{
    const GenApi::CIntegerPtr chunkGain = Integer(m_device->GetIKxRemotePort(), "ChunkGain");
    Receiver receiver;
    receiver.onImage = [&](IKxStreamImage& image) {
        EXPECT_NE(image.GetImageBuffer(), nullptr);
        EXPECT_FALSE(GenApi::IsReadable(chunkGain->GetAccessMode()));
    };
    m_stream->StartAcquisition(&receiver, kKxEndless);
    for (const FakeBuffer& buffer : camera->buffers)
        std::memset(static_cast<uint8_t*>(buffer.base) + 4000, 0xFF, 96);
    camera->chunks = {{0xC001, 4095, 4}}; // beyond the buffer's end
    camera->Deliver();
    EXPECT_TRUE(receiver.Gets(1));
    camera->Set("DSGetBufferChunkData", GenTL::GC_ERR_PARSING_CHUNK_DATA);
    camera->Deliver();
    EXPECT_TRUE(receiver.Gets(2));
    camera->Set("DSGetBufferChunkData", GenTL::GC_ERR_NOT_IMPLEMENTED); // found as GigE Vision has them
    camera->Deliver();
    EXPECT_TRUE(receiver.Gets(3));
    m_stream->StopAcquisition();
    EXPECT_EQ(receiver.Errors().size(), 3U);
    EXPECT_FALSE(receiver.HasEnded());
}

} // namespace
