// SPDX-License-Identifier: Apache-2.0
#include "ValueTables.h"

#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace Detail
{
namespace
{

uint32_t WithDepth(const CValueOptions& options, uint32_t nValue)
{
    if (options.nTo <= options.nFrom)
        return nValue >> (options.nFrom - options.nTo);
    switch (options.expansion) {
    case KxBitExpansionMode_FullRange:
        return RepeatedBits(nValue, options.nFrom, options.nTo);
    case KxBitExpansionMode_ZeroFill:
        return nValue << (options.nTo - options.nFrom);
    case KxBitExpansionMode_Off:
        break;
    }
    return nValue;
}

uint32_t GreatestValue(unsigned nBits) { return (1U << nBits) - 1; }

} // namespace

std::optional<CDepthChange> FindDepthChange(const CValueOptions& options)
{
    const unsigned nFrom = options.nFrom, nTo = options.nTo;
    if (options.gamma != 1.0)
        return std::nullopt;
    if (nTo <= nFrom)
        return CDepthChange{0, nFrom - nTo, true};
    switch (options.expansion) {
    case KxBitExpansionMode_Off:
        return CDepthChange{0, 0, true};
    case KxBitExpansionMode_ZeroFill:
        return CDepthChange{nTo - nFrom, 15, false}; // what has to grow to 16 bits has 15 at most
    case KxBitExpansionMode_FullRange:
        break;
    }
    // Bits that are repeated once.
    return nTo <= 2 * nFrom ? std::optional<CDepthChange>({nTo - nFrom, 2 * nFrom - nTo, false})
                            : std::nullopt;
}

uint32_t MappedValue(const CValueOptions& options, uint32_t nValue)
{
    const uint32_t nMax = GreatestValue(options.nFrom);
    if (options.gamma == 1.0)
        return WithDepth(options, nValue);
    // The greatest value goes where it goes without gamma.
    const double scale = WithDepth(options, nMax);
    return static_cast<uint32_t>(std::lround(scale * std::pow(double{1} * nValue / nMax, options.gamma)));
}

template <class U>
std::vector<U> MakeValueTable(const CValueOptions& options)
{
    // Small tables have the size of a vector register.
    const size_t nCount = size_t{GreatestValue(options.nFrom)} + 1;
    std::vector<U> table(std::max<size_t>(nCount, 16));
    for (size_t i = 0; i < nCount; ++i)
        table[i] = static_cast<U>(MappedValue(options, static_cast<uint32_t>(i)));
    return table;
}

template <class U>
std::array<std::vector<U>, 3> MakeColorTables(const CValueOptions& options, const CColorMapOptions& map)
{
    unsigned int anColors[256];
    SetColorMap(anColors, map.type, map.isInverted, map.nPhase);
    const CValueOptions toGrey{options.nFrom, 8, KxBitExpansionMode_FullRange, options.gamma};
    const std::vector<uint8_t> greys = MakeValueTable<uint8_t>(toGrey);
    std::array<std::vector<U>, 3> tables;
    for (unsigned nChannel = 0; nChannel < 3; ++nChannel) {
        tables[nChannel].reserve(greys.size());
        for (const uint8_t nGrey : greys) {
            const uint32_t nColor = anColors[nGrey] >> (16 - 8 * nChannel) & 0xFF;
            tables[nChannel].push_back(static_cast<U>(RepeatedBits(nColor, 8, options.nTo)));
        }
    }
    return tables;
}

template std::vector<uint8_t> MakeValueTable<uint8_t>(const CValueOptions&);
template std::vector<uint16_t> MakeValueTable<uint16_t>(const CValueOptions&);
template std::array<std::vector<uint8_t>, 3> MakeColorTables<uint8_t>(const CValueOptions&,
                                                                      const CColorMapOptions&);
template std::array<std::vector<uint16_t>, 3> MakeColorTables<uint16_t>(const CValueOptions&,
                                                                        const CColorMapOptions&);

} // namespace Detail
} // namespace KxApi
