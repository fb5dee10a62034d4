// SPDX-License-Identifier: Apache-2.0
// The dialog as the graph widget sees it.
#pragma once

namespace KxApi
{

struct ICDisplayGraphDlgParent;

/// GUI thread.
struct IDisplayGraphWidgetParent
{
    /// The window.
    virtual ICDisplayGraphDlgParent* GetICDisplayGraphDlgParent() const = 0;

protected:
    ~IDisplayGraphWidgetParent() = default;
};

} // namespace KxApi
