// SPDX-License-Identifier: Apache-2.0
// A cross that marks the middle of its box.
#pragma once

#include "drawing/KxDrawingItemBox_qt.h"

namespace KxApi
{

class CKxDrawingItemCross final : public CKxDrawingItemTwoPointObjectBase
{
public:
    explicit CKxDrawingItemCross(IKxDrawingItemParent* pParent);

private:
    void PaintFigure(const CPaint& paint) override;
    void PaintControlOutline(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
