// SPDX-License-Identifier: Apache-2.0
#include "net/StreamFilter.h"

#include <linux/filter.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>
#include <vector>

namespace KxAravis
{
namespace
{

using Program = std::vector<sock_filter>;

// Places behind the UDP header: GVSP has headers of 8 bytes, or of 20 with long IDs.
constexpr uint32_t kUdpHeader = 8;
constexpr uint32_t kEthernetHeader = 14;
constexpr uint32_t kFormat = 4;
constexpr uint32_t kPacketId = 4; // with the format in the highest byte
constexpr uint32_t kLongPacketId = 16;

constexpr uint32_t kHasLongIds = 0x80;
constexpr uint32_t kTrailer = 2;
/// The packets of 600 megabytes in the smallest ones that GigE Vision knows.
constexpr uint32_t kMaxPacketId = 0xFFFFF;
/// How long the stream's thread may take to open its packet socket.
constexpr std::chrono::seconds kPatience{1};

/// Ends with "dropped", or goes on behind its end.
Program DropAbsurd(bool isPacketSocket)
{
    // A datagram begins with its UDP header, a packet with those of Ethernet and of IP, whose length varies.
    const uint32_t nGvsp = kUdpHeader + (isPacketSocket ? kEthernetHeader : 0);
    const sock_filter start = isPacketSocket
                                  ? sock_filter BPF_STMT(BPF_LDX | BPF_B | BPF_MSH, kEthernetHeader)
                                  : sock_filter BPF_STMT(BPF_LDX | BPF_W | BPF_IMM, 0);
    // What is too short for a load is dropped as well.
    return {
        start,
        BPF_STMT(BPF_LD | BPF_B | BPF_IND, nGvsp + kFormat),
        BPF_STMT(BPF_ALU | BPF_AND | BPF_K, 0x7F),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kTrailer, 0, 8),
        BPF_STMT(BPF_LD | BPF_B | BPF_IND, nGvsp + kFormat),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, kHasLongIds, 0, 2),
        BPF_STMT(BPF_LD | BPF_W | BPF_IND, nGvsp + kLongPacketId),
        BPF_JUMP(BPF_JMP | BPF_JA, 2, 0, 0),
        BPF_STMT(BPF_LD | BPF_W | BPF_IND, nGvsp + kPacketId),
        BPF_STMT(BPF_ALU | BPF_AND | BPF_K, 0xFFFFFF),
        BPF_JUMP(BPF_JMP | BPF_JGT | BPF_K, kMaxPacketId, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, 0),
    };
}

int Option(int nFile, int nName)
{
    int nValue = -1;
    socklen_t nSize = sizeof nValue;
    return getsockopt(nFile, SOL_SOCKET, nName, &nValue, &nSize) == 0 ? nValue : -1;
}

bool IsUdpAt(int nFile, uint16_t nPort)
{
    sockaddr_in address = {};
    socklen_t nSize = sizeof address;
    return Option(nFile, SO_DOMAIN) == AF_INET && Option(nFile, SO_TYPE) == SOCK_DGRAM &&
           getsockname(nFile, reinterpret_cast<sockaddr*>(&address), &nSize) == 0 &&
           ntohs(address.sin_port) == nPort;
}

/// The program that a packet socket chooses its packets by; empty for none.
Program FilterOf(int nFile)
{
    socklen_t nCount = 0; // of instructions
    if (Option(nFile, SO_DOMAIN) != AF_PACKET ||
        getsockopt(nFile, SOL_SOCKET, SO_GET_FILTER, nullptr, &nCount) != 0 || nCount == 0)
        return {};
    Program filter(nCount);
    if (getsockopt(nFile, SOL_SOCKET, SO_GET_FILTER, filter.data(), &nCount) != 0)
        return {};
    return filter;
}

/// Where the system refuses, all is as without a filter.
void Attach(int nFile, Program program, const Program& next)
{
    program.insert(program.end(), next.begin(), next.end()); // jumps count from where they stand
    const sock_fprog filter = {static_cast<unsigned short>(program.size()), program.data()};
    setsockopt(nFile, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter);
}

/// True when the packet socket was among the process's files.
bool AttachToAll(uint16_t nPort)
{
    bool bFound = false;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        const int nFile = std::atoi(entry.path().filename().c_str());
        const Program filter = FilterOf(nFile);
        if (std::any_of(filter.begin(), filter.end(), [&](const auto& step) { return step.k == nPort; })) {
            Attach(nFile, DropAbsurd(true), filter);
            bFound = true;
        } else if (IsUdpAt(nFile, nPort)) {
            Attach(nFile, DropAbsurd(false), {BPF_STMT(BPF_RET | BPF_K, UINT32_MAX)});
        }
    }
    return bFound;
}

bool MayUsePacketSockets()
{
    const int nFile = socket(AF_PACKET, SOCK_RAW, 0);
    if (nFile >= 0)
        close(nFile);
    return nFile >= 0;
}

} // namespace

void DropAbsurdPackets(uint16_t nPort)
{
    const auto until = std::chrono::steady_clock::now() + kPatience;
    const bool bPacketSocket = MayUsePacketSockets();
    // The stream's thread opens that one on its own.
    while (!AttachToAll(nPort) && bPacketSocket && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace KxAravis
