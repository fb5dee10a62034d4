// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace KxTest
{

/// Lets no file of the process grow beyond a size, as a full disk does, while it lives.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
        : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{size, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int);
};

} // namespace KxTest
