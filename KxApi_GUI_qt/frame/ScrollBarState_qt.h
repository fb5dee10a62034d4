// SPDX-License-Identifier: Apache-2.0
// A scroll bar of a dialog, as threads see it that may not ask the widget.
#pragma once

#include <algorithm>
#include <atomic>

namespace KxApi
{

/// Any thread. The dialog notes what the bar shows; a position that was asked for is read back before the bar
/// has moved.
struct CScrollBarState
{
    std::atomic<int> nPosition{0};
    std::atomic<int> nMax{0};
    std::atomic<int> nWanted{0};

    /// @param bWaiting whether the bar is still to be moved to where it is wanted.
    int Get(bool bWaiting) const
    {
        return bWaiting ? std::clamp(nWanted.load(), 0, std::max(0, nMax.load())) : nPosition.load();
    }
    void Note(int nShown, int nShownMax)
    {
        nPosition = nShown;
        nMax = nShownMax;
    }
};

} // namespace KxApi
