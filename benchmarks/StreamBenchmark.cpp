// SPDX-License-Identifier: Apache-2.0
// Images on their way from a simulated camera to the application's callback.

#include <GenApi/GenApi.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <set>
#include <string>

namespace
{

using namespace KxApi;
using Clock = std::chrono::steady_clock;

/// So many that other work on the machine, which stops us for some hundredths of a second, costs no image.
constexpr uint32_t kBuffers = 32;
/// Images before the first one that counts: the camera has drawn its scene by then.
constexpr uint64_t kWarmUp = 10;
constexpr auto kLongTime = std::chrono::seconds(10);

/// Seconds of processor time that the process has used, in all its threads, the camera's included.
double ProcessorTime()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Memory for the buffers, whose addresses tell whether an image was copied.
class CMemory final : public IKxAllocator
{
public:
    void Allocate(void** ppBuffer, size_t nSize, void**) override
    {
        *ppBuffer = std::malloc(nSize);
        m_addresses.insert(*ppBuffer);
    }
    void Deallocate(void* pBuffer, size_t, void*) override
    {
        m_addresses.erase(pBuffer);
        std::free(pBuffer);
    }
    void OnDeregister() override {}
    bool Holds(const void* pBuffer) const { return m_addresses.count(pBuffer) != 0; }

private:
    std::set<const void*> m_addresses; // unchanged while images come
};

class CReceiver final : public IKxStreamCallback
{
public:
    explicit CReceiver(const CMemory& memory)
        : m_memory(memory)
    {}

    void OnImage(IKxStreamImage* pImage) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_nImages;
        m_nCopied += m_memory.Holds(pImage->GetImageBuffer()) ? 0U : 1U;
        m_changed.notify_one();
    }
    void OnError(const GenICam::GenericException&, bool) override {}

    bool WaitFor(uint64_t nImages)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, kLongTime, [&] { return m_nImages >= nImages; });
    }
    uint64_t Copied() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_nCopied;
    }

private:
    const CMemory& m_memory;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    uint64_t m_nImages = 0;
    uint64_t m_nCopied = 0;
};

/// The simulated camera of five megapixels.
CKxAutoPtr<IKxDeviceReleasable, IKxDevice> OpenCamera(const CIKxSystemPtrArray& systems)
{
    for (size_t i = 0; i < systems.GetSize(); ++i) {
        if (systems[i]->GetIKxSystemInfo()->GetName() != "KxSimulator.cti")
            continue;
        systems[i]->UpdateInterfaceList();
        IKxInterface* const pInterface = systems[i]->GetIKxInterface(0);
        pInterface->UpdateDeviceList();
        return CKxAutoPtr<IKxDeviceReleasable, IKxDevice>(
            CreateIKxDevice(pInterface, pInterface->GetIKxDeviceInfo(0), KxDeviceAccess_Control));
    }
    throw RUNTIME_EXCEPTION("The simulated cameras are missing");
}

/// Images of that size at that rate. Counters: the processors that all of it takes, images lost, and images
/// that are not where the camera put them.
void Deliver(benchmark::State& state, const char* szWidth, const char* szHeight, const char* szRate)
{
    const CKxApiAutoInitTerm sdk;
    CMemory memory; // outlives the buffers
    CIKxSystemPtrArray systems;
    OpenIKxSystems(systems);
    const auto device = OpenCamera(systems);
    const CKxAutoPtr<IKxStreamReleasable, IKxStream> stream(device->OpenIKxStream(0));
    const auto set = [&](const char* szFeature, const char* szValue) {
        GenApi::CValuePtr(device->GetIKxRemotePort()->GetINodeMap()->GetNode(szFeature))->FromString(szValue);
    };
    set("Width", szWidth);
    set("Height", szHeight);
    set("ExposureTime", "500");
    set("AcquisitionFrameRateEnable", "1");
    set("AcquisitionFrameRate", szRate);

    CReceiver receiver(memory);
    stream->SetAllocator(&memory);
    stream->SetBufferCount(kBuffers);
    stream->StartAcquisition(&receiver, kKxEndless);
    receiver.WaitFor(kWarmUp);
    const double processorStart = ProcessorTime();
    const Clock::time_point start = Clock::now();
    Clock::time_point last = start;
    uint64_t nImages = kWarmUp;
    for (auto _ : state) {
        if (!receiver.WaitFor(++nImages)) {
            state.SkipWithError("the images stay away");
            break;
        }
        const Clock::time_point now = Clock::now();
        state.SetIterationTime(std::chrono::duration<double>(now - last).count());
        last = now;
    }
    const double processors = ProcessorTime() - processorStart;
    const CKxStreamStatistics statistics = stream->GetStatistics();
    stream->StopAcquisition();
    state.counters["processors"] = processors / std::chrono::duration<double>(last - start).count();
    state.counters["lost"] =
        static_cast<double>(statistics.nLost + statistics.nIncomplete + statistics.nRefused);
    state.counters["copied"] = static_cast<double>(receiver.Copied());
}
// The rates are a little above what is asked for: 120 and 500.
BENCHMARK_CAPTURE(Deliver, FiveMegapixels, "2448", "2048", "125")
    ->Name("Stream/5MP")
    ->Iterations(125)
    ->UseManualTime();
BENCHMARK_CAPTURE(Deliver, Vga, "640", "480", "520")->Name("Stream/VGA")->Iterations(520)->UseManualTime();

} // namespace
