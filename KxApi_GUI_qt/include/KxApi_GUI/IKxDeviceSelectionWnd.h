// SPDX-License-Identifier: Apache-2.0
// The window in which the user chooses a camera.
#pragma once

#include <KxApi_GUI/IKxWnd.h>
#include <KxApi_TL/IKxSystem.h>

namespace KxApi
{

struct IKxDeviceInfo;
struct IKxInterface;

/// The device selection window. It shows the interfaces and devices of the systems that it was given, looks
/// for changes every five seconds while it is shown, and can give a GigE Vision camera another IP address.
/// Any thread.
///
/// `CKxAutoPtr<IKxWndReleasable, IKxDeviceSelectionWnd> window(CreateIKxWnd(KxWindowType_DeviceSelection));`,
/// then register systems, Show as a modal dialog, and GetSelectedDeviceInfo.
struct IKxDeviceSelectionWnd : virtual IKxWnd
{
    /// Shows a system from the next Show, or the next change of a device, on; changes are looked for on those
    /// that were registered before Show. It isn't owned and has to outlive the window; so have the systems
    /// below. Raises InvalidArgumentException for null, BadAllocException.
    virtual void RegisterTargetIKxSystem(IKxSystem* pSystem) = 0;
    /// The same for all systems of an array, as OpenIKxSystems fills it.
    virtual void RegisterTargetIKxSystemList(CIKxSystemPtrArray& systems) = 0;

    /// What the user chose by OK: null and null before, and after Cancel. An interface without a device is
    /// told when a row was chosen that is none. Both belong to the system. Each pointer may be null.
    virtual void GetSelectedDeviceInfo(IKxInterface** ppInterface, const IKxDeviceInfo** ppDeviceInfo) = 0;

protected:
    ~IKxDeviceSelectionWnd() = default;
};

} // namespace KxApi
