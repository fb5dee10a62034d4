// SPDX-License-Identifier: Apache-2.0
// Version of the standard's interface that these headers are.
#pragma once

#define GENICAM_VERSION_MAJOR 3
#define GENICAM_VERSION_MINOR 4
#define GENICAM_VERSION_SUBMINOR 0
#define GENICAM_VERSION_BUILD 0

#define GENICAM_VERSION_MAJOR_STR "3"
#define GENICAM_VERSION_MINOR_STR "4"
#define GENICAM_VERSION_SUBMINOR_STR "0"
#define GENICAM_VERSION_BUILD_STR "0"

/// Name of the compiler in names of files; empty, for the libraries here carry none.
#define GENICAM_MAIN_COMPILER
#define GENICAM_COMPILER GENICAM_MAIN_COMPILER
#define GENICAM_COMPILER_STR ""

/// A token as a literal; the second expands it first.
#ifndef STRINGIFY
#define STRINGIFY(x) #x
#endif
#ifndef TOSTRING
#define TOSTRING(x) STRINGIFY(x)
#endif

/// Tokens with underscores between them; the SEP forms expand their arguments first.
#define GENICAM_RAW_UNDERSCORE(a, b, c) a##_##b##_##c
#define GENICAM_SEP_UNDERSCORE(a, b, c) GENICAM_RAW_UNDERSCORE(a, b, c)
#define GENICAM_RAW_UNDERSCORE_COMPANY(a, b, c, d) a##_##b##_##c##_##d
#define GENICAM_SEP_UNDERSCORE_COMPANY(a, b, c, d) GENICAM_RAW_UNDERSCORE_COMPANY(a, b, c, d)
