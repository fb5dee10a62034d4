// SPDX-License-Identifier: Apache-2.0
#include "net/NetworkCards.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <netpacket/packet.h>

#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace KxAravis
{
namespace
{

uint32_t Number(const sockaddr* address)
{
    return address ? ntohl(reinterpret_cast<const sockaddr_in*>(address)->sin_addr.s_addr) : 0;
}

uint64_t MacOf(const sockaddr_ll& link)
{
    constexpr int kBytes = 6;
    uint64_t mac = 0;
    if (link.sll_halen == kBytes)
        for (int i = 0; i < kBytes; ++i)
            mac = mac << 8 | link.sll_addr[i];
    return mac;
}

/// The gateways by the cards' names. The kernel's table has a line of names first; its numbers are those that
/// lie in memory.
std::map<std::string, uint32_t> FindGateways()
{
    std::map<std::string, uint32_t> gateways;
    std::ifstream table("/proc/net/route");
    std::string line;
    std::getline(table, line);
    while (std::getline(table, line)) {
        std::istringstream fields(line);
        std::string card;
        uint32_t destination = 0, gateway = 0;
        if (fields >> card >> std::hex >> destination >> gateway && destination == 0)
            gateways.emplace(card, ntohl(gateway));
    }
    return gateways;
}

} // namespace

std::vector<CNetworkCard> FindNetworkCards(const std::string& names)
{
    ifaddrs* pList = nullptr;
    if (getifaddrs(&pList) != 0)
        return {};
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> list(pList, freeifaddrs);
    const std::map<std::string, uint32_t> gateways = FindGateways();
    std::map<std::string, uint64_t> macs;
    std::vector<CNetworkCard> cards;
    for (const ifaddrs* p = pList; p; p = p->ifa_next) {
        if (!p->ifa_addr || !(p->ifa_flags & IFF_UP))
            continue;
        if (p->ifa_addr->sa_family == AF_PACKET)
            macs[p->ifa_name] = MacOf(*reinterpret_cast<const sockaddr_ll*>(p->ifa_addr));
        const bool isLoopback = (p->ifa_flags & IFF_LOOPBACK) != 0;
        const bool isNamed =
            ("," + names + ",").find("," + std::string(p->ifa_name) + ",") != std::string::npos;
        // A road from point to point, such as a tunnel, has no cameras at its end.
        const bool isWanted = names.empty() ? !isLoopback && (p->ifa_flags & IFF_BROADCAST) : isNamed;
        if (p->ifa_addr->sa_family != AF_INET || !isWanted)
            continue;
        const auto gateway = gateways.find(p->ifa_name);
        cards.push_back(
            {p->ifa_name,
             0,
             {Number(p->ifa_addr), Number(p->ifa_netmask), gateway == gateways.end() ? 0 : gateway->second},
             isLoopback});
    }
    for (CNetworkCard& card : cards)
        card.mac = macs[card.name];
    return cards;
}

} // namespace KxAravis
