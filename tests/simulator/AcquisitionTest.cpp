// SPDX-License-Identifier: Apache-2.0
#include "SimulatorFixture.h"

namespace
{

using namespace KxTest;
using namespace KxApi;

class Acquisition : public Simulator
{};

TEST_F(Acquisition, OfANumberOfImagesEndsByItself)
{
    const DevicePtr device = OpenSmall();
    const StreamPtr stream(device->OpenIKxStream(0));
    for (const auto& [mode, count] : {std::pair("SingleFrame", 1U), std::pair("MultiFrame", 3U)}) {
        Set(device, "AcquisitionMode", mode);
        if (count > 1)
            Set(device, "AcquisitionFrameCount", std::to_string(count));
        stream->StartAcquisition(nullptr, kKxEndless);
        for (uint64_t i = 0; i < count; ++i) {
            const ImagePtr image(stream->FetchImage(kLongMs));
            ASSERT_TRUE(image);
            EXPECT_EQ(image->GetFrameID(), i);
        }
        EXPECT_TRUE(Eventually([&] { return Get(device, "AcquisitionStatus") == "0"; }));
        EXPECT_FALSE(ImagePtr(stream->FetchImage(0))) << "no more of them";
        stream->StopAcquisition();
    }
}

TEST_F(Acquisition, WaitsForTriggersAndTakesOneImageForEach)
{
    const DevicePtr device = OpenSmall();
    Set(device, "TriggerMode", "On");
    const StreamPtr stream(device->OpenIKxStream(0));
    stream->StartAcquisition(nullptr, kKxEndless);
    for (uint64_t i = 0; i < 5; ++i) {
        EXPECT_FALSE(ImagePtr(stream->FetchImage(20))) << "nobody has triggered";
        Execute(device, "TriggerSoftware");
        const ImagePtr image(stream->FetchImage(kLongMs));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->GetFrameID(), i);
    }
    // Back to its own pace.
    Set(device, "TriggerMode", "Off");
    EXPECT_TRUE(ImagePtr(stream->FetchImage(kLongMs)));
    stream->StopAcquisition();
}

TEST_F(Acquisition, KeepsWhatTheSizeOfImagesDependsOn)
{
    const DevicePtr device = OpenSmall();
    const StreamPtr stream(device->OpenIKxStream(0));
    stream->StartAcquisition(nullptr, kKxEndless);
    GenApi::INodeMap& map = Features(device);
    EXPECT_EQ(map.GetNode("Width")->GetAccessMode(), GenApi::RO);
    Set(device, "TLParamsLocked", "0");
    EXPECT_EQ(ErrorOf([&] { Set(device, "Width", "128"); }), GenTL::GC_ERR_ACCESS_DENIED)
        << "the camera refuses too";
    stream->StopAcquisition();
    Set(device, "Width", "128");
    EXPECT_EQ(Get(device, "PayloadSize"), "2048");
}

TEST_F(Acquisition, KeepsTheRateWithinWhatHeightAndExposureAllow)
{
    const DevicePtr device = Open(kMono);
    const double whole = Number(device, "KxFrameRateLimit");
    EXPECT_GT(whole, 120);
    Set(device, "AcquisitionFrameRate", "150");
    Set(device, "ExposureTime", "20000");
    EXPECT_NEAR(Number(device, "AcquisitionFrameRate"), 50, 0.001);
    Set(device, "ExposureTime", "100");
    Set(device, "Height", "480");
    EXPECT_GT(Number(device, "KxFrameRateLimit"), 500);
}

TEST_F(Acquisition, SendsChunksWithItsImages)
{
    for (const Place& place : {kAllKinds, kColour}) { // one camera of each byte order
        SCOPED_TRACE(place.camera);
        const DevicePtr device = Open(place);
        Set(device, "Width", "64");
        Set(device, "Height", "16");
        const size_t without = std::stoul(Get(device, "PayloadSize"));
        Set(device, "ChunkModeActive", "1");
        Set(device, "ChunkSelector", "OffsetY");
        Set(device, "ChunkEnable", "0");
        Set(device, "ExposureTime", "1234.5");
        Set(device, "Gain", "3.25");
        // Five of 8 and 4 bytes, and nine times their ID and length: 4 * 8 + 4 * 4 + 9 * 8.
        EXPECT_EQ(std::stoul(Get(device, "PayloadSize")), without + 32 + 16 + 72);
        const StreamPtr stream(device->OpenIKxStream(0));
        stream->StartAcquisition(nullptr, 2);
        const ImagePtr first(stream->FetchImage(kLongMs));
        const ImagePtr image(stream->FetchImage(kLongMs));
        ASSERT_TRUE(first && image);
        ASSERT_TRUE(image->HasChunkData());
        EXPECT_EQ(Get(device, "ChunkFrameID"), std::to_string(image->GetFrameID()));
        EXPECT_EQ(Get(device, "ChunkTimestamp"), std::to_string(image->GetTimestamp()));
        EXPECT_DOUBLE_EQ(Number(device, "ChunkExposureTime"), 1234.5);
        EXPECT_DOUBLE_EQ(Number(device, "ChunkGain"), 3.25);
        EXPECT_EQ(Get(device, "ChunkWidth"), "64");
        EXPECT_EQ(Get(device, "ChunkPixelFormat"), Get(device, "PixelFormat"));
        EXPECT_FALSE(GenApi::IsReadable(Features(device).GetNode("ChunkOffsetY"))) << "switched off";
    }
}

TEST_F(Acquisition, TellsEventsWithTheirData)
{
    const DevicePtr device = OpenSmall();
    GenApi::INodeMap& map = Features(device);
    const auto isThere = [&](const char* name) { return GenApi::IsReadable(map.GetNode(name)); };
    EXPECT_FALSE(isThere("EventTestTimestamp"));
    for (const char* event : {"Test", "ExposureEnd", "AcquisitionEnd"}) {
        Set(device, "EventSelector", event);
        Set(device, "EventNotification", "On");
    }
    Execute(device, "TestEventGenerate");
    EXPECT_TRUE(Eventually([&] { return isThere("EventTestTimestamp"); }));
    EXPECT_GT(std::stoull(Get(device, "EventTestTimestamp")), 0U);
    Set(device, "AcquisitionMode", "MultiFrame");
    Set(device, "AcquisitionFrameCount", "20");
    const StreamPtr stream(device->OpenIKxStream(0));
    stream->StartAcquisition(nullptr, kKxEndless);
    EXPECT_TRUE(Eventually([&] { return isThere("EventAcquisitionEndFrameID"); }));
    EXPECT_EQ(Get(device, "EventAcquisitionEndFrameID"), "19");
    EXPECT_EQ(Get(device, "EventExposureEndFrameID"), "19");
    EXPECT_TRUE(Eventually([&] { return Get(device, "KxImageCount") == "20"; })) << "it changed by itself";
    stream->StopAcquisition();
}

TEST_F(Acquisition, LetsTheProducerAskForAChange)
{
    const DevicePtr device = OpenSmall();
    EXPECT_EQ(Get(device, "Gamma"), "1");
    Execute(device, "KxAskForChange");
    EXPECT_TRUE(Eventually([&] { return Get(device, "Gamma") == "1.5"; }));
}

TEST_F(Acquisition, SettingsAreKeptInUserSets)
{
    const DevicePtr device = OpenSmall();
    Set(device, "Gain", "6");
    Set(device, "PixelFormat", "Mono16");
    Set(device, "UserSetSelector", "UserSet0");
    Execute(device, "UserSetSave");
    Set(device, "UserSetSelector", "Default");
    EXPECT_EQ(Features(device).GetNode("UserSetSave")->GetAccessMode(), GenApi::NA);
    Execute(device, "UserSetLoad");
    EXPECT_EQ(Get(device, "Gain"), "0");
    EXPECT_EQ(Get(device, "Width"), "640");
    EXPECT_EQ(Get(device, "PixelFormat"), "Mono8");
    Set(device, "UserSetSelector", "UserSet0");
    Execute(device, "UserSetLoad");
    EXPECT_EQ(Get(device, "Gain"), "6");
    EXPECT_EQ(Get(device, "Width"), "64");
    EXPECT_EQ(Get(device, "PixelFormat"), "Mono16");
    Set(device, "UserSetSelector", "UserSet1");
    EXPECT_EQ(ErrorOf([&] { Execute(device, "UserSetLoad"); }), GenTL::GC_ERR_NOT_AVAILABLE) << "never saved";
}

} // namespace
