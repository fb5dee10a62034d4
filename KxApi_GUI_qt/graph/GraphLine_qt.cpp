// SPDX-License-Identifier: Apache-2.0
#include "graph/GraphLine_qt.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace
{

/// Rectangles give what a stroked path gives if no pixel is covered in part: on the raster engine, without
/// antialiasing, with whole pixels for the painter's.
int ScaleForRects(const QPainter& painter)
{
    const QPaintEngine* const pEngine = painter.paintEngine();
    const QTransform& transform = painter.deviceTransform();
    if (!pEngine || pEngine->type() != QPaintEngine::Raster ||
        (painter.renderHints() & QPainter::Antialiasing))
        return 0;
    if (painter.opacity() != 1 || painter.compositionMode() != QPainter::CompositionMode_SourceOver)
        return 0; // rectangles overlap
    const bool bWhole = transform.type() <= QTransform::TxScale && transform.m11() == transform.m22() &&
                        transform.m11() == std::floor(transform.m11()) &&
                        transform.dx() == std::floor(transform.dx()) &&
                        transform.dy() == std::floor(transform.dy());
    constexpr double kMaxScale = 8;
    return bWhole && transform.m11() >= 1 && transform.m11() <= kMaxScale ? static_cast<int>(transform.m11())
                                                                          : 0;
}

bool IsPlain(const QPen& pen)
{
    return pen.style() == Qt::SolidLine && pen.brush().style() == Qt::SolidPattern &&
           pen.color().alpha() == 255 && !pen.isCosmetic();
}

/// How far the picture of a mitered line goes beyond an end of a vertical.
constexpr int kBeyondCorner = 1; // half of the width of 2
constexpr int kBeyondTurn = 4;   // where the miter is cut: the width times the limit of a QPen
constexpr int kMiterWidth = 2;

void Stroke(QPainter& painter, const QPainterPath& path, const QPen& pen)
{
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

/// The points of a line along columns.
template <class Function>
void ForEachPoint(const std::vector<CGraphColumn>& vecColumns, Function function)
{
    for (const CGraphColumn& column : vecColumns) {
        for (int i = 0; i < column.nCount; ++i)
            function(QPointF(column.nX, column.arrY[static_cast<size_t>(i)]));
    }
}

} // namespace

CGraphLinePainter::CGraphLinePainter(QPainter& painter)
    : m_painter(painter)
    , m_nScale(ScaleForRects(painter))
{}

bool CGraphLinePainter::IsThin(const QPen& pen) const
{
    return m_nScale == 1 && pen.width() == 1 && IsPlain(pen) && pen.capStyle() != Qt::FlatCap;
}

void CGraphLinePainter::DrawLine(const QPoint& from, const QPoint& to, const QPen& pen)
{
    if (!IsThin(pen) || (from.x() != to.x() && from.y() != to.y())) {
        m_painter.setPen(pen);
        m_painter.drawLine(from, to);
        return;
    }
    m_vecRects.push_back(QRect(from, QSize(1, 1)) | QRect(to, QSize(1, 1)));
    FillRects(pen);
}

void CGraphLinePainter::Draw(const std::vector<CGraphColumn>& vecColumns, const QPen& pen)
{
    if (vecColumns.empty() || pen.style() == Qt::NoPen)
        return;
    if (m_nScale > 0 && pen.width() == kMiterWidth && IsPlain(pen) && pen.joinStyle() == Qt::MiterJoin)
        DrawMitered(vecColumns, pen);
    else
        DrawAsPath(vecColumns, pen);
}

void CGraphLinePainter::Draw(const std::vector<QPoint>& vecPoints, const QPen& pen)
{
    if (vecPoints.empty() || pen.style() == Qt::NoPen)
        return;
    QPainterPath path(vecPoints.front());
    path.setFillRule(Qt::WindingFill);
    for (const QPoint& point : vecPoints)
        path.lineTo(point);
    Stroke(m_painter, path, pen);
}

void CGraphLinePainter::DrawAsPath(const std::vector<CGraphColumn>& vecColumns, const QPen& pen)
{
    QPainterPath path(QPointF(vecColumns.front().nX, vecColumns.front().First()));
    path.setFillRule(Qt::WindingFill);
    ForEachPoint(vecColumns, [&path](QPointF point) { path.lineTo(point); });
    Stroke(m_painter, path, pen);
}

void CGraphLinePainter::AddRect(int nLeft, int nTop, int nRight, int nBottom)
{
    m_vecRects.emplace_back(nLeft, nTop, nRight - nLeft, nBottom - nTop);
}

void CGraphLinePainter::FillRects(const QPen& pen)
{
    // In pixels of the device, where the engine fills rectangles without a detour.
    const QTransform saved = m_painter.transform();
    m_painter.setTransform(QTransform::fromScale(1.0 / m_nScale, 1.0 / m_nScale) * saved);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(pen.color());
    m_painter.drawRects(m_vecRects.data(), static_cast<int>(m_vecRects.size()));
    m_painter.setTransform(saved);
    m_vecRects.clear();
}

void CGraphLinePainter::AddBar(const CGraphColumn& column, bool bFirst, bool bLast)
{
    int nTop = column.First();
    int nBottom = nTop;
    const auto cover = [&](int nY, int nBeyond) {
        nTop = std::min(nTop, nY - nBeyond);
        nBottom = std::max(nBottom, nY + nBeyond);
    };
    if (!bFirst)
        cover(column.First(), kBeyondCorner);
    for (int i = 1; i + 1 < column.nCount; ++i) {
        const int nY = column.arrY[static_cast<size_t>(i)];
        const bool bDown = nY > column.arrY[static_cast<size_t>(i) - 1];
        cover(bDown ? nY + kBeyondTurn : nY - kBeyondTurn, 0);
    }
    cover(column.Last(), bLast ? 0 : kBeyondCorner);
    AddRect((column.nX - kBeyondCorner) * m_nScale, nTop * m_nScale, (column.nX + kBeyondCorner) * m_nScale,
            nBottom * m_nScale);
}

void CGraphLinePainter::DrawMitered(const std::vector<CGraphColumn>& vecColumns, const QPen& pen)
{
    const size_t nLast = vecColumns.size() - 1;
    for (size_t i = 0; i <= nLast; ++i) {
        const CGraphColumn& column = vecColumns[i];
        const bool bMoves = column.nCount > 1;
        if (bMoves)
            AddBar(column, i == 0, i == nLast);
        // The bar covers a flat step of one pixel, too.
        if (i < nLast && (!bMoves || vecColumns[i + 1].nX > column.nX + kBeyondCorner))
            AddRect(column.nX * m_nScale, (column.Last() - kBeyondCorner) * m_nScale,
                    vecColumns[i + 1].nX * m_nScale, (column.Last() + kBeyondCorner) * m_nScale);
    }
    FillRects(pen);
    DrawEnds(vecColumns, pen);
}

void CGraphLinePainter::DrawEnds(const std::vector<CGraphColumn>& vecColumns, const QPen& pen)
{
    // The caps, in whatever style, by a pixel at each end in its direction.
    const auto draw = [&](QPoint end, QPoint next) {
        const auto towards = [](int nFrom, int nTo) { return nFrom + std::clamp(nTo - nFrom, -1, 1); };
        QPainterPath path(end);
        path.lineTo(towards(end.x(), next.x()), towards(end.y(), next.y()));
        Stroke(m_painter, path, pen);
    };
    const CGraphColumn& first = vecColumns.front();
    const CGraphColumn& last = vecColumns.back();
    if (vecColumns.size() == 1 && first.nCount == 1)
        return; // a plot without width: a path of one point shows nothing
    draw({first.nX, first.First()},
         first.nCount > 1 ? QPoint(first.nX, first.arrY[1]) : QPoint(vecColumns[1].nX, first.First()));
    draw({last.nX, last.Last()}, last.nCount > 1
                                     ? QPoint(last.nX, last.arrY[static_cast<size_t>(last.nCount) - 2])
                                     : QPoint(vecColumns[vecColumns.size() - 2].nX, last.Last()));
}

} // namespace KxApi
