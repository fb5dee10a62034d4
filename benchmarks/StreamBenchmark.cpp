// SPDX-License-Identifier: Apache-2.0
// Images on their way from a camera to the application's callback.

#include "../tests/KxApi_TL/producers/FakeCamera.h"

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <sys/resource.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

namespace
{

using namespace KxApi;
using Clock = std::chrono::steady_clock;

/// So many that other work on the machine, which stops us for some hundredths of a second, costs no image.
constexpr uint32_t kBuffers = 32;

/// Seconds of processor time that the process has used, in all its threads.
double ProcessorTime()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// A camera whose images are written by the benchmark, as a driver would.
class CCamera
{
public:
    CCamera(uint32_t nWidth, uint32_t nHeight)
        : m_system(CreateIKxSystem(KXAPI_BENCHMARK_CAMERA))
        , m_library(dlopen(KXAPI_BENCHMARK_CAMERA, RTLD_NOW | RTLD_NOLOAD))
        , m_fake(*reinterpret_cast<decltype(&KxFakeCamera)>(dlsym(m_library, "KxFakeCamera"))())
        , m_picture(size_t{nWidth} * nHeight, uint8_t{0x5A})
    {
        m_fake.registers[KxTest::kFakeWidth] = nWidth;
        m_fake.registers[KxTest::kFakeHeight] = nHeight;
        m_fake.registers[KxTest::kFakePayloadSize] = nWidth * nHeight;
        m_system->UpdateInterfaceList();
        IKxInterface* const pInterface = m_system->GetIKxInterface(0);
        pInterface->UpdateDeviceList();
        m_device.Reset(CreateIKxDevice(pInterface, pInterface->GetIKxDeviceInfo(0), KxDeviceAccess_Control));
        m_stream.Reset(m_device->OpenIKxStream(0));
    }
    CCamera(const CCamera&) = delete;
    CCamera& operator=(const CCamera&) = delete;
    ~CCamera()
    {
        m_stream.Reset();
        m_device.Reset();
        m_system.Reset();
        dlclose(m_library);
    }

    IKxStream& Stream() const { return *m_stream; }

    std::set<const void*> BufferAddresses() const
    {
        std::set<const void*> addresses;
        for (const KxTest::FakeBuffer& buffer : m_fake.buffers)
            addresses.insert(buffer.base);
        return addresses;
    }

    void Expose() const
    {
        void* pTarget = nullptr;
        {
            const std::lock_guard<std::mutex> lock(m_fake.mutex);
            if (!m_fake.input.empty())
                pTarget = m_fake.input.front()->base;
        }
        if (pTarget)
            std::memcpy(pTarget, m_picture.data(), m_picture.size());
        m_fake.Deliver();
    }

private:
    CKxApiAutoInitTerm m_sdk;
    CKxAutoPtr<IKxSystemReleasable, IKxSystem> m_system;
    void* const m_library;
    KxTest::FakeCamera& m_fake;
    const std::vector<uint8_t> m_picture;
    CKxAutoPtr<IKxDeviceReleasable, IKxDevice> m_device;
    CKxAutoPtr<IKxStreamReleasable, IKxStream> m_stream;
};

class CCounter final : public IKxStreamCallback
{
public:
    explicit CCounter(const std::set<const void*>& addresses)
        : m_addresses(addresses)
    {}
    void OnImage(IKxStreamImage* pImage) override
    {
        nCopied += m_addresses.count(pImage->GetImageBuffer()) == 0 ? 1 : 0;
        ++nImages;
    }
    void OnError(const GenICam::GenericException&, bool) override { ++nErrors; }

    std::atomic<uint64_t> nImages{0};
    std::atomic<uint64_t> nCopied{0};
    std::atomic<uint64_t> nErrors{0};

private:
    const std::set<const void*>& m_addresses;
};

/// Images at a rate a little above the wanted one. Counters: the processors that all of it takes, images lost
/// on the way or told wrong, and images that are not where the camera put them.
void Deliver(benchmark::State& state, uint32_t nWidth, uint32_t nHeight, double rate)
{
    const CCamera camera(nWidth, nHeight);
    std::set<const void*> addresses;
    CCounter counter(addresses);
    camera.Stream().SetBufferCount(kBuffers);
    camera.Stream().StartAcquisition(&counter, kKxEndless);
    addresses = camera.BufferAddresses();
    const auto period = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1 / rate));
    const Clock::time_point start = Clock::now();
    const double processorStart = ProcessorTime();
    Clock::time_point last = start, next = start;
    for (auto _ : state) {
        next += period;
        std::this_thread::sleep_until(next);
        camera.Expose();
        const Clock::time_point now = Clock::now();
        state.SetIterationTime(std::chrono::duration<double>(now - last).count());
        last = now;
    }
    const uint64_t nExposed = static_cast<uint64_t>(state.iterations());
    while (counter.nImages < nExposed && Clock::now() - last < std::chrono::seconds(1))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const double processors = ProcessorTime() - processorStart;
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    camera.Stream().StopAcquisition();
    state.counters["processors"] = processors / seconds;
    state.counters["lost"] = static_cast<double>(nExposed - counter.nImages + counter.nErrors);
    state.counters["copied"] = static_cast<double>(counter.nCopied);
}
// 2448 by 2048 pixels are five megapixels.
BENCHMARK_CAPTURE(Deliver, FiveMegapixels, 2448, 2048, 125.0)
    ->Name("Stream/5MP")
    ->Iterations(125)
    ->UseManualTime();
BENCHMARK_CAPTURE(Deliver, Vga, 640, 480, 520.0)->Name("Stream/VGA")->Iterations(520)->UseManualTime();

} // namespace
