// SPDX-License-Identifier: Apache-2.0
// Distances of points from a base line, which points 0 and 1 give.
#pragma once

#include "drawing/KxDrawingItemPath_qt.h"

namespace KxApi
{

class CKxDrawingItemPerpendicular final : public CKxDrawingItemPathBase
{
public:
    explicit CKxDrawingItemPerpendicular(IKxDrawingItemParent* pParent);

private:
    uint32_t BeginBuildStep(const CStep& step) override;
    void PaintFigure(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
