// SPDX-License-Identifier: Apache-2.0
// Figures that tell of a histogram or a line profile.
#pragma once

#include <cstdint>
#include <string>

namespace KxApi
{
struct IKxGraphData;
}

namespace KxApps
{

/// Of the values of one pixel component, in its own units. All are 0 where there are no values.
struct GraphStatistics
{
    std::string component; ///< such as "Gr", with the polariser's angle where there is one
    double mean = 0;
    double deviation = 0; ///< standard deviation
    double min = 0;
    double max = 0;
    double atLowerEnd = 0; ///< part of the values, 0 to 1, that stand at the lower end of the scale
    double atUpperEnd = 0;
};

/// Of an item that AppendHistogram or AppendLineProfile made.
GraphStatistics StatisticsOf(const KxApi::IKxGraphData& data);

} // namespace KxApps
