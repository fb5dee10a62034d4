// SPDX-License-Identifier: Apache-2.0
// Looks for GigE Vision cameras on a network card, and gives them addresses.
#pragma once

#include "net/Gvcp.h"
#include "net/NetworkCards.h"

#include <cstdint>
#include <vector>

namespace KxAravis
{

/// How cameras are asked.
struct CDiscoverySettings
{
    uint32_t destination = kToAll;
    bool isAnswerToAll = true; ///< which cameras of other subnets need
};

/// Whether a camera lies in the card's subnet.
bool IsInSubnet(const CNetworkCard& card, const CGevCamera& camera);

/// Asks and listens; takes the time whatever comes, since a camera may put off its answer for a second. Those
/// in the card's subnet are asked who controls them. In the order of their addresses, so that the order
/// stays. Throws CError when the card gives no socket.
std::vector<CGevCamera> Discover(const CNetworkCard& card, const CDiscoverySettings& settings, int timeoutMs);

/// Gives the camera the addresses, wherever it lies, and waits for its answer. Throws CError when none comes.
void ForceIp(const CNetworkCard& card, uint64_t mac, const KxProducer::CIpConfig& ip);

} // namespace KxAravis
