// SPDX-License-Identifier: Apache-2.0
// When images are shown, what lies behind and over them, and what is shown in place of those that can't be.
#include "ImageViewSupport.h"

#include <KxApi_GUI/IKxOverlayCanvas.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <QPainter>
#include <cmath>

namespace KxTest
{
namespace
{

using namespace KxApi;

class ImageRefresh : public ImageViewTest
{
protected:
    ImageBufferPtr Grey(unsigned char nValue) const { return MakeImage(40, 30, KxPixelFormat_Mono8, nValue); }
    size_t Paints() const { return m_objLog.Count(KxGUICallbackType_Drawing); }
};

TEST_F(ImageRefresh, ImagesBetweenTwoTicksCostOnePaintOfTheNewest)
{
    m_pWnd->SetRefreshInterval(0);
    ShowWindow();
    m_pWnd->RegisterIKxImage(Grey(1)->GetIKxImage());
    ASSERT_TRUE(PumpUntil([this] { return Paints() > 0; })) << "the timer runs";
    Pump();
    const size_t nBefore = Paints();
    for (unsigned char n = 10; n < 20; ++n)
        m_pWnd->RegisterIKxImage(Grey(n)->GetIKxImage());
    EXPECT_EQ(Paints(), nBefore) << "registering doesn't paint";
    ASSERT_TRUE(PumpUntil([&] { return Paints() > nBefore; }));
    EXPECT_EQ(Paints(), nBefore + 1);
    EXPECT_EQ(ShownAt(5, 5), Rgb(19, 19, 19));
}

TEST_F(ImageRefresh, SettingsShowAtOnceThoughTheTickIsFar)
{
    ShowWindow();
    ShowImage(Grey(200)->GetIKxImage());
    m_pWnd->SetRefreshInterval(1000);
    Pump();
    m_pWnd->SetColorMapInversion(true);
    EXPECT_EQ(ShownAt(5, 5), Rgb(55, 55, 55));
    m_pWnd->SetColorMapInversion(false);
    EXPECT_EQ(ShownAt(5, 5), Rgb(200, 200, 200));
}

TEST_F(ImageRefresh, ADialogThatStayedOpenPaintsNoImageThatTheNextOneGaveBack)
{
    m_objLog.onEvent = [](IKxCallbackParamBase& param) {
        if (param.GetCallbackType() == KxGUICallbackType_Close)
            dynamic_cast<IKxCallbackParamKxApiGUIEventBaseWndClose&>(param).CancelClose();
        if (param.GetCallbackType() != KxGUICallbackType_Drawing)
            return;
        auto& drawing = dynamic_cast<IKxCallbackParamKxApiGUIEventDrawing&>(param);
        EXPECT_EQ(static_cast<int>(drawing.GetIKxImage()->GetImageWidth()), drawing.GetROIWidth());
    };
    ShowWindow();
    ShowImage(Grey(1)->GetIKxImage());
    CDisplayImageWidget& old = Widget();
    m_pWnd->SetRefreshInterval(1000);
    Show(*m_pWnd);
    ASSERT_NE(&Widget(), &old);
    m_pWnd->RegisterIKxImage(Grey(2)->GetIKxImage());
    m_pWnd->SetColorMapInversion(true); // which the new dialog shows at once
    for (size_t nWidth = 50; nWidth < 60; ++nWidth)
        m_pWnd->RegisterIKxImage(MakeImage(nWidth, 30)->GetIKxImage());
    old.repaint();
    m_objLog.onEvent = nullptr;
}

TEST_F(ImageRefresh, ThePaintedImageStaysWhileNewOnesComeFromAnotherThread)
{
    // Sizes that change make the window's buffers move; what is painted must not move with them.
    m_pWnd->SetRefreshInterval(1);
    ShowWindow();
    const CThreads camera({[&](unsigned n) {
        m_pWnd->RegisterIKxImage(
            MakeImage(20 + n % 300, 20 + n % 200, KxPixelFormat_Mono8, 0x42)->GetIKxImage());
    }});
    EXPECT_TRUE(PumpUntil([this] {
        if (m_pWnd->HasImage() && Widget().width() > 10) {
            EXPECT_EQ(ShownAt(5, 5), Rgb(0x42, 0x42, 0x42));
        }
        return Paints() > 200;
    }));
}

TEST_F(ImageRefresh, ImagesThatChangeSizeFasterThanTheyAreShownCostOneResizeATurn)
{
    m_pWnd->SetRefreshInterval(1000);
    ShowWindow();
    // Whenever the window takes an image, the next one is there already, with another size.
    size_t nTaken = 0;
    GenApi::INode* const pNode =
        m_pWnd->GetIKxPixelFormatConverter()->GetINodeMap()->GetNode("DestinationPixelFormat");
    const auto registerNext = [&] {
        m_pWnd->RegisterIKxImage(
            MakeImage(40 + nTaken % 2, 30, nTaken % 2 ? KxPixelFormat_BGR8 : KxPixelFormat_Mono8)
                ->GetIKxImage());
    };
    const GenApi::CallbackHandleType hCallback = GenApi::Register(pNode, [&](GenApi::INode*) {
        if (++nTaken < 100)
            registerNext();
    });
    registerNext();
    Dialog().RefreshPreviewImage(true);
    EXPECT_GT(nTaken, 1U);
    EXPECT_LE(nTaken, 4U);
    EXPECT_TRUE(PumpUntil([&] { return nTaken == 100; })) << "each turn shows the newest";
    GenApi::Deregister(hCallback);
    Refresh();
    EXPECT_EQ(Widget().size(), QSize(41, 30));
}

TEST_F(ImageRefresh, OverlaysPaintOnTopAndLearnWhatIsShown)
{
    m_pWnd->SetManualZoomMagnification(3);
    bool bTold = false;
    m_objLog.onEvent = [&](IKxCallbackParamBase& param) {
        auto* const pDrawing = dynamic_cast<IKxCallbackParamKxApiGUIEventDrawing*>(&param);
        if (!pDrawing)
            return;
        bTold = true;
        EXPECT_EQ(param.GetCallbackType(), 9U);
        EXPECT_EQ(pDrawing->GetIKxWnd(), m_pWnd.Get());
        EXPECT_EQ(pDrawing->GetIKxImage()->GetImageWidth(), 40U);
        EXPECT_EQ(QSize(pDrawing->GetROIWidth(), pDrawing->GetROIHeight()), QSize(40, 30));
        EXPECT_EQ(QSize(pDrawing->GetDisplayWidth(), pDrawing->GetDisplayHeight()), QSize(120, 90));
        EXPECT_EQ(QPoint(pDrawing->GetROIOffsetX(), pDrawing->GetROIOffsetY()), QPoint(0, 0));
        static_cast<QPainter*>(pDrawing->GetDC())->fillRect(30, 30, 3, 3, Qt::red);
        // Without Qt, in pixels of the image; what can't be drawn leaves no trace.
        auto& canvas = dynamic_cast<IKxOverlayCanvas&>(param);
        canvas.SetPen(KxOverlayColor(0, 255, 0), 1);
        canvas.DrawRectangle(20, 10, 5, 4);
        canvas.DrawEllipse(0, 0, std::nan(""), 1e300);
        canvas.DrawText(2, 29, "\xC3\x84", 12);
    };
    ShowWindow();
    ShowImage(Grey(9)->GetIKxImage());
    EXPECT_TRUE(bTold);
    EXPECT_EQ(ShownAt(31, 31), Rgb(255, 0, 0));
    EXPECT_EQ(ShownAt(33, 33), Rgb(9, 9, 9));
    EXPECT_EQ(ShownAt(60, 35), Rgb(0, 255, 0));
    EXPECT_EQ(ShownAt(75, 42), Rgb(0, 255, 0));
    EXPECT_EQ(ShownAt(65, 35), Rgb(9, 9, 9));
}

TEST_F(ImageRefresh, OverlaysGetTheRegisteredImageThatIsPaintedWhileLaterOnesCome)
{
    int nTold = 0;
    const auto firstByte = [](const IKxImage* pImage) {
        return static_cast<int>(*static_cast<const unsigned char*>(pImage->GetImageBuffer()));
    };
    m_objLog.onEvent = [&](IKxCallbackParamBase& param) {
        const auto* const pDrawing = dynamic_cast<IKxCallbackParamKxApiGUIEventDrawing*>(&param);
        if (!pDrawing)
            return;
        ++nTold;
        const IKxImage* const pCamera = dynamic_cast<IKxOverlayCanvas&>(param).GetRegisteredIKxImage();
        EXPECT_EQ(firstByte(pCamera), firstByte(pDrawing->GetIKxImage()));
        // The newest ones, which also have been converted for the application, aren't on the screen.
        m_pWnd->RegisterIKxImage(Grey(static_cast<unsigned char>(nTold))->GetIKxImage());
        EXPECT_EQ(firstByte(m_pWnd->GetConvertedIKxImage()), nTold);
        EXPECT_EQ(firstByte(pCamera), firstByte(pDrawing->GetIKxImage()));
    };
    ShowWindow();
    for (const auto ePixelFormat : {KxPixelFormat_Mono8, KxPixelFormat_RGB8}) {
        const int nBefore = nTold;
        ShowImage(MakeImage(40, 30, ePixelFormat, 200)->GetIKxImage());
        Widget().repaint(); // the same picture once more
        EXPECT_GE(nTold, nBefore + 2);
    }
}

TEST_F(ImageRefresh, OverlaysMayChangeSettingsWithoutAPaintWithinThePaint)
{
    static int s_nWarnings;
    s_nWarnings = 0;
    m_pWnd->SetRefreshInterval(1);
    m_objLog.onEvent = [&](IKxCallbackParamBase& param) {
        if (param.GetCallbackType() != KxGUICallbackType_Drawing || Paints() > 20)
            return;
        m_pWnd->SetColorMapPhase(static_cast<int>(Paints()));
        m_pWnd->SetManualZoomMagnification(1 + static_cast<double>(Paints()) / 8);
        m_pWnd->SetBackgroundColor(static_cast<uint32_t>(Paints()));
    };
    const QtMessageHandler handler =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& strText) {
            s_nWarnings += strText.contains("repaint") || strText.contains("paintEngine");
        });
    ShowWindow();
    m_pWnd->RegisterIKxImage(Grey(0)->GetIKxImage());
    EXPECT_TRUE(PumpUntil([this] { return Paints() > 20 && Widget().width() == 40 * 28 / 8; }));
    qInstallMessageHandler(handler);
    EXPECT_EQ(s_nWarnings, 0);
    EXPECT_EQ(ShownAt(5, 5), Rgb(20, 20, 20)) << "what the last overlay set is shown";
}

TEST_F(ImageRefresh, BackgroundHasColourAndPattern)
{
    ShowWindow();
    SetAreaSize(300, 200);
    m_pWnd->SetBackgroundColor(0x102030);
    m_pWnd->SetForegroundColor(0xFF00FF);
    const QRgb nBackground = Rgb(0x30, 0x20, 0x10), nPattern = Rgb(255, 0, 255);
    const auto countPattern = [&](const QRect& rc) {
        Pump();
        const QImage shown = ScrollArea().viewport()->grab().toImage();
        int nFound = 0;
        for (int y = rc.top(); y <= rc.bottom(); ++y) {
            for (int x = rc.left(); x <= rc.right(); ++x) {
                const QRgb nColor = shown.pixel(x, y);
                EXPECT_TRUE(nColor == nBackground || nColor == nPattern) << x << ' ' << y;
                nFound += nColor == nPattern;
            }
        }
        return nFound;
    };
    const QRect rcRow(10, 10, 80, 1), rcColumn(10, 10, 1, 80), rcSquare(10, 10, 80, 80);
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_None);
    EXPECT_EQ(countPattern(rcSquare), 0);
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_Horizontal);
    EXPECT_EQ(countPattern(rcColumn), 10);
    EXPECT_EQ(countPattern(rcSquare), 800);
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_Vertical);
    EXPECT_EQ(countPattern(rcRow), 10);
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_FDiagonal);
    EXPECT_GE(countPattern(rcSquare), 800);
}

TEST_F(ImageRefresh, WhatCantBeConvertedIsToldInPlaceOfTheImage)
{
    ShowWindow();
    ShowImage(Grey(9)->GetIKxImage());
    m_pWnd->SetManualZoomMagnification(8);
    const QSize size = Widget().size();
    // Numbers of so many bits are no brightness.
    ShowImage(MakeImage(64, 64, KxPixelFormat_Data32)->GetIKxImage());
    EXPECT_EQ(Widget().size(), size);
    const auto countDark = [](const QImage& message, const QRect& rc) {
        int nDark = 0;
        for (int y = rc.top(); y <= rc.bottom(); ++y) {
            for (int x = rc.left(); x <= rc.right(); ++x)
                nDark += qGray(message.pixel(x, y)) < 128;
        }
        return nDark;
    };
    const QRect rcText(18, 5, 250, 25);
    const QImage message = Widget().grab().toImage();
    EXPECT_GT(countDark(message, rcText), 50) << "the text";
    EXPECT_EQ(countDark(message, message.rect()), countDark(message, rcText)) << "on white";
    // The text stays in view, wherever that is.
    SetAreaSize(300, 100);
    const int nDark = countDark(ScrollArea().viewport()->grab().toImage(), rcText);
    m_pWnd->SetScrollHPosition(7);
    m_pWnd->SetScrollVPosition(m_pWnd->GetScrollVMax());
    Pump();
    EXPECT_EQ(countDark(ScrollArea().viewport()->grab().toImage(), rcText), nDark);
    EXPECT_EQ(m_objLog.Count(KxGUICallbackType_Error), 0U);
    ShowImage(Grey(9)->GetIKxImage());
    EXPECT_EQ(ShownAt(5, 5), Rgb(9, 9, 9));
}

} // namespace
} // namespace KxTest
