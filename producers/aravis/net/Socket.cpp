// SPDX-License-Identifier: Apache-2.0
#include "net/Socket.h"

#include "common/gentl/Error.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace KxAravis
{
namespace
{

sockaddr_in Place(uint32_t address, uint16_t port)
{
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(port);
    place.sin_addr.s_addr = htonl(address);
    return place;
}

} // namespace

std::string AddressText(uint32_t address)
{
    return KxProducer::Format("%u.%u.%u.%u", address >> 24, address >> 16 & 0xFF, address >> 8 & 0xFF,
                              address & 0xFF);
}

CSocket::CSocket(uint32_t cardAddress)
    : m_file(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    const int on = 1;
    const sockaddr_in place = Place(cardAddress, 0);
    if (m_file >= 0 && setsockopt(m_file, SOL_SOCKET, SO_BROADCAST, &on, sizeof on) == 0 &&
        bind(m_file, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0)
        return;
    const int error = errno;
    if (m_file >= 0)
        close(m_file);
    KxProducer::Fail(GenTL::GC_ERR_IO, "No socket can be had on %s: %s", AddressText(cardAddress).c_str(),
                     strerror(error));
}

CSocket::~CSocket()
{
    if (m_file >= 0)
        close(m_file);
}

bool CSocket::Send(const Bytes& datagram, uint32_t address, uint16_t port)
{
    const sockaddr_in place = Place(address, port);
    return sendto(m_file, datagram.data(), datagram.size(), MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr*>(&place),
                  sizeof place) == static_cast<ssize_t>(datagram.size());
}

std::optional<Bytes> CSocket::Receive(int timeoutMs)
{
    pollfd wait{m_file, POLLIN, 0};
    if (poll(&wait, 1, timeoutMs) <= 0)
        return std::nullopt;
    Bytes datagram(kMaxDatagram);
    const ssize_t size = recv(m_file, datagram.data(), datagram.size(), MSG_DONTWAIT);
    // A port that nobody listens on shows as an error here; nothing came then either.
    datagram.resize(size > 0 ? static_cast<size_t>(size) : 0);
    return datagram;
}

} // namespace KxAravis
