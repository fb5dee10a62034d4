// SPDX-License-Identifier: Apache-2.0
// The three spaces of drawing, and the only place where one is turned into another:
//   image fraction  what objects store: 0 is the left or top border of the image, 1 the right or bottom one
//   image pixels    the fraction times the image's size; what is measured
//   window pixels   image pixels times the scale, as whole numbers; what is painted and what the mouse tells
#pragma once

#include <QPoint>
#include <QPointF>
#include <cstdint>
#include <vector>

namespace KxApi
{

/// A place, or the way between two: an image fraction, or image pixels where the name says so.
struct CDoublePoint
{
    double x = 0;
    double y = 0;

    CDoublePoint operator+(const CDoublePoint& pt) const { return {x + pt.x, y + pt.y}; }
    CDoublePoint operator-(const CDoublePoint& pt) const { return {x - pt.x, y - pt.y}; }
    CDoublePoint operator*(double dFactor) const { return {x * dFactor, y * dFactor}; }
    /// Its length as a vector.
    double Length() const;
    /// z component of the product of two vectors.
    double Cross(const CDoublePoint& pt) const { return x * pt.y - y * pt.x; }
};

using CDoublePointList = std::vector<CDoublePoint>;

/// What an image is painted by, told anew at each paint.
struct _KxOnDrawParamForDrawing_t
{
    uint64_t nImageWidth = 1;
    uint64_t nImageHeight = 1;
    uint64_t nROIOffsetX = 0;
    uint64_t nROIOffsetY = 0;
    uint64_t nROIWidth = 1; ///< what is displayed of the image
    uint64_t nROIHeight = 1;
    uint64_t nDisplayWidth = 1; ///< the same in window pixels
    uint64_t nDisplayHeight = 1;
    double dScaleX = 1.0; ///< nDisplayWidth / nROIWidth
    double dScaleY = 1.0;
    bool bOpaqueTarget = false; ///< each pixel that is painted on has its whole alpha
    /// printf formats of values with their units.
    char szLengthFormat[128] = "%.1f";
    char szAreaFormat[128] = "%.1f";
    char szPositionFormat[128] = "(%.1f, %.1f)";
    char szAngleFormat[128] = "%.1f";

    /// Derives the scales from the sizes.
    void SetScales();
};

/// A place in window pixels, or the way between two.
struct CKxPointEx
{
    int32_t x = 0;
    int32_t y = 0;

    CKxPointEx operator-(const CKxPointEx& pt) const { return {x - pt.x, y - pt.y}; }
    QPoint ToQPoint() const { return {x, y}; }

    CDoublePoint ChangeCoordinateWindowToImagePercent(const _KxOnDrawParamForDrawing_t* pParam) const;
    CDoublePoint
    ChangeCoordinateWindowDeltaToImagePercentDelta(const _KxOnDrawParamForDrawing_t* pParam) const;
};

/// Image fraction to image pixels.
CDoublePoint ToImagePixels(const CDoublePoint& ptFraction, const _KxOnDrawParamForDrawing_t& param);

/// Image fraction to window pixels, towards zero. Places far outside of any window come to lie on its brink:
/// the features allow whatever fits into a double.
CKxPointEx ToWindow(const CDoublePoint& ptFraction, const _KxOnDrawParamForDrawing_t& param);

/// Image pixels to window pixels, likewise.
CKxPointEx ImagePixelsToWindow(const CDoublePoint& ptImage, const _KxOnDrawParamForDrawing_t& param);

/// The foot of the perpendicular from a point to the line through two others, of any one space.
CDoublePoint FootOfPerpendicular(const CDoublePoint& pt, const CDoublePoint& ptA, const CDoublePoint& ptB);

/// Direction of a vector in degrees, 0 to 360, clockwise where y grows downward.
double DirectionInDegrees(const CDoublePoint& vector);

} // namespace KxApi
