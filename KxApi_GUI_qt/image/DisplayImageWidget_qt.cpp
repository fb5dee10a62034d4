// SPDX-License-Identifier: Apache-2.0
#include "image/DisplayImageWidget_qt.h"

#include "drawing/IKxDrawingToolInside.h"
#include "image/COverlayParam.h"
#include "image/DisplayImageScrollArea_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "image/IDisplayImageWidgetParent.h"
#include "image/ScaledPainting_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QTimer>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>
#include <new>

namespace KxApi
{
namespace
{

using CMark = QScopedValueRollback<bool>;

bool IsMoreThanPixel(const QSize& size) { return size.width() > 1 || size.height() > 1; }

} // namespace

CDisplayImageWidget::CDisplayImageWidget(QWidget* pParent)
try : QWidget(pParent) {
    connect(this, &CDisplayImageWidget::onTimerUpdatedSignal, this, &CDisplayImageWidget::onTimerUpdatedSlot);
    connect(this, &CDisplayImageWidget::onImageUpdatedSignal, this, &CDisplayImageWidget::onImageUpdatedSlot);
    connect(this, &CDisplayImageWidget::onWidgetSizeUpdatedSignal, this,
            &CDisplayImageWidget::onWidgetSizeUpdatedSlot);
    connect(this, &CDisplayImageWidget::onDisplayUpdatedSignal, this,
            &CDisplayImageWidget::onDisplayUpdatedSlot);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CDisplayImageWidget::~CDisplayImageWidget()
{
    disconnect();
    TerminateTimer();
}

void CDisplayImageWidget::SetIDisplayImageWidgetParent(IDisplayImageWidgetParent* pParent)
{
    m_pParent = pParent;
    m_pDlgParent = pParent ? pParent->GetICDisplayImageDlgParent() : nullptr;
    m_pWnd = m_pDlgParent ? m_pDlgParent->GetIKxImageDisplayWndInside() : nullptr;
}

void CDisplayImageWidget::Initialize()
{
    m_bInitPending = true;
    emit onTimerUpdatedSignal();
}

void CDisplayImageWidget::OnImageUpdated(bool bNow)
{
    if (!bNow) {
        // Nothing to be queued, which a GUI thread that is busy for long would have to work off.
        m_bImagePending = true;
        return;
    }
    m_bRefreshNow = true;
    emit onImageUpdatedSignal();
}

void CDisplayImageWidget::OnWidgetSizeUpdated(int nWidth, int nHeight)
{
    emit onWidgetSizeUpdatedSignal(nWidth, nHeight);
}

void CDisplayImageWidget::TerminateTimer()
{
    if (m_nTimerId != 0)
        killTimer(m_nTimerId);
    m_nTimerId = 0;
    m_objShown.reset();
}

void CDisplayImageWidget::onTimerUpdatedSlot()
{
    Guarded([this] {
        if (m_pWnd)
            m_nTimerInterval = m_pWnd->GetRefreshInterval();
        if (m_nTimerId != 0)
            killTimer(m_nTimerId);
        m_nTimerId =
            startTimer(m_nTimerInterval == 0 ? 1 : static_cast<int>(m_nTimerInterval), Qt::CoarseTimer);
    });
}

void CDisplayImageWidget::onImageUpdatedSlot()
{
    if (m_bRefreshNow.exchange(false))
        doWorkViewer();
}

void CDisplayImageWidget::onWidgetSizeUpdatedSlot(int width, int height) { setFixedSize(width, height); }

void CDisplayImageWidget::onDisplayUpdatedSlot()
{
    const bool bResize = m_bSizeChanged || !IsMoreThanPixel(size());
    if (!m_pParent || !m_pDialog || !m_pDialog->isVisible() || !bResize) {
        if (m_bZooming)
            update();
        else
            repaint();
        return;
    }
    update();
    if (!m_bResizing) {
        FollowImageSize();
    } else if (!m_bResizeWaiting) {
        // One resize a turn of the event loop: each shows the newest image, whose size may differ again.
        m_bResizeWaiting = true;
        QTimer::singleShot(0, this, [this] {
            m_bResizeWaiting = false;
            FollowImageSize();
        });
    }
}

void CDisplayImageWidget::FollowImageSize()
{
    m_bSizeChanged = false;
    Guarded([this] {
        if (m_pParent)
            m_pParent->updateImageWidgetSize(m_bFit);
    });
}

void CDisplayImageWidget::timerEvent(QTimerEvent* pEvent)
{
    if (pEvent->timerId() != m_nTimerId)
        return;
    const bool bInit = m_bInitPending.exchange(false);
    if (bInit || m_bImagePending || m_dMagnification != m_dMagnificationBefore || m_bFit != m_bFitBefore)
        doWorkViewer();
}

void CDisplayImageWidget::resizeEvent(QResizeEvent* pEvent)
{
    const CMark resizing(m_bResizing, true);
    doWorkViewer();
    QWidget::resizeEvent(pEvent);
}

void CDisplayImageWidget::moveEvent(QMoveEvent* pEvent)
{
    // A message stays where it is, so what was painted must not be moved with the widget.
    if (!m_objShown || m_objShown->picture.IsNull())
        update();
    QWidget::moveEvent(pEvent);
}

void CDisplayImageWidget::doWorkViewer()
{
    // A callback of the application, or scrolling for a new magnification, can end up here again, while an
    // image is being worked on or painted that the next one would take the place of. That one waits.
    if (m_bMakingPicture || m_bPainting) {
        m_bImagePending = true;
        return;
    }
    m_bImagePending = false;
    if (!m_pWnd)
        return;
    Guarded([this] {
        {
            const CMark making(m_bMakingPicture, true);
            MakePicture();
        }
        emit onDisplayUpdatedSignal();
    });
}

void CDisplayImageWidget::MakePicture()
{
    const CImageViewSettings view = m_pDlgParent->GetViewSettings();
    m_bFitBefore = m_bFit;
    m_bFit = view.eZoomMode == KxZoomMode_FitToTheWindow;
    m_dMagnification = view.dMagnification;
    m_nStretchModeBefore = m_nStretchMode;
    m_nStretchMode = static_cast<int>(view.eStretchMode);

    // The picture that is shown may lie in an image that is taken out of use from here on.
    m_objShown.reset();
    CShown shown;
    shown.pImage = CurrentImage();
    shown.nPreview = m_pDlgParent->GetPreviewCount();
    if (shown.pImage) {
        const uint64_t nWidth = shown.pImage->GetImageWidth(), nHeight = shown.pImage->GetImageHeight();
        m_bSizeChanged |= nWidth != m_nImageWidth || nHeight != m_nImageHeight;
        m_nImageWidth = nWidth;
        m_nImageHeight = nHeight;
        shown.picture = m_objPictureMaker.Make(*shown.pImage, view.objColorMap);
        if (!shown.picture.IsNull())
            AdaptMagnification(shown.picture.image.width());
    }
    m_objShown = shown;
}

IKxImage* CDisplayImageWidget::CurrentImage() noexcept
{
    try {
        IKxImage* const pImage = m_pParent->GetImage();
        return pImage->GetImageWidth() != 0 && pImage->GetImageHeight() != 0 ? pImage : nullptr;
    } catch (...) {
        // The message in place of the image tells of it.
        return nullptr;
    }
}

void CDisplayImageWidget::AdaptMagnification(int nPictureWidth)
{
    if (m_bFit)
        m_dMagnification = static_cast<double>(width()) / nPictureWidth;
    const double dMagnification = m_dMagnification;
    if (dMagnification == 0 || dMagnification == m_dMagnificationBefore)
        return;
    const bool bFirst = m_dMagnificationBefore == 0;
    m_dMagnificationBefore = dMagnification;
    if (bFirst || m_bZooming)
        return;
    // What was in the middle stays there.
    const QRect rcVisible = VisibleRect();
    const QPoint ptHalfSize(rcVisible.width() / 2, rcVisible.height() / 2);
    const QPoint ptImage = PaintedGeometry().ImagePixelInCentre(ptHalfSize);
    m_pWnd->SetScrollHPosition(ScrollPosition(ptImage.x(), dMagnification, ptHalfSize.x()));
    m_pWnd->SetScrollVPosition(ScrollPosition(ptImage.y(), dMagnification, ptHalfSize.y()));
}

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
    return m_pScrollArea ? m_pScrollArea->pos() : QPoint();
}

QPoint CDisplayImageWidget::CursorInDialog() const { return m_pDialog->mapFromGlobal(QCursor::pos()); }

void CDisplayImageWidget::paintEvent(QPaintEvent* pEvent)
{
    Guarded([&] { Paint(pEvent->region()); });
    QWidget::paintEvent(pEvent);
}

void CDisplayImageWidget::Paint(const QRegion& rgExposed)
{
    if (m_objShown && m_pDlgParent && m_objShown->nPreview != m_pDlgParent->GetPreviewCount()) {
        // Another dialog of the window, beside which a refused close left this one open, took the next image.
        m_objShown.reset();
        m_bImagePending = true;
    }
    const CMark painting(m_bPainting, true);
    const QRect rcVisible = VisibleRect();
    if (rcVisible.isEmpty())
        return;
    QPainter painter(this);
    if (!m_objShown || rcVisible.width() <= 1 || rcVisible.height() <= 1) {
        PaintUncovered(painter, rect());
        return;
    }
    QRect rcDisplay = rect();
    if (IKxImage* const pImage = m_objShown->pImage)
        rcDisplay = {0, 0, ToDisplay(static_cast<int>(pImage->GetImageWidth()), m_dMagnification),
                     ToDisplay(static_cast<int>(pImage->GetImageHeight()), m_dMagnification)};
    if (m_objShown->picture.IsNull()) {
        // Within what is visible, however large the widget is.
        painter.fillRect(rcDisplay, Qt::white);
        painter.setPen(Qt::black);
        painter.drawText(rcVisible.topLeft() + QPointF(20.0, 20.0), tr("Could not convert/display."));
    } else {
        DrawScaled(painter, rcDisplay, m_objShown->picture, rgExposed);
    }
    PaintUncovered(painter, QRegion(rect()) - rcDisplay);
    if (!m_objShown->pImage)
        return;
    NotePaint(rcVisible);
    RunOverlays(painter, rcVisible, rcDisplay);
}

void CDisplayImageWidget::PaintUncovered(QPainter& painter, const QRegion& rgUncovered) const
{
    // The widget is opaque for Qt, so what the image leaves free would show what was there before.
    if (rgUncovered.isEmpty() || !m_pScrollArea)
        return;
    painter.save();
    painter.setClipRegion(rgUncovered);
    painter.translate(-pos());
    m_pScrollArea->drawBackground(painter, rgUncovered.boundingRect().translated(pos()));
    painter.restore();
}

void CDisplayImageWidget::RunOverlays(QPainter& painter, const QRect& rcVisible, const QRect& rcDisplay)
{
    if (!m_pWnd)
        return;
    COverlayParam::CValues values;
    values.pIKxWnd = m_pWnd;
    values.pIKxImage = m_objShown->pImage;
    values.pRegisteredIKxImage = m_pDlgParent->GetPreviewSource();
    values.nROIOffsetX = rcVisible.left();
    values.nROIOffsetY = rcVisible.top();
    values.nROIWidth = static_cast<int>(m_nImageWidth);
    values.nROIHeight = static_cast<int>(m_nImageHeight);
    values.nDisplayWidth = rcDisplay.width();
    values.nDisplayHeight = rcDisplay.height();
    values.pDC = &painter;
    COverlayParam param(values);
    if (IKxDrawingToolInside* const pTool = m_pWnd->GetIKxDrawingToolInside()) {
        painter.save();
        Guarded([&] { pTool->OnDraw(&param); });
        painter.restore();
    }
    m_pDlgParent->RunOverlay(&param);
}

void CDisplayImageWidget::NotePaint(const QRect& rcVisible)
{
    const QPoint ptScrollArea = ScrollAreaPosition();
    CPaintGeometry geometry;
    geometry.nImageOffsetX = ptScrollArea.x() + (rcVisible.left() == 0 ? x() : 0);
    geometry.nImageOffsetY = ptScrollArea.y() + (rcVisible.top() == 0 ? y() : 0);
    geometry.dScrollX = rcVisible.left();
    geometry.dScrollY = rcVisible.top();
    geometry.nImageWidth = m_nImageWidth;
    geometry.nImageHeight = m_nImageHeight;
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
        if (m_pWnd && nTurn != 0 && m_pWnd->GetZoomMode() == KxZoomMode_FixedZoom)
            ZoomUnderCursor(nTurn > 0);
    });
}

void CDisplayImageWidget::ZoomUnderCursor(bool bEnlarge)
{
    const QPoint ptCursor = CursorInDialog();
    const QPoint ptImage = PaintedGeometry().ImagePixelAt(ptCursor);
    const double dMagnification = MagnificationAfterWheel(m_pWnd->GetManualZoomMagnification(), bEnlarge);
    // The view moves once, to where it has to be, and is painted after that.
    const CMark zooming(m_bZooming, true);
    m_pWnd->SetManualZoomMagnification(dMagnification);

    const QRect rcVisible = VisibleRect();
    const QPoint ptBorder =
        ScrollAreaPosition() + QPoint(rcVisible.left() == 0 ? x() : 0, rcVisible.top() == 0 ? y() : 0);
    const QPoint ptDistance = ptCursor - ptBorder;
    m_pWnd->SetScrollHPosition(std::max(0, ScrollPosition(ptImage.x(), dMagnification, ptDistance.x())));
    m_pWnd->SetScrollVPosition(std::max(0, ScrollPosition(ptImage.y(), dMagnification, ptDistance.y())));
    if (m_dMagnification != dMagnification)
        m_dMagnificationBefore = 0; // the picture is still to be made, and is to leave the view alone
}

} // namespace KxApi
