// SPDX-License-Identifier: Apache-2.0
// Lets a producer deliver whatever comes: buffers of all payload types, with all that is told of them, of
// their parts and of their chunks, and events of a device. What is handed out has to lie in its buffer; it is
// read, converted and decoded.
//
// Input: one byte that chooses between a buffer and a kind of events. A buffer: infos, parts, chunks, then
// the bytes that it holds. An event: its ID, then its value.

#include "TestCameras.h"
#include "producers/FakeCamera.h"

#include <GenApi/GenApi.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/KxApi_TL.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using namespace KxApi;
using namespace KxTest;

namespace
{

constexpr uint64_t kLastFrame = 0x4C415354; // of the good image behind each input
constexpr size_t kMaxParts = 6;
constexpr size_t kMaxChunks = 6;

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

/// Takes an input apart; behind its end there are zeros.
class Input
{
public:
    Input(const uint8_t* data, size_t size)
        : m_data(data)
        , m_left(size)
    {}

    template <class T>
    T Take()
    {
        T value{};
        const std::string bytes = Bytes(sizeof value);
        std::memcpy(&value, bytes.data(), bytes.size());
        return value;
    }
    std::string Bytes(size_t wanted)
    {
        const size_t size = std::min(wanted, m_left);
        std::string bytes(reinterpret_cast<const char*>(m_data), size);
        m_data += size;
        m_left -= size;
        return bytes;
    }
    std::string Rest() { return Bytes(m_left); }

private:
    const uint8_t* m_data;
    size_t m_left;
};

FakeInfo TakeInfo(Input& input)
{
    constexpr uint8_t kErrorsFrom = 0xF0;
    const auto size = input.Take<uint8_t>();
    if (size >= kErrorsFrom)
        return {GenTL::GC_ERR_NOT_AVAILABLE, 0, ""};
    const auto type = input.Take<uint8_t>();
    return {0, type, input.Bytes(size % 17)};
}

FakeInfos TakeInfos(Input& input)
{
    FakeInfos infos;
    for (int i = input.Take<uint8_t>() % 32; i > 0; --i) {
        const auto command = input.Take<uint8_t>();
        infos[command] = TakeInfo(input);
    }
    return infos;
}

class Camera
{
public:
    Camera()
    {
        m_system.Reset(CreateIKxSystem(KXAPI_FUZZ_PRODUCER));
        m_system->UpdateInterfaceList();
        IKxInterface* const interface = m_system->GetIKxInterface(0);
        interface->UpdateDeviceList();
        // Loaded by the system, and so as long as that.
        void* const library = dlopen(KXAPI_FUZZ_PRODUCER, RTLD_NOW | RTLD_NOLOAD);
        m_fake = reinterpret_cast<decltype(&KxFakeCamera)>(dlsym(library, "KxFakeCamera"))();
        dlclose(library);
        m_registers = m_fake->registers;
        m_device.Reset(CreateIKxDevice(interface, interface->GetIKxDeviceInfo(0), KxDeviceAccess_Control));
        m_map = m_device->GetIKxRemotePort()->GetINodeMap();
        m_stream.Reset(m_device->OpenIKxStream(0));
        m_stream->StartAcquisition(nullptr, kKxEndless);
        m_converter.Reset(CreateIKxConverter(KxConverterType_PixelFormat));
        m_converter->SetDestinationPixelFormat(KxPixelFormat_BGR8);
        m_filer.Reset(CreateIKxFiler(KxFilerType_StillImage));
        m_filer->SetMaxLoadSize(uint64_t{1} << 20);
    }

    void Deliver(Input& input)
    {
        FakeInfos infos = TakeInfos(input);
        infos.erase(GenTL::BUFFER_INFO_FRAMEID);
        FakeParts parts(input.Take<uint8_t>() % kMaxParts);
        for (FakePart& part : parts) {
            part.place = input.Take<int16_t>();
            part.infos = TakeInfos(input);
        }
        std::vector<GenTL::SINGLE_CHUNK_DATA> chunks(input.Take<uint8_t>() % kMaxChunks);
        for (GenTL::SINGLE_CHUNK_DATA& chunk : chunks)
            chunk = {input.Take<uint32_t>(), input.Take<ptrdiff_t>(), input.Take<size_t>()};
        const std::string content = input.Rest();
        {
            const std::lock_guard<std::mutex> lock(m_fake->mutex);
            m_fake->chunks = std::move(chunks);
            m_fake->content.assign(content.begin(), content.end());
            m_fake->registers = m_registers;
        }
        m_fake->Deliver(std::move(infos), std::move(parts));
        // Images that are passed over are told to nobody, so a good one follows.
        const FakeInfos good{{GenTL::BUFFER_INFO_FRAMEID, ToldU64(kLastFrame)}};
        for (bool isOnItsWay = m_fake->Deliver(good); !Receive();) {
            if (!isOnItsWay)
                isOnItsWay = m_fake->Deliver(good);
        }
    }

    void Send(int32_t kind, Input& input)
    {
        const FakeInfo id = TakeInfo(input);
        const auto type = input.Take<uint8_t>();
        m_fake->Push('l', kind, {id, {0, type, input.Rest()}});
        m_fake->Push('l', kind, {ToldText("Gain"), ToldText("7")});
        // The second is taken when the first is done.
        while (IsWaiting(kind))
            std::this_thread::yield();
        Read("EventExposureEndLine");
    }

private:
    bool IsWaiting(int32_t kind)
    {
        const std::lock_guard<std::mutex> lock(m_fake->mutex);
        const auto queue = m_fake->queues.find({'l', kind});
        if (queue == m_fake->queues.end())
            Fail("a kind of events is given up");
        return !queue->second.events.empty();
    }

    /// Takes what has come; true for the last image.
    bool Receive()
    {
        constexpr uint32_t kMomentMs = 100;
        try {
            const ImagePtr image(m_stream->FetchImage(kMomentMs));
            if (!image)
                return false;
            for (uint32_t i = 0; i < image->GetPartCount(); ++i)
                Look(*image->GetIKxPart(i));
            Read("ChunkGain");
            return image->GetFrameID() == kLastFrame;
        } catch (const GenICam::GenericException&) {
            if (!m_stream->IsAcquiring())
                Fail("the acquisition is over");
            return false;
        }
    }

    void Read(const char* name) const
    {
        try {
            const GenApi::CIntegerPtr node(m_map->GetNode(name));
            if (GenApi::IsReadable(node))
                node->GetValue();
        } catch (const GenICam::GenericException&) {
            // of chunks and events that end too early
        }
    }

    void CheckPlace(const void* begin, size_t size)
    {
        const auto* const first = static_cast<const uint8_t*>(begin);
        const std::lock_guard<std::mutex> lock(m_fake->mutex);
        for (const FakeBuffer& buffer : m_fake->buffers) {
            const auto* const base = static_cast<const uint8_t*>(buffer.base);
            if (first >= base && first <= base + buffer.size && size <= size_t(base + buffer.size - first))
                return;
        }
        Fail("an image lies outside of its buffer");
    }

    void Look(IKxStreamImage& image)
    {
        if (image.GetEncodedSize() > 0) {
            CheckPlace(image.GetEncodedData(), image.GetEncodedSize());
            Try([&] {
                m_filer->LoadFromMemory(m_target.Get(), image.GetEncodedData(), image.GetEncodedSize());
            });
        }
        if (!image.GetImageBuffer())
            return;
        const auto* const format =
            dynamic_cast<const IKxPixelFormatInfoInside*>(GetIKxPixelFormatInfo(image.GetImagePixelFormat()));
        if (!format || image.GetDeliveredHeight() > image.GetImageHeight())
            Fail("an image with a height or a format that it can't have");
        CheckPlace(image.GetImageBuffer(),
                   format->GetImageSize(image.GetImageHeight(), image.GetImageLinePitch()));
        Try([&] { m_converter->Convert(&image, m_target.Get()); });
        Try([&] { image.GetIKxPixelComponentValue(image.GetImageWidth() - 1, image.GetImageHeight() - 1); });
    }

    template <class Call>
    void Try(const Call& call)
    {
        try {
            call();
        } catch (const GenICam::GenericException&) {
            // what is wrong with the image
        }
    }

    CKxApiAutoInitTerm m_sdk;
    SystemPtr m_system;
    FakeCamera* m_fake = nullptr;
    std::map<uint64_t, uint32_t> m_registers;
    DevicePtr m_device;
    GenApi::INodeMap* m_map = nullptr;
    StreamPtr m_stream;
    CKxAutoPtr<IKxConverterReleasable> m_converter;
    CKxAutoPtr<IKxFilerReleasable> m_filer;
    CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> m_target{CreateIKxImageBuffer(nullptr)};
};

} // namespace

/// Leaks are looked for at the end. libFuzzer would look after each input that allocates more than it frees,
/// which is most of them with the stream's thread ahead, and stop all threads for it: 20 times slower.
extern "C" int LLVMFuzzerInitialize(int* count, char*** values)
{
    static char option[] = "-detect_leaks=0";
    static std::vector<char*> arguments(*values, *values + *count);
    arguments.insert(arguments.begin() + 1, option); // what the user says comes later and counts
    *count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    *values = arguments.data();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int32_t kEvents[] = {GenTL::EVENT_REMOTE_DEVICE, GenTL::EVENT_FEATURE_INVALIDATE,
                                   GenTL::EVENT_FEATURE_CHANGE, GenTL::EVENT_ERROR};
    static Camera camera;
    Input input(data, size);
    const auto choice = static_cast<size_t>(input.Take<uint8_t>());
    if (choice > 0 && choice <= std::size(kEvents))
        camera.Send(kEvents[choice - 1], input);
    else
        camera.Deliver(input);
    return 0;
}
