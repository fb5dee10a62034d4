// SPDX-License-Identifier: Apache-2.0
// Bayer methods beside OpenCV's, beside their formulas, and on images whose result is plain.

#include "ConverterTestSupport.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace
{

using namespace KxApi;
using namespace KxTest;

constexpr EKxPixelFormatNamingConvention_t kPatterns8[] = {KxPixelFormat_BayerRG8, KxPixelFormat_BayerGR8,
                                                           KxPixelFormat_BayerGB8, KxPixelFormat_BayerBG8};
constexpr EKxPixelFormatNamingConvention_t kPatterns16[] = {KxPixelFormat_BayerRG16, KxPixelFormat_BayerGR16,
                                                            KxPixelFormat_BayerGB16, KxPixelFormat_BayerBG16};

/// OpenCV's result, whose names tell the colours of the second line's second pixel onwards.
cv::Mat ByOpenCV(View& source, size_t pattern, bool edgeAware)
{
    constexpr int kCodes[] = {cv::COLOR_BayerBG2BGR, cv::COLOR_BayerGB2BGR, cv::COLOR_BayerGR2BGR,
                              cv::COLOR_BayerRG2BGR};
    constexpr int kEdgeAwareCodes[] = {cv::COLOR_BayerBG2BGR_EA, cv::COLOR_BayerGB2BGR_EA,
                                       cv::COLOR_BayerGR2BGR_EA, cv::COLOR_BayerRG2BGR_EA};
    const int type = InfoOf(source.ePixelFormat).GetEffectiveBits() == 8 ? CV_8UC1 : CV_16UC1;
    const cv::Mat mosaic(static_cast<int>(source.nHeight), static_cast<int>(source.nWidth), type,
                         source.bytes.data(), source.nLinePitch);
    cv::Mat result;
    cv::demosaicing(mosaic, result, edgeAware ? kEdgeAwareCodes[pattern] : kCodes[pattern]);
    return result;
}

int ValueOf(const cv::Mat& image, size_t x, size_t y, int channel)
{
    const int row = static_cast<int>(y), column = static_cast<int>(x);
    return image.depth() == CV_8U ? image.at<cv::Vec3b>(row, column)[channel]
                                  : image.at<cv::Vec3w>(row, column)[channel];
}

TEST(ConverterBayer, BilinearMethodsEqualOpenCVInsideTheBorder)
{
    for (const bool edgeAware : {false, true}) {
        for (size_t pattern = 0; pattern < 4; ++pattern) {
            for (const auto format : {kPatterns8[pattern], kPatterns16[pattern]}) {
                SCOPED_TRACE(NameOf(format) + (edgeAware ? " edge-aware" : ""));
                const bool narrow = format == kPatterns8[pattern];
                TestConverter converter(narrow ? KxPixelFormat_BGR8 : KxPixelFormat_BGR16);
                converter->SetBayerInterpolationMethod(edgeAware ? KxBayerInterpolationMethod_Bilinear3
                                                                 : KxBayerInterpolationMethod_Bilinear);
                View source = RandomImage(format, 131, 22);
                IKxImage& target = converter.Convert(source);
                const cv::Mat expected = ByOpenCV(source, pattern, edgeAware);
                for (size_t y = 1; y + 1 < source.nHeight; ++y) {
                    for (size_t x = 1; x + 1 < source.nWidth; ++x) {
                        for (int k = 0; k < 3; ++k)
                            ASSERT_EQ(PixelAt(target, x, y).color[static_cast<size_t>(2 - k)],
                                      ValueOf(expected, x, y, k))
                                << x << ", " << y;
                    }
                }
            }
        }
    }
}

/// A mosaic seen as its colours: a value at a place that may lie outside, mirrored at the border, and the
/// colour there: 0 red, 1 green, 2 blue.
struct Mosaic
{
    View& view;
    int redX, redY;

    static int Inside(int i, size_t size)
    {
        const int last = static_cast<int>(size) - 1;
        return i < 0 ? -i : i > last ? 2 * last - i : i;
    }
    int Value(int x, int y) const
    {
        const auto column = static_cast<size_t>(Inside(x, view.nWidth));
        return view.bytes[static_cast<size_t>(Inside(y, view.nHeight)) * view.nLinePitch + column];
    }
    int ColorOf(int x, int y) const
    {
        const bool isRedX = (x & 1) == redX, isRedY = (y & 1) == redY;
        return isRedX == isRedY ? (isRedX ? 0 : 2) : 1;
    }
    /// Sum over a kernel of 5 by 5.
    int Sum(int x, int y, const int (&kernel)[5][5]) const
    {
        int sum = 0;
        for (int j = 0; j < 5; ++j) {
            for (int i = 0; i < 5; ++i)
                sum += kernel[j][i] != 0 ? kernel[j][i] * Value(x + i - 2, y + j - 2) : 0;
        }
        return sum;
    }
};

/// The sixteenths of the neighbours that make up a colour which the pixel hasn't.
constexpr int kGreenAtChroma[5][5] = {
    {0, 0, -2, 0, 0}, {0, 0, 4, 0, 0}, {-2, 4, 8, 4, -2}, {0, 0, 4, 0, 0}, {0, 0, -2, 0, 0}};
constexpr int kBeside[5][5] = {
    {0, 0, 1, 0, 0}, {0, -2, 0, -2, 0}, {-2, 8, 10, 8, -2}, {0, -2, 0, -2, 0}, {0, 0, 1, 0, 0}};
constexpr int kOver[5][5] = {
    {0, 0, -2, 0, 0}, {0, -2, 8, -2, 0}, {1, 0, 10, 0, 1}, {0, -2, 8, -2, 0}, {0, 0, -2, 0, 0}};
constexpr int kAcross[5][5] = {
    {0, 0, -3, 0, 0}, {0, 4, 0, 4, 0}, {-3, 0, 12, 0, -3}, {0, 4, 0, 4, 0}, {0, 0, -3, 0, 0}};
constexpr int kSmooth[5][5] = {
    {0, 0, 0, 0, 0}, {0, 1, 2, 1, 0}, {0, 2, 4, 2, 0}, {0, 1, 2, 1, 0}, {0, 0, 0, 0, 0}};

int Clamp8(int value) { return std::clamp(value, 0, 255); }

int Bicubic(const Mosaic& mosaic, int x, int y, int color)
{
    const int own = mosaic.ColorOf(x, y);
    if (own == color)
        return mosaic.Value(x, y);
    if (color == 1)
        return Clamp8((mosaic.Sum(x, y, kGreenAtChroma) + 8) >> 4);
    const bool isBeside = own == 1 && mosaic.ColorOf(x + 1, y) == color;
    return Clamp8((mosaic.Sum(x, y, own != 1 ? kAcross : isBeside ? kBeside : kOver) + 8) >> 4);
}

int Nearest(const Mosaic& mosaic, int x, int y, int color)
{
    if (color == 1) // the green of the same line
        return mosaic.ColorOf(x, y) == 1 ? mosaic.Value(x, y) : mosaic.Value(x + 1, y);
    for (int i = 0; i < 4; ++i) {
        if (mosaic.ColorOf(x + i % 2, y + i / 2) == color)
            return mosaic.Value(x + i % 2, y + i / 2);
    }
    return -1;
}

int Cell(const Mosaic& mosaic, int x, int y, int color)
{
    x &= ~1;
    y &= ~1;
    int sum = 0;
    for (int i = 0; i < 4; ++i) {
        if (mosaic.ColorOf(x + i % 2, y + i / 2) == color)
            sum += mosaic.Value(x + i % 2, y + i / 2);
    }
    return color == 1 ? (sum + 1) >> 1 : sum;
}

int GreenBilinear(const Mosaic& mosaic, int x, int y)
{
    x = Mosaic::Inside(x, mosaic.view.nWidth);
    y = Mosaic::Inside(y, mosaic.view.nHeight);
    if (mosaic.ColorOf(x, y) == 1)
        return mosaic.Value(x, y);
    return (mosaic.Value(x - 1, y) + mosaic.Value(x + 1, y) + mosaic.Value(x, y - 1) +
            mosaic.Value(x, y + 1) + 2) >>
           2;
}

int Difference(const Mosaic& mosaic, int x, int y, int color)
{
    const int own = mosaic.ColorOf(x, y), green = GreenBilinear(mosaic, x, y);
    if (own == color)
        return mosaic.Value(x, y);
    if (color == 1)
        return green;
    int sum = 0, count = 0;
    for (int j = -1; j <= 1; ++j) {
        for (int i = -1; i <= 1; ++i) {
            if (mosaic.ColorOf(x + i, y + j) != color)
                continue;
            sum += mosaic.Value(x + i, y + j) - GreenBilinear(mosaic, x + i, y + j);
            ++count;
        }
    }
    return Clamp8(green + static_cast<int>(std::floor(double{1} * sum / count + 0.5)));
}

TEST(ConverterBayer, MethodsFollowTheirFormulas)
{
    struct Method
    {
        EKxBayerInterpolationMethod_t method;
        int (*value)(const Mosaic&, int x, int y, int color);
    };
    constexpr int kRed[4][2] = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};
    for (const Method& method : {Method{KxBayerInterpolationMethod_NearestNeighbor, Nearest},
                                 Method{KxBayerInterpolationMethod_NearestNeighbor2, Cell},
                                 Method{KxBayerInterpolationMethod_Bicubic, Bicubic},
                                 Method{KxBayerInterpolationMethod_Bilinear2, Difference}})
    {
        for (size_t pattern = 0; pattern < 4; ++pattern) {
            SCOPED_TRACE(NameOf(kPatterns8[pattern]) + ", method " + std::to_string(method.method));
            TestConverter converter(KxPixelFormat_RGB8);
            converter->SetBayerInterpolationMethod(method.method);
            View source = RandomImage(kPatterns8[pattern], 77, 9);
            const Mosaic mosaic{source, kRed[pattern][0], kRed[pattern][1]};
            IKxImage& target = converter.Convert(source);
            for (int y = 0; y < 9; ++y) {
                for (int x = 0; x < 77; ++x) {
                    const Pixel pixel = PixelAt(target, static_cast<size_t>(x), static_cast<size_t>(y));
                    for (int color = 0; color < 3; ++color)
                        ASSERT_EQ(pixel.color[static_cast<size_t>(color)], method.value(mosaic, x, y, color))
                            << "color " << color << " at " << x << ", " << y;
                }
            }
        }
    }
}

TEST(ConverterBayer, MonoIsTheSmoothedMosaicAndOffTheMosaic)
{
    View source = RandomImage(KxPixelFormat_BayerGB8, 70, 6);
    const Mosaic mosaic{source, 0, 1};
    for (const auto destination : {KxPixelFormat_Mono8, KxPixelFormat_BGR8}) {
        TestConverter converter(destination);
        for (const bool mono : {true, false}) {
            converter->SetBayerInterpolationMethod(mono ? KxBayerInterpolationMethod_Mono
                                                        : KxBayerInterpolationMethod_Off);
            IKxImage& target = converter.Convert(source);
            for (int y = 0; y < 6; ++y) {
                for (int x = 0; x < 70; ++x) {
                    const int expected = mono ? (mosaic.Sum(x, y, kSmooth) + 8) >> 4 : mosaic.Value(x, y);
                    const Pixel pixel = PixelAt(target, static_cast<size_t>(x), static_cast<size_t>(y));
                    ASSERT_EQ(pixel.grey >= 0 ? pixel.grey : pixel.color[2], expected) << x << ", " << y;
                }
            }
        }
    }
}

TEST(ConverterBayer, ThinImagesOfOneColorKeepIt)
{
    // 600, 400 and 200 of 1023 in every method, at every depth and size that has all three colours
    constexpr unsigned kColors[] = {600, 400, 200};
    for (int method = 1; method < 8; ++method) {
        if (method == KxBayerInterpolationMethod_Mono)
            continue;
        for (const size_t width : {size_t{2}, size_t{3}, size_t{5}, size_t{64}}) {
            for (const size_t height : {size_t{2}, size_t{3}, size_t{7}}) {
                View source = ImageOf(KxPixelFormat_BayerGR10, width, height, [&](size_t x, size_t y) {
                    return kColors[x % 2 == 1 && y % 2 == 0 ? 0 : x % 2 == 0 && y % 2 == 1 ? 2 : 1];
                });
                TestConverter converter(KxPixelFormat_RGB10);
                converter->SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(method));
                IKxImage& target = converter.Convert(source);
                for (size_t i = 0; i < width * height; ++i) {
                    const Pixel pixel = PixelAt(target, i % width, i / width);
                    ASSERT_EQ(pixel.color, (std::array<int64_t, 4>{600, 400, 200, -1}))
                        << "method " << method << ", " << width << " by " << height << " at " << i;
                }
            }
        }
    }
}

TEST(ConverterBayer, AWindowAtAnOddPlaceKeepsItsColors)
{
    CKxImageBuffer buffer(nullptr);
    buffer.CreateBuffer(40, 20, KxPixelFormat_BayerRG8, KxMemoryInitialization_Zero);
    auto* const bytes = static_cast<uint8_t*>(buffer.GetImageBuffer());
    for (size_t y = 0; y < 20; ++y) {
        for (size_t x = 0; x < 40; ++x)
            bytes[y * buffer.GetImageLinePitch() + x] =
                static_cast<uint8_t>(x % 2 == 0 && y % 2 == 0 ? 200 : 0);
    }
    TestConverter converter(KxPixelFormat_RGB8);
    converter->Convert(buffer.GetROIImage(3, 5, 8, 8), &converter.target);
    for (size_t i = 0; i < 64; ++i)
        ASSERT_EQ(PixelAt(converter.target, i % 8, i / 8).color, (std::array<int64_t, 4>{200, 0, 0, -1}));
}

TEST(ConverterBayer, MethodsThatWeighKeepAllBitsToTheEnd)
{
    for (const int method : {4, 5, 7}) {
        TestConverter narrow(KxPixelFormat_BGR8), wide(KxPixelFormat_BGR12);
        for (TestConverter* const converter : {&narrow, &wide})
            (*converter)->SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(method));
        View source = RandomImage(KxPixelFormat_BayerRG12, 61, 21);
        IKxImage& cut = narrow.Convert(source);
        IKxImage& whole = wide.Convert(source);
        for (size_t i = 0; i < size_t{61} * 21; ++i) {
            const Pixel expected = PixelAt(whole, i % 61, i / 61), pixel = PixelAt(cut, i % 61, i / 61);
            for (size_t k = 0; k < 3; ++k)
                ASSERT_EQ(pixel.color[k], expected.color[k] >> 4) << "method " << method << " at " << i;
        }
    }
}

} // namespace
