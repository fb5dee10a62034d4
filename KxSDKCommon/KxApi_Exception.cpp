// SPDX-License-Identifier: Apache-2.0
#include <KxApi_TL/CKxGenTLLib.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

namespace KxApi
{
namespace
{

/// A description under construction, cut where the room ends.
class CDescription
{
public:
    __attribute__((format(printf, 2, 0))) void AppendV(const char* szFormat, va_list arguments) noexcept
    {
        const int nWritten =
            std::vsnprintf(m_szText + m_nLength, sizeof(m_szText) - m_nLength, szFormat, arguments);
        if (nWritten > 0)
            m_nLength = std::min(m_nLength + static_cast<size_t>(nWritten), sizeof(m_szText) - 1);
    }

    __attribute__((format(printf, 2, 3))) void Append(const char* szFormat, ...) noexcept
    {
        va_list arguments;
        va_start(arguments, szFormat);
        AppendV(szFormat, arguments);
        va_end(arguments);
    }

    const char* Get() const noexcept { return m_szText; }

private:
    char m_szText[1024] = {};
    size_t m_nLength = 0;
};

constexpr size_t kMaxErrorText = 0x10000; // a producer that tells of more tells nonsense

/// Adds the producer's text, if its last error is the one to be reported.
void AppendLastError(CDescription& description, const CKxGenTLLib* pGenTLLib, GenTL::GC_ERROR_LIST eError)
{
    if (!pGenTLLib || !pGenTLLib->GCGetLastError)
        return;
    GenTL::GC_ERROR nLastError = GenTL::GC_ERR_SUCCESS;
    size_t nSize = 0;
    const auto isThisOne = [&](char* pText) {
        return pGenTLLib->GCGetLastError(&nLastError, pText, &nSize) == GenTL::GC_ERR_SUCCESS &&
               nLastError == eError;
    };
    if (!isThisOne(nullptr) || nSize == 0 || nSize > kMaxErrorText)
        return;
    std::vector<char> text(nSize + 1); // one more, should the producer forget the end of its text
    if (isThisOne(text.data()))
        description.Append(" %s", text.data());
}

} // namespace

CKxLinuxErrorException::~CKxLinuxErrorException() noexcept = default;

CKxGenTLErrorException::~CKxGenTLErrorException() noexcept = default;

Detail::CKxErrorPlace::CKxErrorPlace(const char* szSourceFileName, int nSourceLine,
                                     const char* szExceptionType)
    : m_strSourceFileName(szSourceFileName)
    , m_nSourceLine(nSourceLine)
    , m_strExceptionType(szExceptionType)
{}

CKxLinuxErrorException CKxLinuxErrorExceptionReporter::Report(int nError, const char* szFunctionName,
                                                              const char* szFormat, ...) const
{
    // Before anything here can change it. Functions that return their error don't set it.
    const int nErrno = errno != 0 ? errno : nError;
    CDescription description;
    va_list arguments;
    va_start(arguments, szFormat);
    description.AppendV(szFormat, arguments);
    va_end(arguments);
    char szErrno[128];
    description.Append(" ErrorCode=0x%08x \" \"%s", static_cast<unsigned int>(nError),
                       strerror_r(nErrno, szErrno, sizeof(szErrno)));
    return CKxLinuxErrorException(nError, szFunctionName, description.Get(), m_strSourceFileName.c_str(),
                                  m_nSourceLine, m_strExceptionType.c_str());
}

CKxGenTLErrorException CKxGenTLErrorExceptionReporter::Report(CKxGenTLLib* pGenTLLib,
                                                              GenTL::GC_ERROR_LIST eError,
                                                              const char* szFunctionName,
                                                              const char* szFormat, ...) const
{
    CDescription description;
    va_list arguments;
    va_start(arguments, szFormat);
    description.AppendV(szFormat, arguments);
    va_end(arguments);
    AppendLastError(description, pGenTLLib, eError);
    return CKxGenTLErrorException(eError, szFunctionName, description.Get(), m_strSourceFileName.c_str(),
                                  m_nSourceLine, m_strExceptionType.c_str());
}

} // namespace KxApi
