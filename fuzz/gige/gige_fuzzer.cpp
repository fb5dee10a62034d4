// SPDX-License-Identifier: Apache-2.0
// Takes whatever comes from the network as an answer of a camera, and as a packet of its images.
//
// Input: one byte that chooses, then the datagram. Packets of images go through sockets of this machine with
// the filter, which has to drop those, and only those, that a plain reading of the header condemns.

#include "net/Gvcp.h"
#include "net/StreamFilter.h"

#include <arpa/inet.h>
#include <linux/filter.h>
#include <net/if.h>
#include <netinet/in.h>
#include <netpacket/packet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace KxAravis;

namespace
{

[[noreturn]] void Fail(const char* what)
{
    std::perror(what);
    std::abort();
}

void Check(bool holds, const char* what)
{
    if (!holds)
        Fail(what);
}

void TakeDiscovery(const Bytes& payload)
{
    constexpr size_t kLongest = 32;
    const std::optional<CGevCamera> camera = ParseDiscovery(payload);
    if (!camera)
        return;
    for (const std::string& text :
         {camera->vendor, camera->model, camera->version, camera->serial, camera->userName})
        Check(text.size() <= kLongest && text.find('\0') == std::string::npos, "text of a camera");
    Check(camera->mac >> 48 == 0, "MAC address");
}

void TakeAnswer(Bytes datagram)
{
    constexpr uint16_t kRequest = 0x1234;
    constexpr size_t kHeader = 8;
    for (const EGvcpCommand command :
         {EGvcpCommand::Discovery, EGvcpCommand::ForceIp, EGvcpCommand::ReadRegister})
    {
        for (const bool isMended : {false, true}) {
            if (isMended && datagram.size() >= kHeader) {
                // What chance wouldn't get right; the length stays.
                const auto answer = static_cast<uint16_t>(static_cast<uint16_t>(command) + 1);
                const Bytes head{0,           0,           uint8_t(answer >> 8), uint8_t(answer),
                                 datagram[4], datagram[5], kRequest >> 8,        kRequest & 0xFF};
                std::copy(head.begin(), head.end(), datagram.begin());
            }
            const std::optional<Bytes> payload = AnswerTo(command, kRequest, datagram);
            if (!payload)
                continue;
            Check(payload->size() + kHeader <= datagram.size(), "payload longer than its datagram");
            TakeDiscovery(*payload);
            Check(ParseRegister(*payload).has_value() == (payload->size() >= 4), "register");
        }
    }
}

/// The sockets as libaravis has them: one for datagrams and, where the system permits, one for packets.
class Stream
{
public:
    Stream()
    {
        m_place.sin_family = AF_INET;
        m_place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof m_place;
        Check(bind(m_udp, reinterpret_cast<const sockaddr*>(&m_place), size) == 0, "bind");
        getsockname(m_udp, reinterpret_cast<sockaddr*>(&m_place), &size);
        const uint16_t port = ntohs(m_place.sin_port);
        if (m_packet >= 0)
            ChoosePort(port);
        DropAbsurdPackets(port);
    }

    /// Whether the packet comes through.
    void Take(const Bytes& packet)
    {
        const Bytes last{0, 0, 0, 0, 1, 0, 0, 0}; // a leader: comes through
        for (const Bytes& sent : {packet, last})
            Check(sendto(m_sender, sent.data(), sent.size(), 0, reinterpret_cast<const sockaddr*>(&m_place),
                         sizeof m_place) == static_cast<ssize_t>(sent.size()),
                  "sendto");
        constexpr size_t kHeaders = 14 + 20 + 8;
        Compare(m_udp, 0, packet, last);
        if (m_packet >= 0)
            Compare(m_packet, kHeaders, packet, last);
    }

private:
    static bool IsDropped(const Bytes& packet)
    {
        constexpr size_t kFormat = 4, kHeader = 8, kLongHeader = 20;
        constexpr uint32_t kMost = 0xFFFFF;
        if (packet.size() <= kFormat)
            return true;
        if ((packet[kFormat] & 0x7F) != 2)
            return false;
        const bool isLong = packet[kFormat] & 0x80;
        const size_t end = isLong ? kLongHeader : kHeader;
        if (packet.size() < end)
            return true;
        const uint32_t id = (isLong ? uint32_t{packet[end - 4]} << 24 : 0) | uint32_t{packet[end - 3]} << 16 |
                            uint32_t{packet[end - 2]} << 8 | packet[end - 1];
        return id > kMost;
    }

    static void Compare(int socket, size_t headers, const Bytes& packet, const Bytes& last)
    {
        std::vector<Bytes> expected;
        if (!IsDropped(packet))
            expected.push_back(packet);
        expected.push_back(last);
        for (const Bytes& next : expected) {
            std::array<uint8_t, 65536> place;
            const ssize_t size = recv(socket, place.data(), place.size(), 0);
            Check(size >= static_cast<ssize_t>(headers), "recv");
            Check(Bytes(place.data() + headers, place.data() + size) == next, "wrong packet came through");
        }
    }

    /// Lets the packet socket have what comes to the port on this machine, each packet once.
    void ChoosePort(uint16_t port)
    {
        std::array<sock_filter, 8> program{{
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<uint32_t>(SKF_AD_OFF + SKF_AD_PKTTYPE)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, PACKET_OUTGOING, 5, 0),
            BPF_STMT(BPF_LD | BPF_B | BPF_ABS, 14 + 9),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, IPPROTO_UDP, 0, 3),
            BPF_STMT(BPF_LD | BPF_H | BPF_ABS, 14 + 20 + 2),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, port, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, UINT32_MAX),
            BPF_STMT(BPF_RET | BPF_K, 0),
        }};
        const sock_fprog filter = {static_cast<unsigned short>(program.size()), program.data()};
        Check(setsockopt(m_packet, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter) == 0, "filter");
        sockaddr_ll card{};
        card.sll_family = AF_PACKET;
        card.sll_protocol = htons(0x0800); // IP
        card.sll_ifindex = static_cast<int>(if_nametoindex("lo"));
        Check(bind(m_packet, reinterpret_cast<const sockaddr*>(&card), sizeof card) == 0, "bind");
    }

    const int m_udp = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const int m_sender = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const int m_packet = socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
    sockaddr_in m_place{};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr size_t kLongest = 9000;
    if (size == 0 || size > kLongest)
        return 0;
    const Bytes datagram(data + 1, data + size);
    if (data[0] % 2 == 0) {
        TakeAnswer(datagram);
        return 0;
    }
    static Stream stream;
    stream.Take(datagram);
    return 0;
}
