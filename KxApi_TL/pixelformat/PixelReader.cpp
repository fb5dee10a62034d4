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
