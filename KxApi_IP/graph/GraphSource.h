// SPDX-License-Identifier: Apache-2.0
// What histograms and profiles ask of an image.
#pragma once

#include "CImageValues.h"

#include <Base/GCException.h>
#include <KxApi_IP/IKxGraphDataBufferList.h>

namespace KxApi
{
namespace Detail
{

/// Pixels and lines after which the types of component k repeat.
inline size_t PeriodOf(const CPixelFormatRow& row, size_t k)
{
    return row.components[k].isMosaic ? kMosaics[row.mosaic].period : 1;
}

/// What a value has to be combined with, by exclusive or, to be counted from 0 on.
inline uint32_t SignBit(const CComponentRow& component)
{
    return component.number == KxPixelNumber_Signed ? uint32_t{1} << (component.bits - 1) : 0;
}

/// Raises what graphs can't be made of.
inline void CheckGraphSource(const CImageValues& values, const IKxGraphDataBufferListResizable* pList)
{
    if (!pList)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    for (size_t k = 0; k < values.ComponentCount(); ++k) {
        const CComponentRow& component = values.Format().components[k];
        if (component.number == KxPixelNumber_Float)
            throw INVALID_ARGUMENT_EXCEPTION(
                "The values of %s are of floating point, which graphs can't show", values.Format().name);
        if (component.bits > 32)
            throw INVALID_ARGUMENT_EXCEPTION("The values of %s have %u bits, graphs show at most 32",
                                             values.Format().name, static_cast<unsigned>(component.bits));
    }
}

} // namespace Detail
} // namespace KxApi
