// SPDX-License-Identifier: Apache-2.0
// The expected values are worked out by hand from the charts' layout for one size each.
#include "ImageTestSupport.h"

#include <array>
#include <limits>

using namespace KxApi;
using namespace KxTest;

namespace
{

template <class T>
T Element(const IKxImage& image, size_t nIndex, size_t y)
{
    T value;
    std::memcpy(&value, Bytes(image) + y * image.GetImageLinePitch() + nIndex * sizeof(T), sizeof(T));
    return value;
}

/// A chart over memory that was all ones, from an allocator that ends with the image.
struct Chart
{
    Allocator allocator;
    CKxImageBuffer buffer{&allocator};

    Chart(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat)
    {
        buffer.CreateBuffer(nWidth, nHeight, ePixelFormat, KxMemoryInitialization_FF);
        buffer.CreateBuffer(nWidth, nHeight, ePixelFormat, KxMemoryInitialization_Chart);
    }
};

constexpr std::array<int, 11> kSteps = {255, 234, 212, 190, 167, 143, 120, 94, 67, 37, 0};

struct MonoCase
{
    EKxPixelFormatNamingConvention_t ePixelFormat;
    int nShift;
    int nMax;
};

class MonoChartTest : public testing::TestWithParam<MonoCase>
{};

/// 48 by 20: steps of 4 pixels from 2 to 45, bands of 4 lines from line 2 on.
TEST_P(MonoChartTest, HasStepsAndRamps)
{
    const MonoCase& expected = GetParam();
    const Chart chart(48, 20, expected.ePixelFormat);
    const auto at = [&](size_t x, size_t y) -> int {
        return expected.ePixelFormat == KxPixelFormat_Mono8 ? Element<uint8_t>(chart.buffer, x, y)
                                                            : Element<uint16_t>(chart.buffer, x, y);
    };
    const int nBackground = 131 << expected.nShift;
    for (size_t y = 0; y < 20; ++y) {
        for (const size_t x : {0u, 1u, 46u, 47u})
            EXPECT_EQ(at(x, y), nBackground) << x << ' ' << y;
        for (size_t i = 0; i < 44; ++i) {
            int nValue = nBackground;
            if (y >= 2 && y < 18) {
                const int nRamp = static_cast<int>(i) * expected.nMax / 43;
                const int nFalling = (43 - static_cast<int>(i)) * expected.nMax / 43;
                const int bands[] = {kSteps[i / 4] << expected.nShift, nRamp, nFalling,
                                     kSteps[10 - i / 4] << expected.nShift};
                nValue = bands[(y - 2) / 4];
            }
            ASSERT_EQ(at(2 + i, y), nValue) << i << ' ' << y;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Depths, MonoChartTest,
                         testing::Values(MonoCase{KxPixelFormat_Mono8, 0, 255},
                                         MonoCase{KxPixelFormat_Mono10, 2, 1023},
                                         MonoCase{KxPixelFormat_Mono12, 4, 4095},
                                         MonoCase{KxPixelFormat_Mono14, 6, 16383},
                                         MonoCase{KxPixelFormat_Mono16, 8, 65535}));

TEST(ImageChart, SmallMonoChartIsAllBackground)
{
    for (size_t nWidth = 1; nWidth < 12; ++nWidth) {
        const Chart chart(nWidth, 10, KxPixelFormat_Mono8);
        for (size_t x = 0; x < nWidth; ++x)
            for (size_t y = 0; y < 10; ++y)
                ASSERT_EQ(Element<uint8_t>(chart.buffer, x, y), 131) << nWidth;
    }
    EXPECT_EQ(Element<uint8_t>(Chart(12, 10, KxPixelFormat_Mono8).buffer, 0, 1), 255);
    EXPECT_EQ(Element<uint8_t>(Chart(12, 10, KxPixelFormat_Mono8).buffer, 11, 1), 131);
}

/// 154 by 90: gaps of 2, patches of 22 by 18; columns begin at 6 and every 24, rows at 6 and every 20.
template <class T>
void CheckColorChart(EKxPixelFormatNamingConvention_t ePixelFormat, size_t nComponents, int nShift)
{
    const Chart chart(154, 90, ePixelFormat);
    const auto pixel = [&](size_t x, size_t y) {
        std::vector<int> values;
        for (size_t k = 0; k < nComponents; ++k)
            values.push_back(Element<T>(chart.buffer, x * nComponents + k, y));
        return values;
    };
    const auto expectBGR = [&](size_t x, size_t y, int b, int g, int r) {
        std::vector<int> expected = {b << nShift, g << nShift, r << nShift};
        if (nComponents == 4)
            expected.push_back(std::numeric_limits<T>::max()); // what was there before
        EXPECT_EQ(pixel(x, y), expected) << x << ' ' << y;
    };
    const std::vector<int> black(nComponents, 0);
    expectBGR(6, 6, 68, 82, 115);
    expectBGR(27, 23, 68, 82, 115);
    expectBGR(6 + 5 * 24, 6, 170, 189, 103);
    expectBGR(6 + 24 + 11, 6 + 20 + 9, 166, 91, 80);
    expectBGR(6 + 3 * 24, 6 + 2 * 20 + 17, 31, 199, 231);
    expectBGR(6, 6 + 3 * 20, 242, 243, 243);
    expectBGR(6 + 5 * 24 + 21, 6 + 3 * 20 + 17, 52, 52, 52);
    const std::pair<size_t, size_t> blacks[] = {{0, 0},  {153, 0}, {5, 6},    {28, 6},   {29, 6},
                                                {6, 5},  {6, 24},  {6, 25},   {149, 10}, {153, 10},
                                                {6, 84}, {6, 86},  {153, 89}, {0, 89}};
    for (const auto& [x, y] : blacks)
        EXPECT_EQ(pixel(x, y), black) << x << ' ' << y;
}

TEST(ImageChart, ColourChartHasItsPatches)
{
    CheckColorChart<uint8_t>(KxPixelFormat_BGR8, 3, 0);
    CheckColorChart<uint8_t>(KxPixelFormat_BGRa8, 4, 0);
    CheckColorChart<uint16_t>(KxPixelFormat_BGR10, 3, 2);
    CheckColorChart<uint16_t>(KxPixelFormat_BGR12, 3, 4);
    CheckColorChart<uint16_t>(KxPixelFormat_BGR14, 3, 6);
    CheckColorChart<uint16_t>(KxPixelFormat_BGR16, 3, 8);
    CheckColorChart<uint16_t>(KxPixelFormat_BGRa10, 4, 2);
    CheckColorChart<uint16_t>(KxPixelFormat_BGRa16, 4, 8);
}

TEST(ImageChart, ChartStaysInsideTheMemoryWhateverTheSize)
{
    // The allocations have the images' exact size, which the address sanitizer watches.
    for (const auto ePixelFormat : {KxPixelFormat_RGB8, KxPixelFormat_RGBa8, KxPixelFormat_BGR8,
                                    KxPixelFormat_BGRa12, KxPixelFormat_Mono10, KxPixelFormat_Mono8})
        for (const size_t nWidth : {1u, 2u, 7u, 13u, 24u, 77u, 100u, 155u})
            for (const size_t nHeight : {1u, 5u, 44u, 47u}) {
                const Chart chart(nWidth, nHeight, ePixelFormat);
                EXPECT_EQ(chart.allocator.sizes.front(), chart.buffer.GetImagePlanePitch());
            }
}

TEST(ImageChart, RgbChartIsDrawnWithWideElements)
{
    const Chart chart(154, 90, KxPixelFormat_RGB8);
    // 3 elements a pixel, 2 bytes an element: the first patch begins at byte 36.
    const uint8_t expected[] = {68, 0, 82, 0, 115, 0, 68, 0};
    EXPECT_EQ(std::memcmp(Bytes(chart.buffer) + 6 * chart.buffer.GetImageLinePitch() + 36, expected, 8), 0);
    EXPECT_EQ(Element<uint8_t>(chart.buffer, 35, 6), 0);
}

} // namespace
