// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemPolygon_qt.h"

#include <QPainter>
#include <cmath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kPolygonTraits = {
    KxDrawingItemType_Polygon,
    3,
    EPointCount::AtLeast,
    KxDisplayText_Length | KxDisplayText_Area,
    KxDisplayText_Name | KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_Length |
        KxDisplayText_Area,
    kDragUntilRightButton,
    false,
    1,
};

} // namespace

CKxDrawingItemPolygon::CKxDrawingItemPolygon(IKxDrawingItemParent* pParent)
    : CKxDrawingItemPathBase(pParent, kPolygonTraits)
{}

uint32_t CKxDrawingItemPolygon::BeginBuildStep(const CStep& step)
{
    if (step.nClickIndex == 0) {
        Points()[0] = Points()[1] = Points()[2] = step.ptMouse;
        return PointsChanged_Coordinates;
    }
    // The second press begins to drag a point that there is already.
    return step.nClickIndex + 1 < Points().size() ? uint32_t{PointsChanged_None} : AddPointStep(step);
}

double CKxDrawingItemPolygon::Perimeter(const CRuler& ruler) const
{
    const CDoublePointList vecPoints = UnitsOfAll(ruler);
    return LengthOfPath(vecPoints) + (vecPoints.front() - vecPoints.back()).Length();
}

double CKxDrawingItemPolygon::Area(const CRuler& ruler) const
{
    const CDoublePointList vecPoints = UnitsOfAll(ruler);
    double dTwice = 0;
    CDoublePoint ptBefore = vecPoints.back();
    for (const CDoublePoint& pt : vecPoints) {
        dTwice += (pt.y + ptBefore.y) * (ptBefore.x - pt.x);
        ptBefore = pt;
    }
    return std::abs(dTwice) / 2;
}

void CKxDrawingItemPolygon::PaintFigure(const CPaint& paint)
{
    const QVector<QPoint> vecPath = WindowPath(paint.param);
    paint.painter.drawPolygon(vecPath.constData(), vecPath.size(),
                              ToQt(Parent().GetIKxBrush().GetPolyFillMode()));
}

void CKxDrawingItemPolygon::PaintLabels(const CPaint& paint)
{
    const CExtents extents = Extents(paint.param);
    PaintNameAtExtents(paint, extents);
    PaintWidthAndHeight(paint, extents);
    const int nRight = extents.ptMax.x + PenSize();
    if (IsEnabled(KxDisplayText_Length))
        DrawValue(paint, {nRight, extents.ptMin.y}, LabelRightBelow, paint.param.szLengthFormat,
                  Perimeter(paint));
    if (IsEnabled(KxDisplayText_Area))
        DrawValue(paint, {nRight, extents.ptMax.y}, LabelRightAbove, paint.param.szAreaFormat, Area(paint));
}

void CKxDrawingItemPolygon::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    MeasureExtents(ruler, measurement);
    measurement.vecLengths = {Perimeter(ruler)};
    measurement.nValues |= KxDisplayText_Area;
    measurement.dArea = Area(ruler);
}

} // namespace KxApi
