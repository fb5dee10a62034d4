// SPDX-License-Identifier: Apache-2.0
// A UDP socket of one network card.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace KxAravis
{

/// IPv4 addresses here have their first number in the highest byte.
std::string AddressText(uint32_t address);

using Bytes = std::vector<uint8_t>;

/// Bound to the card's address, so that what it sends to all goes out by that card, and answers tell by which
/// card they came. One thread.
class CSocket
{
public:
    static constexpr size_t kMaxDatagram = 2048; // no answer that is waited for is longer

    /// Throws CError that names the address and the system's reason.
    explicit CSocket(uint32_t cardAddress);
    CSocket(CSocket&& other) noexcept
        : m_file(std::exchange(other.m_file, -1))
    {}
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;
    ~CSocket();

    /// False when the system refuses, as it does where no road leads to the address.
    bool Send(const Bytes& datagram, uint32_t address, uint16_t port);
    /// A datagram, cut at kMaxDatagram; none within the time.
    std::optional<Bytes> Receive(int timeoutMs);

private:
    int m_file;
};

} // namespace KxAravis
