// SPDX-License-Identifier: Apache-2.0
// The functions of the producer themselves: their codes, sizes and orders of calls.
#include "SimulatorFixture.h"

#include <KxApi_TL/CKxGenTLLib.h>
#include <KxSDKCommon/KxXMLFile.h>

#include <array>
#include <chrono>
#include <optional>
#include <thread>

namespace
{

using namespace KxTest;
using namespace GenTL;

class Functions : public Simulator
{
protected:
    Functions()
        : lib(*m_lib)
    {
        EXPECT_EQ(lib.TLOpen(&system), GC_ERR_SUCCESS);
        EXPECT_EQ(lib.TLOpenInterface(system, kAllKinds.interface, &interface), GC_ERR_SUCCESS);
        EXPECT_EQ(lib.IFOpenDevice(interface, kAllKinds.camera, DEVICE_ACCESS_CONTROL, &device),
                  GC_ERR_SUCCESS);
        char id[100];
        size_t size = sizeof id;
        EXPECT_EQ(lib.DevGetDataStreamID(device, 0, id, &size), GC_ERR_SUCCESS);
        EXPECT_EQ(lib.DevOpenDataStream(device, id, &stream), GC_ERR_SUCCESS);
        EXPECT_EQ(lib.DevGetPort(device, &remote), GC_ERR_SUCCESS);
    }
    ~Functions() override { lib.TLClose(system); }

    std::string LastError() const
    {
        GC_ERROR code = 0;
        char text[600];
        size_t size = sizeof text;
        EXPECT_EQ(lib.GCGetLastError(&code, text, &size), GC_ERR_SUCCESS);
        return std::to_string(code) + " " + text;
    }

    /// Writes a register by the name of its feature, through a node map of the description.
    void SetFeature(const char* name, const std::string& value)
    {
        if (!m_file) {
            m_file.emplace(&lib, remote, GenApi::RW, "Camera");
            m_file->CreateNodeMap(KxApi::CKxXMLFile::GetURL(&lib, remote), &m_port, "Device");
        }
        GenApi::CValuePtr(m_file->GetNodeMap()->GetNode(name))->FromString(value.c_str());
    }

    struct RemotePort : GenApi::IPort
    {
        explicit RemotePort(Functions& functions)
            : f(functions)
        {}
        void Read(void* buffer, int64_t address, int64_t length) override
        {
            auto size = static_cast<size_t>(length);
            EXPECT_EQ(f.lib.GCReadPort(f.remote, static_cast<uint64_t>(address), buffer, &size),
                      GC_ERR_SUCCESS);
        }
        void Write(const void* buffer, int64_t address, int64_t length) override
        {
            auto size = static_cast<size_t>(length);
            EXPECT_EQ(f.lib.GCWritePort(f.remote, static_cast<uint64_t>(address), buffer, &size),
                      GC_ERR_SUCCESS);
        }
        GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
        Functions& f;
    };

    template <class T>
    T StreamInfo(STREAM_INFO_CMD command)
    {
        T value{};
        size_t size = sizeof value;
        EXPECT_EQ(lib.DSGetInfo(stream, command, nullptr, &value, &size), GC_ERR_SUCCESS);
        return value;
    }

    std::vector<BUFFER_HANDLE> Announce(size_t count)
    {
        std::vector<BUFFER_HANDLE> buffers(count);
        for (BUFFER_HANDLE& buffer : buffers) {
            EXPECT_EQ(lib.DSAllocAndAnnounceBuffer(stream, 640 * 480, &buffer, &buffer), GC_ERR_SUCCESS);
            EXPECT_EQ(lib.DSQueueBuffer(stream, buffer), GC_ERR_SUCCESS);
        }
        return buffers;
    }

    std::shared_ptr<KxApi::CKxGenTLLib> m_lib = KxApi::CKxGenTLLib::Load(KXSIM_PRODUCER);
    KxApi::CKxGenTLLib& lib;
    TL_HANDLE system = nullptr;
    IF_HANDLE interface = nullptr;
    DEV_HANDLE device = nullptr;
    DS_HANDLE stream = nullptr;
    PORT_HANDLE remote = nullptr;

private:
    RemotePort m_port{*this};
    std::optional<KxApi::CKxXMLFile> m_file;
};

TEST_F(Functions, AreAllThereAndStartOnce)
{
    EXPECT_EQ(lib.GetVersionMinorByFunctions(), 6);
    EXPECT_EQ(lib.GCInitLib(), GC_ERR_RESOURCE_IN_USE);
    TL_HANDLE other = nullptr;
    EXPECT_EQ(lib.TLOpen(&other), GC_ERR_RESOURCE_IN_USE);
    EXPECT_EQ(lib.TLOpenInterface(system, kAllKinds.interface, &other), GC_ERR_RESOURCE_IN_USE);
    EXPECT_EQ(lib.IFOpenDevice(interface, kAllKinds.camera, DEVICE_ACCESS_CONTROL, &other),
              GC_ERR_RESOURCE_IN_USE);
}

TEST_F(Functions, RefuseHandlesThatAreNoneOrOfAnotherKindOrClosed)
{
    uint32_t count = 0;
    for (void* const handle :
         {static_cast<void*>(nullptr), static_cast<void*>(&count), device, stream, remote})
        EXPECT_EQ(lib.IFGetNumDevices(handle, &count), GC_ERR_INVALID_HANDLE);
    EXPECT_EQ(lib.DevClose(remote), GC_ERR_INVALID_HANDLE);
    EXPECT_EQ(lib.DSClose(stream), GC_ERR_SUCCESS);
    EXPECT_EQ(lib.DSClose(stream), GC_ERR_INVALID_HANDLE);
    EXPECT_EQ(lib.IFClose(interface), GC_ERR_SUCCESS) << "with its device";
    EXPECT_EQ(lib.DevClose(device), GC_ERR_INVALID_HANDLE);
    char byte = 0;
    size_t size = 1;
    EXPECT_EQ(lib.GCReadPort(remote, 0x1000, &byte, &size), GC_ERR_INVALID_HANDLE);
}

TEST_F(Functions, TellWhatIsWrongInWords)
{
    EXPECT_EQ(lib.IFOpenDevice(interface, "nobody", DEVICE_ACCESS_CONTROL, &device), GC_ERR_INVALID_ID);
    EXPECT_EQ(LastError(), "-1007 There is no device 'nobody' on interface 'KxSim_U3V'");
    char byte = 0;
    size_t size = 1;
    EXPECT_EQ(lib.GCReadPort(remote, 8, &byte, &size), GC_ERR_INVALID_ADDRESS);
    EXPECT_EQ(lib.GCReadPort(remote, 0x1000, nullptr, &size), GC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(lib.GCWritePort(remote, 0x1000, "x", &size), GC_ERR_ACCESS_DENIED) << "the vendor's name";
    EXPECT_EQ(LastError(), "-1005 Register 'DeviceVendorNameReg' can't be written");
    std::thread([&] { EXPECT_EQ(LastError(), "0 No Error"); }).join();
    EXPECT_EQ(lib.GCGetInfo(999, nullptr, &byte, &size), GC_ERR_NOT_IMPLEMENTED);
}

TEST_F(Functions, TellSizesFirstAndRefuseBuffersTooSmall)
{
    size_t size = 0;
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    EXPECT_EQ(lib.TLGetInfo(system, TL_INFO_VENDOR, &type, nullptr, &size), GC_ERR_SUCCESS);
    EXPECT_EQ(size, sizeof "Kestrix");
    EXPECT_EQ(type, INFO_DATATYPE_STRING);
    char text[sizeof "Kestrix"];
    size = sizeof text - 1;
    EXPECT_EQ(lib.TLGetInfo(system, TL_INFO_VENDOR, &type, text, &size), GC_ERR_BUFFER_TOO_SMALL);
    size = sizeof text;
    EXPECT_EQ(lib.TLGetInfo(system, TL_INFO_VENDOR, &type, text, &size), GC_ERR_SUCCESS);
    EXPECT_STREQ(text, "Kestrix");
    EXPECT_EQ(lib.TLGetInfo(system, TL_INFO_VENDOR, &type, text, nullptr), GC_ERR_INVALID_PARAMETER);
}

TEST_F(Functions, ReadAndWriteSeveralRegistersAtOnceUpToTheFirstThatFails)
{
    char vendor[64], model[64];
    std::array<PORT_REGISTER_STACK_ENTRY, 3> entries = {
        {{0x1000, vendor, 64}, {0x1040, model, 64}, {0, vendor, 1}}};
    size_t count = 2;
    EXPECT_EQ(lib.GCReadPortStacked(remote, entries.data(), &count), GC_ERR_SUCCESS);
    EXPECT_STREQ(vendor, "Kestrix");
    EXPECT_STREQ(model, "KX-U03N");
    count = 3;
    EXPECT_EQ(lib.GCReadPortStacked(remote, entries.data(), &count), GC_ERR_INVALID_ADDRESS);
    EXPECT_EQ(count, 2U);
}

TEST_F(Functions, QueueBuffersAndCountWhatHasNone)
{
    EVENT_HANDLE event = nullptr;
    ASSERT_EQ(lib.GCRegisterEvent(stream, EVENT_NEW_BUFFER, &event), GC_ERR_SUCCESS);
    EXPECT_EQ(lib.GCRegisterEvent(stream, EVENT_NEW_BUFFER, &event), GC_ERR_RESOURCE_IN_USE);
    EXPECT_EQ(lib.DSStartAcquisition(stream, ACQ_START_FLAGS_DEFAULT, GENTL_INFINITE), GC_ERR_INVALID_BUFFER);
    const std::vector<BUFFER_HANDLE> buffers = Announce(3);
    EXPECT_EQ(lib.DSQueueBuffer(stream, buffers[0]), GC_ERR_RESOURCE_IN_USE);
    EXPECT_EQ(lib.DSRevokeBuffer(stream, buffers[0], nullptr, nullptr), GC_ERR_BUSY);
    EXPECT_EQ(lib.DSStartAcquisition(stream, ACQ_START_FLAGS_DEFAULT, 0), GC_ERR_INVALID_PARAMETER);
    ASSERT_EQ(lib.DSStartAcquisition(stream, ACQ_START_FLAGS_DEFAULT, GENTL_INFINITE), GC_ERR_SUCCESS);
    EXPECT_EQ(StreamInfo<size_t>(STREAM_INFO_NUM_QUEUED), 3U);
    SetFeature("AcquisitionStart", "1");
    EXPECT_TRUE(Eventually([&] { return StreamInfo<uint64_t>(STREAM_INFO_NUM_UNDERRUN) >= 2; }));
    EXPECT_EQ(StreamInfo<uint64_t>(STREAM_INFO_NUM_DELIVERED), 3U);
    EXPECT_EQ(StreamInfo<size_t>(STREAM_INFO_NUM_AWAIT_DELIVERY), 3U);

    EVENT_NEW_BUFFER_DATA data{};
    size_t size = sizeof data;
    ASSERT_EQ(lib.EventGetData(event, &data, &size, kLongMs), GC_ERR_SUCCESS);
    EXPECT_EQ(data.BufferHandle, buffers[0]) << "the oldest first";
    EXPECT_EQ(data.pUserPointer, static_cast<const void*>(&buffers[0])) << "what came with the announcement";
    bool8_t isQueued = true;
    size = sizeof isQueued;
    EXPECT_EQ(
        lib.DSGetBufferInfo(stream, data.BufferHandle, BUFFER_INFO_IS_QUEUED, nullptr, &isQueued, &size),
        GC_ERR_SUCCESS);
    EXPECT_FALSE(isQueued);

    EXPECT_EQ(lib.DSStopAcquisition(stream, ACQ_STOP_FLAGS_DEFAULT), GC_ERR_SUCCESS);
    EXPECT_EQ(lib.DSFlushQueue(stream, ACQ_QUEUE_ALL_DISCARD), GC_ERR_SUCCESS);
    EXPECT_EQ(lib.EventGetData(event, &data, &(size = sizeof data), 0), GC_ERR_TIMEOUT) << "their events too";
    for (BUFFER_HANDLE buffer : buffers)
        EXPECT_EQ(lib.DSRevokeBuffer(stream, buffer, nullptr, nullptr), GC_ERR_SUCCESS);
    EXPECT_EQ(StreamInfo<size_t>(STREAM_INFO_NUM_ANNOUNCED), 0U);
}

TEST_F(Functions, FillMemoryOfTheirUserAndTellOfImagesTooLarge)
{
    std::vector<uint8_t> memory(640 * 480 / 2 + 1, 0xAB);
    BUFFER_HANDLE buffer = nullptr;
    ASSERT_EQ(lib.DSAnnounceBuffer(stream, memory.data(), memory.size() - 1, nullptr, &buffer),
              GC_ERR_SUCCESS);
    BUFFER_HANDLE again = nullptr;
    EXPECT_EQ(lib.DSAnnounceBuffer(stream, memory.data(), 100, nullptr, &again), GC_ERR_RESOURCE_IN_USE);
    lib.DSQueueBuffer(stream, buffer);
    EVENT_HANDLE event = nullptr;
    ASSERT_EQ(lib.GCRegisterEvent(stream, EVENT_NEW_BUFFER, &event), GC_ERR_SUCCESS);
    SetFeature("TestPattern", "White");
    ASSERT_EQ(lib.DSStartAcquisition(stream, ACQ_START_FLAGS_DEFAULT, 1), GC_ERR_SUCCESS);
    SetFeature("AcquisitionStart", "1");
    EVENT_NEW_BUFFER_DATA data{};
    size_t size = sizeof data;
    ASSERT_EQ(lib.EventGetData(event, &data, &size, kLongMs), GC_ERR_SUCCESS);
    EXPECT_EQ(memory[memory.size() - 2], 0xFF);
    EXPECT_EQ(memory.back(), 0xAB) << "nothing behind the buffer";
    bool8_t isIncomplete = false, isLarger = false;
    size_t filled = 0, wanted = 0;
    std::array<DS_BUFFER_INFO_STACKED, 5> infos = {{{BUFFER_INFO_IS_INCOMPLETE, 0, &isIncomplete, 1, 0},
                                                    {BUFFER_INFO_DATA_LARGER_THAN_BUFFER, 0, &isLarger, 1, 0},
                                                    {BUFFER_INFO_SIZE_FILLED, 0, &filled, 8, 0},
                                                    {BUFFER_INFO_DATA_SIZE, 0, &wanted, 8, 0},
                                                    {BUFFER_INFO_FILENAME, 0, nullptr, 0, 0}}};
    ASSERT_EQ(lib.DSGetBufferInfoStacked(stream, buffer, infos.data(), infos.size()), GC_ERR_SUCCESS);
    EXPECT_TRUE(isIncomplete);
    EXPECT_TRUE(isLarger);
    EXPECT_EQ(filled, 640U * 480 / 2);
    EXPECT_EQ(wanted, 640U * 480);
    EXPECT_EQ(static_cast<GC_ERROR>(infos[4].iResult), GC_ERR_NO_DATA);
    EXPECT_FALSE(StreamInfo<bool8_t>(STREAM_INFO_IS_GRABBING)) << "one image was asked for";
}

/// Each way to handle buffers, from OldestFirst to NewestOnly.
class Handling : public Functions, public testing::WithParamInterface<uint32_t>
{
protected:
    /// The only enumeration of the stream that can be written lies behind its two texts and numbers: finds it
    /// by trying.
    void SetMode(uint32_t mode)
    {
        uint64_t address = 0x1000;
        size_t size = sizeof mode;
        while (lib.GCWritePort(stream, address, &mode, &size) != GC_ERR_SUCCESS && address < 0x1100)
            address += 4;
        ASSERT_LT(address, 0x1100U);
    }
    uint64_t FrameID(BUFFER_HANDLE buffer)
    {
        uint64_t id = 0;
        size_t size = sizeof id;
        EXPECT_EQ(lib.DSGetBufferInfo(stream, buffer, BUFFER_INFO_FRAMEID, nullptr, &id, &size),
                  GC_ERR_SUCCESS);
        return id;
    }
};

TEST_P(Handling, HandsOutOnlyWhatIsTheConsumersFromThenOn)
{
    EVENT_HANDLE event = nullptr;
    ASSERT_EQ(lib.GCRegisterEvent(stream, EVENT_NEW_BUFFER, &event), GC_ERR_SUCCESS);
    SetMode(GetParam());
    const std::vector<BUFFER_HANDLE> buffers = Announce(3);
    SetFeature("AcquisitionFrameRateEnable", "0");
    SetFeature("ExposureTime", "100");
    ASSERT_EQ(lib.DSStartAcquisition(stream, ACQ_START_FLAGS_DEFAULT, GENTL_INFINITE), GC_ERR_SUCCESS);
    SetFeature("AcquisitionStart", "1");
    uint64_t last = 0;
    for (int i = 0; i < 500; ++i) {
        EVENT_NEW_BUFFER_DATA data{};
        size_t size = sizeof data;
        ASSERT_EQ(lib.EventGetData(event, &data, &size, kLongMs), GC_ERR_SUCCESS);
        const uint64_t id = FrameID(data.BufferHandle);
        ASSERT_TRUE(i == 0 || id > last) << id << " after " << last;
        last = id;
        if (i % 8 == 0) // the camera is faster for once
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        ASSERT_EQ(FrameID(data.BufferHandle), id) << "filled anew while it was out";
        ASSERT_EQ(lib.DSQueueBuffer(stream, data.BufferHandle), GC_ERR_SUCCESS) << "it was in a queue still";
    }
    // Only the mode that keeps the oldest ones has no buffer then for those that come.
    const auto underruns = [this] { return StreamInfo<uint64_t>(STREAM_INFO_NUM_UNDERRUN); };
    if (GetParam() == 0)
        EXPECT_TRUE(Eventually([&] { return underruns() > 0; }));
    else
        EXPECT_EQ(underruns(), 0U);
    EXPECT_LE(StreamInfo<size_t>(STREAM_INFO_NUM_AWAIT_DELIVERY), GetParam() == 2 ? 1U : 3U);
    EXPECT_EQ(lib.DSStopAcquisition(stream, ACQ_STOP_FLAGS_DEFAULT), GC_ERR_SUCCESS);
    EXPECT_EQ(lib.DSFlushQueue(stream, ACQ_QUEUE_INPUT_TO_OUTPUT), GC_ERR_SUCCESS);
    EXPECT_EQ(StreamInfo<size_t>(STREAM_INFO_NUM_AWAIT_DELIVERY), buffers.size());
    EXPECT_EQ(lib.DSFlushQueue(stream, ACQ_QUEUE_ALL_DISCARD), GC_ERR_SUCCESS);
}

INSTANTIATE_TEST_SUITE_P(Modes, Handling, testing::Values(0U, 1U, 2U));

TEST_F(Functions, EndWaitsOnDemand)
{
    EVENT_HANDLE event = nullptr;
    ASSERT_EQ(lib.GCRegisterEvent(stream, EVENT_NEW_BUFFER, &event), GC_ERR_SUCCESS);
    EVENT_NEW_BUFFER_DATA data{};
    size_t size = sizeof data;
    const auto wait = [&] { return lib.EventGetData(event, &data, &size, GENTL_INFINITE); };
    EXPECT_EQ(lib.EventKill(event), GC_ERR_SUCCESS);
    EXPECT_EQ(wait(), GC_ERR_ABORT) << "a later wait too";
    EXPECT_EQ(lib.EventGetData(event, &data, &size, 1), GC_ERR_TIMEOUT) << "but only one";
    // Whether it waits by then, or comes too late.
    std::thread waiter([&] { EXPECT_THAT(wait(), testing::AnyOf(GC_ERR_ABORT, GC_ERR_INVALID_HANDLE)); });
    EXPECT_EQ(lib.GCUnregisterEvent(stream, EVENT_NEW_BUFFER), GC_ERR_SUCCESS);
    waiter.join();
    EXPECT_EQ(lib.GCRegisterEvent(system, EVENT_NEW_BUFFER, &event), GC_ERR_NOT_IMPLEMENTED);
    EXPECT_EQ(lib.GCRegisterEvent(remote, EVENT_ERROR, &event), GC_ERR_NOT_IMPLEMENTED);
}

} // namespace
