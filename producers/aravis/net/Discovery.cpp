// SPDX-License-Identifier: Apache-2.0
#include "net/Discovery.h"

#include "common/gentl/Error.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>

namespace KxAravis
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr uint32_t kControlRegister = 0x0A00;
constexpr int kControlTimeoutMs = 100; // for all cameras together; most answer within one
constexpr size_t kMaxCameras = 1024;   // on one card
constexpr int kForceAttempts = 3;
constexpr int kForceTimeoutMs = 500; // for each

/// Answers are told apart by this number, which must not be 0.
uint16_t NextRequest()
{
    static std::atomic<uint16_t> last{0};
    const uint16_t next = ++last;
    return next != 0 ? next : ++last;
}

/// Hands each datagram of the time to a function until that returns true; whether it did.
template <class Take>
bool Listen(CSocket& socket, int timeoutMs, Take take)
{
    const auto end = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0)
            return false;
        const std::optional<Bytes> datagram = socket.Receive(static_cast<int>(left));
        if (datagram && take(*datagram))
            return true;
    }
}

/// Asks each camera who controls it.
void AskForControl(CSocket& socket, std::map<uint64_t, CGevCamera>& cameras, const CNetworkCard& card)
{
    std::map<uint16_t, CGevCamera*> asked;
    for (auto& [mac, camera] : cameras) {
        const uint16_t request = NextRequest();
        if (IsInSubnet(card, camera) &&
            socket.Send(MakeReadRegister(request, kControlRegister), camera.ip.address, kGvcpPort))
            asked[request] = &camera;
    }
    if (asked.empty())
        return;
    Listen(socket, kControlTimeoutMs, [&](const Bytes& datagram) {
        for (auto place = asked.begin(); place != asked.end(); ++place) {
            if (const auto payload = AnswerTo(EGvcpCommand::ReadRegister, place->first, datagram)) {
                place->second->control = ParseRegister(*payload);
                asked.erase(place);
                break;
            }
        }
        return asked.empty();
    });
}

} // namespace

bool IsInSubnet(const CNetworkCard& card, const CGevCamera& camera)
{
    return ((card.ip.address ^ camera.ip.address) & card.ip.mask) == 0;
}

std::vector<CGevCamera> Discover(const CNetworkCard& card, const CDiscoverySettings& settings, int timeoutMs)
{
    CSocket socket(card.ip.address);
    const uint16_t request = NextRequest();
    const Bytes question = MakeDiscovery(request, settings.isAnswerToAll);
    // Where no road leads to all, the subnet is asked; the machine itself has no address for all.
    if (card.isLoopback || !socket.Send(question, settings.destination, kGvcpPort))
        socket.Send(question, card.isLoopback ? card.ip.address : card.ip.address | ~card.ip.mask, kGvcpPort);

    std::map<uint64_t, CGevCamera> cameras;
    Listen(socket, timeoutMs, [&](const Bytes& datagram) {
        const auto payload = AnswerTo(EGvcpCommand::Discovery, request, datagram);
        const auto camera = payload ? ParseDiscovery(*payload) : std::nullopt;
        if (camera && cameras.size() < kMaxCameras)
            cameras[camera->mac] = *camera;
        return false;
    });
    AskForControl(socket, cameras, card);
    std::vector<CGevCamera> found;
    found.reserve(cameras.size());
    for (auto& [mac, camera] : cameras)
        found.push_back(std::move(camera));
    return found;
}

void ForceIp(const CNetworkCard& card, uint64_t mac, const KxProducer::CIpConfig& ip)
{
    CSocket socket(card.ip.address);
    for (int i = 0; i < kForceAttempts; ++i) {
        const uint16_t request = NextRequest();
        const Bytes command = MakeForceIp(request, mac, ip);
        socket.Send(command, kToAll, kGvcpPort);
        if (card.isLoopback)
            socket.Send(command, card.ip.address, kGvcpPort);
        if (Listen(socket, kForceTimeoutMs, [&](const Bytes& datagram) {
                return AnswerTo(EGvcpCommand::ForceIp, request, datagram).has_value();
            }))
            return;
    }
    KxProducer::Fail(GenTL::GC_ERR_TIMEOUT,
                     "The camera with the MAC address %012llx didn't take the address %s",
                     static_cast<unsigned long long>(mac), AddressText(ip.address).c_str());
}

} // namespace KxAravis
