// SPDX-License-Identifier: Apache-2.0
// GigE Vision addresses, as the node map of an interface tells them.
#pragma once

#include <GenApi/GenApi.h>

#include <QString>
#include <cstdint>

namespace KxApi
{

struct IKxInterface;

/// An address with its subnet, in host byte order.
struct CGevAddresses
{
    uint32_t nIP = 0;
    uint32_t nMask = 0;
    uint32_t nGateway = 0;
};

/// Why a camera with these addresses can't be reached through a network card.
struct CGevFaults
{
    bool bMask = false;    ///< its mask is another one than the card's
    bool bGateway = false; ///< it has a gateway, which lies outside its own subnet
    bool bSameIP = false;  ///< it has the card's own address
    bool bSubnet = false;  ///< it lies in another subnet
};

CGevFaults FindFaults(const CGevAddresses& host, const CGevAddresses& device);

/// The number of an address such as "192.168.0.1"; 0xFFFFFFFF for a text that isn't one.
uint32_t ParseAddress(const QString& strText);

/// The node map of the interface. Raises LogicalErrorException "NULL pointer dereferenced" when there is
/// none, else what IKxPort::GetINodeMap raises.
GenApi::INodeMap& GetNodeMap(IKxInterface* pInterface);

/// The three features that hold addresses of one kind; each null when the map lacks it.
struct CGevAddressFeatures
{
    GenApi::CIntegerPtr pIP;
    GenApi::CIntegerPtr pMask;
    GenApi::CIntegerPtr pGateway;

    /// Of the network card.
    static CGevAddressFeatures OfInterface(GenApi::INodeMap& map);
    /// Of the device that the map's selector selects.
    static CGevAddressFeatures OfDevice(GenApi::INodeMap& map);

    bool AreThere() const { return pIP.IsValid() && pMask.IsValid() && pGateway.IsValid(); }
    bool AreAvailable() const
    {
        return GenApi::IsAvailable(pIP) && GenApi::IsAvailable(pMask) && GenApi::IsAvailable(pGateway);
    }
    /// Raises what reading raises.
    CGevAddresses Read() const;
};

} // namespace KxApi
