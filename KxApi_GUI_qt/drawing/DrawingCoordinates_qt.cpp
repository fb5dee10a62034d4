// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingCoordinates_qt.h"

#include <cmath>

namespace KxApi
{
namespace
{

constexpr double kWindowLimit = 1 << 28; // differences and sums of two still are 32-bit numbers
constexpr double kDegreesPerRadian = 180.0 / 3.14159265358979323846;

int32_t ToWindowPixel(double dPixel)
{
    if (std::abs(dPixel) < kWindowLimit)
        return static_cast<int32_t>(dPixel);
    return std::isnan(dPixel) ? 0 : static_cast<int32_t>(std::copysign(kWindowLimit, dPixel));
}

double ToFraction(int32_t nWindow, double dScale, uint64_t nImageSize)
{
    const double dImagePixels = dScale > 0.0 ? nWindow / dScale : 0.0;
    return nImageSize != 0 ? dImagePixels / static_cast<double>(nImageSize) : dImagePixels;
}

} // namespace

double CDoublePoint::Length() const { return std::hypot(x, y); }

void _KxOnDrawParamForDrawing_t::SetScales()
{
    dScaleX = static_cast<double>(nDisplayWidth) / static_cast<double>(nROIWidth);
    dScaleY = static_cast<double>(nDisplayHeight) / static_cast<double>(nROIHeight);
}

CDoublePoint CKxPointEx::ChangeCoordinateWindowToImagePercent(const _KxOnDrawParamForDrawing_t* pParam) const
{
    return {ToFraction(x, pParam->dScaleX, pParam->nImageWidth),
            ToFraction(y, pParam->dScaleY, pParam->nImageHeight)};
}

CDoublePoint
CKxPointEx::ChangeCoordinateWindowDeltaToImagePercentDelta(const _KxOnDrawParamForDrawing_t* pParam) const
{
    return ChangeCoordinateWindowToImagePercent(pParam);
}

CDoublePoint ToImagePixels(const CDoublePoint& ptFraction, const _KxOnDrawParamForDrawing_t& param)
{
    return {ptFraction.x * static_cast<double>(param.nImageWidth),
            ptFraction.y * static_cast<double>(param.nImageHeight)};
}

CKxPointEx ToWindow(const CDoublePoint& ptFraction, const _KxOnDrawParamForDrawing_t& param)
{
    return ImagePixelsToWindow(ToImagePixels(ptFraction, param), param);
}

CKxPointEx ImagePixelsToWindow(const CDoublePoint& ptImage, const _KxOnDrawParamForDrawing_t& param)
{
    return {ToWindowPixel(ptImage.x * param.dScaleX), ToWindowPixel(ptImage.y * param.dScaleY)};
}

CDoublePoint FootOfPerpendicular(const CDoublePoint& pt, const CDoublePoint& ptA, const CDoublePoint& ptB)
{
    if (ptA.y == ptB.y)
        return {pt.x, ptA.y};
    if (ptA.x == ptB.x)
        return {ptA.x, pt.y};
    const double m = (ptA.y - ptB.y) / (ptA.x - ptB.x);
    const double c = ptA.y - m * ptA.x;
    const double x = (pt.x + m * (pt.y - c)) / (m * m + 1.0);
    return {x, c + m * x};
}

double DirectionInDegrees(const CDoublePoint& vector)
{
    if (vector.x == 0)
        return vector.y >= 0 ? 90.0 : 270.0;
    const double dDegrees = std::atan(vector.y / vector.x) * kDegreesPerRadian;
    if (vector.x < 0)
        return dDegrees + 180.0;
    return vector.y < 0 ? dDegrees + 360.0 : dDegrees;
}

} // namespace KxApi
