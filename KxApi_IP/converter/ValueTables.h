// SPDX-License-Identifier: Apache-2.0
// How values change from source to destination: depth, gamma, colour map.
#pragma once

#include "RowKernels.h"

#include <KxApi_IP/KxConversionOptions.h>
#include <KxSDKCommon/ColorMap.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// A value of nFrom bits brought to more bits by repeating its own.
constexpr uint32_t RepeatedBits(uint32_t nValue, unsigned nFrom, unsigned nTo)
{
    uint32_t nResult = nValue;
    unsigned nBits = nFrom;
    for (; nBits < nTo; nBits += nFrom)
        nResult = nResult << nFrom | nValue;
    return nResult >> (nBits - nTo);
}

struct CValueOptions
{
    unsigned nFrom; ///< bits
    unsigned nTo;
    EKxBitExpansionMode_t expansion;
    double gamma;

    bool IsIdentity() const
    {
        return gamma == 1.0 && (nFrom == nTo || (nFrom < nTo && expansion == KxBitExpansionMode_Off));
    }
};

/// The map as shifts, where it is one; never for 8 bits and fewer on both sides.
std::optional<CDepthChange> FindDepthChange(const CValueOptions& options);

uint32_t MappedValue(const CValueOptions& options, uint32_t nValue);

/// The map as a table with an entry for each value of nFrom bits.
template <class U>
std::vector<U> MakeValueTable(const CValueOptions& options);

struct CColorMapOptions
{
    EKxColorMapType_t type;
    bool isInverted;
    int32_t nPhase;

    bool IsIdentity() const { return type == KxColorMapType_Normal && !isInverted && nPhase == 0; }
};

/// Tables for R, G and B: values become an eight-bit grey first, then that grey's colour in nTo bits.
template <class U>
std::array<std::vector<U>, 3> MakeColorTables(const CValueOptions& options, const CColorMapOptions& map);

} // namespace Detail
} // namespace KxApi
