// SPDX-License-Identifier: Apache-2.0
// The mouse over the image: selecting, dragging, building.
#pragma once

#include "drawing/DrawingModel_qt.h"

class QMouseEvent;
class QWidget;

namespace KxApi
{

/// The tool's mouse. What it does depends on the item type: nothing (None), selecting and dragging (Select)
/// or building an object (the others). In Select a press notes what it hit, moves drag that until the
/// release; a press on nothing spans the selection rectangle. GUI thread, in CDrawingModel::Locked.
class CDrawingMouse
{
public:
    explicit CDrawingMouse(CDrawingModel& model);

    /// Return whether the event is taken.
    bool PressLeft(QMouseEvent& event, CKxPointEx point, bool bShift);
    bool PressRight(CKxPointEx point);
    /// Whether a move only shows what it is over; then Hover and else Move is to be called. Hover changes
    /// nothing of the drawing, so that CDrawingModel::Looked is enough for it.
    bool IsHovering(const QMouseEvent& event) const;
    bool Hover(QWidget& widget, CKxPointEx point);
    bool Move(QWidget& widget, QMouseEvent& event, CKxPointEx point);
    bool ReleaseLeft(QMouseEvent& event, CKxPointEx point);
    bool ReleaseRight(CKxPointEx point);

    /// The rubber band, which is painted below the objects.
    CKxDrawingItem& SelectionRectangle() { return m_objSelectionRectangle; }

private:
    using Step = uint32_t (IKxDrawingItem::*)(void*, QMouseEvent*, CKxPointEx,
                                              const _KxOnDrawParamForDrawing_t*,
                                              const _KxDrawByMouseParam_t*);

    bool IsSelecting() const { return m_model.ItemType() == KxDrawingItemType_Select; }
    /// Ends a step that was taken.
    bool Taken(CKxPointEx point);
    void PressToSelect(CKxPointEx point, bool bShift);
    void PressToBuild(QMouseEvent& event, CKxPointEx point);
    bool MoveToSelect(QWidget& widget, QMouseEvent& event, CKxPointEx point);
    void Drag(QWidget& widget, QMouseEvent& event, CKxPointEx point);
    /// A step of the object that is being built; nothing while there is none.
    void BuildStep(Step step, QMouseEvent& event, CKxPointEx point);
    void EndBuilding();
    void InvalidatePoints(uint32_t nChanged);
    void OnAreaSelect(bool bActive, CKxPointEx ptStart, CKxPointEx ptEnd);

    CDrawingModel& m_model;
    CKxDrawingItem m_objSelectionRectangle;
    CKxPointEx m_ptLast;                // of the mouse
    CKxPointEx m_ptPress;               // of the last left press
    uint32_t m_nHitCode = HitCode_None; // what the press in Select hit
    bool m_bDragging = false;           // a left press hasn't been released yet
};

} // namespace KxApi
