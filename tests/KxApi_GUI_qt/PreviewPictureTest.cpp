// SPDX-License-Identifier: Apache-2.0
// Images as pictures: formats, colours, false colours, scaled painting, and which pixel lies where.
#include "ImageViewSupport.h"
#include "image/PaintGeometry.h"
#include "image/PreviewPicture_qt.h"
#include "image/ScaledPainting_qt.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>

#include <QPainter>
#include <array>
#include <ostream>
#include <random>

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

TEST(ScaledPainting, GivesThePixelsOfDrawImage)
{
    std::minstd_rand random(1);
    const auto upTo = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const QImage::Format formats[] = {QImage::Format_Grayscale8, QImage::Format_Indexed8,
                                      QImage::Format_RGB888, QImage::Format_BGR888, QImage::Format_RGBX8888};
    for (int n = 0; n < 400; ++n) {
        CPreviewPicture picture{QImage(1 + upTo(n % 10 ? 300 : 6000), 1 + upTo(200), formats[n % 5]),
                                n % 2 == 0};
        picture.bSwapped &= picture.image.format() == QImage::Format_RGBX8888;
        for (qsizetype i = 0; i < picture.image.sizeInBytes(); ++i)
            picture.image.bits()[i] = static_cast<uchar>(random() >> 8);
        if (picture.image.format() == QImage::Format_Indexed8) {
            QVector<QRgb> vecTable(256);
            for (QRgb& nColor : vecTable)
                nColor = 0xFF000000 | static_cast<QRgb>(random());
            picture.image.setColorTable(vecTable);
        }
        const QPoint ptWidget(upTo(40), upTo(40));
        const QRect rcTarget(0, 0, 1 + upTo(n % 7 ? 500 : 5000), 1 + upTo(300));
        // What is shown of it: all, a part, or parts, as when windows lie above.
        QRegion rgShown(rcTarget);
        if (n % 3 != 0)
            rgShown &= QRect(upTo(rcTarget.width()), upTo(rcTarget.height()), 400, 200);
        if (n % 3 == 2)
            rgShown -= QRect(upTo(rcTarget.width()), upTo(rcTarget.height()), 50, 50);
        QImage own(rcTarget.size() + QSize(50, 50), QImage::Format_RGB32), bare(own.size(), own.format());
        own.fill(Qt::red);
        bare.fill(Qt::red);
        for (QImage* const pDevice : {&own, &bare}) {
            QPainter painter(pDevice);
            painter.translate(ptWidget);
            painter.setClipRegion(rgShown);
            if (pDevice == &own)
                DrawScaled(painter, rcTarget, picture, rgShown);
            else
                painter.drawImage(rcTarget, picture.Complete());
        }
        ASSERT_TRUE(own == bare) << n << ": " << picture.image.width() << " to " << rcTarget.width();
    }
}

CPaintGeometry Geometry(double dMagnification)
{
    CPaintGeometry geometry;
    geometry.nImageOffsetX = 7;
    geometry.nImageOffsetY = 31;
    geometry.dScrollX = 100;
    geometry.dScrollY = 50;
    geometry.nImageWidth = 640;
    geometry.nImageHeight = 480;
    geometry.dMagnification = dMagnification;
    return geometry;
}

TEST(PaintGeometry, PlacesBesideTheImageGiveItsBorder)
{
    const CPaintGeometry geometry = Geometry(0.01);
    EXPECT_EQ(geometry.ImagePixelAt(QPoint(-1'000'000'000, -1'000'000'000)), QPoint(0, 0));
    EXPECT_EQ(geometry.ImagePixelAt(QPoint(1'000'000'000, 1'000'000'000)), QPoint(639, 479));
    EXPECT_EQ(Geometry(1).ImagePixelAt(QPoint(-94, -20)), QPoint(0, 0));
    EXPECT_EQ(CPaintGeometry().ImagePixelAt(QPoint(5, 5)), QPoint(-1, -1)) << "nothing is painted yet";
}

TEST(PaintGeometry, WheelStepsByWholeNumbersAboveOneAndHalvesBelow)
{
    const auto steps = [](double dMagnification, bool bEnlarge) {
        std::vector<double> vecSteps;
        for (int i = 0; i < 4; ++i)
            vecSteps.push_back(dMagnification = MagnificationAfterWheel(dMagnification, bEnlarge));
        return vecSteps;
    };
    EXPECT_EQ(steps(0.25, true), (std::vector<double>{0.5, 1, 2, 3}));
    EXPECT_EQ(steps(2, false), (std::vector<double>{1, 0.5, 0.25, 0.125}));
    EXPECT_EQ(MagnificationAfterWheel(16, true), 16);
    EXPECT_EQ(MagnificationAfterWheel(2.5, true), 4);
    EXPECT_EQ(MagnificationAfterWheel(2.5, false), 2);
    EXPECT_EQ(MagnificationAfterWheel(0.01, false), 0.0625)
        << "the wheel's range is narrower than the setting's";
    EXPECT_EQ(MagnificationAfterWheel(64, true), 16);
}

} // namespace
} // namespace KxTest
