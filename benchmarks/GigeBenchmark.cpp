// SPDX-License-Identifier: Apache-2.0
// Images of a GigE Vision camera that is a program, through the SDK and through Aravis alone. 640 by 480
// pixels at the highest rate that the program gives.
#include "Cameras.h"
#include "GigeCameraProgram.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>

#include <arv.h>
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>

namespace
{

using namespace KxApi;
using Clock = std::chrono::steady_clock;

const std::string g_whyNoNetwork = KxTest::EnterNetworkOfItsOwn();

constexpr int kWidth = 640, kHeight = 480, kBuffers = 32;
constexpr uint64_t kImages = 1000;
constexpr uint64_t kWarmUp = 20;

double ProcessorTime()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Time, and processors' time, of one of kImages, of which `waitFor` waits for so many in all.
template <class WaitFor>
void Measure(benchmark::State& state, WaitFor waitFor)
{
    uint64_t nImages = kWarmUp;
    waitFor(nImages);
    double processorTime = 0;
    for (auto _ : state) {
        const double before = ProcessorTime();
        const Clock::time_point start = Clock::now();
        waitFor(nImages += kImages);
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        processorTime = ProcessorTime() - before;
        state.SetIterationTime(seconds / static_cast<double>(kImages));
    }
    state.counters["processor"] = processorTime / static_cast<double>(kImages);
}

bool IsReady(benchmark::State& state)
{
    if (!g_whyNoNetwork.empty())
        state.SkipWithError(g_whyNoNetwork.c_str());
    return g_whyNoNetwork.empty();
}

class Receiver final : public IKxStreamCallback
{
public:
    void OnImage(IKxStreamImage* /*pImage*/) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        // To be woken for each would be another thread's time, which the other program doesn't spend.
        if (++m_nImages == m_nAwaited)
            m_changed.notify_one();
    }
    void OnError(const GenICam::GenericException& /*error*/, bool /*bEnded*/) override {}
    void WaitFor(uint64_t nImages)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_nAwaited = nImages;
        if (!m_changed.wait_for(lock, std::chrono::seconds(60), [&] { return m_nImages >= nImages; }))
            throw std::runtime_error("the camera gives no images");
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    uint64_t m_nImages = 0;
    uint64_t m_nAwaited = 0;
};

KxApps::Device Open(const CKxAutoPtr<IKxSystemReleasable, IKxSystem>& system)
{
    system->UpdateInterfaceList();
    IKxInterface* const pCard = system->GetIKxInterface(0);
    for (int i = 0; i < 100; ++i) { // the program takes a moment to start
        pCard->UpdateDeviceList();
        if (pCard->GetDeviceCount() > 0)
            return KxApps::Device(CreateIKxDevice(pCard, pCard->GetIKxDeviceInfo(0), KxDeviceAccess_Control));
    }
    throw std::runtime_error("the camera isn't found");
}

void Image(benchmark::State& state)
{
    if (!IsReady(state))
        return;
    const KxTest::CameraProgram camera;
    setenv("KXAPI_ARAVIS_CARDS", "lo", 1);
    const CKxApiAutoInitTerm sdk;
    const CKxAutoPtr<IKxSystemReleasable, IKxSystem> system(CreateIKxSystem(KXARAVIS_PRODUCER));
    const KxApps::Device device = Open(system);
    GenApi::INodeMap& map = *device->GetIKxRemotePort()->GetINodeMap();
    GenApi::CIntegerPtr(map.GetNode("Width"))->SetValue(kWidth);
    GenApi::CIntegerPtr(map.GetNode("Height"))->SetValue(kHeight);
    const GenApi::CFloatPtr rate(map.GetNode("AcquisitionFrameRate"));
    rate->SetValue(rate->GetMax());
    const CKxAutoPtr<IKxStreamReleasable, IKxStream> stream(device->OpenIKxStream(0));
    stream->SetBufferCount(kBuffers);
    Receiver receiver;
    stream->StartAcquisition(&receiver, kKxEndless);
    Measure(state, [&](uint64_t nImages) { receiver.WaitFor(nImages); });
    stream->StopAcquisition();
    state.counters["lost"] =
        static_cast<double>(std::max(stream->GetStatistics().nLost, stream->GetStatistics().nUnderrun));
}

void BareAravis(benchmark::State& state)
{
    if (!IsReady(state))
        return;
    const KxTest::CameraProgram program;
    ArvCamera* pCamera = nullptr;
    for (int i = 0; i < 100 && !pCamera; ++i) {
        pCamera = arv_camera_new("127.0.0.1", nullptr);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    arv_camera_set_region(pCamera, 0, 0, kWidth, kHeight, nullptr);
    double lowest = 0, highest = 0;
    arv_camera_get_frame_rate_bounds(pCamera, &lowest, &highest, nullptr);
    arv_camera_set_frame_rate(pCamera, highest, nullptr);
    ArvStream* const pStream = arv_camera_create_stream(pCamera, nullptr, nullptr, nullptr);
    const auto payload = static_cast<size_t>(arv_camera_get_payload(pCamera, nullptr));
    for (int i = 0; i < kBuffers; ++i)
        arv_stream_push_buffer(pStream, arv_buffer_new(payload, nullptr));
    arv_camera_start_acquisition(pCamera, nullptr);
    uint64_t nCome = 0;
    Measure(state, [&](uint64_t nImages) {
        for (; nCome < nImages; ++nCome) {
            ArvBuffer* const pBuffer = arv_stream_timeout_pop_buffer(pStream, 60000000);
            if (!pBuffer)
                throw std::runtime_error("the camera gives no images");
            arv_stream_push_buffer(pStream, pBuffer);
        }
    });
    arv_camera_stop_acquisition(pCamera, nullptr);
    g_object_unref(pStream);
    g_object_unref(pCamera);
}

void Discovery(benchmark::State& state)
{
    if (!IsReady(state))
        return;
    const KxTest::CameraProgram camera;
    setenv("KXAPI_ARAVIS_CARDS", "lo", 1);
    const CKxApiAutoInitTerm sdk;
    const CKxAutoPtr<IKxSystemReleasable, IKxSystem> system(CreateIKxSystem(KXARAVIS_PRODUCER));
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        system->UpdateInterfaceList();
        system->GetIKxInterface(0)->UpdateDeviceList();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
}

BENCHMARK(Image)->Name("Gige/image")->UseManualTime()->Iterations(1);
BENCHMARK(BareAravis)->Name("Gige/image/peer")->UseManualTime()->Iterations(1);
BENCHMARK(Discovery)->Name("Gige/discovery")->UseManualTime()->Iterations(3);

} // namespace
