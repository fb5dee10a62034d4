// SPDX-License-Identifier: Apache-2.0

#include "PortUrls.h"

#include "GenTLInfo.h"

#include <Base/GCException.h>
#include <KxSDKCommon/KxXMLFile.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr uint32_t kMaxUrls = 64;
constexpr char kFileScheme[] = "file:";

std::vector<GenICam::gcstring> ListedUrls(CKxGenTLLib& lib, GenTL::PORT_HANDLE hPort)
{
    std::vector<GenICam::gcstring> urls;
    uint32_t count = 0;
    if (!lib.GCGetNumPortURLs || !lib.GCGetPortURLInfo ||
        lib.GCGetNumPortURLs(hPort, &count) != GenTL::GC_ERR_SUCCESS)
        return urls;
    for (uint32_t i = 0; i < count && i < kMaxUrls; ++i) {
        GenICam::gcstring url = GetInfoText([&](auto... arguments) {
            return lib.GCGetPortURLInfo(hPort, i, GenTL::URL_INFO_URL, arguments...);
        });
        if (!url.empty())
            urls.push_back(std::move(url));
    }
    return urls;
}

int HexDigit(char digit)
{
    const char* const kDigits = "0123456789abcdef";
    const char* const place =
        digit ? std::strchr(kDigits, digit >= 'A' && digit <= 'F' ? digit - 'A' + 'a' : digit) : nullptr;
    return place ? static_cast<int>(place - kDigits) : -1;
}

std::string Decoded(const std::string& text)
{
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
        if (low >= 0)
            i += 2;
        plain += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
    }
    return plain;
}

} // namespace

std::vector<GenICam::gcstring> ReadPortUrls(CKxGenTLLib& lib, GenTL::PORT_HANDLE hPort)
{
    std::vector<GenICam::gcstring> urls = ListedUrls(lib, hPort);
    if (urls.empty()) // a producer of before version 1.1
        urls.push_back(CKxXMLFile::GetURL(&lib, hPort));
    return urls;
}

std::string PathOfFileUrl(const std::string& url)
{
    std::string path = url.substr(std::min(url.size(), sizeof kFileScheme - 1));
    path = path.substr(0, path.find('?')); // what follows is the schema's version
    if (path.compare(0, 2, "//") == 0) {   // then comes a host, mostly none
        const size_t slash = path.find('/', 2);
        path.erase(0, slash == path.npos ? 2 : slash);
    }
    return Decoded(path);
}

void LoadDescription(CKxXMLFile& file, const std::vector<GenICam::gcstring>& urls, GenApi::IPort* pPort,
                     const GenICam::gcstring& portName)
{
    std::string causes;
    for (const GenICam::gcstring& url : urls) {
        try {
            if (CKxXMLFile::ParseURLLocation(url) == EURLLocation_File)
                file.CreateNodeMapFromFile(PathOfFileUrl(url.c_str()).c_str(), pPort, portName);
            else
                file.CreateNodeMap(url, pPort, portName);
            return;
        } catch (const GenICam::BadAllocException&) {
            throw;
        } catch (const GenICam::GenericException& e) {
            if (urls.size() == 1)
                throw;
            causes +=
                std::string(causes.empty() ? "" : "; ") + "'" + url.c_str() + "': " + e.GetDescription();
        }
    }
    // Not by a reporter, which would cut the last ones off.
    throw GenICam::RuntimeException(("No URL leads to a description: " + causes).c_str(), KXGC_SOURCE_FILE,
                                    __LINE__, "RuntimeException");
}

} // namespace Detail
} // namespace KxApi
