// SPDX-License-Identifier: Apache-2.0
// False colours for grey images.
#pragma once

#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <cstdint>

namespace KxApi
{

/// Kinds of colour maps.
enum EKxColorMapType_t : int32_t
{
    KxColorMapType_Normal = 0, ///< grey ramp
    KxColorMapType_PseudoColorBGR =
        1, ///< blue, cyan, green, yellow, red; a window on a circle of 384 colours
    KxColorMapType_PseudoColorBGRB = 2, ///< the whole circle from blue to blue
};

/// Fills a colour table for grey values 0 to 255. Any thread.
/// @param[out] pTable 256 entries 0x00RRGGBB.
/// @param eType an unknown type gives black only.
/// @param bInversion walks the colours from the last down.
/// @param nPhase steps by which the map is rotated, taken modulo 256.
/// Raises BadAllocException.
KXSDK_COMMON_API void SetColorMap(unsigned int* pTable, EKxColorMapType_t eType, bool bInversion, int nPhase);

} // namespace KxApi
