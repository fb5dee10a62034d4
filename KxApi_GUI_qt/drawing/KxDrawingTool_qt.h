// SPDX-License-Identifier: Apache-2.0
// The tool for drawing and measuring over the image.
#pragma once

#include "drawing/DrawingLayer_qt.h"
#include "drawing/DrawingModel_qt.h"
#include "drawing/DrawingMouse_qt.h"
#include "drawing/IKxDrawingToolInside.h"

#include <KxApi_GUI/IKxDrawingMeasurements.h>

namespace KxApi
{

/// The tool of one image window: what others call, and the painting. Its model keeps objects and settings,
/// its mouse changes them.
class CKxDrawingTool final : public IKxDrawingToolInside,
                             public IKxDrawingToolForDrawing,
                             public IKxDrawingMeasurements
{
public:
    /// @param host,objRegister of the window; the registers stay the tool's. Raises BadAllocException.
    CKxDrawingTool(IKxDrawingHost& host, CKxRegister& objRegister);
    CKxDrawingTool(const CKxDrawingTool&) = delete;
    CKxDrawingTool& operator=(const CKxDrawingTool&) = delete;
    ~CKxDrawingTool() override = default;

    void DrawOnIKxImageBuffer(IKxImageBuffer* pBuffer) override;
    unsigned int GetGridHLineCount() const override { return m_model.m_nGridHLines; }
    void SetGridHLineCount(unsigned int nCount) override { m_model.m_nGridHLines.Set(nCount); }
    unsigned int GetGridVLineCount() const override { return m_model.m_nGridVLines; }
    void SetGridVLineCount(unsigned int nCount) override { m_model.m_nGridVLines.Set(nCount); }
    _EKxLineStyle_t GetGridLineStyle() const override { return m_model.m_regGridStyle; }
    void SetGridLineStyle(_EKxLineStyle_t eStyle) override { m_model.m_regGridStyle.Set(eStyle); }
    int GetGridLineSize() const override { return m_model.m_regGridSize; }
    void SetGridLineSize(int nSize) override { m_model.m_regGridSize.Set(nSize); }
    unsigned int GetGridLineColor() const override { return m_model.m_regGridColor; }
    void SetGridLineColor(unsigned int nColor) override { m_model.m_regGridColor.Set(nColor); }
    _EKxLineEndcap_t GetGridLineEndcap() const override { return m_model.m_regGridEndcap; }
    void SetGridLineEndcap(_EKxLineEndcap_t eEndcap) override { m_model.m_regGridEndcap.Set(eEndcap); }
    _EKxLineJoin_t GetGridLineJoin() const override { return m_model.m_regGridJoin; }
    void SetGridLineJoin(_EKxLineJoin_t eJoin) override { m_model.m_regGridJoin.Set(eJoin); }
    _EKxLineStyle_t GetDefaultLineStyle() const override { return m_model.m_regDefaultLineStyle; }
    void SetDefaultLineStyle(_EKxLineStyle_t eStyle) override { m_model.m_regDefaultLineStyle.Set(eStyle); }
    int GetDefaultLineSize() const override { return m_model.m_regDefaultLineSize; }
    void SetDefaultLineSize(int nSize) override { m_model.m_regDefaultLineSize.Set(nSize); }
    unsigned int GetDefaultLineColor() const override { return m_model.m_regDefaultLineColor; }
    void SetDefaultLineColor(unsigned int nColor) override { m_model.m_regDefaultLineColor.Set(nColor); }
    _EKxLineEndcap_t GetDefaultLineEndcap() const override { return m_model.m_regDefaultLineEndcap; }
    void SetDefaultLineEndcap(_EKxLineEndcap_t e) override { m_model.m_regDefaultLineEndcap.Set(e); }
    _EKxLineJoin_t GetDefaultLineJoin() const override { return m_model.m_regDefaultLineJoin; }
    void SetDefaultLineJoin(_EKxLineJoin_t eJoin) override { m_model.m_regDefaultLineJoin.Set(eJoin); }

    _EKxDrawingItemType_t GetDrawingItemType() const override { return m_model.ItemType(); }
    void SetDrawingItemType(_EKxDrawingItemType_t eType) override { m_model.SetItemType(eType); }
    void OnDraw(IKxCallbackParamKxApiGUIEventDrawing* pParam) override;

    bool mouseMoveEvent(QWidget* pWidget, QMouseEvent* pEvent, QPoint ptDisplay) override;
    bool mousePressEvent(QWidget* pWidget, QMouseEvent* pEvent, QPoint ptDisplay) override;
    bool mouseReleaseEvent(QWidget* pWidget, QMouseEvent* pEvent, QPoint ptDisplay) override;
    bool keyPressEvent(QWidget* pWidget, QKeyEvent* pEvent) override;
    bool OnContextMenuRequested(QPoint ptGlobal) override;

    void SetQPainterForCtrlLine(QPainter* pPainter) override;
    double GetConversionOfUnitX() const override { return m_model.m_dConversionX; }
    double GetConversionOfUnitY() const override { return m_model.m_dConversionY; }
    double GetConversionOfUnitAngle() const override { return m_model.m_dConversionAngle; }
    bool IsSelectionVisible() const override { return GetDrawingItemType() != KxDrawingItemType_None; }
    CLabelFonts& GetLabelFonts() override { return m_objLabelFonts; }

    std::vector<CKxDrawingMeasurement> GetMeasurements() const override;
    uint64_t GetRevision() const override { return m_model.Revision(); }
    void SelectObject(size_t nIndex) override;

private:
    bool IsActive() const;
    bool ReleaseRight(QPoint ptMenu, QPoint ptDisplay);
    void BuildFormats(_KxOnDrawParamForDrawing_t& param) const;
    void DrawAll(QPainter& painter, const _KxOnDrawParamForDrawing_t& param);
    void DrawGrid(QPainter& painter, const _KxOnDrawParamForDrawing_t& param);
    void DrawItem(QPainter& painter, const _KxOnDrawParamForDrawing_t& param, CKxDrawingItem& item);
    void DrawItems(QPainter& painter, const _KxOnDrawParamForDrawing_t& param);
    void OnKxImageBufferDraw(QPainter* pPainter, IKxImageBuffer* pBuffer);

    CLabelFonts m_objLabelFonts; // outlives the objects, whose labels are of them
    CDrawingModel m_model;
    CDrawingMouse m_mouse{m_model};
    bool m_bRightClickDone = false; // by a request that came before the release
    CDrawingLayer m_objLayer;
    CKxPen m_objCtrlLinePen; // outlines of selected objects
};

} // namespace KxApi
