// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawingTool_qt.h"

#include "drawing/DrawingFormats_qt.h"
#include "drawing/DrawingMenu_qt.h"
#include "drawing/DrawingShapes_qt.h"
#include "drawing/IKxBufferDIB_qt.h"
#include "drawing/KxDrawingItemBox_qt.h"

#include <KxApi_GUI/IKxWndCallback.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

namespace KxApi
{
namespace
{

const QColor kCtrlLineColor(0, 162, 232);
constexpr size_t kWorthKeeping = 100;        // weight of objects from which their picture is kept
constexpr unsigned int kMaxGridLines = 4096; // of what the register takes, of which the feature allows 32

/// An image in its own size.
_KxOnDrawParamForDrawing_t ParamOf(const IKxImage& image)
{
    _KxOnDrawParamForDrawing_t param;
    param.nImageWidth = param.nROIWidth = param.nDisplayWidth = image.GetImageWidth();
    param.nImageHeight = param.nROIHeight = param.nDisplayHeight = image.GetImageHeight();
    return param;
}

/// Whether pixels bring an alpha of their own along.
bool HasAlpha(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    constexpr size_t kAlpha = 3; // after the colours
    const auto& info = dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfo(ePixelFormat));
    return info.GetComponentCount() > kAlpha;
}

} // namespace

CKxDrawingTool::CKxDrawingTool(IKxDrawingHost& host, CKxRegister& objRegister)
    : m_model(host, objRegister)
    , m_objCtrlLinePen(kCtrlLineColor, KxLineStyle_Dash, 1)
{}

bool CKxDrawingTool::IsActive() const
{
    const _EKxDrawingItemType_t eType = GetDrawingItemType();
    return eType != KxDrawingItemType_None && eType < kDrawingItemTypes;
}

void CKxDrawingTool::BuildFormats(_KxOnDrawParamForDrawing_t& param) const
{
    KxApi::BuildFormats({m_model.m_strLengthUnit.GetText(), m_model.m_strAreaUnit.GetText(),
                         m_model.m_strAngleUnit.GetText(), m_model.m_nLengthPrecision,
                         m_model.m_nAreaPrecision, m_model.m_nAnglePrecision, m_model.m_nPositionPrecision},
                        param);
}

void CKxDrawingTool::OnDraw(IKxCallbackParamKxApiGUIEventDrawing* pParam)
{
    QPainter& painter = *static_cast<QPainter*>(pParam->GetDC());
    const IKxImage& image = *pParam->GetIKxImage();
    m_model.Looked([&] {
        _KxOnDrawParamForDrawing_t& param = m_model.DrawParam();
        const bool bOtherSize =
            param.nImageWidth != image.GetImageWidth() || param.nImageHeight != image.GetImageHeight();
        param.nImageWidth = image.GetImageWidth();
        param.nImageHeight = image.GetImageHeight();
        param.nROIOffsetX = static_cast<uint64_t>(pParam->GetROIOffsetX());
        param.nROIOffsetY = static_cast<uint64_t>(pParam->GetROIOffsetY());
        param.nROIWidth = static_cast<uint64_t>(pParam->GetROIWidth());
        param.nROIHeight = static_cast<uint64_t>(pParam->GetROIHeight());
        param.nDisplayWidth = static_cast<uint64_t>(pParam->GetDisplayWidth());
        param.nDisplayHeight = static_cast<uint64_t>(pParam->GetDisplayHeight());
        param.SetScales();
        if (bOtherSize)
            m_model.NoteRevision();
        BuildFormats(param);
        if (m_model.Objects().Weight() >= kWorthKeeping) {
            m_objLayer.Paint(painter, m_model.State(), param, [&](QPainter& p) { DrawAll(p, param); });
        } else {
            m_objLayer.Clear();
            DrawAll(painter, param);
        }
    });
}

void CKxDrawingTool::DrawAll(QPainter& painter, const _KxOnDrawParamForDrawing_t& param)
{
    DrawGrid(painter, param);
    if (m_model.HidesAll())
        return;
    DrawItem(painter, param, m_mouse.SelectionRectangle());
    DrawItems(painter, param);
}

void CKxDrawingTool::DrawGrid(QPainter& painter, const _KxOnDrawParamForDrawing_t& param)
{
    const unsigned int nV = GetGridVLineCount();
    const unsigned int nH = GetGridHLineCount();
    if (nV == 0 && nH == 0)
        return;
    const QPoint ptFarthest = ToWindow({1.0, 1.0}, param).ToQPoint();
    QPainterPath path;
    for (unsigned int i = 1; i <= std::min(nV, kMaxGridLines); ++i) {
        const int x = ToWindow({double(i) / (nV + 1), 0}, param).x;
        path.moveTo(x, ptFarthest.y());
        path.lineTo(x, 0);
    }
    for (unsigned int i = 1; i <= std::min(nH, kMaxGridLines); ++i) {
        const int y = ToWindow({0, double(i) / (nH + 1)}, param).y;
        path.moveTo(ptFarthest.x(), y);
        path.lineTo(0, y);
    }
    painter.save();
    painter.setPen(*m_model.GridPen().GetHPen());
    painter.drawPath(path);
    painter.restore();
}

void CKxDrawingTool::DrawItem(QPainter& painter, const _KxOnDrawParamForDrawing_t& param,
                              CKxDrawingItem& item)
{
    IKxDrawingItem* const pShape = item.GetShape();
    if (item.GetHide() || !pShape)
        return;
    painter.save();
    pShape->OnDraw(&painter, &param, this);
    painter.restore();
    if (item.GetSel() && IsSelectionVisible())
        pShape->DrawSign(&painter, &param);
}

void CKxDrawingTool::DrawItems(QPainter& painter, const _KxOnDrawParamForDrawing_t& param)
{
    for (const auto& pItem : m_model.Objects())
        DrawItem(painter, param, *pItem);
}

void CKxDrawingTool::SetQPainterForCtrlLine(QPainter* pPainter)
{
    pPainter->setPen(*m_objCtrlLinePen.GetHPen());
    pPainter->setBackgroundMode(Qt::TransparentMode);
    pPainter->setBrush(Qt::NoBrush);
}

void CKxDrawingTool::DrawOnIKxImageBuffer(IKxImageBuffer* pBuffer)
{
    if (!pBuffer)
        throw GenICam::ExceptionReporter<GenICam::LogicalErrorException>(kDrawingSourceFile, __LINE__,
                                                                         "LogicalErrorException")
            .Report("NULL pointer dereferenced");
    CIKxBufferDIB<CKxDrawingTool>(this, &CKxDrawingTool::OnKxImageBufferDraw)
        .DrawOnImage(pBuffer, KxPixelFormat_RGB8);
}

void CKxDrawingTool::OnKxImageBufferDraw(QPainter* pPainter, IKxImageBuffer* pBuffer)
{
    // A paint on the screen goes by a record of its own. What the screen hides is in the picture all the
    // same.
    m_model.Looked([&] {
        _KxOnDrawParamForDrawing_t param = ParamOf(*pBuffer->GetIKxImage());
        param.bOpaqueTarget = !HasAlpha(pBuffer->GetIKxImage()->GetImagePixelFormat());
        BuildFormats(param);
        DrawGrid(*pPainter, param);
        DrawItems(*pPainter, param);
    });
}

bool CKxDrawingTool::mousePressEvent(QWidget*, QMouseEvent* pEvent, QPoint ptDisplay)
{
    if (!IsActive())
        return false;
    const bool bShift = IsShiftDown();
    bool bTaken = false;
    m_model.Locked([&] {
        const CKxPointEx point{ptDisplay.x(), ptDisplay.y()};
        if (pEvent->button() == Qt::LeftButton)
            bTaken = m_mouse.PressLeft(*pEvent, point, bShift);
        else if (pEvent->button() == Qt::RightButton)
            bTaken = m_mouse.PressRight(point);
    });
    if (pEvent->button() == Qt::RightButton)
        m_bRightClickDone = false;
    return bTaken;
}

bool CKxDrawingTool::mouseMoveEvent(QWidget* pWidget, QMouseEvent* pEvent, QPoint ptDisplay)
{
    if (!IsActive())
        return false;
    const CKxPointEx point{ptDisplay.x(), ptDisplay.y()};
    bool bTaken = false;
    if (m_mouse.IsHovering(*pEvent)) {
        bTaken = m_model.Looked([&] { return m_mouse.Hover(*pWidget, point); });
        if (bTaken)
            m_model.Repaint();
    } else {
        m_model.Locked([&] { bTaken = m_mouse.Move(*pWidget, *pEvent, point); });
    }
    return bTaken;
}

bool CKxDrawingTool::mouseReleaseEvent(QWidget*, QMouseEvent* pEvent, QPoint ptDisplay)
{
    if (!IsActive())
        return false;
    if (pEvent->button() == Qt::RightButton)
        return std::exchange(m_bRightClickDone, false) || ReleaseRight(pEvent->pos(), ptDisplay);
    bool bTaken = false;
    m_model.Locked([&] {
        if (pEvent->button() == Qt::LeftButton)
            bTaken = m_mouse.ReleaseLeft(*pEvent, {ptDisplay.x(), ptDisplay.y()});
    });
    return bTaken;
}

bool CKxDrawingTool::OnContextMenuRequested(QPoint ptGlobal)
{
    if (!IsActive())
        return false;
    m_bRightClickDone = true;
    ReleaseRight(ptGlobal, ptGlobal);
    return true;
}

bool CKxDrawingTool::ReleaseRight(QPoint ptMenu, QPoint ptDisplay)
{
    if (GetDrawingItemType() == KxDrawingItemType_Select) {
        RunDrawingMenu(m_model, ptMenu);
        return false;
    }
    bool bTaken = false;
    m_model.Locked([&] { bTaken = m_mouse.ReleaseRight({ptDisplay.x(), ptDisplay.y()}); });
    return bTaken;
}

bool CKxDrawingTool::keyPressEvent(QWidget*, QKeyEvent* pEvent)
{
    const bool bDelete = pEvent->key() == Qt::Key_Backspace || pEvent->key() == Qt::Key_Delete;
    if (!bDelete || GetDrawingItemType() != KxDrawingItemType_Select)
        return false;
    m_model.DeleteSelected();
    return true;
}

std::vector<CKxDrawingMeasurement> CKxDrawingTool::GetMeasurements() const
{
    return m_model.Looked([this] {
        std::vector<CKxDrawingMeasurement> vecMeasurements;
        for (const auto& pItem : m_model.Objects()) {
            CKxDrawingMeasurement& measurement = vecMeasurements.emplace_back();
            measurement.eType = pItem->GetType();
            measurement.strName = pItem->GetName();
            measurement.bSelected = pItem->GetSel();
            for (const CDoublePoint& point : pItem->GetPoints())
                measurement.vecPoints.push_back({point.x, point.y});
            if (const IKxDrawingItem* const pShape = pItem->GetShape())
                pShape->Measure(m_model.DrawParam(), *this, measurement);
        }
        return vecMeasurements;
    });
}

void CKxDrawingTool::SelectObject(size_t nIndex)
{
    m_model.Locked([&] {
        m_model.CheckObject(nIndex, 0, static_cast<long long>(m_model.Objects().Count()));
        m_model.MoveSelector(nIndex);
        m_model.OnDrawingObjectChanged();
    });
}

} // namespace KxApi
