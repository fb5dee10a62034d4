// SPDX-License-Identifier: Apache-2.0
// Exceptions of calls that failed with an error code.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <KxSDKCommon/KxSDKCommonLinkage.h>

namespace KxApi
{

/// A call of the operating system failed.
class KXSDK_COMMON_API CKxLinuxErrorException : public GenICam::GenericException
{
public:
    /// All texts are copied. Raises GenICam::BadAllocException.
    CKxLinuxErrorException(int nError, const char* szFunctionName, const char* szDescription,
                           const char* szSourceFileName, int nSourceLine, const char* szExceptionType);
    CKxLinuxErrorException(const CKxLinuxErrorException&) = default;
    CKxLinuxErrorException& operator=(const CKxLinuxErrorException&) = default;
    ~CKxLinuxErrorException() noexcept override;

    /// The code, one of errno's.
    virtual int GetError() const;
    /// The function that failed.
    virtual GenICam::gcstring GetFunctionName() const;

private:
    GenICam::gcstring m_strFunctionName;
    int m_nError;
};

/// Makes CKxLinuxErrorExceptions for one place in the source.
class KXSDK_COMMON_API CKxLinuxErrorExceptionReporter
{
public:
    CKxLinuxErrorExceptionReporter(const char* szSourceFileName, int nSourceLine,
                                   const char* szExceptionType);

    /// Formats the description as printf does, adds code and the system's text for errno, 1023 bytes in all,
    /// and returns the exception for the caller to throw.
    __attribute__((format(printf, 4, 5))) CKxLinuxErrorException
    Report(int nError, const char* szFunctionName, const char* szFormat, ...) const;

private:
    GenICam::gcstring m_strSourceFileName;
    int m_nSourceLine;
    GenICam::gcstring m_strExceptionType;
};

} // namespace KxApi

/// The exception for the place where this stands: `throw KX_LINUX_ERROR_EXCEPTION(error, "open", "format",
/// ...)`.
#define KX_LINUX_ERROR_EXCEPTION                                                                             \
    ::KxApi::CKxLinuxErrorExceptionReporter(KXGC_SOURCE_FILE, __LINE__, "KxLinuxErrorException").Report
