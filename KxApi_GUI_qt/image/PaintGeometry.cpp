// SPDX-License-Identifier: Apache-2.0
#include "image/PaintGeometry.h"

#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace
{

constexpr double kWheelMin = 0.0625;
constexpr double kWheelMax = 16.0;

/// Into 0 to nSize - 1; the test comes before the conversion, which a great number wouldn't survive.
int ClampToImage(double dPixel, uint64_t nSize)
{
    const double dLast = static_cast<double>(nSize) - 1;
    return static_cast<int>(std::max(0.0, std::min(dPixel, dLast)));
}

int PixelAt(int nDialog, int64_t nOffset, double dScroll, double dMagnification, uint64_t nSize)
{
    const double dDisplay = static_cast<double>(nDialog) - static_cast<double>(nOffset) + dScroll;
    return ClampToImage(std::floor(dDisplay / dMagnification), nSize);
}

int PixelInCentre(int nHalfSize, double dScroll, double dMagnification, uint64_t nSize)
{
    // The view may have been larger than the image.
    const double dHalfSize = std::min<double>(nHalfSize, static_cast<double>(nSize) * dMagnification / 2);
    return ClampToImage(std::trunc(std::trunc(dHalfSize + dScroll) / dMagnification), nSize);
}

} // namespace

QPoint CPaintGeometry::ImagePixelAt(QPoint ptDialog) const
{
    if (!IsPainted())
        return {-1, -1};
    return {PixelAt(ptDialog.x(), nImageOffsetX, dScrollX, dMagnification, nImageWidth),
            PixelAt(ptDialog.y(), nImageOffsetY, dScrollY, dMagnification, nImageHeight)};
}

QPoint CPaintGeometry::ImagePixelInCentre(QPoint ptHalfSize) const
{
    if (!IsPainted())
        return {0, 0};
    return {PixelInCentre(ptHalfSize.x(), dScrollX, dMagnification, nImageWidth),
            PixelInCentre(ptHalfSize.y(), dScrollY, dMagnification, nImageHeight)};
}

int ToDisplay(int nImagePixel, double dMagnification)
{
    return static_cast<int>(nImagePixel * dMagnification);
}

int ScrollPosition(int nImagePixel, double dMagnification, int nDistance)
{
    return static_cast<int>(nImagePixel * dMagnification - nDistance);
}

double MagnificationAfterWheel(double dMagnification, bool bEnlarge)
{
    if (bEnlarge)
        return std::min(dMagnification <= 1.0 ? dMagnification * 2 : std::trunc(dMagnification + 1.5),
                        kWheelMax);
    return std::max(dMagnification <= 1.0 ? dMagnification * 0.5 : std::trunc(dMagnification - 0.5),
                    kWheelMin);
}

} // namespace KxApi
