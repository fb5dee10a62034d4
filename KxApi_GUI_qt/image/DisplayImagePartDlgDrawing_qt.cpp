// SPDX-License-Identifier: Apache-2.0
// The image dialog and the tool for drawing over the image.
#include "frame/ConnectGuarded_qt.h"
#include "image/DisplayImagePartDlg_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "ui_DisplayImagePartDlg_qt.h"

#include <GenApi/INodeMap.h>

#include <QMouseEvent>

namespace KxApi
{

IKxDrawingToolInside* CDisplayImagePartDlg::DrawingTool() const
{
    IKxImageDisplayWndInside* const pWnd = Window();
    return pWnd ? pWnd->GetIKxDrawingToolInside() : nullptr;
}

void CDisplayImagePartDlg::ConnectDrawingTool()
{
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDrawingToolBarSignal,
                   [this] { onDrawingToolBarSlot(); });
    IKxDrawingToolInside* const pTool = DrawingTool();
    m_objDrawingToolBar.setEnabled(pTool != nullptr);
    if (!pTool)
        return;
    ConnectGuarded(this, &m_objDrawingToolBar, &CDrawingToolBar::itemTriggered,
                   [this](int nItemType) { onDrawingToolBarTriggered(nItemType); });
    ConnectGuarded(this, &m_objDrawingToolBar, &CDrawingToolBar::gridCountChosen,
                   [this](bool bHorizontal, int nCount) { onDrawingGridTriggered(bHorizontal, nCount); });
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDrawingItemChangedSignal,
                   [this] { onDrawingItemChangedSlot(); });
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDisplayGridCountHSignal,
                   [this] { setSelGridCount(true); });
    ConnectGuarded(this, this, &CDisplayImagePartDlg::onDisplayGridCountVSignal,
                   [this] { setSelGridCount(false); });
    m_vecMouseObservers.push_back(pTool);
    m_vecKeyObservers.push_back(pTool);
    m_objGridCountHCallback = WatchGridLineCount("HorizontalGridLineCount", true);
    m_objGridCountVCallback = WatchGridLineCount("VerticalGridLineCount", false);
}

CNodeCallbackHandle CDisplayImagePartDlg::WatchGridLineCount(const char* szNode, bool bHorizontal)
{
    GenApi::INodeMap* const pNodeMap = Window()->GetINodeMap();
    GenApi::INode* const pNode = pNodeMap ? pNodeMap->GetNode(szNode) : nullptr;
    if (!pNode)
        return CNodeCallbackHandle();
    // A change may come in any thread; the signal brings it here.
    return CNodeCallbackHandle(GenApi::Register(pNode, [this, bHorizontal](GenApi::INode*) {
        if (bHorizontal)
            emit onDisplayGridCountHSignal();
        else
            emit onDisplayGridCountVSignal();
    }));
}

void CDisplayImagePartDlg::PostVisibleDrawingToolBarUpdated() { emit onDrawingToolBarSignal(); }

void CDisplayImagePartDlg::updateDrawingToolBar() { emit onDrawingItemChangedSignal(); }

void CDisplayImagePartDlg::updateDrawingObject() { RefreshPreviewImage(true); }

void CDisplayImagePartDlg::onDrawingToolBarTriggered(int nIndex)
{
    DrawingTool()->SetDrawingItemType(static_cast<_EKxDrawingItemType_t>(nIndex));
    if (nIndex == KxDrawingItemType_None)
        m_pUi->m_CDisplayImageWidget->setCursor(Qt::ArrowCursor);
}

void CDisplayImagePartDlg::onDrawingGridTriggered(bool bHorizontal, int nCount)
{
    if (bHorizontal)
        DrawingTool()->SetGridHLineCount(static_cast<unsigned int>(nCount));
    else
        DrawingTool()->SetGridVLineCount(static_cast<unsigned int>(nCount));
}

void CDisplayImagePartDlg::onDrawingToolBarSlot()
{
    const IKxImageDisplayWndInside* const pWnd = Window();
    if (!pWnd)
        return;
    m_objDrawingToolBar.setVisible(pWnd->GetBuiltInDrawingToolbar());
    if (isVisible()) {
        updateImageWidgetSize(IsFitMode());
        onDrawingItemChangedSlot();
    }
}

void CDisplayImagePartDlg::onDrawingItemChangedSlot()
{
    if (const IKxDrawingToolInside* const pTool = DrawingTool()) {
        m_objDrawingToolBar.CheckItem(static_cast<int>(pTool->GetDrawingItemType()));
        setSelGridCount(true);
        setSelGridCount(false);
    }
}

void CDisplayImagePartDlg::setSelGridCount(bool bHorizontal)
{
    const IKxDrawingToolInside& tool = *DrawingTool();
    m_objDrawingToolBar.SetGridCount(
        bHorizontal, static_cast<int>(bHorizontal ? tool.GetGridHLineCount() : tool.GetGridVLineCount()));
}

void CDisplayImagePartDlg::OfferRightRelease(const QPoint& ptGlobal)
{
    QMouseEvent event(QEvent::MouseButtonRelease, ptGlobal, Qt::RightButton, Qt::RightButton, Qt::NoModifier);
    for (IKxMouseObserverInside* const pObserver : m_vecMouseObservers) {
        if (pObserver->mouseReleaseEvent(m_pUi->m_CDisplayImageWidget, &event, ptGlobal))
            return;
    }
}

} // namespace KxApi
