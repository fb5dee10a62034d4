// SPDX-License-Identifier: Apache-2.0
#include "DestinationFormats.h"

#include <algorithm>
#include <iterator>

namespace KxApi
{
namespace Detail
{
namespace
{

using L = EDestinationLayout;

// clang-format off
constexpr CDestinationFormat kDestinationFormats[] = {
    {KxPixelFormat_Mono8,    L::Mono,    8},
    {KxPixelFormat_Mono10,   L::Mono,    10},
    {KxPixelFormat_Mono12,   L::Mono,    12},
    {KxPixelFormat_Mono14,   L::Mono,    14},
    {KxPixelFormat_Mono16,   L::Mono,    16},
    {KxPixelFormat_RGB8,     L::Rgb,     8},
    {KxPixelFormat_BGR8,     L::Bgr,     8},
    {KxPixelFormat_RGBa8,    L::Rgba,    8},
    {KxPixelFormat_BGRa8,    L::Bgra,    8},
    {KxPixelFormat_RGB10p32, L::RgbWord, 10},
    {KxPixelFormat_BGR10p32, L::BgrWord, 10},
    {KxPixelFormat_RGB10,    L::Rgb,     10},
    {KxPixelFormat_BGR10,    L::Bgr,     10},
    {KxPixelFormat_RGB12,    L::Rgb,     12},
    {KxPixelFormat_BGR12,    L::Bgr,     12},
    {KxPixelFormat_RGB16,    L::Rgb,     16},
    {KxPixelFormat_BGR16,    L::Bgr,     16},
};
// clang-format on

} // namespace

const CDestinationFormat* FindDestinationFormat(EKxPixelFormatNamingConvention_t pixelFormat)
{
    const auto found =
        std::find_if(std::begin(kDestinationFormats), std::end(kDestinationFormats),
                     [pixelFormat](const auto& row) { return row.pixelFormat == pixelFormat; });
    return found == std::end(kDestinationFormats) ? nullptr : found;
}

const CDestinationFormat* FindGreyDestination(unsigned nBits)
{
    const auto found =
        std::find_if(std::begin(kDestinationFormats), std::end(kDestinationFormats),
                     [nBits](const auto& row) { return !row.HasColor() && row.nBits == nBits; });
    return found == std::end(kDestinationFormats) ? nullptr : found;
}

} // namespace Detail
} // namespace KxApi
