// SPDX-License-Identifier: Apache-2.0
// A rectangle.
#pragma once

#include "drawing/KxDrawingItemBox_qt.h"

namespace KxApi
{

class CKxDrawingItemRectangle final : public CKxDrawingItemTwoPointObjectBase
{
public:
    explicit CKxDrawingItemRectangle(IKxDrawingItemParent* pParent);

private:
    void PaintFigure(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
