// SPDX-License-Identifier: Apache-2.0
#include "COutputFile.h"

#include "FileErrors.h"

#include <KxSDKCommon/KxApi_Exception.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr size_t kOutputBufferSize = size_t{256} * 1024;

/// With the closing slash; empty for a name alone.
std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// Who writes a file holds a lock on it. The names are few and the same in all processes, so that what a
// killed one left is found without looking through the folder, which may hold very many images.
constexpr unsigned kSlots = 16;

std::string TemporaryName(const std::string& folder, unsigned slot)
{
    return folder + ".kx-" + std::to_string(slot) + ".tmp";
}

/// Whether the open file is still the one of that name.
bool IsNamed(int descriptor, const std::string& path)
{
    struct stat opened = {}, named = {};
    return fstat(descriptor, &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Removes a file that nobody writes any more.
void RemoveLeftover(const std::string& path)
{
    const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0)
        return;
    if (flock(descriptor, LOCK_EX | LOCK_NB) == 0 && IsNamed(descriptor, path))
        unlink(path.c_str());
    close(descriptor);
}

/// A new file with its lock, or -1 with errno; EEXIST when the name is in use.
int CreateLocked(const std::string& path)
{
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return -1;
    // Another saver may take it for a leftover before the lock is on it. Where there are no locks, nobody
    // does.
    const bool isLocked = flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (isLocked && IsNamed(descriptor, path))
        return descriptor;
    close(descriptor);
    errno = EEXIST;
    return -1;
}

/// The file that a link leads to, since it is that one which is to be replaced.
std::string ResolveLink(const std::string& path)
{
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode))
        return path;
    const std::unique_ptr<char, void (*)(void*)> resolved(realpath(path.c_str(), nullptr), std::free);
    return resolved ? std::string(resolved.get()) : std::string();
}

} // namespace

COutputFile::COutputFile(const GenICam::gcstring& strPath)
    : m_strShown(ShownPath({strPath.c_str(), strPath.size()}))
    , m_strTarget(ResolveLink(strPath.c_str()))
    , m_pBuffer(std::make_unique<uint8_t[]>(kOutputBufferSize))
{
    if (m_strTarget.empty())
        Raise(strPath.empty() ? ENOENT : errno, "realpath");
    struct stat status = {};
    const bool exists = stat(m_strTarget.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        Raise(EISDIR, "open");
    if (exists && !S_ISREG(status.st_mode))
        Raise(EINVAL, "open", "it is not a regular file");
    // Renaming alone wouldn't ask for the right to write the old file.
    if (exists && access(m_strTarget.c_str(), W_OK) != 0)
        Raise(errno, "access");
    OpenTemporary();
    if (exists)
        TakeRights(status);
}

void COutputFile::OpenTemporary()
{
    const std::string folder = FolderOf(m_strTarget);
    for (unsigned slot = 0; slot < kSlots; ++slot)
        RemoveLeftover(TemporaryName(folder, slot));
    constexpr unsigned kMaxSavers = 1000; // into one folder at the same time
    for (unsigned slot = 0; m_descriptor < 0; ++slot) {
        m_strTemporary = TemporaryName(folder, slot);
        m_descriptor = CreateLocked(m_strTemporary);
        if (m_descriptor < 0 && (errno != EEXIST || slot == kMaxSavers))
            Raise(errno, "open");
    }
}

/// Owner and mode of the file that is replaced. Another's file can be given back to him by the system's
/// administrator only; his group is kept where the process belongs to it.
void COutputFile::TakeRights(const struct stat& old) noexcept
{
    if (fchown(m_descriptor, old.st_uid, old.st_gid) != 0)
        static_cast<void>(fchown(m_descriptor, static_cast<uid_t>(-1), old.st_gid) == 0);
    static_cast<void>(fchmod(m_descriptor, old.st_mode & 07777));
}

COutputFile::~COutputFile()
{
    if (m_descriptor < 0)
        return;
    unlink(m_strTemporary.c_str()); // while the lock is held, which keeps others from the name
    close(m_descriptor);
}

bool COutputFile::Fail(const char* szFunction) noexcept
{
    if (m_error == 0) {
        m_error = errno != 0 ? errno : EIO;
        m_szFailed = szFunction;
    }
    return false;
}

void COutputFile::Raise(int error, const char* szFunction, const char* szCause) const
{
    errno = error; // which the text ends with
    throw KX_LINUX_ERROR_EXCEPTION(error, szFunction, "Cannot write '%s': %s", m_strShown.c_str(),
                                   szCause ? szCause : std::strerror(error));
}

bool COutputFile::WriteThrough(const uint8_t* pData, size_t nSize) noexcept
{
    while (nSize > 0) {
        const ssize_t written = write(m_descriptor, pData, nSize);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            if (written == 0)
                errno = ENOSPC;
            return Fail("write");
        }
        pData += written;
        nSize -= static_cast<size_t>(written);
    }
    return true;
}

bool COutputFile::Flush() noexcept
{
    const size_t size = m_buffered;
    m_buffered = 0;
    return m_error == 0 && WriteThrough(m_pBuffer.get(), size);
}

bool COutputFile::Write(const void* pData, size_t nSize) noexcept
{
    if (m_error != 0)
        return false;
    if (nSize > kOutputBufferSize - m_buffered && !Flush())
        return false;
    m_position += nSize;
    if (nSize > kOutputBufferSize)
        return WriteThrough(static_cast<const uint8_t*>(pData), nSize);
    std::memcpy(m_pBuffer.get() + m_buffered, pData, nSize);
    m_buffered += nSize;
    return true;
}

bool COutputFile::Seek(uint64_t nPosition) noexcept
{
    if (!Flush())
        return false;
    if (lseek(m_descriptor, static_cast<off_t>(nPosition), SEEK_SET) < 0)
        return Fail("lseek");
    m_position = nPosition;
    return true;
}

size_t COutputFile::Read(void* pData, size_t nSize) noexcept
{
    if (!Flush())
        return 0;
    const ssize_t count = read(m_descriptor, pData, nSize);
    if (count < 0) {
        Fail("read");
        return 0;
    }
    m_position += static_cast<size_t>(count);
    return static_cast<size_t>(count);
}

uint64_t COutputFile::Size() noexcept
{
    struct stat status = {};
    if (!Flush() || fstat(m_descriptor, &status) != 0)
        return 0;
    return static_cast<uint64_t>(status.st_size);
}

void COutputFile::Check() const
{
    if (m_error != 0)
        Raise(m_error, m_szFailed);
}

void COutputFile::Commit()
{
    Flush();
    Check();
    // The name must not outlive a loss of power without the content.
    if (fsync(m_descriptor) != 0)
        Raise(errno, "fsync");
    if (rename(m_strTemporary.c_str(), m_strTarget.c_str()) != 0)
        Raise(errno, "rename");
    close(m_descriptor);
    m_descriptor = -1;
    const std::string folder = FolderOf(m_strTarget);
    // Some file systems can't do this; the file is there all the same.
    const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        static_cast<void>(fsync(descriptor));
        close(descriptor);
    }
}

} // namespace Detail
} // namespace KxApi
