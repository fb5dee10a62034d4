// SPDX-License-Identifier: Apache-2.0
// A drawn object.
#pragma once

#include "drawing/IKxDrawingItem_qt.h"
#include "drawing/LabelCache_qt.h"

#include <memory>

namespace KxApi
{

/// The container of an object: its points, its state, its name and its style. The shape over them can be
/// exchanged. Under the lock of the tool.
class CKxDrawingItem final : public IKxDrawingItemParent
{
public:
    /// Copies the style.
    CKxDrawingItem(const CKxPen& pen, const CKxBrush& brush, const CKxFont& font);
    CKxDrawingItem(const CKxDrawingItem&) = delete;
    CKxDrawingItem& operator=(const CKxDrawingItem&) = delete;
    ~CKxDrawingItem() = default;

    CDoublePointList& GetDoublePointList() override { return m_PointList; }
    bool GetSel() const override { return m_bSel; }
    bool GetLock() const override { return m_bLock; }
    bool GetHide() const override { return m_bHide; }
    const GenICam::gcstring& GetName() const override { return m_strName; }
    void SetName(const GenICam::gcstring& strName) override { m_strName = strName; }
    void SetQPainterForFigure(QPainter* pPainter) override;
    void SetQPainterForText(QPainter* pPainter) override;
    IKxPen& GetIKxPen() override { return m_Pen; }
    IKxBrush& GetIKxBrush() override { return m_Brush; }
    IKxFont& GetIKxFont() override { return m_Font; }
    CLabelCache& GetLabelCache() override { return m_objLabelCache; }

    CKxPen& GetPen() { return m_Pen; }
    CKxBrush& GetBrush() { return m_Brush; }
    CKxFont& GetFont() { return m_Font; }

    const CDoublePointList& GetPoints() const { return m_PointList; }
    void SetSel(bool bSel) { m_bSel = bSel; }
    void SetLock(bool bLock) { m_bLock = bLock; }
    void SetHide(bool bHide) { m_bHide = bHide; }

    /// Null until there is a type.
    IKxDrawingItem* GetShape() const { return m_pDrawingObject.get(); }
    _EKxDrawingItemType_t GetType() const;
    /// Exchanges the shape; points, name and style stay, as far as the new shape lets them. Raises
    /// OutOfRangeException, and then changes nothing.
    void SetType(_EKxDrawingItemType_t eType);

    /// What of the object lies under a place: 0 for nothing, the number of a point from 1, or an EHitCode.
    uint32_t HitTest(CKxPointEx point, const _KxOnDrawParamForDrawing_t* pParam) const;

private:
    uint32_t HitTestPoints(CKxPointEx point, const _KxOnDrawParamForDrawing_t& param) const;
    uint32_t HitTestBox(CKxPointEx point, const _KxOnDrawParamForDrawing_t& param) const;
    bool HitTestEdges(CKxPointEx point, const _KxOnDrawParamForDrawing_t& param) const;

    std::unique_ptr<IKxDrawingItem> m_pDrawingObject;
    CDoublePointList m_PointList;
    bool m_bSel = false;
    bool m_bLock = false;
    bool m_bHide = false;
    GenICam::gcstring m_strName;
    CKxPen m_Pen;
    CKxBrush m_Brush;
    CKxFont m_Font;
    CLabelCache m_objLabelCache;
};

} // namespace KxApi
