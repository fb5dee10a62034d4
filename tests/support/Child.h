// SPDX-License-Identifier: Apache-2.0
// A process of a test's own.
#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace KxTest
{

/// Ends with its owner, and with the whole test, whatever ends these.
class Child
{
public:
    /// @param run what the child does; it ends when that comes back or throws.
    template <class Run>
    explicit Child(const Run& run)
        : m_process(fork())
    {
        if (m_process != 0)
            return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        try {
            run();
        } catch (...) {
            // Not into the test's frames, which would go on with the next test.
        }
        _exit(127);
    }
    ~Child() { Kill(); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void Send(int signal) const
    {
        if (m_process > 0)
            kill(m_process, signal);
    }
    void Kill()
    {
        Send(SIGKILL);
        if (m_process > 0)
            waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process;
};

} // namespace KxTest
