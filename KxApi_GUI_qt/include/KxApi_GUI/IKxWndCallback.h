// SPDX-License-Identifier: Apache-2.0
// Events of windows, as IKxCallback::OnCallback gets them.
#pragma once

#include <Base/GCException.h>
#include <KxApi_TL/IKxCallback.h>

#include <cstdint>

namespace KxApi
{

struct IKxImage;
struct IKxWnd;

/// Kinds of events, told by IKxCallbackParamBase::GetCallbackType, with the interface of each one's
/// parameter. They arise in the GUI thread, but for errors that another thread meets in a call of its own.
/// DeregisterCallback waits for the end of callbacks, so none may wait for a thread that registers,
/// deregisters or shows a window.
enum EKxGUICallbackType_t : uint32_t
{
    KxGUICallbackType_Drawing = 9,  ///< the image was painted: IKxCallbackParamKxApiGUIEventDrawing
    KxGUICallbackType_Created = 10, ///< what is on the screen was made: IKxCallbackParamKxApiGUIEventBaseWnd
    KxGUICallbackType_Close = 11,   ///< the user closes it: IKxCallbackParamKxApiGUIEventBaseWndClose
    KxGUICallbackType_Destroyed = 12, ///< it is gone: IKxCallbackParamKxApiGUIEventBaseWnd
    KxGUICallbackType_Error = 13,     ///< the window failed: IKxCallbackParamKxApiGUIEventBaseWndError
};

/// An event of a window.
struct IKxCallbackParamKxApiGUIEventBaseWnd : IKxCallbackParamBase
{
    /// The window it comes from.
    virtual IKxWnd* GetIKxWnd() const = 0;

protected:
    ~IKxCallbackParamKxApiGUIEventBaseWnd() = default;
};

/// The window is about to be closed.
struct IKxCallbackParamKxApiGUIEventBaseWndClose : IKxCallbackParamKxApiGUIEventBaseWnd
{
    /// Keeps it open.
    virtual void CancelClose() = 0;

protected:
    ~IKxCallbackParamKxApiGUIEventBaseWndClose() = default;
};

/// Something failed where no caller could be told.
struct IKxCallbackParamKxApiGUIEventBaseWndError : IKxCallbackParamKxApiGUIEventBaseWnd
{
    /// What was raised; it lives during the call.
    virtual const GenICam::GenericException& GetException() const = 0;

protected:
    ~IKxCallbackParamKxApiGUIEventBaseWndError() = default;
};

/// The image was painted, and the application may paint over it.
struct IKxCallbackParamKxApiGUIEventDrawing : IKxCallbackParamKxApiGUIEventBaseWnd
{
    /// The image that is shown.
    virtual IKxImage* GetIKxImage() const = 0;
    /// Left and top of what is visible, in display pixels, that is image pixels times the magnification.
    virtual int GetROIOffsetX() const = 0;
    virtual int GetROIOffsetY() const = 0;
    /// Width and height of the image in pixels.
    virtual int GetROIWidth() const = 0;
    virtual int GetROIHeight() const = 0;
    /// The same in display pixels.
    virtual int GetDisplayWidth() const = 0;
    virtual int GetDisplayHeight() const = 0;
    /// The QPainter, whose unit is the display pixel with the image's corner as origin.
    virtual void* GetDC() const = 0;

protected:
    ~IKxCallbackParamKxApiGUIEventDrawing() = default;
};

} // namespace KxApi
