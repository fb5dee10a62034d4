// SPDX-License-Identifier: Apache-2.0
// Types of other systems that the interface uses.
#pragma once

#include <cstdint>

#pragma pack(push, 1)
typedef struct _GUID
{
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
} GUID;
#pragma pack(pop)

/// Lets a structure have no gaps.
#ifndef PACK_STRUCT
#define PACK_STRUCT __attribute__((packed))
#endif
