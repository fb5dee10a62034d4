// SPDX-License-Identifier: Apache-2.0
// Pixels read out of bytes that were written by hand from the bit layouts of the naming convention.
#include "FakeImage.h"

#include <Base/GCException.h>
#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace
{

using namespace KxApi;
using KxTest::FakeImage;

std::vector<int64_t> Values(FakeImage& image, size_t x, size_t y)
{
    const IKxPixelComponent& component = *image.GetIKxPixelComponentValue(x, y);
    std::vector<int64_t> values;
    for (size_t k = 0; k < component.GetComponentCount(); ++k)
        values.push_back(component.GetValue(k));
    return values;
}

/// The values of all pixels of one line.
std::vector<int64_t> Line(EKxPixelFormatNamingConvention_t format, size_t width, std::vector<uint8_t> bytes)
{
    const size_t pitch = bytes.size();
    FakeImage image(format, width, 1, pitch, std::move(bytes));
    std::vector<int64_t> all;
    for (size_t x = 0; x < width; ++x) {
        for (const int64_t value : Values(image, x, 0))
            all.push_back(value);
    }
    return all;
}

using Expected = std::vector<int64_t>;

TEST(PixelComponent, UnpackedValuesLieLowByteFirst)
{
    EXPECT_EQ(Line(KxPixelFormat_Mono8, 3, {0x00, 0x7F, 0xFF}), (Expected{0, 127, 255}));
    EXPECT_EQ(Line(KxPixelFormat_Mono8s, 3, {0x80, 0x7F, 0xFF}), (Expected{-128, 127, -1}));
    EXPECT_EQ(Line(KxPixelFormat_Mono10, 2, {0x34, 0x02, 0xFF, 0x03}), (Expected{0x234, 0x3FF}));
    EXPECT_EQ(Line(KxPixelFormat_Mono16, 2, {0x34, 0x12, 0xFF, 0xFF}), (Expected{0x1234, 0xFFFF}));
    EXPECT_EQ(Line(KxPixelFormat_Mono32, 1, {0x78, 0x56, 0x34, 0xF2}), (Expected{0xF2345678}));
    EXPECT_EQ(Line(KxPixelFormat_R10_Deprecated, 2, {0x34, 0x02, 0xFF, 0x03}), (Expected{0x234, 0x3FF}));
    EXPECT_EQ(Line(KxPixelFormat_RGB8, 2, {1, 2, 3, 4, 5, 6}), (Expected{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Line(KxPixelFormat_RGB8a32, 2, {1, 2, 3, 0, 4, 5, 6, 0}), (Expected{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Line(KxPixelFormat_BGRa12, 1, {0xBC, 0x0A, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06}),
              (Expected{0xABC, 0x201, 0x403, 0x605}));
}

TEST(PixelComponent, LsbPackedValuesAreOneStreamOfBits)
{
    // 0x155, 0x2AA, 0x0F0, 0x30F: four pixels in five bytes, the first in the low bits.
    EXPECT_EQ(Line(KxPixelFormat_Mono10p, 4, {0x55, 0xA9, 0x0A, 0xCF, 0xC3}),
              (Expected{0x155, 0x2AA, 0x0F0, 0x30F}));
    // b0 = p0[7:0], b1 = p1[3:0] p0[11:8], b2 = p1[11:4].
    EXPECT_EQ(Line(KxPixelFormat_Mono12p, 2, {0xBC, 0x3A, 0x12}), (Expected{0xABC, 0x123}));
    EXPECT_EQ(Line(KxPixelFormat_Mono1p, 8, {0xB1}), (Expected{1, 0, 0, 0, 1, 1, 0, 1}));
    EXPECT_EQ(Line(KxPixelFormat_Mono2p, 4, {0xE4}), (Expected{0, 1, 2, 3}));
    EXPECT_EQ(Line(KxPixelFormat_BayerRG4p, 2, {0xA5}), (Expected{5, 10}));
    // 14 bits: 0x3FFF, 0, 0x3FFF, 0.
    EXPECT_EQ(Line(KxPixelFormat_Mono14p, 4, {0xFF, 0x3F, 0x00, 0xF0, 0xFF, 0x03, 0x00}),
              (Expected{0x3FFF, 0, 0x3FFF, 0}));
    // 16-bit word: R in bits 0 to 4, G 5 to 10, B 11 to 15.
    EXPECT_EQ(Line(KxPixelFormat_RGB565p, 1, {0x3F, 0x08}), (Expected{31, 1, 1}));
    EXPECT_EQ(Line(KxPixelFormat_BGR565p, 1, {0xE0, 0xF8}), (Expected{0, 7, 31}));
    // 32-bit word: 10 bits each from the low end, 2 bits of nothing.
    EXPECT_EQ(Line(KxPixelFormat_RGB10p32, 1, {0x01, 0x08, 0x30, 0x00}), (Expected{1, 2, 3}));
    EXPECT_EQ(Line(KxPixelFormat_BGR10p32, 1, {0xFF, 0x03, 0x00, 0x00}), (Expected{0x3FF, 0, 0}));
    EXPECT_EQ(Line(KxPixelFormat_BGRa10p, 1, {0x55, 0xA9, 0x0A, 0xCF, 0xC3}),
              (Expected{0x155, 0x2AA, 0x0F0, 0x30F}));
    EXPECT_EQ(Line(KxPixelFormat_RGB12p, 2, {0xBC, 0x3A, 0x12, 0x56, 0xF4, 0xFF, 0x01, 0x20, 0x00}),
              (Expected{0xABC, 0x123, 0x456, 0xFFF, 0x001, 0x002}));
}

TEST(PixelComponent, GigEPackedValuesShareTheirMiddleByte)
{
    // b0 = p0[9:2], b1 = p1[1:0] in bits 4, 5 and p0[1:0] in bits 0, 1, b2 = p1[9:2].
    EXPECT_EQ(Line(KxPixelFormat_Mono10Packed, 3, {0x8D, 0x12, 0xFF, 0x01, 0x03}),
              (Expected{0x8D << 2 | 2, 0xFF << 2 | 1, 0x01 << 2 | 3}));
    // b0 = p0[11:4], b1 = p1[3:0] p0[3:0], b2 = p1[11:4].
    EXPECT_EQ(Line(KxPixelFormat_Mono12Packed, 2, {0xAB, 0x3C, 0x12}), (Expected{0xABC, 0x123}));
    EXPECT_EQ(Line(KxPixelFormat_BayerGB12Packed, 2, {0xAB, 0x3C, 0x12}), (Expected{0xABC, 0x123}));
    EXPECT_EQ(Line(KxPixelFormat_PolarizedMono12Packed, 2, {0xAB, 0x3C, 0x12}), (Expected{0xABC, 0x123}));
    // One byte with two low bits of each colour, then the high bits of each.
    EXPECT_EQ(Line(KxPixelFormat_RGB10V1Packed, 1, {0x39, 0x80, 0x40, 0xFF}),
              (Expected{0x80 << 2 | 1, 0x40 << 2 | 2, 0xFF << 2 | 3}));
    // Six samples of two pixels, packed in pairs.
    EXPECT_EQ(Line(KxPixelFormat_RGB12V1Packed, 2, {0xAB, 0x3C, 0x12, 0x45, 0xF6, 0xFF, 0x00, 0x21, 0x00}),
              (Expected{0xABC, 0x123, 0x456, 0xFFF, 0x001, 0x002}));
}

TEST(PixelComponent, SubSampledChromaBelongsToEachPixelOfItsGroup)
{
    // Order of the values: Y, then the chroma by the format's name.
    EXPECT_EQ(Line(KxPixelFormat_YUV422_8, 2, {10, 1, 20, 2}), (Expected{10, 1, 2, 20, 1, 2}));
    EXPECT_EQ(Line(KxPixelFormat_YUV422_8_UYVY, 2, {1, 10, 2, 20}), (Expected{10, 1, 2, 20, 1, 2}));
    EXPECT_EQ(Line(KxPixelFormat_YCbCr422_8_CbYCrY, 4, {1, 10, 2, 20, 3, 30, 4, 40}),
              (Expected{10, 1, 2, 20, 1, 2, 30, 3, 4, 40, 3, 4}));
    EXPECT_EQ(Line(KxPixelFormat_YUV411_8_UYYVYY, 4, {1, 10, 20, 2, 30, 40}),
              (Expected{10, 1, 2, 20, 1, 2, 30, 1, 2, 40, 1, 2}));
    EXPECT_EQ(Line(KxPixelFormat_YCbCr411_8, 4, {10, 20, 1, 30, 40, 2}),
              (Expected{10, 1, 2, 20, 1, 2, 30, 1, 2, 40, 1, 2}));
    EXPECT_EQ(Line(KxPixelFormat_YUV8_UYV, 1, {1, 10, 2}), (Expected{10, 1, 2}));
    EXPECT_EQ(Line(KxPixelFormat_YCbCr8, 1, {10, 1, 2}), (Expected{10, 1, 2}));
    // Y0 = 0x155, Cb = 0x2AA, Y1 = 0x0F0, Cr = 0x30F.
    EXPECT_EQ(Line(KxPixelFormat_YCbCr422_10p, 2, {0x55, 0xA9, 0x0A, 0xCF, 0xC3}),
              (Expected{0x155, 0x2AA, 0x30F, 0x0F0, 0x2AA, 0x30F}));
    EXPECT_EQ(Line(KxPixelFormat_BiColorRGBG8, 2, {1, 2, 3, 4}), (Expected{1, 2, 3, 4}));
}

TEST(PixelComponent, PlanesFollowEachOther)
{
    // Two by two pixels with lines of three bytes.
    FakeImage planar(KxPixelFormat_RGB8_Planar, 2, 2, 3,
                     {1, 2, 0, 3, 4, 0, 11, 12, 0, 13, 14, 0, 21, 22, 0, 23, 24, 0});
    EXPECT_EQ(Values(planar, 0, 0), (Expected{1, 11, 21}));
    EXPECT_EQ(Values(planar, 1, 1), (Expected{4, 14, 24}));

    // Four by two pixels: Y, then chroma of half the lines.
    FakeImage semi(KxPixelFormat_YCbCr420_8_YY_CrCb_Semiplanar, 4, 2, 4,
                   {1, 2, 3, 4, 5, 6, 7, 8, 51, 52, 53, 54});
    EXPECT_EQ(Values(semi, 0, 0), (Expected{1, 52, 51})); // the name puts Cr first in memory
    EXPECT_EQ(Values(semi, 3, 1), (Expected{8, 54, 53}));

    FakeImage semi422(KxPixelFormat_YCbCr422_8_YY_CbCr_Semiplanar, 2, 2, 2, {1, 2, 3, 4, 51, 52, 53, 54});
    EXPECT_EQ(Values(semi422, 1, 0), (Expected{2, 51, 52}));
    EXPECT_EQ(Values(semi422, 1, 1), (Expected{4, 53, 54}));

    // Four by four pixels: Y, then U and V, each of two by two.
    FakeImage yuv420(KxPixelFormat_YUV420_8_Planar, 4, 4, 4,
                     {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 51, 52, 53, 54, 61, 62, 63, 64});
    EXPECT_EQ(Values(yuv420, 0, 0), (Expected{1, 51, 61}));
    EXPECT_EQ(Values(yuv420, 2, 1), (Expected{7, 52, 62}));
    EXPECT_EQ(Values(yuv420, 1, 2), (Expected{10, 53, 63}));
    EXPECT_EQ(Values(yuv420, 3, 3), (Expected{16, 54, 64}));
}

TEST(PixelComponent, LinesStartAtThePitch)
{
    FakeImage image(KxPixelFormat_Mono12p, 2, 3, 5,
                    {0, 0, 0, 9, 9, 0xBC, 0x3A, 0x12, 9, 9, 0x01, 0x20, 0x00});
    EXPECT_EQ(Values(image, 0, 1), (Expected{0xABC}));
    EXPECT_EQ(Values(image, 1, 1), (Expected{0x123}));
    EXPECT_EQ(Values(image, 1, 2), (Expected{0x002}));
}

template <class T>
std::vector<uint8_t> Bytes(T value)
{
    std::vector<uint8_t> bytes(sizeof(value));
    std::memcpy(bytes.data(), &value, sizeof(value));
    return bytes;
}

TEST(PixelComponent, NumbersBeyondAnIntegerComeAsTheNearestOne)
{
    constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
    constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
    EXPECT_EQ(Line(KxPixelFormat_Coord3D_A32f, 1, Bytes(-2.75F)), (Expected{-2}));
    EXPECT_EQ(Line(KxPixelFormat_Coord3D_A64f, 1, Bytes(1e300)), (Expected{kMax}));
    EXPECT_EQ(Line(KxPixelFormat_Coord3D_A64f, 1, Bytes(-1e300)), (Expected{kMin}));
    EXPECT_EQ(Line(KxPixelFormat_Data32f, 1, Bytes(std::numeric_limits<float>::quiet_NaN())), (Expected{0}));
    EXPECT_EQ(Line(KxPixelFormat_Data64, 1, Bytes(~uint64_t{0})), (Expected{kMax}));
    EXPECT_EQ(Line(KxPixelFormat_Data64s, 1, Bytes(int64_t{-5})), (Expected{-5}));
    EXPECT_EQ(Line(KxPixelFormat_Data16s, 2, {0x00, 0x80, 0xFF, 0xFF}), (Expected{-32768, -1}));

    FakeImage image(KxPixelFormat_Coord3D_A32f, 1, 1, 4, Bytes(-2.75F));
    EXPECT_EQ(image.GetIKxPixelComponentValue(0, 0)->GetFloatValue(0), -2.75);
    FakeImage data(KxPixelFormat_Data64, 1, 1, 8, Bytes(~uint64_t{0}));
    EXPECT_EQ(data.GetIKxPixelComponentValue(0, 0)->GetFloatValue(0), 18446744073709551616.0);
    FakeImage mono(KxPixelFormat_Mono8s, 1, 1, 1, {0xFE});
    EXPECT_EQ(mono.GetIKxPixelComponentValue(0, 0)->GetFloatValue(0), -2.0);
}

TEST(PixelComponent, TypesTellFilterAndPolariserOfThePixel)
{
    FakeImage image(KxPixelFormat_PolarizedBayerRG8, 4, 4, 4, std::vector<uint8_t>(16, 7));
    EXPECT_EQ(image.GetIKxPixelComponentValue(0, 0)->GetType(0), 0x02080003U); // R behind 90 degrees
    EXPECT_EQ(image.GetIKxPixelComponentValue(3, 1)->GetType(0), 0x05080001U); // Gr behind 0
    EXPECT_EQ(image.GetIKxPixelComponentValue(2, 3)->GetType(0), 0x04080004U); // B behind 135
    FakeImage yuv(KxPixelFormat_YUV422_8, 2, 1, 4, {10, 1, 20, 2});
    const IKxPixelComponent& component = *yuv.GetIKxPixelComponentValue(0, 0);
    EXPECT_EQ(component.GetType(0), 0x07080000U);
    EXPECT_EQ(component.GetType(1), 0x0A080000U);
    EXPECT_EQ(component.GetType(2), 0x0B080000U);
}

/// Sanitizers watch over the exact buffers: no format's last pixel may lead behind the image.
TEST(PixelComponent, ReadsNothingBehindAnImageOfAnyFormat)
{
    for (size_t i = 0; i < GetIKxPixelFormatInfoCount(); ++i) {
        const auto& info = dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfoByIndex(i));
        const size_t width = 2 * info.GetIncrementX();
        const size_t height = 2 * info.GetIncrementY();
        const size_t pitch = info.GetLinePitch(width, 1);
        FakeImage image(info.GetPixelFormat(), width, height, pitch,
                        std::vector<uint8_t>(info.GetImageSize(height, pitch), 0xFF));
        for (const int64_t value : Values(image, width - 1, height - 1))
            EXPECT_NE(value, std::numeric_limits<int64_t>::min());
        EXPECT_EQ(image.GetIKxPixelComponentValue(0, 0)->GetComponentCount(), info.GetComponentCount());
    }
}

TEST(PixelComponent, RefusedPixelsLeaveTheLastOneStanding)
{
    FakeImage image(KxPixelFormat_Mono8, 2, 2, 2, {1, 2, 3, 4});
    CKxPixelComponent component;
    EXPECT_EQ(component.GetComponentCount(), 0U);
    EXPECT_THROW(component.GetValue(0), GenICam::OutOfRangeException);
    component.SetPixelComponent(&image, 1, 1);
    EXPECT_THROW(component.SetPixelComponent(&image, 2, 0), GenICam::OutOfRangeException);
    EXPECT_THROW(component.SetPixelComponent(&image, 0, 2), GenICam::OutOfRangeException);
    EXPECT_THROW(component.SetPixelComponent(nullptr, 0, 0), GenICam::LogicalErrorException);
    const FakeImage unknown(KxPixelFormat_None, 2, 2, 2, {1, 2, 3, 4});
    EXPECT_THROW(component.SetPixelComponent(&unknown, 0, 0), GenICam::InvalidArgumentException);
    const FakeImage empty(KxPixelFormat_Mono8, 2, 2, 2, {});
    EXPECT_THROW(component.SetPixelComponent(&empty, 0, 0), GenICam::LogicalErrorException);
    const FakeImage narrow(KxPixelFormat_Mono16, 2, 1, 3, {1, 2, 3});
    EXPECT_THROW(component.SetPixelComponent(&narrow, 1, 0), GenICam::InvalidArgumentException);
    const FakeImage wide(KxPixelFormat_RGB8, std::numeric_limits<size_t>::max(), 1, 6, {1, 2, 3, 4, 5, 6});
    EXPECT_THROW(component.SetPixelComponent(&wide, std::numeric_limits<size_t>::max() / 24 + 1, 0),
                 GenICam::InvalidArgumentException);
    EXPECT_EQ(component.GetComponentCount(), 1U);
    EXPECT_EQ(component.GetValue(0), 4);
    EXPECT_THROW(component.GetValue(1), GenICam::OutOfRangeException);
}

} // namespace
