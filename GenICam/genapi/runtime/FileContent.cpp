// SPDX-License-Identifier: Apache-2.0
#include "runtime/FileContent.h"

#include "description/Limits.h"
#include "description/Prefault.h"

#include <Base/GCUtilities.h>

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace KxGenApi
{

std::string ReadFile(const GenICam::gcstring& fileName)
{
    if (fileName.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The name of the description file is empty");
    GenICam::gcstring path = fileName;
    GenICam::ReplaceEnvironmentVariables(path);

    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file)
        throw RUNTIME_EXCEPTION("%s: could not be opened: %s", path.c_str(), std::strerror(errno));
    struct stat facts
    {};
    std::string content;
    if (fstat(fileno(file.get()), &facts) == 0 && S_ISREG(facts.st_mode)) {
        // A file that is too large is refused unread.
        if (static_cast<uint64_t>(facts.st_size) > kMaxContentBytes)
            throw RUNTIME_EXCEPTION("%s: has %lld bytes, more than %zu", path.c_str(),
                                    static_cast<long long>(facts.st_size), kMaxContentBytes);
        content.reserve(static_cast<size_t>(facts.st_size));
        Prefault(content.data(), content.capacity());
        content.resize(static_cast<size_t>(facts.st_size));
        content.resize(std::fread(content.data(), 1, content.size(), file.get()));
    }
    std::unique_ptr<char[]> chunk(new char[1 << 16]);
    for (size_t n = 0; (n = std::fread(chunk.get(), 1, 1 << 16, file.get())) > 0;) {
        content.append(chunk.get(), n);
        if (content.size() > kMaxContentBytes)
            throw RUNTIME_EXCEPTION("%s: has more than %zu bytes", path.c_str(), kMaxContentBytes);
    }
    if (std::ferror(file.get()) != 0)
        throw RUNTIME_EXCEPTION("%s: could not be read: %s", path.c_str(), std::strerror(errno));
    if (content.empty())
        throw RUNTIME_EXCEPTION("%s: is empty", path.c_str());
    return content;
}

} // namespace KxGenApi
