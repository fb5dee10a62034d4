// SPDX-License-Identifier: Apache-2.0
// The dialog as the image widget sees it.
#pragma once

#include <vector>

namespace KxApi
{

struct ICDisplayImageDlgParent;
struct IKxImage;
struct IKxKeyObserverInside;
struct IKxMouseObserverInside;

/// What the image widget asks of the dialog. GUI thread.
struct IDisplayImageWidgetParent
{
    /// The newest image in a format for the screen; valid until the next call. Raises RuntimeException "There
    /// is no available image.", and what the conversion raises.
    virtual IKxImage* GetImage() = 0;
    /// The window.
    virtual ICDisplayImageDlgParent* GetICDisplayImageDlgParent() const = 0;
    /// Whether there ever was an image.
    virtual bool HasImage() const = 0;

    /// Who is offered the mouse and key events of the image, in this order.
    virtual const std::vector<IKxMouseObserverInside*>& getIKxMouseObserverList() const = 0;
    virtual const std::vector<IKxKeyObserverInside*>& getIKxKeyObserverList() const = 0;

    /// Gives the widget the size that the last image has by the window's zoom; false when there is no image
    /// yet. For another zoom mode than the window's, nothing changes. Any thread.
    virtual bool updateImageWidgetSize(bool bFit) = 0;

protected:
    ~IDisplayImageWidgetParent() = default;
};

} // namespace KxApi
