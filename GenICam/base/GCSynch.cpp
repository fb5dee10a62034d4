// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <Base/GCSynch.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

namespace GenICam
{
namespace
{
constexpr size_t kMaxLockName = 200;
constexpr std::chrono::milliseconds kRetryPeriod(5);

std::string LockFilePath(const gcstring& name)
{
    if (name.empty() || name.size() > kMaxLockName)
        throw INVALID_ARGUMENT_EXCEPTION("The name of a global lock must have 1 to %zu bytes, not %zu",
                                         kMaxLockName, name.size());
    std::string path = "/tmp/kxapi-lock-";
    for (size_t i = 0; i < name.size(); ++i) {
        const char ch = name.c_str()[i];
        const bool plain = (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') ||
                           ch == '_' || ch == '-' || ch == '.';
        path += plain ? ch : '_';
    }
    return path;
}

/// Opens the file that stands for a lock, or returns -1.
int OpenLockFile(const std::string& path)
{
    // Whoever came first may be another user whose file we may only read; a lock needs no more.
    const int created = open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
    return created >= 0 ? created : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
}
} // namespace

void CLock::RaiseNotHeld()
{
    throw LOGICAL_ERROR_EXCEPTION("A lock was unlocked by a thread that doesn't hold it");
}

CGlobalLock::CGlobalLock(const gcstring& name)
    : m_file(OpenLockFile(LockFilePath(name)))
{}

CGlobalLock::~CGlobalLock()
{
    if (m_file >= 0)
        close(m_file); // frees the lock as well
}

bool CGlobalLock::Lock(unsigned int timeoutMs)
{
    if (m_file < 0 || m_held)
        return false;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        m_held = flock(m_file, LOCK_EX | LOCK_NB) == 0;
        const auto left = deadline - std::chrono::steady_clock::now();
        if (m_held || (errno != EWOULDBLOCK && errno != EINTR) || left <= left.zero())
            return m_held;
        std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(left, kRetryPeriod));
    }
}

void CGlobalLock::Unlock()
{
    if (m_held)
        flock(m_file, LOCK_UN);
    m_held = false;
}
} // namespace GenICam
