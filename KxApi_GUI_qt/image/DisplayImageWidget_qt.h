// SPDX-License-Identifier: Apache-2.0
// The widget that shows the live image.
#pragma once

#include "frame/BaseDialog_qt.h"
#include "image/PaintGeometry.h"
#include "image/PreviewPicture_qt.h"

#include <Base/GCSynch.h>

#include <QPoint>
#include <QWidget>
#include <atomic>
#include <cstdint>
#include <optional>
#include <utility>

class CDisplayImageScrollArea;
class QRegion;

namespace KxApi
{

struct ICDisplayImageDlgParent;
struct IDisplayImageWidgetParent;
struct IKxImage;
struct IKxImageDisplayWndInside;
struct IKxMouseObserverInside;

/// Shows the newest preview image, magnified, and lets the drawing tool and the application paint over it.
///
/// Images of the camera wait for the next tick of a timer, so that the display sets the pace and not the
/// camera; a changed setting shows at once. All the work is done in doWorkViewer and paintEvent, in the GUI
/// thread alone: what other threads need is noted in m_objPaintGeometry and the flags.
class CDisplayImageWidget : public QWidget
{
    Q_OBJECT

public:
    /// Raises BadAllocException.
    explicit CDisplayImageWidget(QWidget* pParent = nullptr);
    CDisplayImageWidget(const CDisplayImageWidget&) = delete;
    CDisplayImageWidget& operator=(const CDisplayImageWidget&) = delete;
    ~CDisplayImageWidget() override;

    /// Null, or alive as long as they are set. GUI thread.
    void SetIDisplayImageWidgetParent(IDisplayImageWidgetParent* pParent);
    void SetDialogParent(CBaseDialogEx* pDialog) { m_pDialog = pDialog; }
    /// The area that the widget lies in, which paints what the image leaves free.
    void SetScrollArea(const CDisplayImageScrollArea* pScrollArea) { m_pScrollArea = pScrollArea; }

    /// Starts the timer with the window's refresh interval, and has the image made at its next tick. Any
    /// thread.
    void Initialize();

    /// There is a new image; it is shown at the next tick. With `bNow` a setting changed, and the image is
    /// made anew as soon as the GUI thread comes to it. Any thread.
    void OnImageUpdated(bool bNow);

    /// Asks for a new size of the widget. Any thread.
    void OnWidgetSizeUpdated(int nWidth, int nHeight);

    /// Turns a place in the dialog into the nearest image pixel; -1, -1 before the first paint. Any thread.
    void ScreenToImage(int* pX, int* pY) const;

    /// Ends the timer and lets the image go, which the window may destroy afterwards. GUI thread.
    void TerminateTimer();

signals:
    void onTimerUpdatedSignal();
    void onImageUpdatedSignal();
    void onWidgetSizeUpdatedSignal(int width, int height);
    void onDisplayUpdatedSignal();

private slots:
    void onTimerUpdatedSlot();
    void onImageUpdatedSlot();
    void onWidgetSizeUpdatedSlot(int width, int height);
    void onDisplayUpdatedSlot();

protected:
    void timerEvent(QTimerEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void moveEvent(QMoveEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;

private:
    using MouseObserverCall = bool (*)(IKxMouseObserverInside&, QWidget*, QMouseEvent*, QPoint);

    template <class Function>
    void Guarded(Function&& function) noexcept
    {
        if (m_pDialog)
            m_pDialog->Guarded(std::forward<Function>(function));
    }
    CPaintGeometry PaintedGeometry() const;
    QRect VisibleRect() const { return visibleRegion().boundingRect(); }
    QPoint ScrollAreaPosition() const;
    QPoint CursorInDialog() const;

    void doWorkViewer();
    void FollowImageSize();
    void MakePicture();
    IKxImage* CurrentImage() noexcept;
    void AdaptMagnification(int nPictureWidth);

    void Paint(const QRegion& rgExposed);
    void PaintUncovered(QPainter& painter, const QRegion& rgUncovered) const;
    void RunOverlays(QPainter& painter, const QRect& rcVisible, const QRect& rcDisplay);
    void NotePaint(const QRect& rcVisible);

    bool OfferToMouseObservers(QMouseEvent* pEvent, MouseObserverCall call);
    void ZoomUnderCursor(bool bEnlarge);

    CPaintGeometry m_objPaintGeometry KXGC_GUARDED_BY(m_lockPaintGeometry);
    mutable GenICam::CLock m_lockPaintGeometry; // taken last

    IDisplayImageWidgetParent* m_pParent = nullptr;
    ICDisplayImageDlgParent* m_pDlgParent = nullptr; // of m_pParent, as the window
    IKxImageDisplayWndInside* m_pWnd = nullptr;
    CBaseDialogEx* m_pDialog = nullptr;
    const CDisplayImageScrollArea* m_pScrollArea = nullptr;

    int m_nTimerId = 0; // 0: no timer
    unsigned int m_nTimerInterval = 33;
    std::atomic<bool> m_bImagePending{false}; // wait for the next tick
    std::atomic<bool> m_bInitPending{true};   // work at the next tick, image or not
    std::atomic<bool> m_bRefreshNow{false};   // don't wait
    // What is going on, so that nothing happens within itself.
    bool m_bMakingPicture = false;
    bool m_bPainting = false;
    bool m_bResizing = false;
    bool m_bResizeWaiting = false;
    bool m_bZooming = false; // under the cursor, where the view is set afterwards

    bool m_bFit = false;
    bool m_bFitBefore = false;
    double m_dMagnification = 0;       // in force
    double m_dMagnificationBefore = 0; // scrolled for; 0: for none
    int m_nStretchMode = 1;
    int m_nStretchModeBefore = 1;
    uint64_t m_nImageWidth = 0;
    uint64_t m_nImageHeight = 0;
    bool m_bSizeChanged = false; // the widget has to follow the image

    CPreviewPictureMaker m_objPictureMaker;
    /// What paint shows. An image without a picture, or nothing at all, is told by a message.
    struct CShown
    {
        CPreviewPicture picture;
        IKxImage* pImage = nullptr;
        uint64_t nPreview = 0; // of the window's previews
    };
    std::optional<CShown> m_objShown;
};

} // namespace KxApi
