// SPDX-License-Identifier: Apache-2.0
// What a 3D camera sees: things of known heights on a belt.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KxSim
{

/// Range, brightness and confidence of each point, made once; images are windows of it, the belt comes round
/// after its width. Built on first use; then any thread.
class CSurface
{
public:
    static constexpr int kWidth = 1280, kHeight = 512;
    /// Of the belt: codes of 16 bits, in steps of 0.01 mm.
    static constexpr uint16_t kBeltRange = 30000;

    static const CSurface& Get();

    const uint16_t* RangeLine(size_t y) const { return &m_range[y * kWidth]; }
    const uint8_t* IntensityLine(size_t y) const { return &m_intensity[y * kWidth]; }
    const uint8_t* ConfidenceLine(size_t y) const { return &m_confidence[y * kWidth]; }

private:
    CSurface();

    std::vector<uint16_t> m_range;
    std::vector<uint8_t> m_intensity, m_confidence;
};

} // namespace KxSim
