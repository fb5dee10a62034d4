// SPDX-License-Identifier: Apache-2.0
// The tool for drawing over images, as the image window's dialog and widget see it.
#pragma once

#include <KxApi_GUI/IKxDrawingTool.h>

#include <QPoint>

class QKeyEvent;
class QMouseEvent;
class QWidget;

namespace KxApi
{

struct IKxCallbackParamKxApiGUIEventDrawing;

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
struct IKxDrawingToolInside : IKxDrawingTool, IKxMouseObserverInside, IKxKeyObserverInside
{
    virtual _EKxDrawingItemType_t GetDrawingItemType() const = 0;
    virtual void SetDrawingItemType(_EKxDrawingItemType_t eType) = 0;

    /// Paints the grid and the objects over the image that was just painted.
    virtual void OnDraw(IKxCallbackParamKxApiGUIEventDrawing* pParam) = 0;

    /// The user asks for a menu at a place of the screen, which stands for the whole click of the right
    /// button: its release, which comes later, does nothing more. False when the tool is off.
    virtual bool OnContextMenuRequested(QPoint ptGlobal) = 0;

protected:
    ~IKxDrawingToolInside() = default;
};

} // namespace KxApi
