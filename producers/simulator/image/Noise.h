// SPDX-License-Identifier: Apache-2.0
// Noise of a sensor.
#pragma once

#include <cstdint>

namespace KxSim
{

/// Standard deviation of a pixel's value, as a share of full scale: that of the light itself, and that of
/// reading it out, both raised by the gain (a factor). `value` is the mean share of full scale.
double NoiseDeviation(double value, double gain);

/// Next number of a sequence; any start is good.
inline uint64_t NextRandom(uint64_t state)
{
    state += 0x9E3779B97F4A7C15U;
    state = (state ^ (state >> 30U)) * 0xBF58476D1CE4E5B9U;
    state = (state ^ (state >> 27U)) * 0x94D049BB133111EBU;
    return state ^ (state >> 31U);
}

/// A normally distributed number of mean 0 and deviation 1; `state` goes on.
float NextNormal(uint64_t& state);

} // namespace KxSim
