// SPDX-License-Identifier: Apache-2.0
// Between the tool, the container of an object and its shape.
#pragma once

#include "drawing/DrawingCoordinates_qt.h"
#include "drawing/KxGDI_qt.h"

#include <KxApi_GUI/KxDrawingTypes.h>

#include <QString>
#include <cstddef>
#include <cstdint>

class QMouseEvent;
class QPainter;

namespace KxApi
{

class CLabelCache;
class CLabelFonts;
struct CKxDrawingMeasurement;

/// The place that the tool's exceptions tell.
inline constexpr const char* kDrawingSourceFile = "KxApi_GUI_qt/KxDrawingTool_qt";

/// What a step of the mouse is for.
enum EDrawByMouseMode : uint32_t
{
    DrawByMouse_Build = 1, ///< of building an object
    DrawByMouse_Drag = 2,  ///< of dragging one point or corner
    DrawByMouse_Move = 3,  ///< of moving the whole object
};

/// One step of the mouse as a shape gets it.
struct _KxDrawByMouseParam_t
{
    uint32_t nMode = DrawByMouse_Build;
    size_t nClickIndex = 0; ///< Build: presses and releases so far
    uint32_t nHitCode = 0;  ///< Drag: what of the object
    CKxPointEx ptPrevious;  ///< Drag and Move: the last place of the mouse
};

/// What the mouse is over: 0 nothing, 1 and up the points, or one of these.
enum EHitCode : uint32_t
{
    HitCode_None = 0,
    HitCode_Object = 0x90000,
    HitCode_CornerX0Y1 = 0xA0000,
    HitCode_CornerX1Y0 = 0xB0000,
};

/// What a step changed, a mask.
enum EPointsChanged : uint32_t
{
    PointsChanged_None = 0,
    PointsChanged_Count = 0x1,
    PointsChanged_Coordinates = 0x2,
};

/// No count of releases ends the building, but the right button.
inline constexpr size_t kDragUntilRightButton = 0xFFFE;
/// Points of an object that the mouse makes or drags at most.
inline constexpr size_t kMaxMousePoints = 65535;

/// Distance in window pixels within which the mouse hits.
inline constexpr int kHitTolerance = 6;

/// The tool as shapes see it while they are painted and measured.
struct IKxDrawingToolForDrawing
{
    virtual void SetQPainterForCtrlLine(QPainter* pPainter) = 0;
    virtual double GetConversionOfUnitX() const = 0;
    virtual double GetConversionOfUnitY() const = 0;
    virtual double GetConversionOfUnitAngle() const = 0;
    virtual bool IsSelectionVisible() const = 0;
    virtual CLabelFonts& GetLabelFonts() = 0;

protected:
    ~IKxDrawingToolForDrawing() = default;
};

/// The container as its shape sees it.
struct IKxDrawingItemParent
{
    virtual CDoublePointList& GetDoublePointList() = 0;
    virtual bool GetSel() const = 0;
    virtual bool GetLock() const = 0;
    virtual bool GetHide() const = 0;
    virtual const GenICam::gcstring& GetName() const = 0;
    virtual void SetName(const GenICam::gcstring& strName) = 0;
    virtual void SetQPainterForFigure(QPainter* pPainter) = 0;
    virtual void SetQPainterForText(QPainter* pPainter) = 0;
    virtual IKxPen& GetIKxPen() = 0;
    virtual IKxBrush& GetIKxBrush() = 0;
    virtual IKxFont& GetIKxFont() = 0;
    virtual CLabelCache& GetLabelCache() = 0;

protected:
    ~IKxDrawingItemParent() = default;
};

/// A shape: geometry, steps of the mouse, painting and labels of one kind of object. All of it under the lock
/// of the tool.
struct IKxDrawingItem
{
    virtual void OnDraw(QPainter* pPainter, const _KxOnDrawParamForDrawing_t* pParam,
                        IKxDrawingToolForDrawing* pTool) = 0;
    /// Paints the handles of a selected object.
    virtual void DrawSign(QPainter* pPainter, const _KxOnDrawParamForDrawing_t* pParam) = 0;

    /// Steps of the mouse, at a place in window pixels. Return a mask of EPointsChanged.
    virtual uint32_t OnLButtonDown(void* pTool, QMouseEvent* pEvent, CKxPointEx point,
                                   const _KxOnDrawParamForDrawing_t* pParam,
                                   const _KxDrawByMouseParam_t* pStep) = 0;
    virtual uint32_t OnMouseMove(void* pTool, QMouseEvent* pEvent, CKxPointEx point,
                                 const _KxOnDrawParamForDrawing_t* pParam,
                                 const _KxDrawByMouseParam_t* pStep) = 0;
    virtual uint32_t OnLButtonUp(void* pTool, QMouseEvent* pEvent, CKxPointEx point,
                                 const _KxOnDrawParamForDrawing_t* pParam,
                                 const _KxDrawByMouseParam_t* pStep) = 0;
    virtual uint32_t OnRButtonDown(void* pTool, QMouseEvent* pEvent, CKxPointEx point,
                                   const _KxOnDrawParamForDrawing_t* pParam,
                                   const _KxDrawByMouseParam_t* pStep) = 0;
    virtual uint32_t OnRButtonUp(void* pTool, QMouseEvent* pEvent, CKxPointEx point,
                                 const _KxOnDrawParamForDrawing_t* pParam,
                                 const _KxDrawByMouseParam_t* pStep) = 0;

    /// Releases of the left button that build the object, or kDragUntilRightButton.
    virtual size_t GetDragCountToAdd() const = 0;
    virtual _EKxDisplayText_t GetAvailableDisplayText() const = 0;
    virtual _EKxDisplayText_t GetEnableDisplayText() const = 0;
    virtual void SetEnableDisplayText(_EKxDisplayText_t eText) = 0;
    virtual ~IKxDrawingItem() = default;
    virtual _EKxDrawingItemType_t GetType() const = 0;
    /// Whether points 0 and 1 span a rectangle, whose other corners can be dragged and whose inside is hit.
    virtual bool HasCorner() const = 0;

    /// Whether a place is on what the object shows besides its points and edges.
    virtual bool HitTestContent(CKxPointEx point, const _KxOnDrawParamForDrawing_t* pParam) = 0;
    /// Puts in the values that the shape has, in the tool's units.
    virtual void Measure(const _KxOnDrawParamForDrawing_t& param, const IKxDrawingToolForDrawing& tool,
                         CKxDrawingMeasurement& measurement) const = 0;
};

} // namespace KxApi
