// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingObjects_qt.h"

#include <algorithm>
#include <utility>

namespace KxApi
{

size_t CDrawingObjects::Weight() const
{
    constexpr size_t kOfObject = 4; // points
    size_t nWeight = 0;
    for (const auto& pItem : m_vecItems)
        nWeight += kOfObject + pItem->GetPoints().size();
    return nWeight;
}

CKxDrawingItem& CDrawingObjects::Append(std::unique_ptr<CKxDrawingItem> pItem)
{
    return *m_vecItems.emplace_back(std::move(pItem));
}

void CDrawingObjects::Remove(size_t nIndex)
{
    m_vecRemoved.push_back(std::move(m_vecItems[nIndex]));
    m_vecItems.erase(m_vecItems.begin() + static_cast<List::difference_type>(nIndex));
}

void CDrawingObjects::SelectOnly(size_t nIndex)
{
    for (size_t i = 0; i < m_vecItems.size(); ++i)
        m_vecItems[i]->SetSel(i == nIndex);
}

void CDrawingObjects::SelectWithin(const CDoublePoint& ptCorner, const CDoublePoint& ptOppositeCorner)
{
    const auto [dLeft, dRight] = std::minmax(ptCorner.x, ptOppositeCorner.x);
    const auto [dTop, dBottom] = std::minmax(ptCorner.y, ptOppositeCorner.y);
    const auto isWithin = [l = dLeft, r = dRight, t = dTop, b = dBottom](const CDoublePoint& pt) {
        return l <= pt.x && pt.x <= r && t <= pt.y && pt.y <= b;
    };
    for (const auto& pItem : m_vecItems) {
        const CDoublePointList& vecPoints = pItem->GetPoints();
        pItem->SetSel(std::any_of(vecPoints.begin(), vecPoints.end(), isWithin));
    }
}

std::vector<CKxDrawingItem*> CDrawingObjects::Selected() const
{
    std::vector<CKxDrawingItem*> vecSelected;
    for (const auto& pItem : m_vecItems) {
        if (pItem->GetSel())
            vecSelected.push_back(pItem.get());
    }
    return vecSelected;
}

void CDrawingObjects::DestroySelected()
{
    m_vecItems.erase(std::remove_if(m_vecItems.begin(), m_vecItems.end(),
                                    [](const auto& pItem) { return pItem->GetSel(); }),
                     m_vecItems.end());
}

bool CDrawingObjects::IsAllOutOfReach() const
{
    return std::all_of(m_vecItems.begin(), m_vecItems.end(),
                       [](const auto& pItem) { return pItem->GetLock() || pItem->GetHide(); });
}

CDrawingObjects::CHit CDrawingObjects::HitTest(CKxPointEx point,
                                               const _KxOnDrawParamForDrawing_t& param) const
{
    for (size_t i = m_vecItems.size(); i-- > 0;) {
        const CKxDrawingItem& item = *m_vecItems[i];
        if (item.GetLock() || item.GetHide())
            continue;
        if (const uint32_t nHitCode = item.HitTest(point, &param); nHitCode != HitCode_None)
            return {i, nHitCode};
    }
    return {};
}

} // namespace KxApi
