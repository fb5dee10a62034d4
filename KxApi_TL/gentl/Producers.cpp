// SPDX-License-Identifier: Apache-2.0
// Where producers are found.

#include "GenTLInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace KxApi
{
namespace
{

namespace fs = std::filesystem;

constexpr char kVariable[] = "GENICAM_GENTL64_PATH";
constexpr char kExtension[] = ".cti";
constexpr char kOwnFolder[] = "kxapi/producers";

/// The files of one entry: itself, or the producers in the folder. An entry that isn't there has none.
std::vector<fs::path> FilesOf(const fs::path& entry)
{
    std::error_code error; // what can't be read has no producers
    if (!fs::is_directory(entry, error))
        return fs::exists(entry, error) ? std::vector<fs::path>{entry} : std::vector<fs::path>{};
    std::vector<fs::path> files;
    for (fs::directory_iterator place(entry, error), end; !error && place != end; place.increment(error)) {
        if (place->path().extension() == kExtension)
            files.push_back(place->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// The folder beside the library that this code lies in.
fs::path OwnFolder()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&FindKxProducers), &info) || !info.dli_fname)
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
    entries.push_back(OwnFolder());
    return entries;
}

/// All producer files, each once however many ways lead to it.
std::vector<std::string> ProducerFiles()
{
    std::vector<std::string> files;
    for (const fs::path& entry : Entries()) {
        for (const fs::path& file : FilesOf(entry)) {
            std::error_code error;
            const fs::path canonical = fs::canonical(file, error);
            const std::string path =
                error ? file.string() : canonical.string(); // a dangling link tells its error later
            if (std::find(files.begin(), files.end(), path) == files.end())
                files.push_back(path);
        }
    }
    return files;
}

/// Info of a producer, on which `use` was tried.
template <class Use>
CKxProducerInfo Try(const std::string& path, Use&& use)
{
    CKxProducerInfo info;
    info.strPath = path.c_str();
    try {
        const std::shared_ptr<CKxGenTLLib> lib = CKxGenTLLib::Load(info.strPath);
        info.strVersion = Detail::GetInfoText(
            [&](auto... arguments) { return lib->GCGetInfo(GenTL::TL_INFO_VERSION, arguments...); });
        use(info.strPath);
    } catch (const GenICam::BadAllocException&) {
        throw;
    } catch (const GenICam::GenericException& e) {
        info.strError = e.GetDescription();
    }
    return info;
}

template <class Use>
std::vector<CKxProducerInfo> TryAll(Use&& use)
{
    return GenICam::GuardBadAlloc([&] {
        std::vector<CKxProducerInfo> infos;
        for (const std::string& path : ProducerFiles())
            infos.push_back(Try(path, use));
        return infos;
    });
}

} // namespace

std::vector<CKxProducerInfo> FindKxProducers()
{
    return TryAll([](const GenICam::gcstring&) {});
}

std::vector<CKxProducerInfo> OpenIKxSystems(CIKxSystemPtrArray& systems)
{
    CheckKxApiInitialized();
    return TryAll([&](const GenICam::gcstring& path) {
        IKxSystemReleasable* const system = CreateIKxSystem(path);
        try {
            systems.Register(system);
        } catch (...) {
            system->Release();
            throw;
        }
    });
}

} // namespace KxApi
