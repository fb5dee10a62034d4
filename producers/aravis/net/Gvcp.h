// SPDX-License-Identifier: Apache-2.0
// Packets of the GigE Vision control protocol, as far as cameras are found and given addresses by them; all
// else is libaravis's. Pure: no sockets here.
#pragma once

#include "common/modules/Technology.h"
#include "net/Socket.h"

#include <cstdint>
#include <optional>
#include <string>

namespace KxAravis
{

inline constexpr uint16_t kGvcpPort = 3956;
inline constexpr uint32_t kToAll = 0xFFFFFFFF;

enum class EGvcpCommand : uint16_t
{
    Discovery = 0x0002,
    ForceIp = 0x0004,
    ReadRegister = 0x0080
};

/// What a camera tells of itself.
struct CGevCamera
{
    uint64_t mac = 0;
    KxProducer::CIpConfig ip;
    std::string vendor, model, version, serial, userName;
    uint16_t versionMajor = 0, versionMinor = 0; // of the standard
    /// Register of control: 0 when nobody has it; none when the camera wasn't asked or gave no answer.
    std::optional<uint32_t> control;
};

/// @param isAnswerToAll asks for an answer that reaches hosts of other subnets.
Bytes MakeDiscovery(uint16_t requestId, bool isAnswerToAll);
Bytes MakeForceIp(uint16_t requestId, uint64_t mac, const KxProducer::CIpConfig& ip);
Bytes MakeReadRegister(uint16_t requestId, uint32_t address);

/// The payload of a datagram that answers the request; none for whatever else reaches a socket: answers to
/// others, refusals, pieces, and things that are no answers at all.
std::optional<Bytes> AnswerTo(EGvcpCommand command, uint16_t requestId, const Bytes& datagram);

/// The camera of a payload of a discovery's answer; none when it is too short.
std::optional<CGevCamera> ParseDiscovery(const Bytes& payload);
std::optional<uint32_t> ParseRegister(const Bytes& payload);

} // namespace KxAravis
