// SPDX-License-Identifier: Apache-2.0
// A chain of cubic Bezier curves: anchor, handle, handle, anchor, and so on.
#pragma once

#include "drawing/KxDrawingItemBase_qt.h"

namespace KxApi
{

class CKxDrawingItemBezier final : public CKxDrawingItemBase
{
public:
    explicit CKxDrawingItemBezier(IKxDrawingItemParent* pParent);

    /// Length of a cubic that starts at the origin, by its control points a and b and its end c.
    static double GetLength(const CDoublePoint& a, const CDoublePoint& b, const CDoublePoint& c);

private:
    uint32_t BeginBuildStep(const CStep& step) override;
    uint32_t BuildStep(const CStep& step) override;
    uint32_t DragStep(const CStep& step) override;
    /// Lays the handle opposite of a dragged one on the other side of their anchor.
    void Mirror(size_t nPoint, size_t nAnchor, size_t nOpposite);
    double Length(const CRuler& ruler) const;

    void PaintFigure(const CPaint& paint) override;
    void PaintControlOutline(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
