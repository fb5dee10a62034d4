// SPDX-License-Identifier: Apache-2.0
// The window as the rest of the library sees it.
#pragma once

#include <Base/GCString.h>

namespace KxApi
{

class CBaseDialogEx;

struct IKxWndInside
{
    /// Drops the cached value of a node of the window's node map. Nothing while the map isn't made, and for a
    /// name that it hasn't. Any thread.
    virtual void InvalidateNode(const GenICam::gcstring& strName) = 0;

    /// The part dialog, null while there is none; no lock is taken. GUI thread.
    virtual CBaseDialogEx* GetPartDlgHwnd() = 0;

protected:
    ~IKxWndInside() = default;
};

} // namespace KxApi
