// SPDX-License-Identifier: Apache-2.0
// Images in every format of every camera, with values that were computed apart from the cameras.
#include "SimulatorFixture.h"

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <array>

namespace
{

using namespace KxTest;
using namespace KxApi;

class Format : public Simulator
{
protected:
    static constexpr size_t kLines = 8;

    static std::vector<std::string> FormatsOf(const DevicePtr& device)
    {
        GenApi::StringList_t symbolics;
        GenApi::CEnumerationPtr(Features(device).GetNode("PixelFormat"))->GetSymbolics(symbolics);
        return {symbolics.begin(), symbolics.end()};
    }

    /// An image of the first lines of a test pattern, in each format of the camera.
    void InEachFormat(const Place& place, const char* pattern,
                      const std::function<void(const std::string&, IKxStreamImage&)>& look)
    {
        const DevicePtr device = Open(place);
        Set(device, "Height", std::to_string(kLines));
        Set(device, "TestPattern", pattern);
        for (const std::string& format : FormatsOf(device)) {
            SCOPED_TRACE(format);
            Set(device, "PixelFormat", format);
            const auto width = static_cast<size_t>(std::stoul(Get(device, "Width")));
            const size_t bits = std::stoul(Get(device, "PixelSize"));
            WithImage(device, [&](IKxStreamImage& image) {
                EXPECT_EQ(image.GetImageWidth(), width);
                EXPECT_EQ(image.GetImageHeight(), kLines);
                EXPECT_EQ(std::stoul(Get(device, "PayloadSize")), width * kLines * bits / 8);
                EXPECT_EQ(GetIKxPixelFormatInfo(image.GetImagePixelFormat())->GetName(), format.c_str());
                look(format, image);
            });
        }
    }

    static std::vector<int64_t> ValuesAt(IKxStreamImage& image, size_t x, size_t y)
    {
        CKxPixelComponent pixel;
        pixel.SetPixelComponent(&image, x, y);
        std::vector<int64_t> values;
        for (size_t k = 0; k < pixel.GetComponentCount(); ++k)
            values.push_back(pixel.GetValue(k));
        return values;
    }

    /// Bits of a value, from the number in the format's name.
    static int BitsOf(const std::string& format)
    {
        return std::stoi(format.substr(format.find_first_of("0123456789")));
    }
};

class RampFormat : public Format, public testing::WithParamInterface<Place>
{};

INSTANTIATE_TEST_SUITE_P(Cameras, RampFormat,
                         testing::Values(kMono, kBayer, kAllKinds, kPolarized, kPolarizedBayer));

TEST_P(RampFormat, HoldsTheRampInAllItsBits)
{
    InEachFormat(GetParam(), "GreyHorizontalRamp", [](const std::string& format, IKxStreamImage& image) {
        const size_t width = image.GetImageWidth();
        for (const size_t x :
             {size_t{0}, size_t{1}, size_t{2}, size_t{3}, width / 3, width / 2 + 5, width - 1}) {
            for (const size_t y : {size_t{0}, size_t{1}, kLines - 1}) {
                const auto expected = static_cast<int64_t>((x << BitsOf(format)) / width);
                EXPECT_EQ(ValuesAt(image, x, y).at(0), expected) << x << ", " << y;
            }
        }
    });
}

class ColourFormat : public Format, public testing::WithParamInterface<Place>
{};

INSTANTIATE_TEST_SUITE_P(Cameras, ColourFormat, testing::Values(kColour, kPlanar));

TEST_P(ColourFormat, HoldsTheColourBars)
{
    // White, yellow, cyan, green, magenta, red, blue, black; as red, green, blue and as Y, U, V of full
    // range.
    static constexpr std::array<std::array<int64_t, 3>, 8> kRgb = {
        {{1, 1, 1}, {1, 1, 0}, {0, 1, 1}, {0, 1, 0}, {1, 0, 1}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0}}};
    static constexpr std::array<std::array<int64_t, 3>, 8> kYuv = {{{255, 128, 128},
                                                                    {226, 1, 149},
                                                                    {179, 171, 1},
                                                                    {150, 44, 21},
                                                                    {105, 212, 235},
                                                                    {76, 85, 255},
                                                                    {29, 255, 107},
                                                                    {0, 128, 128}}};
    InEachFormat(GetParam(), "ColorBar", [](const std::string& format, IKxStreamImage& image) {
        for (size_t bar = 0; bar < 8; ++bar) {
            const size_t x = (2 * bar + 1) * image.GetImageWidth() / 16;
            for (const size_t y : {size_t{0}, kLines - 1}) {
                const std::vector<int64_t> values = ValuesAt(image, x, y);
                ASSERT_GE(values.size(), 3U);
                const bool isBgr = format[0] == 'B';
                for (size_t k = 0; k < 3; ++k) {
                    if (format[0] == 'Y')
                        EXPECT_NEAR(static_cast<double>(values[k]), static_cast<double>(kYuv[bar][k]), 1)
                            << bar;
                    else
                        EXPECT_EQ(values[isBgr ? 2 - k : k], kRgb[bar][k] * ((1 << BitsOf(format)) - 1))
                            << bar;
                }
                EXPECT_EQ(values.size() == 4 ? values[3] : 255, 255) << "opaque";
            }
        }
    });
}

TEST_F(Format, OfABayerCameraPutsColoursWhereItsNameSays)
{
    InEachFormat(kBayer, "ColorBar", [](const std::string& format, IKxStreamImage& image) {
        const size_t x = 11 * image.GetImageWidth() / 16 / 2 * 2; // in the red bar
        const int64_t white = (1 << BitsOf(format)) - 1;
        EXPECT_EQ(ValuesAt(image, x, 0).at(0), white);
        EXPECT_EQ(ValuesAt(image, x + 1, 0).at(0), 0);
        EXPECT_EQ(ValuesAt(image, x, 1).at(0), 0);
        EXPECT_EQ(ValuesAt(image, x + 1, 1).at(0), 0);
    });
    // There a square of four polarisers lies behind one filter.
    InEachFormat(kPolarizedBayer, "ColorBar", [](const std::string& format, IKxStreamImage& image) {
        const size_t x = 11 * image.GetImageWidth() / 16 / 4 * 4;
        const int64_t white = (1 << BitsOf(format)) - 1;
        EXPECT_EQ(ValuesAt(image, x, 0).at(0), white);
        EXPECT_EQ(ValuesAt(image, x + 1, 1).at(0), white);
        EXPECT_EQ(ValuesAt(image, x + 2, 0).at(0), 0);
        EXPECT_EQ(ValuesAt(image, x, 2).at(0), 0);
    });
}

TEST_F(Format, StaysInPhaseWithinAWindow)
{
    const DevicePtr device = Open(kMono);
    Set(device, "TestPattern", "GreyHorizontalRamp");
    Set(device, "Width", "64");
    Set(device, "Height", "4");
    Set(device, "OffsetX", "1200");
    Set(device, "OffsetY", "100");
    for (const std::string& format : FormatsOf(device)) {
        SCOPED_TRACE(format);
        Set(device, "PixelFormat", format);
        WithImage(device, [&](IKxStreamImage& image) {
            EXPECT_EQ(image.GetOffsetX(), 1200U);
            EXPECT_EQ(image.GetOffsetY(), 100U);
            for (const size_t x : {size_t{0}, size_t{1}, size_t{63}})
                EXPECT_EQ(ValuesAt(image, x, 3).at(0),
                          static_cast<int64_t>(((1200 + x) << BitsOf(format)) / 2448));
        });
    }
}

class Parts : public Simulator
{};

TEST_F(Parts, OfA3dCameraAreRangeIntensityAndConfidenceOfOneScene)
{
    const DevicePtr device = Open(kRange);
    Set(device, "ChunkModeActive", "1");
    WithImage(device, [&](IKxStreamImage& range) {
        ASSERT_EQ(range.GetPartCount(), 3U);
        IKxStreamImage &intensity = *range.GetIKxPart(1), &confidence = *range.GetIKxPart(2);
        EXPECT_EQ(range.GetImagePixelFormat(), KxPixelFormat_Coord3D_C16);
        EXPECT_EQ(intensity.GetImagePixelFormat(), KxPixelFormat_Mono8);
        EXPECT_EQ(confidence.GetImagePixelFormat(), KxPixelFormat_Confidence8);
        EXPECT_EQ(confidence.GetPartDataType(), GenTL::PART_DATATYPE_CONFIDENCE_MAP);
        EXPECT_EQ(range.GetPurposeID(), 4U);
        EXPECT_EQ(range.GetIKxPixelComponentValue(10, 10)->GetValue(0), 30000) << "the belt";
        EXPECT_EQ(range.GetIKxPixelComponentValue(200, 256)->GetValue(0), 30000 - 120 * 40)
            << "the ball's top";
        EXPECT_EQ(confidence.GetIKxPixelComponentValue(200, 256)->GetValue(0), 255);
        EXPECT_EQ(range.GetIKxPixelComponentValue(400, 256)->GetValue(0), 0) << "the box's edge isn't seen";
        EXPECT_EQ(confidence.GetIKxPixelComponentValue(400, 256)->GetValue(0), 0);
        EXPECT_EQ(Get(device, "ChunkWidth"), "640") << "behind all parts";
    });
    Set(device, "ComponentSelector", "Range");
    Set(device, "ComponentEnable", "0");
    WithImage(device, [](IKxStreamImage& image) {
        EXPECT_EQ(image.GetPartCount(), 2U);
        EXPECT_EQ(image.GetImagePixelFormat(), KxPixelFormat_Mono8);
    });
}

TEST_F(Parts, OfTwoRegionsAreTheImageAndItsMiddle)
{
    const DevicePtr device = Open(kRegions);
    Set(device, "Width", "64");
    Set(device, "Height", "32");
    Set(device, "KxFaultIncompleteEvery", "2");
    const StreamPtr stream(device->OpenIKxStream(0));
    stream->StartAcquisition(nullptr, 2);
    for (const bool isIncomplete : {false, true}) {
        const ImagePtr whole(stream->FetchImage(kLongMs));
        ASSERT_TRUE(whole);
        ASSERT_EQ(whole->GetPartCount(), 2U);
        EXPECT_EQ(whole->IsIncomplete(), isIncomplete);
        IKxStreamImage& middle = *whole->GetIKxPart(1);
        EXPECT_EQ(middle.GetImageWidth(), 32U);
        EXPECT_EQ(middle.GetOffsetY(), 8U);
        EXPECT_EQ(middle.GetRegionID(), 1U);
        EXPECT_EQ(middle.GetDeliveredHeight(), isIncomplete ? 0U : 16U);
        if (!isIncomplete) {
            EXPECT_EQ(middle.GetIKxPixelComponentValue(3, 2)->GetValue(0),
                      whole->GetIKxPixelComponentValue(19, 10)->GetValue(0));
        }
    }
}

} // namespace
