// SPDX-License-Identifier: Apache-2.0
// An image window that many threads use at once, while it is shown, changed, closed and shown again.
#include "Support.h"
#include "image/DisplayImageWidget_qt.h"

#include <KxApi_GUI/IKxDrawingMeasurements.h>
#include <KxApi_GUI/IKxDrawingTool.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>

#include <QMouseEvent>
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

    /// Features of the window and of its drawing, which come and go with what the other threads do.
    static void WriteFeatures(GenApi::INodeMap& nodeMap, unsigned n)
    {
        const struct
        {
            const char* szName;
            std::vector<const char*> vecValues;
        } writes[] = {
            {"RefreshInterval", {"0", "7", "999"}},
            {"ColorMapPhase", {"0", "100", "255"}},
            {"BackgroundColor", {"0", "255"}},
            {"ScrollVPosition", {"0", "9"}},
            {"ZoomMode", {"FixedZoom", "FitToTheWindow"}},
            {"VisibleStatusBar", {"0", "1"}},
            {"FixedZoomMagnification", {"0.5", "1.5", "3.5"}},
            {"DrawingItemType", {"Select", "Polygon", "Line", "None", "Bezier"}},
            {"DrawingObjectsCount", {"6", "2", "0", "4"}},
            {"DrawingObjectSelector", {"0", "1", "5"}},
            {"DrawingObjectType", {"Line", "Text", "Arc", "Polygon", "Bezier", "Cross", "FreeHand"}},
            {"DrawingObjectPointCount", {"0", "2", "6", "1"}},
            {"DrawingObjectPointX", {"0", "0.3", "0.6"}},
            {"DrawingObjectName", {"", "short", "a name of more letters than those that need no memory"}},
            {"TextOfLengthUnit", {"%", "mm"}},
        };
        const auto& write = writes[n % std::size(writes)];
        const size_t nValue = n / std::size(writes) % write.vecValues.size();
        ErrorOf([&] { // what can't be written now, or is out of a range that has changed
            GenApi::CValuePtr(nodeMap.GetNode(write.szName))->FromString(write.vecValues[nValue]);
            if (n % 97 == 0)
                GenApi::CCommandPtr(nodeMap.GetNode("RemoveDrawingObject"))->Execute();
        });
        nodeMap.InvalidateNodes();
    }

    /// Drags over the image.
    static void UseMouse(QWidget& dialog, int nRound)
    {
        auto& image = *dialog.findChild<KxApi::CDisplayImageWidget*>();
        const auto send = [&](QEvent::Type eType, QPoint pt, Qt::MouseButton eButton,
                              Qt::MouseButtons eButtons) {
            QMouseEvent event(eType, pt, eButton, eButtons, Qt::NoModifier);
            QCoreApplication::sendEvent(&image, &event);
        };
        const QPoint ptFrom(nRound * 7 % 500, nRound * 11 % 500), ptTo(nRound * 13 % 500, nRound * 17 % 500);
        send(QEvent::MouseButtonPress, ptFrom, Qt::LeftButton, Qt::LeftButton);
        Pump();
        send(QEvent::MouseMove, ptTo, Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, ptTo, Qt::LeftButton, Qt::NoButton);
        QTest::keyClick(&image, Qt::Key_Delete);
    }

    static void Ask(IKxImageDisplayWnd& wnd)
    {
        int x = 10, y = 10, w = 0, h = 0;
        wnd.ScreenToImage(&x, &y);
        wnd.GetPosition(&x, &y, &w, &h);
        wnd.IsVisible();
        wnd.GetScrollHMax();
        ErrorOf([&] { wnd.GetConvertedIKxImage(); }); // there may be none yet
        if (IKxDrawingMeasurements* const pMeasurements =
                dynamic_cast<IKxDrawingMeasurements*>(wnd.GetIKxDrawingTool()))
            pMeasurements->GetMeasurements();
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
            [&](unsigned n) { WriteFeatures(*pNodeMap, 7 * n + 3); },
            [&](unsigned) { Ask(*pWnd); },
            [&](unsigned) { Ask(*pWnd); },
        });
        for (int i = 0; i < nRounds; ++i) {
            pWnd->Show(nullptr, i % 3 == 0 ? KxWindowMode_Child : KxWindowMode_Modaless);
            Pump();
            if (QWidget* const pWidget = WidgetOf(*pWnd)) {
                pWidget->resize(200 + i % 200, 150 + i % 100);
                UseMouse(*pWidget, i);
            }
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
