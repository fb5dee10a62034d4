// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Fundamental types, format lengths and small declaration macros shared by all headers.

#include <Base/GCCompatibility.h>
#include <Base/GCLinkage.h>
#include <Base/GCNamespace.h>

#include <cinttypes>
#include <climits>
#include <cstddef>
#include <cstdint>

/// Turns a token into a string literal after it was expanded.
#define GC_QUOTE_INNER(token) #token
#define GC_QUOTE(token) GC_QUOTE_INNER(token)

/// Integer limits by the names that GenApi programs use.
#ifndef GC_INT8_MIN
#define GC_INT8_MIN INT8_MIN
#endif
#ifndef GC_INT8_MAX
#define GC_INT8_MAX INT8_MAX
#endif
#ifndef GC_UINT8_MAX
#define GC_UINT8_MAX UINT8_MAX
#endif
#ifndef GC_INT16_MIN
#define GC_INT16_MIN INT16_MIN
#endif
#ifndef GC_INT16_MAX
#define GC_INT16_MAX INT16_MAX
#endif
#ifndef GC_UINT16_MAX
#define GC_UINT16_MAX UINT16_MAX
#endif
#ifndef GC_INT32_MIN
#define GC_INT32_MIN INT32_MIN
#endif
#ifndef GC_INT32_MAX
#define GC_INT32_MAX INT32_MAX
#endif
#ifndef GC_UINT32_MAX
#define GC_UINT32_MAX UINT32_MAX
#endif
#ifndef GC_INT64_MIN
#define GC_INT64_MIN INT64_MIN
#endif
#ifndef GC_INT64_MAX
#define GC_INT64_MAX INT64_MAX
#endif
#ifndef GC_UINT64_MAX
#define GC_UINT64_MAX UINT64_MAX
#endif

/// Declares an interface class without data. Kept for programs that use it; needs no special code here.
#define GENICAM_DECL_ABSTRACT

/// Silences the warning about an unused parameter or variable.
#define GENICAM_UNUSED(unusedVariable) ((void)(unusedVariable))
#define GC_UNUSED(unusedVariable) ((void)(unusedVariable))

/// Marks a function that programs should no longer call.
#define GENICAM_DEPRECATED(declaration) __attribute__((deprecated)) declaration

namespace GenICam
{
using std::int16_t;
using std::int32_t;
using std::int64_t;
using std::int8_t;
using std::uint16_t;
using std::uint32_t;
using std::uint64_t;
using std::uint8_t;

/// A version number.
struct Version_t
{
    uint16_t Major;
    uint16_t Minor;
    uint16_t SubMinor;
};
} // namespace GenICam

using GENICAM_NAMESPACE::Version_t;

typedef float float32_t;
typedef double float64_t;
