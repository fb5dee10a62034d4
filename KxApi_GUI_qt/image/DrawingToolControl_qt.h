// SPDX-License-Identifier: Apache-2.0
// The drawing tool and its toolbar.
#pragma once

#include "drawing/IKxDrawingToolInside.h"
#include "frame/NodeCallbackHandle.h"
#include "image/DrawingToolBar_qt.h"

#include <QPoint>
#include <functional>

namespace GenApi
{
struct INodeMap;
}

namespace KxApi
{

class CBaseDialogEx;

/// Brings the tool what the user does in the toolbar, and the toolbar what the tool is set to. GUI thread.
class CDrawingToolControl
{
public:
    /// The toolbar, disabled as long as there is no tool. Raises BadAllocException.
    CDrawingToolBar& ToolBar() { return m_objToolBar; }

    /// Connects toolbar and tool for the dialog's life.
    /// @param imageWidget where the mouse draws. @param pTool null when there is none. @param pNodeMap the
    /// window's, may be null. @param onGridNode called when the number of grid lines each way (true:
    /// horizontal) changed, in the thread that changed it.
    void Connect(CBaseDialogEx& dialog, QWidget& imageWidget, IKxDrawingToolInside* pTool,
                 GenApi::INodeMap* pNodeMap, const std::function<void(bool bHorizontal)>& onGridNode);

    /// Shows what the tool is set to.
    void ShowSettings();
    void ShowGridCount(bool bHorizontal);

    /// A right click over the image: true when the tool, being on, keeps it from others.
    bool OfferRightClick(const QPoint& ptGlobal);

private:
    void OnItemChosen(int nItemType);
    void OnGridCountChosen(bool bHorizontal, int nCount);

    CDrawingToolBar m_objToolBar;
    QWidget* m_pImageWidget = nullptr;
    IKxDrawingToolInside* m_pTool = nullptr;
    CNodeCallbackHandle m_objGridCountHCallback; // last, so that no node calls what is half gone
    CNodeCallbackHandle m_objGridCountVCallback;
};

} // namespace KxApi
