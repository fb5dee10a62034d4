// SPDX-License-Identifier: Apache-2.0
#include "ImageTestSupport.h"

#include <algorithm>

using namespace KxApi;
using namespace KxTest;
using GenICam::BadAllocException;
using GenICam::OutOfRangeException;
using GenICam::RuntimeException;

namespace
{

TEST(ImageBuffer, NewBufferHasNoImage)
{
    CKxImageBuffer buffer(nullptr);
    EXPECT_FALSE(buffer.HasImageBuffer());
    EXPECT_EQ(buffer.GetImageWidth(), 0u);
    EXPECT_EQ(buffer.GetImagePixelFormat(), KxPixelFormat_None);
    EXPECT_EQ(Raised<RuntimeException>([&] { buffer.GetIKxImage(); }), "There is no available image.");
    EXPECT_EQ(Raised<RuntimeException>([&] { buffer.GetROIImage(0, 0, 1, 1); }),
              "There is no available image.");
}

TEST(ImageBuffer, SizeIsCheckedAsSignedNumber)
{
    CKxImageBuffer buffer(nullptr);
    EXPECT_EQ(Raised<OutOfRangeException>([&] { buffer.SetSize(0, 0, KxPixelFormat_Mono8, 0); }),
              "size_t nWidth = 0 must be greater than Min = 0");
    EXPECT_EQ(Raised<OutOfRangeException>(
                  [&] { buffer.SetSizeWithLinePitch(1, static_cast<size_t>(-3), KxPixelFormat_Mono8, 1); }),
              "size_t nHeight = -3 must be greater than Min = 0");
    EXPECT_EQ(
        Raised<OutOfRangeException>([&] { buffer.SetSizeWithLinePitch(10, 2, KxPixelFormat_Mono16, 19); }),
        "size_t nLinePitch = 19 must be equal or greater than Min = 20");
    EXPECT_FALSE(buffer.HasImageBuffer());
}

TEST(ImageBuffer, MemoryIsKeptUntilMoreIsNeeded)
{
    Allocator allocator;
    {
        CKxImageBuffer buffer(&allocator);
        buffer.SetSize(100, 100, KxPixelFormat_Mono8, 0);
        void* const pFirst = buffer.GetImageBuffer();
        EXPECT_EQ(buffer.GetUserContext(), &allocator);
        IKxImage* const pRoi = buffer.GetROIImage(0, 0, 10, 10);
        buffer.SetSize(50, 20, KxPixelFormat_BGR8, 0);
        EXPECT_EQ(buffer.GetImageBuffer(), pFirst);
        EXPECT_EQ(buffer.GetROIImage(1, 1, 10, 10), pRoi);
        EXPECT_EQ(allocator.sizes, (std::vector<size_t>{10000}));
        buffer.SetSize(100, 101, KxPixelFormat_Mono8, 0);
        EXPECT_EQ(allocator.sizes, (std::vector<size_t>{10000, 10100}));
        buffer.SetSize(4, 4, KxPixelFormat_RGB8_Planar, 0);
        EXPECT_EQ(allocator.sizes.size(), 2u);
        buffer.SetSize(64, 64, KxPixelFormat_RGB8_Planar, 0);
        EXPECT_EQ(allocator.sizes.back(), 64u * 64 * 3);
    }
    EXPECT_EQ(allocator.calls, (std::vector<std::string>{"Allocate", "Deallocate", "Allocate", "Deallocate",
                                                         "Allocate", "Deallocate", "OnDeregister"}));
}

TEST(ImageBuffer, NoMemoryLeavesNoImage)
{
    Allocator allocator;
    CKxImageBuffer buffer(&allocator);
    buffer.SetSize(2, 2, KxPixelFormat_Mono8, 0);
    allocator.empty = true;
    EXPECT_EQ(Raised<BadAllocException>([&] { buffer.SetSize(20, 20, KxPixelFormat_Mono8, 0); }), "");
    EXPECT_FALSE(buffer.HasImageBuffer());
    EXPECT_EQ(buffer.GetImageHeight(), 0u);
    EXPECT_EQ(buffer.GetImagePixelFormat(), KxPixelFormat_None);
    CKxImageBuffer own(nullptr);
    constexpr size_t kHuge = size_t{1} << 45;
    EXPECT_EQ(Raised<BadAllocException>([&] { own.SetSize(kHuge, kHuge, KxPixelFormat_Mono8, 0); }), "")
        << "more bytes than can be counted";
}

TEST(ImageBuffer, FactoryNeedsTheSDKAndItsReleaseGivesAllBack)
{
    EXPECT_THROW(CreateIKxImageBuffer(nullptr), GenICam::LogicalErrorException);
    const CKxApiAutoInitTerm sdk;
    Allocator allocator;
    IKxImageBufferReleasable* const pBuffer = CreateIKxImageBuffer(&allocator);
    EXPECT_FALSE(pBuffer->HasImageBuffer());
    pBuffer->CreateBuffer(3, 3, KxPixelFormat_Mono8, KxMemoryInitialization_FF);
    EXPECT_TRUE(pBuffer->HasImageBuffer());
    EXPECT_EQ(pBuffer->GetIKxImage()->GetUserContext(), &allocator);
    pBuffer->Release();
    EXPECT_EQ(allocator.calls, (std::vector<std::string>{"Allocate", "Deallocate", "OnDeregister"}));
}

TEST(ImageBuffer, NewImageIsFilledAsAsked)
{
    CKxImageBuffer buffer(nullptr);
    const auto all = [&](uint8_t nValue) {
        const uint8_t* const pBytes = Bytes(buffer);
        return std::all_of(pBytes, pBytes + 3 * buffer.GetImagePlanePitch(),
                           [nValue](uint8_t nByte) { return nByte == nValue; });
    };
    for (const auto eFormat : {KxPixelFormat_RGB8_Planar, KxPixelFormat_YUV420_8_Planar}) {
        buffer.CreateBuffer(6, 4, eFormat, KxMemoryInitialization_FF);
        EXPECT_TRUE(all(0xFF));
        buffer.CreateBuffer(6, 4, eFormat, KxMemoryInitialization_None);
        EXPECT_TRUE(all(0xFF));
        buffer.CreateBuffer(6, 4, eFormat, KxMemoryInitialization_Chart);
        EXPECT_TRUE(all(0)) << "formats without a chart become black";
        buffer.CreateBuffer(6, 4, eFormat, KxMemoryInitialization_FF);
        buffer.CreateBuffer(6, 4, eFormat, KxMemoryInitialization_Zero);
        EXPECT_TRUE(all(0));
    }
}

TEST(ImageBuffer, CopiesHaveAllPixelsAndNothingBehindThem)
{
    // The sources' memory ends with their last pixels, which the address sanitizer watches.
    struct Case
    {
        EKxPixelFormatNamingConvention_t format;
        size_t width, height, pitch, size;
    };
    for (const Case& c :
         {Case{KxPixelFormat_Mono8, 5, 3, 8, 21}, // the pitch of the copy
          Case{KxPixelFormat_Mono8, 5, 3, 5, 15}, Case{KxPixelFormat_Mono8, 5, 3, 12, 29},
          Case{KxPixelFormat_Mono12p, 3, 2, 8, 13}, Case{KxPixelFormat_YUV422_8, 6, 2, 12, 24},
          Case{KxPixelFormat_RGB8_Planar, 4, 2, 4, 24}, Case{KxPixelFormat_RGB8_Planar, 4, 2, 6, 34},
          Case{KxPixelFormat_YUV420_8_Planar, 6, 4, 8, 48},
          Case{KxPixelFormat_YUV420_8_Planar, 6, 4, 12, 72}})
    {
        SCOPED_TRACE(testing::Message() << c.format << ' ' << c.pitch);
        View source(c.width, c.height, c.pitch, c.format, c.size);
        CKxImageBuffer buffer(nullptr);
        buffer.CreateBuffer(5, 5, KxPixelFormat_Mono16, KxMemoryInitialization_FF);
        buffer.CopyImage(&source);
        for (size_t i = 0; i < c.width * c.height; ++i) {
            const size_t x = i % c.width, y = i / c.width;
            for (size_t k = 0; k < source.GetIKxPixelComponentValue(x, y)->GetComponentCount(); ++k)
                ASSERT_EQ(buffer.GetIKxPixelComponentValue(x, y)->GetValue(k),
                          source.GetIKxPixelComponentValue(x, y)->GetValue(k))
                    << x << ' ' << y << ' ' << k;
        }
        if (c.format == KxPixelFormat_Mono8) {
            EXPECT_EQ(buffer.GetImageLinePitch(), 8U);
            EXPECT_EQ(Bytes(buffer)[21], 0xFF);
        }
    }
}

TEST(ImageBuffer, CopyOfItsOwnWindowIsTheWindow)
{
    CKxImageBuffer buffer(nullptr);
    buffer.SetSize(5, 2, KxPixelFormat_Mono8, 1);
    for (uint8_t i = 0; i < 10; ++i)
        static_cast<uint8_t*>(buffer.GetImageBuffer())[i] = i;
    buffer.CopyImage(buffer.GetIKxImage());
    EXPECT_EQ(buffer.GetImageLinePitch(), 5u);
    buffer.CopyImage(buffer.GetROIImage(0, 0, 5, 2)); // needs more memory, for its lines are longer
    EXPECT_EQ(buffer.GetImageLinePitch(), 8u);
    EXPECT_EQ(Bytes(buffer)[8], 5);
    buffer.CopyImage(buffer.GetROIImage(2, 1, 3, 1));
    EXPECT_EQ(buffer.GetImageWidth(), 3u);
    EXPECT_EQ(Bytes(buffer)[0], 7);
    EXPECT_EQ(Bytes(buffer)[2], 9);
}

TEST(ImageBuffer, CopyOfNoImageIsRefused)
{
    CKxImageBuffer empty(nullptr), buffer(nullptr);
    EXPECT_EQ(Raised<RuntimeException>([&] { buffer.CopyImage(&empty); }), "There is no available image.");
    View source(5, 3, 3, KxPixelFormat_YUV420_8_Planar, 60);
    EXPECT_THROW(buffer.CopyImage(&source), OutOfRangeException) << "lines shorter than their pixels";
    source.nHeight = 0;
    EXPECT_THROW(buffer.CopyImage(&source), OutOfRangeException);
}

TEST(ImageBufferDeathTest, UnknownFormatsAndForeignImagesEndTheProcess)
{
    CKxImageBuffer buffer(nullptr);
    EXPECT_DEATH(buffer.SetSize(4, 4, KxPixelFormat_None, 0), "\\(pIKxPixelFormatInfoDest\\) != NULL");
    EXPECT_DEATH(buffer.CreateBuffer(4, 4, static_cast<EKxPixelFormatNamingConvention_t>(0),
                                     KxMemoryInitialization_None),
                 "\\(pIKxPixelFormatInfoDest\\) != NULL");
    EXPECT_DEATH(buffer.CopyImage(nullptr), "\\(pSrcIKxImageInside\\) != NULL");
}

} // namespace
