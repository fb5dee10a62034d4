// SPDX-License-Identifier: Apache-2.0
// Descriptions of the kinds of windows.
#pragma once

#include <KxApi_GUI/IKxWnd.h>

namespace KxApi
{

/// Describes a window class by its constants kWndType and kWndName.
template <class TWnd>
class CWndInfo final : public IKxWndInfo
{
public:
    _EKxWindowType_t GetWndType() const override { return TWnd::kWndType; }
    GenICam::gcstring GetWndName() const override { return TWnd::kWndName; }
};

} // namespace KxApi
