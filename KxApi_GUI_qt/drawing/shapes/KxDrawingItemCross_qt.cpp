// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemCross_qt.h"

#include <QPainter>
#include <QPainterPath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kCrossTraits = {
    KxDrawingItemType_Cross,
    2,
    EPointCount::Exactly,
    KxDisplayText_CentralCoordinate,
    KxDisplayText_Name | KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_CentralCoordinate,
    1,
    true,
    2,
};

} // namespace

CKxDrawingItemCross::CKxDrawingItemCross(IKxDrawingItemParent* pParent)
    : CKxDrawingItemTwoPointObjectBase(pParent, kCrossTraits)
{}

void CKxDrawingItemCross::PaintFigure(const CPaint& paint)
{
    const CWindowBox box = WindowBox(paint.param);
    const CKxPointEx ptMiddle = box.Middle();
    QPainterPath path;
    path.moveTo(box.pt0.x, ptMiddle.y);
    path.lineTo(box.pt1.x, ptMiddle.y);
    path.moveTo(ptMiddle.x, box.pt0.y);
    path.lineTo(ptMiddle.x, box.pt1.y);
    paint.painter.drawPath(path);
}

void CKxDrawingItemCross::PaintControlOutline(const CPaint& paint)
{
    const QRect rc = WindowBox(paint.param).ToQRect();
    paint.painter.drawRects(&rc, 1);
}

void CKxDrawingItemCross::PaintLabels(const CPaint& paint)
{
    PaintNameAtFirstPoint(paint);
    PaintWidthAndHeight(paint);
    PaintCentre(paint, PenSize());
}

void CKxDrawingItemCross::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    MeasureBox(ruler, measurement);
    MeasureCentre(ruler, measurement);
}

} // namespace KxApi
