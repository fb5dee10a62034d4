// SPDX-License-Identifier: Apache-2.0
#include "drawing/DevicePixels_qt.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

namespace KxApi
{
namespace
{

/// What can be seen, in the unit that the device has without any transformation of the painter.
QRect VisibleRect(const QPainter& painter)
{
    QPaintDevice* const pDevice = painter.device();
    if (pDevice->devType() == QInternal::Widget)
        return static_cast<QWidget*>(pDevice)->visibleRegion().boundingRect();
    const double dRatio = pDevice->devicePixelRatioF();
    return {0, 0, qRound(pDevice->width() / dRatio), qRound(pDevice->height() / dRatio)};
}

/// Whether a pixel of a painted figure simply gets the colour.
bool SetsPixels(const QPainter& painter, const QColor& color)
{
    return painter.paintEngine()->type() == QPaintEngine::Raster && color.alpha() == 255 &&
           painter.opacity() >= 1.0 && !painter.testRenderHint(QPainter::Antialiasing) &&
           painter.compositionMode() == QPainter::CompositionMode_SourceOver;
}

QImage Colored(const QImage& mask, QRgb color)
{
    QImage picture(mask.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < mask.height() && !picture.isNull(); ++y) {
        const uchar* const pMask = mask.constScanLine(y);
        auto* const pPixels = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < mask.width(); ++x)
            pPixels[x] = pMask[x] != 0 ? color : 0U;
    }
    return picture;
}

} // namespace

QRect VisibleDeviceRect(const QPainter& painter)
{
    const QTransform toDevice = painter.worldTransform().inverted() * painter.deviceTransform();
    return toDevice.mapRect(QRectF(VisibleRect(painter))).toAlignedRect();
}

QTransform ToDevicePicture(const QPainter& painter, const QPoint& ptCorner)
{
    return painter.deviceTransform() * QTransform::fromTranslate(-ptCorner.x(), -ptCorner.y());
}

void DrawDevicePicture(QPainter& painter, const QPoint& ptCorner, const QImage& picture)
{
    painter.save();
    painter.setTransform(ToDevicePicture(painter, ptCorner).inverted(), true);
    painter.drawImage(QPoint(0, 0), picture);
    painter.restore();
}

bool PaintByMask(QPainter& painter, const QRectF& rcBounds, const QColor& color,
                 const std::function<void(QImage& mask, const QTransform& toMask)>& setPixels)
{
    if (!SetsPixels(painter, color))
        return false;
    const QRect rcMask =
        painter.deviceTransform().mapRect(rcBounds).toAlignedRect() & VisibleDeviceRect(painter);
    QImage mask(rcMask.size(), QImage::Format_Alpha8);
    if (mask.isNull())
        return false;
    mask.fill(0);
    setPixels(mask, ToDevicePicture(painter, rcMask.topLeft()));
    DrawDevicePicture(painter, rcMask.topLeft(), Colored(mask, color.rgb()));
    return true;
}

} // namespace KxApi
