// SPDX-License-Identifier: Apache-2.0
// Which rows of the grid are shown: level and filter.
#include "nodemap/ICDisplayNodeMapDlgParent.h"
#include "nodemap/NodeMapPropertyGridCtrl_qt.h"
#include "nodemap/RowFilter_qt.h"

#include <QBrush>
#include <QTreeWidgetItemIterator>

namespace KxApi
{
namespace
{

// What doesn't change isn't set: each setting costs the view a repaint or a new layout.

void SetHidden(QTreeWidgetItem& item, bool bHidden)
{
    if (item.isHidden() != bHidden)
        item.setHidden(bHidden);
}

void SetBlack(QTreeWidgetItem& item)
{
    static const QBrush kBlack(Qt::black);
    if (item.foreground(0) != kBlack)
        item.setForeground(0, kBlack);
}

void ShowWithAncestors(QTreeWidgetItem& item)
{
    for (QTreeWidgetItem* pItem = &item; pItem; pItem = pItem->parent())
        SetHidden(*pItem, false);
}

} // namespace

void CNodeMapQtPropertyGridCtrl::ForEachRow(const std::function<void(QTreeWidgetItem&)>& visit)
{
    for (QTreeWidgetItemIterator it(this); *it; ++it)
        visit(**it);
}

void CNodeMapQtPropertyGridCtrl::ShowByLevel(QTreeWidgetItem& item, GenApi::EVisibility eVisibility)
{
    if (CCustomPropertyGridProperty_Base* const pProperty = PropertyOf(&item))
        SetHidden(item, !pProperty->SetVisibility(eVisibility, false, false));
}

void CNodeMapQtPropertyGridCtrl::applyFilter()
{
    if (!m_pDlgParent || !m_pDlgParent->GetIKxNodeMapDisplayWndInside())
        return;
    const CBatch batch(*this);
    const GenApi::EVisibility eVisibility = m_pDlgParent->GetIKxNodeMapDisplayWndInside()->GetVisibility();
    if (!m_bEnableFilter || m_strFilterText.isEmpty()) {
        ForEachRow([&](QTreeWidgetItem& item) {
            if (!PropertyOf(&item))
                return; // a group that the filter hid stays hidden
            SetBlack(item);
            ShowByLevel(item, eVisibility);
        });
        return;
    }
    const CRowFilter filter(m_strFilterText, m_bEnableRegex);
    std::vector<QTreeWidgetItem*> vecShown;
    ForEachRow([&](QTreeWidgetItem& item) {
        SetBlack(item);
        CCustomPropertyGridProperty_Base* const pProperty =
            filter.Matches(item.text(0)) ? PropertyOf(&item) : nullptr;
        if (pProperty && pProperty->SetVisibility(eVisibility, false, false))
            vecShown.push_back(&item);
        else
            SetHidden(item, true);
    });
    for (QTreeWidgetItem* const pItem : vecShown)
        ShowWithAncestors(*pItem);
}

void CNodeMapQtPropertyGridCtrl::setFilterEnableFilter(bool bEnable)
{
    m_bEnableFilter = bEnable;
    applyFilter();
}

void CNodeMapQtPropertyGridCtrl::setFilterEnableRegex(bool bEnable)
{
    m_bEnableRegex = bEnable;
    applyFilter();
}

void CNodeMapQtPropertyGridCtrl::setFilterTextValue(const QString& strText)
{
    m_strFilterText = strText;
    applyFilter();
}

} // namespace KxApi
