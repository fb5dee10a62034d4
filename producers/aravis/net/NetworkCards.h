// SPDX-License-Identifier: Apache-2.0
// The network cards of this machine.
#pragma once

#include "common/modules/Technology.h"

#include <cstdint>
#include <string>
#include <vector>

namespace KxAravis
{

/// A card that has an IPv4 address. One with several is several here, as cameras are reached by addresses.
struct CNetworkCard
{
    std::string name; ///< as the system calls it, such as "eth0"
    uint64_t mac = 0;
    KxProducer::CIpConfig ip;
    bool isLoopback = false;

    bool IsSame(const CNetworkCard& other) const
    {
        return name == other.name && ip.address == other.ip.address;
    }
};

/// The cards that are up, in the system's order.
/// @param names those that are wanted, with commas between them; "lo" is the machine itself, for cameras that
/// are programs. Empty for all but that.
std::vector<CNetworkCard> FindNetworkCards(const std::string& names);

} // namespace KxAravis
