// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawingItem_qt.h"

#include "drawing/DrawingShapes_qt.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace KxApi
{
namespace
{

/// Squares tell as much as distances, and whole numbers exactly.
int64_t SquaredDistance(const CKxPointEx& ptA, const CKxPointEx& ptB)
{
    const int64_t dx = int64_t{ptA.x} - ptB.x;
    const int64_t dy = int64_t{ptA.y} - ptB.y;
    return dx * dx + dy * dy;
}

constexpr int64_t kSquaredTolerance = int64_t{kHitTolerance} * kHitTolerance;

bool IsBetween(double dValue, int nEnd, int nOtherEnd)
{
    return std::min(nEnd, nOtherEnd) <= dValue && dValue <= std::max(nEnd, nOtherEnd);
}

bool IsNearEdge(const CKxPointEx& pt, const CKxPointEx& ptA, const CKxPointEx& ptB)
{
    // Most edges of a long stroke are far away.
    if (pt.x < std::min(ptA.x, ptB.x) - kHitTolerance || pt.x > std::max(ptA.x, ptB.x) + kHitTolerance ||
        pt.y < std::min(ptA.y, ptB.y) - kHitTolerance || pt.y > std::max(ptA.y, ptB.y) + kHitTolerance)
        return false;
    if (ptA.x == ptB.x && IsBetween(pt.y, ptA.y, ptB.y))
        return std::abs(ptA.x - pt.x) <= kHitTolerance;
    if (ptA.y == ptB.y && IsBetween(pt.x, ptA.x, ptB.x))
        return std::abs(ptA.y - pt.y) <= kHitTolerance;
    if (ptA.x != ptB.x && ptA.y != ptB.y) {
        const CDoublePoint foot = FootOfPerpendicular(
            {double(pt.x), double(pt.y)}, {double(ptA.x), double(ptA.y)}, {double(ptB.x), double(ptB.y)});
        if (IsBetween(foot.x, ptA.x, ptB.x))
            return (CDoublePoint{double(pt.x), double(pt.y)} - foot).Length() <= kHitTolerance;
    }
    return std::min(SquaredDistance(pt, ptA), SquaredDistance(pt, ptB)) <= kSquaredTolerance;
}

} // namespace

CKxDrawingItem::CKxDrawingItem(const CKxPen& pen, const CKxBrush& brush, const CKxFont& font)
    : m_Pen(pen)
    , m_Brush(brush)
    , m_Font(font)
{}

void CKxDrawingItem::SetQPainterForFigure(QPainter* pPainter)
{
    if (m_Brush.GetBkMode() == KxBackgroundMode_Opaque) {
        pPainter->setBackgroundMode(Qt::OpaqueMode);
        pPainter->setBackground(QBrush(m_Brush.GetBkColor()));
    }
    pPainter->setPen(*m_Pen.GetHPen());
    pPainter->setBrush(*m_Brush.GetHBrush());
}

void CKxDrawingItem::SetQPainterForText(QPainter* pPainter)
{
    pPainter->setFont(*m_Font.GetObject());
    pPainter->setPen(m_Font.GetColor());
    if (m_Font.GetBkMode() == KxBackgroundMode_Opaque) {
        pPainter->setBackgroundMode(Qt::OpaqueMode);
        pPainter->setBackground(QBrush(m_Font.GetBkColor()));
    } else {
        pPainter->setBackgroundMode(Qt::TransparentMode);
    }
}

_EKxDrawingItemType_t CKxDrawingItem::GetType() const
{
    return m_pDrawingObject ? m_pDrawingObject->GetType() : KxDrawingItemType_None;
}

void CKxDrawingItem::SetType(_EKxDrawingItemType_t eType) { m_pDrawingObject = MakeShape(eType, *this); }

uint32_t CKxDrawingItem::HitTest(CKxPointEx point, const _KxOnDrawParamForDrawing_t* pParam) const
{
    if (const uint32_t nHitCode = HitTestPoints(point, *pParam); nHitCode != HitCode_None)
        return nHitCode;
    if (m_pDrawingObject && m_pDrawingObject->HasCorner())
        return HitTestBox(point, *pParam);
    const bool bHit =
        HitTestEdges(point, *pParam) || (m_pDrawingObject && m_pDrawingObject->HitTestContent(point, pParam));
    return bHit ? HitCode_Object : HitCode_None;
}

uint32_t CKxDrawingItem::HitTestPoints(CKxPointEx point, const _KxOnDrawParamForDrawing_t& param) const
{
    // A display of next to no height counts as one that the first point is near to.
    const auto nHeight = static_cast<int64_t>(std::min<uint64_t>(param.nDisplayHeight, 1U << 30));
    int64_t nBest = 4 * nHeight * nHeight;
    size_t nBestIndex = 0;
    for (size_t i = 0; i < m_PointList.size(); ++i) {
        const int64_t nDistance = SquaredDistance(point, ToWindow(m_PointList[i], param));
        if (nDistance < nBest) {
            nBest = nDistance;
            nBestIndex = i;
        }
    }
    return nBest <= kSquaredTolerance ? static_cast<uint32_t>(nBestIndex) + 1 : uint32_t{HitCode_None};
}

uint32_t CKxDrawingItem::HitTestBox(CKxPointEx point, const _KxOnDrawParamForDrawing_t& param) const
{
    if (m_PointList.size() < 2)
        return HitCode_None;
    const CKxPointEx pt0 = ToWindow(m_PointList[0], param);
    const CKxPointEx pt1 = ToWindow(m_PointList[1], param);
    const auto nFarthest = static_cast<int64_t>(std::min<uint64_t>(param.nDisplayHeight, 1U << 30)) * 2;
    const int64_t nToX0Y1 =
        std::min<int64_t>(nFarthest, int64_t{std::abs(point.x - pt0.x)} + std::abs(point.y - pt1.y));
    const int64_t nToX1Y0 = int64_t{std::abs(point.x - pt1.x)} + std::abs(point.y - pt0.y);
    if (nToX1Y0 < nToX0Y1) {
        if (nToX1Y0 <= kHitTolerance)
            return HitCode_CornerX1Y0;
    } else if (nToX0Y1 <= kHitTolerance) {
        return HitCode_CornerX0Y1;
    }
    const bool bInside = std::min(pt0.x, pt1.x) <= point.x + kHitTolerance &&
                         point.x <= std::max(pt0.x, pt1.x) + kHitTolerance &&
                         std::min(pt0.y, pt1.y) <= point.y + kHitTolerance &&
                         point.y <= std::max(pt0.y, pt1.y) + kHitTolerance;
    return bInside ? HitCode_Object : HitCode_None;
}

bool CKxDrawingItem::HitTestEdges(CKxPointEx point, const _KxOnDrawParamForDrawing_t& param) const
{
    if (m_PointList.size() < 2)
        return false;
    // From the last point to the first as well, in open figures too.
    CKxPointEx ptBefore = ToWindow(m_PointList.back(), param);
    return std::any_of(m_PointList.begin(), m_PointList.end(), [&](const CDoublePoint& pt) {
        const CKxPointEx ptWindow = ToWindow(pt, param);
        const bool bNear = IsNearEdge(point, ptBefore, ptWindow);
        ptBefore = ptWindow;
        return bNear;
    });
}

} // namespace KxApi
