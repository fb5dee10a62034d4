// SPDX-License-Identifier: Apache-2.0
// A text, which is the name of its object.
#pragma once

#include "drawing/KxDrawingItemBase_qt.h"

namespace KxApi
{

class CKxDrawingItemText final : public CKxDrawingItemBase
{
public:
    explicit CKxDrawingItemText(IKxDrawingItemParent* pParent);

    bool HitTestContent(CKxPointEx point, const _KxOnDrawParamForDrawing_t* pParam) override;

private:
    uint32_t BeginBuildStep(const CStep& step) override;
    uint32_t BuildStep(const CStep&) override { return PointsChanged_None; }
    void PaintFigure(const CPaint&) override {}
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
