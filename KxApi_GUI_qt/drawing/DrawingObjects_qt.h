// SPDX-License-Identifier: Apache-2.0
// The drawn objects in the order of painting.
#pragma once

#include "drawing/KxDrawingItem_qt.h"

#include <memory>
#include <utility>
#include <vector>

namespace KxApi
{

/// The list of objects; the last one is on top. Under the lock of the tool.
class CDrawingObjects
{
public:
    using List = std::vector<std::unique_ptr<CKxDrawingItem>>;

    size_t Count() const { return m_vecItems.size(); }
    /// About what painting them costs.
    size_t Weight() const;
    bool IsEmpty() const { return m_vecItems.empty(); }
    CKxDrawingItem& operator[](size_t nIndex) const { return *m_vecItems[nIndex]; }
    List::const_iterator begin() const { return m_vecItems.begin(); }
    List::const_iterator end() const { return m_vecItems.end(); }

    CKxDrawingItem& Append(std::unique_ptr<CKxDrawingItem> pItem);
    /// Destroys the objects from there on.
    void Cut(size_t nCount) { m_vecItems.resize(nCount); }
    /// Takes an object out of the list, which is not destroyed: it may be the one that the mouse is just
    /// building.
    void Remove(size_t nIndex);
    /// Exchanges an object with the next one.
    void SwapWithNext(size_t nIndex) { std::swap(m_vecItems[nIndex], m_vecItems[nIndex + 1]); }

    /// Selects one object, or none when there is no such one.
    void SelectOnly(size_t nIndex);
    void DeselectAll() { SelectOnly(Count()); }
    /// Selects those that have a point within a rectangle of image fractions, its border included.
    void SelectWithin(const CDoublePoint& ptCorner, const CDoublePoint& ptOppositeCorner);
    std::vector<CKxDrawingItem*> Selected() const;
    void DestroySelected();

    /// What of which object is under the mouse, the topmost first; locked and hidden ones never are.
    struct CHit
    {
        size_t nIndex = 0;
        uint32_t nHitCode = HitCode_None;
    };
    CHit HitTest(CKxPointEx point, const _KxOnDrawParamForDrawing_t& param) const;
    /// Whether all are locked or hidden.
    bool IsAllOutOfReach() const;

private:
    List m_vecItems;
    List m_vecRemoved;
};

} // namespace KxApi
