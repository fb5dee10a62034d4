// SPDX-License-Identifier: Apache-2.0
// Painting, mouse, keys and wheel of the image widget.
#include "drawing/IKxDrawingToolInside.h"
#include "image/COverlayParam.h"
#include "image/DisplayImageScrollArea_qt.h"
#include "image/DisplayImageWidget_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "image/IDisplayImageWidgetParent.h"

#include <KxApi_TL/IKxImage.h>

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

namespace KxApi
{
namespace
{

/// The scroll area that the widget lies in, null when there is none.
CDisplayImageScrollArea* ScrollAreaOf(const QWidget& widget)
{
    QWidget* const pViewport = widget.parentWidget();
    return pViewport ? qobject_cast<CDisplayImageScrollArea*>(pViewport->parentWidget()) : nullptr;
}

} // namespace

CPaintGeometry CDisplayImageWidget::PaintedGeometry() const
{
    const GenICam::AutoLock lock(m_lockPaintGeometry);
    return m_objPaintGeometry;
}

void CDisplayImageWidget::ScreenToImage(int* pX, int* pY) const
{
    const QPoint ptImage = PaintedGeometry().ImagePixelAt({*pX, *pY});
    *pX = ptImage.x();
    *pY = ptImage.y();
}

QPoint CDisplayImageWidget::ScrollAreaPosition() const
{
    const CDisplayImageScrollArea* const pScrollArea = ScrollAreaOf(*this);
    return pScrollArea ? pScrollArea->pos() : QPoint();
}

QPoint CDisplayImageWidget::CursorInDialog() const { return m_pDialog->mapFromGlobal(QCursor::pos()); }

void CDisplayImageWidget::paintEvent(QPaintEvent* pEvent)
{
    Guarded([this] { Paint(); });
    QWidget::paintEvent(pEvent);
}

void CDisplayImageWidget::Paint()
{
    const GenICam::AutoLock lock(m_lockDisplayImages);
    const QRect rcVisible = VisibleRect();
    if (rcVisible.isEmpty())
        return;
    QPainter painter(this);
    if (m_vecDisplayImages.isEmpty() || rcVisible.width() <= 1 || rcVisible.height() <= 1) {
        PaintUncovered(painter, QRect());
        return;
    }
    // Callbacks may make this very list anew.
    const QImage picture = m_vecDisplayImages.first().first;
    IKxImage* const pImage = m_vecDisplayImages.first().second;
    QRect rcDisplay(QPoint(0, 0), picture.size());
    if (pImage)
        rcDisplay.setSize({ToDisplay(static_cast<int>(pImage->GetImageWidth()), m_dMagnification),
                           ToDisplay(static_cast<int>(pImage->GetImageHeight()), m_dMagnification)});
    painter.drawImage(rcDisplay, picture);
    PaintUncovered(painter, rcDisplay);
    if (!pImage)
        return;
    NotePaint(*pImage, rcVisible);
    RunOverlays(painter, *pImage, rcVisible, rcDisplay);
}

void CDisplayImageWidget::PaintUncovered(QPainter& painter, const QRect& rcCovered) const
{
    // The widget is opaque for Qt, so what the image leaves free would show what was there before.
    const QRegion rgUncovered = QRegion(rect()) - rcCovered;
    const CDisplayImageScrollArea* const pScrollArea = ScrollAreaOf(*this);
    if (rgUncovered.isEmpty() || !pScrollArea)
        return;
    painter.save();
    painter.setClipRegion(rgUncovered);
    painter.translate(-pos());
    pScrollArea->drawBackground(painter, rgUncovered.boundingRect().translated(pos()));
    painter.restore();
}

void CDisplayImageWidget::RunOverlays(QPainter& painter, IKxImage& image, const QRect& rcVisible,
                                      const QRect& rcDisplay)
{
    ICDisplayImageDlgParent* const pDlgParent = m_pParent ? m_pParent->GetICDisplayImageDlgParent() : nullptr;
    IKxImageDisplayWndInside* const pWnd = Window();
    if (!pDlgParent || !pWnd)
        return;
    COverlayParam::CValues values;
    values.pIKxWnd = pWnd;
    values.pIKxImage = &image;
    values.nROIOffsetX = rcVisible.left();
    values.nROIOffsetY = rcVisible.top();
    values.nROIWidth = static_cast<int>(image.GetImageWidth());
    values.nROIHeight = static_cast<int>(image.GetImageHeight());
    values.nDisplayWidth = rcDisplay.width();
    values.nDisplayHeight = rcDisplay.height();
    values.pDC = &painter;
    COverlayParam param(values);
    if (IKxDrawingToolInside* const pTool = pWnd->GetIKxDrawingToolInside()) {
        painter.save();
        Guarded([&] { pTool->OnDraw(&param); });
        painter.restore();
    }
    pDlgParent->RunOverlay(&param);
}

void CDisplayImageWidget::NotePaint(const IKxImage& image, const QRect& rcVisible)
{
    const QPoint ptScrollArea = ScrollAreaPosition();
    CPaintGeometry geometry;
    geometry.nImageOffsetX = ptScrollArea.x() + (rcVisible.left() == 0 ? x() : 0);
    geometry.nImageOffsetY = ptScrollArea.y() + (rcVisible.top() == 0 ? y() : 0);
    geometry.dScrollX = rcVisible.left();
    geometry.dScrollY = rcVisible.top();
    geometry.nImageWidth = image.GetImageWidth();
    geometry.nImageHeight = image.GetImageHeight();
    geometry.dMagnification = m_dMagnification;
    const GenICam::AutoLock lock(m_lockPaintGeometry);
    m_objPaintGeometry = geometry;
}

bool CDisplayImageWidget::OfferToMouseObservers(QMouseEvent* pEvent, MouseObserverCall call)
{
    bool bTaken = false;
    Guarded([&] {
        if (!m_pParent || m_pParent->getIKxMouseObserverList().empty())
            return;
        // Where the cursor is, which may be elsewhere than it was when the event arose.
        QPoint pt = PaintedGeometry().ImagePixelAt(CursorInDialog());
        if (m_dMagnification > 0)
            pt = {ToDisplay(pt.x(), m_dMagnification), ToDisplay(pt.y(), m_dMagnification)};
        const auto& vecObservers = m_pParent->getIKxMouseObserverList();
        bTaken =
            std::any_of(vecObservers.begin(), vecObservers.end(), [&](IKxMouseObserverInside* pObserver) {
                return call(*pObserver, this, pEvent, pt);
            });
    });
    return bTaken;
}

void CDisplayImageWidget::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!OfferToMouseObservers(pEvent,
                               [](IKxMouseObserverInside& observer, QWidget* pWidget, QMouseEvent* pMouse,
                                  QPoint pt) { return observer.mouseMoveEvent(pWidget, pMouse, pt); }))
        QWidget::mouseMoveEvent(pEvent);
}

void CDisplayImageWidget::mousePressEvent(QMouseEvent* pEvent)
{
    if (!OfferToMouseObservers(pEvent,
                               [](IKxMouseObserverInside& observer, QWidget* pWidget, QMouseEvent* pMouse,
                                  QPoint pt) { return observer.mousePressEvent(pWidget, pMouse, pt); }))
        QWidget::mousePressEvent(pEvent);
}

void CDisplayImageWidget::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (!OfferToMouseObservers(pEvent,
                               [](IKxMouseObserverInside& observer, QWidget* pWidget, QMouseEvent* pMouse,
                                  QPoint pt) { return observer.mouseReleaseEvent(pWidget, pMouse, pt); }))
        QWidget::mouseReleaseEvent(pEvent);
}

void CDisplayImageWidget::keyPressEvent(QKeyEvent* pEvent)
{
    bool bTaken = false;
    Guarded([&] {
        if (!m_pParent)
            return;
        const auto& vecObservers = m_pParent->getIKxKeyObserverList();
        bTaken = std::any_of(vecObservers.begin(), vecObservers.end(), [&](IKxKeyObserverInside* pObserver) {
            return pObserver->keyPressEvent(this, pEvent);
        });
    });
    if (!bTaken)
        QWidget::keyPressEvent(pEvent);
}

void CDisplayImageWidget::wheelEvent(QWheelEvent* pEvent)
{
    // Ignored in any case: without Ctrl the scroll area scrolls, with it that one ignores the event too.
    pEvent->ignore();
    if (!(QGuiApplication::queryKeyboardModifiers() & Qt::ControlModifier))
        return;
    const QPoint ptTurn = pEvent->angleDelta();
    const int nTurn = ptTurn.y() != 0 ? ptTurn.y() : ptTurn.x();
    Guarded([this, nTurn] {
        IKxImageDisplayWndInside* const pWnd = Window();
        if (pWnd && nTurn != 0 && pWnd->GetZoomMode() == KxZoomMode_FixedZoom)
            ZoomUnderCursor(*pWnd, nTurn > 0);
    });
}

void CDisplayImageWidget::ZoomUnderCursor(IKxImageDisplayWndInside& wnd, bool bEnlarge)
{
    const QPoint ptCursor = CursorInDialog();
    const QPoint ptImage = PaintedGeometry().ImagePixelAt(ptCursor);
    const double dMagnification = MagnificationAfterWheel(wnd.GetManualZoomMagnification(), bEnlarge);
    wnd.SetManualZoomMagnification(dMagnification);

    const QRect rcVisible = VisibleRect();
    const QPoint ptBorder =
        ScrollAreaPosition() + QPoint(rcVisible.left() == 0 ? x() : 0, rcVisible.top() == 0 ? y() : 0);
    const QPoint ptDistance = ptCursor - ptBorder;
    wnd.SetScrollHPosition(std::max(0, ScrollPosition(ptImage.x(), dMagnification, ptDistance.x())));
    wnd.SetScrollVPosition(std::max(0, ScrollPosition(ptImage.y(), dMagnification, ptDistance.y())));
    // The view is where it has to be.
    m_dMagnificationBefore = 0;
}

} // namespace KxApi
