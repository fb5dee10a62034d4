// SPDX-License-Identifier: Apache-2.0
// Shapes of any number of points.
#pragma once

#include "drawing/KxDrawingItemBase_qt.h"

#include <QVector>

namespace KxApi
{

/// What polygons, perpendiculars and free hand strokes have in common: the box round all points and the
/// labels along it.
class CKxDrawingItemPathBase : public CKxDrawingItemBase
{
protected:
    using CKxDrawingItemBase::CKxDrawingItemBase;

    /// A further point for each press, which follows the mouse while the left button is down.
    uint32_t AddPointStep(const CStep& step);
    uint32_t BuildStep(const CStep& step) override;

    /// The smallest and largest coordinates, in window pixels and, of the points that have those, in image
    /// pixels.
    struct CExtents
    {
        CKxPointEx ptMin;
        CKxPointEx ptMax;
        CDoublePoint ptImageMin;
        CDoublePoint ptImageMax;
    };
    CExtents Extents(const _KxOnDrawParamForDrawing_t& param) const;

    void PaintNameAtExtents(const CPaint& paint, const CExtents& extents);
    void PaintWidthAndHeight(const CPaint& paint, const CExtents& extents);
    void MeasureExtents(const CRuler& ruler, CKxDrawingMeasurement& measurement) const;

    /// All points in window pixels, without those that lie on the one before.
    QVector<QPoint> WindowPath(const _KxOnDrawParamForDrawing_t& param) const;
};

} // namespace KxApi
