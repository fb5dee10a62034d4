// SPDX-License-Identifier: Apache-2.0
// Copying a large image beside memcpy, and waking a thread beside a bare condition variable.

#include <KxSDKCommon/EventObject.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace
{

using namespace KxApi;

// 20 megapixels
constexpr size_t kWidth = 5120;
constexpr size_t kHeight = 4096;

/// The two images that both copies work on, since where memory lies decides how fast it is.
struct Images
{
    Images()
    {
        source.CreateBuffer(kWidth, kHeight, KxPixelFormat_Mono8, KxMemoryInitialization_Chart);
        target.CreateBuffer(kWidth, kHeight, KxPixelFormat_Mono8, KxMemoryInitialization_Zero);
    }

    static Images& Get()
    {
        static Images images;
        return images;
    }

    CKxImageBuffer source{nullptr};
    CKxImageBuffer target{nullptr};
};

void CopyImage(benchmark::State& state)
{
    Images& images = Images::Get();
    for (auto _ : state)
        images.target.CopyImage(images.source.GetIKxImage());
    if (std::memcmp(images.source.GetImageBuffer(), images.target.GetImageBuffer(), kWidth * kHeight) != 0)
        throw std::runtime_error("the copy differs");
}
BENCHMARK(CopyImage)->Name("Common/copyImage");

void CopyBytes(benchmark::State& state)
{
    Images& images = Images::Get();
    for (auto _ : state) {
        std::memcpy(images.target.GetImageBuffer(), images.source.GetImageBuffer(), kWidth * kHeight);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyBytes)->Name("Common/copyImage/peer");

/// The least that a wake-up takes.
class BareSignal
{
public:
    void Set()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isSet = true;
        m_condition.notify_one();
    }
    void Wait()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_condition.wait(lock, [this] { return m_isSet; });
        m_isSet = false;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_isSet = false;
};

class EventSignal
{
public:
    void Set() { m_event.SetEvent(); }
    void Wait()
    {
        if (WaitForSingleObject(&m_event, kWaitInfinite) != 0)
            throw std::runtime_error("the wait failed");
    }

private:
    CEventObject m_event{nullptr, false, false, nullptr};
};

/// Half of the time that a signal takes to another thread, which waits for it, and back.
template <class Signal>
void Wake(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    Signal there, back;
    std::atomic<bool> isOver{false};
    std::thread thread([&] {
        for (;;) {
            there.Wait();
            if (isOver)
                return;
            back.Set();
        }
    });
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        there.Set();
        back.Wait();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count() / 2);
    }
    isOver = true;
    there.Set();
    thread.join();
}
BENCHMARK_TEMPLATE(Wake, EventSignal)->Name("Common/wake")->UseManualTime();
BENCHMARK_TEMPLATE(Wake, BareSignal)->Name("Common/wake/peer")->UseManualTime();

} // namespace
