// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemPerpendicular_qt.h"

#include <QPainter>
#include <QPainterPath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kPerpendicularTraits = {
    KxDrawingItemType_Perpendicular,
    2,
    EPointCount::AtLeast,
    KxDisplayText_Length,
    KxDisplayText_Name | KxDisplayText_Length,
    kDragUntilRightButton,
    false,
    2,
};

} // namespace

CKxDrawingItemPerpendicular::CKxDrawingItemPerpendicular(IKxDrawingItemParent* pParent)
    : CKxDrawingItemPathBase(pParent, kPerpendicularTraits)
{}

uint32_t CKxDrawingItemPerpendicular::BeginBuildStep(const CStep& step)
{
    if (step.nClickIndex != 0)
        return AddPointStep(step);
    Points()[0] = Points()[1] = step.ptMouse;
    return PointsChanged_Coordinates;
}

void CKxDrawingItemPerpendicular::PaintFigure(const CPaint& paint)
{
    QPainterPath path(Window(0, paint.param).ToQPoint());
    path.lineTo(Window(1, paint.param).ToQPoint());
    for (size_t i = 2; i < Points().size(); ++i) {
        const CDoublePoint ptFoot =
            FootOfPerpendicular(Image(i, paint.param), Image(0, paint.param), Image(1, paint.param));
        path.moveTo(Window(i, paint.param).ToQPoint());
        path.lineTo(ImagePixelsToWindow(ptFoot, paint.param).ToQPoint());
    }
    paint.painter.drawPath(path);
}

void CKxDrawingItemPerpendicular::PaintLabels(const CPaint& paint)
{
    PaintNameAtExtents(paint, Extents(paint.param));
    if (!IsEnabled(KxDisplayText_Length))
        return;
    const int nDistance = PenSize();
    for (size_t i = 2; i < Points().size(); ++i) {
        const CDoublePoint pt = Units(i, paint);
        const CDoublePoint ptFoot = FootOfPerpendicular(pt, Units(0, paint), Units(1, paint));
        const CKxPointEx ptWindow = Window(i, paint.param);
        const bool bFootIsLeft = ptFoot.x <= pt.x;
        const bool bFootIsBelow = pt.y < ptFoot.y;
        const CKxPointEx ptAnchor = {ptWindow.x + (bFootIsLeft ? 2 * nDistance : 0),
                                     ptWindow.y + (bFootIsBelow ? -nDistance : nDistance)};
        const int nAlignment = LabelAlignment(bFootIsLeft, !bFootIsBelow);
        DrawValue(paint, ptAnchor, nAlignment, paint.param.szLengthFormat, (pt - ptFoot).Length());
    }
}

void CKxDrawingItemPerpendicular::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    const CExtents extents = Extents(ruler.param);
    measurement.dLeft = extents.ptImageMin.x;
    measurement.dTop = extents.ptImageMin.y;
    for (size_t i = 2; i < Points().size(); ++i) {
        const CDoublePoint pt = Units(i, ruler);
        measurement.vecLengths.push_back(
            (pt - FootOfPerpendicular(pt, Units(0, ruler), Units(1, ruler))).Length());
    }
}

} // namespace KxApi
