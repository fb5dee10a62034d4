// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawingItemBase_qt.h"

#include "drawing/DevicePixels_qt.h"
#include "drawing/LabelCache_qt.h"
#include "frame/utility_qt.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygon>
#include <cmath>

namespace KxApi
{
namespace
{

constexpr int kWorthAMask = 1024; // handles from which a mask is the faster way
constexpr int kSnapRatio = 4;     // of the sides, up to which a line under Shift becomes level or upright

/// The box of a handle.
QRect SignBox(const CKxPointEx& pt) { return {pt.x - 5, pt.y - 5, 10, 10}; }

/// Whether a figure may be painted atop of what is there. On opaque pixels this looks the same as painting
/// over them, and keeps Qt from its filler of wide vectors: after each of an outline's many short spans that
/// one makes the processor change between instruction sets, which takes longer than all the rest.
bool MayPaintAtop(const QPainter& painter, const _KxOnDrawParamForDrawing_t& param, size_t nPoints)
{
    return param.bOpaqueTarget && nPoints < kWorthAMask && painter.brush().style() == Qt::NoBrush;
}

/// The handles between the first and the last point, of which a stroke has very many.
void PaintCircles(QPainter& painter, const QPolygon& places)
{
    const auto paintTo = [&places](QPainter& anyPainter) {
        for (const QPoint& pt : places)
            anyPainter.drawEllipse(SignBox({pt.x(), pt.y()}));
    };
    const auto paintToMask = [&](QImage& mask, const QTransform& toMask) {
        QPainter maskPainter(&mask);
        maskPainter.setTransform(toMask);
        maskPainter.setPen(painter.pen());
        paintTo(maskPainter);
    };
    const QRect rcPlaces = places.boundingRect() + QMargins(10, 10, 10, 10);
    if (places.size() < kWorthAMask || painter.brush().style() != Qt::NoBrush ||
        !PaintByMask(painter, rcPlaces, painter.pen().color(), paintToMask))
        paintTo(painter);
}

} // namespace

CKxDrawingItemBase::CKxDrawingItemBase(IKxDrawingItemParent* pParent, const CShapeTraits& traits)
    : m_pParent(pParent)
    , m_traits(traits)
    , m_eEnabledText(static_cast<_EKxDisplayText_t>(traits.nEnabledText))
    , m_pPointList(&pParent->GetDoublePointList())
{
    if (traits.ePointCount == EPointCount::Exactly || m_pPointList->size() < traits.nPoints)
        m_pPointList->resize(traits.nPoints);
}

void CKxDrawingItemBase::OnDraw(QPainter* pPainter, const _KxOnDrawParamForDrawing_t* pParam,
                                IKxDrawingToolForDrawing* pTool)
{
    if (!HasPoints(m_traits.nPointsToPaint))
        return;
    const CPaint paint{{*pParam, *pTool}, *pPainter};
    m_pParent->SetQPainterForFigure(pPainter);
    if (MayPaintAtop(*pPainter, *pParam, m_pPointList->size()))
        pPainter->setCompositionMode(QPainter::CompositionMode_SourceAtop);
    PaintFigure(paint);
    pPainter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (m_pParent->GetSel() && pTool->IsSelectionVisible()) {
        pTool->SetQPainterForCtrlLine(pPainter);
        PaintControlOutline(paint);
    }
    if (m_eEnabledText == KxDisplayText_None)
        return;
    m_pParent->SetQPainterForText(pPainter);
    m_pParent->GetLabelCache().Begin(pPainter->font(), pTool->GetLabelFonts());
    PaintLabels(paint);
}

void CKxDrawingItemBase::DrawSign(QPainter* pPainter, const _KxOnDrawParamForDrawing_t* pParam)
{
    if (!m_pParent->GetSel() || m_pPointList->empty())
        return;
    pPainter->setPen(QColor(Qt::white));
    const QRect rcFirst = SignBox(Window(0, *pParam));
    pPainter->drawRects(&rcFirst, 1);
    const size_t nCount = m_pPointList->size();
    if (nCount < 2)
        return;
    QPolygon places;
    for (size_t i = 1; i + 1 < nCount; ++i) {
        // Handles on the same pixels look like one.
        const QPoint ptPlace = Window(i, *pParam).ToQPoint();
        if (places.isEmpty() || places.last() != ptPlace)
            places.append(ptPlace);
    }
    PaintCircles(*pPainter, places);
    const QRect rcLast = SignBox(Window(nCount - 1, *pParam));
    pPainter->fillRect(rcLast, QColor(Qt::black));
    pPainter->drawRects(&rcLast, 1);
}

uint32_t CKxDrawingItemBase::OnLButtonDown(void*, QMouseEvent* pEvent, CKxPointEx point,
                                           const _KxOnDrawParamForDrawing_t* pParam,
                                           const _KxDrawByMouseParam_t* pStep)
{
    // A feature may have taken points away since the step before.
    if (pStep->nMode != DrawByMouse_Build)
        return PointsChanged_None;
    if (m_pPointList->size() < m_traits.nPoints)
        m_pPointList->resize(m_traits.nPoints);
    return BeginBuildStep({point.ChangeCoordinateWindowToImagePercent(pParam), pStep->nClickIndex, 0,
                           HitCode_None, pEvent->buttons() == Qt::LeftButton, *pParam});
}

uint32_t CKxDrawingItemBase::OnMouseMove(void*, QMouseEvent* pEvent, CKxPointEx point,
                                         const _KxOnDrawParamForDrawing_t* pParam,
                                         const _KxDrawByMouseParam_t* pStep)
{
    CStep step{point.ChangeCoordinateWindowToImagePercent(pParam),
               pStep->nClickIndex,
               0,
               pStep->nHitCode,
               pEvent->buttons() == Qt::LeftButton,
               *pParam};
    switch (pStep->nMode) {
    case DrawByMouse_Build:
        if (m_pPointList->size() < m_traits.nPoints)
            m_pPointList->resize(m_traits.nPoints);
        return BuildStep(step);
    case DrawByMouse_Drag:
        step.nPoint = static_cast<size_t>(pStep->nHitCode) - 1;
        return DragStep(step);
    case DrawByMouse_Move: {
        const CDoublePoint delta =
            (point - pStep->ptPrevious).ChangeCoordinateWindowDeltaToImagePercentDelta(pParam);
        for (CDoublePoint& pt : *m_pPointList)
            pt = pt + delta;
        return PointsChanged_Coordinates;
    }
    default:
        return PointsChanged_None;
    }
}

uint32_t CKxDrawingItemBase::DragStep(const CStep& step)
{
    // Features may give a shape more points than it has a use for.
    const bool bFixed = m_traits.ePointCount == EPointCount::Exactly && m_traits.nPoints != 0;
    if (step.nPoint >= m_pPointList->size() || step.nPoint >= (bFixed ? m_traits.nPoints : kMaxMousePoints))
        return PointsChanged_None;
    (*m_pPointList)[step.nPoint] = step.ptMouse;
    return PointsChanged_Coordinates;
}

CDoublePoint CKxDrawingItemBase::Units(size_t nPoint, const CRuler& ruler) const
{
    const CDoublePoint ptImage = Image(nPoint, ruler.param);
    return {ptImage.x * ruler.tool.GetConversionOfUnitX(), ptImage.y * ruler.tool.GetConversionOfUnitY()};
}

CDoublePointList CKxDrawingItemBase::UnitsOfAll(const CRuler& ruler) const
{
    const double dFactorX = static_cast<double>(ruler.param.nImageWidth) * ruler.tool.GetConversionOfUnitX();
    const double dFactorY = static_cast<double>(ruler.param.nImageHeight) * ruler.tool.GetConversionOfUnitY();
    CDoublePointList vecPoints;
    vecPoints.reserve(m_pPointList->size());
    for (const CDoublePoint& pt : *m_pPointList)
        vecPoints.push_back({pt.x * dFactorX, pt.y * dFactorY});
    return vecPoints;
}

void CKxDrawingItemBase::Measure(const _KxOnDrawParamForDrawing_t& param,
                                 const IKxDrawingToolForDrawing& tool,
                                 CKxDrawingMeasurement& measurement) const
{
    if (HasPoints(m_traits.nPointsToPaint))
        MeasurePoints({param, tool}, measurement);
}

void CKxDrawingItemBase::CorrectPointByShift(size_t nAnchorX, size_t nAnchorY,
                                             const _KxOnDrawParamForDrawing_t* pParam)
{
    if (!HasPoints(2))
        return;
    const double dAnchorX = Points()[nAnchorX].x;
    const double dAnchorY = Points()[nAnchorY].y;
    double& dOtherX = Points()[nAnchorX == 0 ? 1 : 0].x;
    double& dOtherY = Points()[nAnchorY == 0 ? 1 : 0].y;
    const auto dWidth = static_cast<double>(pParam->nImageWidth);
    const auto dHeight = static_cast<double>(pParam->nImageHeight);
    const double dx = (dOtherX - dAnchorX) * dWidth;
    const double dy = (dOtherY - dAnchorY) * dHeight;
    if (!HasCorner() && kSnapRatio * std::abs(dy) <= std::abs(dx))
        dOtherY = dAnchorY;
    else if (!HasCorner() && kSnapRatio * std::abs(dx) <= std::abs(dy))
        dOtherX = dAnchorX;
    else if (dx <= dy)
        dOtherY = dAnchorY + std::copysign(std::abs(dx) / dHeight, dy >= 0 ? 1.0 : -1.0);
    else
        dOtherX = dAnchorX + std::copysign(std::abs(dy) / dWidth, dx >= 0 ? 1.0 : -1.0);
}

void CKxDrawingItemBase::drawText(QPainter& painter, double x, double y, Qt::Alignment eAlignment,
                                  const QString& strText, QRectF* pBoundingRect)
{
    CLabelCache& cache = m_pParent->GetLabelCache();
    const QRect rcText = cache.NextBounds(strText);
    const double w = rcText.width();
    const double h = rcText.height();
    double dLeft = x;
    if (eAlignment & Qt::AlignHCenter)
        dLeft = x - w / 2;
    else if (eAlignment & Qt::AlignRight)
        dLeft = x - w;
    double dTop = y - h;
    if (eAlignment & Qt::AlignVCenter)
        dTop = y - h / 2;
    else if (eAlignment & Qt::AlignTop)
        dTop = y;
    const QRectF rcBox(dLeft, dTop, w, h);
    cache.Paint(painter, rcBox);
    if (pBoundingRect)
        *pBoundingRect = rcBox;
}

void CKxDrawingItemBase::DrawValue(const CPaint& paint, CKxPointEx ptAnchor, int nAlignment,
                                   const char* szFormat, double dValue)
{
    drawText(paint.painter, ptAnchor.x, ptAnchor.y, static_cast<Qt::Alignment>(nAlignment),
             QString::asprintf(szFormat, dValue)); // NOLINT(clang-diagnostic-format-nonliteral)
}

void CKxDrawingItemBase::DrawPosition(const CPaint& paint, CKxPointEx ptAnchor, int nAlignment,
                                      const CDoublePoint& ptImage)
{
    // NOLINTNEXTLINE(clang-diagnostic-format-nonliteral)
    const QString strText = QString::asprintf(paint.param.szPositionFormat, ptImage.x, ptImage.y);
    drawText(paint.painter, ptAnchor.x, ptAnchor.y, static_cast<Qt::Alignment>(nAlignment), strText);
}

void CKxDrawingItemBase::DrawName(const CPaint& paint, CKxPointEx ptAnchor, int nAlignment)
{
    drawText(paint.painter, ptAnchor.x, ptAnchor.y, static_cast<Qt::Alignment>(nAlignment),
             ToQString(m_pParent->GetName()));
}

void CKxDrawingItemBase::PaintNameAtFirstPoint(const CPaint& paint)
{
    if (!IsEnabled(KxDisplayText_Name))
        return;
    const CKxPointEx pt0 = Window(0, paint.param);
    const CKxPointEx pt1 = Window(1, paint.param);
    const int nOffset = pt0.x < pt1.x ? -PenSize() : PenSize();
    DrawName(paint, {pt0.x + nOffset, pt0.y + nOffset}, kNameAlignments[QuadrantIndex(pt0, pt1)]);
}

double LengthOfPath(const CDoublePointList& vecPoints)
{
    double dLength = 0;
    for (size_t i = 1; i < vecPoints.size(); ++i)
        dLength += (vecPoints[i] - vecPoints[i - 1]).Length();
    return dLength;
}

} // namespace KxApi
