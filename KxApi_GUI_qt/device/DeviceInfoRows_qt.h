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

/// What the node map of a GigE Vision interface tells of itself or of a device. Its producer has to be asked,
/// which waits while that one searches.
struct CGevFacts
{
    CInfoRows rows;
    bool bForceIP = false; ///< a device that can be given another address
};

/// These leave out what the node map raises. Nothing for other kinds of interfaces.
CGevFacts AskInterface(IKxInterface& interface);
/// Selects the device in the interface's node map on the way.
CGevFacts AskDevice(IKxInterface& interface, uint32_t nIndex);

/// These ask no producer, and raise what the calls of the system and its modules raise.
CInfoRows ViewSystem(IKxSystem& system);
CInterfaceView ViewInterface(IKxInterface& interface, const CGevFacts& facts);
CDeviceView ViewDevice(IKxInterface& interface, uint32_t nIndex, const CGevFacts& facts);

} // namespace KxApi
