// SPDX-License-Identifier: Apache-2.0
#include "DescriptionFile.h"

#include "ZipArchive.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxPortInside.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace Kx
{

namespace
{

/// A folder that goes with all it holds.
class TemporaryFolder
{
public:
    TemporaryFolder()
        : m_path((std::filesystem::temp_directory_path() / "kx-XXXXXX").string())
    {
        if (!mkdtemp(m_path.data()))
            throw RUNTIME_EXCEPTION("'%s' can't be made: %s", m_path.c_str(), std::strerror(errno));
    }
    ~TemporaryFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    std::string File() const { return m_path + "/description"; }

private:
    std::string m_path;
};

std::string ContentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Save(KxApi::IKxPort& port, const std::string& path)
{
    dynamic_cast<KxApi::IKxPortInside&>(port).SaveDescription(path.c_str());
}

} // namespace

std::string DescriptionOf(KxApi::IKxPort& port)
{
    const TemporaryFolder folder;
    Save(port, folder.File());
    std::string content = ContentOf(folder.File());
    return content.compare(0, 2, "PK") == 0 ? FirstFileOf(folder.File()) : content;
}

std::string RawDescriptionOf(KxApi::IKxPort& port, std::string& name)
{
    const TemporaryFolder folder;
    Save(port, folder.File());
    name = dynamic_cast<KxApi::IKxPortInside&>(port).GetDescriptionName().c_str();
    return ContentOf(folder.File());
}

} // namespace Kx
