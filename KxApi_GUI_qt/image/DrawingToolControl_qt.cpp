// SPDX-License-Identifier: Apache-2.0
#include "image/DrawingToolControl_qt.h"

#include "frame/ConnectGuarded_qt.h"

#include <GenApi/INodeMap.h>

namespace KxApi
{
namespace
{

CNodeCallbackHandle Watch(GenApi::INodeMap* pNodeMap, const char* szNode, std::function<void()> onChanged)
{
    GenApi::INode* const pNode = pNodeMap ? pNodeMap->GetNode(szNode) : nullptr;
    if (!pNode)
        return CNodeCallbackHandle();
    return CNodeCallbackHandle(
        GenApi::Register(pNode, [onChanged = std::move(onChanged)](GenApi::INode*) { onChanged(); }));
}

} // namespace

void CDrawingToolControl::Connect(CBaseDialogEx& dialog, QWidget& imageWidget, IKxDrawingToolInside* pTool,
                                  GenApi::INodeMap* pNodeMap,
                                  const std::function<void(bool bHorizontal)>& onGridNode)
{
    m_pImageWidget = &imageWidget;
    m_pTool = pTool;
    m_objToolBar.setEnabled(pTool != nullptr);
    if (!pTool)
        return;
    ConnectGuarded(&dialog, &m_objToolBar, &CDrawingToolBar::itemTriggered,
                   [this](int nItemType) { OnItemChosen(nItemType); });
    ConnectGuarded(&dialog, &m_objToolBar, &CDrawingToolBar::gridCountChosen,
                   [this](bool bHorizontal, int nCount) { OnGridCountChosen(bHorizontal, nCount); });
    m_objGridCountHCallback = Watch(pNodeMap, "HorizontalGridLineCount", [=] { onGridNode(true); });
    m_objGridCountVCallback = Watch(pNodeMap, "VerticalGridLineCount", [=] { onGridNode(false); });
}

void CDrawingToolControl::ShowSettings()
{
    if (!m_pTool)
        return;
    m_objToolBar.CheckItem(static_cast<int>(m_pTool->GetDrawingItemType()));
    ShowGridCount(true);
    ShowGridCount(false);
}

void CDrawingToolControl::ShowGridCount(bool bHorizontal)
{
    if (m_pTool)
        m_objToolBar.SetGridCount(bHorizontal, static_cast<int>(bHorizontal ? m_pTool->GetGridHLineCount()
                                                                            : m_pTool->GetGridVLineCount()));
}

bool CDrawingToolControl::OfferRightClick(const QPoint& ptGlobal)
{
    return m_pTool && m_pTool->OnContextMenuRequested(ptGlobal);
}

void CDrawingToolControl::OnItemChosen(int nItemType)
{
    m_pTool->SetDrawingItemType(static_cast<_EKxDrawingItemType_t>(nItemType));
    if (nItemType == KxDrawingItemType_None)
        m_pImageWidget->setCursor(Qt::ArrowCursor);
}

void CDrawingToolControl::OnGridCountChosen(bool bHorizontal, int nCount)
{
    if (bHorizontal)
        m_pTool->SetGridHLineCount(static_cast<unsigned int>(nCount));
    else
        m_pTool->SetGridVLineCount(static_cast<unsigned int>(nCount));
}

} // namespace KxApi
