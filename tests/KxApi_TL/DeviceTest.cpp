// SPDX-License-Identifier: Apache-2.0
#include "CameraFixture.h"
#include "producers/FakeDescriptions.h"

#include <KxSDKCommon/KxApi_Exception.h>

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>

namespace
{

using namespace KxApi;
using namespace KxTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class Device : public CameraFixture
{};

TEST_F(Device, OpensForWhatItIsAskedForAndOnlyOnce)
{
    for (const EKxDeviceAccess_t eAccess :
         {KxDeviceAccess_ReadOnly, KxDeviceAccess_Control, KxDeviceAccess_Exclusive})
    {
        const DevicePtr device = Open(eAccess);
        EXPECT_EQ(camera->access, eAccess);
        EXPECT_EQ(device->GetAccess(), eAccess);
        EXPECT_EQ(device->GetIKxInterface(), m_interface);
        EXPECT_EQ(device->GetIKxDeviceInfo(), m_interface->GetIKxDeviceInfo(0));
        EXPECT_EQ(device->GetStreamCount(), 1U);
        EXPECT_EQ(ErrorOf([&] { Open(); }), GenTL::GC_ERR_RESOURCE_IN_USE);
    }
    EXPECT_EQ(camera->access, 0) << "closed again";
    camera->Set("IFOpenDevice", GenTL::GC_ERR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf([&] { Open(); }), GenTL::GC_ERR_ACCESS_DENIED);
}

TEST_F(Device, WantsAnInterfaceAndOneOfItsDevices)
{
    const IKxDeviceInfo* const info = m_interface->GetIKxDeviceInfo(0);
    EXPECT_THROW(CreateIKxDevice(nullptr, info, KxDeviceAccess_Control), GenICam::InvalidArgumentException);
    EXPECT_THROW(CreateIKxDevice(m_interface, nullptr, KxDeviceAccess_Control),
                 GenICam::InvalidArgumentException);
    EXPECT_THROW(CreateIKxDevice(m_interface, info, static_cast<EKxDeviceAccess_t>(1)),
                 GenICam::InvalidArgumentException);
    Terminate();
    EXPECT_THROW(Open(), GenICam::LogicalErrorException);
    Initialize();
}

TEST_F(Device, HasItsFeaturesAndThoseOfTheProducer)
{
    const DevicePtr device = Open();
    const GenApi::CIntegerPtr gain = Integer(device->GetIKxRemotePort(), "Gain");
    EXPECT_EQ(gain->GetValue(), 7);
    gain->SetValue(9);
    EXPECT_EQ(camera->Register(kFakeGain), 9U);
    EXPECT_TRUE(Integer(device->GetIKxLocalPort(), "EventCount").IsValid());
    const StreamPtr stream = OpenStream(device);
    EXPECT_TRUE(Integer(stream->GetIKxPort(), "EventCount").IsValid());
}

TEST_F(Device, OpenReadOnlyIsNeitherWrittenNorAcquiredFrom)
{
    const DevicePtr device = Open(KxDeviceAccess_ReadOnly);
    const GenApi::CIntegerPtr gain = Integer(device->GetIKxRemotePort(), "Gain");
    EXPECT_EQ(gain->GetValue(), 7);
    EXPECT_EQ(gain->GetAccessMode(), GenApi::RO);
    EXPECT_THROW(gain->SetValue(9), GenICam::AccessException);
    EXPECT_EQ(camera->Register(kFakeGain), 7U);
    const StreamPtr stream = OpenStream(device);
    EXPECT_THROW(stream->StartAcquisition(nullptr, kKxEndless), GenICam::AccessException);
}

TEST_F(Device, WithBrokenOrMissingDescriptionTellsSoAndWorksOnceItIsThere)
{
    const DevicePtr device = Open();
    const std::string whole = RemoteDescription();
    camera->descriptions['r'] = whole.substr(0, whole.size() / 2);
    EXPECT_THROW(device->GetIKxRemotePort()->GetINodeMap(), GenICam::GenericException);
    camera->descriptions['r'] = "";
    EXPECT_THROW(device->GetIKxRemotePort()->GetINodeMap(), GenICam::GenericException);
    for (const char* const szFunction : {"GCGetPortURL", "GCGetNumPortURLs"})
        camera->Set(szFunction, GenTL::GC_ERR_NO_DATA);
    EXPECT_EQ(ErrorOf([&] { device->GetIKxRemotePort()->GetINodeMap(); }), GenTL::GC_ERR_NO_DATA);
    {
        const StreamPtr stream = OpenStream(device);
        EXPECT_THROW(stream->StartAcquisition(nullptr, kKxEndless), GenICam::GenericException);
    }
    camera->Set("GCGetPortURL", GenTL::GC_ERR_SUCCESS);
    camera->descriptions.clear();
    EXPECT_EQ(Integer(device->GetIKxRemotePort(), "Gain")->GetValue(), 7);
}

TEST_F(Device, LivesUntilItsLastStreamIsReleasedAndItsSystemWithIt)
{
    DevicePtr device = Open();
    StreamPtr stream = OpenStream(device);
    EXPECT_EQ(ErrorOf([&] { device->OpenIKxStream(0); }), GenTL::GC_ERR_RESOURCE_IN_USE);
    EXPECT_THROW(device->OpenIKxStream(1), GenICam::OutOfRangeException);
    device.Reset();
    m_system.Reset();
    EXPECT_NE(camera->access, 0);
    EXPECT_EQ(Integer(stream->GetIKxDevice()->GetIKxRemotePort(), "Gain")->GetValue(), 7);
    stream.Reset();
    EXPECT_THAT(camera->TakeLog(), ElementsAre("close stream", "close", "close system"));
}

/// Counts the callbacks of a node.
struct Watcher
{
    explicit Watcher(const GenApi::CIntegerPtr& rNode)
        : node(rNode->GetNode())
        , handle(GenApi::Register(node, *this, &Watcher::OnChange))
    {}
    ~Watcher() { node->DeregisterCallback(handle); }
    void OnChange(GenApi::INode*) { ++changes; }
    bool Sees(int nChanges) const
    {
        return Eventually([&] { return changes >= nChanges; });
    }

    GenApi::INode* node;
    std::atomic<int> changes{0};
    GenApi::CallbackHandleType handle;
};

TEST_F(Device, FeaturesThatChangeByThemselvesAreReadAnew)
{
    const DevicePtr device = Open();
    const GenApi::CIntegerPtr gain = Integer(device->GetIKxRemotePort(), "Gain");
    EXPECT_EQ(gain->GetValue(), 7);
    {
        const std::lock_guard<std::mutex> lock(camera->mutex);
        camera->registers[kFakeGain] = 8;
    }
    EXPECT_EQ(gain->GetValue(), 7) << "cached, or the event would show nothing";
    const Watcher watcher(gain);
    camera->Push('l', GenTL::EVENT_FEATURE_INVALIDATE, {ToldText("NoSuchFeature"), Untold()});
    camera->Push('l', GenTL::EVENT_FEATURE_INVALIDATE, {ToldText("Gain"), Untold()});
    EXPECT_TRUE(watcher.Sees(1));
    EXPECT_EQ(gain->GetValue(), 8);
}

TEST_F(Device, FeaturesAreSetWhenTheProducerWantsThemToBe)
{
    const DevicePtr device = Open();
    DeviceLog log;
    void* const hCallback = device->RegisterCallback(&log);
    const Watcher watcher(Integer(device->GetIKxRemotePort(), "Gain"));
    camera->Push('l', GenTL::EVENT_FEATURE_CHANGE, {ToldText("Gain"), ToldText("21")});
    EXPECT_TRUE(watcher.Sees(1));
    EXPECT_EQ(camera->Register(kFakeGain), 21U);
    camera->Push('l', GenTL::EVENT_FEATURE_CHANGE, {ToldText("Gai"), ToldText("21")});
    camera->Push('l', GenTL::EVENT_FEATURE_CHANGE, {ToldText("Gain"), ToldText("much")});
    EXPECT_TRUE(Eventually([&] { return log.Entries().size() == 2; }));
    EXPECT_THAT(log.Entries().front(), HasSubstr("'Gai'"));
    device->DeregisterCallback(hCallback);
}

TEST_F(Device, EventDataArriveInTheNodesWithTheirID)
{
    const DevicePtr device = Open();
    const StreamPtr stream = OpenStream(device);
    const GenApi::CIntegerPtr line = Integer(device->GetIKxRemotePort(), "EventExposureEndLine");
    const GenApi::CIntegerPtr moduleCount = Integer(device->GetIKxLocalPort(), "EventCount");
    const GenApi::CIntegerPtr streamCount = Integer(stream->GetIKxPort(), "EventCount");
    EXPECT_FALSE(GenApi::IsReadable(line->GetAccessMode())) << "no event yet";
    const Watcher lineWatcher(line), moduleWatcher(moduleCount), streamWatcher(streamCount);
    const auto value = [](uint32_t nValue) { return Told(nValue, GenTL::INFO_DATATYPE_BUFFER); };
    camera->Push('l', GenTL::EVENT_REMOTE_DEVICE, {ToldText("9001"), value(4711)});
    camera->Push('l', GenTL::EVENT_MODULE, {ToldText("A1"), value(5)});
    camera->Push('s', GenTL::EVENT_MODULE, {ToldText("00A1"), value(6)});
    EXPECT_TRUE(lineWatcher.Sees(1));
    EXPECT_EQ(line->GetValue(), 4711);
    EXPECT_TRUE(moduleWatcher.Sees(1));
    EXPECT_EQ(moduleCount->GetValue(), 5);
    EXPECT_TRUE(streamWatcher.Sees(1));
    EXPECT_EQ(streamCount->GetValue(), 6);
}

TEST_F(Device, BrokenEventsAreToldAndHarmNothing)
{
    const DevicePtr device = Open();
    DeviceLog log;
    void* const hCallback = device->RegisterCallback(&log);
    const GenApi::CIntegerPtr line = Integer(device->GetIKxRemotePort(), "EventExposureEndLine");
    const Watcher watcher(line);
    const FakeInfo data = Told<uint32_t>(1, GenTL::INFO_DATATYPE_BUFFER);
    camera->Push('l', GenTL::EVENT_REMOTE_DEVICE, {ToldText("no hex"), data});
    camera->Push('l', GenTL::EVENT_REMOTE_DEVICE, {Told<uint32_t>(1, GenTL::INFO_DATATYPE_UINT32), data});
    camera->Push('l', GenTL::EVENT_ERROR,
                 {Told<int32_t>(GenTL::GC_ERR_CUSTOM_ID, GenTL::INFO_DATATYPE_INT32), ToldText("too warm")});
    EXPECT_TRUE(Eventually([&] { return log.Entries().size() == 3; }));
    EXPECT_THAT(log.Entries(), testing::Contains("error -10000 too warm"));
    camera->Push('l', GenTL::EVENT_REMOTE_DEVICE, {ToldText("9001"), data});
    EXPECT_TRUE(watcher.Sees(1)) << "the next one still arrives";
    EXPECT_FALSE(device->IsLost());
    device->DeregisterCallback(hCallback);
}

TEST_F(Device, IsLostWhenItsRegistersCannotBeReadAndNotByItsStatus)
{
    const DevicePtr device = Open();
    DeviceLog log;
    void* const hCallback = device->RegisterCallback(&log);
    device->GetIKxRemotePort()->GetINodeMap();
    {
        const std::lock_guard<std::mutex> lock(camera->mutex);
        camera->deviceInfos[GenTL::DEVICE_INFO_ACCESS_STATUS] =
            Told<int32_t>(GenTL::DEVICE_ACCESS_STATUS_NOACCESS, GenTL::INFO_DATATYPE_INT32);
    }
    const FakeEvent error{Told<int32_t>(-1010, GenTL::INFO_DATATYPE_INT32), Untold()};
    // An event is checked after it was told: when the second is told, the first is dealt with.
    for (int i = 0; i < 2; ++i)
        camera->Push('l', GenTL::EVENT_ERROR, error);
    EXPECT_TRUE(Eventually([&] { return log.Entries().size() >= 2; }));
    EXPECT_FALSE(device->IsLost()) << "a producer that calls it so because we have it open";
    camera->isUnplugged = true;
    for (int i = 0; i < 2; ++i)
        camera->Push('l', GenTL::EVENT_ERROR, error);
    EXPECT_TRUE(Eventually([&] { return log.Entries().size() >= 5; }));
    EXPECT_TRUE(device->IsLost());
    const auto isError = HasSubstr("error -1010");
    EXPECT_THAT(log.Entries(),
                UnorderedElementsAre(isError, isError, HasSubstr("lost -1010"), isError, isError))
        << "once";
    device->DeregisterCallback(hCallback);
}

TEST_F(Device, TakesTheFirstOfItsUrlsThatLeadsToADescription)
{
    const std::string path = testing::TempDir() + "Kx fake" + std::to_string(getpid()) + ".xml";
    std::ofstream(path) << RemoteDescription();
    std::string url = "file://" + path + "?SchemaVersion=1.1.0";
    url.replace(url.find(' '), 1, "%20");
    camera->urls['r'] = {"http://camera/fake.xml", "file:///nowhere/fake.xml", url};
    {
        const DevicePtr device = Open();
        EXPECT_EQ(Integer(device->GetIKxRemotePort(), "Gain")->GetValue(), 7);
    }
    std::filesystem::remove(path);
    const DevicePtr device = Open();
    try {
        device->GetIKxRemotePort()->GetINodeMap();
        FAIL() << "there is no description";
    } catch (const GenICam::RuntimeException& e) {
        EXPECT_THAT(e.GetDescription(),
                    testing::AllOf(HasSubstr("'http://camera/fake.xml': URL location 1 is not supported"),
                                   HasSubstr("/nowhere/fake.xml is no regular file"), HasSubstr(url)));
    }
}

TEST_F(Device, ClosesThoughTheProducerHangsInItsEvents)
{
    DevicePtr device = Open();
    device->GetIKxRemotePort()->GetINodeMap();
    camera->isHanging = true;
    EXPECT_TRUE(Eventually([&] { return camera->hangingCount == 4; })) << "each kind of events";
    device.Reset();
    EXPECT_EQ(camera->access, 0);
    camera->LetGo();
    EXPECT_TRUE(Eventually([&] { return camera->hangingCount == 0; }));
}

} // namespace
