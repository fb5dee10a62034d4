// SPDX-License-Identifier: Apache-2.0
// Devices that come and go while the device selection window is open, and producers that fail meanwhile.
#include "DeviceTest.h"
#include "ThreadCount.h"
#include "device/WorkerDeviceDetection_qt.h"

#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <thread>

namespace KxTest
{
namespace
{

using ::testing::Contains;
using ::testing::IsEmpty;
using Strings = std::vector<std::string>;
using namespace KxApi;

// Waits until there are no more: one that was joined is still counted for a moment.
bool BecomeAtMost(size_t nThreads)
{
    return PumpUntil([=] { return ThreadCount() <= nThreads; });
}

class DetectDevices : public DeviceTest
{
protected:
    FakeSystem& m_system = AddSystem("System");
    FakeInterface& m_first = m_system.Add("first", "U3V", {{"cam-1"}});
    FakeInterface& m_second = m_system.Add("second", "U3V", {{"cam-2"}});

    /// Shows the window while the lists are as new, so that the worker finds the devices.
    void OpenUnasked()
    {
        m_pWnd->RegisterTargetIKxSystem(&m_system);
        Show(*m_pWnd);
    }
};

const Strings kAll{"System", "  first", "    cam-1", "  second", "    cam-2"};

TEST_F(DetectDevices, ShowsWhatTheSearchFinds)
{
    OpenUnasked();
    EXPECT_TRUE(PumpUntil([&] { return Rows() == kAll; }));
}

TEST_F(DetectDevices, LetsNoInterfaceThatFailsHideAnother)
{
    m_first.onUpdate = [] { throw RUNTIME_EXCEPTION("cable out"); };
    OpenUnasked();
    EXPECT_TRUE(PumpUntil([&] { return Rows() == Strings{"System", "  first", "  second", "    cam-2"}; }));
    m_first.onAsk = [] { throw std::runtime_error("no producer of ours"); };
    m_second.SetCameras({{"cam-3"}});
    m_second.Refresh();
    TellOfChange();
    EXPECT_EQ(Rows(), (Strings{"System", "  first", "  second", "    cam-3"}));
}

TEST_F(DetectDevices, TellsTheApplicationOfASystemThatHasGoneAndShowsTheOthers)
{
    CEventLog log;
    log.Watch(*m_pWnd);
    FakeSystem& other = AddSystem("Other");
    other.Add("third", "U3V", {{"cam-4"}});
    std::atomic<bool> bGone{false};
    const auto answer = [&] {
        if (bGone)
            throw RUNTIME_EXCEPTION("the producer has gone");
    };
    m_system.onAsk = m_system.onUpdate = m_first.onAsk = answer;
    Open({&m_system, &other});
    Select("cam-1");
    bGone = true;
    TellOfChange();
    EXPECT_EQ(Rows(), (Strings{"Other", "  third", "    cam-4"}));
    EXPECT_EQ(Selected(), "");
    EXPECT_FALSE(IsEnabled("btnOK"));

    Show(*m_pWnd); // and its worker begins with the system that has gone
    EXPECT_TRUE(PumpUntil([&] { return log.Count(KxGUICallbackType_Error) > 0; }));
    EXPECT_EQ(Rows(), (Strings{"Other", "  third", "    cam-4"}));
    m_pWnd.Reset();
    Pump();
}

TEST_F(DetectDevices, EndsAfterTheCallUnderWay)
{
    std::promise<void> entered;
    std::promise<void> end;
    std::atomic<int> nCallsAfter{0};
    m_first.onUpdate = [&] {
        entered.set_value();
        end.get_future().wait();
    };
    m_second.onUpdate = [&] { ++nCallsAfter; };
    m_system.Update(); // nothing to tell a dialog of
    const auto pSearch = std::make_shared<CDeviceSearch>(nullptr, std::vector<IKxSystem*>{&m_system});
    CWorkerDeviceDetection worker(pSearch);
    worker.Start();
    entered.get_future().wait();
    std::thread stop([&] { worker.Stop(); });
    while (!worker.IsStopRequest(1)) {
    }
    end.set_value();
    stop.join();
    EXPECT_EQ(nCallsAfter, 0);
    EXPECT_TRUE(pSearch->m_objLock.TryLock());
    pSearch->m_objLock.Unlock();
}

TEST_F(DetectDevices, LeavesNothingBehindWhenOpenedAndClosedWhileDevicesComeAndGo)
{
    m_pWnd->RegisterTargetIKxSystem(&m_system);
    Show(*m_pWnd);
    const size_t nThreads =
        ThreadCount(); // of the window's search one, which the plugging one takes the place of
    m_pWnd->Close();
    Pump();
    const CThreads plugging({[&](unsigned n) {
        std::vector<FakeCamera> cameras(n / 20 % 4);
        for (size_t i = 0; i < cameras.size(); ++i)
            cameras[i] = {"cam-" + std::to_string(i), static_cast<int32_t>(n / 20 % 7)};
        m_first.SetCameras(cameras);
    }});
    for (int i = 0; i < 500; ++i) {
        m_pWnd->Show(nullptr, KxWindowMode_Modaless);
        if (i % 3 != 0)
            Pump();
        if (QTreeWidgetItem* const pItem = Item("cam-0"))
            Tree().setCurrentItem(pItem);
        if (i % 2 != 0)
            Button("btnOK").click();
        m_pWnd->Close();
        Pump();
        EXPECT_EQ(m_pWnd->GetWindowHandle(), nullptr);
    }
    EXPECT_TRUE(BecomeAtMost(nThreads));
}

} // namespace
} // namespace KxTest
