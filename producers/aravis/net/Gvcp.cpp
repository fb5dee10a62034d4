// SPDX-License-Identifier: Apache-2.0
#include "net/Gvcp.h"

#include <algorithm>

namespace KxAravis
{
namespace
{

constexpr size_t kHeader = 8;
constexpr uint8_t kKey = 0x42;
constexpr uint8_t kAnswerWanted = 0x01;
constexpr uint8_t kAnswerToAll = 0x10;

// Offsets in the payload of a discovery's answer, which is a copy of the first registers.
constexpr size_t kDiscoveryLength = 248;
constexpr size_t kMac = 10, kAddress = 36, kMask = 52, kGateway = 68;
constexpr size_t kVendor = 72, kModel = 104, kVersion = 136, kSerial = 216, kUserName = 232;
constexpr size_t kLong = 32, kShort = 16;

// Offsets in the payload of a Force IP.
constexpr size_t kForceLength = 56;
constexpr size_t kForceMac = 2, kForceAddress = 20, kForceMask = 36, kForceGateway = 52;

void Put(Bytes& bytes, size_t offset, uint64_t value, size_t size)
{
    for (size_t i = 0; i < size; ++i)
        bytes[offset + i] = static_cast<uint8_t>(value >> (8 * (size - 1 - i)));
}

uint64_t Get(const Bytes& bytes, size_t offset, size_t size)
{
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i)
        value = value << 8 | bytes[offset + i];
    return value;
}

uint32_t GetAddress(const Bytes& bytes, size_t offset)
{
    return static_cast<uint32_t>(Get(bytes, offset, sizeof(uint32_t)));
}

/// A text fills its place, or ends with NUL.
std::string GetText(const Bytes& bytes, size_t offset, size_t size)
{
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
    const auto end = begin + static_cast<std::ptrdiff_t>(size);
    return {begin, std::find(begin, end, uint8_t{0})};
}

Bytes MakeCommand(EGvcpCommand command, uint8_t flags, uint16_t requestId, size_t payload)
{
    Bytes bytes(kHeader + payload);
    bytes[0] = kKey;
    bytes[1] = flags;
    Put(bytes, 2, static_cast<uint16_t>(command), 2);
    Put(bytes, 4, payload, 2);
    Put(bytes, 6, requestId, 2);
    return bytes;
}

} // namespace

Bytes MakeDiscovery(uint16_t requestId, bool isAnswerToAll)
{
    const auto flags = static_cast<uint8_t>(kAnswerWanted | (isAnswerToAll ? kAnswerToAll : 0));
    return MakeCommand(EGvcpCommand::Discovery, flags, requestId, 0);
}

Bytes MakeForceIp(uint16_t requestId, uint64_t mac, const KxProducer::CIpConfig& ip)
{
    Bytes bytes = MakeCommand(EGvcpCommand::ForceIp, kAnswerWanted | kAnswerToAll, requestId, kForceLength);
    Put(bytes, kHeader + kForceMac, mac, 6);
    Put(bytes, kHeader + kForceAddress, ip.address, 4);
    Put(bytes, kHeader + kForceMask, ip.mask, 4);
    Put(bytes, kHeader + kForceGateway, ip.gateway, 4);
    return bytes;
}

Bytes MakeReadRegister(uint16_t requestId, uint32_t address)
{
    Bytes bytes = MakeCommand(EGvcpCommand::ReadRegister, kAnswerWanted, requestId, sizeof address);
    Put(bytes, kHeader, address, sizeof address);
    return bytes;
}

std::optional<Bytes> AnswerTo(EGvcpCommand command, uint16_t requestId, const Bytes& datagram)
{
    if (datagram.size() < kHeader)
        return std::nullopt;
    const bool isGood = Get(datagram, 0, 2) == 0;
    const bool isOfCommand = Get(datagram, 2, 2) == static_cast<uint64_t>(command) + 1;
    const auto length = static_cast<size_t>(Get(datagram, 4, 2));
    if (!isGood || !isOfCommand || Get(datagram, 6, 2) != requestId || datagram.size() < kHeader + length)
        return std::nullopt;
    const auto begin = datagram.begin() + kHeader;
    return Bytes(begin, begin + static_cast<std::ptrdiff_t>(length));
}

std::optional<CGevCamera> ParseDiscovery(const Bytes& payload)
{
    if (payload.size() < kDiscoveryLength)
        return std::nullopt;
    CGevCamera camera;
    camera.versionMajor = static_cast<uint16_t>(Get(payload, 0, 2));
    camera.versionMinor = static_cast<uint16_t>(Get(payload, 2, 2));
    camera.mac = Get(payload, kMac, 6);
    camera.ip = {GetAddress(payload, kAddress), GetAddress(payload, kMask), GetAddress(payload, kGateway)};
    camera.vendor = GetText(payload, kVendor, kLong);
    camera.model = GetText(payload, kModel, kLong);
    camera.version = GetText(payload, kVersion, kLong);
    camera.serial = GetText(payload, kSerial, kShort);
    camera.userName = GetText(payload, kUserName, kShort);
    return camera;
}

std::optional<uint32_t> ParseRegister(const Bytes& payload)
{
    return payload.size() < sizeof(uint32_t) ? std::nullopt : std::optional(GetAddress(payload, 0));
}

} // namespace KxAravis
