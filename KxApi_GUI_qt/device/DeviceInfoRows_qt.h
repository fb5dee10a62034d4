// SPDX-License-Identifier: Apache-2.0
// What the tables of the device selection dialog show.
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace KxApi
{

struct IKxInterface;
struct IKxSystem;

/// A line of a table.
struct CInfoRow
{
    QString strName;
    QString strValue;
    Qt::GlobalColor eColor = Qt::black;

    bool operator==(const CInfoRow& other) const
    {
        return strName == other.strName && strValue == other.strValue && eColor == other.eColor;
    }
};
using CInfoRows = std::vector<CInfoRow>;

struct CInterfaceView
{
    CInfoRows rows;
    bool bDiscovery = false; ///< it has settings for discovery
};

struct CDeviceView
{
    CInfoRows rows;
    bool bSelectable = false;
    bool bForceIP = false; ///< it can be given another address
};

/// These raise what the system's and its modules' calls raise; but what the node map of an interface raises
/// is left out of the rows.
CInfoRows ViewSystem(IKxSystem& system);
CInterfaceView ViewInterface(IKxInterface& interface);
/// Selects the device in the interface's node map on the way, unless it is none of GigE Vision.
CDeviceView ViewDevice(IKxInterface& interface, uint32_t nIndex);

} // namespace KxApi
