// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawingItemPath_qt.h"

namespace KxApi
{

uint32_t CKxDrawingItemPathBase::AddPointStep(const CStep& step)
{
    const size_t nPoint = step.nClickIndex + 1;
    if (nPoint >= kMaxMousePoints)
        return PointsChanged_None;
    if (nPoint >= Points().size())
        Points().resize(nPoint + 1);
    Points()[nPoint] = step.ptMouse;
    return PointsChanged_Count | PointsChanged_Coordinates;
}

uint32_t CKxDrawingItemPathBase::BuildStep(const CStep& step)
{
    if (step.bLeftAlone && step.nClickIndex + 1 < Points().size())
        Points()[step.nClickIndex + 1] = step.ptMouse;
    return PointsChanged_Coordinates;
}

CKxDrawingItemPathBase::CExtents
CKxDrawingItemPathBase::Extents(const _KxOnDrawParamForDrawing_t& param) const
{
    const CKxPointEx ptFirst = Window(0, param);
    const CDoublePoint ptImageFirst = Image(0, param);
    CExtents extents{ptFirst, ptFirst, ptImageFirst, ptImageFirst};
    const auto widen = [](int nWindow, double dImage, int& nMin, int& nMax, double& dMin, double& dMax) {
        if (nWindow < nMin) {
            nMin = nWindow;
            dMin = dImage;
        }
        if (nWindow > nMax) {
            nMax = nWindow;
            dMax = dImage;
        }
    };
    for (const CDoublePoint& pt : Points()) {
        const CDoublePoint ptImage = ToImagePixels(pt, param);
        const CKxPointEx ptWindow = ImagePixelsToWindow(ptImage, param);
        widen(ptWindow.x, ptImage.x, extents.ptMin.x, extents.ptMax.x, extents.ptImageMin.x,
              extents.ptImageMax.x);
        widen(ptWindow.y, ptImage.y, extents.ptMin.y, extents.ptMax.y, extents.ptImageMin.y,
              extents.ptImageMax.y);
    }
    return extents;
}

void CKxDrawingItemPathBase::PaintNameAtExtents(const CPaint& paint, const CExtents& extents)
{
    if (IsEnabled(KxDisplayText_Name))
        DrawName(paint, {extents.ptMin.x - PenSize(), extents.ptMin.y - PenSize()}, LabelLeftAbove);
}

void CKxDrawingItemPathBase::PaintWidthAndHeight(const CPaint& paint, const CExtents& extents)
{
    const CDoublePoint size = extents.ptImageMax - extents.ptImageMin;
    if (IsEnabled(KxDisplayText_Width))
        DrawValue(paint, {extents.ptMin.x, extents.ptMin.y - PenSize()}, LabelRightAbove,
                  paint.param.szLengthFormat, size.x * paint.tool.GetConversionOfUnitX());
    if (IsEnabled(KxDisplayText_Height))
        DrawValue(paint, {extents.ptMin.x - PenSize(), extents.ptMin.y}, LabelLeftBelow,
                  paint.param.szLengthFormat, size.y * paint.tool.GetConversionOfUnitY());
}

void CKxDrawingItemPathBase::MeasureExtents(const CRuler& ruler, CKxDrawingMeasurement& measurement) const
{
    const CExtents extents = Extents(ruler.param);
    const CDoublePoint size = extents.ptImageMax - extents.ptImageMin;
    measurement.nValues |= KxDisplayText_Width | KxDisplayText_Height;
    measurement.dWidth = size.x * ruler.tool.GetConversionOfUnitX();
    measurement.dHeight = size.y * ruler.tool.GetConversionOfUnitY();
    measurement.dLeft = extents.ptImageMin.x;
    measurement.dTop = extents.ptImageMin.y;
}

QVector<QPoint> CKxDrawingItemPathBase::WindowPath(const _KxOnDrawParamForDrawing_t& param) const
{
    QVector<QPoint> vecPath;
    vecPath.reserve(static_cast<int>(Points().size()));
    for (const CDoublePoint& pt : Points()) {
        const QPoint ptWindow = ToWindow(pt, param).ToQPoint();
        if (vecPath.isEmpty() || vecPath.last() != ptWindow)
            vecPath.append(ptWindow);
    }
    return vecPath;
}

} // namespace KxApi
