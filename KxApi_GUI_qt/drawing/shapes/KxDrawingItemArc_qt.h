// SPDX-License-Identifier: Apache-2.0
// An arc: the corners of the box of its full ellipse, and the markers of its start and its end.
#pragma once

#include "drawing/KxDrawingItemBox_qt.h"

namespace KxApi
{

class CKxDrawingItemArc final : public CKxDrawingItemBoxBase
{
public:
    explicit CKxDrawingItemArc(IKxDrawingItemParent* pParent);

private:
    uint32_t BeginBuildStep(const CStep& step) override;
    uint32_t BuildStep(const CStep& step) override;
    uint32_t DragStep(const CStep& step) override;
    /// Of a marker, seen from the centre.
    double Direction(size_t nPoint, const CRuler& ruler) const;
    double Length(const CRuler& ruler) const;
    void PaintDirection(const CPaint& paint, size_t nPoint);

    void PaintFigure(const CPaint& paint) override;
    void PaintControlOutline(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
