// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawingItemBox_qt.h"

#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace KxApi
{
bool IsShiftDown() { return (QGuiApplication::queryKeyboardModifiers() & Qt::ShiftModifier) != 0; }

CKxPointEx CKxDrawingItemBoxBase::CWindowBox::TopLeft() const
{
    return {std::min(pt0.x, pt1.x), std::min(pt0.y, pt1.y)};
}

CKxPointEx CKxDrawingItemBoxBase::CWindowBox::BottomRight() const
{
    return {std::max(pt0.x, pt1.x), std::max(pt0.y, pt1.y)};
}

bool CKxDrawingItemBoxBase::DragBox(const CStep& step)
{
    if (!HasPoints(2))
        return false;
    const bool bPoint = step.nHitCode == 1 || step.nHitCode == 2;
    if (!bPoint && step.nHitCode != HitCode_CornerX0Y1 && step.nHitCode != HitCode_CornerX1Y0)
        return false;
    const size_t nMovedX = step.nHitCode == 1 || step.nHitCode == HitCode_CornerX0Y1 ? 0 : 1;
    const size_t nMovedY = bPoint ? nMovedX : 1 - nMovedX;
    Points()[nMovedX].x = step.ptMouse.x;
    Points()[nMovedY].y = step.ptMouse.y;
    if (IsShiftDown())
        CorrectPointByShift(1 - nMovedX, 1 - nMovedY, &step.param);
    return true;
}

CDoublePoint CKxDrawingItemBoxBase::SizeInUnits(const CRuler& ruler) const
{
    const CDoublePoint diagonal = Image(0, ruler.param) - Image(1, ruler.param);
    return {std::abs(diagonal.x) * ruler.tool.GetConversionOfUnitX(),
            std::abs(diagonal.y) * ruler.tool.GetConversionOfUnitY()};
}

CDoublePoint CKxDrawingItemBoxBase::ImageCentre(const _KxOnDrawParamForDrawing_t& param) const
{
    return (Image(0, param) + Image(1, param)) * 0.5;
}

void CKxDrawingItemBoxBase::PaintWidthAndHeight(const CPaint& paint)
{
    const CKxPointEx ptTopLeft = WindowBox(paint.param).TopLeft();
    const CDoublePoint size = SizeInUnits(paint);
    if (IsEnabled(KxDisplayText_Width))
        DrawValue(paint, {ptTopLeft.x, ptTopLeft.y - PenSize()}, LabelRightAbove, paint.param.szLengthFormat,
                  size.x);
    if (IsEnabled(KxDisplayText_Height))
        DrawValue(paint, {ptTopLeft.x - PenSize(), ptTopLeft.y}, LabelLeftBelow, paint.param.szLengthFormat,
                  size.y);
}

void CKxDrawingItemBoxBase::PaintCentre(const CPaint& paint, int nOffset)
{
    if (!IsEnabled(KxDisplayText_CentralCoordinate))
        return;
    const CDoublePoint ptImage = ImageCentre(paint.param);
    const CKxPointEx pt = ImagePixelsToWindow(ptImage, paint.param);
    DrawPosition(paint, {pt.x + nOffset, pt.y + nOffset}, LabelRightBelow, ptImage);
}

void CKxDrawingItemBoxBase::MeasureBox(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    const CDoublePoint size = SizeInUnits(ruler);
    const CDoublePoint pt0 = Image(0, ruler.param);
    const CDoublePoint pt1 = Image(1, ruler.param);
    measurement.nValues |= KxDisplayText_Width | KxDisplayText_Height;
    measurement.dWidth = size.x;
    measurement.dHeight = size.y;
    measurement.dLeft = std::min(pt0.x, pt1.x);
    measurement.dTop = std::min(pt0.y, pt1.y);
}

void CKxDrawingItemBoxBase::MeasureCentre(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    const CDoublePoint pt = ImageCentre(ruler.param);
    measurement.nValues |= KxDisplayText_CentralCoordinate;
    measurement.dCentreX = pt.x;
    measurement.dCentreY = pt.y;
}

uint32_t CKxDrawingItemTwoPointObjectBase::BeginBuildStep(const CStep& step)
{
    Points()[0] = Points()[1] = step.ptMouse;
    return PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemTwoPointObjectBase::BuildStep(const CStep& step)
{
    Points()[1] = step.ptMouse;
    if (IsShiftDown())
        CorrectPointByShift(0, 0, &step.param);
    return PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemTwoPointObjectBase::DragStep(const CStep& step)
{
    DragBox(step);
    return PointsChanged_Coordinates;
}

} // namespace KxApi
