// SPDX-License-Identifier: Apache-2.0
// A straight line.
#pragma once

#include "drawing/KxDrawingItemBox_qt.h"

namespace KxApi
{

class CKxDrawingItemLine final : public CKxDrawingItemTwoPointObjectBase
{
public:
    explicit CKxDrawingItemLine(IKxDrawingItemParent* pParent);

private:
    double Length(const CRuler& ruler) const;

    void PaintFigure(const CPaint& paint) override;
    void PaintLabels(const CPaint& paint) override;
    void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const override;
};

} // namespace KxApi
