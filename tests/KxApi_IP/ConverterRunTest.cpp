// SPDX-License-Identifier: Apache-2.0
// How conversions run: threads, processors, memory, windows, and sources that can't be converted.

#include "Allocations.h"
#include "ConverterTestSupport.h"
#include "InThreads.h"

#include <hwy/targets.h>

#include <atomic>

namespace
{

using namespace KxApi;
using namespace KxTest;

struct Work
{
    EKxPixelFormatNamingConvention_t source, destination;
    int bayer = 3, polarization = 0;
    double gamma = 1;
};

/// Some of each stage.
const Work kWorks[] = {
    {KxPixelFormat_Mono8, KxPixelFormat_Mono8},
    {KxPixelFormat_Mono8, KxPixelFormat_Mono8, 3, 0, 0.5},
    {KxPixelFormat_Mono8, KxPixelFormat_BGR8},
    {KxPixelFormat_Mono10, KxPixelFormat_Mono8},
    {KxPixelFormat_Mono12p, KxPixelFormat_Mono8},
    {KxPixelFormat_Mono12p, KxPixelFormat_Mono12},
    {KxPixelFormat_Mono10p, KxPixelFormat_Mono8},
    {KxPixelFormat_Mono10Packed, KxPixelFormat_Mono16},
    {KxPixelFormat_Mono12Packed, KxPixelFormat_Mono8},
    {KxPixelFormat_BayerRG8, KxPixelFormat_BGR8, 1},
    {KxPixelFormat_BayerGB8, KxPixelFormat_RGBa8, 2},
    {KxPixelFormat_BayerRG12p, KxPixelFormat_BGR8, 3},
    {KxPixelFormat_BayerGR10Packed, KxPixelFormat_BGR12, 3},
    {KxPixelFormat_BayerGR8, KxPixelFormat_BGR8, 4},
    {KxPixelFormat_BayerBG16, KxPixelFormat_RGB16, 5},
    {KxPixelFormat_BayerBG8, KxPixelFormat_Mono8, 6},
    {KxPixelFormat_BayerRG12, KxPixelFormat_RGB12, 7, 0, 2},
    {KxPixelFormat_RGB8, KxPixelFormat_Mono8},
    {KxPixelFormat_BGRa12, KxPixelFormat_RGBa8},
    {KxPixelFormat_RGB12p, KxPixelFormat_RGB10p32},
    {KxPixelFormat_YUV422_8, KxPixelFormat_BGR8},
    {KxPixelFormat_YCbCr709_422_8_CbYCrY, KxPixelFormat_RGB16},
    {KxPixelFormat_YUV420_8_Planar, KxPixelFormat_BGR8},
    {KxPixelFormat_YCbCr420_8_YY_CrCb_Semiplanar, KxPixelFormat_RGB8},
    {KxPixelFormat_YUV411_8_UYYVYY, KxPixelFormat_RGB8},
    {KxPixelFormat_YCbCr422_10p, KxPixelFormat_RGB8},
    {KxPixelFormat_RGB10p32, KxPixelFormat_BGRa8},
    {KxPixelFormat_RGB12_Planar, KxPixelFormat_RGB16},
    {KxPixelFormat_Mono1p, KxPixelFormat_Mono8},
    {KxPixelFormat_Coord3D_ABC12p, KxPixelFormat_BGR8},
    {KxPixelFormat_Mono14p, KxPixelFormat_Mono8},
    {KxPixelFormat_Mono14p, KxPixelFormat_Mono16},
    {KxPixelFormat_PolarizedMono8, KxPixelFormat_BGR8, 3, 6},
    {KxPixelFormat_PolarizedMono12p, KxPixelFormat_Mono16, 3, 4},
    {KxPixelFormat_PolarizedMono12p, KxPixelFormat_Mono16, 3, 5},
    {KxPixelFormat_PolarizedMono12p, KxPixelFormat_Mono12, 3, 2},
    {KxPixelFormat_PolarizedBayerRG8, KxPixelFormat_BGR8, 3, 1},
    {KxPixelFormat_PolarizedBayerRG8, KxPixelFormat_BGR8, 3, 6},
};

void Set(TestConverter& converter, const Work& work)
{
    converter->SetDestinationPixelFormat(work.destination);
    converter->SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(work.bayer));
    converter->SetPolarizationImageTransformationMethod(
        static_cast<EKxPolarizationImageTransformationMethod_t>(work.polarization));
    converter->SetGamma(work.gamma);
    converter->SetPolarizationSpecifiedAngle(20);
}

std::string Title(const Work& work)
{
    return NameOf(work.source) + " to " + NameOf(work.destination) + ", " + std::to_string(work.bayer) +
           ", " + std::to_string(work.polarization);
}

TEST(ConverterRun, ThreadsChangeNothing)
{
    for (const Work& work : kWorks) {
        SCOPED_TRACE(Title(work));
        View source = RandomImage(work.source, 1204, 1002);
        TestConverter one, many;
        Set(one, work);
        Set(many, work);
        many->SetConversionOption(3);
        const std::vector<uint8_t> expected = PixelBytes(one.Convert(source));
        EXPECT_EQ(PixelBytes(many.Convert(source)), expected);
        many->SetConversionOption(2);
        EXPECT_EQ(PixelBytes(many.Convert(source)), expected);
    }
}

TEST(ConverterRun, ProcessorsOfAllKindsGiveTheSame)
{
    const auto use = [](int64_t targets) {
        hwy::SetSupportedTargetsForTest(targets);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    };
    use(0);
    const int64_t supported = hwy::SupportedTargets();
    for (const Work& work : kWorks) {
        SCOPED_TRACE(Title(work));
        // A large image, and the smallest that all of these formats can have. Where real numbers are rounded,
        // differences are rare.
        const size_t height = work.polarization == 0 ? 6 : 1002;
        View large = RandomImage(work.source, 316, height, 5), small = RandomImage(work.source, 4, 2);
        const auto run = [&] {
            TestConverter converter;
            Set(converter, work);
            std::vector<uint8_t> bytes = PixelBytes(converter.Convert(large));
            const std::vector<uint8_t> more = PixelBytes(converter.Convert(small));
            bytes.insert(bytes.end(), more.begin(), more.end());
            return bytes;
        };
        use(0);
        const std::vector<uint8_t> expected = run();
        for (const int64_t targets : {int64_t{HWY_SSE4}, int64_t{HWY_SCALAR} | int64_t{HWY_EMU128}}) {
            if (targets != HWY_SSE4 || (supported & targets) != 0) {
                use(targets);
                EXPECT_EQ(run(), expected) << hwy::TargetName(targets & -targets);
            }
        }
    }
    use(0);
}

TEST(ConverterRun, AMosaicOfOnePixelIsGrey)
{
    // Without neighbours the one value is all that there is; Bicubic's factors add up to 1 as well.
    for (int method = 0; method < 8; ++method) {
        TestConverter converter(KxPixelFormat_RGB8);
        converter->SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(method));
        View source = ImageOf(KxPixelFormat_BayerGB8, 1, 1, [](size_t, size_t) { return 77U; });
        EXPECT_EQ(PixelBytes(converter.Convert(source)), (std::vector<uint8_t>{77, 77, 77})) << method;
    }
}

TEST(ConverterRun, ASecondConversionAllocatesNothing)
{
    for (const Work& work : kWorks) {
        SCOPED_TRACE(Title(work));
        TestConverter converter;
        Set(converter, work);
        converter->SetConversionOption(2);
        View source = RandomImage(work.source, 1204, 1002);
        converter.Convert(source);
        const size_t before = AllocationCount();
        ASSERT_GT(before, 0U) << "they are not counted";
        converter->Convert(&source, &converter.target);
        EXPECT_EQ(AllocationCount(), before);
    }
}

TEST(ConverterRun, ReverseYTurnsUpsideDown)
{
    for (const Work& work : kWorks) {
        SCOPED_TRACE(Title(work));
        TestConverter converter;
        Set(converter, work);
        View source = RandomImage(work.source, 20, 6);
        std::vector<uint8_t> expected = PixelBytes(converter.Convert(source));
        converter->SetReverseY(true);
        const std::vector<uint8_t> turned = PixelBytes(converter.Convert(source));
        const auto line = static_cast<std::ptrdiff_t>(expected.size() / 6);
        for (std::ptrdiff_t y = 0; y < 6; ++y)
            ASSERT_TRUE(std::equal(turned.begin() + y * line, turned.begin() + (y + 1) * line,
                                   expected.begin() + (5 - y) * line));
    }
}

/// What the conversion of a source raises; it has to leave the target as it was.
std::string Refused(TestConverter& converter, IKxImage* source)
{
    converter.target.CreateBuffer(3, 2, KxPixelFormat_Mono8, KxMemoryInitialization_FF);
    const std::string error = ErrorOf([&] { converter->Convert(source, &converter.target); });
    EXPECT_EQ(converter.target.GetImageWidth(), 3U);
    EXPECT_EQ(converter.target.GetImagePixelFormat(), KxPixelFormat_Mono8);
    EXPECT_EQ(PixelBytes(converter.target), std::vector<uint8_t>(6, 0xFF));
    return error;
}

TEST(ConverterRun, BadSourcesAreNamedAndNothingIsWritten)
{
    TestConverter converter;
    const auto refused = [&](const View& like, const std::function<void(View&)>& spoil) {
        View source = like;
        spoil(source);
        return Refused(converter, &source);
    };
    const View mono = RandomImage(KxPixelFormat_Mono12p, 8, 4);
    EXPECT_EQ(refused(mono, [](View& v) { v.nWidth = 0; }),
              "OutOfRange: Width = 0 must be equal or greater than Min = 1");
    EXPECT_EQ(refused(mono, [](View& v) { v.nHeight = 0; }),
              "OutOfRange: Height = 0 must be equal or greater than Min = 1");
    EXPECT_EQ(refused(mono, [](View& v) { v.nWidth = size_t{1} << 60; }),
              "OutOfRange: Width = 1152921504606846976 must be equal or smaller than Max = 16777216");
    EXPECT_EQ(refused(mono, [](View& v) { v.nHeight = size_t{1} << 62; }).substr(0, 11), "OutOfRange:");
    EXPECT_EQ(refused(mono, [](View& v) { v.nLinePitch = 11; }),
              "InvalidArgument: LinePitch = 11 must be equal or greater than Min = 12");
    EXPECT_EQ(refused(mono, [](View& v) { v.bytes.clear(); }), "Runtime: There is no available image.");
    EXPECT_EQ(
        refused(mono,
                [](View& v) { v.ePixelFormat = static_cast<EKxPixelFormatNamingConvention_t>(0x01080FFF); }),
        "InvalidArgument: PixelFormat = 0x01080FFF is no known pixel format");
    EXPECT_EQ(refused(mono, [](View& v) { v.ePixelFormat = KxPixelFormat_None; }),
              "InvalidArgument: PixelFormat = 0xFFFFFFFF is no known pixel format");
    EXPECT_EQ(refused(mono, [](View& v) { v.ePixelFormat = KxPixelFormat_Data32; }),
              "InvalidArgument: Data32 can't be converted");
    const View yuv = RandomImage(KxPixelFormat_YUV420_8_Planar, 8, 4);
    EXPECT_EQ(refused(yuv, [](View& v) { v.nWidth = 7; }),
              "OutOfRange: Width = 7 must be a multiple of 2 for YUV420_8_Planar");
    EXPECT_EQ(refused(yuv, [](View& v) { v.nHeight = 3; }),
              "OutOfRange: Height = 3 must be a multiple of 2 for YUV420_8_Planar");
    const View yuv422 = RandomImage(KxPixelFormat_YCbCr422_10p, 8, 4);
    EXPECT_EQ(refused(yuv422, [](View& v) { v.nWidth = 7; }),
              "OutOfRange: Width = 7 must be a multiple of 2 for YCbCr422_10p");
    const View polarized = RandomImage(KxPixelFormat_PolarizedMono8, 8, 4);
    EXPECT_EQ(refused(polarized, [](View& v) { v.nHeight = 1; }),
              "OutOfRange: Height = 1 must be equal or greater than Min = 2");

    EXPECT_EQ(Refused(converter, nullptr), "InvalidArgument: IKxImage pointer is NULL");
    View source = RandomImage(KxPixelFormat_Mono8, 4, 4);
    EXPECT_NE(ErrorOf([&] { converter->Convert(&source, nullptr); }).find("InvalidArgument"),
              std::string::npos);
    EXPECT_EQ(Refused(converter, &converter.target),
              "InvalidArgument: The source lies in the memory of the target");
    EXPECT_EQ(
        ErrorOf([&] { converter->Convert(converter.target.GetROIImage(1, 1, 2, 1), &converter.target); }),
        "InvalidArgument: The source lies in the memory of the target");
    EXPECT_NE(ErrorOf([] { CreateIKxConverter(1); }).find("InvalidArgument"), std::string::npos);
}

TEST(ConverterRun, ThreadsMayShareAConverter)
{
    TestConverter shared(KxPixelFormat_BGR8);
    shared->SetConversionOption(2);
    View source = RandomImage(KxPixelFormat_BayerRG8, 1204, 1002);
    const std::vector<uint8_t> expected = PixelBytes(shared.Convert(source));
    std::atomic<int> wrong{0};
    InThreads(3, [&](int i) {
        CKxImageBuffer target(nullptr);
        for (int k = 0; k < 5; ++k) {
            if (i == 0)
                shared->SetPolarizationSpecifiedAngle(k + 1.0);
            shared->Convert(&source, &target);
            wrong += PixelBytes(target) == expected ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace
