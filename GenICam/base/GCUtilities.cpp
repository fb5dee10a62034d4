// SPDX-License-Identifier: Apache-2.0
#include <Base/GCSynch.h>
#include <Base/GCUtilities.h>

#include <dlfcn.h>
#include <fnmatch.h>
#include <strings.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace GenICam
{
namespace
{
std::string_view View(const gcstring& text) noexcept { return {text.c_str(), text.size()}; }

/// A folder that the program may set, else the environment says.
class CConfiguredPath
{
public:
    explicit CConfiguredPath(const char* variable) noexcept
        : m_variable(variable)
    {}

    void Set(const gcstring& path)
    {
        const AutoLock lock(m_lock);
        m_path = path;
    }

    gcstring Get()
    {
        gcstring path;
        {
            const AutoLock lock(m_lock);
            path = m_path;
        }
        if (path.empty())
            path = GetValueOfEnvironmentVariable(m_variable);
        ReplaceEnvironmentVariables(path);
        return path;
    }

private:
    const char* const m_variable;
    CLock m_lock;
    gcstring m_path KXGC_GUARDED_BY(m_lock);
};

CConfiguredPath& CacheFolder()
{
    static CConfiguredPath path("GENICAM_CACHE_V3_4");
    return path;
}

CConfiguredPath& LogConfig()
{
    static CConfiguredPath path("GENICAM_LOG_CONFIG_V3_4");
    return path;
}

CConfiguredPath& CLProtocolFolder()
{
    static CConfiguredPath path("GENICAM_CLPROTOCOL");
    return path;
}

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// Value of a hexadecimal digit of either case, or npos.
size_t HexValue(char ch) noexcept
{
    return kHexDigits.find(ch >= 'a' && ch <= 'f' ? static_cast<char>(ch - 'a' + 'A') : ch);
}

bool StaysInUrl(char ch) noexcept
{
    constexpr std::string_view kPlain = "-_.~/:?=&";
    return (ch >= '0' && ch <= '9') || (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') ||
           kPlain.find(ch) != kPlain.npos;
}
} // namespace

bool DoesEnvironmentVariableExist(const gcstring& name) { return std::getenv(name.c_str()) != nullptr; }

gcstring GetValueOfEnvironmentVariable(const gcstring& name)
{
    gcstring value;
    if (!GetValueOfEnvironmentVariable(name, value))
        throw RUNTIME_EXCEPTION("Environment variable '%s' doesn't exist", name.c_str());
    return value;
}

bool GetValueOfEnvironmentVariable(const gcstring& name, gcstring& value)
{
    const char* const found = std::getenv(name.c_str());
    if (found)
        value = found;
    return found != nullptr;
}

void ReplaceEnvironmentVariables(gcstring& text, bool replaceBlankBy20)
{
    const std::string_view source = View(text);
    gcstring result;
    size_t pos = 0;
    for (size_t begin; (begin = source.find("$(", pos)) != source.npos;) {
        const size_t end = source.find(')', begin);
        if (end == source.npos)
            break;
        result.append(source.data() + pos, begin - pos);
        result += GetValueOfEnvironmentVariable(gcstring(source.data() + begin + 2, end - begin - 2));
        pos = end + 1;
    }
    result.append(source.data() + pos, source.size() - pos);
    if (replaceBlankBy20) {
        gcstring escaped;
        for (const char ch : View(result))
            escaped += ch == ' ' ? gcstring("%20") : gcstring(1, ch);
        result.swap(escaped);
    }
    text.swap(result);
}

gcstring GetGenICamCacheFolder() { return CacheFolder().Get(); }
gcstring GetGenICamLogConfig() { return LogConfig().Get(); }
gcstring GetGenICamCLProtocolFolder() { return CLProtocolFolder().Get(); }
void SetGenICamCacheFolder(const gcstring& path) { CacheFolder().Set(path); }
void SetGenICamLogConfig(const gcstring& path) { LogConfig().Set(path); }
void SetGenICamCLProtocolFolder(const gcstring& path) { CLProtocolFolder().Set(path); }

bool GetCacheFileDirectory(gcstring& directory)
{
    try {
        directory = GetGenICamCacheFolder();
        return true;
    } catch (const RuntimeException&) {
        return false; // nobody has named one
    }
}

void GetCandidateCacheFilePaths(gcstring_vector& paths, const gcstring& directory)
{
    paths.clear();
    GetFiles(directory + "/*", paths);
}

bool HasValidLength(const gcstring& path) { return !path.empty() && path.size() < PATH_MAX; }

bool HasValidExtension(const gcstring& path)
{
    const std::string extension = std::filesystem::path(path.c_str()).extension().string();
    return strcasecmp(extension.c_str(), ".xml") == 0 || strcasecmp(extension.c_str(), ".zip") == 0;
}

void GetLastErrorMessage(gcstring& message)
{
    message = gcstring(std::error_code(errno, std::generic_category()).message());
}

void GetFiles(const gcstring& fileTemplate, gcstring_vector& fileNames, bool directoriesOnly)
{
    namespace fs = std::filesystem;
    gcstring expanded = fileTemplate;
    ReplaceEnvironmentVariables(expanded);
    const fs::path path(expanded.c_str());
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    const std::string pattern = path.filename().string();

    std::vector<std::string> found;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::error_code ignored; // a file that vanished meanwhile is neither
        const bool wanted = directoriesOnly ? it->is_directory(ignored) : it->is_regular_file(ignored);
        const std::string name = it->path().filename().string();
        if (wanted && fnmatch(pattern.c_str(), name.c_str(), FNM_PERIOD) == 0)
            found.push_back(path.has_parent_path() ? (folder / name).string() : name);
    }
    std::sort(found.begin(), found.end());
    for (const std::string& name : found)
        fileNames.push_back(gcstring(name));
}

gcstring GetModulePathFromFunction(void* function)
{
    Dl_info info{};
    return dladdr(function, &info) != 0 ? gcstring(info.dli_fname) : gcstring();
}

void Tokenize(const gcstring& text, gcstring_vector& tokens, const gcstring& delimiters)
{
    const std::string_view source = View(text);
    for (size_t pos = 0; (pos = source.find_first_not_of(View(delimiters), pos)) != source.npos;) {
        const size_t end = std::min(source.find_first_of(View(delimiters), pos), source.size());
        tokens.push_back(gcstring(source.data() + pos, end - pos));
        pos = end;
    }
}

gcstring UrlEncode(const gcstring& text)
{
    gcstring result;
    for (const char ch : View(text)) {
        if (StaysInUrl(ch)) {
            result += ch;
            continue;
        }
        const auto byte = static_cast<unsigned char>(ch);
        const char code[] = {'%', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
        result.append(code, sizeof code);
    }
    return result;
}

gcstring UrlDecode(const gcstring& text)
{
    const std::string_view source = View(text);
    gcstring result;
    for (size_t i = 0; i < source.size(); ++i) {
        const bool coded = source[i] == '%' && source.size() - i > 2;
        const size_t high = coded ? HexValue(source[i + 1]) : kHexDigits.npos;
        const size_t low = coded ? HexValue(source[i + 2]) : kHexDigits.npos;
        if (high == kHexDigits.npos || low == kHexDigits.npos) {
            result += source[i];
            continue;
        }
        result += static_cast<char>(static_cast<unsigned char>(high * 16 + low));
        i += 2;
    }
    return result;
}
} // namespace GenICam
