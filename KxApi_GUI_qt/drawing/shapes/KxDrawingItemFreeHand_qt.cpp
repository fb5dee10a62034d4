// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemFreeHand_qt.h"

#include "drawing/StrokePainter_qt.h"

namespace KxApi
{
namespace
{

constexpr CShapeTraits kFreeHandTraits = {
    KxDrawingItemType_FreeHand,
    0,
    EPointCount::Exactly,
    KxDisplayText_None,
    KxDisplayText_Name | KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_Length,
    1,
    false,
    2,
};

constexpr double kLeastStep = 0.001; // in fractions of the image; shorter ones move the last point

} // namespace

CKxDrawingItemFreeHand::CKxDrawingItemFreeHand(IKxDrawingItemParent* pParent)
    : CKxDrawingItemPathBase(pParent, kFreeHandTraits)
{
    if (pParent->GetIKxBrush().GetStyle() != KxBrushStyle_Null)
        pParent->GetIKxBrush().SetStyle(KxBrushStyle_Null); // open figures have no inside
}

uint32_t CKxDrawingItemFreeHand::BeginBuildStep(const CStep& step)
{
    Points().assign(1, step.ptMouse);
    return PointsChanged_Count | PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemFreeHand::BuildStep(const CStep& step)
{
    CDoublePointList& vecPoints = Points();
    const bool bFar = vecPoints.empty() || (step.ptMouse - vecPoints.back()).Length() >= kLeastStep;
    if (bFar && vecPoints.size() < kMaxMousePoints) {
        vecPoints.push_back(step.ptMouse);
        return PointsChanged_Count | PointsChanged_Coordinates;
    }
    vecPoints.back() = step.ptMouse;
    return PointsChanged_Coordinates;
}

void CKxDrawingItemFreeHand::PaintFigure(const CPaint& paint)
{
    PaintStroke(paint.painter, WindowPath(paint.param));
}

void CKxDrawingItemFreeHand::PaintLabels(const CPaint& paint)
{
    const CExtents extents = Extents(paint.param);
    PaintNameAtExtents(paint, extents);
    PaintWidthAndHeight(paint, extents);
    if (IsEnabled(KxDisplayText_Length))
        DrawValue(paint, {extents.ptMax.x + PenSize(), extents.ptMin.y}, LabelRightBelow,
                  paint.param.szLengthFormat, LengthOfPath(UnitsOfAll(paint)));
}

void CKxDrawingItemFreeHand::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    MeasureExtents(ruler, measurement);
    measurement.vecLengths = {LengthOfPath(UnitsOfAll(ruler))};
}

} // namespace KxApi
