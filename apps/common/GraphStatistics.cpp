// SPDX-License-Identifier: Apache-2.0
#include "GraphStatistics.h"

#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_TL/IKxPixelComponent.h>

#include <algorithm>
#include <cmath>

using namespace KxApi;

namespace KxApps
{
namespace
{

/// What the entries of an item stand for: a value and how often it occurs.
struct Entries
{
    explicit Entries(const IKxGraphData& graphData)
        : data(graphData)
        , histogram(graphData.GetKind() == KxGraphDataKind_Histogram)
        , type(static_cast<uint32_t>(data.GetProperty(KxGraphDataProperty_Component)))
        , bits(type >> 16 & 0xFF)
        , divisor(static_cast<double>(data.GetProperty(KxGraphDataProperty_Divisor)))
    {
        constexpr uint32_t kBitsOfEntries = 16; // of finer components an entry stands for several values
        if (histogram && bits > kBitsOfEntries)
            unit = std::exp2(bits - kBitsOfEntries);
        if ((type >> 8 & 0xFF) == KxPixelNumber_Signed)
            offset = -std::exp2(bits - 1.0);
    }

    double Value(size_t i) const
    {
        return (histogram ? static_cast<double>(i) * unit : data.GetValues()[i] / divisor) + offset;
    }
    double Count(size_t i) const { return histogram ? data.GetValues()[i] : 1.0; }
    double Lowest() const { return offset; }
    double Highest() const
    {
        return histogram
                   ? Value(data.GetLength() - 1)
                   : static_cast<double>(data.GetProperty(KxGraphDataProperty_FullScale)) / divisor + offset;
    }

    const IKxGraphData& data;
    const bool histogram;
    const uint32_t type;
    const uint32_t bits;
    const double divisor;
    double unit = 1;
    double offset = 0;
};

std::string NameOf(uint32_t type)
{
    const IKxPixelComponentInfo* const pInfo =
        GetIKxPixelComponentInfo(static_cast<EKxPixelComponentType_t>(type));
    return pInfo ? pInfo->GetName().c_str() : "";
}

} // namespace

GraphStatistics StatisticsOf(const IKxGraphData& data)
{
    const Entries entries(data);
    GraphStatistics result;
    result.component = NameOf(entries.type);
    double count = 0, sum = 0, lower = 0, upper = 0;
    for (size_t i = 0; i < data.GetLength(); ++i) {
        const double occurs = entries.Count(i), value = entries.Value(i);
        if (occurs == 0)
            continue;
        result.min = count == 0 ? value : std::min(result.min, value);
        result.max = count == 0 ? value : std::max(result.max, value);
        count += occurs;
        sum += occurs * value;
        lower += value <= entries.Lowest() ? occurs : 0;
        upper += value >= entries.Highest() ? occurs : 0;
    }
    if (count == 0)
        return result;
    result.mean = sum / count;
    result.atLowerEnd = lower / count;
    result.atUpperEnd = upper / count;
    double squares = 0; // of the distances to the mean, in a second pass, so that none of them is lost
    for (size_t i = 0; i < data.GetLength(); ++i)
        squares += entries.Count(i) * std::pow(entries.Value(i) - result.mean, 2);
    result.deviation = std::sqrt(squares / count);
    return result;
}

} // namespace KxApps
