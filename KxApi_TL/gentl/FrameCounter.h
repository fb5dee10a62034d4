// SPDX-License-Identifier: Apache-2.0
// Which images are missing between those that arrived.
#pragma once

#include <cstdint>

namespace KxApi
{
namespace Detail
{

/// Watches the sequence of frame IDs, from the first one that is counted.
class CFrameCounter
{
public:
    bool HasBegun() const { return m_hasLast; }

    /// Images missing between the last one and this one; 0 when the device began to count anew, or jumped
    /// farther than images can be lost.
    uint64_t Missing(uint64_t frameID)
    {
        // 16-bit IDs go from 65535 to 1, since 0 is none.
        constexpr uint64_t kLastOf16Bits = 0xFFFF;
        constexpr uint64_t kNearTheEnd = 0xFF00;
        constexpr uint64_t kMostLost = uint64_t{1} << 32; // hours of the fastest camera
        const bool isFirst = !m_hasLast;
        const uint64_t last = m_last;
        m_hasLast = true;
        m_last = frameID;
        if (isFirst || frameID == last)
            return 0;
        if (frameID > last)
            return frameID - last > kMostLost ? 0 : frameID - last - 1;
        const bool isWrapped = last >= kNearTheEnd && last <= kLastOf16Bits && frameID > 0 &&
                               frameID <= kLastOf16Bits - kNearTheEnd;
        return isWrapped ? kLastOf16Bits - last + frameID - 1 : 0;
    }

private:
    bool m_hasLast = false;
    uint64_t m_last = 0;
};

} // namespace Detail
} // namespace KxApi
