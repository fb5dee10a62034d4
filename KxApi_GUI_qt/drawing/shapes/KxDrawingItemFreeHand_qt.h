// SPDX-License-Identifier: Apache-2.0
// A stroke that follows the mouse.
#pragma once

#include "drawing/KxDrawingItemPath_qt.h"

namespace KxApi
{

class CKxDrawingItemFreeHand final : public CKxDrawingItemPathBase
{
public:
    explicit CKxDrawingItemFreeHand(IKxDrawingItemParent* pParent);

private:
    uint32_t BeginBuildStep(const CStep& step) override;
    uint32_t BuildStep(const CStep& step) override;
    void PaintFigure(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
