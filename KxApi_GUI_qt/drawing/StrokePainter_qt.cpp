// SPDX-License-Identifier: Apache-2.0
#include "drawing/StrokePainter_qt.h"

#include "drawing/DevicePixels_qt.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygon>
#include <algorithm>
#include <cmath>
#include <limits>

namespace KxApi
{
namespace
{

constexpr int kWorthAMask = 1024; // points from which a mask is the faster way
constexpr int kPiece = 16;        // lines that Qt paints at a time
// Centres of pixels lie this little aside, so that those on the brink belong to the same side as Qt's.
constexpr double kCentre = 0.499;

/// Sets the pixels of a mask whose centres lie within a shape.
class CMaskFiller
{
public:
    explicit CMaskFiller(QImage& mask)
        : m_pBits(mask.bits())
        , m_nPitch(mask.bytesPerLine())
        , m_nWidth(mask.width())
        , m_nHeight(mask.height())
    {}

    void FillDisc(const QPointF& ptCentre, double dRadius) const
    {
        const int nEnd = FirstRow(ptCentre.y() + dRadius);
        for (int y = FirstRow(ptCentre.y() - dRadius); y < nEnd; ++y) {
            const double dy = y + kCentre - ptCentre.y();
            const double dHalf = std::sqrt(std::max(0.0, dRadius * dRadius - dy * dy));
            FillSpan(y, ptCentre.x() - dHalf, ptCentre.x() + dHalf);
        }
    }

    /// The rectangle with a line in its middle, to whose sides it is as far as the radius.
    void FillLine(const QPointF& ptA, const QPointF& ptB, double dRadius) const
    {
        constexpr double kEndless = std::numeric_limits<double>::max();
        const double dx = ptB.x() - ptA.x();
        const double dy = ptB.y() - ptA.y();
        const double dSquare = dx * dx + dy * dy;
        if (dSquare == 0)
            return;
        const double dLength = std::sqrt(dSquare);
        const double dReach = dRadius * std::abs(dx) / dLength;
        const double dPerX = dx != 0 ? 1 / dx : 0;
        const double dPerY = dy != 0 ? 1 / dy : 0;
        const double dHalf = dy != 0 ? std::abs(dRadius * dLength * dPerY) : kEndless;
        const int nEnd = FirstRow(std::max(ptA.y(), ptB.y()) + dReach);
        for (int y = FirstRow(std::min(ptA.y(), ptB.y()) - dReach); y < nEnd; ++y) {
            // Between the sides, and between the ends.
            const double dRow = y + kCentre - ptA.y();
            const double dMiddle = dRow * dx * dPerY;
            double dLeft = dMiddle - dHalf;
            double dRight = dMiddle + dHalf;
            if (dx != 0) {
                const double dFrom = -dRow * dy * dPerX;
                const double dTo = dFrom + dSquare * dPerX;
                dLeft = std::max(dLeft, std::min(dFrom, dTo));
                dRight = std::min(dRight, std::max(dFrom, dTo));
            }
            FillSpan(y, ptA.x() + dLeft, ptA.x() + dRight);
        }
    }

private:
    /// The first row, or with the width the first column, whose centre isn't before a place.
    static int First(double dPlace, int nEnd)
    {
        return static_cast<int>(
            std::ceil(std::min(std::max(dPlace - kCentre, 0.0), static_cast<double>(nEnd))));
    }
    int FirstRow(double y) const { return First(y, m_nHeight); }

    void FillSpan(int nRow, double dLeft, double dRight) const
    {
        const int nBegin = First(dLeft, m_nWidth);
        const int nEnd = First(dRight, m_nWidth);
        uchar* const pRow = m_pBits + nRow * qint64{m_nPitch};
        for (int x = nBegin; x < nEnd; ++x)
            pRow[x] = 255;
    }

    uchar* const m_pBits;
    const int m_nPitch;
    const int m_nWidth;
    const int m_nHeight;
};

/// Fills what the round pen covers; a transformation that only scales, both ways alike, keeps it round.
void FillStroke(QImage& mask, const QTransform& toMask, const QVector<QPoint>& vecPath, double dWidth)
{
    const CMaskFiller filler(mask);
    const double dRadius = dWidth * toMask.m11() / 2;
    QPointF ptBefore;
    for (const QPoint& pt : vecPath) {
        const QPointF ptMask = toMask.map(QPointF(pt));
        filler.FillDisc(ptMask, dRadius);
        if (&pt != vecPath.constBegin())
            filler.FillLine(ptBefore, ptMask, dRadius);
        ptBefore = ptMask;
    }
}

bool PaintStrokeByMask(QPainter& painter, const QVector<QPoint>& vecPath)
{
    const QTransform& toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale || toDevice.m11() != toDevice.m22() || toDevice.m11() <= 0)
        return false;
    const QPen pen = painter.pen();
    const double dWidth = std::max(pen.widthF(), 1.0);
    const QRectF rcPath = QPolygon(vecPath).boundingRect();
    const QMarginsF margins(dWidth, dWidth, dWidth, dWidth);
    return PaintByMask(painter, rcPath + margins, pen.color(), [&](QImage& mask, const QTransform& toMask) {
        if (dWidth * toMask.m11() > 1) {
            FillStroke(mask, toMask, vecPath, dWidth);
            return;
        }
        // Qt has its own rules for thin lines, and is fast enough on so few bytes.
        QPainter maskPainter(&mask);
        maskPainter.setTransform(toMask);
        maskPainter.setPen(pen);
        maskPainter.drawPolyline(vecPath.constData(), vecPath.size());
    });
}

} // namespace

void PaintStroke(QPainter& painter, const QVector<QPoint>& vecPath)
{
    if (vecPath.isEmpty())
        return;
    if (painter.brush().style() != Qt::NoBrush) { // which fills open figures too
        QPainterPath path;
        path.addPolygon(QPolygonF(QPolygon(vecPath)));
        painter.drawPath(path);
        return;
    }
    const QPen pen = painter.pen();
    const bool bRound = pen.style() == Qt::SolidLine && pen.capStyle() == Qt::RoundCap &&
                        pen.joinStyle() == Qt::RoundJoin && pen.color().alpha() == 255;
    if (bRound && vecPath.size() >= kWorthAMask && PaintStrokeByMask(painter, vecPath))
        return;
    // Round pieces of one colour make the same figure as the whole, in half the time.
    const int nPiece = bRound && pen.width() > 1 ? kPiece : vecPath.size();
    for (int i = 0; i == 0 || i + 1 < vecPath.size(); i += nPiece)
        painter.drawPolyline(vecPath.constData() + i, std::min(nPiece + 1, vecPath.size() - i));
}

} // namespace KxApi
