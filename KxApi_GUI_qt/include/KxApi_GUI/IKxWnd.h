// SPDX-License-Identifier: Apache-2.0
// What all windows have in common.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/IKxCallback.h>
#include <KxApi_TL/IKxReleasable.h>

#include <cstdint>

namespace GenApi
{
struct INodeMap;
}

namespace KxApi
{

/// Kinds of windows.
enum _EKxWindowType_t : uint32_t
{
    KxWindowType_DeviceSelection = 0,
    KxWindowType_ImageDisplay = 1,
    KxWindowType_NodeMapDisplay = 2,
    KxWindowType_GraphDisplay = 3,
};

/// How a window is shown.
enum _EKxWindowMode_t : int32_t
{
    KxWindowMode_None = -1,               ///< it is not shown
    KxWindowMode_Modal = 0,               ///< as a modal dialog; Show returns when it is closed
    KxWindowMode_Modaless = 1,            ///< as a modeless dialog
    KxWindowMode_ModalessOnNewThread = 2, ///< as Modaless; no thread is started in spite of the name
    KxWindowMode_Child = 3,               ///< within a widget of the application
};

/// Describes a kind of window. Lives as long as the process. Any thread.
struct IKxWndInfo
{
    virtual _EKxWindowType_t GetWndType() const = 0;
    /// Name for users, such as "Image display".
    virtual GenICam::gcstring GetWndName() const = 0;

protected:
    ~IKxWndInfo() = default;
};

/// A window. It exists, and keeps its settings, whether or not it is shown: what is on the screen is built by
/// each Show and goes when it is closed. Any thread, but where a call says otherwise.
///
/// Events reach the callbacks registered here; KxApi_GUI/IKxWndCallback.h lists them. RegisterCallback raises
/// InvalidArgumentException for null and BadAllocException; DeregisterCallback InvalidArgumentException for
/// what isn't registered. Calls that take or give texts raise BadAllocException when memory is short.
struct IKxWnd : IKxRegisterCallback
{
    virtual const IKxWndInfo* GetIKxWndInfo() const = 0;

    /// The settings of the window as features; made at the first call. Belongs to the window. Null when the
    /// library's own description of them can't be read. Raises what the node map's making raises.
    virtual GenApi::INodeMap* GetINodeMap() = 0;

    /// The QWidget on the screen, null while the window isn't shown. Use it in the GUI thread only.
    virtual void* GetWindowHandle() = 0;

    virtual GenICam::gcstring GetTitle() = 0;
    /// Changes the title of a window that is shown; without effect on one that isn't. To be found again at
    /// the next Show it has to be read by GetTitle while the window is shown.
    virtual void SetTitle(const GenICam::gcstring& strTitle) = 0;

    /// Position and size of the client area in pixels: on the screen, or in the parent for a child. Kept when
    /// the window is closed. Each pointer may be null.
    virtual void GetPosition(int* pX, int* pY, int* pWidth, int* pHeight) = 0;
    /// Nothing is checked; a window that isn't shown takes the place at the next Show.
    virtual void SetPosition(int nX, int nY, int nWidth, int nHeight) = 0;

    /// Whether the window is on the screen. Visibility is changed by Show and Close.
    virtual bool IsVisible() = 0;

    virtual bool GetVisibleMenu() const = 0;
    virtual void SetVisibleMenu(bool bVisible) = 0;
    virtual bool GetVisibleStatusBar() const = 0;
    virtual void SetVisibleStatusBar(bool bVisible) = 0;

    /// Text for the first field of the status bar, which shows it within half a second; UTF-8.
    virtual void SetUserStatusBarText(const GenICam::gcstring& strText) = 0;

    /// Shows the window; one that is shown is closed first, and stays open beside the new one if a callback
    /// refuses that. From the GUI thread, or from any other thread while the GUI thread handles events: the
    /// call waits for it.
    /// @param pParent a QWidget, or null. A child goes into the layout that the parent has, or stands as a
    /// window without a frame when there is no parent. Raises OutOfRangeException for an unknown mode,
    /// InvalidArgumentException for a child's parent without a layout, BadAllocException, RuntimeException
    /// when the process has no QApplication (see processEventGUI).
    virtual void Show(void* pParent, _EKxWindowMode_t eMode) = 0;

    /// Closes the window if it is visible. A callback may refuse that. From the GUI thread it is done on
    /// return, from other threads soon after; what was on the screen is destroyed when events are handled.
    virtual void Close() = 0;

protected:
    ~IKxWnd() = default;
};

/// What the factories return. Release closes the window and gives it back; one that is still being closed
/// lives until that is done. Other interfaces of the window are had by dynamic_cast or from CIKxWndPtrT.
struct IKxWndReleasable : virtual IKxWnd, IKxReleasable
{
protected:
    ~IKxWndReleasable() = default;
};

} // namespace KxApi
