// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemAngle_qt.h"

#include <QPainter>
#include <QPainterPath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kAngleTraits = {
    KxDrawingItemType_Angle,
    3,
    EPointCount::Exactly,
    KxDisplayText_Angle,
    KxDisplayText_Name | KxDisplayText_Angle,
    2,
    false,
    3,
};

// Where the value lies by the quadrants of the second arm and, times four, of the first one.
constexpr int kAlignments[16] = {
    LabelLeftBelow,  LabelMiddleBelow, LabelLeftAbove,   LabelRightBelow, LabelMiddleBelow, LabelRightBelow,
    LabelLeftBelow,  LabelRightAbove,  LabelLeftBelow,   LabelRightAbove, LabelLeftAbove,   LabelRightAbove,
    LabelRightBelow, LabelRightAbove,  LabelMiddleAbove, LabelRightAbove,
};

} // namespace

CKxDrawingItemAngle::CKxDrawingItemAngle(IKxDrawingItemParent* pParent)
    : CKxDrawingItemBase(pParent, kAngleTraits)
{
    if (pParent->GetIKxBrush().GetStyle() != KxBrushStyle_Null)
        pParent->GetIKxBrush().SetStyle(KxBrushStyle_Null); // open figures have no inside
}

uint32_t CKxDrawingItemAngle::BeginBuildStep(const CStep& step)
{
    if (step.nClickIndex != 0)
        return PointsChanged_None;
    Points()[0] = Points()[1] = Points()[2] = step.ptMouse;
    return PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemAngle::BuildStep(const CStep& step)
{
    if (step.nClickIndex == 0)
        Points()[1] = step.ptMouse;
    Points()[2] = step.ptMouse;
    return PointsChanged_Coordinates;
}

double CKxDrawingItemAngle::Angle(const CRuler& ruler) const
{
    const CDoublePoint ptVertex = Image(1, ruler.param);
    const double dFirst = DirectionInDegrees(Image(0, ruler.param) - ptVertex);
    double dAngle = DirectionInDegrees(Image(2, ruler.param) - ptVertex) - dFirst;
    if (!(dAngle >= 0))
        dAngle += 360.0;
    return dAngle * ruler.tool.GetConversionOfUnitAngle();
}

void CKxDrawingItemAngle::PaintFigure(const CPaint& paint)
{
    QPainterPath path(Window(0, paint.param).ToQPoint());
    for (size_t i = 1; i < Points().size(); ++i)
        path.lineTo(Window(i, paint.param).ToQPoint());
    paint.painter.drawPath(path);
}

void CKxDrawingItemAngle::PaintLabels(const CPaint& paint)
{
    const CKxPointEx pt0 = Window(0, paint.param);
    const CKxPointEx ptVertex = Window(1, paint.param);
    const CKxPointEx pt2 = Window(2, paint.param);
    PaintNameAtFirstPoint(paint);
    if (IsEnabled(KxDisplayText_Angle)) {
        const size_t nIndex = (ptVertex.x > pt2.x ? 1U : 0U) + (ptVertex.y > pt2.y ? 0U : 2U) +
                              4 * ((ptVertex.x > pt0.x ? 1U : 0U) + (ptVertex.y > pt0.y ? 0U : 2U));
        const int nAlignment = kAlignments[nIndex];
        DrawValue(paint,
                  {ptVertex.x + OffsetX(nAlignment, PenSize()), ptVertex.y + OffsetY(nAlignment, PenSize())},
                  nAlignment, paint.param.szAngleFormat, Angle(paint));
    }
}

void CKxDrawingItemAngle::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    const CDoublePoint ptVertex = Image(1, ruler.param);
    measurement.vecAngles = {Angle(ruler)};
    measurement.dLeft = ptVertex.x;
    measurement.dTop = ptVertex.y;
}

} // namespace KxApi
