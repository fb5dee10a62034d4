// SPDX-License-Identifier: Apache-2.0
// An image window that many threads use at once, while it is shown, changed, closed and shown again.
#include "Support.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>

#include <QTest>
#include <QWidget>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

namespace KxTest
{
namespace
{

using namespace KxApi;

/// Rounds of showing and closing: more by the environment, for runs by hand.
int Rounds()
{
    const int nRounds = qEnvironmentVariableIntValue("KXAPI_HAMMER_ROUNDS");
    return nRounds > 0 ? nRounds : 100;
}

/// Threads that run their bodies again and again until the end.
class CThreads
{
public:
    explicit CThreads(std::vector<std::function<void(unsigned)>> vecBodies)
    {
        for (auto& body : vecBodies) {
            m_vecThreads.emplace_back([this, body = std::move(body)] {
                for (unsigned n = 0; !m_bStop; ++n) {
                    body(n);
                    // Locks are not fair: without a pause a thread of these could keep one for itself.
                    std::this_thread::sleep_for(std::chrono::microseconds(50));
                }
            });
        }
    }
    ~CThreads()
    {
        m_bStop = true;
        // The GUI thread goes on meanwhile: a thread may wait for it.
        std::atomic<bool> bJoined{false};
        std::thread joiner([&] {
            for (std::thread& thread : m_vecThreads)
                thread.join();
            bJoined = true;
        });
        EXPECT_TRUE(PumpUntil([&] { return bJoined.load(); }));
        joiner.join();
    }

private:
    std::atomic<bool> m_bStop{false};
    std::vector<std::thread> m_vecThreads;
};

class Hammer : public GuiTest
{
protected:
    /// Megabytes of memory in use.
    static double ResidentMegabytes()
    {
        double dPages = 0, dResident = 0;
        if (std::FILE* const pFile = std::fopen("/proc/self/statm", "r")) {
            EXPECT_EQ(std::fscanf(pFile, "%lf %lf", &dPages, &dResident), 2);
            std::fclose(pFile);
        }
        return dResident * 4096 / 1e6;
    }

    static void Change(IKxImageDisplayWnd& wnd, unsigned n)
    {
        wnd.SetZoomMode(static_cast<_EKxZoomMode_t>(n & 1U));
        wnd.SetManualZoomMagnification(0.25 * (1 + n % 20));
        wnd.SetStretchMode(static_cast<EKxBayerInterpolationMethod_t>(1 + n % 3));
        wnd.SetBackgroundStyle(static_cast<_EKxBackgroundStyle_t>(n % 7));
        wnd.SetForegroundColor(n);
        wnd.SetBackgroundColor(~n);
        wnd.SetColorMapType(static_cast<EKxColorMapType_t>(n % 3));
        wnd.SetColorMapPhase(static_cast<int>(n % 256));
        wnd.SetColorMapInversion((n & 2U) != 0);
        wnd.SetRefreshInterval(n % 20);
        wnd.SetScrollHPosition(static_cast<int>(n % 100));
        wnd.SetVisibleMenu((n & 1U) != 0);
        wnd.SetVisibleStatusBar((n & 4U) != 0);
        wnd.SetBuiltInDrawingToolbar((n & 8U) != 0);
        wnd.SetTitle("hammer");
        wnd.GetTitle();
        wnd.SetPosition(0, 0, 200 + static_cast<int>(n % 300), 200);
        wnd.SetUserStatusBarText("text");
        wnd.GetIKxPixelFormatConverter()->SetReverseY((n & 1U) != 0);
        wnd.GetIKxPixelFormatConverter()->SetBayerInterpolationMethod(
            static_cast<EKxBayerInterpolationMethod_t>(n % 8));
    }

    /// Features come and go with what the other threads do.
    template <class Function>
    static void IfAvailable(Function function)
    {
        try {
            function();
        } catch (const GenICam::AccessException&) {     // NOLINT(bugprone-empty-catch)
        } catch (const GenICam::OutOfRangeException&) { // NOLINT(bugprone-empty-catch)
        }
    }

    static void WriteFeatures(GenApi::INodeMap& nodeMap, unsigned n)
    {
        const auto write = [&](const char* szName, int64_t nValue) {
            IfAvailable([&] { GenApi::CIntegerPtr(nodeMap.GetNode(szName))->SetValue(nValue); });
        };
        write("RefreshInterval", n % 1000);
        write("ColorMapPhase", n % 256);
        write("BackgroundColor", n % 256);
        write("ScrollVPosition", n % 10);
        GenApi::CEnumerationPtr(nodeMap.GetNode("ZoomMode"))->SetIntValue(n & 1U);
        IfAvailable(
            [&] { GenApi::CBooleanPtr(nodeMap.GetNode("VisibleStatusBar"))->SetValue((n & 1U) != 0); });
        IfAvailable(
            [&] { GenApi::CFloatPtr(nodeMap.GetNode("FixedZoomMagnification"))->SetValue(0.5 + n % 4); });
        nodeMap.InvalidateNodes();
    }

    static void Ask(IKxImageDisplayWnd& wnd)
    {
        int x = 10, y = 10, w = 0, h = 0;
        wnd.ScreenToImage(&x, &y);
        wnd.GetPosition(&x, &y, &w, &h);
        wnd.IsVisible();
        wnd.GetScrollHMax();
        try {
            wnd.GetConvertedIKxImage();
        } catch (const GenICam::RuntimeException&) { // NOLINT(bugprone-empty-catch): no image yet
        }
    }
};

TEST_F(Hammer, StandsThreadsWhileItIsShownResizedZoomedClosedAndShownAgain)
{
    const std::array images{MakeImage(640, 480),
                            MakeImage(641, 479, KxPixelFormat_BayerRG8),
                            MakeImage(1, 1),
                            MakeImage(320, 240, KxPixelFormat_BGR8),
                            MakeImage(333, 3, KxPixelFormat_Mono12),
                            MakeImage(100, 100, KxPixelFormat_RGB8)};
    const ImageWndPtr pWnd = MakeImageWnd();
    GenApi::INodeMap* const pNodeMap = pWnd->GetINodeMap();
    CEventLog log;
    log.Watch(*pWnd);
    const int nRounds = Rounds();
    [[maybe_unused]] double dWarm = 0; // sanitizers keep what is freed, so they say nothing of it
    {
        const CThreads threads({
            [&](unsigned n) { pWnd->RegisterIKxImage(images[n % images.size()]->GetIKxImage()); },
            [&](unsigned n) { Change(*pWnd, n); },
            [&](unsigned n) { WriteFeatures(*pNodeMap, n); },
            [&](unsigned) { Ask(*pWnd); },
        });
        for (int i = 0; i < nRounds; ++i) {
            pWnd->Show(nullptr, i % 3 == 0 ? KxWindowMode_Child : KxWindowMode_Modaless);
            Pump();
            if (QWidget* const pWidget = WidgetOf(*pWnd))
                pWidget->resize(200 + i % 200, 150 + i % 100);
            Pump();
            if (i % 2 == 0)
                pWnd->Close();
            Pump();
            if (i == nRounds / 2)
                dWarm = ResidentMegabytes();
        }
    }
    pWnd->Close();
    Pump();
    EXPECT_EQ(log.Count(KxGUICallbackType_Created), static_cast<size_t>(nRounds));
    EXPECT_EQ(log.Count(KxGUICallbackType_Destroyed), static_cast<size_t>(nRounds));
    EXPECT_EQ(log.Count(KxGUICallbackType_Error), 0U);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(ResidentMegabytes(), dWarm + 32) << "memory grows";
#endif
}

TEST_F(Hammer, LivesOnWhileOtherThreadsShowAndCloseIt)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    const ImageBufferPtr pImage = MakeImage(64, 64);
    CEventLog log;
    log.Watch(*pWnd);
    std::atomic<int> nShown{0};
    {
        const CThreads threads({
            [&](unsigned) { pWnd->RegisterIKxImage(pImage->GetIKxImage()); },
            [&](unsigned) {
                pWnd->Show(nullptr, KxWindowMode_Modaless);
                ++nShown;
            },
            [&](unsigned) { pWnd->Close(); },
        });
        for (int nAtLeast = 1; nAtLeast <= Rounds(); ++nAtLeast)
            ASSERT_TRUE(PumpUntil([&] { return nShown >= nAtLeast; })) << "stuck after " << nShown;
    }
    pWnd->Close();
    EXPECT_TRUE(PumpUntil(
        [&] { return log.Count(KxGUICallbackType_Destroyed) == log.Count(KxGUICallbackType_Created); }));
}

TEST_F(Hammer, TakesEnormousAndTinyImages)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    Show(*pWnd);
    try {
        pWnd->RegisterIKxImage(MakeImage(20000, 20000)->GetIKxImage());
        pWnd->SetManualZoomMagnification(64.0);
        Pump();
        pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
        Pump();
    } catch (const GenICam::BadAllocException&) {
        GTEST_SKIP() << "this machine has no memory for the image";
    }
    for (const double dMagnification : {0.01, 64.0}) {
        pWnd->SetZoomMode(KxZoomMode_FixedZoom);
        pWnd->SetManualZoomMagnification(dMagnification);
        for (const auto ePixelFormat : {KxPixelFormat_Mono8, KxPixelFormat_BGR8, KxPixelFormat_Mono16}) {
            pWnd->RegisterIKxImage(MakeImage(1, 1, ePixelFormat)->GetIKxImage());
            Pump();
        }
    }
    EXPECT_TRUE(pWnd->IsVisible());
    pWnd->Close();
    Pump();
}

} // namespace
} // namespace KxTest
