// SPDX-License-Identifier: Apache-2.0
// The window that shows and edits the features of node maps.
#pragma once

#include <GenApi/Types.h>
#include <KxApi_GUI/IKxWnd.h>

#include <cstdint>

namespace GenApi
{
struct INode;
}

namespace KxApi
{

/// The node-map window: a grid with a row for each feature of the nodes that it was given, and a page about
/// the chosen feature. Any thread. Settings also exist as features of GetINodeMap; they survive closing.
///
/// Values are read and written in the GUI thread, under the locks of the node maps. What changes a node in
/// another thread is shown soon after.
struct IKxNodeMapDisplayWnd : virtual IKxWnd
{
    /// Shows a node from the next Show or Refresh on, in the order of registration. The root category of a
    /// map, registered without a name, shows all its features. A category with a name is shown under that;
    /// other nodes with a name stand in a group of that name, and so does what else is registered under it.
    ///
    /// The node isn't owned, and has to live until the window was closed, or the node deregistered and the
    /// window refreshed. Returns the handle for DeregisterINode. Raises BadAllocException.
    virtual void* RegisterINode(GenApi::INode* pNode, const GenICam::gcstring& strName) = 0;
    /// Its rows go at the next Refresh. Raises InvalidArgumentException for a handle that isn't registered.
    virtual void DeregisterINode(void* hRegistered) = 0;

    /// Whether features are listed by their names and not in their categories.
    virtual bool GetAlphabeticMode() const = 0;
    virtual void SetAlphabeticMode(bool bAlphabetic) = 0;

    /// Up to which level features are shown: Beginner, Expert or Guru, which is the value at first. Raises
    /// OutOfRangeException for another one.
    virtual GenApi::EVisibility GetVisibility() const = 0;
    virtual void SetVisibility(GenApi::EVisibility eVisibility) = 0;

    /// Opens all categories, or closes them. Nothing while the window isn't shown.
    virtual void Expand() = 0;
    virtual void Collapse() = 0;
    /// Reads all values anew, and takes up what was registered or deregistered. Nothing while the window
    /// isn't shown.
    virtual void Refresh() = 0;

    /// Whether the node maps are polled once a second while the window is shown.
    virtual bool GetEnablePolling() const = 0;
    virtual void SetEnablePolling(bool bEnable) = 0;

    // Which tools the window offers.
    virtual bool GetVisibleAlphabeticMode() const = 0;
    virtual void SetVisibleAlphabeticMode(bool bVisible) = 0;
    virtual bool GetVisibleExpand() const = 0;
    virtual void SetVisibleExpand(bool bVisible) = 0;
    /// For a window that isn't shown yet, the setting of Expand holds for this tool too.
    virtual bool GetVisibleCollapse() const = 0;
    virtual void SetVisibleCollapse(bool bVisible) = 0;
    virtual bool GetVisibleRefresh() const = 0;
    virtual void SetVisibleRefresh(bool bVisible) = 0;
    virtual bool GetVisiblePolling() const = 0;
    virtual void SetVisiblePolling(bool bVisible) = 0;
    virtual bool GetVisibleVisibility() const = 0;
    virtual void SetVisibleVisibility(bool bVisible) = 0;
    virtual bool GetVisibleDescription() const = 0;
    virtual void SetVisibleDescription(bool bVisible) = 0;
    /// Whether the page about a feature has C++ code for it.
    virtual bool GetVisibleDescriptionSampleCode() const = 0;
    virtual void SetVisibleDescriptionSampleCode(bool bVisible) = 0;
    /// Off at first, unlike the others.
    virtual bool GetVisibleFilter() const = 0;
    virtual void SetVisibleFilter(bool bVisible) = 0;

    /// What the filter looks for in the names of the rows, with their units and selectors, whatever the case:
    /// "|" stands between alternatives. UTF-8; texts are cut after 1,024 bytes.
    virtual GenICam::gcstring GetFilterText() const = 0;
    virtual void SetFilterText(const GenICam::gcstring& strText) = 0;
    virtual bool GetEnableFilter() const = 0;
    virtual void SetEnableFilter(bool bEnable) = 0;
    /// Whether the filter text is a regular expression, which the whole name has to match.
    virtual bool GetEnableRegularExpression() const = 0;
    virtual void SetEnableRegularExpression(bool bEnable) = 0;

    /// Grows with each RegisterINode and DeregisterINode.
    virtual uint64_t GetRegisteredAndUnregisteredNodeCount() const = 0;

protected:
    ~IKxNodeMapDisplayWnd() = default;
};

} // namespace KxApi
