// SPDX-License-Identifier: Apache-2.0
// What the tree of the device selection dialog shows.
#pragma once

#include <Base/GCString.h>

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class QTreeWidgetItem;

namespace KxApi
{

struct IKxInterface;
struct IKxSystem;

/// A row of the tree: a system, an interface of it, or a device on that.
struct CDeviceListItemData
{
    QTreeWidgetItem* pItem = nullptr; ///< null until it is shown
    IKxSystem* pSystem = nullptr;
    IKxInterface* pInterface = nullptr; ///< null on a system's row
    int32_t nDevice = -1;               ///< index of a device on its interface when it was listed, else -1
    GenICam::gcstring strID;            ///< of a device
    QString strText;
    const char* szIcon = nullptr; ///< path in the resources; null for none

    bool IsDevice() const { return nDevice >= 0; }
    /// Whether it is the row of the same thing, wherever that stands now.
    bool IsSameThing(const CDeviceListItemData& other) const;
};

/// Rows from top to bottom.
using CDeviceList = std::vector<std::unique_ptr<CDeviceListItemData>>;

/// The rows of these systems. What raises an exception is left out, with what lies under it. Raises
/// std::bad_alloc.
/// @param bNotAccessible devices with the access status NoAccess too.
CDeviceList ListDevices(const std::vector<IKxSystem*>& vecSystems, bool bNotAccessible);

/// Whether a tree of one list looks like, and leads to the same things as, a tree of the other.
bool AreSameRows(const CDeviceList& list, const CDeviceList& other);

/// The index that the row's device has now; none when it is gone. Raises what the interface raises.
std::optional<uint32_t> FindDevice(const CDeviceListItemData& row);

} // namespace KxApi
