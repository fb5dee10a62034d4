// SPDX-License-Identifier: Apache-2.0
#include "ImageTestSupport.h"

#include <KxSDKCommon/KxROIImage.h>

using namespace KxApi;
using namespace KxTest;
using GenICam::OutOfRangeException;
using GenICam::RuntimeException;

namespace
{

constexpr size_t kMinus = static_cast<size_t>(-1);

TEST(ROIImage, WindowSharesTheParentsMemory)
{
    View view(8, 6, 20, KxPixelFormat_Mono16, 120);
    CKxROIImage roi(&view);
    roi.SetROI(3, 2, 4, 3);
    EXPECT_EQ(roi.GetImageWidth(), 4u);
    EXPECT_EQ(roi.GetImageHeight(), 3u);
    EXPECT_EQ(roi.GetImageLinePitch(), 20u);
    EXPECT_EQ(roi.GetImagePlanePitch(), 120u);
    EXPECT_EQ(roi.GetImageBuffer(), view.bytes.data() + 2 * 20 + 3 * 2);
    EXPECT_EQ(roi.GetUserContext(), &view);
    EXPECT_EQ(roi.GetImagePixelFormat(), KxPixelFormat_Mono16);
    EXPECT_EQ(roi.GetIKxPixelComponentValue(1, 1)->GetValue(0),
              view.bytes[3 * 20 + 8] + 256 * view.bytes[3 * 20 + 9]);
    view.bytes.clear();
    EXPECT_EQ(roi.GetImageBuffer(), nullptr);
}

TEST(ROIImage, WindowsNest)
{
    CKxImageBuffer buffer(nullptr);
    buffer.CreateBuffer(48, 20, KxPixelFormat_Mono8, KxMemoryInitialization_Chart);
    IKxImage* const pOuter = buffer.GetROIImage(2, 2, 40, 16);
    IKxImage* const pInner = pOuter->GetROIImage(4, 1, 8, 8);
    EXPECT_EQ(pInner->GetImageBuffer(), Bytes(buffer) + 3 * 48 + 6);
    EXPECT_EQ(pInner->GetIKxPixelComponentValue(0, 0)->GetValue(0), 234);
    EXPECT_EQ(buffer.GetROIImage(0, 0, 40, 16), pOuter) << "one object, moved";
    EXPECT_EQ(pInner->GetImageBuffer(), Bytes(buffer) + 1 * 48 + 4) << "it moves with its parent";
    EXPECT_THROW(pOuter->GetROIImage(0, 0, 41, 1), OutOfRangeException);
}

TEST(ROIImage, WindowHasToLieInside)
{
    View view(10, 6, 10, KxPixelFormat_Mono8, 60);
    CKxROIImage roi(&view);
    roi.SetROI(0, 0, 10, 6);
    const auto message = [&](size_t x, size_t y, size_t w, size_t h) {
        return Raised<OutOfRangeException>([&] { roi.SetROI(x, y, w, h); });
    };
    EXPECT_EQ(message(0, 0, 0, 6), "size_t Width = 0 must be equal or greater than Min = 1");
    EXPECT_EQ(message(0, 0, kMinus, 6), "size_t Width = -1 must be equal or greater than Min = 1");
    EXPECT_EQ(message(0, 0, 11, 6), "size_t Width = 11 must be equal or smaller than Max = 10");
    EXPECT_EQ(message(kMinus, 0, 10, 6), "size_t x = -1 must be equal or greater than Min = 0");
    EXPECT_EQ(message(1, 0, 10, 6), "size_t x = 1 must be equal or smaller than Max = 0");
    EXPECT_EQ(message(6, 0, 5, 6), "size_t x = 6 must be equal or smaller than Max = 5");
    EXPECT_EQ(roi.GetImageWidth(), 10u) << "nothing was taken so far";
    EXPECT_EQ(message(3, 0, 5, 0), "size_t Height = 0 must be equal or greater than Min = 1");
    EXPECT_EQ(roi.GetImageWidth(), 5u) << "the horizontal part was valid";
    EXPECT_EQ(roi.GetImageBuffer(), view.bytes.data() + 3);
    EXPECT_EQ(message(0, 0, 5, 7), "size_t Height = 7 must be equal or smaller than Max = 6");
    EXPECT_EQ(message(0, 3, 5, 4), "size_t y = 3 must be equal or smaller than Max = 2");
    EXPECT_EQ(message(0, kMinus, 5, 4), "size_t y = -1 must be equal or greater than Min = 0");
}

TEST(ROIImage, WindowHasToLieOnTheFormatsGrid)
{
    View view(8, 4, 16, KxPixelFormat_YUV422_8, 64); // pairs of pixels
    CKxROIImage roi(&view);
    const auto message = [&](size_t x, size_t w) {
        return Raised<OutOfRangeException>([&] { roi.SetROI(x, 0, w, 4); });
    };
    EXPECT_EQ(message(0, 1), "size_t Width = 1 must be equal or greater than Min = 2");
    EXPECT_EQ(
        message(0, 3),
        "The difference between size_t Width = 3 and Min = 2 must be dividable without rest by Inc = 2");
    EXPECT_EQ(message(1, 4),
              "The difference between size_t x = 1 and Min = 0 must be dividable without rest by Inc = 2");
    roi.SetROI(4, 1, 4, 2);
    EXPECT_EQ(roi.GetImageBuffer(), view.bytes.data() + 16 + 8);

    View packed(8, 2, 12, KxPixelFormat_Mono12p, 24);
    CKxROIImage packedRoi(&packed);
    packedRoi.SetROI(2, 1, 2, 1);
    EXPECT_EQ(packedRoi.GetImageBuffer(), packed.bytes.data() + 12 + 3);
    View planar(8, 2, 8, KxPixelFormat_RGB8_Planar, 48);
    CKxROIImage planarRoi(&planar);
    planarRoi.SetROI(5, 1, 1, 1);
    EXPECT_EQ(planarRoi.GetImageBuffer(), planar.bytes.data() + 8 + 5);
    EXPECT_EQ(planarRoi.GetIKxPixelComponentValue(0, 0)->GetValue(2), planar.bytes[2 * 16 + 8 + 5]);
}

TEST(ROIImage, PlanarWindowIsACopy)
{
    const CKxApiAutoInitTerm sdk;
    // Luma 10 * line + column; chroma 100 and 200 on top of the same for their own lines and columns.
    View view(8, 6, 8, KxPixelFormat_YUV420_8_Planar, 8 * 6 * 3 / 2);
    for (size_t i = 0; i < 48; ++i)
        view.bytes[i] = static_cast<uint8_t>(10 * (i / 8) + i % 8);
    for (size_t i = 0; i < 12; ++i) {
        view.bytes[48 + i] = static_cast<uint8_t>(100 + 10 * (i / 4) + i % 4);
        view.bytes[60 + i] = static_cast<uint8_t>(200 + 10 * (i / 4) + i % 4);
    }
    CKxROIImage roi(&view);
    roi.SetROI(2, 2, 4, 2);
    EXPECT_EQ(roi.GetImagePixelFormat(), KxPixelFormat_YUV420_8_Planar);
    EXPECT_EQ(roi.GetImageLinePitch(), 4u);
    EXPECT_EQ(roi.GetImagePlanePitch(), 8u);
    const uint8_t expected[] = {22, 23, 24, 25, 32, 33, 34, 35, 111, 112, 211, 212};
    EXPECT_EQ(std::memcmp(Bytes(roi), expected, sizeof(expected)), 0);
    const IKxImage* const pInner = roi.GetROIImage(2, 0, 2, 2);
    const uint8_t expectedInner[] = {24, 25, 34, 35, 112, 212};
    EXPECT_EQ(std::memcmp(Bytes(*pInner), expectedInner, sizeof(expectedInner)), 0);
    EXPECT_EQ(roi.GetIKxPixelComponentValue(0, 0)->GetValue(0), 22) << "told by the parent";

    EXPECT_EQ(Raised<RuntimeException>([&] { roi.SetROI(0, 4, 6, 1); }), "Not supported image size 6 x 1");
    EXPECT_EQ(roi.GetImageWidth(), 6u) << "stored all the same";
    EXPECT_EQ(roi.GetImageBuffer(), view.bytes.data() + 4 * 8) << "no copy of another size is left";
    EXPECT_EQ(Raised<RuntimeException>([&] { roi.SetROI(0, 0, 3, 2); }), "Not supported image size 3 x 2");
    roi.SetROI(0, 0, 8, 6);
    EXPECT_EQ(std::memcmp(Bytes(roi), view.bytes.data(), view.bytes.size()), 0);
    roi.SetROI(1, 1, 6, 4); // odd offsets stay inside as well
    EXPECT_EQ(Bytes(roi)[0], 11);

    view.ePixelFormat = KxPixelFormat_Mono8;
    roi.SetROI(1, 1, 3, 3);
    EXPECT_EQ(roi.GetImageBuffer(), view.bytes.data() + 9) << "the copy is given up";
}

TEST(ROIImage, SemiPlanarWindowsKeepTheirChroma)
{
    const CKxApiAutoInitTerm sdk;
    for (const auto format :
         {KxPixelFormat_YCbCr420_8_YY_CbCr_Semiplanar, KxPixelFormat_YCbCr420_8_YY_CrCb_Semiplanar,
          KxPixelFormat_YCbCr422_8_YY_CbCr_Semiplanar})
    {
        const bool is420 = format != KxPixelFormat_YCbCr422_8_YY_CbCr_Semiplanar;
        // Its memory ends with the last chroma, so that a step behind it is seen.
        View view(12, 10, 12, format, size_t{12} * (is420 ? 15 : 20));
        CKxROIImage roi(&view);
        roi.SetROI(2, 4, 8, 6);
        const auto expectParent = [&](IKxImage& image, size_t nX, size_t nY) {
            CKxImageBuffer copy(nullptr);
            copy.CopyImage(&image);
            for (size_t y = 0; y < image.GetImageHeight(); ++y) {
                for (size_t x = 0; x < image.GetImageWidth(); ++x) {
                    for (size_t k = 0; k < 3; ++k)
                        ASSERT_EQ(copy.GetIKxPixelComponentValue(x, y)->GetValue(k),
                                  view.GetIKxPixelComponentValue(nX + x, nY + y)->GetValue(k))
                            << x << ' ' << y << ' ' << k;
                }
            }
        };
        expectParent(roi, 2, 4);
        expectParent(*roi.GetROIImage(2, 2, 6, 4), 4, 6);
    }
}

TEST(ROIImage, UnknownFormatIsRefused)
{
    View view(8, 6, 8, KxPixelFormat_None, 48);
    CKxROIImage roi(&view);
    EXPECT_EQ(Raised<GenICam::InvalidArgumentException>([&] { roi.SetROI(0, 0, 2, 2); }),
              "Pixel format 0xFFFFFFFF is unknown");
}

} // namespace
