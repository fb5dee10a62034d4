// SPDX-License-Identifier: Apache-2.0
// Visibility of what libKxGenApi exports.
#pragma once

#include <GenICamFwd.h>

#if defined(__GNUC__)
#define GENAPI_API __attribute__((visibility("default")))
#else
#define GENAPI_API
#endif

/// The names under which the standard's headers know the same thing.
#define GENAPI_DECL GENAPI_API
#define GENAPI_DECL_ABSTRACT GENAPI_API
#define GENAPI_EXPIMP_TEMPL extern
