// SPDX-License-Identifier: Apache-2.0
// What is made of images from behind polarisers, beside the optics' formulas in double precision.

#include "ConverterTestSupport.h"

#include <KxSDKCommon/ColorMap.h>

#include <cmath>

namespace
{

using namespace KxApi;
using namespace KxTest;

constexpr double kPi = 3.14159265358979323846;

/// Places of 0, 45, 90 and 135 degrees in the square: x, y.
constexpr int kPlaces[4][2] = {{1, 1}, {1, 0}, {0, 0}, {0, 1}};

/// The value of a pixel behind a polariser: its own, or the mean of the neighbours that have one.
double Bilinear(View& view, size_t x, size_t y, size_t polarizer)
{
    double sum = 0;
    int count = 0;
    for (int j = -1; j <= 1; ++j) {
        for (int i = -1; i <= 1; ++i) {
            const auto inside = [](size_t at, int step, size_t size) {
                const int place = static_cast<int>(at) + step, last = static_cast<int>(size) - 1;
                return static_cast<size_t>(place < 0 ? -place : place > last ? 2 * last - place : place);
            };
            const size_t px = inside(x, i, view.nWidth), py = inside(y, j, view.nHeight);
            const bool isThere = static_cast<int>(px % 2) == kPlaces[polarizer][0] &&
                                 static_cast<int>(py % 2) == kPlaces[polarizer][1];
            // Neighbours count only in the directions in which the pixel itself has another polariser.
            const bool isNeeded = (i == 0) == (static_cast<int>(x % 2) == kPlaces[polarizer][0]) &&
                                  (j == 0) == (static_cast<int>(y % 2) == kPlaces[polarizer][1]);
            if (isThere && isNeeded) {
                sum += static_cast<double>(view.GetIKxPixelComponentValue(px, py)->GetValue(0));
                ++count;
            }
        }
    }
    return sum / count;
}

double OfCell(View& view, size_t x, size_t y, size_t polarizer)
{
    const size_t px = (x & ~size_t{1}) + static_cast<size_t>(kPlaces[polarizer][0]);
    const size_t py = (y & ~size_t{1}) + static_cast<size_t>(kPlaces[polarizer][1]);
    return static_cast<double>(view.GetIKxPixelComponentValue(px, py)->GetValue(0));
}

struct Light
{
    double i[4], s0, s1, s2;

    Light(View& view, size_t x, size_t y, bool ofCell)
    {
        for (size_t k = 0; k < 4; ++k)
            i[k] = ofCell ? OfCell(view, x, y, k) : Bilinear(view, x, y, k);
        s0 = (i[0] + i[1] + i[2] + i[3]) / 2;
        s1 = i[0] - i[2];
        s2 = i[1] - i[3];
    }
    double Degree() const { return s0 == 0 ? 0 : std::min(1.0, std::hypot(s1, s2) / s0); }
    /// 0 to 1 for 0 to 180 degrees
    double Angle() const
    {
        const double turns = std::atan2(s2, s1) / (2 * kPi);
        return turns < 0 ? turns + 1 : turns;
    }
    double Behind(double degrees) const
    {
        const double arc = 2 * degrees * kPi / 180;
        return (s0 + s1 * std::cos(arc) + s2 * std::sin(arc)) / 2;
    }
};

using Method = EKxPolarizationImageTransformationMethod_t;

TEST(ConverterPolarization, GreyMethodsFollowTheirFormulas)
{
    struct Case
    {
        Method method;
        double (*value)(const Light& light); ///< in values of the source, or 0 to 65536
        bool isWide;
    };
    const Case cases[] = {
        {KxPolarizationImageTransformationMethod_Intensity, [](const Light& l) { return l.s0 / 2; }, false},
        {KxPolarizationImageTransformationMethod_Angle0, [](const Light& l) { return l.i[0]; }, false},
        {KxPolarizationImageTransformationMethod_Angle45, [](const Light& l) { return l.i[1]; }, false},
        {KxPolarizationImageTransformationMethod_Angle90, [](const Light& l) { return l.i[2]; }, false},
        {KxPolarizationImageTransformationMethod_Angle135, [](const Light& l) { return l.i[3]; }, false},
        {KxPolarizationImageTransformationMethod_DoLP, [](const Light& l) { return 65535 * l.Degree(); },
         true},
        {KxPolarizationImageTransformationMethod_AoLP, [](const Light& l) { return 65536 * l.Angle(); },
         true},
        {KxPolarizationImageTransformationMethod_SpecifiedAngle, [](const Light& l) { return l.Behind(30); },
         false},
    };
    for (const auto format :
         {KxPixelFormat_PolarizedMono8, KxPixelFormat_PolarizedMono12p, KxPixelFormat_PolarizedMono10Packed})
    {
        const unsigned bits = static_cast<unsigned>(InfoOf(format).GetEffectiveBits());
        View source = RandomImage(format, 70, 9);
        for (const Case& one : cases) {
            for (const bool bilinear : {true, false}) {
                SCOPED_TRACE(NameOf(format) + ", method " + std::to_string(one.method));
                TestConverter converter(KxPixelFormat_Mono16);
                converter->SetBitExpansionMode(KxBitExpansionMode_Off);
                converter->SetPolarizationImageTransformationMethod(one.method);
                converter->SetPolarizationSpecifiedAngle(30);
                converter->SetPolarizationSpecifiedAngleInterpolationMethod(
                    bilinear ? KxPolarizationInterpolationMethod_Bilinear
                             : KxPolarizationInterpolationMethod_Off);
                const bool ofCell =
                    one.method == KxPolarizationImageTransformationMethod_SpecifiedAngle && !bilinear;
                IKxImage& target = converter.Convert(source);
                for (size_t y = 0; y < (ofCell ? 8 : 9); ++y) {
                    for (size_t x = 0; x < 70; ++x) {
                        const double max = one.isWide ? 65535 : std::ldexp(1.0, static_cast<int>(bits)) - 1;
                        const double expected =
                            std::clamp(one.value(Light(source, x, y, ofCell)), 0.0, 65536.0);
                        double difference = std::abs(
                            static_cast<double>(PixelAt(target, x, y).grey) -
                            std::min(expected, one.method == KxPolarizationImageTransformationMethod_AoLP
                                                   ? 65536
                                                   : max));
                        if (one.method == KxPolarizationImageTransformationMethod_AoLP)
                            difference = std::min(difference, 65536 - difference); // the circle closes
                        ASSERT_LE(difference, one.isWide ? 0.8 : 0.501)
                            << x << ", " << y << ": " << PixelAt(target, x, y).grey << " " << expected;
                    }
                }
            }
        }
    }
}

TEST(ConverterPolarization, ColorShowsAngleAsHueAndDegreeAsStrength)
{
    View source = RandomImage(KxPixelFormat_PolarizedMono8, 66, 6);
    for (const bool dark : {false, true}) {
        TestConverter converter(KxPixelFormat_RGB8);
        converter->SetPolarizationImageTransformationMethod(KxPolarizationImageTransformationMethod_ADOLP);
        converter->SetADOLPDarkMode(dark);
        converter->SetADOLPColorInversion(true);
        converter->SetADOLPColorPhase(40);
        unsigned int circle[256];
        SetColorMap(circle, KxColorMapType_PseudoColorBGRB, true, 40);
        IKxImage& target = converter.Convert(source);
        for (size_t i = 0; i < 66 * 6; ++i) {
            const Light light(source, i % 66, i / 66, false);
            const double place = 256 * light.Angle();
            if (std::abs(place - std::floor(place) - 0.5) < 0.01)
                continue; // between two colours
            const unsigned color = circle[static_cast<size_t>(std::lround(place)) % 256];
            for (size_t k = 0; k < 3; ++k) {
                const double full = color >> (16 - 8 * k) & 0xFF;
                const double expected = dark ? full * light.Degree() : 255 - (255 - full) * light.Degree();
                ASSERT_NEAR(static_cast<double>(PixelAt(target, i % 66, i / 66).color[k]), expected, 0.51);
            }
        }
    }
}

TEST(ConverterPolarization, LightOfOneAngleIsFound)
{
    // light fully polarised at 20 degrees behind the four polarisers, red twice as strong as the other
    // colours
    const auto behind = [](double degrees) {
        const double cosine = std::cos((20 - degrees) * kPi / 180);
        return 1000 * cosine * cosine;
    };
    const auto value = [&](size_t x, size_t y, bool colored) {
        constexpr double kAngles[2][2] = {{90, 45}, {135, 0}};
        const bool isRed = x / 2 % 2 == 0 && y / 2 % 2 == 0;
        return static_cast<unsigned>(std::lround(behind(kAngles[y % 2][x % 2]) * (colored && isRed ? 2 : 1)));
    };
    for (const bool colored : {false, true}) {
        View source = ImageOf(colored ? KxPixelFormat_PolarizedBayerRG12 : KxPixelFormat_PolarizedMono12, 18,
                              10, [&](size_t x, size_t y) { return value(x, y, colored); });
        TestConverter converter(KxPixelFormat_Mono16);
        const auto center = [&](Method method, EKxPixelFormatNamingConvention_t destination) {
            converter->SetDestinationPixelFormat(destination);
            converter->SetPolarizationImageTransformationMethod(method);
            return PixelAt(converter.Convert(source), 9, 5);
        };
        EXPECT_NEAR(static_cast<double>(
                        center(KxPolarizationImageTransformationMethod_DoLP, KxPixelFormat_Mono16).grey),
                    65535, 70);
        EXPECT_NEAR(static_cast<double>(
                        center(KxPolarizationImageTransformationMethod_AoLP, KxPixelFormat_Mono16).grey),
                    20 * 65536.0 / 180, 30);
        converter->SetPolarizationSpecifiedAngle(110);
        EXPECT_LE(
            center(KxPolarizationImageTransformationMethod_SpecifiedAngle, KxPixelFormat_RGB12).color[1], 1)
            << "crossed";
        converter->SetPolarizationSpecifiedAngle(20);
        const Pixel along =
            center(KxPolarizationImageTransformationMethod_SpecifiedAngle, KxPixelFormat_RGB12);
        EXPECT_NEAR(static_cast<double>(along.color[0]), colored ? 2000 : 1000, 2);
        EXPECT_NEAR(static_cast<double>(along.color[2]), 1000, 2);
        const Pixel intensity =
            center(KxPolarizationImageTransformationMethod_Intensity, KxPixelFormat_RGB12);
        EXPECT_NEAR(static_cast<double>(intensity.color[0]), colored ? 1000 : 500, 2);
        EXPECT_NEAR(
            static_cast<double>(
                center(KxPolarizationImageTransformationMethod_Angle45, KxPixelFormat_RGB12).color[1]),
            behind(45), 1);
    }
}

TEST(ConverterPolarization, ViewsSortTheMosaic)
{
    View source = ImageOf(KxPixelFormat_PolarizedMono8, 7, 5,
                          [](size_t x, size_t y) { return static_cast<unsigned>(10 * y + x); });
    TestConverter converter(KxPixelFormat_Mono8);
    converter->SetPolarizationImageTransformationMethod(KxPolarizationImageTransformationMethod_FourViews);
    EXPECT_EQ(PixelBytes(converter.Convert(source)),
              (std::vector<uint8_t>{0,  2,  4,  6,  1,  3,  5,  20, 22, 24, 26, 21, 23, 25, 40, 42, 44, 46,
                                    41, 43, 45, 10, 12, 14, 16, 11, 13, 15, 30, 32, 34, 36, 31, 33, 35}));
}

TEST(ConverterPolarization, AutomaticDestinationsHaveColorWhereTheMethodHas)
{
    const bool kColorOfBayer[] = {false, true, true, true, false, false, true, true, true, true, false};
    for (int method = 0; method <= 10; ++method) {
        for (const auto format : {KxPixelFormat_PolarizedMono8, KxPixelFormat_PolarizedBayerRG8}) {
            TestConverter converter(KxPixelFormat_RGB8);
            converter->SetAutoDestination(true);
            converter->SetPolarizationImageTransformationMethod(static_cast<Method>(method));
            View source = RandomImage(format, 8, 8);
            const bool isColor =
                method == 6 || (kColorOfBayer[method] && format == KxPixelFormat_PolarizedBayerRG8);
            EXPECT_EQ(converter.Convert(source).GetImagePixelFormat(),
                      isColor ? KxPixelFormat_RGB8 : KxPixelFormat_Mono8)
                << method;
        }
    }
}

} // namespace
