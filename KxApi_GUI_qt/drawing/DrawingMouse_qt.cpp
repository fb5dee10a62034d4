// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingMouse_qt.h"

#include <QMouseEvent>
#include <QWidget>
#include <utility>

namespace KxApi
{
namespace
{

CKxPen DottedPen() { return CKxPen(Qt::black, KxLineStyle_Dot, 1); }

/// The white between the dots.
CKxBrush OpaqueBrush()
{
    CKxBrush brush(Qt::black, KxBrushStyle_Null);
    brush.SetBkMode(KxBackgroundMode_Opaque);
    brush.SetBkColor(Qt::white);
    return brush;
}

} // namespace

CDrawingMouse::CDrawingMouse(CDrawingModel& model)
    : m_model(model)
    , m_objSelectionRectangle(DottedPen(), OpaqueBrush(), CKxFont())
{
    m_objSelectionRectangle.SetType(KxDrawingItemType_Rectangle);
    m_objSelectionRectangle.GetShape()->SetEnableDisplayText(KxDisplayText_None);
    m_objSelectionRectangle.SetHide(true);
}

bool CDrawingMouse::Taken(CKxPointEx point)
{
    m_ptLast = point;
    m_model.OnDrawingObjectChanged();
    return true;
}

bool CDrawingMouse::PressLeft(QMouseEvent& event, CKxPointEx point, bool bShift)
{
    if (!IsSelecting())
        PressToBuild(event, point);
    else if (m_model.Objects().IsEmpty())
        return false;
    else
        PressToSelect(point, bShift);
    m_ptPress = point;
    return Taken(point);
}

void CDrawingMouse::PressToSelect(CKxPointEx point, bool bShift)
{
    CDrawingObjects& objects = m_model.Objects();
    const CDrawingObjects::CHit hit = objects.HitTest(point, m_model.DrawParam());
    if (hit.nHitCode != HitCode_None) {
        objects[hit.nIndex].SetSel(true);
        // With Shift all that is selected moves as a whole, whichever part was hit.
        m_nHitCode = bShift ? uint32_t{HitCode_Object} : hit.nHitCode;
        if (!bShift)
            m_model.MoveSelector(hit.nIndex);
    } else {
        if (!bShift)
            objects.DeselectAll();
        if (m_nHitCode == HitCode_None)
            OnAreaSelect(true, point, point);
    }
    m_bDragging = true;
}

void CDrawingMouse::PressToBuild(QMouseEvent& event, CKxPointEx point)
{
    m_nHitCode = HitCode_None; // of a drag that a change of the item type cut short
    if (m_model.BuildClicks() == 0)
        m_model.BeginBuilding();
    if (!m_model.BuiltItem())
        return;
    m_bDragging = true;
    BuildStep(&IKxDrawingItem::OnLButtonDown, event, point);
}

bool CDrawingMouse::PressRight(CKxPointEx point) { return !m_model.Objects().IsEmpty() && Taken(point); }

bool CDrawingMouse::Move(QWidget& widget, QMouseEvent& event, CKxPointEx point)
{
    if (m_model.Objects().IsEmpty())
        return false;
    if (IsSelecting())
        return MoveToSelect(widget, event, point);
    if (m_model.BuiltItem()) {
        BuildStep(&IKxDrawingItem::OnMouseMove, event, point);
        widget.setCursor(Qt::CrossCursor);
    }
    return Taken(point);
}

bool CDrawingMouse::MoveToSelect(QWidget& widget, QMouseEvent& event, CKxPointEx point)
{
    if (m_nHitCode != HitCode_None) {
        Drag(widget, event, point);
    } else {
        if (!m_bDragging)
            return false;
        OnAreaSelect(true, m_ptPress, point);
        widget.setCursor(Qt::CrossCursor);
    }
    return Taken(point);
}

bool CDrawingMouse::IsHovering(const QMouseEvent& event) const
{
    return IsSelecting() && m_nHitCode == HitCode_None && event.buttons() != Qt::LeftButton;
}

bool CDrawingMouse::Hover(QWidget& widget, CKxPointEx point)
{
    const CDrawingObjects& objects = std::as_const(m_model).Objects();
    if (objects.IsEmpty())
        return false;
    m_ptLast = point;
    // Locked and hidden objects are passed over, and where there are no others the cursor stays.
    if (objects.IsAllOutOfReach())
        return true;
    const uint32_t nHitCode = objects.HitTest(point, m_model.DrawParam()).nHitCode;
    const Qt::CursorShape eOther = nHitCode == HitCode_None ? Qt::ArrowCursor : Qt::CrossCursor;
    widget.setCursor(nHitCode == HitCode_Object ? Qt::PointingHandCursor : eOther);
    return true;
}

void CDrawingMouse::Drag(QWidget& widget, QMouseEvent& event, CKxPointEx point)
{
    const bool bMove = m_nHitCode == HitCode_Object;
    _KxDrawByMouseParam_t step;
    step.nMode = bMove ? DrawByMouse_Move : DrawByMouse_Drag;
    step.nHitCode = m_nHitCode;
    step.ptPrevious = m_ptLast;
    widget.setCursor(bMove ? Qt::PointingHandCursor : Qt::CrossCursor);
    uint32_t nChanged = PointsChanged_None;
    for (CKxDrawingItem* const pItem : m_model.Objects().Selected()) {
        if (IKxDrawingItem* const pShape = pItem->GetShape())
            nChanged = pShape->OnMouseMove(nullptr, &event, point, &m_model.DrawParam(), &step);
    }
    InvalidatePoints(nChanged); // the last one tells
}

bool CDrawingMouse::ReleaseLeft(QMouseEvent& event, CKxPointEx point)
{
    if (m_model.Objects().IsEmpty())
        return false;
    if (IsSelecting()) {
        if (!m_bDragging)
            return false;
        OnAreaSelect(false, m_ptPress, point);
        m_nHitCode = HitCode_None;
        m_bDragging = false;
        return Taken(point);
    }
    if (const CKxDrawingItem* const pItem = m_model.BuiltItem()) {
        m_bDragging = false;
        if (const IKxDrawingItem* const pShape = pItem->GetShape()) {
            BuildStep(&IKxDrawingItem::OnLButtonUp, event, point);
            m_model.CountBuildClick();
            if (m_model.BuildClicks() >= pShape->GetDragCountToAdd())
                EndBuilding();
        }
    }
    return Taken(point);
}

bool CDrawingMouse::ReleaseRight(CKxPointEx point)
{
    if (m_model.Objects().IsEmpty())
        return false;
    if (const CKxDrawingItem* const pItem = m_model.BuiltItem(); pItem && pItem->GetShape())
        EndBuilding();
    return Taken(point);
}

void CDrawingMouse::BuildStep(Step step, QMouseEvent& event, CKxPointEx point)
{
    const CKxDrawingItem* const pItem = m_model.BuiltItem();
    IKxDrawingItem* const pShape = pItem ? pItem->GetShape() : nullptr;
    if (!pShape)
        return;
    _KxDrawByMouseParam_t param;
    param.nClickIndex = m_model.BuildClicks();
    InvalidatePoints((pShape->*step)(nullptr, &event, point, &m_model.DrawParam(), &param));
}

void CDrawingMouse::EndBuilding()
{
    m_model.EndBuilding();
    m_model.SetItemType(KxDrawingItemType_Select);
}

void CDrawingMouse::InvalidatePoints(uint32_t nChanged)
{
    if ((nChanged & PointsChanged_Count) != 0)
        m_model.InvalidateNode("DrawingObjectPointCountReg");
    if ((nChanged & PointsChanged_Coordinates) != 0) {
        m_model.InvalidateNode("DrawingObjectPointXReg");
        m_model.InvalidateNode("DrawingObjectPointYReg");
    }
}

void CDrawingMouse::OnAreaSelect(bool bActive, CKxPointEx ptStart, CKxPointEx ptEnd)
{
    if (m_model.Objects().IsEmpty())
        return;
    m_objSelectionRectangle.SetHide(!bActive);
    if (!bActive)
        return;
    CDoublePointList& vecPoints = m_objSelectionRectangle.GetDoublePointList();
    vecPoints = {ptStart.ChangeCoordinateWindowToImagePercent(&m_model.DrawParam()),
                 ptEnd.ChangeCoordinateWindowToImagePercent(&m_model.DrawParam())};
    m_model.Objects().SelectWithin(vecPoints[0], vecPoints[1]);
}

} // namespace KxApi
