// SPDX-License-Identifier: Apache-2.0
// What goes into image files and comes out of them.

#include "FileTestSupport.h"

#include <KxSDKCommon/ColorMap.h>

#include <cmath>
#include <cstring>
#include <map>

using namespace KxApi;
using namespace KxTest;

namespace
{

class ImageFileTest : public ::testing::Test
{
protected:
    ImageBuffer SaveAndLoad(IKxImage* image, EKxStillImageFileType_t type)
    {
        m_filer->Save(image, type, (m_folder / "image").c_str());
        return Load("image");
    }
    ImageBuffer Load(const std::string& name)
    {
        ImageBuffer loaded(CreateIKxImageBuffer(nullptr));
        m_filer->Load(loaded.Get(), (m_folder / name).c_str());
        return loaded;
    }
    /// The bytes of a file of the image.
    std::string Bytes(IKxImage* image, EKxStillImageFileType_t type)
    {
        m_filer->Save(image, type, (m_folder / "bytes").c_str());
        return ReadBytes(m_folder / "bytes");
    }

    CKxApiAutoInitTerm m_sdk;
    Folder m_folder;
    Filer m_filer{CreateIKxFiler(KxFilerType_StillImage)};
};

/// The value of the component at x, y that is of the same colour, wherever it stands in the pixel.
int64_t ValueLike(IKxImage& image, size_t x, size_t y, EKxPixelComponentType_t type, size_t k)
{
    const IKxPixelComponent& pixel = *image.GetIKxPixelComponentValue(x, y);
    for (size_t i = 0; i < pixel.GetComponentCount(); ++i) {
        if (pixel.GetType(i) == type)
            return pixel.GetValue(i);
    }
    return k < pixel.GetComponentCount() ? pixel.GetValue(k) : -1;
}

void ExpectSameValues(IKxImage& expected, IKxImage& actual)
{
    ASSERT_EQ(actual.GetImageWidth(), expected.GetImageWidth());
    ASSERT_EQ(actual.GetImageHeight(), expected.GetImageHeight());
    for (size_t y = 0; y < expected.GetImageHeight(); ++y) {
        for (size_t x = 0; x < expected.GetImageWidth(); ++x) {
            const IKxPixelComponent& pixel = *expected.GetIKxPixelComponentValue(x, y);
            for (size_t k = 0; k < pixel.GetComponentCount(); ++k)
                ASSERT_EQ(ValueLike(actual, x, y, pixel.GetType(k), k), pixel.GetValue(k))
                    << "component " << k << " at " << x << ", " << y;
        }
    }
}

class LosslessFileTest : public ImageFileTest, public ::testing::WithParamInterface<EKxStillImageFileType_t>
{};

TEST_P(LosslessFileTest, KeepsEveryValueOfEveryFormatItTakes)
{
    size_t taken = 0;
    for (const FormatCode format : AllFormats()) {
        if (!m_filer->IsSavable(format, GetParam()))
            continue;
        ++taken;
        SCOPED_TRACE(InfoOf(format).GetName().c_str());
        const ImageBuffer image = NoiseImage(format, 16, 6);
        const ImageBuffer loaded = SaveAndLoad(image->GetIKxImage(), GetParam());
        ExpectSameValues(*image->GetIKxImage(), *loaded->GetIKxImage());
        if (GetParam() == KxStillImageFileType_Raw) {
            EXPECT_EQ(loaded->GetIKxImage()->GetImagePixelFormat(), format);
        }
        if (HasFatalFailure())
            break;
    }
    EXPECT_GE(taken, GetParam() == KxStillImageFileType_Bmp ? 5U : 100U);
}

TEST_P(LosslessFileTest, KeepsOddSizesWindowsAndSinglePixels)
{
    for (const FormatCode format : {KxPixelFormat_Mono8, KxPixelFormat_RGB8, KxPixelFormat_BGR8}) {
        SCOPED_TRACE(InfoOf(format).GetName().c_str());
        const ImageBuffer image = NoiseImage(format, 7, 5, 1);
        for (IKxImage* const part : {image->GetIKxImage(), image->GetIKxImage()->GetROIImage(2, 1, 3, 4),
                                     image->GetIKxImage()->GetROIImage(6, 4, 1, 1)})
        {
            const ImageBuffer loaded = SaveAndLoad(part, GetParam());
            ExpectSameValues(*part, *loaded->GetIKxImage());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Types, LosslessFileTest,
                         ::testing::Values(KxStillImageFileType_Raw, KxStillImageFileType_Bmp,
                                           KxStillImageFileType_Tiff, KxStillImageFileType_Png));

TEST_F(ImageFileTest, PackedFormatsComeBackInTheirUnpackedForm)
{
    struct Case
    {
        FormatCode saved;
        FormatCode loaded;
    };
    for (const Case& c :
         {Case{KxPixelFormat_Mono12Packed, KxPixelFormat_Mono12},
          Case{KxPixelFormat_Mono10p, KxPixelFormat_Mono10},
          Case{KxPixelFormat_BayerRG12p, KxPixelFormat_BayerRG12},
          Case{KxPixelFormat_BayerGB8, KxPixelFormat_BayerGB8},
          Case{KxPixelFormat_BGR10p32, KxPixelFormat_BGR10}, Case{KxPixelFormat_BGR12, KxPixelFormat_BGR12},
          Case{KxPixelFormat_RGB8_Planar, KxPixelFormat_RGB8},
          Case{KxPixelFormat_BGRa8, KxPixelFormat_BGRa8}})
    {
        SCOPED_TRACE(InfoOf(c.saved).GetName().c_str());
        const ImageBuffer image = NoiseImage(c.saved, 8, 4);
        for (const auto type : {KxStillImageFileType_Png, KxStillImageFileType_Tiff})
            EXPECT_EQ(SaveAndLoad(image->GetIKxImage(), type)->GetIKxImage()->GetImagePixelFormat(),
                      c.loaded);
    }
}

TEST_F(ImageFileTest, TypesRefuseWhatTheyCannotHold)
{
    const auto typesFor = [&](FormatCode format) {
        std::string types;
        for (int type = -1; type <= 6; ++type) {
            if (m_filer->IsSavable(format, static_cast<EKxStillImageFileType_t>(type)))
                types += std::to_string(type);
        }
        return types;
    };
    EXPECT_EQ(typesFor(KxPixelFormat_Mono8), "012345");
    EXPECT_EQ(typesFor(KxPixelFormat_BGR8), "012345");
    EXPECT_EQ(typesFor(KxPixelFormat_BGRa8), "012345");
    EXPECT_EQ(typesFor(KxPixelFormat_Mono12p), "0345");
    EXPECT_EQ(typesFor(KxPixelFormat_RGB16), "0345");
    EXPECT_EQ(typesFor(KxPixelFormat_BayerRG8), "0345"); // would come back as grey from the others
    EXPECT_EQ(typesFor(KxPixelFormat_YUV422_8), "05");
    EXPECT_EQ(typesFor(KxPixelFormat_Mono1p), "05");
    EXPECT_EQ(typesFor(KxPixelFormat_Coord3D_ABC32f), "05");
    EXPECT_EQ(typesFor(KxPixelFormat_None), "");

    m_filer->SetColorMapType(KxColorMapType_PseudoColorBGR);
    EXPECT_EQ(typesFor(KxPixelFormat_Mono12p), "012345"); // as colours of 8 bits
    EXPECT_EQ(typesFor(KxPixelFormat_BayerRG12), "0345");
}

TEST_F(ImageFileTest, RawFilesKeepPitchAndEveryBit)
{
    // The bits above the values' depth are part of the pixels.
    const ImageBuffer image = NoiseImage(KxPixelFormat_Mono10, 5, 3, 16);
    const ImageBuffer loaded = SaveAndLoad(image->GetIKxImage(), KxStillImageFileType_Raw);
    ASSERT_EQ(loaded->GetIKxImage()->GetImageLinePitch(), 16U);
    for (size_t y = 0; y < 3; ++y)
        EXPECT_EQ(std::memcmp(static_cast<uint8_t*>(image->GetIKxImage()->GetImageBuffer()) + 16 * y,
                              static_cast<uint8_t*>(loaded->GetIKxImage()->GetImageBuffer()) + 16 * y, 10),
                  0);
}

TEST_F(ImageFileTest, RawHeaderIsWhatItsDocumentationTells)
{
    const ImageBuffer image = ImageOf<uint8_t>(KxPixelFormat_Mono8, 3, 2, {1, 2, 3, 4, 5, 6});
    const std::string bytes = Bytes(image->GetIKxImage(), KxStillImageFileType_Raw);
    ASSERT_EQ(bytes.size(), 64U + 8U);
    EXPECT_EQ(bytes.substr(0, 8), std::string("KXRAW\r\n\x1A"));
    EXPECT_EQ(NumberAt(bytes, 8, 4), 1U);           // version
    EXPECT_EQ(NumberAt(bytes, 12, 4), 1U);          // an image
    EXPECT_EQ(NumberAt(bytes, 16, 8), 8U);          // bytes of the payload
    EXPECT_EQ(NumberAt(bytes, 32, 4), 0x01080001U); // Mono8
    EXPECT_EQ(NumberAt(bytes, 36, 4), 3U);
    EXPECT_EQ(NumberAt(bytes, 40, 4), 2U);
    EXPECT_EQ(NumberAt(bytes, 48, 8), 4U); // pitch
    EXPECT_EQ(bytes.substr(64), std::string("\1\2\3\0\4\5\6\0", 8));
    // XXH64 of the payload with seed 0, as other tools compute it.
    EXPECT_EQ(NumberAt(bytes, 24, 8), 0x3760F52A9EE6291AU);
}

TEST_F(ImageFileTest, BmpBytesAreThoseOfTheFormat)
{
    const ImageBuffer image =
        ImageOf<uint8_t>(KxPixelFormat_RGB8, 1, 2, {10, 20, 30, 40, 50, 60}); // red first
    const std::string bytes = Bytes(image->GetIKxImage(), KxStillImageFileType_Bmp);
    ASSERT_EQ(bytes.size(), 54U + 8U);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_EQ(NumberAt(bytes, 2, 4), 62U);
    EXPECT_EQ(NumberAt(bytes, 10, 4), 54U);
    EXPECT_EQ(NumberAt(bytes, 14, 4), 40U);
    EXPECT_EQ(NumberAt(bytes, 18, 4), 1U);
    EXPECT_EQ(NumberAt(bytes, 22, 4), 2U);
    EXPECT_EQ(NumberAt(bytes, 26, 2), 1U);
    EXPECT_EQ(NumberAt(bytes, 28, 2), 24U);
    EXPECT_EQ(bytes.substr(54),
              std::string("\x3C\x32\x28\0\x1E\x14\x0A\0", 8)); // last line first, blue first
}

TEST_F(ImageFileTest, PngAndTiffTellTheRealDepth)
{
    m_filer->SetPngCompression(0);
    const ImageBuffer image = ImageOf<uint16_t>(KxPixelFormat_Mono10, 1, 1, {0x155});
    const std::string png = Bytes(image->GetIKxImage(), KxStillImageFileType_Png);
    EXPECT_EQ(png.at(24), 16); // depth in the header
    const size_t significant = png.find("sBIT");
    ASSERT_NE(significant, std::string::npos);
    EXPECT_EQ(png.at(significant + 4), 10);
    // Stored without compression: two bytes of zlib, five of the block, one of the filter, the value.
    EXPECT_EQ(png.substr(png.find("IDAT") + 4 + 8, 2), "\x55\x55");

    const std::string tiff = Bytes(image->GetIKxImage(), KxStillImageFileType_Tiff);
    ASSERT_EQ(tiff.substr(0, 4), std::string("II*\0", 4));
    const size_t directory = NumberAt(tiff, 4, 4);
    std::map<uint64_t, uint64_t> tags;
    for (size_t i = 0; i < NumberAt(tiff, directory, 2); ++i)
        tags[NumberAt(tiff, directory + 2 + 12 * i, 2)] = NumberAt(tiff, directory + 2 + 12 * i + 8, 4);
    EXPECT_EQ(tags.at(258), 16U);                       // BitsPerSample
    EXPECT_EQ(tags.at(281), 1023U);                     // MaxSampleValue
    EXPECT_EQ(NumberAt(tiff, tags.at(273), 2), 0x155U); // at StripOffsets
}

TEST_F(ImageFileTest, JpegComesCloseAndCloserWithQuality)
{
    ImageBuffer image(CreateIKxImageBuffer(nullptr));
    image->CreateBuffer(120, 90, KxPixelFormat_BGR8, KxMemoryInitialization_Chart);
    const auto meanError = [&](uint32_t quality) {
        m_filer->SetJpegQuality(quality);
        const ImageBuffer loaded = SaveAndLoad(image->GetIKxImage(), KxStillImageFileType_Jpeg);
        EXPECT_EQ(loaded->GetIKxImage()->GetImagePixelFormat(), KxPixelFormat_RGB8);
        double sum = 0;
        for (size_t y = 0; y < 90; ++y) {
            for (size_t x = 0; x < 120; ++x) {
                for (size_t k = 0; k < 3; ++k)
                    sum += std::abs(static_cast<double>(
                        loaded->GetIKxImage()->GetIKxPixelComponentValue(x, y)->GetValue(k) -
                        image->GetIKxImage()->GetIKxPixelComponentValue(x, y)->GetValue(2 - k)));
            }
        }
        return sum / (90 * 120 * 3);
    };
    const double good = meanError(95);
    EXPECT_LT(good, 2);
    EXPECT_LT(good, meanError(20));
}

TEST_F(ImageFileTest, ColorMapGoesIntoPicturesOfGreyImagesOnly)
{
    m_filer->SetColorMapType(KxColorMapType_PseudoColorBGR);
    m_filer->SetColorMapInversion(true);
    m_filer->SetColorMapPhase(300);
    unsigned int table[256];
    SetColorMap(table, KxColorMapType_PseudoColorBGR, true, 300);
    const ImageBuffer grey8 = ImageOf<uint8_t>(KxPixelFormat_Mono8, 2, 1, {7, 200});
    const ImageBuffer grey12 = ImageOf<uint16_t>(KxPixelFormat_Mono12, 2, 1, {7 * 16 + 3, 200 * 16 + 15});
    for (IKxImage* const image : {grey8->GetIKxImage(), grey12->GetIKxImage()}) {
        for (const auto type :
             {KxStillImageFileType_Bmp, KxStillImageFileType_Tiff, KxStillImageFileType_Png}) {
            const ImageBuffer loaded = SaveAndLoad(image, type);
            const IKxPixelComponent& pixel = *loaded->GetIKxImage()->GetIKxPixelComponentValue(1, 0);
            ASSERT_EQ(pixel.GetComponentCount(), 3U);
            const bool blueFirst = loaded->GetIKxImage()->GetImagePixelFormat() == KxPixelFormat_BGR8;
            EXPECT_EQ(pixel.GetValue(blueFirst ? 2 : 0), table[200] >> 16) << "type " << type;
            EXPECT_EQ(pixel.GetValue(1), table[200] >> 8 & 0xFF) << "type " << type;
            EXPECT_EQ(pixel.GetValue(blueFirst ? 0 : 2), table[200] & 0xFF) << "type " << type;
        }
        const ImageBuffer raw = SaveAndLoad(image, KxStillImageFileType_Raw);
        ExpectSameValues(*image, *raw->GetIKxImage());
    }
    const ImageBuffer color = NoiseImage(KxPixelFormat_RGB8, 4, 4);
    ExpectSameValues(*color->GetIKxImage(),
                     *SaveAndLoad(color->GetIKxImage(), KxStillImageFileType_Png)->GetIKxImage());
}

TEST_F(ImageFileTest, CsvHoldsALineOfTheImageARow)
{
    const auto text = [&](const ImageBuffer& image) {
        return Bytes(image->GetIKxImage(), KxStillImageFileType_Csv);
    };
    EXPECT_EQ(text(ImageOf<uint16_t>(KxPixelFormat_Mono12, 3, 2, {0, 1, 4095, 17, 256, 9})),
              "Mono[0],Mono[1],Mono[2]\n0,1,4095\n17,256,9\n");
    EXPECT_EQ(text(ImageOf<uint8_t>(KxPixelFormat_BGR8, 2, 1, {1, 2, 3, 4, 5, 6})),
              "B[0],G[0],R[0],B[1],G[1],R[1]\n1,2,3,4,5,6\n");
    EXPECT_EQ(text(ImageOf<uint8_t>(KxPixelFormat_BayerRG8, 2, 2, {1, 2, 3, 4})),
              "R/Gb[0],Gr/B[1]\n1,2\n3,4\n");
    EXPECT_EQ(text(ImageOf<int8_t>(KxPixelFormat_Mono8s, 2, 1, {-128, 127})), "Mono[0],Mono[1]\n-128,127\n");
    EXPECT_EQ(text(ImageOf<float>(KxPixelFormat_Coord3D_A32f, 2, 1, {0.1F, -2.5e10F})),
              "A[0],A[1]\n0.1,-2.5e+10\n");
    EXPECT_EQ(text(ImageOf<uint64_t>(KxPixelFormat_Data64, 1, 1, {0x8000000000000001U})),
              "Data[0]\n9223372036854775809\n");
}

TEST_F(ImageFileTest, ALoadedImageLiesInTheBuffersOwnMemory)
{
    const ImageBuffer image = NoiseImage(KxPixelFormat_Mono8, 100, 50);
    m_filer->Save(image->GetIKxImage(), KxStillImageFileType_Png, (m_folder / "a.png").c_str());
    ImageBuffer target = NoiseImage(KxPixelFormat_RGB8, 200, 50);
    const void* const memory = target->GetIKxImage()->GetImageBuffer();
    m_filer->Load(target.Get(), (m_folder / "a.png").c_str());
    EXPECT_EQ(target->GetIKxImage()->GetImageBuffer(), memory); // large enough already
    ExpectSameValues(*image->GetIKxImage(), *target->GetIKxImage());
}

TEST_F(ImageFileTest, SettingsKeepTheirRanges)
{
    EXPECT_THROW(m_filer->SetJpegQuality(0), GenICam::OutOfRangeException);
    EXPECT_THROW(m_filer->SetJpegQuality(101), GenICam::OutOfRangeException);
    EXPECT_EQ(m_filer->GetJpegQuality(), 90U);
    EXPECT_THROW(m_filer->SetPngCompression(10), GenICam::OutOfRangeException);
    EXPECT_THROW(m_filer->SetMaxLoadSize(0), GenICam::OutOfRangeException);
    EXPECT_THROW(m_filer->SetColorMapType(static_cast<EKxColorMapType_t>(3)), GenICam::OutOfRangeException);
    EXPECT_THROW(CreateIKxFiler(static_cast<EKxFilerType_t>(1)), GenICam::InvalidArgumentException);
}

} // namespace
