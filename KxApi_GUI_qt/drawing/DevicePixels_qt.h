// SPDX-License-Identifier: Apache-2.0
// Painting in the pixels of the painter's device, whatever the painter's own unit is.
#pragma once

#include <QRect>
#include <QTransform>
#include <functional>

class QColor;
class QImage;
class QPainter;

namespace KxApi
{

/// What of the painter's device can be seen, in the device's pixels.
QRect VisibleDeviceRect(const QPainter& painter);

/// From the painter's coordinates to the pixels of a picture that begins at a pixel of the device.
QTransform ToDevicePicture(const QPainter& painter, const QPoint& ptCorner);

/// Paints a picture pixel by pixel, beginning at a pixel of the device.
void DrawDevicePicture(QPainter& painter, const QPoint& ptCorner, const QImage& picture);

/// Paints all pixels of one colour at once: a function sets them to 255 in a mask of 8 bits a pixel, into
/// which `toMask` maps the painter's coordinates. Setting bytes costs a fraction of what painting costs.
/// @param rcBounds nothing is set outside of it. @return false when the painter's device has no pixels, or
/// the painter is to do more than to set them; nothing is painted then.
bool PaintByMask(QPainter& painter, const QRectF& rcBounds, const QColor& color,
                 const std::function<void(QImage& mask, const QTransform& toMask)>& setPixels);

} // namespace KxApi
