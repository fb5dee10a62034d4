// SPDX-License-Identifier: Apache-2.0
#include "InputFile.h"

#include "FileErrors.h"

#include <Base/GCBadAlloc.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

class CDescriptor
{
public:
    explicit CDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {}
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    ~CDescriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

[[noreturn]] void Raise(int error, const char* function, const std::string& shown, const char* cause)
{
    errno = error; // which the text ends with
    throw KX_LINUX_ERROR_EXCEPTION(error, function, "Cannot read '%s': %s", shown.c_str(), cause);
}

[[noreturn]] void Raise(int error, const char* function, const std::string& shown)
{
    Raise(error, function, shown, std::strerror(error));
}

} // namespace

CBytes ReadFile(const GenICam::gcstring& strPath, uint64_t nMaxSize)
{
    const std::string shown = ShownPath({strPath.c_str(), strPath.size()});
    // Not to wait for the writer of a pipe.
    const CDescriptor file(open(strPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (file.Get() < 0 || fstat(file.Get(), &status) != 0)
        Raise(errno, "open", shown);
    if (S_ISDIR(status.st_mode))
        Raise(EISDIR, "open", shown);
    if (!S_ISREG(status.st_mode))
        Raise(EINVAL, "open", shown, "it is not a regular file");
    const uint64_t size = static_cast<uint64_t>(status.st_size);
    if (size > nMaxSize)
        throw RUNTIME_EXCEPTION("Cannot read '%s': its %llu bytes are more than the limit of %llu",
                                shown.c_str(), static_cast<unsigned long long>(size),
                                static_cast<unsigned long long>(nMaxSize));
    CBytes bytes = GenICam::GuardBadAlloc([&] { return CBytes(size); });
    for (size_t at = 0; at < size;) {
        const ssize_t count = read(file.Get(), bytes.data.get() + at, size - at);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            Raise(errno, "read", shown);
        if (count == 0)
            throw RUNTIME_EXCEPTION("Cannot read '%s': it became shorter while it was read", shown.c_str());
        at += static_cast<size_t>(count);
    }
    return bytes;
}

} // namespace Detail
} // namespace KxApi
