// SPDX-License-Identifier: Apache-2.0
#include "graph/DisplayGraphPartDlg_qt.h"

#include "frame/ConnectGuarded_qt.h"
#include "graph/GraphSave_qt.h"
#include "graph/ICDisplayGraphDlgParent.h"
#include "ui_DisplayGraphPartDlg_qt.h"

#include <Base/GCException.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStandardPaths>
#include <new>

namespace KxApi
{

CDisplayGraphPartDlg::CDisplayGraphPartDlg(QWidget* pParent, IDlgParent* pDlgParent, bool bCreateMenuBar)
try : CBaseDialogEx(pParent, pDlgParent), m_pUi(std::make_unique<Ui_CDisplayGraphPartDlg>()),
    m_strLastImageFolder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)),
    m_strLastGraphFolder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
{
    m_pUi->setupUi(this);
    m_pUi->m_CDisplayGraphWidget->SetDialogParent(this);
    BuildMenus(bCreateMenuBar);
    ConnectScrollArea();
    BuildBars({m_pUi->widgetMenu, m_pUi->layoutMenuBar, m_pUi->widgetStatus, m_pUi->layoutStatusBar},
              bCreateMenuBar);
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CDisplayGraphPartDlg::~CDisplayGraphPartDlg()
{
    EndPart();
    m_pUi->m_CDisplayGraphWidget->TerminateTimer();
    m_pUi->m_CDisplayGraphWidget->SetIDisplayGraphWidgetParent(nullptr);
    m_pUi->m_CDisplayGraphWidget->SetDialogParent(nullptr);
}

ICDisplayGraphDlgParent* CDisplayGraphPartDlg::GetICDisplayGraphDlgParent() const
{
    return dynamic_cast<ICDisplayGraphDlgParent*>(m_pDlgParent);
}

IKxGraphDisplayWndInside* CDisplayGraphPartDlg::Window() const
{
    ICDisplayGraphDlgParent* const pDlgParent = GetICDisplayGraphDlgParent();
    return pDlgParent ? pDlgParent->GetIKxGraphDisplayWndInside() : nullptr;
}

void CDisplayGraphPartDlg::BuildMenus(bool bCreateMenuBar)
{
    const auto add = [this](QMenu& menu, const QString& strText, void (CDisplayGraphPartDlg::*method)()) {
        QAction* const pAction = menu.addAction(strText);
        ConnectGuarded(this, pAction, &QAction::triggered, [this, method] { (this->*method)(); });
        return pAction;
    };
    m_objMenuSave.setTitle(tr("&Save"));
    add(m_objMenuSave, tr("&Image file ..."), &CDisplayGraphPartDlg::doSaveImage);
    add(m_objMenuSave, tr("&Graph data file ..."), &CDisplayGraphPartDlg::doSaveGraph);

    m_objContextMenu.setTitle(tr("Context menu"));
    QAction* const pCopy = add(m_objContextMenu, tr("&Copy"), &CDisplayGraphPartDlg::doCopyToClipboard);
    m_objContextMenu.addMenu(&m_objMenuSave);
    setContextMenuPolicy(Qt::CustomContextMenu);
    ConnectGuarded(this, this, &QWidget::customContextMenuRequested,
                   [this](const QPoint& pos) { doShowContextMenu(pos); });
    if (!bCreateMenuBar)
        return;
    m_objMenuBar.addMenu(tr("&File"))->addMenu(&m_objMenuSave);
    m_objMenuBar.addMenu(tr("&Edit"))->addAction(pCopy);
    QMenu* const pView = m_objMenuBar.addMenu(tr("&View"));
    AddStatusBarAction(*pView);
    pView->actions().back()->setText(tr("Status Bar"));
}

void CDisplayGraphPartDlg::ConnectScrollArea()
{
    for (QScrollBar* const pBar :
         {m_pUi->scrollArea->horizontalScrollBar(), m_pUi->scrollArea->verticalScrollBar()})
    {
        ConnectGuarded(this, pBar, &QScrollBar::valueChanged, [this] { doNotifyScrollChanges(); });
        ConnectGuarded(this, pBar, &QScrollBar::rangeChanged, [this] { NoteScrollState(); });
    }
}

void CDisplayGraphPartDlg::OnUpdateGraphData() { m_pUi->m_CDisplayGraphWidget->OnUpdateGraphData(); }

void CDisplayGraphPartDlg::OnRefreshIntervalUpdated() { m_pUi->m_CDisplayGraphWidget->Initialize(); }

QSize CDisplayGraphPartDlg::RoomForPlot() const
{
    // What the viewport has when no scroll bar takes room of it, since a plot that fits needs none.
    return m_pUi->scrollArea->maximumViewportSize();
}

void CDisplayGraphPartDlg::OnUpdateDrawSetting()
{
    ICDisplayGraphDlgParent* const pDlgParent = GetICDisplayGraphDlgParent();
    if (!pDlgParent)
        return;
    CDisplayGraphWidget& widget = *m_pUi->m_CDisplayGraphWidget;
    if (m_bTranslucentRequested != m_bTranslucentApplied) {
        widget.setTranslucent(m_bTranslucentRequested);
        m_bTranslucentApplied = m_bTranslucentRequested;
    }
    CDrawGraphParam param;
    pDlgParent->GetCDrawGraphParam(param);
    const QSize wanted = param.bPlotSizeAuto ? RoomForPlot() : QSize(param.TotalWidth(), param.TotalHeight());
    if (widget.size() == wanted)
        widget.OnUpdateDrawSetting();
    else
        widget.OnWidgetSizeUpdated(wanted.width(), wanted.height());
    pDlgParent->OnScrollPosOrRangeChanged();
}

void CDisplayGraphPartDlg::initDialog()
{
    CDisplayGraphWidget& widget = *m_pUi->m_CDisplayGraphWidget;
    widget.SetIDisplayGraphWidgetParent(this);
    widget.Initialize();
    ShowBars();
    if (ICDisplayGraphDlgParent* const pDlgParent = GetICDisplayGraphDlgParent())
        m_bTranslucentRequested = pDlgParent->isTranslucent();
    OnUpdateDrawSetting();
    NoteScrollState();
}

void CDisplayGraphPartDlg::resizeEvent(QResizeEvent* pEvent)
{
    Guarded([this] {
        CDisplayGraphWidget& widget = *m_pUi->m_CDisplayGraphWidget;
        const IKxGraphDisplayWndInside* const pWnd = Window();
        if (pWnd && pWnd->GetPlotSizeAuto())
            widget.OnWidgetSizeUpdated(RoomForPlot().width(), RoomForPlot().height());
        widget.update();
    });
    CBaseDialogEx::resizeEvent(pEvent);
}

void CDisplayGraphPartDlg::setScrollBarH(int nPosition)
{
    m_pUi->scrollArea->horizontalScrollBar()->setValue(nPosition);
}

void CDisplayGraphPartDlg::setScrollBarV(int nPosition)
{
    m_pUi->scrollArea->verticalScrollBar()->setValue(nPosition);
}

void CDisplayGraphPartDlg::doNotifyScrollChanges()
{
    NoteScrollState();
    if (ICDisplayGraphDlgParent* const pDlgParent = GetICDisplayGraphDlgParent())
        pDlgParent->OnScrollPosOrRangeChanged();
}

void CDisplayGraphPartDlg::NoteScrollState()
{
    const QScrollBar& barH = *m_pUi->scrollArea->horizontalScrollBar();
    const QScrollBar& barV = *m_pUi->scrollArea->verticalScrollBar();
    if (ICDisplayGraphDlgParent* const pDlgParent = GetICDisplayGraphDlgParent())
        pDlgParent->OnScrollState(barH.value(), barH.maximum(), barV.value(), barV.maximum());
}

void CDisplayGraphPartDlg::doShowContextMenu(const QPoint& pos) { m_objContextMenu.exec(mapToGlobal(pos)); }

void CDisplayGraphPartDlg::doCopyToClipboard()
{
    QGuiApplication::clipboard()->setImage(m_pUi->m_CDisplayGraphWidget->grab().toImage());
}

void CDisplayGraphPartDlg::doSaveImage()
{
    IKxGraphDisplayWndInside* const pWnd = Window();
    if (!pWnd)
        return;
    const QPointer<CDisplayGraphPartDlg> pThis(this);
    const QString strFolder = SaveGraphImage(*pWnd, m_strLastImageFolder);
    if (pThis && !strFolder.isEmpty())
        m_strLastImageFolder = strFolder;
}

void CDisplayGraphPartDlg::doSaveGraph()
{
    const QPointer<CDisplayGraphPartDlg> pThis(this);
    const QString strFolder = SaveGraphData(
        [&pThis]() -> const IKxGraphDataBufferList* {
            ICDisplayGraphDlgParent* const pDlgParent = pThis ? pThis->GetICDisplayGraphDlgParent() : nullptr;
            return pDlgParent ? pDlgParent->GetGraphData(KxGraphDataIndex_Save, true) : nullptr;
        },
        m_strLastGraphFolder);
    if (pThis && !strFolder.isEmpty())
        m_strLastGraphFolder = strFolder;
}

} // namespace KxApi
