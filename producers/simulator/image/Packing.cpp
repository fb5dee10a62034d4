// SPDX-License-Identifier: Apache-2.0

#include "Packing.h"

#include <algorithm>
#include <cstring>

namespace KxSim
{
namespace
{

constexpr size_t kColors = 3;

uint8_t Byte(unsigned value) { return static_cast<uint8_t>(value); }

void PackUnpacked(const CPixelFormat& format, const uint16_t* values, size_t pixels, uint8_t* line)
{
    if (format.bits > 8) {
        for (size_t i = 0; i < pixels; ++i) {
            line[2 * i] = Byte(values[i] & 0xFFU);
            line[2 * i + 1] = Byte(values[i] >> 8U);
        }
        return;
    }
    for (size_t i = 0; i < pixels; ++i)
        line[i] = Byte(values[i]);
}

void PackLsb(const CPixelFormat& format, const uint16_t* values, size_t pixels, uint8_t* line)
{
    uint64_t stream = 0;
    int filled = 0;
    for (size_t i = 0; i < pixels; ++i) {
        stream |= static_cast<uint64_t>(values[i]) << filled;
        for (filled += format.bits; filled >= 8; filled -= 8, stream >>= 8)
            *line++ = static_cast<uint8_t>(stream);
    }
}

void PackGev(const CPixelFormat& format, const uint16_t* values, size_t pixels, uint8_t* line)
{
    const unsigned low = static_cast<unsigned>(format.bits) - 8;
    const unsigned mask = (1U << low) - 1;
    for (size_t i = 0; i < pixels; i += 2, line += 3) {
        const unsigned first = values[i], second = values[i + 1];
        line[0] = Byte(first >> low);
        line[1] = Byte((first & mask) | (second & mask) << 4);
        line[2] = Byte(second >> low);
    }
}

/// Which of three values a letter stands for; -1 for an opaque alpha.
int IndexOf(char letter)
{
    switch (letter) {
    case 'R':
    case 'Y':
        return 0;
    case 'G':
    case 'U':
        return 1;
    case 'B':
    case 'V':
        return 2;
    default:
        return -1;
    }
}

void PackColours(const CPixelFormat& format, const uint16_t* values, size_t pixels, uint8_t* line)
{
    const size_t stride = std::strlen(format.order);
    for (size_t place = 0; place < stride; ++place) {
        const int index = IndexOf(format.order[place]);
        for (size_t i = 0; i < pixels; ++i)
            line[i * stride + place] =
                index < 0 ? 0xFF : Byte(values[i * kColors + static_cast<size_t>(index)]);
    }
}

void PackWord32(const CPixelFormat& format, const uint16_t* values, size_t pixels, uint8_t* line)
{
    for (size_t i = 0; i < pixels; ++i) {
        uint32_t word = 0;
        for (int place = 0; place < 3; ++place) {
            const auto index = static_cast<size_t>(IndexOf(format.order[place]));
            word |= static_cast<uint32_t>(values[i * kColors + index]) << (10 * place);
        }
        for (int byte = 0; byte < 4; ++byte)
            *line++ = Byte(word >> (8 * byte));
    }
}

/// Formats whose pixels share chroma: the mean of the group's.
void PackGroups(const CPixelFormat& format, size_t group, const uint16_t* values, size_t pixels,
                uint8_t* line)
{
    for (size_t i = 0; i < pixels; i += group, values += group * kColors) {
        size_t nextLuma = 0;
        for (const char* letter = format.order; *letter; ++letter) {
            const auto index = static_cast<size_t>(IndexOf(*letter));
            if (index == 0) {
                *line++ = Byte(values[nextLuma++ * kColors]);
                continue;
            }
            unsigned sum = 0;
            for (size_t pixel = 0; pixel < group; ++pixel)
                sum += values[pixel * kColors + index];
            *line++ = Byte((sum + static_cast<unsigned>(group) / 2) / static_cast<unsigned>(group));
        }
    }
}

} // namespace

void PackLine(const CPixelFormat& format, const uint16_t* values, size_t pixels, uint8_t* line)
{
    switch (format.packing) {
    case EPacking::Unpacked:
        return PackUnpacked(format, values, pixels, line);
    case EPacking::Lsb:
        return PackLsb(format, values, pixels, line);
    case EPacking::Gev:
        return PackGev(format, values, pixels, line);
    case EPacking::Colours:
        return PackColours(format, values, pixels, line);
    case EPacking::Word32:
        return PackWord32(format, values, pixels, line);
    case EPacking::Group422:
        return PackGroups(format, 2, values, pixels, line);
    case EPacking::Group411:
        return PackGroups(format, 4, values, pixels, line);
    case EPacking::Planar420:
        for (size_t i = 0; i < pixels; ++i)
            line[i] = Byte(values[i * kColors]);
    }
}

void PackChromaLine(const uint16_t* upper, const uint16_t* lower, size_t pixels, int component, uint8_t* line)
{
    const auto index = static_cast<size_t>(component);
    for (size_t i = 0; i < pixels; i += 2) {
        const size_t left = i * kColors + index, right = left + kColors;
        *line++ =
            Byte(static_cast<unsigned>(upper[left] + upper[right] + lower[left] + lower[right] + 2) / 4U);
    }
}

void ToLuma(uint16_t* values, size_t pixels)
{
    // In 16 bits behind the point; full range, 128 is grey.
    constexpr int kHalf = 1 << 15, kGrey = 128 << 16;
    for (size_t i = 0; i < pixels; ++i, values += kColors) {
        const int r = values[0], g = values[1], b = values[2];
        const auto clip = [](int value) { return static_cast<uint16_t>(std::clamp(value >> 16, 0, 255)); };
        values[0] = clip(19595 * r + 38470 * g + 7471 * b + kHalf);
        values[1] = clip(-11056 * r - 21712 * g + 32768 * b + kGrey + kHalf);
        values[2] = clip(32768 * r - 27440 * g - 5328 * b + kGrey + kHalf);
    }
}

} // namespace KxSim
