// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingLayer_qt.h"

#include "drawing/DevicePixels_qt.h"

#include <QPainter>
#include <cstring>

namespace KxApi
{
namespace
{

constexpr int kMaxPixels = 64 << 20; // beyond all screens

} // namespace

bool CDrawingLayer::CKey::operator==(const CKey& other) const
{
    const auto same = [](const char* szText, const char* szOther) {
        return std::strcmp(szText, szOther) == 0;
    };
    return nState == other.nState && toDevice == other.toDevice && rcDevice == other.rcDevice &&
           param.nImageWidth == other.param.nImageWidth && param.nImageHeight == other.param.nImageHeight &&
           param.dScaleX == other.param.dScaleX && param.dScaleY == other.param.dScaleY &&
           same(param.szLengthFormat, other.param.szLengthFormat) &&
           same(param.szAreaFormat, other.param.szAreaFormat) &&
           same(param.szAngleFormat, other.param.szAngleFormat) &&
           same(param.szPositionFormat, other.param.szPositionFormat);
}

void CDrawingLayer::Paint(QPainter& painter, uint64_t nState, const _KxOnDrawParamForDrawing_t& param,
                          const std::function<void(QPainter&)>& paint)
{
    const QRect rcDevice = VisibleDeviceRect(painter);
    CKey key{nState, param, painter.deviceTransform(), rcDevice};
    const bool bSame = key == m_key;
    const qint64 nPixels = qint64{rcDevice.width()} * rcDevice.height();
    if (!bSame || nPixels <= 0 || nPixels > kMaxPixels) {
        m_key = std::move(key);
        m_picture = QImage();
        paint(painter);
        return;
    }
    if (m_picture.isNull()) {
        m_picture = QImage(rcDevice.size(), QImage::Format_ARGB32_Premultiplied);
        m_picture.fill(Qt::transparent);
        QPainter picturePainter(&m_picture);
        picturePainter.setTransform(ToDevicePicture(painter, rcDevice.topLeft()));
        paint(picturePainter);
    }
    DrawDevicePicture(painter, rcDevice.topLeft(), m_picture);
}

} // namespace KxApi
