// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemLine_qt.h"

#include <QPainter>
#include <QPainterPath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kLineTraits = {
    KxDrawingItemType_Line,
    2,
    EPointCount::Exactly,
    KxDisplayText_Length,
    KxDisplayText_Name | KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_Length,
    1,
    false,
    2,
};

} // namespace

CKxDrawingItemLine::CKxDrawingItemLine(IKxDrawingItemParent* pParent)
    : CKxDrawingItemTwoPointObjectBase(pParent, kLineTraits)
{}

double CKxDrawingItemLine::Length(const CRuler& ruler) const { return SizeInUnits(ruler).Length(); }

void CKxDrawingItemLine::PaintFigure(const CPaint& paint)
{
    const CWindowBox box = WindowBox(paint.param);
    QPainterPath path(box.pt0.ToQPoint());
    path.lineTo(box.pt1.ToQPoint());
    paint.painter.drawPath(path);
}

void CKxDrawingItemLine::PaintLabels(const CPaint& paint)
{
    PaintNameAtFirstPoint(paint);
    PaintWidthAndHeight(paint);
    if (!IsEnabled(KxDisplayText_Length))
        return;
    // Beside the middle, on the side that the line doesn't run through.
    const CWindowBox box = WindowBox(paint.param);
    const bool bToLeft = box.pt0.x > box.pt1.x;
    const bool bUpward = box.pt0.y > box.pt1.y;
    const int nDistance = PenSize();
    const CKxPointEx ptAnchor = {box.Middle().x + (bUpward ? -nDistance : nDistance),
                                 box.Middle().y + (bToLeft ? nDistance : -nDistance)};
    const int nAlignment =
        bUpward ? (bToLeft ? LabelLeftBelow : LabelLeftAbove) : (bToLeft ? LabelRightBelow : LabelRightAbove);
    DrawValue(paint, ptAnchor, nAlignment, paint.param.szLengthFormat, Length(paint));
}

void CKxDrawingItemLine::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    MeasureBox(ruler, measurement);
    measurement.vecLengths = {Length(ruler)};
}

} // namespace KxApi
