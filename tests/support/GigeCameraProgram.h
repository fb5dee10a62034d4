// SPDX-License-Identifier: Apache-2.0
// The GigE Vision camera that comes with Aravis, in a network of the program's own: the loopback one of a
// namespace, so that nothing leaves the machine and programs beside each other don't meet.
#pragma once

#include "Child.h"

#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace KxTest
{

/// Before any thread is there, since a namespace is each thread's own. Why there is none, or nothing.
inline std::string EnterNetworkOfItsOwn()
{
    if (unshare(CLONE_NEWNET) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
        return "the system gives no network namespace";
    const int file = socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    std::snprintf(request.ifr_name, IFNAMSIZ, "lo");
    request.ifr_flags = IFF_UP;
    const bool isUp = ioctl(file, SIOCSIFFLAGS, &request) == 0;
    close(file);
    return isUp ? "" : "the loopback network of the namespace doesn't come up";
}

/// The camera that comes with Aravis.
class CameraProgram
{
public:
    explicit CameraProgram(const std::string& lostPerThousand = "0")
        : m_process([&] {
            execlp("arv-fake-gv-camera-0.8", "arv-fake-gv-camera-0.8", "-i", "127.0.0.1", "-s", "GV01", "-r",
                   lostPerThousand.c_str(), nullptr);
        })
    {}

    void Kill() { m_process.Kill(); }
    void Freeze() const { m_process.Send(SIGSTOP); }
    void Thaw() const { m_process.Send(SIGCONT); }

private:
    Child m_process;
};

} // namespace KxTest
