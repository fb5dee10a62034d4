// SPDX-License-Identifier: Apache-2.0
// What overlays draw without Qt.
#include "frame/utility_qt.h"
#include "image/COverlayParam.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace
{

// Far outside any screen, where the raster would only cost time, or wrap round.
constexpr double kFarthest = 1e6;

bool IsDrawable(const QPointF& pt) { return std::abs(pt.x()) < kFarthest && std::abs(pt.y()) < kFarthest; }
bool IsDrawable(const QRectF& rect)
{
    return rect.isValid() && IsDrawable(rect.topLeft()) && IsDrawable(rect.bottomRight());
}

} // namespace

void COverlayParam::Painted(const std::function<void(QPainter&)>& paint)
{
    QPainter& painter = *static_cast<QPainter*>(m_values.pDC);
    painter.save();
    const QColor color(m_nColor & 0xFF, m_nColor >> 8 & 0xFF, m_nColor >> 16 & 0xFF);
    painter.setPen(QPen(color, m_dPenWidth));
    painter.setBrush(Qt::NoBrush);
    paint(painter);
    painter.restore();
}

QPointF COverlayParam::OnDisplay(double dX, double dY) const
{
    return {dX * m_values.nDisplayWidth / m_values.nROIWidth,
            dY * m_values.nDisplayHeight / m_values.nROIHeight};
}

QRectF COverlayParam::OnDisplay(double dX, double dY, double dWidth, double dHeight) const
{
    return {OnDisplay(dX, dY), OnDisplay(dX + dWidth, dY + dHeight)};
}

void COverlayParam::SetPen(uint32_t nColor, double dWidth)
{
    m_nColor = nColor;
    m_dPenWidth = dWidth > 0 && dWidth < kFarthest ? dWidth : 1;
}

void COverlayParam::DrawLine(double dX0, double dY0, double dX1, double dY1)
{
    const QLineF line(OnDisplay(dX0, dY0), OnDisplay(dX1, dY1));
    if (IsDrawable(line.p1()) && IsDrawable(line.p2()))
        Painted([&](QPainter& painter) { painter.drawLine(line); });
}

void COverlayParam::DrawRectangle(double dX, double dY, double dWidth, double dHeight)
{
    const QRectF rect = OnDisplay(dX, dY, dWidth, dHeight);
    if (IsDrawable(rect))
        Painted([&](QPainter& painter) { painter.drawRect(rect); });
}

void COverlayParam::DrawEllipse(double dX, double dY, double dWidth, double dHeight)
{
    const QRectF rect = OnDisplay(dX, dY, dWidth, dHeight);
    if (IsDrawable(rect))
        Painted([&](QPainter& painter) { painter.drawEllipse(rect); });
}

void COverlayParam::DrawText(double dX, double dY, const GenICam::gcstring& strText, uint32_t nHeight)
{
    constexpr uint32_t kHighest = 1000;
    const QPointF pt = OnDisplay(dX, dY);
    if (!IsDrawable(pt))
        return;
    Painted([&](QPainter& painter) {
        if (nHeight > 0) {
            QFont font = painter.font();
            font.setPixelSize(static_cast<int>(std::min(nHeight, kHighest)));
            painter.setFont(font);
        }
        painter.drawText(pt, ToQString(strText));
    });
}

} // namespace KxApi
