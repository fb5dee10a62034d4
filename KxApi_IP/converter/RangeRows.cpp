// SPDX-License-Identifier: Apache-2.0
#include "RangeRows.h"

#include "PixelReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr double kMaxValue = 65535;

/// Calls `take(x, value)` for all pixels of a line.
template <class Real, class Take>
void ForReals(const CSourceFormat& format, const CSourceView& source, size_t nLine, const Take& take)
{
    const CPixelLayout& layout = *format.pLayout;
    const CComponentPlace& place = layout.places[format.anComponent[0]];
    const CPixelMemory memory{source.pBytes, source.nLinePitch, source.nPlanePitch};
    const size_t nPlane = place.plane == 0 ? 0 : PlaneOffset(layout, memory, place.plane);
    const uint8_t* pBytes = source.pBytes + nPlane + nLine * source.nLinePitch + place.high[0] / 8;
    for (size_t x = 0; x < source.nWidth; ++x, pBytes += place.groupBits / 8) {
        Real value;
        std::memcpy(&value, pBytes, sizeof(value));
        take(x, double{value});
    }
}

template <class Take>
void ForReals(const CSourceFormat& format, const CSourceView& source, size_t nLine, const Take& take)
{
    if (format.pRow->components[format.anComponent[0]].bits == 32)
        ForReals<float>(format, source, nLine, take);
    else
        ForReals<double>(format, source, nLine, take);
}

} // namespace

CRealScale FindRealScale(const CSourceFormat& format, const CSourceView& source)
{
    double least = std::numeric_limits<double>::infinity(), greatest = -least;
    for (size_t nLine = 0; nLine < source.nHeight; ++nLine) {
        ForReals(format, source, nLine, [&](size_t, double value) {
            if (!std::isfinite(value))
                return;
            least = std::min(least, value);
            greatest = std::max(greatest, value);
        });
    }
    if (least >= greatest)
        return {least, 0};
    // The distance of the greatest numbers isn't one itself.
    return {least, (kMaxValue - 1) / std::min(greatest - least, std::numeric_limits<double>::max())};
}

void CRealRows::BeginLine(size_t nLine)
{
    uint16_t* const pRow = m_row.Row(0);
    const CRealScale scale = m_source.scale;
    ForReals(m_format, m_source, nLine, [&](size_t x, double value) {
        const double scaled = 1.5 + (value - scale.least) * scale.factor;
        pRow[x] =
            std::isfinite(value) ? static_cast<uint16_t>(std::clamp(scaled, 1.0, kMaxValue)) : uint16_t{0};
    });
}

} // namespace Detail
} // namespace KxApi
