// SPDX-License-Identifier: Apache-2.0

#include "Surface.h"

#include <algorithm>
#include <cmath>

namespace KxSim
{
namespace
{

constexpr double kCodesPerPixel = 40; // of height, for one of the plane

/// Height above the belt at a point, in pixels. docs/simulator.md tells the things.
double HeightAt(double x, double y)
{
    double height = 0;
    const auto rise = [&height](double other) { height = std::max(height, other); };
    const double ball = 120 * 120 - (x - 200) * (x - 200) - (y - 256) * (y - 256);
    rise(ball > 0 ? std::sqrt(ball) : 0);
    if (std::fabs(x - 500) < 100 && std::fabs(y - 256) < 80)
        rise(60); // box
    const double pyramid = 110 - std::max(std::fabs(x - 760), std::fabs(y - 256));
    rise(pyramid);
    if (std::fabs(x - 1000) < 60 && std::fabs(y - 256) < 160)
        rise((y - 96) / 4); // ramp
    const double ring = std::hypot(x - 1160, y - 256);
    if (ring > 40 && ring < 70)
        rise(30);
    return height;
}

} // namespace

CSurface::CSurface()
    : m_range(size_t{kWidth} * kHeight)
    , m_intensity(m_range.size())
    , m_confidence(m_range.size())
{
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const size_t place = static_cast<size_t>(y) * kWidth + static_cast<size_t>(x);
            const double height = HeightAt(x, y);
            const double slopeX = HeightAt(x + 1, y) - HeightAt(x - 1, y);
            const double slopeY = HeightAt(x, y + 1) - HeightAt(x, y - 1);
            const double slope = std::hypot(slopeX, slopeY) / 2;
            // Light from the upper left.
            const double shade =
                (2 + 0.5 * slopeX + 0.5 * slopeY) / std::sqrt(4 + slopeX * slopeX + slopeY * slopeY);
            const bool isSeen = slope < 8; // steeper than that nothing comes back
            m_range[place] =
                isSeen ? static_cast<uint16_t>(kBeltRange - std::lround(height * kCodesPerPixel)) : 0;
            m_intensity[place] = static_cast<uint8_t>(std::clamp(160 * shade, 20.0, 250.0));
            m_confidence[place] = static_cast<uint8_t>(isSeen ? std::max(255 - 28 * slope, 30.0) : 0);
        }
    }
}

const CSurface& CSurface::Get()
{
    static const CSurface surface;
    return surface;
}

} // namespace KxSim
