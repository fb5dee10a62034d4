// SPDX-License-Identifier: Apache-2.0
// The toolbar for drawing over the image.
#pragma once

#include <QComboBox>
#include <QToolBar>
#include <vector>

class QAction;

namespace KxApi
{

/// A button for each kind of object, of which one is down, and the numbers of grid lines. It knows nothing of
/// the drawing tool: it tells what the user does, and shows what it is told. GUI thread.
class CDrawingToolBar : public QToolBar
{
    Q_OBJECT

public:
    /// Raises BadAllocException.
    CDrawingToolBar();

    /// Shows the kind of object, a _EKxDrawingItemType_t; another value leaves no button down.
    void CheckItem(int nItemType);

    /// Shows a number of grid lines.
    void SetGridCount(bool bHorizontal, int nCount);

signals:
    void itemTriggered(int nItemType);
    void gridCountChosen(bool bHorizontal, int nCount);

private:
    void AddItems();
    void AddGridBox(QComboBox& box, const char* szFormat, bool bHorizontal);

    std::vector<QAction*> m_vecDrawingActions; // by item type
    QComboBox m_objGridCountH;
    QComboBox m_objGridCountV;
};

} // namespace KxApi
