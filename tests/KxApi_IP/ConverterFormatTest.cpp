// SPDX-License-Identifier: Apache-2.0
// Every source format to every destination format, against values worked out pixel by pixel.

#include "ConverterTestSupport.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace
{

using namespace KxApi;
using namespace KxTest;

bool Contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

bool IsReal(const std::string& name) { return Contains(name, "32f") || Contains(name, "64f"); }

/// The formats that are left out: whole numbers of more than 16 bits, and mosaics that no Bayer method is
/// for.
bool IsForeign(const std::string& name)
{
    for (const char* part : {"SCF1", "BiColor", "Mono32", "Data32", "Data64"}) {
        if (Contains(name, part))
            return !IsReal(name);
    }
    return false;
}

size_t StepX(const std::string& name)
{
    return Contains(name, "411") ? 4 : Contains(name, "422") || Contains(name, "420") ? 2 : 1;
}

/// A value as a string of bits that is repeated to its new length, or cut.
int64_t WithDepth(int64_t value, unsigned from, unsigned to)
{
    int64_t result = 0;
    for (unsigned i = 0; i < to; ++i)
        result = result << 1 | (value >> (from - 1 - i % from) & 1);
    return result;
}

struct Component
{
    unsigned what;
    unsigned bits;
    int64_t value;
};

/// The components of a pixel, cut to eight bits when the destination has no more and they are only moved.
std::vector<Component> ComponentsAt(IKxImage& image, size_t x, size_t y, bool narrow)
{
    const IKxPixelComponent& values = *image.GetIKxPixelComponentValue(x, y);
    std::vector<Component> components;
    narrow = narrow && values.GetType(0) >> 24 != KxPixelComponent_Y &&
             values.GetType(1 % values.GetComponentCount()) >> 24 != KxPixelComponent_Y;
    // Of points in space the last coordinate is shown.
    const bool isPoint = values.GetType(0) >> 24 >= KxPixelComponent_CoordA;
    const size_t count = isPoint ? 1 : values.GetComponentCount();
    for (size_t i = 0; i < count; ++i) {
        const size_t k = isPoint ? values.GetComponentCount() - 1 : i;
        const IKxPixelComponentInfo& info = *GetIKxPixelComponentInfo(values.GetType(k));
        Component c{values.GetType(k) >> 24, static_cast<unsigned>(info.GetEffectiveBits()),
                    values.GetValue(k)};
        if (info.GetNumber() == KxPixelNumber_Signed)
            c.value += int64_t{1} << (c.bits - 1);
        if ((narrow && c.bits > 8) || count > 1)
            c = {c.what, narrow ? 8U : std::max(c.bits, 8U),
                 WithDepth(c.value, c.bits, narrow ? 8 : std::max(c.bits, 8U))};
        components.push_back(c);
    }
    return components;
}

int64_t ValueOf(const std::vector<Component>& components, std::initializer_list<unsigned> kinds)
{
    for (const Component& c : components) {
        if (std::find(kinds.begin(), kinds.end(), c.what) != kinds.end())
            return c.value;
    }
    return -1;
}

/// R, G and B of a Ycc pixel as real numbers, and its luma behind them.
std::array<double, 4> RgbOfYcc(const std::string& name, double y, double cb, double cr, unsigned bits)
{
    const double unit = std::ldexp(1.0, static_cast<int>(bits) - 8);
    const double max = 256 * unit - 1;
    double red = 0.299, blue = 0.114, luma = y, chroma = 1;
    if (Contains(name, "709"))
        red = 0.2126, blue = 0.0722;
    if (Contains(name, "2020"))
        red = 0.2627, blue = 0.0593;
    if (Contains(name, "601") || Contains(name, "709") || Contains(name, "2020")) {
        luma = (y - 16 * unit) * max / (219 * unit);
        chroma = max / (224 * unit);
    }
    const double pb = (cb - 128 * unit) * chroma, pr = (cr - 128 * unit) * chroma;
    const double r = luma + 2 * (1 - red) * pr;
    const double b = luma + 2 * (1 - blue) * pb;
    const double g = (luma - red * r - blue * b) / (1 - red - blue);
    std::array<double, 4> result{r, g, b, luma};
    for (double& value : result)
        value = std::clamp(value, 0.0, max);
    return result;
}

/// The values that a pixel of the destination may have: one, or two where a real number lies between them.
struct Expected
{
    std::array<double, 3> color; // before the change of depth; equal for greys
    unsigned bits;
    double slack;
    int64_t alpha;
};

Expected ExpectedAt(IKxImage& source, const std::string& name, size_t x, size_t y, bool narrow, bool toMono)
{
    const std::vector<Component> c = ComponentsAt(source, x, y, narrow);
    const unsigned bits = c[0].bits;
    if (c.size() == 1) {
        const auto grey = static_cast<double>(c[0].value);
        return {{grey, grey, grey}, bits, 0, -1};
    }
    const int64_t luma = ValueOf(c, {KxPixelComponent_Y});
    if (luma >= 0) {
        const auto cb = static_cast<double>(ValueOf(c, {KxPixelComponent_Cb, KxPixelComponent_U}));
        const auto cr = static_cast<double>(ValueOf(c, {KxPixelComponent_Cr, KxPixelComponent_V}));
        const auto rgb = RgbOfYcc(name, static_cast<double>(luma), cb, cr, bits);
        if (toMono)
            return {{rgb[3], rgb[3], rgb[3]}, bits, 0.06, -1};
        return {{rgb[0], rgb[1], rgb[2]}, bits, 0.06, -1};
    }
    const int64_t r = ValueOf(c, {KxPixelComponent_R}), g = ValueOf(c, {KxPixelComponent_G}),
                  b = ValueOf(c, {KxPixelComponent_B}), alpha = ValueOf(c, {KxPixelComponent_Alpha});
    if (toMono) {
        const auto grey = static_cast<double>((r * 9798 + g * 19235 + b * 3735 + 16384) >> 15);
        return {{grey, grey, grey}, bits, 0, alpha};
    }
    return {{static_cast<double>(r), static_cast<double>(g), static_cast<double>(b)}, bits, 0, alpha};
}

void CheckImage(View& source, IKxImage& target)
{
    const std::string name = NameOf(source.ePixelFormat);
    const IKxPixelFormatInfoInside& info = InfoOf(target.GetImagePixelFormat());
    const auto bits = static_cast<unsigned>(info.GetEffectiveBits());
    const bool toMono = !info.IsColor();
    for (size_t y = 0; y < source.nHeight; ++y) {
        for (size_t x = 0; x < source.nWidth; ++x) {
            const Expected expected = ExpectedAt(source, name, x, y, bits == 8, toMono);
            const Pixel pixel = PixelAt(target, x, y);
            const auto check = [&](int64_t value, double real) {
                const auto depth = [&](double number) {
                    return WithDepth(std::llround(number), expected.bits, bits);
                };
                const double max = std::ldexp(1.0, static_cast<int>(expected.bits)) - 1;
                ASSERT_TRUE(value >= depth(std::max(real - expected.slack, 0.0)) &&
                            value <= depth(std::min(real + expected.slack, max)))
                    << pixel << " at " << x << ", " << y << " in place of " << depth(real);
            };
            if (toMono)
                check(pixel.grey, expected.color[0]);
            for (size_t k = 0; k < 3 && !toMono; ++k)
                check(pixel.color[k], expected.color[k]);
            if (info.GetComponentCount() == 4) {
                ASSERT_EQ(pixel.color[3],
                          expected.alpha < 0 ? 255 : WithDepth(expected.alpha, expected.bits, bits));
            }
        }
    }
}

TEST(ConverterFormats, EveryFormatBecomesEveryDestination)
{
    TestConverter converter;
    converter->SetBayerInterpolationMethod(KxBayerInterpolationMethod_Off);
    size_t count = 0;
    for (size_t i = 0; i < GetIKxPixelFormatInfoCount(); ++i) {
        const auto format = GetIKxPixelFormatInfoByIndex(i)->GetPixelFormat();
        const std::string name = NameOf(format);
        ASSERT_EQ(converter->IsConvertible(format, KxPixelFormat_BGR8), !IsForeign(name)) << name;
        if (IsForeign(name) || IsReal(name))
            continue;
        ++count;
        const size_t step = StepX(name);
        for (const auto destination : kDestinations) {
            SCOPED_TRACE(name + " to " + NameOf(destination));
            converter->SetDestinationPixelFormat(destination);
            // Wide enough for a whole step of the kernels and an end, and as small as can be.
            View large = RandomImage(format, step == 1 ? 157 : 156, 2, 3);
            ASSERT_NO_FATAL_FAILURE(CheckImage(large, converter.Convert(large)));
            const bool polarized = InfoOf(format).IsPolarized();
            View small =
                RandomImage(format, polarized ? 3 : step, polarized || Contains(name, "420") ? 2 : 1, 0, 2);
            ASSERT_NO_FATAL_FAILURE(CheckImage(small, converter.Convert(small)));
        }
    }
    EXPECT_GT(count, 240U);
}

TEST(ConverterFormats, MoreBitsComeByRepeatingByZerosOrNotAtAll)
{
    TestConverter converter(KxPixelFormat_Mono16);
    View source = ImageOf(KxPixelFormat_Mono10, 3, 1, [](size_t x, size_t) {
        return x == 2 ? 1023U : 0x155U * static_cast<unsigned>(x);
    });
    const auto values = [&](EKxBitExpansionMode_t mode) {
        converter->SetBitExpansionMode(mode);
        IKxImage& target = converter.Convert(source);
        return std::array<int64_t, 3>{PixelAt(target, 0, 0).grey, PixelAt(target, 1, 0).grey,
                                      PixelAt(target, 2, 0).grey};
    };
    EXPECT_EQ(values(KxBitExpansionMode_FullRange), (std::array<int64_t, 3>{0, 0x5555, 0xFFFF}));
    EXPECT_EQ(values(KxBitExpansionMode_ZeroFill), (std::array<int64_t, 3>{0, 0x5540, 0xFFC0}));
    EXPECT_EQ(values(KxBitExpansionMode_Off), (std::array<int64_t, 3>{0, 0x155, 0x3FF}));
}

TEST(ConverterFormats, RealNumbersAreSpreadFromTheirLeastToTheirGreatest)
{
    const float infinite = std::numeric_limits<float>::infinity();
    const float values[] = {-2, 0, 2, infinite, -1.5F, -infinite, std::nanf(""), 2};
    for (const auto format :
         {KxPixelFormat_Coord3D_C32f, KxPixelFormat_Coord3D_ABC32f, KxPixelFormat_Coord3D_ABC32f_Planar})
    {
        SCOPED_TRACE(NameOf(format));
        View source = RandomImage(format, 4, 2);
        const size_t step = format == KxPixelFormat_Coord3D_ABC32f ? 3 : 1;
        const size_t first =
            format == KxPixelFormat_Coord3D_ABC32f_Planar ? 16 : step - 1; // of the last coordinate
        for (size_t i = 0; i < 8; ++i)
            std::memcpy(&source.bytes[(first + i * step) * sizeof(float)], &values[i], sizeof(float));
        TestConverter converter(KxPixelFormat_Mono16);
        IKxImage& target = converter.Convert(source);
        const int64_t expected[] = {1, 32768, 65535, 0, 8193, 0, 0, 65535};
        for (size_t i = 0; i < 8; ++i)
            EXPECT_EQ(PixelAt(target, i % 4, i / 4).grey, expected[i]) << i;
    }
    // An even surface, and one of the greatest numbers that there are.
    View flat = RandomImage(KxPixelFormat_Coord3D_C32f, 4, 2);
    std::fill(flat.bytes.begin(), flat.bytes.end(), uint8_t{0x41});
    TestConverter converter(KxPixelFormat_Mono8);
    converter->SetAutoDestination(true);
    EXPECT_EQ(PixelAt(converter.Convert(flat), 3, 1).grey, 0);
    View wide = RandomImage(KxPixelFormat_Coord3D_C64f, 2, 1);
    const double extremes[] = {-std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    std::memcpy(wide.bytes.data(), extremes, sizeof(extremes));
    EXPECT_EQ(PixelAt(converter.Convert(wide), 0, 0).grey, 0);
    EXPECT_EQ(PixelAt(converter.Convert(wide), 1, 0).grey, 255);
}

TEST(ConverterFormats, GammaIsAnExponentOnAllDepths)
{
    for (const auto destination :
         {KxPixelFormat_Mono8, KxPixelFormat_Mono12, KxPixelFormat_BGR8, KxPixelFormat_RGB16})
    {
        for (const auto format : {KxPixelFormat_Mono8, KxPixelFormat_Mono12p, KxPixelFormat_RGB12p}) {
            SCOPED_TRACE(NameOf(format) + " to " + NameOf(destination));
            TestConverter converter(destination);
            converter->SetGamma(0.45);
            View source = RandomImage(format, 67, 3);
            IKxImage& target = converter.Convert(source);
            const double from = std::ldexp(1.0, static_cast<int>(InfoOf(format).GetEffectiveBits())) - 1;
            const double to = std::ldexp(1.0, static_cast<int>(InfoOf(destination).GetEffectiveBits())) - 1;
            for (size_t x = 0; x < 67; ++x) {
                const Pixel before = PixelAt(source, x, 2), after = PixelAt(target, x, 2);
                for (size_t k = 0; k < 3; ++k) {
                    int64_t value = before.grey >= 0 ? before.grey : before.color[k];
                    if (before.grey < 0 && after.grey >= 0)
                        value = (before.color[0] * 9798 + before.color[1] * 19235 + before.color[2] * 3735 +
                                 16384) >>
                                15;
                    const int64_t result = after.grey >= 0 ? after.grey : after.color[k];
                    ASSERT_NEAR(static_cast<double>(result),
                                to * std::pow(static_cast<double>(value) / from, 0.45), 0.501);
                }
            }
        }
    }
}

TEST(ConverterFormats, ColorMapsColorGreyResultsOnly)
{
    unsigned int table[256];
    SetColorMap(table, KxColorMapType_PseudoColorBGR, true, 17);
    for (const auto destination : {KxPixelFormat_RGB8, KxPixelFormat_BGRa8, KxPixelFormat_BGR12}) {
        TestConverter converter(destination);
        converter->SetColorMapType(KxColorMapType_PseudoColorBGR);
        converter->SetColorMapInversion(true);
        converter->SetColorMapPhase(17);
        const auto bits = static_cast<unsigned>(InfoOf(destination).GetEffectiveBits());
        for (const auto format : {KxPixelFormat_Mono8, KxPixelFormat_Mono10p, KxPixelFormat_Mono2p}) {
            View source = RandomImage(format, 61, 2);
            IKxImage& target = converter.Convert(source);
            for (size_t x = 0; x < 61; ++x) {
                const auto grey = WithDepth(PixelAt(source, x, 1).grey,
                                            static_cast<unsigned>(InfoOf(format).GetEffectiveBits()), 8);
                for (size_t k = 0; k < 3; ++k)
                    ASSERT_EQ(PixelAt(target, x, 1).color[k],
                              WithDepth(table[grey] >> (16 - 8 * k) & 0xFF, 8, bits));
            }
        }
        View color = RandomImage(KxPixelFormat_RGB8, 61, 2);
        EXPECT_EQ(PixelAt(converter.Convert(color), 5, 1).color[0],
                  WithDepth(PixelAt(color, 5, 1).color[0], 8, bits));
    }
    TestConverter toMono(KxPixelFormat_Mono8);
    toMono->SetColorMapInversion(true);
    View source = RandomImage(KxPixelFormat_Mono8, 61, 2);
    EXPECT_EQ(PixelAt(toMono.Convert(source), 5, 1), PixelAt(source, 5, 1));
}

} // namespace
