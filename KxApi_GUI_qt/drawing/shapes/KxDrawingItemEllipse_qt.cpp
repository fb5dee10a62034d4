// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemEllipse_qt.h"

#include <QPainter>
#include <cmath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kEllipseTraits = {
    KxDrawingItemType_Ellipse,
    2,
    EPointCount::Exactly,
    KxDisplayText_Length | KxDisplayText_Area,
    KxDisplayText_Name | KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_Length |
        KxDisplayText_CentralCoordinate | KxDisplayText_Area,
    1,
    true,
    2,
};

constexpr double kPi = 3.14159265358979323846;

/// Ramanujan's approximation of the circumference.
double Circumference(const CDoublePoint& axes)
{
    const double a = axes.x / 2;
    const double b = axes.y / 2;
    if (a == 0 && b == 0)
        return 0.0;
    const double q = (a - b) / (a + b);
    return kPi * (a + b) * (1 + 3 * q * q / (10 + std::sqrt(4 - 3 * q * q)));
}

double EllipseArea(const CDoublePoint& axes) { return kPi * axes.x * axes.y / 4; }

} // namespace

CKxDrawingItemEllipse::CKxDrawingItemEllipse(IKxDrawingItemParent* pParent)
    : CKxDrawingItemTwoPointObjectBase(pParent, kEllipseTraits)
{}

void CKxDrawingItemEllipse::PaintFigure(const CPaint& paint)
{
    paint.painter.drawEllipse(WindowBox(paint.param).ToQRect());
}

void CKxDrawingItemEllipse::PaintControlOutline(const CPaint& paint)
{
    const QRect rc = WindowBox(paint.param).ToQRect();
    paint.painter.drawRects(&rc, 1);
}

void CKxDrawingItemEllipse::PaintLabels(const CPaint& paint)
{
    PaintNameAtFirstPoint(paint);
    PaintWidthAndHeight(paint);
    const CWindowBox box = WindowBox(paint.param);
    const CDoublePoint axes = SizeInUnits(paint);
    const int nRight = box.BottomRight().x + PenSize();
    if (IsEnabled(KxDisplayText_Length))
        DrawValue(paint, {nRight, box.TopLeft().y}, LabelRightBelow, paint.param.szLengthFormat,
                  Circumference(axes));
    if (IsEnabled(KxDisplayText_Area))
        DrawValue(paint, {nRight, box.BottomRight().y}, LabelRightAbove, paint.param.szAreaFormat,
                  EllipseArea(axes));
    PaintCentre(paint, 0);
}

void CKxDrawingItemEllipse::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    MeasureBox(ruler, measurement);
    MeasureCentre(ruler, measurement);
    measurement.vecLengths = {Circumference(SizeInUnits(ruler))};
    measurement.nValues |= KxDisplayText_Area;
    measurement.dArea = EllipseArea(SizeInUnits(ruler));
}

} // namespace KxApi
