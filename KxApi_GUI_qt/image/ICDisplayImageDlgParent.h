// SPDX-License-Identifier: Apache-2.0
// The image window as its dialog, its widget and the drawing tool see it.
#pragma once

#include "frame/IDlgParent.h"
#include "frame/IKxWndInside.h"
#include "image/ImageViewSettings_qt.h"

namespace KxApi
{

class COverlayParam;
struct IKxDrawingToolInside;
struct IKxImage;
struct IKxImageBufferReleasable;

/// The window with all of its settings.
struct IKxImageDisplayWndInside : IKxImageDisplayWnd, IKxWndReleasable, virtual IKxWndInside
{
    /// The tool for drawing over the image, which belongs to the window; null while there is none.
    virtual IKxDrawingToolInside* GetIKxDrawingToolInside() = 0;

protected:
    ~IKxImageDisplayWndInside() = default;
};

/// The window as the dialog holds it.
struct ICDisplayImageDlgParent : virtual IDlgParent
{
    virtual IKxImageDisplayWndInside* GetIKxImageDisplayWndInside() = 0;

    /// Hands the painter to the application. GUI thread.
    virtual void RunOverlay(COverlayParam* pParam) = 0;

    /// The newest image in a format for the screen, converted if it is new or a setting changed; null when
    /// there is none. It stays what it is until the next call with the same argument. Raises what the
    /// converter raises.
    /// @param bForApplication who keeps it: 1 the application, 0 the widget.
    virtual IKxImageBufferReleasable* GetPreviewImage(unsigned char bForApplication) = 0;
    /// How often the widget's has been asked for: the image of the last call stays while this does. GUI
    /// thread.
    virtual uint64_t GetPreviewCount() const = 0;
    /// The registered image that the widget's last one was made of; it stays as long as that. GUI thread.
    virtual IKxImage* GetPreviewSource() const = 0;

    /// Scroll bars moved or have a new range.
    virtual void OnScrollPosOrRangeChanged() = 0;
    /// What the scroll bars show, and up to where they go.
    virtual void OnScrollState(int nH, int nHMax, int nV, int nVMax) = 0;

    /// Asks for a file name and saves the image as it was registered, or as it is shown. GUI thread.
    virtual void SaveImage(bool bPreview) = 0;

    /// What a frame depends on.
    virtual CImageViewSettings GetViewSettings() const = 0;

protected:
    ~ICDisplayImageDlgParent() = default;
};

} // namespace KxApi
