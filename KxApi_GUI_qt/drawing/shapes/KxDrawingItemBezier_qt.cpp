// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemBezier_qt.h"

#include "drawing/KxDrawingItemBox_qt.h"

#include <QPainter>
#include <QPainterPath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kBezierTraits = {
    KxDrawingItemType_Bezier,
    2,
    EPointCount::AtLeast,
    KxDisplayText_None,
    KxDisplayText_Name | KxDisplayText_Length,
    kDragUntilRightButton,
    false,
    2,
};

constexpr double kFlatness = 0.25; // square of the distance up to which a curve counts as its chord
// What keeps lengths that no image has from being worked out for hours.
constexpr int kMaxDepth = 20;
constexpr double kMaxLength = 1e12;

constexpr int kLengthAlignments[] = {LabelRightAbove, LabelLeftAbove, LabelRightBelow, LabelLeftBelow};

double AdaptiveLength(const CDoublePoint& a, const CDoublePoint& b, const CDoublePoint& c, int nDepth)
{
    const CDoublePoint m = (a * 3 + b * 3 + c) * 0.125; // the middle
    const double dChord = c.Length();
    if (nDepth == 0)
        return dChord;
    if (dChord != 0 && c.Cross(a) * c.Cross(b) >= 0) {
        const double dCross = c.Cross(m);
        if (dCross * dCross / (c.x * c.x + c.y * c.y) < kFlatness)
            return dChord;
    }
    return AdaptiveLength(a * 0.5, (a * 2 + b) * 0.25, m, nDepth - 1) +
           AdaptiveLength((a + b * 2 + c) * 0.25 - m, (b + c) * 0.5 - m, c - m, nDepth - 1);
}

} // namespace

CKxDrawingItemBezier::CKxDrawingItemBezier(IKxDrawingItemParent* pParent)
    : CKxDrawingItemBase(pParent, kBezierTraits)
{
    if (pParent->GetIKxBrush().GetStyle() != KxBrushStyle_Null)
        pParent->GetIKxBrush().SetStyle(KxBrushStyle_Null); // open figures have no inside
}

uint32_t CKxDrawingItemBezier::BeginBuildStep(const CStep& step)
{
    if (step.nClickIndex == 0) {
        Points()[0] = Points()[1] = step.ptMouse;
        return PointsChanged_Coordinates;
    }
    // The handle towards the anchor, the anchor, the handle from it.
    Points().insert(Points().end(), 3, step.ptMouse);
    return PointsChanged_Count | PointsChanged_Coordinates;
}

void CKxDrawingItemBezier::Mirror(size_t nPoint, size_t nAnchor, size_t nOpposite)
{
    if (nPoint < Points().size() && nAnchor < Points().size() && nOpposite < Points().size())
        Points()[nOpposite] = Points()[nAnchor] - (Points()[nPoint] - Points()[nAnchor]);
}

uint32_t CKxDrawingItemBezier::BuildStep(const CStep& step)
{
    if (!step.bLeftAlone)
        return PointsChanged_None;
    const size_t nPoint = step.nClickIndex == 0 ? 1 : 3 * step.nClickIndex - 1;
    if (nPoint < Points().size())
        Points()[nPoint] = step.ptMouse;
    if (step.nClickIndex != 0 && IsShiftDown())
        Mirror(nPoint, nPoint + 1, nPoint + 2);
    return PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemBezier::DragStep(const CStep& step)
{
    const uint32_t nChanged = CKxDrawingItemBase::DragStep(step);
    if (nChanged == PointsChanged_None || !IsShiftDown())
        return nChanged;
    if (step.nPoint % 3 == 1 && step.nPoint >= 2)
        Mirror(step.nPoint, step.nPoint - 1, step.nPoint - 2);
    else if (step.nPoint % 3 == 2)
        Mirror(step.nPoint, step.nPoint + 1, step.nPoint + 2);
    return nChanged;
}

double CKxDrawingItemBezier::GetLength(const CDoublePoint& a, const CDoublePoint& b, const CDoublePoint& c)
{
    const double dAround = a.Length() + (b - a).Length() + (c - b).Length();
    return dAround > 0 && dAround < kMaxLength ? AdaptiveLength(a, b, c, kMaxDepth) : dAround;
}

double CKxDrawingItemBezier::Length(const CRuler& ruler) const
{
    const CDoublePointList vecPoints = UnitsOfAll(ruler);
    double dLength = 0;
    for (size_t i = 0; i + 3 < vecPoints.size(); i += 3)
        dLength += GetLength(vecPoints[i + 1] - vecPoints[i], vecPoints[i + 2] - vecPoints[i],
                             vecPoints[i + 3] - vecPoints[i]);
    return dLength;
}

void CKxDrawingItemBezier::PaintFigure(const CPaint& paint)
{
    const auto window = [&](size_t nPoint) { return Window(nPoint, paint.param).ToQPoint(); };
    QPainterPath path(window(0));
    // What is behind the last anchor isn't painted.
    for (size_t i = 1; i + 2 < Points().size(); i += 3)
        path.cubicTo(window(i), window(i + 1), window(i + 2));
    paint.painter.drawPath(path);
}

void CKxDrawingItemBezier::PaintControlOutline(const CPaint& paint)
{
    QPainterPath path(Window(0, paint.param).ToQPoint());
    for (size_t i = 1; i < Points().size(); ++i)
        path.lineTo(Window(i, paint.param).ToQPoint());
    paint.painter.drawPath(path);
}

void CKxDrawingItemBezier::PaintLabels(const CPaint& paint)
{
    PaintNameAtFirstPoint(paint);
    if (!IsEnabled(KxDisplayText_Length))
        return;
    const CKxPointEx pt0 = Window(0, paint.param);
    const CKxPointEx pt1 = Window(1, paint.param);
    const int nAlignment = kLengthAlignments[QuadrantIndex(pt0, pt1)];
    DrawValue(paint,
              {(pt0.x + pt1.x) / 2 + OffsetX(nAlignment, PenSize()),
               (pt0.y + pt1.y) / 2 + OffsetY(nAlignment, PenSize())},
              nAlignment, paint.param.szLengthFormat, Length(paint));
}

void CKxDrawingItemBezier::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    const CDoublePoint pt = Image(0, ruler.param);
    measurement.vecLengths = {Length(ruler)};
    measurement.dLeft = pt.x;
    measurement.dTop = pt.y;
}

} // namespace KxApi
