// SPDX-License-Identifier: Apache-2.0

#include "PixelReader.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace KxApi
{
namespace Detail
{
namespace
{

/// `count` bits, 64 at most, that start `bit` bits after `base`. A value of 64 bits starts at a byte.
uint64_t ReadBits(const uint8_t* base, size_t bit, unsigned count)
{
    const uint8_t* const bytes = base + bit / 8;
    const unsigned shift = static_cast<unsigned>(bit % 8);
    const unsigned byteCount = (shift + count + 7) / 8;
    uint64_t word = 0;
    for (unsigned i = 0; i < byteCount; ++i)
        word |= uint64_t{bytes[i]} << (8 * i);
    word >>= shift;
    return count == 64 ? word : word & ((uint64_t{1} << count) - 1);
}

/// Offset of a plane behind the first: they follow each other, sub-sampled ones with their true size.
size_t PlaneOffset(const CPixelLayout& layout, const CPixelMemory& memory, size_t plane)
{
    const size_t divisor = layout.chromaDivisor;
    return memory.planePitch + (plane - 1) * (memory.planePitch / (divisor * divisor));
}

double BitsToFloat(uint64_t bits, unsigned count)
{
    if (count == 32) {
        const uint32_t word = static_cast<uint32_t>(bits);
        float value;
        static_assert(sizeof(value) == sizeof(word));
        std::memcpy(&value, &word, sizeof(value));
        return static_cast<double>(value);
    }
    double value;
    static_assert(sizeof(value) == sizeof(bits));
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

int64_t SignExtended(uint64_t bits, unsigned count)
{
    const uint64_t sign = uint64_t{1} << (count - 1);
    return static_cast<int64_t>((bits ^ sign) - sign);
}

} // namespace

uint64_t ReadComponent(const CPixelFormatRow& row, const CPixelMemory& memory, size_t k, size_t x, size_t y)
{
    const CPixelLayout& layout = kLayouts[row.layout];
    const CComponentPlace& place = layout.places[k];
    const uint8_t* base = memory.buffer;
    size_t linePitch = memory.linePitch;
    if (place.plane != 0) {
        base += PlaneOffset(layout, memory, place.plane);
        linePitch /= layout.chromaDivisor;
    }
    base += (y >> place.lineShift) * linePitch;
    const size_t groupBit = (x >> place.groupShift) * place.groupBits;
    const size_t inGroup = x & ((size_t{1} << place.groupShift) - 1);
    const unsigned bits = row.components[k].bits;
    if (place.lowBits == 0)
        return ReadBits(base, groupBit + place.high[inGroup], bits);
    const unsigned lowBits = place.lowBits;
    return ReadBits(base, groupBit + place.high[inGroup], bits - lowBits) << lowBits |
           ReadBits(base, groupBit + place.low[inGroup], lowBits);
}

int64_t ToInteger(const CComponentRow& component, uint64_t bits)
{
    constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
    constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
    constexpr double kBeyond = 9223372036854775808.0; // 2 to the power 63
    switch (component.number) {
    case KxPixelNumber_Signed:
        return SignExtended(bits, component.bits);
    case KxPixelNumber_Float: {
        const double value = BitsToFloat(bits, component.bits);
        if (std::isnan(value))
            return 0;
        return value >= kBeyond ? kMax : value < -kBeyond ? kMin : static_cast<int64_t>(value);
    }
    case KxPixelNumber_Unsigned:
        break;
    }
    return bits > static_cast<uint64_t>(kMax) ? kMax : static_cast<int64_t>(bits);
}

double ToFloat(const CComponentRow& component, uint64_t bits)
{
    switch (component.number) {
    case KxPixelNumber_Signed:
        return static_cast<double>(SignExtended(bits, component.bits));
    case KxPixelNumber_Float:
        return BitsToFloat(bits, component.bits);
    case KxPixelNumber_Unsigned:
        break;
    }
    return static_cast<double>(bits);
}

} // namespace Detail
} // namespace KxApi
