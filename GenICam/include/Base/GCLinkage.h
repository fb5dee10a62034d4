// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Visibility of the base library's symbols, and the names of libraries as programs build them. Everything is
/// built with hidden visibility; what is public says so.

#include <_GenICamVersion.h>

#define KXGC_EXPORT __attribute__((visibility("default")))

/// Marks functions and classes that libKxGCBase exports.
#define GCBASE_API KXGC_EXPORT
/// Marks classes whose type information must be one and the same in all libraries, such as exceptions.
#define GCBASE_RTTI_CLASS_API KXGC_EXPORT

/// Literals for names of files; `module` is a literal as well.
#define CONFIGURATION ""
#define GENICAM_SUFFIX                                                                                       \
    CONFIGURATION "_" GENICAM_COMPILER_STR "_v" GENICAM_VERSION_MAJOR_STR "_" GENICAM_VERSION_MINOR_STR
#define LIB_SUFFIX GENICAM_SUFFIX ".so"
#define DLL_SUFFIX GENICAM_SUFFIX ".so"
#define EXE_SUFFIX GENICAM_SUFFIX
#define DLL_PREFIX "lib"
#define LIB_NAME(module) DLL_PREFIX module LIB_SUFFIX
#define DLL_NAME(module) DLL_PREFIX module DLL_SUFFIX
#define EXE_NAME(module) module EXE_SUFFIX
#define CAMERALINK_CONFIGURATION ""
#define CAMERALINK_DLL_SUFFIX CAMERALINK_CONFIGURATION ".so"
#define CAMERALINK_DLL_NAME(module) DLL_PREFIX module CAMERALINK_DLL_SUFFIX
