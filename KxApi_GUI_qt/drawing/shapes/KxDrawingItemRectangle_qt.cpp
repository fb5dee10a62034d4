// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemRectangle_qt.h"

#include <QPainter>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kRectangleTraits = {
    KxDrawingItemType_Rectangle,
    2,
    EPointCount::Exactly,
    KxDisplayText_Length | KxDisplayText_Area,
    KxDisplayText_Name | KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_Length |
        KxDisplayText_Area,
    1,
    true,
    2,
};

double Perimeter(const CDoublePoint& size) { return 2 * (size.x + size.y); }
double RectangleArea(const CDoublePoint& size) { return size.x * size.y; }

} // namespace

CKxDrawingItemRectangle::CKxDrawingItemRectangle(IKxDrawingItemParent* pParent)
    : CKxDrawingItemTwoPointObjectBase(pParent, kRectangleTraits)
{}

void CKxDrawingItemRectangle::PaintFigure(const CPaint& paint)
{
    const QRect rc = WindowBox(paint.param).ToQRect();
    paint.painter.drawRects(&rc, 1);
}

void CKxDrawingItemRectangle::PaintLabels(const CPaint& paint)
{
    PaintNameAtFirstPoint(paint);
    PaintWidthAndHeight(paint);
    const CWindowBox box = WindowBox(paint.param);
    const CDoublePoint size = SizeInUnits(paint);
    const int nRight = box.BottomRight().x + PenSize();
    if (IsEnabled(KxDisplayText_Length))
        DrawValue(paint, {nRight, box.TopLeft().y}, LabelRightBelow, paint.param.szLengthFormat,
                  Perimeter(size));
    if (IsEnabled(KxDisplayText_Area))
        DrawValue(paint, {nRight, box.BottomRight().y}, LabelRightAbove, paint.param.szAreaFormat,
                  RectangleArea(size));
}

void CKxDrawingItemRectangle::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    MeasureBox(ruler, measurement);
    measurement.vecLengths = {Perimeter(SizeInUnits(ruler))};
    measurement.nValues |= KxDisplayText_Area;
    measurement.dArea = RectangleArea(SizeInUnits(ruler));
}

} // namespace KxApi
