// SPDX-License-Identifier: Apache-2.0
// Shapes in the box that their points 0 and 1 span.
#pragma once

#include "drawing/KxDrawingItemBase_qt.h"

namespace KxApi
{

/// Corners that can be dragged, under Shift as squares, and the labels of such a box.
class CKxDrawingItemBoxBase : public CKxDrawingItemBase
{
protected:
    using CKxDrawingItemBase::CKxDrawingItemBase;

    /// Drags points 0 and 1 and the two other corners; false for any other code.
    bool DragBox(const CStep& step);

    /// Points 0 and 1 in window pixels, and what is made of them.
    struct CWindowBox
    {
        CKxPointEx pt0;
        CKxPointEx pt1;

        CKxPointEx TopLeft() const;
        CKxPointEx BottomRight() const;
        /// Halves are cut off towards zero.
        CKxPointEx Middle() const { return {(pt0.x + pt1.x) / 2, (pt0.y + pt1.y) / 2}; }
        /// As Qt paints it, without the last column and row.
        QRect ToQRect() const { return {QPoint(pt0.x, pt0.y), QPoint(pt1.x - 1, pt1.y - 1)}; }
    };
    CWindowBox WindowBox(const _KxOnDrawParamForDrawing_t& param) const
    {
        return {Window(0, param), Window(1, param)};
    }

    /// The box in units; x and y are the width and the height.
    CDoublePoint SizeInUnits(const CRuler& ruler) const;
    /// The centre in image pixels.
    CDoublePoint ImageCentre(const _KxOnDrawParamForDrawing_t& param) const;

    /// Labels along the box, and at its centre.
    void PaintWidthAndHeight(const CPaint& paint);
    void PaintCentre(const CPaint& paint, int nOffset);

    /// Width, height and the place of the box.
    void MeasureBox(const CRuler& ruler, CKxDrawingMeasurement& measurement) const;
    void MeasureCentre(const CRuler& ruler, CKxDrawingMeasurement& measurement) const;
};

/// Shapes that one drag of the mouse makes, from point 0 to point 1.
class CKxDrawingItemTwoPointObjectBase : public CKxDrawingItemBoxBase
{
protected:
    using CKxDrawingItemBoxBase::CKxDrawingItemBoxBase;

    uint32_t BeginBuildStep(const CStep& step) override;
    uint32_t BuildStep(const CStep& step) override;
    uint32_t DragStep(const CStep& step) override;
};

/// Whether Shift is down.
bool IsShiftDown();

} // namespace KxApi
