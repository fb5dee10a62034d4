// SPDX-License-Identifier: Apache-2.0
#include "image/DisplayImagePartDlg_qt.h"

#include "frame/ConnectGuarded_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "ui_DisplayImagePartDlg_qt.h"

#include <Base/GCException.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
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
    if (bCreateMenuBar)
        AddStatusBarAction(m_objMenus.AddTo(m_objMenuBar));
    ConnectMenus();
    ConnectScrollArea();
    m_pUi->m_CDisplayImageWidget->OnWidgetSizeUpdated(1, 1);

    BuildBars({m_pUi->widgetMenu, m_pUi->layoutMenuBar, m_pUi->widgetStatus, m_pUi->layoutStatusBar},
              bCreateMenuBar);

    m_objDrawingTool.ToolBar().hide();
    m_pUi->verticalLayout_2->addWidget(&m_objDrawingTool.ToolBar());
    ConnectDrawingTool();
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CDisplayImagePartDlg::~CDisplayImagePartDlg()
{
    EndPart();
    onClosed();
    m_pUi->m_CDisplayImageWidget->SetDialogParent(nullptr);
}

void CDisplayImagePartDlg::onClosed()
{
    // The next dialog of the window shows the images from here on, while this one waits to be destroyed.
    m_pUi->m_CDisplayImageWidget->TerminateTimer();
    m_pUi->m_CDisplayImageWidget->SetIDisplayImageWidgetParent(nullptr);
}

bool CDisplayImagePartDlg::HasImage() const { return m_pWnd && m_pWnd->HasImage(); }

IKxImage* CDisplayImagePartDlg::GetImage()
{
    KX_ASSERT(GetICDisplayImageDlgParent(), "GetICDisplayImageDlgParent()");
    IKxImageBufferReleasable* const pBuffer =
        HasImage() ? m_pImageDlgParent->GetPreviewImage(false) : nullptr;
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
    if (!m_pWnd)
        return;
    CDisplayImageScrollArea& scrollArea = *m_pUi->scrollArea;
    scrollArea.setBackgroundColor(ColorOf(m_pWnd->GetBackgroundColor()));
    scrollArea.setBrushColor(ColorOf(m_pWnd->GetForegroundColor()));
    scrollArea.setBrushStyle(BrushStyleOf(m_pWnd->GetBackgroundStyle()));
    scrollArea.update();
    scrollArea.viewport()->update();
}

bool CDisplayImagePartDlg::IsFitMode() const
{
    return m_pWnd && m_pWnd->GetZoomMode() == KxZoomMode_FitToTheWindow;
}

bool CDisplayImagePartDlg::updateImageWidgetSize(bool bFit)
{
    if (!m_pImageDlgParent || m_nImageWidth == 0 || m_nImageHeight == 0)
        return false;
    try {
        ResizeImageWidget(bFit);
        m_pImageDlgParent->OnScrollPosOrRangeChanged();
    } catch (...) {
        QWidget& widget = *m_pUi->m_CDisplayImageWidget;
        widget.resize(widget.parentWidget()->size());
    }
    return true;
}

void CDisplayImagePartDlg::ResizeImageWidget(bool bFit)
{
    const auto dWidth = static_cast<double>(m_nImageWidth);
    const auto dHeight = static_cast<double>(m_nImageHeight);
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
        const double dMagnification = m_pWnd->GetManualZoomMagnification();
        widget.OnWidgetSizeUpdated(static_cast<int>(dWidth * dMagnification),
                                   static_cast<int>(dHeight * dMagnification));
    }
}

void CDisplayImagePartDlg::ConnectMenus()
{
    setContextMenuPolicy(Qt::CustomContextMenu);
    ConnectGuarded(this, this, &QWidget::customContextMenuRequested,
                   [this](const QPoint& pos) { OnContextMenu(pos); });
    if (!m_pWnd)
        return;
    ConnectGuarded(this, &m_objMenus, &CImageMenus::saveChosen,
                   [this](bool bPreview) { m_pImageDlgParent->SaveImage(bPreview); });
    ConnectGuarded(this, &m_objMenus, &CImageMenus::fitChosen,
                   [this] { m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow); });
    ConnectGuarded(this, &m_objMenus, &CImageMenus::magnificationChosen, [this](double dMagnification) {
        m_pWnd->SetZoomMode(KxZoomMode_FixedZoom);
        m_pWnd->SetManualZoomMagnification(dMagnification);
        updateMenuZoom(false); // though it may be the magnification that there was
    });
    ConnectGuarded(this, &m_objMenus, &CImageMenus::bayerMethodChosen, [this](int nMethod) {
        m_pWnd->GetIKxPixelFormatConverter()->SetBayerInterpolationMethod(
            static_cast<EKxBayerInterpolationMethod_t>(nMethod));
    });
    ConnectGuarded(this, &m_objMenus, &CImageMenus::reverseYChosen,
                   [this](bool bReverseY) { m_pWnd->GetIKxPixelFormatConverter()->SetReverseY(bReverseY); });
}

void CDisplayImagePartDlg::OnContextMenu(const QPoint& pos)
{
    const QPoint ptGlobal = mapToGlobal(pos);
    if (!m_objDrawingTool.OfferRightClick(ptGlobal))
        m_objMenus.ContextMenu().exec(ptGlobal);
}

void CDisplayImagePartDlg::updateMenuZoom(bool bFit)
{
    if (bFit)
        m_objMenus.ShowFit();
    else if (m_pWnd)
        m_objMenus.ShowMagnification(m_pWnd->GetManualZoomMagnification());
}

void CDisplayImagePartDlg::updateMenuBayerInterpolation(EKxBayerInterpolationMethod_t eMethod)
{
    m_objMenus.ShowBayerMethod(static_cast<int>(eMethod));
}

void CDisplayImagePartDlg::updateMenuReverseY(bool bReverseY) { m_objMenus.ShowReverseY(bReverseY); }

void CDisplayImagePartDlg::ConnectDrawingTool()
{
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDrawingToolBarSignal,
                   [this] { onDrawingToolBarSlot(); });
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDrawingItemChangedSignal,
                   [this] { m_objDrawingTool.ShowSettings(); });
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDisplayGridCountHSignal,
                   [this] { m_objDrawingTool.ShowGridCount(true); });
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDisplayGridCountVSignal,
                   [this] { m_objDrawingTool.ShowGridCount(false); });
    IKxDrawingToolInside* const pTool = m_pWnd ? m_pWnd->GetIKxDrawingToolInside() : nullptr;
    // The nodes call in any thread; the signals bring it here.
    m_objDrawingTool.Connect(*this, *m_pUi->m_CDisplayImageWidget, pTool,
                             pTool ? m_pWnd->GetINodeMap() : nullptr, [this](bool bHorizontal) {
                                 if (bHorizontal)
                                     emit onDisplayGridCountHSignal();
                                 else
                                     emit onDisplayGridCountVSignal();
                             });
    if (!pTool)
        return;
    m_vecMouseObservers.push_back(pTool);
    m_vecKeyObservers.push_back(pTool);
}

void CDisplayImagePartDlg::PostVisibleDrawingToolBarUpdated() { emit onDrawingToolBarSignal(); }

void CDisplayImagePartDlg::updateDrawingToolBar() { emit onDrawingItemChangedSignal(); }

void CDisplayImagePartDlg::updateDrawingObject() { RefreshPreviewImage(true); }

void CDisplayImagePartDlg::onDrawingToolBarSlot()
{
    if (!m_pWnd)
        return;
    m_objDrawingTool.ToolBar().setVisible(m_pWnd->GetBuiltInDrawingToolbar());
    if (isVisible()) {
        updateImageWidgetSize(IsFitMode());
        m_objDrawingTool.ShowSettings();
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
    if (m_pWnd)
        updateImageWidgetSize(IsFitMode());
    update();
}

void CDisplayImagePartDlg::doNotifyScrollChanges()
{
    NoteScrollState();
    if (m_pImageDlgParent)
        m_pImageDlgParent->OnScrollPosOrRangeChanged();
}

void CDisplayImagePartDlg::NoteScrollState()
{
    const QScrollBar& barH = *m_pUi->scrollArea->horizontalScrollBar();
    const QScrollBar& barV = *m_pUi->scrollArea->verticalScrollBar();
    if (m_pImageDlgParent)
        m_pImageDlgParent->OnScrollState(barH.value(), barH.maximum(), barV.value(), barV.maximum());
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
    CDisplayImageWidget& widget = *m_pUi->m_CDisplayImageWidget;
    RefreshBackground();
    widget.SetIDisplayImageWidgetParent(this);
    widget.Initialize();
    if (m_pWnd) {
        const IKxPixelFormatConverter& converter = *m_pWnd->GetIKxPixelFormatConverter();
        updateMenuBayerInterpolation(converter.GetBayerInterpolationMethod());
        updateMenuReverseY(converter.GetReverseY());
    }
    updateMenuZoom(IsFitMode());
    ShowBars();
    updateImageWidgetSize(IsFitMode());
    doNotifyScrollChanges();
    PostVisibleDrawingToolBarUpdated();
}

void CDisplayImagePartDlg::resizeEvent(QResizeEvent* pEvent)
{
    Guarded([this] { SizeToFit(); });
    CBaseDialogEx::resizeEvent(pEvent);
}

} // namespace KxApi
