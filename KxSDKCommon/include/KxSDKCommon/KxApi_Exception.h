// SPDX-License-Identifier: Apache-2.0
// Exceptions of calls that failed with an error code.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <GenTL/GenTLEnums.h>

namespace KxApi
{

class CKxGenTLLib;

namespace Detail
{
/// Base of the exceptions below: an exception of the family with an error code and the function that returned
/// it.
template <class TError>
class KXSDK_COMMON_API CKxErrorException : public GenICam::GenericException
{
public:
    /// All texts are copied. Raises std::bad_alloc.
    CKxErrorException(TError nError, const char* szFunctionName, const char* szDescription,
                      const char* szSourceFileName, int nSourceLine, const char* szExceptionType)
        : GenericException(szDescription, szSourceFileName, nSourceLine, szExceptionType)
        , m_strFunctionName(szFunctionName)
        , m_nError(nError)
    {}

    virtual TError GetError() const { return m_nError; }
    /// The function that failed.
    virtual GenICam::gcstring GetFunctionName() const { return m_strFunctionName; }

private:
    GenICam::gcstring m_strFunctionName;
    TError m_nError;
};

/// Where an exception arises, and how it is called.
class KXSDK_COMMON_API CKxErrorPlace
{
public:
    CKxErrorPlace(const char* szSourceFileName, int nSourceLine, const char* szExceptionType);

protected:
    GenICam::gcstring m_strSourceFileName;
    int m_nSourceLine;
    GenICam::gcstring m_strExceptionType;
};
} // namespace Detail

/// A call of the operating system failed; GetError gives one of errno's codes.
class KXSDK_COMMON_API CKxLinuxErrorException : public Detail::CKxErrorException<int>
{
public:
    using CKxErrorException::CKxErrorException;
    CKxLinuxErrorException(const CKxLinuxErrorException&) = default;
    CKxLinuxErrorException& operator=(const CKxLinuxErrorException&) = default;
    ~CKxLinuxErrorException() noexcept override;
};

/// A call of a GenTL producer failed.
class KXSDK_COMMON_API CKxGenTLErrorException : public Detail::CKxErrorException<GenTL::GC_ERROR_LIST>
{
public:
    using CKxErrorException::CKxErrorException;
    CKxGenTLErrorException(const CKxGenTLErrorException&) = default;
    CKxGenTLErrorException& operator=(const CKxGenTLErrorException&) = default;
    ~CKxGenTLErrorException() noexcept override;
};

/// Makes CKxLinuxErrorExceptions for one place in the source.
class KXSDK_COMMON_API CKxLinuxErrorExceptionReporter : private Detail::CKxErrorPlace
{
public:
    using CKxErrorPlace::CKxErrorPlace;

    /// Formats the description as printf does, adds code and the system's text for errno, 1023 bytes in all,
    /// and returns the exception for the caller to throw.
    __attribute__((format(printf, 4, 5))) CKxLinuxErrorException
    Report(int nError, const char* szFunctionName, const char* szFormat, ...) const;
};

/// Makes CKxGenTLErrorExceptions for one place in the source.
class KXSDK_COMMON_API CKxGenTLErrorExceptionReporter : private Detail::CKxErrorPlace
{
public:
    using CKxErrorPlace::CKxErrorPlace;

    /// Formats the description as printf does, adds the producer's text when its last error is this one, 1023
    /// bytes in all, and returns the exception for the caller to throw. To be called in the thread of the
    /// call that failed.
    /// @param pGenTLLib the producer; null, or one without GCGetLastError, adds nothing.
    __attribute__((format(printf, 5, 6))) CKxGenTLErrorException Report(CKxGenTLLib* pGenTLLib,
                                                                        GenTL::GC_ERROR_LIST eError,
                                                                        const char* szFunctionName,
                                                                        const char* szFormat, ...) const;
};

} // namespace KxApi

/// The exceptions for the place where this stands: `throw KX_LINUX_ERROR_EXCEPTION(error, "open", "format",
/// ...)`.
#define KX_LINUX_ERROR_EXCEPTION                                                                             \
    ::KxApi::CKxLinuxErrorExceptionReporter(KXGC_SOURCE_FILE, __LINE__, "KxLinuxErrorException").Report
#define KX_GENTL_ERROR_EXCEPTION                                                                             \
    ::KxApi::CKxGenTLErrorExceptionReporter(KXGC_SOURCE_FILE, __LINE__, "KxGenTLErrorException").Report
