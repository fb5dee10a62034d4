// SPDX-License-Identifier: Apache-2.0
// A closed polygon.
#pragma once

#include "drawing/KxDrawingItemPath_qt.h"

namespace KxApi
{

class CKxDrawingItemPolygon final : public CKxDrawingItemPathBase
{
public:
    explicit CKxDrawingItemPolygon(IKxDrawingItemParent* pParent);

private:
    uint32_t BeginBuildStep(const CStep& step) override;
    double Perimeter(const CRuler& ruler) const;
    double Area(const CRuler& ruler) const;

    void PaintFigure(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
