// SPDX-License-Identifier: Apache-2.0

#include "CSharedByPath.h"
#include "ElfCheck.h"

#include <Base/GCException.h>
#include <KxApi_TL/CKxGenTLLib.h>

#include <dlfcn.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace KxApi
{
namespace
{

struct CFunctionEntry
{
    const char* name;
    int32_t sinceMinor;
};

constexpr int32_t SinceMinor(std::string_view name)
{
    constexpr CFunctionEntry kLater[] = {{"GCGetNumPortURLs", 1},
                                         {"GCGetPortURLInfo", 1},
                                         {"GCReadPortStacked", 1},
                                         {"GCWritePortStacked", 1},
                                         {"DSGetBufferChunkData", 3},
                                         {"IFGetParentTL", 4},
                                         {"DevGetParentIF", 4},
                                         {"DSGetParentDev", 4},
                                         {"DSGetNumBufferParts", 5},
                                         {"DSGetBufferPartInfo", 5},
                                         {"DSAnnounceCompositeBuffer", 6},
                                         {"DSGetBufferInfoStacked", 6},
                                         {"DSGetBufferPartInfoStacked", 6},
                                         {"DSGetNumFlows", 6},
                                         {"DSGetFlowInfo", 6},
                                         {"DSGetNumBufferSegments", 6},
                                         {"DSGetBufferSegmentInfo", 6}};
    for (const CFunctionEntry& entry : kLater) {
        if (name == entry.name)
            return entry.sinceMinor;
    }
    return 0;
}

constexpr int32_t kNewestMinor = 6;

#define KXAPI_GENTL_ENTRY(function) {#function, SinceMinor(#function)},
constexpr CFunctionEntry kFunctions[] = {KXAPI_GENTL_FUNCTIONS(KXAPI_GENTL_ENTRY)};
#undef KXAPI_GENTL_ENTRY
static_assert(std::size(kFunctions) == 64, "GenTL 1.6 has 64 functions");

/// Not by a reporter, which would cut the cause off behind a long path.
[[noreturn]] void Fail(const std::string& path, const std::string& cause)
{
    throw GenICam::RuntimeException(("Producer '" + path + "' cannot be used: " + cause).c_str(),
                                    KXGC_SOURCE_FILE, __LINE__, "RuntimeException");
}

struct CDlClose
{
    void operator()(void* hLibrary) const { dlclose(hLibrary); }
};

/// A producer in memory. Made and destroyed under the lock of its path, since GCInitLib must not meet
/// GCCloseLib of the same producer.
class CLoadedLib final : public CKxGenTLLib
{
public:
    explicit CLoadedLib(const std::string& path);
    ~CLoadedLib() override
    {
        if (m_initialized)
            GCCloseLib();
    }

private:
    void Resolve();
    void CheckFunctions() const;
    void Init();
    std::unique_ptr<void, CDlClose> m_library;
    bool m_initialized = false;
};

CLoadedLib::CLoadedLib(const std::string& path)
{
    m_strPath = path.c_str();
    if (const std::string fault = Detail::FindElfFault(path); !fault.empty())
        Fail(path, fault);
    // Local, so that two producers with functions of the same names don't meet; now, so that a missing
    // library shows here and not in the middle of an acquisition.
    m_library.reset(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
    if (!m_library) {
        const char* const cause = dlerror();
        Fail(path, cause ? cause : "unknown error of the dynamic linker");
    }
    Resolve();
    CheckFunctions();
    Init();
}

void CLoadedLib::Resolve()
{
#define KXAPI_GENTL_RESOLVE(function)                                                                        \
    function = reinterpret_cast<GenTL::P##function>(dlsym(m_library.get(), #function));
    KXAPI_GENTL_FUNCTIONS(KXAPI_GENTL_RESOLVE)
#undef KXAPI_GENTL_RESOLVE
}

void CLoadedLib::CheckFunctions() const
{
    std::string missing;
    size_t index = 0;
#define KXAPI_GENTL_CHECK(function)                                                                          \
    if (!function && kFunctions[index].sinceMinor == 0)                                                      \
        missing += missing.empty() ? #function : ", " #function;                                             \
    ++index;
    KXAPI_GENTL_FUNCTIONS(KXAPI_GENTL_CHECK)
#undef KXAPI_GENTL_CHECK
    if (!missing.empty())
        Fail(m_strPath.c_str(), "it lacks " + missing);
}

void CLoadedLib::Init()
{
    const GenTL::GC_ERROR error = GCInitLib();
    m_initialized = error == GenTL::GC_ERR_SUCCESS;
    // Somebody else in the process uses the producer too, and is the one to close it.
    if (m_initialized || error == GenTL::GC_ERR_RESOURCE_IN_USE)
        return;
    char text[128] = "";
    size_t size = sizeof(text);
    GenTL::GC_ERROR lastError = GenTL::GC_ERR_SUCCESS;
    if (GCGetLastError(&lastError, text, &size) != GenTL::GC_ERR_SUCCESS || lastError != error)
        text[0] = '\0';
    text[sizeof(text) - 1] = '\0';
    Fail(m_strPath.c_str(), "GCInitLib returned " + std::to_string(error) + (text[0] ? " " : "") + text);
}

using CLoadedLibs = Detail::CSharedByPath<CLoadedLib>;

CLoadedLibs& LoadedLibs()
{
    // Never destroyed: users in other static objects may let go of their producers later than this would go.
    static CLoadedLibs* const libs = new CLoadedLibs;
    return *libs;
}

std::string CanonicalPath(const GenICam::gcstring& strPath)
{
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(strPath.c_str(), nullptr),
                                                               &std::free);
    if (!resolved)
        Fail(strPath.c_str(), std::strerror(errno));
    return resolved.get();
}

} // namespace

std::shared_ptr<CKxGenTLLib> CKxGenTLLib::Load(const GenICam::gcstring& strPath)
{
    const std::string path = CanonicalPath(strPath);
    CLoadedLibs::CEntry& entry = LoadedLibs().Of(path);
    CKxGenTLLib* const lib = entry.Take([&] { return std::make_unique<CLoadedLib>(path); });
    // Should there be no memory for the pointer, it lets go at once.
    return {lib, [&entry](CKxGenTLLib*) { entry.LetGo(); }};
}

int32_t CKxGenTLLib::GetVersionMinorByFunctions() const
{
    int32_t minor = kNewestMinor;
    size_t index = 0;
    // A version is there when none of its functions is missing, nor one of an earlier version.
#define KXAPI_GENTL_CHECK(function)                                                                          \
    if (!function && kFunctions[index].sinceMinor <= minor)                                                  \
        minor = kFunctions[index].sinceMinor - 1;                                                            \
    ++index;
    KXAPI_GENTL_FUNCTIONS(KXAPI_GENTL_CHECK)
#undef KXAPI_GENTL_CHECK
    return minor;
}

} // namespace KxApi
