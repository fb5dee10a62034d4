// SPDX-License-Identifier: Apache-2.0
// The node-map window as its dialog and its grid see it.
#pragma once

#include "frame/IDlgParent.h"
#include "frame/IKxWndInside.h"

#include <Base/GCString.h>
#include <KxApi_GUI/IKxNodeMapDisplayWnd.h>

#include <vector>

namespace KxApi
{

/// A registered node. Its address is the handle that the application holds.
struct CNodeInfo
{
    GenICam::gcstring strName; ///< empty for none
    GenApi::INode* pNode;      ///< not owned, may be null
};

/// The window with all of its settings.
struct IKxNodeMapDisplayWndInside : IKxNodeMapDisplayWnd, IKxWndReleasable, virtual IKxWndInside
{
protected:
    ~IKxNodeMapDisplayWndInside() = default;
};

/// The window as the dialog holds it.
struct ICDisplayNodeMapDlgParent : virtual IDlgParent
{
    /// Appends the registered nodes in their order; they belong to the window until they are deregistered.
    virtual void GetNodeInfo(std::vector<CNodeInfo*>& vecNodes) = 0;
    virtual GenApi::EVisibility GetVisibility() const = 0;
    virtual void SetVisibility(GenApi::EVisibility eVisibility) = 0;
    virtual bool GetEnablePolling() const = 0;
    virtual void SetEnablePolling(bool bEnable) = 0;
    virtual IKxNodeMapDisplayWndInside* GetIKxNodeMapDisplayWndInside() = 0;
    /// The same as copies, which stay whatever other threads deregister meanwhile.
    virtual std::vector<CNodeInfo> CopyNodeInfo() = 0;

protected:
    ~ICDisplayNodeMapDlgParent() = default;
};

} // namespace KxApi
