// SPDX-License-Identifier: Apache-2.0
// Where the image was painted, and the arithmetic between image, display and dialog.
#pragma once

#include <QPoint>
#include <cstdint>

namespace KxApi
{

/// The state of the last paint. Three spaces meet here, and nowhere else: pixels of the image, of the display
/// (image pixels times the magnification, which are the widget's coordinates), and of the dialog.
struct CPaintGeometry
{
    /// The widget's origin in the dialog while its left, or top, border is visible; else that of the scroll
    /// area.
    int64_t nImageOffsetX = 0;
    int64_t nImageOffsetY = 0;
    /// Left and top of the visible part, in display pixels.
    double dScrollX = 0;
    double dScrollY = 0;
    uint64_t nImageWidth = 0;
    uint64_t nImageHeight = 0;
    double dMagnification = 0; ///< 0 until the first paint

    bool IsPainted() const { return dMagnification > 0; }

    /// The nearest image pixel to a place in the dialog; (-1, -1) before the first paint.
    QPoint ImagePixelAt(QPoint ptDialog) const;

    /// The image pixel in the middle of the visible part, whose half size is given; (0, 0) before the first
    /// paint.
    QPoint ImagePixelInCentre(QPoint ptHalfSize) const;
};

/// Left or top display pixel of an image pixel.
int ToDisplay(int nImagePixel, double dMagnification);

/// The place to scroll to so that an image pixel comes to lie so many display pixels right of, or below, the
/// visible part's border.
int ScrollPosition(int nImagePixel, double dMagnification, int nDistance);

/// The magnification one step of the mouse wheel on: whole numbers above 1, halves below, 1/16 to 16.
double MagnificationAfterWheel(double dMagnification, bool bEnlarge);

} // namespace KxApi
