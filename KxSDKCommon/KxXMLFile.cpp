// SPDX-License-Identifier: Apache-2.0
#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/IPort.h>
#include <KxApi_TL/CKxGenTLLib.h>
#include <KxSDKCommon/KxApi_Exception.h>
#include <KxSDKCommon/KxXMLFile.h>

#include <strings.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

namespace KxApi
{
namespace
{

using GenICam::gcstring;
using GenICam::GuardBadAlloc;

// Far beyond what modules publish; more than that is a producer's mistake.
constexpr size_t kMaxURLLength = 0x10000;
constexpr uint64_t kMaxFileLength = 0x10000000;

struct CLocationPrefix
{
    std::string_view prefix;
    EURLLocation eLocation;
};

constexpr CLocationPrefix kLocationPrefixes[] = {
    {"local:", EURLLocation_Local}, {"http:", EURLLocation_Http}, {"file:", EURLLocation_File}};

std::string_view View(const gcstring& text) { return {text.c_str(), text.size()}; }

gcstring ToString(std::string_view text) { return gcstring(std::string(text).c_str()); }

/// What stands behind the nth ';'.
std::string_view BehindSemicolon(std::string_view url, int nth)
{
    for (; nth > 0; --nth) {
        const size_t nSemicolon = url.find(';');
        if (nSemicolon == url.npos)
            return {};
        url.remove_prefix(nSemicolon + 1);
    }
    return url;
}

uint64_t ParseHex(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    uint64_t nValue = 0;
    stream >> std::hex >> nValue;
    return nValue;
}

/// GC_ERR_NOT_IMPLEMENTED for a function that the producer lacks, else what the call returns.
template <class Function, class... Args>
GenTL::GC_ERROR_LIST Call(Function pFunction, Args... args)
{
    return static_cast<GenTL::GC_ERROR_LIST>(pFunction ? pFunction(args...) : GenTL::GC_ERR_NOT_IMPLEMENTED);
}

gcstring ReadURL(CKxGenTLLib* pGenTLLib, void* hPort)
{
    size_t nSize = 0;
    const auto getPortURL = [&](char* pURL) {
        const GenTL::GC_ERROR_LIST eError = Call(pGenTLLib->GCGetPortURL, hPort, pURL, &nSize);
        if (eError != GenTL::GC_ERR_SUCCESS)
            throw KX_GENTL_ERROR_EXCEPTION(pGenTLLib, eError, "GCGetPortURL",
                                           "%d = GCGetPortURL(0x%p, 0x%p, 0x%p)", static_cast<int>(eError),
                                           hPort, static_cast<void*>(pURL), static_cast<void*>(&nSize));
    };
    getPortURL(nullptr);
    KXGC_CHECK_RANGE(rlUpToMax, "Length of the URL", nSize, kMaxURLLength);
    std::string url(nSize + 1, '\0'); // one more, should the producer forget the end of its text
    getPortURL(url.data());
    return gcstring(url.c_str());
}

void CheckFileLength(uint64_t nLength)
{
    KXGC_CHECK_RANGE(rlUpToMax, "Length of the XML file", nLength, kMaxFileLength);
}

void LockTransportParameters(const GenApi::CNodeMapRef& objNodeMapRef)
{
    auto* const pLock = dynamic_cast<GenApi::IInteger*>(objNodeMapRef._GetNode("TLParamsLock"));
    if (pLock && GenApi::IsWritable(pLock->GetAccessMode()))
        pLock->SetValue(1, true);
}

} // namespace

CKxXMLFile::CKxXMLFile(CKxGenTLLib* pGenTLLib, void* hPort, GenApi::EAccessMode eAccessMode,
                       const gcstring& strDeviceName)
    : m_pGenTLLib(pGenTLLib)
    , m_hPort(hPort)
    , m_eAccessMode(eAccessMode)
    , m_strDeviceName(strDeviceName)
{}

CKxXMLFile::~CKxXMLFile() = default;

void CKxXMLFile::CreateNodeMap(const gcstring& strURL, GenApi::IPort* pPort, const gcstring& strPortName)
{
    if (m_bCreated)
        return;
    GuardBadAlloc([&] {
        LoadXMLFile(strURL);
        MakeNodeMap(pPort, strPortName);
    });
}

void CKxXMLFile::CreateNodeMapFromFile(const gcstring& strPath, GenApi::IPort* pPort,
                                       const gcstring& strPortName)
{
    if (m_bCreated)
        return;
    GuardBadAlloc([&] {
        LoadFromDisk(strPath);
        MakeNodeMap(pPort, strPortName);
    });
}

void CKxXMLFile::MakeNodeMap(GenApi::IPort* pPort, const gcstring& strPortName)
{
    // Remote devices change their description with their firmware under one name, other modules don't.
    const auto eCacheUsage =
        strPortName == "Device" ? GenApi::CacheUsage_Ignore : GenApi::CacheUsage_Automatic;
    // Plain text ends at its first 0.
    const size_t nLength = m_bIsZip ? m_nSize : std::char_traits<char>::length(m_pBuffer.get());
    m_pFactory = std::make_unique<GenApi::CNodeMapFactory>(m_bIsZip ? GenApi::ContentType_ZippedXml
                                                                    : GenApi::ContentType_Xml,
                                                           m_pBuffer.get(), nLength, eCacheUsage);
    m_objNodeMapRef._Destroy(); // of an attempt that failed
    m_objNodeMapRef._Attach(m_pFactory->CreateNodeMap(m_strDeviceName, true), m_strDeviceName);
    m_objNodeMapRef._Connect(pPort, strPortName);
    m_pPort = pPort;
    m_strPortName = strPortName;
    m_bCreated = true;
}

GenApi::INodeMap* CKxXMLFile::GetNodeMap() const { return m_bCreated ? m_objNodeMapRef._Ptr : nullptr; }

void CKxXMLFile::LoadXMLFile(const gcstring& strURL)
{
    const EURLLocation eLocation = ParseURLLocation(strURL);
    m_strFilePath = ParseURLFilePath(strURL);
    if (eLocation != EURLLocation_Local)
        throw INVALID_ARGUMENT_EXCEPTION("URL location %d is not supported.", static_cast<int>(eLocation));
    DeleteBuffer();

    const uint64_t nAddress = ParseURLLocalAddress(strURL), nLength = ParseURLLocalLength(strURL);
    CheckFileLength(nLength);
    auto pBuffer = std::make_unique<char[]>(nLength + 1);
    size_t nRead = nLength;
    const GenTL::GC_ERROR_LIST eError =
        Call(m_pGenTLLib->GCReadPort, m_hPort, nAddress, static_cast<void*>(pBuffer.get()), &nRead);
    if (eError != GenTL::GC_ERR_SUCCESS)
        throw KX_GENTL_ERROR_EXCEPTION(m_pGenTLLib, eError, "GCReadPort",
                                       "%d = GCReadPort(0x%p, %llu, 0x%p, 0x%p)", static_cast<int>(eError),
                                       m_hPort, static_cast<unsigned long long>(nAddress),
                                       static_cast<void*>(pBuffer.get()), static_cast<void*>(&nRead));
    m_nSize = std::min<size_t>(nRead, nLength);
    m_pBuffer = std::move(pBuffer);
    m_pBuffer[m_nSize] = '\0';
    m_bIsZip = IsZipFileName(m_strFilePath);
}

void CKxXMLFile::LoadFromDisk(const gcstring& strPath)
{
    namespace fs = std::filesystem;
    m_strFilePath = strPath;
    DeleteBuffer();
    std::error_code error;
    if (!fs::is_regular_file(strPath.c_str(), error)) // others may keep their reader waiting
        throw RUNTIME_EXCEPTION("File %s is no regular file.", strPath.c_str());
    const uint64_t nLength = fs::file_size(strPath.c_str(), error);
    if (error)
        throw RUNTIME_EXCEPTION("File %s could not be opened.", strPath.c_str());
    CheckFileLength(nLength);
    auto pBuffer = std::make_unique<char[]>(nLength + 1);
    std::ifstream file(strPath.c_str(), std::ios::binary);
    if (!file.read(pBuffer.get(), static_cast<std::streamsize>(nLength)))
        throw RUNTIME_EXCEPTION("File %s could not be read.", strPath.c_str());
    m_nSize = nLength;
    m_pBuffer = std::move(pBuffer);
    m_bIsZip = IsZipFileName(strPath);
}

void CKxXMLFile::DeleteBuffer()
{
    m_pFactory.reset();
    m_pBuffer.reset();
    m_nSize = 0;
}

void CKxXMLFile::CreateNodeMapFactoryForChunkData(const gcstring& strRootName, bool bFlag)
{
    if (m_pFactory)
        GuardBadAlloc([&] { m_objChunkFactory = m_pFactory->ExtractSubtree(strRootName, bFlag); });
}

void CKxXMLFile::CreateSubTreeNodeMap(const gcstring& strRootName, GenApi::CNodeMapRef& objNodeMapRef,
                                      bool bFlag)
{
    if (!m_bCreated)
        return;
    GuardBadAlloc([&] {
        GenApi::CNodeMapFactory subTree = m_pFactory->ExtractSubtree(strRootName, bFlag);
        GenApi::INodeMap* const pNodeMap = subTree.CreateNodeMap(m_strDeviceName);
        objNodeMapRef._Destroy();
        objNodeMapRef._Attach(pNodeMap, pNodeMap->GetDeviceName());
        objNodeMapRef._Connect(m_pPort, m_strPortName);
    });
}

void CKxXMLFile::CreateSubTreeNodeMapForChunkData(GenApi::CNodeMapRef& objNodeMapRef)
{
    if (!m_bCreated || m_objChunkFactory.IsEmpty())
        return;
    GuardBadAlloc([&] {
        objNodeMapRef = m_objChunkFactory.CreateNodeMap(m_strDeviceName);
        objNodeMapRef._Connect(m_pPort, m_strPortName);
        LockTransportParameters(objNodeMapRef);
    });
}

void CKxXMLFile::CheckLoaded() const
{
    if (!m_pBuffer)
        throw RUNTIME_EXCEPTION("XML File is not loaded.");
}

void CKxXMLFile::SaveToFile(const gcstring& strFileName) const
{
    CheckLoaded();
    size_t nLength = m_nSize;
    while (!m_bIsZip && nLength > 0 && m_pBuffer[nLength - 1] == '\0')
        --nLength;
    std::ofstream file(strFileName.c_str(), std::ios::binary | std::ios::trunc);
    if (!file)
        throw RUNTIME_EXCEPTION("File %s could not be opened.", strFileName.c_str());
    file.write(m_pBuffer.get(), static_cast<std::streamsize>(nLength));
    file.close(); // a full disk shows no sooner
    if (!file)
        throw RUNTIME_EXCEPTION("File %s is unwritable.", strFileName.c_str());
}

gcstring CKxXMLFile::GetXMLFileName() const
{
    CheckLoaded();
    return ParseURLFileName(m_strFilePath);
}

gcstring CKxXMLFile::GetURL(CKxGenTLLib* pGenTLLib, void* hPort)
{
    return GuardBadAlloc([&] { return ReadURL(pGenTLLib, hPort); });
}

EURLLocation CKxXMLFile::ParseURLLocation(const gcstring& strURL)
{
    for (const CLocationPrefix& entry : kLocationPrefixes) {
        if (strncasecmp(strURL.c_str(), entry.prefix.data(), entry.prefix.size()) == 0)
            return entry.eLocation;
    }
    return EURLLocation_Local;
}

gcstring CKxXMLFile::ParseURLFilePath(const gcstring& strURL)
{
    const std::string_view url = View(strURL);
    const size_t nColon = url.find(':');
    const size_t nBegin = nColon == url.npos ? 0 : nColon + 1;
    const size_t nEnd = std::min(url.find(';'), url.size());
    return nBegin < nEnd ? ToString(url.substr(nBegin, nEnd - nBegin)) : gcstring();
}

gcstring CKxXMLFile::ParseURLFileName(const gcstring& strPath)
{
    const std::string_view path = View(strPath);
    return ToString(path.substr(path.rfind('\\') + 1)); // from the start when there is none
}

uint64_t CKxXMLFile::ParseURLLocalAddress(const gcstring& strURL)
{
    return ParseHex(BehindSemicolon(View(strURL), 1));
}

uint64_t CKxXMLFile::ParseURLLocalLength(const gcstring& strURL)
{
    return ParseHex(BehindSemicolon(View(strURL), 2));
}

bool CKxXMLFile::IsZipFileName(const gcstring& strPath)
{
    constexpr std::string_view kZip = "zip";
    const std::string_view path = View(strPath);
    if (path.size() < kZip.size())
        return false;
    const std::locale& classic = std::locale::classic();
    return std::equal(kZip.begin(), kZip.end(), path.end() - kZip.size(),
                      [&classic](char expected, char ch) { return expected == std::tolower(ch, classic); });
}

} // namespace KxApi
