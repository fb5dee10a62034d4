// SPDX-License-Identifier: Apache-2.0
// Takes whatever comes as the URL that a module publishes: fetched from a producer that lies about its
// length, taken apart, and put together again from its parts.
//
// Input: one byte, whose cube is the difference between the length that the producer tells and the true one,
// then the URL.

#include <Base/GCException.h>
#include <KxApi_TL/CKxGenTLLib.h>
#include <KxSDKCommon/KxXMLFile.h>

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

using namespace KxApi;
using GenICam::gcstring;

namespace
{

[[noreturn]] void Fail(const char* what, const std::string& url)
{
    std::fprintf(stderr, "%s: \"%s\"\n", what, url.c_str());
    std::abort();
}

/// The producer's URL, and the length that it tells.
std::string g_url;
size_t g_sizeTold = 0;

GenTL::GC_ERROR GC_CALLTYPE TellURL(GenTL::PORT_HANDLE, char* url, size_t* size)
{
    if (!url) {
        *size = g_sizeTold;
        return GenTL::GC_ERR_SUCCESS;
    }
    // Within the memory that it is given: all else no consumer can guard against.
    std::memcpy(url, g_url.data(), std::min(*size, g_url.size()));
    *size = g_url.size();
    return GenTL::GC_ERR_SUCCESS;
}

gcstring Fetch(const std::string& url, int difference)
{
    g_url = url;
    g_sizeTold = static_cast<size_t>(static_cast<std::ptrdiff_t>(url.size()) + difference);
    CKxGenTLLib lib;
    lib.GCGetPortURL = &TellURL;
    try {
        return CKxXMLFile::GetURL(&lib, nullptr);
    } catch (const GenICam::OutOfRangeException&) {
        return ""; // an absurd length
    }
}

/// The path by its definition: from behind the first ':' up to the first ';'.
std::string PathOf(const std::string& url)
{
    const std::string upToSemicolon = url.substr(0, url.find(';'));
    const size_t colon = url.find(':');
    if (colon == url.npos)
        return upToSemicolon;
    return colon < upToSemicolon.size() ? upToSemicolon.substr(colon + 1) : "";
}

void TakeApart(const std::string& url)
{
    const gcstring text(url.c_str());
    const EURLLocation location = CKxXMLFile::ParseURLLocation(text);
    if (location < EURLLocation_Local || location > EURLLocation_File)
        Fail("the location is none", url);
    const gcstring path = CKxXMLFile::ParseURLFilePath(text);
    if (path != gcstring(PathOf(url).c_str()))
        Fail("the path is another one", url);
    const std::string name = CKxXMLFile::ParseURLFileName(path).c_str();
    if (name.find('\\') != name.npos)
        Fail("the file name has a folder", url);
    if (name.size() >= 3 && CKxXMLFile::IsZipFileName(path) != CKxXMLFile::IsZipFileName(name.c_str()))
        Fail("path and name differ in their kind", url);
    CKxXMLFile::ParseURLLocalAddress(text);
    CKxXMLFile::ParseURLLocalLength(text);
}

/// A URL made from its parts gives them back.
void PutTogether(const std::string& url)
{
    uint64_t numbers[2] = {};
    std::memcpy(numbers, url.data(), std::min(url.size(), sizeof(numbers)));
    std::string name = url;
    name.erase(std::remove_if(name.begin(), name.end(), [](char ch) { return ch == ';' || ch == ':'; }),
               name.end());
    char tail[64];
    std::snprintf(tail, sizeof(tail), ";%" PRIx64 ";%" PRIX64, numbers[0], numbers[1]);
    const gcstring made(("LOCAL:" + name + tail).c_str());
    if (CKxXMLFile::ParseURLLocation(made) != EURLLocation_Local ||
        CKxXMLFile::ParseURLFilePath(made) != gcstring(name.c_str()) ||
        CKxXMLFile::ParseURLLocalAddress(made) != numbers[0] ||
        CKxXMLFile::ParseURLLocalLength(made) != numbers[1])
        Fail("the parts are others", made.c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string url(text.substr(0, text.find('\0')));
    TakeApart(url);
    const int lie = static_cast<int8_t>(data[0]);
    TakeApart(Fetch(url, lie * lie * lie).c_str());
    if (!Fetch(url, 1).empty() && Fetch(url, 1) != gcstring(url.c_str()))
        Fail("the URL arrives as another one", url);
    PutTogether(url);
    return 0;
}
