// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Small helpers: checked integer conversion, environment, file lists, splitting and URL encoding. Any
/// thread; the functions that read the environment must not run while another thread changes it.

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>

#include <type_traits>

/// Number of elements of an array.
#define GC_COUNTOF(array) (sizeof(array) / sizeof((array)[0]))

#if defined(__x86_64__)
#define PLATFORM_NAME "Linux64_x64"
#elif defined(__aarch64__)
#define PLATFORM_NAME "Linux64_ARM"
#else
#define PLATFORM_NAME "Linux32_i86"
#endif

#define GENICAM_GCC_VERSION (__GNUC__ * 10000 + __GNUC_MINOR__ * 100 + __GNUC_PATCHLEVEL__)
#define USE_TEMP_CACHE_FILE 1

/// A place in the source as text, for messages of the compiler.
#ifndef _TO_STRING
#define _TO_STRING(x) #x
#endif
#define EXPAND_TO_STRINGISE(x) _TO_STRING(x)
#define __LINE_STR__ EXPAND_TO_STRINGISE(__LINE__)
#define __LOCATION__ __FILE__ "(" __LINE_STR__ ")"
#define __OUTPUT_FORMATER__(type) __LOCATION__ " : " type " : "
#define __WARN__ __OUTPUT_FORMATER__("WARNING")
#define __ERR__ __OUTPUT_FORMATER__("ERROR")
#define __TODO__ __OUTPUT_FORMATER__("TBD")

namespace GenICam
{
/// Converts between integer types; raises RuntimeException when `value` doesn't fit.
template <typename To, typename From>
To INTEGRAL_CAST(From value)
{
    static_assert(std::is_integral<To>::value && std::is_integral<From>::value, "integers only");
    const To result = static_cast<To>(value);
    if (static_cast<From>(result) != value || (result < To(0)) != (value < From(0))) {
        const bool negative = value < From(0);
        throw RUNTIME_EXCEPTION(
            "INTEGRAL_CAST failed: %s%llu doesn't fit into an integer of %zu bits", negative ? "-" : "",
            negative ? 0ULL - static_cast<unsigned long long>(value) : static_cast<unsigned long long>(value),
            sizeof(To) * 8);
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
/// Folder for cached descriptions; false when there is none.
GCBASE_API bool GetCacheFileDirectory(gcstring& directory);
/// The files in a folder that could be cached descriptions. Nothing is cached in files here.
GCBASE_API void GetCandidateCacheFilePaths(gcstring_vector& paths, const gcstring& directory);
/// Whether a path is short enough for the file system, and whether it ends like a description.
GCBASE_API bool HasValidLength(const gcstring& path);
GCBASE_API bool HasValidExtension(const gcstring& path);
/// Text of the operating system's last error in this thread.
GCBASE_API void GetLastErrorMessage(gcstring& message);
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
