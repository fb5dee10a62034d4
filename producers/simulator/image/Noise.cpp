// SPDX-License-Identifier: Apache-2.0

#include "Noise.h"

#include <cmath>

namespace KxSim
{

double NoiseDeviation(double value, double gain)
{
    constexpr double kFullWell = 10000; // electrons at full scale, without gain
    constexpr double kReadNoise = 6;    // electrons
    const double light = value * gain / kFullWell;
    const double reading = kReadNoise * gain / kFullWell;
    return std::sqrt(light + reading * reading);
}

float NextNormal(uint64_t& state)
{
    // The sum of eight 8-bit numbers is near enough to normal; its deviation is 8 * (256^2 - 1) / 12, its
    // root 209.0.
    state += 0x9E3779B97F4A7C15U;
    uint64_t bits = NextRandom(state);
    int sum = 0;
    for (int i = 0; i < 8; ++i, bits >>= 8U)
        sum += static_cast<int>(bits & 0xFFU);
    return (static_cast<float>(sum) - 1020.0F) / 209.02F;
}

} // namespace KxSim
