// SPDX-License-Identifier: Apache-2.0
// Making the picture, and the timer that sets the pace; painting and input are in
// DisplayImageWidgetEvents_qt.cpp.
#include "image/DisplayImageWidget_qt.h"

#include "image/ICDisplayImageDlgParent.h"
#include "image/IDisplayImageWidgetParent.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>

#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QTimerEvent>
#include <new>

namespace KxApi
{
namespace
{

bool IsMoreThanPixel(const QSize& size) { return size.width() > 1 || size.height() > 1; }

QImage MessagePicture(const QSize& size, const QString& strText)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    painter.drawText(QPointF(20.0, 20.0), strText);
    painter.end();
    return pixmap.toImage();
}

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

IKxImageDisplayWndInside* CDisplayImageWidget::Window() const
{
    ICDisplayImageDlgParent* const pDlgParent = m_pParent ? m_pParent->GetICDisplayImageDlgParent() : nullptr;
    return pDlgParent ? pDlgParent->GetIKxImageDisplayWndInside() : nullptr;
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
    const GenICam::AutoLock lock(m_lockDisplayImages);
    m_vecDisplayImages.clear();
}

void CDisplayImageWidget::onTimerUpdatedSlot()
{
    Guarded([this] {
        if (const IKxImageDisplayWndInside* const pWnd = Window())
            m_nTimerInterval = pWnd->GetRefreshInterval();
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
        repaint();
        return;
    }
    update();
    // One resize a turn of the event loop: each shows the newest image, whose size may differ again.
    if (m_bResizing)
        QTimer::singleShot(0, this, [this] { FollowImageSize(); });
    else
        FollowImageSize();
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
    m_bResizing = true;
    doWorkViewer();
    m_bResizing = false;
    QWidget::resizeEvent(pEvent);
}

void CDisplayImageWidget::doWorkViewer()
{
    // Scrolling for a new magnification can end up here again, while the picture is being made of an image
    // that the next one would take the place of.
    if (m_bMakingPicture) {
        m_bImagePending = true;
        return;
    }
    m_bImagePending = false;
    Guarded([this] {
        IKxImageDisplayWndInside* const pWnd = Window();
        if (!pWnd)
            return;
        const GenICam::AutoLock lock(m_lockDisplayImages);
        m_bMakingPicture = true;
        try {
            MakePicture(*pWnd);
        } catch (...) {
            m_bMakingPicture = false;
            throw;
        }
        m_bMakingPicture = false;
        emit onDisplayUpdatedSignal();
    });
}

void CDisplayImageWidget::MakePicture(IKxImageDisplayWndInside& wnd)
{
    m_bFitBefore = m_bFit;
    m_bFit = wnd.GetZoomMode() == KxZoomMode_FitToTheWindow;
    m_dMagnification = wnd.GetManualZoomMagnification();
    m_nStretchModeBefore = m_nStretchMode;
    m_nStretchMode = static_cast<int>(wnd.GetStretchMode());

    // The picture that is shown may lie in an image that is taken out of use from here on.
    const GenICam::AutoLock lock(m_lockDisplayImages);
    m_vecDisplayImages.clear();
    IKxImage* const pImage = CurrentImage();
    QImage picture;
    if (pImage) {
        if (pImage->GetImageWidth() != m_nImageWidth || pImage->GetImageHeight() != m_nImageHeight) {
            m_nImageWidth = pImage->GetImageWidth();
            m_nImageHeight = pImage->GetImageHeight();
            m_bSizeChanged = true;
        }
        picture = m_objPictureMaker.Make(
            *pImage, {wnd.GetColorMapType(), wnd.GetColorMapInversion(), wnd.GetColorMapPhase()});
        if (!picture.isNull())
            AdaptMagnification(wnd, picture.width());
    }
    if (picture.isNull() && IsMoreThanPixel(size()))
        picture = MessagePicture(size(), tr("Could not convert/display."));
    m_vecDisplayImages.append({picture, pImage});
}

IKxImage* CDisplayImageWidget::CurrentImage() noexcept
{
    try {
        if (!m_pParent->HasImage())
            return nullptr;
        IKxImage* const pImage = m_pParent->GetImage();
        return pImage->GetImageWidth() != 0 && pImage->GetImageHeight() != 0 ? pImage : nullptr;
    } catch (...) {
        // The message in place of the image tells of it.
        return nullptr;
    }
}

void CDisplayImageWidget::AdaptMagnification(IKxImageDisplayWndInside& wnd, int nPictureWidth)
{
    if (m_bFit)
        m_dMagnification = static_cast<double>(width()) / nPictureWidth;
    const double dMagnification = m_dMagnification;
    if (dMagnification == 0 || dMagnification == m_dMagnificationBefore)
        return;
    const bool bFirst = m_dMagnificationBefore == 0;
    m_dMagnificationBefore = dMagnification;
    if (bFirst)
        return;
    // What was in the middle stays there.
    const QRect rcVisible = VisibleRect();
    const QPoint ptHalfSize(rcVisible.width() / 2, rcVisible.height() / 2);
    const QPoint ptImage = PaintedGeometry().ImagePixelInCentre(ptHalfSize);
    wnd.SetScrollHPosition(ScrollPosition(ptImage.x(), dMagnification, ptHalfSize.x()));
    wnd.SetScrollVPosition(ScrollPosition(ptImage.y(), dMagnification, ptHalfSize.y()));
}

} // namespace KxApi
