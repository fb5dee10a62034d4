// SPDX-License-Identifier: Apache-2.0
// Where producers are found.

#include "ProducerFiles.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

namespace fs = std::filesystem;

constexpr char kVariable[] = "GENICAM_GENTL64_PATH";
constexpr char kExtension[] = ".cti";
constexpr char kOwnFolder[] = "kxapi/producers";

/// The files of one entry: itself, or the producers in the folder.
std::vector<CFoundFile> FilesOf(const fs::path& entry)
{
    std::error_code error;
    if (!fs::is_directory(entry, error)) {
        if (fs::exists(fs::symlink_status(entry, error)))
            return {{entry.string(), ""}};
        return {{entry.string(), std::string(kVariable) + " names it, and it isn't there"}};
    }
    std::vector<CFoundFile> files;
    fs::directory_iterator place(entry, error);
    for (const fs::directory_iterator end; !error && place != end; place.increment(error)) {
        if (place->path().extension() == kExtension)
            files.push_back({place->path().string(), ""});
    }
    std::sort(files.begin(), files.end(),
              [](const CFoundFile& a, const CFoundFile& b) { return a.path < b.path; });
    if (error)
        files.push_back({entry.string(), "The folder can't be read: " + error.message()});
    return files;
}

/// The folder beside the library that this code lies in.
fs::path OwnFolder()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&ProducerFiles), &info) || !info.dli_fname)
        return {};
    std::error_code error;
    return fs::canonical(info.dli_fname, error).parent_path() / kOwnFolder;
}

std::vector<fs::path> Entries()
{
    std::vector<fs::path> entries;
    const char* const variable = std::getenv(kVariable);
    std::string_view rest = variable ? variable : "";
    while (!rest.empty()) {
        const size_t colon = rest.find(':');
        const std::string_view entry = rest.substr(0, colon);
        if (!entry.empty())
            entries.emplace_back(entry);
        rest = colon == rest.npos ? std::string_view() : rest.substr(colon + 1);
    }
    std::error_code error;
    if (const fs::path own = OwnFolder(); fs::is_directory(own, error))
        entries.push_back(own); // an installation need not have producers
    return entries;
}

} // namespace

std::vector<CFoundFile> ProducerFiles()
{
    std::vector<CFoundFile> files;
    for (const fs::path& entry : Entries()) {
        for (CFoundFile& file : FilesOf(entry)) {
            std::error_code error;
            const fs::path canonical = fs::canonical(file.path, error);
            if (!error) // a dangling link tells its error later
                file.path = canonical.string();
            const auto isSame = [&](const CFoundFile& other) { return other.path == file.path; };
            if (std::none_of(files.begin(), files.end(), isSame))
                files.push_back(std::move(file));
        }
    }
    return files;
}

} // namespace Detail
} // namespace KxApi
