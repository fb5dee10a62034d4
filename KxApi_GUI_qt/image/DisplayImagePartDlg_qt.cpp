// SPDX-License-Identifier: Apache-2.0
// The dialog between window and image widget; menus and drawing toolbar have files of their own.
#include "image/DisplayImagePartDlg_qt.h"

#include "frame/ConnectGuarded_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "ui_DisplayImagePartDlg_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxSDKCommon/KxAssert.h>

#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>
#include <iterator>
#include <new>

namespace KxApi
{
namespace
{

/// By _EKxBackgroundStyle_t.
constexpr Qt::BrushStyle kBrushStyles[] = {Qt::SolidPattern,    Qt::HorPattern,   Qt::VerPattern,
                                           Qt::FDiagPattern,    Qt::BDiagPattern, Qt::CrossPattern,
                                           Qt::DiagCrossPattern};

Qt::BrushStyle BrushStyleOf(_EKxBackgroundStyle_t eStyle)
{
    return eStyle < std::size(kBrushStyles) ? kBrushStyles[eStyle] : Qt::SolidPattern;
}

QColor ColorOf(uint32_t nPacked)
{
    return QColor(static_cast<int>(nPacked & 0xFF), static_cast<int>((nPacked >> 8) & 0xFF),
                  static_cast<int>((nPacked >> 16) & 0xFF));
}

/// What the fitted image leaves free of the area, each way.
constexpr int kFitMargin = 2;

} // namespace

CDisplayImagePartDlg::CDisplayImagePartDlg(QWidget* pParent, IDlgParent* pDlgParent, bool bCreateMenuBar)
try : CBaseDialogEx(pParent, pDlgParent),
    m_pImageDlgParent(dynamic_cast<ICDisplayImageDlgParent*>(pDlgParent)),
    m_pWnd(m_pImageDlgParent ? m_pImageDlgParent->GetIKxImageDisplayWndInside() : nullptr),
    m_pUi(std::make_unique<Ui_CDisplayImagePartDlg>())
{
    m_pUi->setupUi(this);
    m_pUi->m_CDisplayImageWidget->SetDialogParent(this);
    m_pUi->m_CDisplayImageWidget->SetScrollArea(m_pUi->scrollArea);
    BuildMenus(bCreateMenuBar);
    ConnectScrollArea();
    m_pUi->m_CDisplayImageWidget->OnWidgetSizeUpdated(1, 1);

    BuildBars({m_pUi->widgetMenu, m_pUi->layoutMenuBar, m_pUi->widgetStatus, m_pUi->layoutStatusBar},
              bCreateMenuBar);

    m_objDrawingToolBar.hide();
    m_pUi->verticalLayout_2->addWidget(&m_objDrawingToolBar);
    ConnectDrawingTool();
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CDisplayImagePartDlg::~CDisplayImagePartDlg()
{
    EndPart();
    m_pUi->m_CDisplayImageWidget->TerminateTimer();
    m_pUi->m_CDisplayImageWidget->SetIDisplayImageWidgetParent(nullptr);
    m_pUi->m_CDisplayImageWidget->SetDialogParent(nullptr);
}

bool CDisplayImagePartDlg::HasImage() const
{
    const IKxImageDisplayWndInside* const pWnd = Window();
    return pWnd && pWnd->HasImage();
}

IKxImage* CDisplayImagePartDlg::GetImage()
{
    KX_ASSERT(GetICDisplayImageDlgParent(), "GetICDisplayImageDlgParent()");
    IKxImageBufferReleasable* const pBuffer =
        HasImage() ? GetICDisplayImageDlgParent()->GetPreviewImage(false) : nullptr;
    if (!pBuffer)
        throw RUNTIME_EXCEPTION("There is no available image.");
    IKxImage* const pImage = pBuffer->GetIKxImage();
    m_nImageWidth = pImage->GetImageWidth();
    m_nImageHeight = pImage->GetImageHeight();
    return pImage;
}

void CDisplayImagePartDlg::RefreshPreviewImage(bool bNow)
{
    m_pUi->m_CDisplayImageWidget->OnImageUpdated(bNow);
}

void CDisplayImagePartDlg::UpdateRefreshInterval() { m_pUi->m_CDisplayImageWidget->Initialize(); }

void CDisplayImagePartDlg::ScreenToImage(int* pX, int* pY) const
{
    m_pUi->m_CDisplayImageWidget->ScreenToImage(pX, pY);
}

void CDisplayImagePartDlg::RefreshBackground()
{
    InGuiThread([this] {
        const IKxImageDisplayWndInside* const pWnd = Window();
        if (!pWnd)
            return;
        CDisplayImageScrollArea& scrollArea = *m_pUi->scrollArea;
        scrollArea.setBackgroundColor(ColorOf(pWnd->GetBackgroundColor()));
        scrollArea.setBrushColor(ColorOf(pWnd->GetForegroundColor()));
        scrollArea.setBrushStyle(BrushStyleOf(pWnd->GetBackgroundStyle()));
        scrollArea.update();
        scrollArea.viewport()->update();
    });
}

bool CDisplayImagePartDlg::IsFitMode() const
{
    const IKxImageDisplayWndInside* const pWnd = Window();
    return pWnd && pWnd->GetZoomMode() == KxZoomMode_FitToTheWindow;
}

bool CDisplayImagePartDlg::updateImageWidgetSize(bool bFit)
{
    if (!GetICDisplayImageDlgParent() || m_nImageWidth == 0 || m_nImageHeight == 0)
        return false;
    InGuiThread([this, bFit] {
        try {
            ResizeImageWidget(bFit);
            GetICDisplayImageDlgParent()->OnScrollPosOrRangeChanged();
        } catch (...) {
            QWidget& widget = *m_pUi->m_CDisplayImageWidget;
            widget.resize(widget.parentWidget()->size());
        }
    });
    return true;
}

void CDisplayImagePartDlg::ResizeImageWidget(bool bFit)
{
    const auto dWidth = static_cast<double>(m_nImageWidth.load());
    const auto dHeight = static_cast<double>(m_nImageHeight.load());
    CDisplayImageWidget& widget = *m_pUi->m_CDisplayImageWidget;
    if (bFit) {
        const int nFreeWidth = std::max(0, m_pUi->scrollArea->width() - kFitMargin);
        const int nFreeHeight = std::max(0, m_pUi->scrollArea->height() - kFitMargin);
        const double dScaleX = nFreeWidth / dWidth;
        const double dScaleY = nFreeHeight / dHeight;
        if (dScaleX < dScaleY)
            widget.OnWidgetSizeUpdated(nFreeWidth, static_cast<int>(dHeight * dScaleX));
        else
            widget.OnWidgetSizeUpdated(static_cast<int>(dWidth * dScaleY), nFreeHeight);
    } else if (!IsFitMode()) {
        const double dMagnification = Window()->GetManualZoomMagnification();
        widget.OnWidgetSizeUpdated(static_cast<int>(dWidth * dMagnification),
                                   static_cast<int>(dHeight * dMagnification));
    }
}

void CDisplayImagePartDlg::ConnectScrollArea()
{
    ConnectGuarded(this, m_pUi->scrollArea, &CDisplayImageScrollArea::on_resize, [this] { SizeToFit(); });
    for (QScrollBar* const pBar :
         {m_pUi->scrollArea->horizontalScrollBar(), m_pUi->scrollArea->verticalScrollBar()})
    {
        ConnectGuarded(this, pBar, &QScrollBar::valueChanged, [this] { doNotifyScrollChanges(); });
        ConnectGuarded(this, pBar, &QScrollBar::rangeChanged, [this] { NoteScrollState(); });
    }
}

void CDisplayImagePartDlg::SizeToFit()
{
    if (Window())
        updateImageWidgetSize(IsFitMode());
    update();
}

void CDisplayImagePartDlg::doNotifyScrollChanges()
{
    NoteScrollState();
    if (ICDisplayImageDlgParent* const pDlgParent = GetICDisplayImageDlgParent())
        pDlgParent->OnScrollPosOrRangeChanged();
}

void CDisplayImagePartDlg::NoteScrollState()
{
    const QScrollBar& barH = *m_pUi->scrollArea->horizontalScrollBar();
    const QScrollBar& barV = *m_pUi->scrollArea->verticalScrollBar();
    if (ICDisplayImageDlgParent* const pDlgParent = GetICDisplayImageDlgParent())
        pDlgParent->OnScrollState(barH.value(), barH.maximum(), barV.value(), barV.maximum());
}

void CDisplayImagePartDlg::setScrollBarH(int nPosition)
{
    m_pUi->scrollArea->horizontalScrollBar()->setValue(nPosition);
}

void CDisplayImagePartDlg::setScrollBarV(int nPosition)
{
    m_pUi->scrollArea->verticalScrollBar()->setValue(nPosition);
}

void CDisplayImagePartDlg::initDialog()
{
    m_bShown = true;
    CDisplayImageWidget& widget = *m_pUi->m_CDisplayImageWidget;
    RefreshBackground();
    widget.SetIDisplayImageWidgetParent(this);
    widget.Initialize();
    ShowConverterSettings();
    updateMenuZoom(IsFitMode());
    ShowBars();
    updateImageWidgetSize(IsFitMode());
    doNotifyScrollChanges();
    PostVisibleDrawingToolBarUpdated();
}

void CDisplayImagePartDlg::hideEvent(QHideEvent* pEvent)
{
    m_bShown = false;
    CBaseDialogEx::hideEvent(pEvent);
}

void CDisplayImagePartDlg::resizeEvent(QResizeEvent* pEvent)
{
    Guarded([this] { SizeToFit(); });
    CBaseDialogEx::resizeEvent(pEvent);
}

} // namespace KxApi
