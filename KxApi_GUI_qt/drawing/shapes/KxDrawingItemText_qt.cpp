// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemText_qt.h"

#include "frame/utility_qt.h"

#include <QFontMetrics>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kTextTraits = {
    KxDrawingItemType_Text, 1, EPointCount::Exactly, KxDisplayText_Name, KxDisplayText_Name, 0, false, 1,
};

} // namespace

CKxDrawingItemText::CKxDrawingItemText(IKxDrawingItemParent* pParent)
    : CKxDrawingItemBase(pParent, kTextTraits)
{
    if (pParent->GetName().empty())
        pParent->SetName("Text");
}

bool CKxDrawingItemText::HitTestContent(CKxPointEx point, const _KxOnDrawParamForDrawing_t* pParam)
{
    if (!HasPoints(1))
        return false;
    const CKxPointEx distance = point - Window(0, *pParam);
    const QFontMetrics metrics(*Parent().GetIKxFont().GetObject());
    return distance.x >= -kHitTolerance && distance.y >= -kHitTolerance &&
           distance.x <= metrics.horizontalAdvance(ToQString(Parent().GetName())) + kHitTolerance &&
           distance.y <= metrics.height() + kHitTolerance;
}

uint32_t CKxDrawingItemText::BeginBuildStep(const CStep& step)
{
    Points()[0] = step.ptMouse;
    return PointsChanged_Coordinates;
}

void CKxDrawingItemText::PaintLabels(const CPaint& paint)
{
    if (IsEnabled(KxDisplayText_Name))
        DrawName(paint, Window(0, paint.param), LabelRightBelow);
}

void CKxDrawingItemText::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    const CDoublePoint pt = Image(0, ruler.param);
    measurement.dLeft = pt.x;
    measurement.dTop = pt.y;
}

} // namespace KxApi
