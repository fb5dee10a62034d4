// SPDX-License-Identifier: Apache-2.0
#include "OutputFile.h"

#include "FileErrors.h"

#include <KxSDKCommon/KxApi_Exception.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr size_t kBufferSize = size_t{256} * 1024;

/// With the closing slash; empty for a name alone.
std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

std::string TemporaryName(const std::string& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder + ".kx-" + std::to_string(getpid()) + "-" + std::to_string(counter++) + ".tmp";
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
    , m_pBuffer(std::make_unique<uint8_t[]>(kBufferSize))
{
    if (m_strTarget.empty())
        Raise(strPath.empty() ? ENOENT : errno, "realpath");
    struct stat status = {};
    const bool exists = stat(m_strTarget.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        Raise(EISDIR, "open");
    if (exists && !S_ISREG(status.st_mode))
        throw KX_LINUX_ERROR_EXCEPTION(EINVAL, "open", "Cannot write '%s': it is not a regular file",
                                       m_strShown.c_str());
    // Renaming alone wouldn't ask for the right to write the old file.
    if (exists && access(m_strTarget.c_str(), W_OK) != 0)
        Raise(errno, "access");
    OpenTemporary();
    if (exists)
        static_cast<void>(fchmod(m_descriptor, status.st_mode & 07777));
}

void COutputFile::OpenTemporary()
{
    const std::string folder = FolderOf(m_strTarget);
    constexpr int kAttempts = 1000; // leftovers of a crashed process that had the same number
    for (int attempt = 0; m_descriptor < 0; ++attempt) {
        m_strTemporary = TemporaryName(folder);
        m_descriptor = open(m_strTemporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_descriptor < 0 && (errno != EEXIST || attempt == kAttempts))
            Raise(errno, "open");
    }
}

COutputFile::~COutputFile()
{
    if (m_descriptor < 0)
        return;
    close(m_descriptor);
    unlink(m_strTemporary.c_str());
}

bool COutputFile::Fail(const char* szFunction) noexcept
{
    if (m_error == 0) {
        m_error = errno != 0 ? errno : EIO;
        m_szFailed = szFunction;
    }
    return false;
}

void COutputFile::Raise(int error, const char* szFunction) const
{
    throw KX_LINUX_ERROR_EXCEPTION(error, szFunction, "Cannot write '%s': %s", m_strShown.c_str(),
                                   std::strerror(error));
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
    if (nSize > kBufferSize - m_buffered && !Flush())
        return false;
    m_position += nSize;
    if (nSize > kBufferSize)
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
