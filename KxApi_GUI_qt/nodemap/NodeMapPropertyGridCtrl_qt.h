// SPDX-License-Identifier: Apache-2.0
// The grid: a row for each feature of the registered nodes.
#pragma once

#include "nodemap/CustomPropertyGridProperty_Base_qt.h"
#include "nodemap/GridFilling_qt.h"

#include <GenApi/GenApi.h>

#include <QTimer>
#include <QTreeWidget>
#include <cstdint>
#include <functional>
#include <vector>

class QTextEdit;

namespace KxApi
{

class CCustomPropertyGridProperty_Enumeration;
struct ICDisplayNodeMapDlgParent;

/// Makes the rows, hides them by level and filter, and keeps them true. GUI thread.
///
/// A row has its feature's text in column 0 and a CCustomPropertyGridProperty_Base in column 1. Rows without
/// one are groups, or nodes of kinds that have none.
///
/// The device may be slow. Rows are made, and values read, in slices with the event loop in between as soon
/// as the reading takes noticeable time; IsFilling tells whether rows are still to come. Values are read when
/// they get on the screen.
class CNodeMapQtPropertyGridCtrl : public QTreeWidget, public IPropertyCtrlEvent
{
    Q_OBJECT

public:
    explicit CNodeMapQtPropertyGridCtrl(QWidget* pParent);
    ~CNodeMapQtPropertyGridCtrl() override;

    /// The window, which outlives this.
    void SetICDisplayNodeMapDlgParent(ICDisplayNodeMapDlgParent* pDlgParent) { m_pDlgParent = pDlgParent; }

    /// Categories as a tree, which is so at first, or all features in one list. For the next AddAllNode.
    void SetCategoryTree(bool bCategoryTree) { m_bCategoryTree = bCategoryTree; }
    bool IsCategoryTree() const { return m_bCategoryTree; }
    /// Whether rows stand in the order of their texts.
    void SetSorted(bool bSorted);

    /// Makes all rows anew. Raises LogicalErrorException for a node that isn't what it claims to be.
    void AddAllNode();
    /// Makes the row of a node, and the rows below it.
    /// @param pItem the row, null for a new one at the top.
    /// @param szName text of the row, null for the node's own. Returns null for a node without a property.
    CCustomPropertyGridProperty_Base* AddChildNode(GenApi::INode* pNode, QTreeWidgetItem* pItem,
                                                   const char* szName);
    bool IsFilling() const { return m_filling.HasWork(); }

    /// Reads all values of a row and below it anew. Null stands for all rows, which are made anew if nodes
    /// were registered or deregistered.
    void RefreshAll(QTreeWidgetItem* pItem);
    /// Reads those choices anew that the device will leave by itself.
    void RefreshSelfClearingNode();

    /// Shows the rows that the window's level and the filter leave.
    void OnVisibilityChanged() { applyFilter(); }
    void applyFilter();
    void setFilterEnableFilter(bool bEnable);
    void setFilterEnableRegex(bool bEnable);
    void setFilterTextValue(const QString& strText);

    /// Shows or hides the page, and fills it with the selected row's. Raises what reading the node raises.
    void EnableDescriptionAreaAndUpdateDisplay(bool bVisible, QTextEdit* pEdit);

    /// Lets go of the nodes of a row and below it; null for all rows. The rows stay, without their values.
    void clearTree(QTreeWidgetItem* pItem);

    void OnNodeCallback(CCustomPropertyGridProperty_Base* pProperty) override;

    /// The property of a row, null for none.
    CCustomPropertyGridProperty_Base* PropertyOf(QTreeWidgetItem* pItem) const;

    /// While one exists, changes of nodes are only noted; what is on the screen is read after it, in slices.
    class CBatch
    {
    public:
        explicit CBatch(CNodeMapQtPropertyGridCtrl& grid)
            : m_grid(grid)
        {
            ++m_grid.m_nBatches;
        }
        CBatch(const CBatch&) = delete;
        CBatch& operator=(const CBatch&) = delete;
        ~CBatch()
        {
            if (--m_grid.m_nBatches == 0)
                m_grid.m_timerShow.start();
        }

    private:
        CNodeMapQtPropertyGridCtrl& m_grid;
    };

signals:
    void needRefreshSignal();

public slots:
    void onNeedRefresh();

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void scrollContentsBy(int nX, int nY) override;
    /// Only rows in the viewport have their properties shown.
    void updateEditorGeometries() override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void ContinueFilling();
    void EndFilling();
    void TakeRegisteredNode(const CNodeInfo& info);
    CCustomPropertyGridProperty_Base* AddRow(GenApi::INode* pNode, QTreeWidgetItem* pItem,
                                             const char* szName);
    QTreeWidgetItem* NewRow(QTreeWidgetItem* pParent);
    /// Reads what is on the screen and has changed.
    void ShowWaitingValues();
    void ForEachRowOnScreen(const std::function<bool(QTreeWidgetItem&)>& visit);
    void ForEachRow(const std::function<void(QTreeWidgetItem&)>& visit);
    void DetachAll();
    void RefreshRow(CCustomPropertyGridProperty_Base& property);
    void ShowByLevel(QTreeWidgetItem& item, GenApi::EVisibility eVisibility);

    ICDisplayNodeMapDlgParent* m_pDlgParent = nullptr;
    // Owned by the rows.
    std::vector<CCustomPropertyGridProperty_Enumeration*> m_vecSelfClearingProperties;
    std::vector<CCustomPropertyGridProperty_Base*> m_vecPlaced; // on the screen
    uint64_t m_nNodeCount = 0;                                  // of registrations, when the rows were made
    bool m_bCategoryTree = true;
    QString m_strFilterText;
    bool m_bEnableFilter = false;
    bool m_bEnableRegex = false;

    CGridFilling m_filling;
    int m_nBatches = 0;
    QTimer m_timerFill;
    QTimer m_timerShow;
};

} // namespace KxApi
