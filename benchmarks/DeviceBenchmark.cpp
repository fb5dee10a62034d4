// SPDX-License-Identifier: Apache-2.0
// The device selection window with 4 systems, 16 interfaces and 1,000 devices: rebuilding its tree, updates
// that find nothing new, how long a search holds the window's lock, and how long a close waits for it.

#include "FakeTransport.h"
#include "Platform.h"
#include "device/WorkerDeviceDetection_qt.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEvent>
#include <QTreeWidget>
#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace KxApi;
using namespace KxTest;
using Clock = std::chrono::steady_clock;

constexpr size_t kSystems = 4;
constexpr size_t kInterfaces = 16;
constexpr size_t kDevices = 1000;
constexpr auto kCall = std::chrono::milliseconds(2);

std::vector<FakeCamera> Cameras(size_t nInterface, size_t nRound)
{
    const size_t nCount = kDevices / kInterfaces + (nInterface < kDevices % kInterfaces ? 1 : 0);
    std::vector<FakeCamera> cameras(nCount);
    for (size_t i = 0; i < nCount; ++i)
        cameras[i] = {"camera " + std::to_string(nInterface) + "/" + std::to_string(i + nRound)};
    return cameras;
}

/// The systems with all that hangs on them, listed once.
class Site
{
public:
    Site()
    {
        for (size_t i = 0; i < kSystems; ++i) {
            systems.push_back(std::make_unique<FakeSystem>("System " + std::to_string(i)));
            for (size_t j = 0; j < kInterfaces / kSystems; ++j) {
                const size_t n = interfaces.size();
                interfaces.push_back(&systems.back()->Add("Interface " + std::to_string(n),
                                                          n % 2 ? "GEV" : "U3V", Cameras(n, 0)));
            }
            systems.back()->Update();
        }
    }

    std::vector<IKxSystem*> Pointers() const
    {
        std::vector<IKxSystem*> pointers;
        for (const auto& system : systems)
            pointers.push_back(system.get());
        return pointers;
    }

    /// From now on each search for devices takes its time.
    void SearchSlowly()
    {
        for (FakeInterface* const interface : interfaces)
            interface->onUpdate = [] { std::this_thread::sleep_for(kCall); };
    }

    std::vector<std::unique_ptr<FakeSystem>> systems;
    std::vector<FakeInterface*> interfaces;
};

CKxApiAutoInitTerm& Sdk()
{
    static CKxApiAutoInitTerm sdk;
    return sdk;
}

/// The window, shown.
class Window
{
public:
    Window()
        : wnd((Sdk(), CreateIKxWnd(KxWindowType_DeviceSelection)))
    {
        for (IKxSystem* const system : site.Pointers())
            wnd->RegisterTargetIKxSystem(system);
        wnd->Show(nullptr, KxWindowMode_Modaless);
        Pump();
    }
    ~Window()
    {
        wnd->Close();
        Pump();
    }

    static void Pump()
    {
        processEventGUI(false, 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QWidget& Widget() const { return *static_cast<QWidget*>(wnd->GetWindowHandle()); }
    /// As after a search that found something.
    void Update() const { QMetaObject::invokeMethod(&Widget(), "onUpdateDeviceListSignal"); }
    void CheckRows() const
    {
        const int nRows = static_cast<int>(kSystems + kInterfaces + kDevices);
        int nShown = 0;
        for (QTreeWidgetItemIterator it(Widget().findChild<QTreeWidget*>("treeDevice")); *it; ++it)
            ++nShown;
        if (nShown != nRows)
            throw std::runtime_error("the tree has " + std::to_string(nShown) + " rows");
    }

    Site site;
    CIKxWndPtrT<IKxDeviceSelectionWnd> wnd;
};

void Rebuild(benchmark::State& state)
{
    Window window;
    size_t nRound = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ++nRound;
        for (size_t i = 0; i < kInterfaces; ++i)
            window.site.interfaces[i]->SetCameras(Cameras(i, nRound % 2));
        for (const auto& system : window.site.systems)
            system->Update();
        state.ResumeTiming();
        window.Update();
        Window::Pump();
    }
    window.CheckRows();
}
BENCHMARK(Rebuild)->Name("Device/rebuild")->Unit(benchmark::kMillisecond);

void Unchanged(benchmark::State& state)
{
    Window window;
    for (auto _ : state) {
        window.Update();
        Window::Pump();
    }
    window.CheckRows();
}
BENCHMARK(Unchanged)->Name("Device/unchanged")->Unit(benchmark::kMillisecond);

/// How long another thread finds the lock taken in the worker's one round.
void LockHeld(benchmark::State& state)
{
    Site site;
    site.SearchSlowly();
    for (auto _ : state) {
        const auto pSearch = std::make_shared<CDeviceSearch>(nullptr, site.Pointers());
        GenApi::CLock& lock = pSearch->m_objLock;
        std::atomic<int64_t> nBegin{0};
        std::atomic<int64_t> nEnd{0};
        const auto now = [] { return Clock::now().time_since_epoch().count(); };
        // The first question of the round, and the last thing before its pause, are where the lock is held.
        site.systems.front()->onUpdate = [&] { nBegin = now(); };
        CWorkerDeviceDetection worker(pSearch);
        worker.Start();
        while (nBegin == 0)
            std::this_thread::yield();
        lock.Lock();
        nEnd = now();
        lock.Unlock();
        worker.Stop();
        state.SetIterationTime(std::chrono::duration<double>(Clock::duration(nEnd - nBegin)).count());
    }
}
BENCHMARK(LockHeld)->Name("Device/lockHeld")->UseManualTime()->Unit(benchmark::kMillisecond);

/// The same calls of the same systems, one after the other.
void BareCalls(benchmark::State& state)
{
    Site site;
    site.SearchSlowly();
    for (auto _ : state) {
        for (const auto& system : site.systems) {
            benchmark::DoNotOptimize(system->UpdateInterfaceList());
            for (uint32_t i = 0; i < system->GetInterfaceCount(); ++i)
                benchmark::DoNotOptimize(system->GetIKxInterface(i)->UpdateDeviceList());
        }
    }
}
BENCHMARK(BareCalls)->Name("Device/lockHeld/peer")->UseRealTime()->Unit(benchmark::kMillisecond);

/// Stopping in the middle of a slow search.
void Close(benchmark::State& state)
{
    Site site;
    site.SearchSlowly();
    for (auto _ : state) {
        const auto pSearch = std::make_shared<CDeviceSearch>(nullptr, site.Pointers());
        std::atomic<bool> bSearching{false};
        site.systems.front()->onUpdate = [&] { bSearching = true; };
        CWorkerDeviceDetection worker(pSearch);
        worker.Start();
        while (!bSearching)
            std::this_thread::yield();
        const Clock::time_point begin = Clock::now();
        worker.Stop();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
    }
}
BENCHMARK(Close)->Name("Device/close")->UseManualTime()->Unit(benchmark::kMillisecond);

void OneCall(benchmark::State& state)
{
    for (auto _ : state)
        std::this_thread::sleep_for(kCall);
}
BENCHMARK(OneCall)->Name("Device/close/peer")->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
