// SPDX-License-Identifier: Apache-2.0
// The tool for drawing over images, as the image window's dialog and widget see it.
#pragma once

#include <QPoint>
#include <cstdint>

class QKeyEvent;
class QMouseEvent;
class QWidget;

namespace KxApi
{

struct IKxCallbackParamKxApiGUIEventDrawing;
struct IKxImageBuffer;

/// What the mouse draws; the values are those of the feature DrawingItemType and of the toolbar's places.
enum _EKxDrawingItemType_t : uint32_t
{
    KxDrawingItemType_None = 0, ///< the tool is off
    KxDrawingItemType_Select = 1,
    KxDrawingItemType_Line = 2,
    KxDrawingItemType_Rectangle = 3,
    KxDrawingItemType_Ellipse = 4,
    KxDrawingItemType_Text = 5,
    KxDrawingItemType_Angle = 6,
    KxDrawingItemType_Polygon = 7,
    KxDrawingItemType_Perpendicular = 8,
    KxDrawingItemType_Arc = 9,
    KxDrawingItemType_Bezier = 10,
    KxDrawingItemType_FreeHand = 11,
    KxDrawingItemType_Cross = 12,
};

/// Is offered the mouse events of the image. GUI thread.
/// @param pWidget the image widget. @param ptDisplay the place in display pixels, that is image pixels times
/// the magnification; it never lies outside the image. True keeps the event from all others.
struct IKxMouseObserverInside
{
    virtual bool mouseMoveEvent(QWidget* pWidget, QMouseEvent* pEvent, QPoint ptDisplay) = 0;
    virtual bool mousePressEvent(QWidget* pWidget, QMouseEvent* pEvent, QPoint ptDisplay) = 0;
    virtual bool mouseReleaseEvent(QWidget* pWidget, QMouseEvent* pEvent, QPoint ptDisplay) = 0;

protected:
    ~IKxMouseObserverInside() = default;
};

/// The same for the keys pressed over the image.
struct IKxKeyObserverInside
{
    virtual bool keyPressEvent(QWidget* pWidget, QKeyEvent* pEvent) = 0;

protected:
    ~IKxKeyObserverInside() = default;
};

/// The tool. Any thread, but for OnDraw and the events, which are of the GUI thread.
struct IKxDrawingToolInside : IKxMouseObserverInside, IKxKeyObserverInside
{
    /// Draws the objects into an image. Raises what the conversion of its format raises.
    virtual void DrawOnIKxImageBuffer(IKxImageBuffer* pBuffer) = 0;

    /// Lines of the grid over the image, 0 to 32 each way.
    virtual unsigned int GetGridHLineCount() const = 0;
    virtual void SetGridHLineCount(unsigned int nCount) = 0;
    virtual unsigned int GetGridVLineCount() const = 0;
    virtual void SetGridVLineCount(unsigned int nCount) = 0;

    virtual _EKxDrawingItemType_t GetDrawingItemType() const = 0;
    virtual void SetDrawingItemType(_EKxDrawingItemType_t eType) = 0;

    /// Paints the grid and the objects over the image that was just painted.
    virtual void OnDraw(IKxCallbackParamKxApiGUIEventDrawing* pParam) = 0;

protected:
    ~IKxDrawingToolInside() = default;
};

} // namespace KxApi
