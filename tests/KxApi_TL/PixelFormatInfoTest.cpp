// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <KxApi_TL/IKxPixelComponent.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <gtest/gtest.h>

#include <cctype>
#include <limits>
#include <set>
#include <string>

namespace
{

using namespace KxApi;

const IKxPixelFormatInfoInside& Info(EKxPixelFormatNamingConvention_t format)
{
    const auto* const info = dynamic_cast<const IKxPixelFormatInfoInside*>(GetIKxPixelFormatInfo(format));
    if (!info)
        throw RUNTIME_EXCEPTION("0x%08X is unknown", static_cast<unsigned>(format));
    return *info;
}

const IKxPixelFormatInfoInside& Info(uint32_t code)
{
    return Info(static_cast<EKxPixelFormatNamingConvention_t>(code));
}

std::string ComponentNames(const IKxPixelFormatInfoInside& info, size_t x, size_t y)
{
    std::string names;
    for (size_t k = 0; k < info.GetComponentCount(); ++k)
        names += std::string(k ? " " : "") +
                 GetIKxPixelComponentInfo(info.GetComponentType(k, x, y))->GetName().c_str();
    return names;
}

struct FormatFacts
{
    uint32_t code; // as the naming convention prints it
    const char* name;
    const char* components; // of the pixel at 0, 0
    size_t bits;
    size_t storageBits;
    size_t effectiveBits;
    size_t planes;
    size_t incrementX;
    size_t incrementY;
};

// clang-format off
constexpr FormatFacts kFacts[] = {
    {0x010C0004, "Mono10Packed", "Mono", 12, 12, 10, 1, 2, 1},
    {0x010A0046, "Mono10p", "Mono", 10, 10, 10, 1, 4, 1},
    {0x01010037, "Mono1p", "Mono", 1, 1, 1, 1, 8, 1},
    {0x010A0054, "BayerGB10p", "Gb", 10, 10, 10, 1, 4, 1},
    {0x02180014, "RGB8", "R G B", 24, 8, 8, 1, 1, 1},
    {0x02200017, "BGRa8", "B G R a", 32, 8, 8, 1, 1, 1},
    {0x02300019, "BGR10", "B G R", 48, 16, 10, 1, 1, 1},
    {0x0220001D, "RGB10p32", "R G B", 32, 10, 10, 1, 1, 1},
    {0x02100035, "RGB565p", "R G B", 16, 6, 6, 1, 1, 1},
    {0x0220012D, "RGB8a32", "R G B", 32, 8, 8, 1, 1, 1},
    {0x02240034, "RGB12V1Packed", "R G B", 36, 12, 12, 1, 2, 1},
    {0x02180021, "RGB8_Planar", "R G B", 24, 8, 8, 3, 1, 1},
    {0x0210001F, "YUV422_8_UYVY", "Y U V", 16, 8, 8, 1, 2, 1},
    {0x020C005A, "YCbCr411_8", "Y Cb Cr", 12, 8, 8, 1, 4, 1},
    {0x020C0112, "YCbCr420_8_YY_CbCr_Semiplanar", "Y Cb Cr", 12, 8, 8, 2, 2, 2},
    {0x021400A8, "BiColorRGBG10p", "R G", 20, 10, 10, 1, 2, 1},
    {0x0108007C, "SCF1WRWG8", "W", 8, 8, 8, 1, 4, 4},
    {0x02C00129, "Coord3D_ABC64f", "A B C", 192, 64, 64, 1, 1, 1},
    {0x021E00DC, "Coord3D_ABC10p_Planar", "A B C", 30, 10, 10, 3, 4, 1},
    {0x010100C5, "Confidence1p", "Confidence", 1, 1, 1, 1, 8, 1},
    {0x0140011E, "Data64s", "Data", 64, 64, 64, 1, 1, 1},
    // The size field of this deprecated code tells 10 bits; the values take 16.
    {0x010A00CA, "R10_Deprecated", "R", 16, 16, 10, 1, 1, 1},
    {0x82200001, "BGR10p32", "B G R", 32, 10, 10, 1, 1, 1},
    {0x820C0152, "YUV420_8_Planar", "Y U V", 12, 8, 8, 3, 2, 2},
    {0x81080200, "PolarizedMono8", "90", 8, 8, 8, 1, 2, 2},
    {0x810C0213, "PolarizedBayerRG12p", "R_90", 12, 12, 12, 1, 2, 2},
};
// clang-format on

TEST(PixelFormatInfo, TellsTheFactsOfTheNamingConvention)
{
    for (const FormatFacts& facts : kFacts) {
        SCOPED_TRACE(facts.name);
        const IKxPixelFormatInfoInside& info = Info(facts.code);
        EXPECT_EQ(info.GetPixelFormat(), facts.code);
        EXPECT_STREQ(info.GetName().c_str(), facts.name);
        EXPECT_EQ(ComponentNames(info, 0, 0), facts.components);
        EXPECT_EQ(info.GetBitsPerPixel(), facts.bits);
        EXPECT_EQ(info.GetStorageBits(), facts.storageBits);
        EXPECT_EQ(info.GetEffectiveBits(), facts.effectiveBits);
        EXPECT_EQ(info.GetPlaneCount(), facts.planes);
        EXPECT_EQ(info.GetIncrementX(), facts.incrementX);
        EXPECT_EQ(info.GetIncrementY(), facts.incrementY);
        EXPECT_EQ(GetIKxPixelFormatInfoByName(facts.name), GetIKxPixelFormatInfo(info.GetPixelFormat()));
    }
}

TEST(PixelFormatInfo, KnowsEachFormatOnceByCodeAndByName)
{
    // 285 codes of the convention, 2 of the SDK and 5 polarised families of 7 packings.
    ASSERT_EQ(GetIKxPixelFormatInfoCount(), 285U + 2 + 5 * 7);
    std::set<std::string> names;
    for (size_t i = 0; i < GetIKxPixelFormatInfoCount(); ++i) {
        const IKxPixelFormatInfo* const info = GetIKxPixelFormatInfoByIndex(i);
        ASSERT_NE(info, nullptr);
        EXPECT_EQ(GetIKxPixelFormatInfo(info->GetPixelFormat()), info);
        EXPECT_TRUE(names.insert(info->GetName().c_str()).second) << info->GetName().c_str();
    }
    EXPECT_EQ(GetIKxPixelFormatInfoByIndex(GetIKxPixelFormatInfoCount()), nullptr);
}

/// The bits in a name such as "BGRa10p" or "YCbCr601_422_8_CbYCrY", 0 when they are not told simply.
size_t BitsInName(std::string name, bool& packed)
{
    const std::string endings[] = {"_Planar", "_Semiplanar", "Packed", "_Deprecated"};
    for (const std::string& ending : endings) {
        if (name.size() > ending.size() &&
            name.compare(name.size() - ending.size(), ending.size(), ending) == 0)
            name.resize(name.size() - ending.size());
    }
    packed = !name.empty() && name.back() == 'p';
    while (!name.empty() && (name.back() == 'p' || name.back() == 's' || name.back() == 'f'))
        name.pop_back();
    std::string digits;
    while (!name.empty() && std::isdigit(static_cast<unsigned char>(name.back()))) {
        digits.insert(digits.begin(), name.back());
        name.pop_back();
    }
    const bool isAppendix = digits == "32" && !name.empty() && (name.back() == 'p' || name.back() == 'a');
    return digits.empty() || digits.size() > 2 || isAppendix || (!name.empty() && name.back() == 'V')
               ? 0
               : static_cast<size_t>(std::stoul(digits));
}

TEST(PixelFormatInfo, NamesAgreeWithBitsPlanesAndColour)
{
    size_t told = 0;
    for (size_t i = 0; i < GetIKxPixelFormatInfoCount(); ++i) {
        const IKxPixelFormatInfoInside& info = Info(GetIKxPixelFormatInfoByIndex(i)->GetPixelFormat());
        const std::string name = info.GetName().c_str();
        SCOPED_TRACE(name);
        bool packed = false;
        if (const size_t bits = BitsInName(name, packed)) {
            ++told;
            EXPECT_EQ(info.GetEffectiveBits(), bits);
            if (packed) {
                EXPECT_EQ(info.GetStorageBits(), bits);
            }
        }
        const bool planar = name.find("lanar") != name.npos;
        EXPECT_EQ(info.GetPlaneCount() > 1, planar);
        if (name.find("Mono") != name.npos || name.find("Coord") == 0 || name.find("Data") == 0) {
            EXPECT_FALSE(info.IsColor());
        }
        if (name.find("RGB") == 0 || name.find("BGR") == 0 || name.find("Bayer") != name.npos ||
            name.find("Y") == 0) {
            EXPECT_TRUE(info.IsColor());
        }
        EXPECT_EQ(info.IsPolarized(), name.find("Polarized") == 0);
        EXPECT_EQ(info.IsSingleComponent(),
                  name.find("Mono") == 0 || name.find("Data") == 0 || name.find("Confidence") == 0);
    }
    EXPECT_GT(told, 200U) << "the names were not understood";
}

TEST(PixelFormatInfo, UnknownCodesHaveNoInfo)
{
    // No format; an ID without format; a right ID with a wrong size, with the custom bit, and an ID beyond
    // all tables.
    for (const uint32_t code : {0xFFFFFFFFU, 0x010800DDU, 0x01100001U, 0x81080001U, 0x0108FFFFU, 0U})
        EXPECT_EQ(GetIKxPixelFormatInfo(static_cast<EKxPixelFormatNamingConvention_t>(code)), nullptr)
            << code;
    EXPECT_EQ(GetIKxPixelFormatInfoByName("mono8"), nullptr);
    EXPECT_EQ(GetIKxPixelFormatInfoByName(""), nullptr);
    EXPECT_EQ(GetIKxPixelComponentInfo(KxPixelComponentType_None), nullptr);
    EXPECT_EQ(GetIKxPixelComponentInfo(MakeKxPixelComponentType(KxPixelComponent_Mono, 11)), nullptr);
}

TEST(PixelFormatInfo, WindowKeepsThePacking)
{
    const auto at = [](EKxPixelFormatNamingConvention_t format, size_t x, size_t y) {
        return Info(format).GetPixelFormatAtOffset(x, y);
    };
    // Of equal components and bits, only the packing differs.
    EXPECT_EQ(at(KxPixelFormat_BayerGB12p, 4, 3), KxPixelFormat_BayerRG12p);
    EXPECT_EQ(at(KxPixelFormat_BayerGR10Packed, 2, 1), KxPixelFormat_BayerBG10Packed);
    EXPECT_EQ(at(KxPixelFormat_PolarizedMono12, 2, 6), KxPixelFormat_PolarizedMono12);
}

/// Whatever the offset, each pixel keeps its component: what a window's format tells of its pixel at 0, 0 is
/// what the image's own format tells of that pixel.
TEST(PixelFormatInfo, WindowsOfAllFormatsKeepTheComponentsOfTheirPixels)
{
    for (size_t i = 0; i < GetIKxPixelFormatInfoCount(); ++i) {
        const IKxPixelFormatInfo& info = *GetIKxPixelFormatInfoByIndex(i);
        for (size_t offset = 0; offset < 16; ++offset) {
            const size_t x = offset % 4 * info.GetIncrementX();
            const size_t y = offset / 4 * info.GetIncrementY();
            const IKxPixelFormatInfoInside& window = Info(info.GetPixelFormatAtOffset(x, y));
            ASSERT_EQ(window.GetBitsPerPixel(), info.GetBitsPerPixel()) << info.GetName().c_str();
            for (size_t pixel = 0; pixel < 16; ++pixel) {
                for (size_t k = 0; k < window.GetComponentCount(); ++k)
                    ASSERT_EQ(window.GetComponentType(k, pixel % 4, pixel / 4),
                              info.GetComponentType(k, x + pixel % 4, y + pixel / 4))
                        << info.GetName().c_str() << " at " << x << ", " << y;
            }
        }
    }
}

TEST(PixelFormatInfo, LinesAreFilledToTheAlignment)
{
    EXPECT_EQ(Info(KxPixelFormat_Mono8).GetLinePitch(5, 0), 8U);
    EXPECT_EQ(Info(KxPixelFormat_Mono8).GetLinePitch(5, 1), 5U);
    EXPECT_EQ(Info(KxPixelFormat_Mono8).GetLinePitch(5, 3), 6U);
    EXPECT_EQ(Info(KxPixelFormat_Mono10p).GetLinePitch(4, 1), 5U);
    EXPECT_EQ(Info(KxPixelFormat_Mono10p).GetLinePitch(5, 1), 7U);
    EXPECT_EQ(Info(KxPixelFormat_BGR8).GetLinePitch(3, 0), 12U);
    // Lines of one plane.
    EXPECT_EQ(Info(KxPixelFormat_RGB8_Planar).GetLinePitch(6, 1), 6U);
    // Windows of this format are copied without gaps.
    EXPECT_EQ(Info(KxPixelFormat_YUV420_8_Planar).GetLinePitch(6, 0), 6U);
    constexpr size_t kMax = std::numeric_limits<size_t>::max();
    EXPECT_EQ(Info(KxPixelFormat_Mono8).GetLinePitch(kMax, 1), kMax);
    EXPECT_THROW(Info(KxPixelFormat_Mono8).GetLinePitch(kMax, 4), GenICam::OutOfRangeException);
    EXPECT_THROW(Info(KxPixelFormat_RGB8).GetLinePitch(kMax / 2, 1), GenICam::OutOfRangeException);
}

TEST(PixelFormatInfo, ImageSizesCountSubSampledPlanesAsTheyAre)
{
    EXPECT_EQ(Info(KxPixelFormat_Mono8).GetImageSize(10, 16), 160U);
    EXPECT_EQ(Info(KxPixelFormat_RGB8_Planar).GetImageSize(10, 16), 480U);
    EXPECT_EQ(Info(KxPixelFormat_YUV420_8_Planar).GetImageSize(10, 16), 240U);
    EXPECT_EQ(Info(KxPixelFormat_YCbCr420_8_YY_CbCr_Semiplanar).GetImageSize(10, 16), 240U);
    EXPECT_EQ(Info(KxPixelFormat_YCbCr422_8_YY_CbCr_Semiplanar).GetImageSize(10, 16), 320U);
    constexpr size_t kMax = std::numeric_limits<size_t>::max();
    EXPECT_THROW(Info(KxPixelFormat_Mono8).GetImageSize(kMax / 8, 16), GenICam::OutOfRangeException);
    EXPECT_THROW(Info(KxPixelFormat_RGB8_Planar).GetImageSize(kMax / 2, 1), GenICam::OutOfRangeException);
}

TEST(PixelFormatInfo, ComponentsAreNamedAsUsersSeeThem)
{
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_BayerGR12), 1, 0), "R");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_BayerGR12), 0, 1), "B");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_BayerGR12), 1, 1), "Gb");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_PolarizedMono8), 1, 1), "0");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_PolarizedMono8), 1, 0), "45");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_PolarizedMono8), 0, 1), "135");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_PolarizedBayerRG8), 3, 0), "Gr_45");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_PolarizedBayerRG8), 2, 3), "B_135");
    EXPECT_EQ(ComponentNames(Info(KxPixelFormat_BiColorBGRG8), 1, 0), "R G");
    EXPECT_THROW(Info(KxPixelFormat_Mono8).GetComponentType(1, 0, 0), GenICam::OutOfRangeException);

    const IKxPixelComponentInfo& info =
        *GetIKxPixelComponentInfo(Info(KxPixelFormat_PolarizedBayerBG12p).GetComponentType(0, 1, 1));
    EXPECT_EQ(info.GetType(), 0x040C0001U); // B, 12 bits, 0 degrees
    EXPECT_EQ(info.GetComponent(), KxPixelComponent_B);
    EXPECT_EQ(info.GetEffectiveBits(), 12U);
    EXPECT_EQ(info.GetPolarization(), KxPolarization_0);
    EXPECT_EQ(Info(KxPixelFormat_Mono2p).GetComponentType(0, 0, 0), 0x01020000U);
    EXPECT_EQ(Info(KxPixelFormat_BayerGB8).GetComponentType(0, 0, 0), 0x06080000U);
    EXPECT_EQ(GetIKxPixelComponentInfo(Info(KxPixelFormat_Data32f).GetComponentType(0, 0, 0))->GetNumber(),
              KxPixelNumber_Float);
}

/// The four cells of each white-and-colour mosaic's colours, as the convention's figures show them.
TEST(PixelFormatInfo, SparseColourMosaicsHaveTheirCells)
{
    const auto cells = [](EKxPixelFormatNamingConvention_t format) {
        std::string text;
        for (size_t y = 0; y < 4; ++y) {
            for (size_t x = 0; x < 4; ++x)
                text += ComponentNames(Info(format), x, y);
        }
        return text;
    };
    EXPECT_EQ(cells(KxPixelFormat_SCF1WBWG8), "WBWGBWGWWGWRGWRW");
    EXPECT_EQ(cells(KxPixelFormat_SCF1WGWB8), "WGWBGWBWWRWGRWGW");
    EXPECT_EQ(cells(KxPixelFormat_SCF1WGWR8), "WGWRGWRWWBWGBWGW");
    EXPECT_EQ(cells(KxPixelFormat_SCF1WRWG8), "WRWGRWGWWGWBGWBW");
}

} // namespace
