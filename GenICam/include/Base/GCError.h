// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Error codes of interfaces in C, whose values are the standard's. Not part of GCBase.h: GenTL has some of
/// the names in a name space of its own, which programs use by `using namespace`.

#include <cstdint>

typedef int32_t GC_ERROR;

enum GCErrorID
{
    GC_ERR_SUCCESS = 0,
    GC_ERR_INVALID_BUFFER_SIZE = -1,
    GC_ERR_INVALID_HANDLE = -2,
    GC_ERR_INVALID_ID = -3,
    GC_ERR_ACCESS_DENIED = -4,
    GC_ERR_NO_DATA = -5,
    GC_ERR_ERROR = -6,
    GC_ERR_INVALID_PARAMETER = -7,
    GC_ERR_TIMEOUT = -8,
    GC_ERR_INVALID_FILENAME = -9,
    GC_ERR_INVALID_ADDRESS = -10,
    GC_ERR_FILE_IO = -11
};

/// Where an error comes from; combined with an error by "or".
enum GCModuleID
{
    GC_MOD_SYSTEM = 0x00000000,
    GC_MOD_GENAPI = 0x04000000,
    GC_MOD_FACTORY = 0x08000000,
    GC_MOD_TLISYSTEM = 0x10000000,
    GC_MOD_TLICLIENT = 0x20000000
};

/// The error in a code that names a module as well.
#define GC_GET_ERROR(code) (static_cast<GC_ERROR>((static_cast<uint32_t>(code) & 0x0000FFFFu) | 0xFFFF0000u))
/// Whether a code is an error.
#define GC_IS_ERROR(code) ((static_cast<uint32_t>(code) & 0x80000000u) != 0)
