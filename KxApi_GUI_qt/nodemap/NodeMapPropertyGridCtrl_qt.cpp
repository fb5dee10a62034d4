// SPDX-License-Identifier: Apache-2.0
#include "nodemap/NodeMapPropertyGridCtrl_qt.h"

#include "nodemap/CustomPropertyGridProperty_Enumeration_qt.h"
#include "nodemap/ICDisplayNodeMapDlgParent.h"
#include "nodemap/PropertyTable_qt.h"

#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QTextEdit>
#include <algorithm>

namespace KxApi
{
namespace
{

constexpr int kNameWidth = 180;
constexpr qint64 kReadingSlice = 20; // ms, after which the user's events have their turn
constexpr size_t kMaxRows = 200000;  // categories that hold each other many times over

/// Rows are black, as they say when asked, on light palettes; on dark ones nobody could read that.
class CNameDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* pOption, const QModelIndex& index) const override
    {
        const QPalette palette = pOption->palette;
        QStyledItemDelegate::initStyleOption(pOption, index);
        pOption->palette = palette;
    }
};

bool HasSelfClearingEntry(GenApi::INode* pNode)
{
    GenApi::NodeList_t entries;
    GenApi::CEnumerationPtr(pNode)->GetEntries(entries);
    return std::any_of(entries.begin(), entries.end(),
                       [](GenApi::INode* pEntry) { return GenApi::CEnumEntryPtr(pEntry)->IsSelfClearing(); });
}

} // namespace

CNodeMapQtPropertyGridCtrl::CNodeMapQtPropertyGridCtrl(QWidget* pParent)
    : QTreeWidget(pParent)
{
    setColumnCount(2);
    setHeaderLabels({tr("Node"), tr("Value")});
    setRootIsDecorated(true);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setItemDelegateForColumn(0, new CNameDelegate(this));
    m_timerFill.setSingleShot(true);
    m_timerShow.setSingleShot(true);
    connect(this, &CNodeMapQtPropertyGridCtrl::needRefreshSignal, this,
            &CNodeMapQtPropertyGridCtrl::onNeedRefresh);
    connect(&m_timerFill, &QTimer::timeout, this, [this] {
        try {
            ContinueFilling();
        } catch (...) {
            TellCurrentException(
                [this](const GenICam::GenericException& e) { m_pDlgParent->OnException(e); });
        }
    });
    connect(&m_timerShow, &QTimer::timeout, this, &CNodeMapQtPropertyGridCtrl::ShowWaitingValues);
}

CNodeMapQtPropertyGridCtrl::~CNodeMapQtPropertyGridCtrl() { DetachAll(); }

CCustomPropertyGridProperty_Base* CNodeMapQtPropertyGridCtrl::PropertyOf(QTreeWidgetItem* pItem) const
{
    return static_cast<CCustomPropertyGridProperty_Base*>(itemWidget(pItem, 1)); // there are no others
}

void CNodeMapQtPropertyGridCtrl::SetSorted(bool bSorted)
{
    if (bSorted)
        sortByColumn(0, Qt::AscendingOrder);
    setSortingEnabled(bSorted);
}

void CNodeMapQtPropertyGridCtrl::DetachAll()
{
    m_filling.Stop();
    m_timerFill.stop();
    m_vecSelfClearingProperties.clear();
    m_vecPlaced.clear();
    ForEachRow([this](QTreeWidgetItem& item) {
        if (CCustomPropertyGridProperty_Base* const pProperty = PropertyOf(&item))
            pProperty->Detach();
    });
}

void CNodeMapQtPropertyGridCtrl::AddAllNode()
{
    const CBatch batch(*this);
    // A property may be in the middle of the write that led here, so they are deleted later.
    DetachAll();
    clearSelection();
    clear();
    if (!m_pDlgParent)
        return;
    m_nNodeCount = m_pDlgParent->GetIKxNodeMapDisplayWndInside()->GetRegisteredAndUnregisteredNodeCount();
    m_filling.Start(m_pDlgParent->CopyNodeInfo());
    ContinueFilling();
}

void CNodeMapQtPropertyGridCtrl::ContinueFilling()
{
    const CBatch batch(*this);
    const bool bSorted = isSortingEnabled();
    setSortingEnabled(false); // or each row would be sorted in by itself
    const auto finish = [&] {
        setSortingEnabled(bSorted);
        EndFilling();
    };
    QElapsedTimer timer;
    qint64 nReading = 0;
    size_t nRows = 0;
    try {
        for (;;) {
            m_filling.DropFinished();
            if (!m_filling.HasWork())
                break;
            if (++nRows > kMaxRows)
                throw RUNTIME_EXCEPTION("The categories hold more than %zu features.", kMaxRows);
            timer.start();
            if (m_filling.IsAtEntry()) {
                TakeRegisteredNode(m_filling.TakeEntry());
                continue;
            }
            const CGridFilling::CNext next = m_filling.TakeNode();
            const bool bHasRow = HasRow(next.pNode);
            nReading += timer.nsecsElapsed();
            if (bHasRow)
                AddRow(next.pNode, next.pParent ? NewRow(next.pParent) : nullptr, nullptr);
            if (nReading > kReadingSlice * 1000000) {
                m_timerFill.start();
                break;
            }
        }
    } catch (...) {
        m_filling.Stop();
        finish();
        throw;
    }
    finish();
}

void CNodeMapQtPropertyGridCtrl::EndFilling()
{
    OnVisibilityChanged();
    expandAll();
    setColumnWidth(0, kNameWidth);
}

void CNodeMapQtPropertyGridCtrl::TakeRegisteredNode(const CNodeInfo& info)
{
    if (!HasRow(info.pNode))
        return;
    const QString strName = ToQString(info.strName);
    const QList<QTreeWidgetItem*> listGroups =
        findItems(strName, Qt::MatchExactly | Qt::MatchCaseSensitive, 0);
    QTreeWidgetItem* const pGroup = listGroups.isEmpty() ? nullptr : listGroups.first();
    GenApi::CCategoryPtr pCategory(info.pNode);
    const auto childRow = [this](QTreeWidgetItem* pParent) {
        return pParent && m_bCategoryTree ? NewRow(pParent) : nullptr;
    };
    if (pCategory && (pGroup || strName.isEmpty())) {
        m_filling.Push(*pCategory, m_bCategoryTree ? pGroup : nullptr);
    } else if (pCategory) {
        AddRow(info.pNode, nullptr, info.strName.c_str());
    } else if (pGroup) {
        AddRow(info.pNode, childRow(pGroup), nullptr);
    } else if (m_bCategoryTree && !strName.isEmpty()) {
        QTreeWidgetItem* const pNewGroup = NewRow(nullptr);
        pNewGroup->setText(0, strName);
        AddRow(info.pNode, childRow(pNewGroup), nullptr);
    } else {
        AddRow(info.pNode, nullptr, nullptr);
    }
}

QTreeWidgetItem* CNodeMapQtPropertyGridCtrl::NewRow(QTreeWidgetItem* pParent)
{
    return pParent ? new QTreeWidgetItem(pParent) : new QTreeWidgetItem(this);
}

CCustomPropertyGridProperty_Base*
CNodeMapQtPropertyGridCtrl::AddRow(GenApi::INode* pNode, QTreeWidgetItem* pItem, const char* szName)
{
    const QString strText = RowText(*pNode, szName);
    const GenApi::EInterfaceType eType = pNode->GetPrincipalInterfaceType();
    CCustomPropertyGridProperty_Base* pProperty = nullptr;
    if (eType != GenApi::intfICategory || m_bCategoryTree) {
        pProperty = MakeProperty(m_pDlgParent ? m_pDlgParent->GetIKxNodeMapDisplayWndInside() : nullptr,
                                 viewport(), pNode, this);
        if (eType == GenApi::intfIEnumeration && HasSelfClearingEntry(pNode))
            m_vecSelfClearingProperties.push_back(
                static_cast<CCustomPropertyGridProperty_Enumeration*>(pProperty));
        if (!pItem)
            pItem = NewRow(nullptr);
        pItem->setText(0, strText);
        if (pProperty) {
            pProperty->SetPlaced(false);
            pProperty->setObjectName(ToQString(pNode->GetName())); // by which programs find the row
            pItem->setToolTip(0, pProperty->GetNameTooltip());
            setItemWidget(pItem, 1, pProperty);
        }
    }
    if (eType == GenApi::intfICategory)
        m_filling.Push(*GenApi::CCategoryPtr(pNode), m_bCategoryTree ? pItem : nullptr);
    return pProperty;
}

CCustomPropertyGridProperty_Base*
CNodeMapQtPropertyGridCtrl::AddChildNode(GenApi::INode* pNode, QTreeWidgetItem* pItem, const char* szName)
{
    const CBatch batch(*this);
    const size_t nDepth = m_filling.Depth();
    CCustomPropertyGridProperty_Base* const pProperty = AddRow(pNode, pItem, szName);
    while (m_filling.DropFinished(), m_filling.Depth() > nDepth) {
        const CGridFilling::CNext next = m_filling.TakeNode();
        if (HasRow(next.pNode))
            AddRow(next.pNode, next.pParent ? NewRow(next.pParent) : nullptr, nullptr);
    }
    return pProperty;
}

void CNodeMapQtPropertyGridCtrl::RefreshAll(QTreeWidgetItem* pItem)
{
    const CBatch batch(*this);
    if (!pItem) {
        if (m_nNodeCount !=
            m_pDlgParent->GetIKxNodeMapDisplayWndInside()->GetRegisteredAndUnregisteredNodeCount())
            AddAllNode();
        else if (topLevelItemCount() == 0)
            emit needRefreshSignal();
        else
            for (int i = 0; i < topLevelItemCount(); ++i)
                RefreshAll(topLevelItem(i));
        return;
    }
    if (CCustomPropertyGridProperty_Base* const pProperty = PropertyOf(pItem))
        RefreshRow(*pProperty);
    for (int i = 0; i < pItem->childCount(); ++i)
        RefreshAll(pItem->child(i));
}

void CNodeMapQtPropertyGridCtrl::RefreshRow(CCustomPropertyGridProperty_Base& property)
{
    GenApi::CNodePtr pNode(property.GetNode());
    GenApi::INode& node = *pNode;
    Dropping([&] {
        if (!node.IsCachable() || node.GetPollingTime() >= 1)
            node.InvalidateNode();
    });
}

void CNodeMapQtPropertyGridCtrl::RefreshSelfClearingNode()
{
    for (CCustomPropertyGridProperty_Enumeration* const pProperty : m_vecSelfClearingProperties) {
        if (pProperty->IsSelfClearing())
            GenApi::CNodePtr(pProperty->GetNode())->InvalidateNode();
    }
}

void CNodeMapQtPropertyGridCtrl::onNeedRefresh()
{
    hide();
    try {
        AddAllNode();
    } catch (...) {
        TellCurrentException([this](const GenICam::GenericException& e) { m_pDlgParent->OnException(e); });
    }
    show();
}

void CNodeMapQtPropertyGridCtrl::EnableDescriptionAreaAndUpdateDisplay(bool bVisible, QTextEdit* pEdit)
{
    if (!pEdit)
        return;
    pEdit->setVisible(bVisible);
    pEdit->clear();
    const QList<QTreeWidgetItem*> listSelected = selectedItems();
    CCustomPropertyGridProperty_Base* const pProperty =
        listSelected.isEmpty() ? nullptr : PropertyOf(listSelected.first());
    if (pProperty)
        pProperty->UpdateDescription(pEdit);
}

void CNodeMapQtPropertyGridCtrl::clearTree(QTreeWidgetItem* pItem)
{
    if (!pItem) {
        DetachAll();
        for (int i = topLevelItemCount() - 1; i >= 0; --i)
            clearTree(topLevelItem(i));
        return;
    }
    for (int i = pItem->childCount() - 1; i >= 0; --i)
        clearTree(pItem->child(i));
    m_vecPlaced.clear();
    if (CCustomPropertyGridProperty_Base* const pProperty = PropertyOf(pItem)) {
        pProperty->Detach();
        removeItemWidget(pItem, 1);
    }
}

void CNodeMapQtPropertyGridCtrl::OnNodeCallback(CCustomPropertyGridProperty_Base* pProperty)
{
    if (m_nBatches == 0)
        pProperty->emitUpdate();
    else
        pProperty->RequestUpdate();
}

void CNodeMapQtPropertyGridCtrl::ForEachRowOnScreen(const std::function<bool(QTreeWidgetItem&)>& visit)
{
    const int nBottom = viewport()->height();
    for (QTreeWidgetItem* pItem = itemAt(1, 1); pItem; pItem = itemBelow(pItem)) {
        if (visualItemRect(pItem).top() > nBottom || !visit(*pItem))
            return;
    }
}

void CNodeMapQtPropertyGridCtrl::updateEditorGeometries()
{
    if (m_nBatches > 0)
        return; // once after it, since each time lays out all rows
    std::vector<CCustomPropertyGridProperty_Base*> vecPlaced;
    ForEachRowOnScreen([&](QTreeWidgetItem& item) {
        if (CCustomPropertyGridProperty_Base* const pProperty = PropertyOf(&item)) {
            pProperty->setGeometry(visualRect(indexFromItem(&item, 1)));
            vecPlaced.push_back(pProperty);
        }
        return true;
    });
    for (CCustomPropertyGridProperty_Base* const pProperty : m_vecPlaced) {
        if (std::find(vecPlaced.begin(), vecPlaced.end(), pProperty) == vecPlaced.end())
            pProperty->SetPlaced(false);
    }
    m_vecPlaced = std::move(vecPlaced);
    for (CCustomPropertyGridProperty_Base* const pProperty : m_vecPlaced)
        pProperty->SetPlaced(true);
}

void CNodeMapQtPropertyGridCtrl::scrollContentsBy(int nX, int nY)
{
    QTreeWidget::scrollContentsBy(nX, nY);
    updateEditorGeometries();
}

void CNodeMapQtPropertyGridCtrl::ShowWaitingValues()
{
    if (!isVisible())
        return;
    updateEditorGeometries();
    QElapsedTimer timer;
    timer.start();
    ForEachRowOnScreen([&](QTreeWidgetItem& item) {
        CCustomPropertyGridProperty_Base* const pProperty = PropertyOf(&item);
        if (!pProperty || !pProperty->IsUpdateRequested())
            return true;
        pProperty->UpdateDisplayValue();
        if (timer.elapsed() < kReadingSlice)
            return true;
        m_timerShow.start();
        return false;
    });
}

void CNodeMapQtPropertyGridCtrl::closeEvent(QCloseEvent* pEvent)
{
    DetachAll();
    clear();
    QTreeWidget::closeEvent(pEvent);
}

void CNodeMapQtPropertyGridCtrl::paintEvent(QPaintEvent* pEvent)
{
    QTreeWidget::paintEvent(pEvent);
    if (!m_timerShow.isActive())
        m_timerShow.start(); // what came on the screen may never have been read
}

void CNodeMapQtPropertyGridCtrl::keyPressEvent(QKeyEvent* pEvent)
{
    const int nKey = pEvent->key();
    CCustomPropertyGridProperty_Base* const pProperty =
        nKey == Qt::Key_Return || nKey == Qt::Key_F2 ? PropertyOf(currentItem()) : nullptr;
    if (pProperty && pProperty->FocusEditor())
        return;
    QTreeWidget::keyPressEvent(pEvent);
}

} // namespace KxApi
