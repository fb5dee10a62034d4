// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Small helpers: checked integer conversion, environment, file lists, splitting and URL encoding. Any
/// thread; the functions that read the environment must not run while another thread changes it.

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>

#include <limits>
#include <type_traits>

namespace GenICam
{
/// Converts between integer types; raises OutOfRangeException when `value` doesn't fit.
template <typename To, typename From>
To INTEGRAL_CAST(From value)
{
    static_assert(std::is_integral_v<To> && std::is_integral_v<From>, "integers only");
    const To result = static_cast<To>(value);
    if (static_cast<From>(result) != value || (result < To(0)) != (value < From(0))) {
        if (value < From(0))
            throw OUT_OF_RANGE_EXCEPTION("%lld doesn't fit into an integer of %zu bits",
                                         static_cast<long long>(value), sizeof(To) * 8);
        throw OUT_OF_RANGE_EXCEPTION("%llu doesn't fit into an integer of %zu bits",
                                     static_cast<unsigned long long>(value), sizeof(To) * 8);
    }
    return result;
}

/// As above, for a source of the type named second.
template <typename To, typename From>
To INTEGRAL_CAST2(From value)
{
    return INTEGRAL_CAST<To>(value);
}

/// Tells whether the machine stores the least significant byte first.
constexpr bool IsLittleEndianMachine() noexcept { return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__; }

GCBASE_API bool DoesEnvironmentVariableExist(const gcstring& name);
/// The value of a variable; raises RuntimeException when there is none.
GCBASE_API gcstring GetValueOfEnvironmentVariable(const gcstring& name);
/// The value of a variable in `value`; false, and `value` unchanged, when there is none.
GCBASE_API bool GetValueOfEnvironmentVariable(const gcstring& name, gcstring& value);

/// Replaces each "$(NAME)" in `text` by the value of that variable, values not being looked through again;
/// with `replaceBlankBy20` then each blank by "%20". Raises RuntimeException for an unknown variable.
GCBASE_API void ReplaceEnvironmentVariables(gcstring& text, bool replaceBlankBy20 = false);

/// Folders for the cached descriptions, the log configuration and the CL protocol drivers, as given to the
/// functions below or by the environment (GENICAM_CACHE_V3_4, GENICAM_LOG_CONFIG_V3_4, GENICAM_CLPROTOCOL).
/// Raises RuntimeException when neither says.
GCBASE_API gcstring GetGenICamCacheFolder();
GCBASE_API gcstring GetGenICamLogConfig();
GCBASE_API gcstring GetGenICamCLProtocolFolder();
GCBASE_API void SetGenICamCacheFolder(const gcstring& path);
GCBASE_API void SetGenICamLogConfig(const gcstring& path);
GCBASE_API void SetGenICamCLProtocolFolder(const gcstring& path);

/// Appends to `fileNames` the paths that fit `fileTemplate` ("/lib/*.cti", with * and ? in the last part;
/// environment variables are replaced), sorted; plain files, or only folders. A folder that doesn't exist
/// holds nothing.
GCBASE_API void GetFiles(const gcstring& fileTemplate, gcstring_vector& fileNames,
                         bool directoriesOnly = false);
/// Path of the program or library that holds a function; empty when it isn't known.
GCBASE_API gcstring GetModulePathFromFunction(void* function);

/// Appends to `tokens` the parts of `text` between any of `delimiters`, empty ones left out.
GCBASE_API void Tokenize(const gcstring& text, gcstring_vector& tokens, const gcstring& delimiters = " ");

/// Writes all bytes other than letters, digits and -_.~/:?=& as "%" and two hexadecimal digits.
GCBASE_API gcstring UrlEncode(const gcstring& text);
/// The reverse; a "%" without two hexadecimal digits behind it stays as it is.
GCBASE_API gcstring UrlDecode(const gcstring& text);
} // namespace GenICam
