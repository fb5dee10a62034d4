// SPDX-License-Identifier: Apache-2.0
// An ellipse.
#pragma once

#include "drawing/KxDrawingItemBox_qt.h"

namespace KxApi
{

class CKxDrawingItemEllipse final : public CKxDrawingItemTwoPointObjectBase
{
public:
    explicit CKxDrawingItemEllipse(IKxDrawingItemParent* pParent);

private:
    void PaintFigure(const CPaint& paint) override;
    void PaintControlOutline(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
