// SPDX-License-Identifier: Apache-2.0
// The device selection window as its dialog sees it.
#pragma once

#include "frame/IDlgParent.h"
#include "frame/IKxWndInside.h"

#include <KxApi_GUI/IKxDeviceSelectionWnd.h>

#include <vector>

namespace KxApi
{

struct IKxDeviceSelectionWndInside : IKxDeviceSelectionWnd, IKxWndReleasable, virtual IKxWndInside
{
protected:
    ~IKxDeviceSelectionWndInside() = default;
};

/// The window as the dialog holds it.
struct ICDisplayDeviceSelectionDlgParent : virtual IDlgParent
{
    /// Appends all registered systems. Raises BadAllocException.
    virtual void GetSystems(std::vector<IKxSystem*>& vecSystems) = 0;
    /// What the user chose; each may be null.
    virtual void SetSelectedDeviceInfo(IKxInterface* pInterface, const IKxDeviceInfo* pDeviceInfo) = 0;

protected:
    ~ICDisplayDeviceSelectionDlgParent() = default;
};

} // namespace KxApi
