// SPDX-License-Identifier: Apache-2.0
// Size, zoom, scrolling and the mouse over the shown image.
#include "ImageViewSupport.h"

#include <QScrollBar>
#include <QTest>
#include <QThread>

namespace KxTest
{
namespace
{

using namespace KxApi;

class ImageZoom : public ImageViewTest
{
protected:
    void SetUp() override
    {
        ShowWindow();
        SetAreaSize(400, 300);
    }

    /// What the middle of the view shows.
    QPoint PixelInCentre() const
    {
        const QRect rcVisible = Widget().visibleRegion().boundingRect();
        return ImagePixelAt(
            QPoint(rcVisible.left() + rcVisible.width() / 2, rcVisible.top() + rcVisible.height() / 2));
    }
};

TEST_F(ImageZoom, FixedZoomGivesTheWidgetTheImagesSizeTimesTheMagnification)
{
    ShowImage(MakeRamp(100, 40)->GetIKxImage());
    EXPECT_EQ(Widget().size(), QSize(100, 40));
    for (const double dMagnification : {0.25, 0.5, 2.0, 3.0, 64.0}) {
        m_pWnd->SetManualZoomMagnification(dMagnification);
        Pump();
        EXPECT_EQ(Widget().size(),
                  QSize(static_cast<int>(100 * dMagnification), static_cast<int>(40 * dMagnification)));
    }
    EXPECT_EQ(m_pWnd->GetScrollHMax(), 6400 - ScrollArea().viewport()->width());
    m_pWnd->SetManualZoomMagnification(0.01);
    Pump();
    EXPECT_EQ(Widget().size(), QSize(1, 0));
    ShowImage(MakeRamp(1, 1)->GetIKxImage());
    EXPECT_EQ(Widget().size(), QSize(0, 0));
}

TEST_F(ImageZoom, FitTakesAllRoomThatTheShapeAllowsAndFollowsTheWindow)
{
    ShowImage(MakeRamp(200, 100)->GetIKxImage());
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    Pump();
    EXPECT_EQ(Widget().size(), QSize(398, 199));
    EXPECT_EQ(m_pWnd->GetScrollHMax(), 0);
    SetAreaSize(602, 102);
    EXPECT_EQ(Widget().size(), QSize(200, 100));
    SetAreaSize(102, 602);
    EXPECT_EQ(Widget().size(), QSize(100, 50));
    EXPECT_EQ(ImagePixelAt(QPoint(99, 49)), QPoint(198, 98));
    EXPECT_EQ(Widget().geometry().center(), ScrollArea().viewport()->rect().center());
}

TEST_F(ImageZoom, LowRowsOfAFittedTallImageShowNoLeftovers)
{
    ShowImage(MakeImage(10, 2000, KxPixelFormat_Mono8, 0xFF)->GetIKxImage());
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_None);
    m_pWnd->SetBackgroundColor(0x0000FF);
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    SetAreaSize(400, 330);
    // 1.64 display pixels for a width of 10: one of them is shown, for which 200 rows are enough.
    ASSERT_EQ(Widget().size(), QSize(1, 328));
    ShowImage(MakeImage(30, 2000, KxPixelFormat_Mono8, 0xFF)->GetIKxImage());
    ASSERT_EQ(Widget().size(), QSize(4, 328));
    EXPECT_EQ(ShownAt(2, 100), Rgb(255, 255, 255));
    EXPECT_EQ(ShownAt(2, 300), Rgb(255, 0, 0)) << "the background, since the image ends at 266";
}

TEST_F(ImageZoom, MagnificationChangesAroundTheCentre)
{
    m_pWnd->SetManualZoomMagnification(0.25);
    ShowImage(MakeRamp(1000, 1000)->GetIKxImage());
    m_pWnd->SetManualZoomMagnification(2);
    Pump();
    // Less than the scroll bars that come with it.
    EXPECT_LE((PixelInCentre() - QPoint(500, 500)).manhattanLength(), 10) << "from an image within the view";
    m_pWnd->SetScrollHPosition(700);
    m_pWnd->SetScrollVPosition(900);
    Pump();
    const QPoint ptBefore = PixelInCentre();
    for (const double dMagnification : {4.0, 8.0, 3.0, 2.0}) {
        m_pWnd->SetManualZoomMagnification(dMagnification);
        Pump();
        const QPoint ptMoved = PixelInCentre() - ptBefore;
        EXPECT_LE(ptMoved.manhattanLength(), 2) << dMagnification;
    }
}

TEST_F(ImageZoom, EveryPlaceOfTheWidgetIsTheImagePixelShownThere)
{
    ShowImage(MakeRamp(300, 200)->GetIKxImage());
    const auto check = [this](const char* szWhat) {
        const double dMagnification = static_cast<double>(Widget().width()) / 300;
        const QRect rcVisible = Widget().visibleRegion().boundingRect();
        for (const QPoint& pt : {rcVisible.topLeft(), rcVisible.center(), rcVisible.bottomRight()}) {
            const QPoint ptImage = ImagePixelAt(pt);
            EXPECT_EQ(ptImage, QPoint(static_cast<int>(pt.x() / dMagnification),
                                      static_cast<int>(pt.y() / dMagnification)))
                << szWhat;
            const int nValue = (ptImage.x() + 16 * ptImage.y()) % 256;
            EXPECT_EQ(ShownAt(pt.x(), pt.y()), Rgb(nValue, nValue, nValue)) << szWhat;
        }
    };
    check("smaller than the area");
    m_pWnd->SetManualZoomMagnification(16);
    Pump();
    check("centred");
    m_pWnd->SetScrollHPosition(m_pWnd->GetScrollHMax());
    m_pWnd->SetScrollVPosition(1);
    Pump();
    check("scrolled to the right");
    m_pWnd->SetScrollHPosition(0);
    m_pWnd->SetScrollVPosition(0);
    Pump();
    check("scrolled back");
}

TEST_F(ImageZoom, FarCornersOfHugeWidgetsAreShown)
{
    ShowImage(MakeRamp(3000, 2000)->GetIKxImage());
    m_pWnd->SetManualZoomMagnification(64);
    Pump();
    ASSERT_EQ(Widget().size(), QSize(192000, 128000));
    m_pWnd->SetScrollHPosition(m_pWnd->GetScrollHMax());
    m_pWnd->SetScrollVPosition(m_pWnd->GetScrollVMax());
    Pump();
    const QImage view = ScrollArea().viewport()->grab().toImage();
    const int nLast = (2999 + 16 * 1999) % 256, nBefore = (2998 + 16 * 1999) % 256;
    EXPECT_EQ(view.pixel(view.width() - 1, view.height() - 1), Rgb(nLast, nLast, nLast));
    EXPECT_EQ(view.pixel(view.width() - 64, view.height() - 64), Rgb(nLast, nLast, nLast));
    EXPECT_EQ(view.pixel(view.width() - 65, view.height() - 64), Rgb(nBefore, nBefore, nBefore));
}

TEST_F(ImageZoom, CtrlAndWheelZoomUnderTheCursor)
{
    m_pWnd->SetRefreshInterval(1);
    ShowImage(MakeRamp(1000, 1000)->GetIKxImage());
    m_pWnd->SetManualZoomMagnification(2);
    m_pWnd->SetScrollHPosition(400);
    m_pWnd->SetScrollVPosition(600);
    Pump();
    const QRect rcVisible = Widget().visibleRegion().boundingRect();
    const QPoint ptCursor = rcVisible.topLeft() + QPoint(301, 51);
    const QPoint ptImage = ImagePixelAt(ptCursor);
    const QPoint ptInView = ptCursor - rcVisible.topLeft();
    for (const int nDelta : {120, 120, -120}) {
        const size_t nPaints = m_objLog.Count(KxGUICallbackType_Drawing);
        TurnWheel(Widget().visibleRegion().boundingRect().topLeft() + ptInView, nDelta, true);
        EXPECT_EQ(m_objLog.Count(KxGUICallbackType_Drawing), nPaints + 1) << "no other view in between";
        EXPECT_EQ(ImagePixelAt(Widget().visibleRegion().boundingRect().topLeft() + ptInView), ptImage);
    }
    EXPECT_EQ(m_pWnd->GetManualZoomMagnification(), 3);
    EXPECT_TRUE(CheckedBeside("x 2").isEmpty()) << "no entry has 3";
    Pump();
    EXPECT_EQ(ImagePixelAt(Widget().visibleRegion().boundingRect().topLeft() + ptInView), ptImage)
        << "the next tick leaves the view alone";
}

TEST_F(ImageZoom, WheelAloneScrollsAndFittedImagesDontZoom)
{
    ShowImage(MakeRamp(2000, 2000)->GetIKxImage());
    TurnWheel(QPoint(10, 10), -120, false);
    EXPECT_GT(m_pWnd->GetScrollVPosition(), 0);
    EXPECT_EQ(m_pWnd->GetManualZoomMagnification(), 1);
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    Pump();
    TurnWheel(QPoint(10, 10), 120, true);
    EXPECT_EQ(m_pWnd->GetManualZoomMagnification(), 1);
    EXPECT_EQ(m_pWnd->GetZoomMode(), KxZoomMode_FitToTheWindow);
}

TEST_F(ImageZoom, KeysNeitherScrollNorClose)
{
    ShowImage(MakeRamp(2000, 2000)->GetIKxImage());
    m_pWnd->SetScrollVPosition(100);
    Pump();
    for (const Qt::Key eKey : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Right, Qt::Key_Delete,
                               Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter})
    {
        QTest::keyClick(&ScrollArea(), eKey);
        QTest::keyClick(&Dialog(), eKey);
        Pump();
    }
    EXPECT_EQ(m_pWnd->GetScrollVPosition(), 100);
    EXPECT_TRUE(m_pWnd->IsVisible());
}

TEST_F(ImageZoom, ScrollPositionsOfOtherThreadsReadBackAtOnce)
{
    ShowImage(MakeRamp(2000, 2000)->GetIKxImage());
    int nRead = -1, nBeyond = -1;
    const std::unique_ptr<QThread> pThread(QThread::create([&] {
        m_pWnd->SetScrollHPosition(123);
        nRead = m_pWnd->GetScrollHPosition();
        m_pWnd->SetScrollVPosition(1'000'000);
        nBeyond = m_pWnd->GetScrollVPosition();
    }));
    pThread->start();
    ASSERT_TRUE(PumpUntil([&] { return pThread->isFinished(); }));
    Pump();
    EXPECT_EQ(nRead, 123);
    EXPECT_EQ(nBeyond, m_pWnd->GetScrollVMax());
    EXPECT_EQ(ScrollArea().horizontalScrollBar()->value(), 123);
    EXPECT_EQ(m_pWnd->GetScrollVPosition(), ScrollArea().verticalScrollBar()->maximum());
}

} // namespace
} // namespace KxTest
