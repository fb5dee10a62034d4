// SPDX-License-Identifier: Apache-2.0
// An angle: the end of the first arm, the vertex, the end of the second arm.
#pragma once

#include "drawing/KxDrawingItemBase_qt.h"

namespace KxApi
{

class CKxDrawingItemAngle final : public CKxDrawingItemBase
{
public:
    explicit CKxDrawingItemAngle(IKxDrawingItemParent* pParent);

private:
    uint32_t BeginBuildStep(const CStep& step) override;
    uint32_t BuildStep(const CStep& step) override;
    /// From the first arm to the second one, clockwise on the screen.
    double Angle(const CRuler& ruler) const;

    void PaintFigure(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
