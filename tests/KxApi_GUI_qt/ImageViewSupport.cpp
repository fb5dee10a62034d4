// SPDX-License-Identifier: Apache-2.0
#include "ImageViewSupport.h"

#include <QApplication>
#include <QCursor>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>

namespace KxTest
{

void SetPixel(KxApi::IKxImage& image, size_t x, size_t y, std::initializer_list<unsigned char> bytes)
{
    auto* const pLine = static_cast<unsigned char*>(image.GetImageBuffer()) + y * image.GetImageLinePitch();
    std::copy(bytes.begin(), bytes.end(), pLine + x * bytes.size());
}

ImageBufferPtr MakeRamp(size_t nWidth, size_t nHeight)
{
    ImageBufferPtr pBuffer = MakeImage(nWidth, nHeight);
    for (size_t y = 0; y < nHeight; ++y) {
        for (size_t x = 0; x < nWidth; ++x)
            SetPixel(*pBuffer->GetIKxImage(), x, y, {static_cast<unsigned char>(x + 16 * y)});
    }
    return pBuffer;
}

ImageViewTest::ImageViewTest()
    : m_pWnd(MakeImageWnd())
{
    m_objLog.Watch(*m_pWnd);
}

void ImageViewTest::TearDown()
{
    m_pWnd.Reset();
    Pump();
}

void ImageViewTest::ShowWindow()
{
    Show(*m_pWnd);
    ASSERT_TRUE(PumpUntil([this] { return Dialog().isVisible(); }));
}

KxApi::CDisplayImagePartDlg& ImageViewTest::Dialog() const
{
    return dynamic_cast<KxApi::CDisplayImagePartDlg&>(*WidgetOf(*m_pWnd));
}

KxApi::CDisplayImageWidget& ImageViewTest::Widget() const
{
    return *Dialog().findChild<KxApi::CDisplayImageWidget*>();
}

CDisplayImageScrollArea& ImageViewTest::ScrollArea() const
{
    return *Dialog().findChild<CDisplayImageScrollArea*>();
}

void ImageViewTest::SetAreaSize(int nWidth, int nHeight) const
{
    const QSize frame = Dialog().size() - ScrollArea().size();
    Dialog().resize(nWidth + frame.width(), nHeight + frame.height());
    Pump();
    ASSERT_EQ(ScrollArea().size(), QSize(nWidth, nHeight));
}

void ImageViewTest::ShowImage(KxApi::IKxImage* pImage) const
{
    m_pWnd->RegisterIKxImage(pImage);
    Refresh();
}

void ImageViewTest::Refresh() const
{
    Dialog().RefreshPreviewImage(true);
    Pump();
}

QRgb ImageViewTest::ShownAt(int x, int y) const { return Widget().grab().toImage().pixel(x, y) | 0xFF000000; }

QPoint ImageViewTest::ImagePixelAt(const QPoint& ptWidget) const
{
    QPoint pt = Widget().mapTo(&Dialog(), ptWidget);
    m_pWnd->ScreenToImage(&pt.rx(), &pt.ry());
    return pt;
}

QAction* ImageViewTest::FindAction(const QWidget& menu, const QString& strText)
{
    for (QAction* const pAction : menu.actions()) {
        if (pAction->text() == strText)
            return pAction;
        QAction* const pBelow = pAction->menu() ? FindAction(*pAction->menu(), strText) : nullptr;
        if (pBelow)
            return pBelow;
    }
    return nullptr;
}

QAction* ImageViewTest::Entry(const QString& strText) const
{
    return FindAction(*static_cast<KxApi::CBaseDialogEx&>(Dialog()).getMenu(), strText);
}

QStringList ImageViewTest::CheckedBeside(const QString& strText) const
{
    QStringList listChecked;
    for (const QAction* const pAction : Entry(strText)->associatedWidgets().first()->actions()) {
        if (pAction->isChecked())
            listChecked.append(pAction->text());
    }
    return listChecked;
}

void ImageViewTest::TurnWheel(const QPoint& ptWidget, int nDelta, bool bCtrl) const
{
    const QPoint ptGlobal = Widget().mapToGlobal(ptWidget);
    QCursor::setPos(ptGlobal);
    const Qt::KeyboardModifiers modifiers = bCtrl ? Qt::ControlModifier : Qt::NoModifier;
    QWindow* const pWindow = Dialog().windowHandle();
    // A key that is held down, as the platform knows it.
    if (bCtrl)
        QTest::keyPress(pWindow, Qt::Key_Control, modifiers);
    QWheelEvent event(ptWidget, ptGlobal, QPoint(), QPoint(0, nDelta), Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    // As the platform's events do, it goes on to the parents until one takes it.
    QWidget* pWidget = &Widget();
    do {
        QApplication::sendEvent(pWidget, &event);
        pWidget = pWidget->parentWidget();
    } while (!event.isAccepted() && pWidget);
    if (bCtrl)
        QTest::keyRelease(pWindow, Qt::Key_Control);
    Pump();
}

} // namespace KxTest
