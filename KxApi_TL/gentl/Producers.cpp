// SPDX-License-Identifier: Apache-2.0
// Where producers are found.

#include "GenTLInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxMutex.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace KxApi
{
namespace
{

namespace fs = std::filesystem;

constexpr char kVariable[] = "GENICAM_GENTL64_PATH";
constexpr char kExtension[] = ".cti";
constexpr char kOwnFolder[] = "kxapi/producers";

/// A producer that was found, or an entry that leads to none.
struct CFoundFile
{
    std::string path;
    std::string error; // why there is nothing to load; empty for files
};

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
    std::error_code error;
    if (const fs::path own = OwnFolder(); fs::is_directory(own, error))
        entries.push_back(own); // an installation need not have producers
    return entries;
}

/// All producer files, each once however many ways lead to it.
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

/// Info of a producer, on which `use` was tried.
template <class Use>
CKxProducerInfo Try(const CFoundFile& file, Use&& use)
{
    CKxProducerInfo info;
    info.strPath = file.path.c_str();
    info.strError = file.error.c_str();
    if (!file.error.empty())
        return info;
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

/// What the last look found.
class CLastLook
{
public:
    void Set(const std::vector<CKxProducerInfo>& infos)
    {
        const CKxMutexLock lock(m_mutex);
        m_infos = infos;
    }
    std::vector<CKxProducerInfo> Get() const
    {
        const CKxMutexLock lock(m_mutex);
        return m_infos;
    }

private:
    mutable CKxMutex m_mutex;
    std::vector<CKxProducerInfo> m_infos KXGC_GUARDED_BY(m_mutex);
};

CLastLook& LastLook()
{
    // Never destroyed: threads may still look when the program ends.
    static CLastLook* const look = new CLastLook;
    return *look;
}

template <class Use>
std::vector<CKxProducerInfo> TryAll(Use&& use)
{
    return GenICam::GuardBadAlloc([&] {
        std::vector<CKxProducerInfo> infos;
        for (const CFoundFile& file : ProducerFiles())
            infos.push_back(Try(file, use));
        LastLook().Set(infos);
        return infos;
    });
}

} // namespace

std::vector<CKxProducerInfo> FindKxProducers()
{
    return TryAll([](const GenICam::gcstring&) {});
}

std::vector<CKxProducerInfo> GetKxProducers()
{
    return GenICam::GuardBadAlloc([] { return LastLook().Get(); });
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
