// SPDX-License-Identifier: Apache-2.0
// The SDK's version: that of the headers a program was compiled with, and that of the libraries it runs with.
#pragma once

#include <KxApi_TL/KxApi_TLLinkage.h>

// The one place where the version is told; the build reads it here.
#define KXAPI_VERSION_MAJOR 1
#define KXAPI_VERSION_MINOR 1
#define KXAPI_VERSION_PATCH 0
#define KXAPI_VERSION_STRING "1.1.0"

/// A version as one number, to compare with KXAPI_VERSION or KxApi::GetVersion. Minor and patch are below
/// 1000.
#define KXAPI_MAKE_VERSION(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))
/// The version of these headers, for `#if KXAPI_VERSION >= KXAPI_MAKE_VERSION(1, 2, 0)`.
#define KXAPI_VERSION KXAPI_MAKE_VERSION(KXAPI_VERSION_MAJOR, KXAPI_VERSION_MINOR, KXAPI_VERSION_PATCH)

namespace KxApi
{

/// The version of the loaded libraries, as KXAPI_MAKE_VERSION makes it. A program whose KXAPI_VERSION has the
/// same major and minor runs with them. Any thread, without Initialize.
KXAPI_TL_API int GetVersion() noexcept;

/// The same as text, such as "1.1.0". The library owns it.
KXAPI_TL_API const char* GetVersionText() noexcept;

} // namespace KxApi
