// SPDX-License-Identifier: Apache-2.0
#include "drawing/shapes/KxDrawingItemArc_qt.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace
{

constexpr CShapeTraits kArcTraits = {
    KxDrawingItemType_Arc,
    4,
    EPointCount::Exactly,
    KxDisplayText_Length,
    KxDisplayText_Name | KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_Length |
        KxDisplayText_CentralCoordinate | KxDisplayText_Angle,
    3,
    true,
    4,
};

constexpr double kArcPi = 3.14159265358979323846;
constexpr int kFullCircle = 360;
constexpr int kSixteenths = 16; // of a degree, QPainter's unit

// Box labels appear only beside one of these.
constexpr unsigned int kWithBoxLabels =
    KxDisplayText_Width | KxDisplayText_Height | KxDisplayText_Length | KxDisplayText_Area;

/// Whole degrees, cut off; a box without width or height has none.
int WholeDegrees(double dRadians)
{
    return std::isfinite(dRadians) ? static_cast<int>(dRadians * 180.0 / kArcPi) : 0;
}

/// Fractions of the image don't keep a square to the last bit.
bool IsSquare(const CDoublePoint& size)
{
    return std::abs(size.x - size.y) <= 1e-9 * std::max(size.x, size.y);
}

} // namespace

CKxDrawingItemArc::CKxDrawingItemArc(IKxDrawingItemParent* pParent)
    : CKxDrawingItemBoxBase(pParent, kArcTraits)
{}

uint32_t CKxDrawingItemArc::BeginBuildStep(const CStep& step)
{
    if (step.nClickIndex == 0)
        Points().assign(kArcTraits.nPoints, step.ptMouse);
    else if (step.nClickIndex + 1 < Points().size())
        Points()[step.nClickIndex + 1] = step.ptMouse;
    return PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemArc::BuildStep(const CStep& step)
{
    if (step.nClickIndex + 1 < Points().size())
        Points()[step.nClickIndex + 1] = step.ptMouse;
    if (step.nClickIndex == 0 && IsShiftDown())
        CorrectPointByShift(0, 0, &step.param);
    return PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemArc::DragStep(const CStep& step)
{
    return DragBox(step) ? uint32_t{PointsChanged_Coordinates} : CKxDrawingItemBoxBase::DragStep(step);
}

double CKxDrawingItemArc::Direction(size_t nPoint, const CRuler& ruler) const
{
    return DirectionInDegrees(Image(nPoint, ruler.param) - ImageCentre(ruler.param));
}

double CKxDrawingItemArc::Length(const CRuler& ruler) const
{
    double dSweep = Direction(2, ruler) - Direction(3, ruler);
    if (dSweep < 0)
        dSweep += kFullCircle;
    return SizeInUnits(ruler).x * kArcPi * dSweep / kFullCircle;
}

void CKxDrawingItemArc::PaintFigure(const CPaint& paint)
{
    const CWindowBox box = WindowBox(paint.param);
    const QRectF rcBox(box.pt0.x, box.pt0.y, box.pt1.x - box.pt0.x, box.pt1.y - box.pt0.y);
    const CDoublePoint pt0 = Image(0, paint.param);
    const CDoublePoint ptStart = Image(2, paint.param);
    int nStart = 0;
    int nSpan = kFullCircle;
    if (ptStart.x != pt0.x && ptStart.y != pt0.y) {
        // Angles of the circle that the ellipse is when its box is stretched to a square.
        const double dRatio = rcBox.width() / rcBox.height();
        const auto degreesOf = [&](size_t nPoint) {
            const CKxPointEx pt = Window(nPoint, paint.param);
            return WholeDegrees(std::atan2((rcBox.center().y() - pt.y) * dRatio, pt.x - rcBox.center().x()));
        };
        nStart = degreesOf(2);
        nSpan = degreesOf(3) - nStart;
        if (nSpan < 0)
            nSpan += kFullCircle;
    }
    paint.painter.drawArc(rcBox, nStart * kSixteenths, nSpan * kSixteenths);
}

void CKxDrawingItemArc::PaintControlOutline(const CPaint& paint)
{
    QPainterPath path(Window(2, paint.param).ToQPoint());
    path.lineTo(WindowBox(paint.param).Middle().ToQPoint());
    path.lineTo(Window(3, paint.param).ToQPoint());
    paint.painter.drawPath(path);
}

void CKxDrawingItemArc::PaintLabels(const CPaint& paint)
{
    const CWindowBox box = WindowBox(paint.param);
    const int nDistance = PenSize();
    if ((GetEnableDisplayText() & kWithBoxLabels) != 0) {
        if (IsEnabled(KxDisplayText_Name)) {
            const size_t nIndex = QuadrantIndex(box.pt0, box.pt1);
            DrawName(paint, {box.pt0.x + (nIndex >= 2 ? -nDistance : nDistance), box.pt0.y + nDistance},
                     kNameAlignments[nIndex]);
        }
        PaintWidthAndHeight(paint);
    }
    if (IsEnabled(KxDisplayText_Length) && IsSquare(SizeInUnits(paint)))
        DrawValue(paint, {box.BottomRight().x + nDistance, box.TopLeft().y}, LabelRightBelow,
                  paint.param.szLengthFormat, Length(paint));
    if (IsEnabled(KxDisplayText_Angle)) {
        PaintDirection(paint, 2);
        PaintDirection(paint, 3);
    }
    PaintCentre(paint, 0);
}

void CKxDrawingItemArc::PaintDirection(const CPaint& paint, size_t nPoint)
{
    const CDoublePoint fromCentre = Image(nPoint, paint.param) - ImageCentre(paint.param);
    const int nAlignment = LabelAlignment(fromCentre.x > 0, fromCentre.y > 0);
    const CKxPointEx pt = Window(nPoint, paint.param);
    DrawValue(paint, {pt.x + OffsetX(nAlignment, PenSize()), pt.y + OffsetY(nAlignment, PenSize())},
              nAlignment, paint.param.szAngleFormat,
              Direction(nPoint, paint) * paint.tool.GetConversionOfUnitAngle());
}

void CKxDrawingItemArc::MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    MeasureBox(ruler, measurement);
    MeasureCentre(ruler, measurement);
    if (IsSquare(SizeInUnits(ruler)))
        measurement.vecLengths = {Length(ruler)};
    const double dFactor = ruler.tool.GetConversionOfUnitAngle();
    measurement.vecAngles = {Direction(2, ruler) * dFactor, Direction(3, ruler) * dFactor};
}

} // namespace KxApi
