// SPDX-License-Identifier: Apache-2.0
// An image window that many threads use at once, while it is shown, changed, closed and shown again.
#include "Support.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>

#include <QTest>
#include <QWidget>
#include <array>

namespace KxTest
{
namespace
{

using namespace KxApi;

class Hammer : public GuiTest
{
protected:
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
    const int nRounds = HammerRounds(100);
    {
        const CThreads threads({
            [&](unsigned n) { pWnd->RegisterIKxImage(images[n % images.size()]->GetIKxImage()); },
            [&](unsigned n) { Change(*pWnd, n); },
            [&](unsigned n) { WriteFeatures(*pNodeMap, n); },
            [&](unsigned) { Ask(*pWnd); },
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
        }
    }
    pWnd->Close();
    Pump();
    EXPECT_EQ(log.Count(KxGUICallbackType_Created), static_cast<size_t>(nRounds));
    EXPECT_EQ(log.Count(KxGUICallbackType_Destroyed), static_cast<size_t>(nRounds));
    EXPECT_EQ(log.Count(KxGUICallbackType_Error), 0U);
}

TEST_F(Hammer, LivesOnWhileOtherThreadsShowAndCloseItAndCallbacksUseIt)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    const ImageBufferPtr pImage = MakeImage(64, 64);
    GenApi::INodeMap& nodeMap = *pWnd->GetINodeMap();
    CEventLog log;
    CEventLog passing; // which comes and goes
    log.onEvent = [&](IKxCallbackParamBase& param) {
        pWnd->IsVisible();
        pWnd->GetTitle();
        pWnd->SetVisibleStatusBar(param.GetCallbackType() == KxGUICallbackType_Created);
    };
    passing.onEvent = [&](IKxCallbackParamBase&) { pWnd->GetPosition(nullptr, nullptr, nullptr, nullptr); };
    log.Watch(*pWnd);
    std::atomic<int> nShown{0};
    {
        const CThreads threads({
            [&](unsigned) { pWnd->RegisterIKxImage(pImage->GetIKxImage()); },
            [&](unsigned) {
                pWnd->Show(nullptr, KxWindowMode_Modaless);
                ++nShown;
            },
            [&](unsigned n) {
                if (n % 4 == 0) // so that a dialog is shown anew, too
                    pWnd->Close();
            },
            [&](unsigned n) {
                pWnd->DeregisterCallback(passing.Watch(*pWnd));
                pWnd->GetWindowHandle();
                GenApi::CIntegerPtr(nodeMap.GetNode("VisibleMenuReg"))->SetValue(n % 2);
                GenApi::CIntegerPtr(nodeMap.GetNode("ScrollHMaxReg"))->GetValue(false, true);
            },
        });
        for (int nAtLeast = 1; nAtLeast <= HammerRounds(100); ++nAtLeast)
            ASSERT_TRUE(PumpUntil([&] { return nShown >= nAtLeast; })) << "stuck after " << nShown;
    }
    pWnd->Close();
    EXPECT_TRUE(PumpUntil(
        [&] { return log.Count(KxGUICallbackType_Destroyed) == log.Count(KxGUICallbackType_Created); }));
}

} // namespace
} // namespace KxTest
