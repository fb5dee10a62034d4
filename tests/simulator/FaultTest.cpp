// SPDX-License-Identifier: Apache-2.0
#include "SimulatorFixture.h"

namespace
{

using namespace KxTest;
using namespace KxApi;
using testing::ElementsAre;
using testing::HasSubstr;

class Fault : public Simulator
{
protected:
    /// Numbers of the images of an acquisition, negative where they are incomplete.
    static std::vector<int64_t> Grab(const DevicePtr& device, size_t count,
                                     CKxStreamStatistics* statistics = nullptr)
    {
        const StreamPtr stream(device->OpenIKxStream(0));
        stream->StartAcquisition(nullptr, count);
        std::vector<int64_t> ids;
        while (ids.size() < count) {
            const ImagePtr image(stream->FetchImage(kLongMs));
            if (!image)
                break;
            const auto id = static_cast<int64_t>(image->GetFrameID());
            ids.push_back(image->IsIncomplete() ? -id : id);
            EXPECT_EQ(image->GetDeliveredHeight(), image->GetImageHeight() / (image->IsIncomplete() ? 2 : 1));
        }
        if (statistics)
            *statistics = stream->GetStatistics();
        return ids;
    }
};

TEST_F(Fault, ImagesAreLostOrIncompleteOrLate)
{
    const DevicePtr device = OpenSmall();
    Set(device, "KxFaultLoseEvery", "3");
    CKxStreamStatistics statistics;
    EXPECT_THAT(Grab(device, 5, &statistics), ElementsAre(0, 1, 3, 4, 6));
    EXPECT_EQ(statistics.nLost, 2U);
    Set(device, "KxFaultLoseEvery", "0");
    Set(device, "KxFaultIncompleteEvery", "2");
    EXPECT_THAT(Grab(device, 4), ElementsAre(0, -1, 2, -3));
    Set(device, "KxFaultIncompleteEvery", "0");
    Set(device, "KxFaultLateEvery", "2");
    Set(device, "KxFaultLateBy", "200");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(Grab(device, 4), ElementsAre(0, 1, 2, 3));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(400));
}

TEST_F(Fault, ARegisterDoesNotAnswer)
{
    const DevicePtr device = OpenSmall();
    Set(device, "KxFaultFeature", "Gain");
    const GenApi::CFloatPtr gain(Features(device).GetNode("Gain"));
    EXPECT_EQ(ErrorOf([&] { gain->GetValue(false, true); }), GenTL::GC_ERR_IO);
    EXPECT_EQ(ErrorOf([&] { gain->SetValue(1); }), GenTL::GC_ERR_IO);
    EXPECT_EQ(Get(device, "Gamma"), "1") << "the others do";
    EXPECT_EQ(ErrorOf([&] { Set(device, "KxFaultFeature", "Nonsense"); }), GenTL::GC_ERR_INVALID_VALUE);
    Set(device, "KxFaultFeature", "");
    gain->SetValue(1);
    EXPECT_EQ(Get(device, "Gain"), "1");
}

TEST_F(Fault, ADescriptionIsCutShort)
{
    GenApi::INodeMap& map = *Interface(kAllKinds.interface).GetIKxPort()->GetINodeMap();
    for (const char* camera : {"KX_U5C_1002", "KX_U03N_1003"}) { // zipped and plain
        Set(map, "KxCameraSelector", camera);
        Set(map, "KxCameraDescriptionTruncated", "1");
    }
    for (const Place& place : {kBayer, kAllKinds}) {
        const DevicePtr device = Open(place);
        EXPECT_THROW(Features(device), GenICam::GenericException) << place.camera;
    }
    Set(map, "KxCameraDescriptionTruncated", "0");
    EXPECT_EQ(Get(Open(kAllKinds), "Width"), "640");
}

TEST_F(Fault, AnUnpluggedCameraIsLostAndComesBackAsANewOne)
{
    {
        const DevicePtr device = OpenSmall();
        const StreamPtr stream(device->OpenIKxStream(0));
        stream->StartAcquisition(nullptr, kKxEndless);
        EXPECT_TRUE(ImagePtr(stream->FetchImage(kLongMs)));
        Execute(device, "KxFaultUnplug");
        EXPECT_TRUE(Eventually([&] { return device->IsLost(); }));
        EXPECT_EQ(ErrorOf([&] { Get(device, "DeviceTemperature"); }), GenTL::GC_ERR_IO);
        EXPECT_EQ(Find(kAllKinds), nullptr);
        EXPECT_EQ(ErrorOf([&] { Find(kMono); }), GenTL::GC_ERR_SUCCESS) << "the others stay";

        GenApi::INodeMap& map = *Interface(kAllKinds.interface).GetIKxPort()->GetINodeMap();
        Set(map, "KxCameraSelector", "KX_U03N_1003");
        EXPECT_EQ(Get(map, "KxCameraPlugged"), "0");
        Set(map, "KxCameraPlugged", "1");
        EXPECT_NE(Find(kAllKinds), nullptr);
        EXPECT_EQ(ErrorOf([&] { Get(device, "DeviceTemperature"); }), GenTL::GC_ERR_IO)
            << "until it is opened anew";
    }
    EXPECT_GT(Number(Open(kAllKinds), "DeviceTemperature"), 0);
}

TEST_F(Fault, AnUnpluggedCameraCanComeBackByItself)
{
    const DevicePtr device = OpenSmall();
    Set(device, "KxFaultReplugAfter", "50");
    Execute(device, "KxFaultUnplug");
    EXPECT_TRUE(Eventually([&] { return Find(kAllKinds) != nullptr; }));
}

TEST_F(Fault, CamerasCanBeMissingOrBrokenFromTheStart)
{
    setenv("KXSIM_UNPLUGGED", "KX-U5M_1001,KX-G1C_2001", 1);
    setenv("KXSIM_TRUNCATED_XML", "KX-U03N_1003", 1);
    EXPECT_EQ(Find(kMono), nullptr);
    EXPECT_EQ(Find(kColour), nullptr);
    EXPECT_NE(Find(kBayer), nullptr);
    const DevicePtr device = Open(kAllKinds);
    EXPECT_THROW(Features(device), GenICam::GenericException);
}

} // namespace
