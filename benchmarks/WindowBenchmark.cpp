// SPDX-License-Identifier: Apache-2.0
// What the image window costs the camera's thread, beside memcpy of the same bytes, and what its status bar
// costs.

#include "Platform.h"
#include "image/KxDisplayImageWnd_qt.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <benchmark/benchmark.h>

#include <QStringList>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace KxApi;
using Clock = std::chrono::steady_clock;

/// An image, and targets for the copy alone.
struct CImages
{
    CImages(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat)
    {
        source.CreateBuffer(nWidth, nHeight, ePixelFormat, KxMemoryInitialization_Zero);
        for (CKxImageBuffer& target : targets)
            target.CopyImage(source.GetIKxImage());
    }
    size_t Bytes() const { return source.GetImageLinePitch() * source.GetImageHeight(); }
    /// The copy alone, into one target after the other.
    void Copy()
    {
        std::memcpy(targets[nNext].GetImageBuffer(), source.GetImageBuffer(), Bytes());
        nNext = 1 - nNext;
        benchmark::ClobberMemory();
    }

    CKxImageBuffer source{nullptr};
    CKxImageBuffer targets[2]{CKxImageBuffer(nullptr), CKxImageBuffer(nullptr)};
    size_t nNext = 0;
};

/// A started SDK with an image window.
struct CWindow
{
    CKxApiAutoInitTerm sdk;
    CIKxWndPtrT<IKxImageDisplayWnd> pWnd{CreateIKxWnd(KxWindowType_ImageDisplay)};

    ~CWindow()
    {
        pWnd.Reset();
        processEventGUI(false, 0);
    }
};

struct CSize
{
    const char* szName;
    size_t nWidth;
    size_t nHeight;
};
constexpr CSize kSizes[] = {{"5", 2560, 1960}, {"20", 5120, 3920}};

/// Memory for images that tells where it lies.
struct CKnownMemory final : IKxAllocator
{
    void Allocate(void** ppBuffer, size_t nSize, void**) override
    {
        *ppBuffer = ::operator new(nSize);
        vecBlocks.push_back(*ppBuffer);
    }
    void Deallocate(void* pBuffer, size_t, void*) override { ::operator delete(pBuffer); }
    void OnDeregister() override {}

    std::vector<void*> vecBlocks;
};

/// An image, and a window that takes it over into two buffers by turns.
struct CTakenOver
{
    explicit CTakenOver(const CSize& size)
    {
        processEventGUI(false, 0); // makes the application object
        pWnd.Reset(CreateIKxImageDisplayWnd(&memory));
        source.CreateBuffer(size.nWidth, size.nHeight, KxPixelFormat_Mono8, KxMemoryInitialization_Zero);
        for (int i = 0; i < 4; ++i)
            pWnd->RegisterIKxImage(source.GetIKxImage());
        if (memory.vecBlocks.size() != 2)
            throw std::runtime_error("the window uses another number of buffers than was thought");
    }

    CKxApiAutoInitTerm sdk;
    CKnownMemory memory;
    CKxImageBuffer source{nullptr};
    CIKxWndPtrT<IKxImageDisplayWnd> pWnd;
};

double Median(std::vector<double>& vecSeconds)
{
    const auto nth = vecSeconds.begin() + static_cast<std::ptrdiff_t>(vecSeconds.size() / 2);
    std::nth_element(vecSeconds.begin(), nth, vecSeconds.end());
    return *nth;
}

/// This thread's CPU time: what else the machine does is no cost of ours.
template <class Function>
double CpuSeconds(Function function)
{
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    };
    const double begin = now();
    function();
    benchmark::ClobberMemory();
    return now() - begin;
}

/// Taking over and the copy alone by turns, into the very same memory: two blocks of the same size can differ
/// by a tenth in how fast they are.
void RegisterBesideCopy(benchmark::State& state, const CSize& size)
{
    CTakenOver window(size);
    const size_t nBytes = size.nWidth * size.nHeight;
    std::vector<double> vecRegistrations, vecCopies;
    for (auto _ : state) {
        // Each block in turn for both, so that none is nearer in the caches.
        for (int i = 0; i < 2; ++i)
            vecRegistrations.push_back(
                CpuSeconds([&] { window.pWnd->RegisterIKxImage(window.source.GetIKxImage()); }));
        for (void* const pBlock : window.memory.vecBlocks)
            vecCopies.push_back(
                CpuSeconds([&] { std::memcpy(pBlock, window.source.GetImageBuffer(), nBytes); }));
    }
    if (std::memcmp(window.pWnd->GetRegisteredIKxImage()->GetImageBuffer(), window.source.GetImageBuffer(),
                    nBytes) != 0)
        throw std::runtime_error("the copy differs");
    state.counters["register"] = Median(vecRegistrations);
    state.counters["copy"] = Median(vecCopies);
    state.counters["above"] = Median(vecRegistrations) - Median(vecCopies);
}

double Percentile99(std::vector<double>& vecSeconds)
{
    const auto nth = vecSeconds.begin() + static_cast<std::ptrdiff_t>(vecSeconds.size() * 99 / 100);
    std::nth_element(vecSeconds.begin(), nth, vecSeconds.end());
    return *nth;
}

template <class Function>
double Seconds(Function function)
{
    const auto begin = Clock::now();
    function();
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// 60 images a second while the window converts and paints them; the copy alone and the registration by
/// turns, so that both meet the same load.
void RegisterWhilePainting(benchmark::State& state)
{
    constexpr int kImages = 300;
    constexpr auto kPeriod = std::chrono::microseconds(1000000 / 60);
    CWindow window;
    window.pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    window.pWnd->SetRefreshInterval(16);
    window.pWnd->Show(nullptr, KxWindowMode_Modaless);
    for (auto _ : state) {
        CImages images(2560, 1960, KxPixelFormat_BayerRG8);
        std::vector<double> vecCopies, vecRegistrations;
        std::atomic<bool> bDone{false};
        std::thread camera([&] {
            auto next = Clock::now();
            for (int i = 0; i < kImages; ++i) {
                vecCopies.push_back(Seconds([&] { images.Copy(); }));
                vecRegistrations.push_back(
                    Seconds([&] { window.pWnd->RegisterIKxImage(images.source.GetIKxImage()); }));
                std::this_thread::sleep_until(next += kPeriod);
            }
            bDone = true;
        });
        while (!bDone) {
            processEventGUI(false, 10);
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // as an event loop would wait
        }
        camera.join();
        state.counters["above"] = Percentile99(vecRegistrations) - Percentile99(vecCopies);
    }
}
BENCHMARK(RegisterWhilePainting)->Name("Window/whilePainting")->Iterations(1);

/// A window that shows an image.
struct CShownWindow : CWindow
{
    CShownWindow()
    {
        CImages images(2560, 1960, KxPixelFormat_BayerRG8);
        pWnd->RegisterIKxImage(images.source.GetIKxImage());
        pWnd->Show(nullptr, KxWindowMode_Modaless);
        processEventGUI(false, 200);
        pWnd->GetConvertedIKxImage();
    }
};

void StatusText(benchmark::State& state)
{
    CShownWindow window;
    auto& dlgParent = dynamic_cast<ICDisplayImageDlgParent&>(*window.pWnd);
    for (auto _ : state) {
        QStringList listTexts;
        dlgParent.GetStatusBarText(listTexts);
        if (listTexts.size() != 2)
            throw std::runtime_error("the pixel under the cursor isn't told");
    }
}
BENCHMARK(StatusText)->Name("Window/statusText");

void MapMouse(benchmark::State& state)
{
    CShownWindow window;
    for (auto _ : state) {
        int x = 100, y = 100;
        window.pWnd->ScreenToImage(&x, &y);
        benchmark::DoNotOptimize(x);
    }
}
BENCHMARK(MapMouse)->Name("Window/mapMouse");

[[maybe_unused]] const bool kRegistered = [] {
    for (const CSize& size : kSizes) {
        benchmark::RegisterBenchmark((std::string("Window/register") + size.szName).c_str(),
                                     [&size](benchmark::State& state) { RegisterBesideCopy(state, size); });
    }
    return true;
}();

} // namespace
