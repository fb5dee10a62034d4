// SPDX-License-Identifier: Apache-2.0
// Images as pictures: formats, colours, false colours.
#include "ImageViewSupport.h"
#include "image/PreviewPicture_qt.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>

#include <array>
#include <ostream>

namespace KxTest
{
namespace
{

using namespace KxApi;

/// Bytes of an orange pixel (red 255, green 128, blue 0), or of a half-bright grey one.
struct CFormatCase
{
    const char* szName;
    EKxPixelFormatNamingConvention_t ePixelFormat;
    std::initializer_list<unsigned char> bytes;
    QRgb nColor;
    bool bShared; ///< the picture lies in the image's memory
};

void PrintTo(const CFormatCase& format, std::ostream* pStream) { *pStream << format.szName; }

constexpr QRgb kGrey = 0xFF808080, kOrange = 0xFFFF8000;

// The 10-bit values of the orange: 1023, 512, 0.
const CFormatCase kFormatCases[] = {
    {"Mono8", KxPixelFormat_Mono8, {0x80}, kGrey, true},
    {"Mono10", KxPixelFormat_Mono10, {0x00, 0x02}, kGrey, false},
    {"Mono12", KxPixelFormat_Mono12, {0x0F, 0x08}, kGrey, false},
    {"Mono14", KxPixelFormat_Mono14, {0x3F, 0x20}, kGrey, false},
    {"Mono16", KxPixelFormat_Mono16, {0xFF, 0x80}, kGrey, false},
    {"RGB8", KxPixelFormat_RGB8, {0xFF, 0x80, 0x00}, kOrange, true},
    {"BGR8", KxPixelFormat_BGR8, {0x00, 0x80, 0xFF}, kOrange, true},
    {"RGBa8", KxPixelFormat_RGBa8, {0xFF, 0x80, 0x00, 0xFF}, kOrange, true},
    {"BGRa8", KxPixelFormat_BGRa8, {0x00, 0x80, 0xFF, 0xFF}, kOrange, true},
    {"RGB10p32", KxPixelFormat_RGB10p32, {0xFF, 0x03, 0x08, 0x00}, kOrange, true},
    {"BGR10p32", KxPixelFormat_BGR10p32, {0x00, 0x00, 0xF8, 0x3F}, kOrange, true},
};

class ShownFormat : public ImageViewTest, public ::testing::WithParamInterface<CFormatCase>
{};

TEST_P(ShownFormat, ReachesTheScreen)
{
    // By hand, so that no format is converted to another one.
    m_pWnd->SetPreviewPixelFormatMode(KxPreviewPixelFormatMode_Manual);
    m_pWnd->GetIKxPixelFormatConverter()->SetDestinationPixelFormat(GetParam().ePixelFormat);
    const ImageBufferPtr pBuffer = MakeImage(8, 8, GetParam().ePixelFormat, 0);
    SetPixel(*pBuffer->GetIKxImage(), 5, 1, GetParam().bytes);
    m_pWnd->SetManualZoomMagnification(4);
    ShowWindow();
    ShowImage(pBuffer->GetIKxImage());
    ASSERT_EQ(Widget().size(), QSize(32, 32));
    EXPECT_EQ(ShownAt(20, 4), GetParam().nColor);
    EXPECT_EQ(ShownAt(23, 7), GetParam().nColor);
    EXPECT_EQ(ShownAt(19, 4), 0xFF000000);
    EXPECT_EQ(ShownAt(20, 8), 0xFF000000);
    CPreviewPictureMaker maker;
    IKxImage& image = *pBuffer->GetIKxImage();
    EXPECT_EQ(maker.Make(image, {}).image.constBits() == image.GetImageBuffer(), GetParam().bShared);
    EXPECT_EQ(maker.Make(image, {}).Complete().pixel(5, 1) | 0xFF000000, GetParam().nColor);
}

INSTANTIATE_TEST_SUITE_P(AllOfThem, ShownFormat, ::testing::ValuesIn(kFormatCases),
                         [](const auto& format) { return std::string(format.param.szName); });

class PreviewPicture : public GuiTest
{
protected:
    CPreviewPictureMaker m_objMaker;
};

TEST_F(PreviewPicture, FalseColoursAreThoseOfTheMap)
{
    const ImageBufferPtr pBuffer = MakeRamp(256, 1);
    IKxImage& image = *pBuffer->GetIKxImage();
    EXPECT_EQ(m_objMaker.Make(image, {}).image.format(), QImage::Format_Grayscale8);
    const CColorMapSettings settings[] = {{KxColorMapType_PseudoColorBGR, false, 0},
                                          {KxColorMapType_PseudoColorBGRB, true, 200},
                                          {KxColorMapType_Normal, true, 0},
                                          {KxColorMapType_Normal, false, 1}};
    for (const CColorMapSettings& map : settings) {
        std::array<unsigned int, 256> table{};
        SetColorMap(table.data(), map.eType, map.bInversion, map.nPhase);
        const QImage picture = m_objMaker.Make(image, map).image;
        EXPECT_EQ(picture.constBits(), image.GetImageBuffer()) << "no copy for the sake of colours";
        for (int x = 0; x < 256; ++x)
            ASSERT_EQ(picture.pixel(x, 0), table[static_cast<size_t>(x)] | 0xFF000000) << x;
    }
    EXPECT_EQ(m_objMaker.Make(image, {}).image.pixel(200, 0), qRgb(200, 200, 200)) << "back to grey";
}

TEST_F(PreviewPicture, SixteenBitRowsFollowOneAnotherWithoutRegardToThePitch)
{
    // Lines of 1001 values: what the picture's lines have more goes to the next line.
    const ImageBufferPtr pBuffer = MakeImage(1001, 2, KxPixelFormat_Mono16, 0);
    IKxImage& image = *pBuffer->GetIKxImage();
    auto* const pValues = static_cast<uint16_t*>(image.GetImageBuffer());
    for (size_t i = 0; i < size_t{1001} * 2; ++i)
        pValues[i] = static_cast<uint16_t>((i % 251) << 8);
    const QImage picture = m_objMaker.Make(image, {}).image;
    for (int x = 0; x < 998; ++x) {
        ASSERT_EQ(qRed(picture.pixel(x, 0)), x % 251);
        ASSERT_EQ(qRed(picture.pixel(x, 1)), (x + picture.bytesPerLine()) % 251);
    }
    EXPECT_EQ(qRed(picture.pixel(1000, 1)), 0) << "nothing is left for the end";
}

TEST_F(PreviewPicture, WhatCantBeShownGivesNoPicture)
{
    EXPECT_TRUE(m_objMaker.Make(*MakeImage(4, 4, KxPixelFormat_BayerRG8)->GetIKxImage(), {}).IsNull());
    EXPECT_TRUE(m_objMaker.Make(*MakeImage(4, 4, KxPixelFormat_Mono12p)->GetIKxImage(), {}).IsNull());
    EXPECT_FALSE(m_objMaker.Make(*MakeImage(1, 1)->GetIKxImage(), {}).IsNull());
}

} // namespace
} // namespace KxTest
