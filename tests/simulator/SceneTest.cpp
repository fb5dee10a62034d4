// SPDX-License-Identifier: Apache-2.0
// What the scenes show: known sizes, known polarisation, light and noise.
#include "SimulatorFixture.h"

#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxImageBuffer.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <set>

namespace
{

using namespace KxTest;
using namespace KxApi;

class Scene : public Simulator
{
protected:
    static uint8_t At(const IKxImage& image, size_t x, size_t y)
    {
        return static_cast<const uint8_t*>(image.GetImageBuffer())[y * image.GetImageLinePitch() + x];
    }

    /// Pixels brighter than the belt, in a run of this length along a line or a column.
    static int Extent(const IKxImage& image, size_t x, size_t y, size_t length, bool isDown)
    {
        constexpr uint8_t kBeltAtMost = 100;
        int count = 0;
        for (size_t i = 0; i < length; ++i)
            count += At(image, isDown ? x : x + i, isDown ? y + i : y) > kBeltAtMost ? 1 : 0;
        return count;
    }

    /// Mean and standard deviation of an image of 8 bits.
    static std::pair<double, double> Statistics(const IKxImage& image)
    {
        double sum = 0, squares = 0;
        const size_t count = image.GetImageWidth() * image.GetImageHeight();
        for (size_t i = 0; i < count; ++i) {
            const double value = static_cast<const uint8_t*>(image.GetImageBuffer())[i];
            sum += value;
            squares += value * value;
        }
        const double mean = sum / static_cast<double>(count);
        return {mean, std::sqrt(squares / static_cast<double>(count) - mean * mean)};
    }
};

TEST_F(Scene, HasPartsOfTheSizesThatAreDocumented)
{
    const DevicePtr device = Open(kMono);
    Set(device, "KxSceneStep", "0");
    WithImage(device, [](IKxStreamImage& image) {
        EXPECT_NEAR(Extent(image, 100, 520, 600, false), 400, 1) << "disc, width";
        EXPECT_NEAR(Extent(image, 400, 170, 700, true), 400, 1) << "disc, height";
        EXPECT_NEAR(Extent(image, 1460, 520, 600, false), 200, 1) << "ring, both its walls";
        EXPECT_NEAR(Extent(image, 2200, 170, 700, true), 400, 1) << "ellipse, height";
        EXPECT_NEAR(Extent(image, 700, 1220, 350, false), 150, 3) << "three dots";
        // 0.80 of white, which is 0.8 of 255.
        EXPECT_NEAR(At(image, 400, 520), (0.299 * 0.85 + 0.587 * 0.80 + 0.114 * 0.70) * 0.8 * 255, 1);
        EXPECT_NEAR(At(image, 1100, 520), (0.299 * 0.80 + 0.587 * 0.25 + 0.114 * 0.20) * 0.8 * 255, 1);
        EXPECT_EQ(At(image, 801, 371), At(image, 1100, 520)) << "box of 600 by 300";
        EXPECT_EQ(At(image, 1398, 668), At(image, 1100, 520));
        EXPECT_NE(At(image, 798, 520), At(image, 1100, 520));
        EXPECT_NE(At(image, 1100, 672), At(image, 1100, 520));
    });
}

TEST_F(Scene, MovesByItsStepFromImageToImageAndComesRoundAgain)
{
    const DevicePtr device = Open(kAllKinds);
    Set(device, "KxSceneStep", "64");
    const StreamPtr stream(device->OpenIKxStream(0));
    stream->StartAcquisition(nullptr, 11);
    std::vector<uint8_t> first;
    for (uint64_t i = 0; i < 11; ++i) {
        const ImagePtr image(stream->FetchImage(kLongMs));
        ASSERT_TRUE(image);
        ASSERT_EQ(image->GetFrameID(), i);
        constexpr size_t kLine = 130;
        const auto* const line = static_cast<const uint8_t*>(image->GetImageBuffer()) + kLine * 640;
        if (i == 0)
            first.assign(line, line + 640);
        std::vector<uint8_t> expected = first;
        std::rotate(expected.begin(), expected.begin() + static_cast<ptrdiff_t>(i % 10 * 64), expected.end());
        EXPECT_EQ(std::vector<uint8_t>(line, line + 640), expected) << i;
    }
    EXPECT_GT(std::set<uint8_t>(first.begin(), first.end()).size(), 2U) << "there is something to see";
}

TEST_F(Scene, GetsBrighterWithExposureAndGain)
{
    const DevicePtr device = Open(kAllKinds);
    Set(device, "KxSceneSource", "Noise");
    const auto look = [&] {
        std::pair<double, double> result;
        WithImage(device, [&](IKxStreamImage& image) { result = Statistics(image); });
        return result;
    };
    const auto [usual, usualNoise] = look();
    EXPECT_NEAR(usual, 0.5 * 0.8 * 255, 1);
    Set(device, "ExposureTime", "750");
    EXPECT_NEAR(look().first, usual / 2, 1);
    Set(device, "Gain", "6.0206");
    const auto [raised, raisedNoise] = look();
    EXPECT_NEAR(raised, usual, 1.5);
    EXPECT_NEAR(raisedNoise / usualNoise, std::sqrt(2.0), 0.15) << "half the light, twice the gain";
    Set(device, "BlackLevel", "10");
    EXPECT_NEAR(look().first, usual + 10, 1.5);
    Set(device, "BlackLevel", "0");
    Set(device, "ExposureAuto", "Once");
    EXPECT_EQ(Get(device, "ExposureAuto"), "Off");
    EXPECT_NEAR(Number(device, "ExposureTime"), 750, 1);
}

TEST_F(Scene, CanBeMirroredAndReduced)
{
    const DevicePtr device = Open(kAllKinds);
    Set(device, "KxSceneSource", "Chart");
    const auto grab = [&] {
        std::vector<uint8_t> bytes;
        WithImage(device, [&](IKxStreamImage& image) {
            const auto* const data = static_cast<const uint8_t*>(image.GetImageBuffer());
            bytes.assign(data, data + image.GetImageWidth() * image.GetImageHeight());
        });
        return bytes;
    };
    const std::vector<uint8_t> plain = grab();
    Set(device, "ReverseX", "1");
    Set(device, "ReverseY", "1");
    std::vector<uint8_t> turned = grab();
    std::reverse(turned.begin(), turned.end());
    EXPECT_EQ(turned, plain);
    Set(device, "ReverseX", "0");
    Set(device, "ReverseY", "0");
    Set(device, "DecimationHorizontal", "2");
    Set(device, "DecimationVertical", "2");
    const std::vector<uint8_t> reduced = grab();
    ASSERT_EQ(reduced.size(), plain.size() / 4);
    for (const size_t x : {size_t{0}, size_t{100}, size_t{319}}) {
        for (const size_t y : {size_t{0}, size_t{150}, size_t{239}})
            EXPECT_EQ(reduced[y * 320 + x], plain[2 * y * 640 + 2 * x]) << x << ", " << y;
    }
}

TEST_F(Scene, HasFieldsOfKnownPolarization)
{
    const DevicePtr device = Open(kPolarized);
    WithImage(device, [](IKxStreamImage& image) {
        for (int row = 0; row < 4; ++row) {
            for (int column = 0; column < 4; ++column) {
                const auto x = static_cast<size_t>(2448 * (0.5 + 0.48 * (column + 0.45) / 4)) / 2 * 2;
                const auto y = static_cast<size_t>(2048 * (0.1 + 0.8 * (row + 0.45) / 4)) / 2 * 2;
                const double i90 = At(image, x, y), i45 = At(image, x + 1, y);
                const double i135 = At(image, x, y + 1), i0 = At(image, x + 1, y + 1);
                const double s0 = (i0 + i45 + i90 + i135) / 2, s1 = i0 - i90, s2 = i45 - i135;
                const double angle = std::atan2(s2, s1) * 90 / 3.14159265358979;
                EXPECT_NEAR(std::hypot(s1, s2) / s0, 1 - 0.25 * row, 0.03) << row << ", " << column;
                EXPECT_NEAR(std::remainder(angle - 45 * column, 180), 0, 2) << row << ", " << column;
            }
        }
    });
}

TEST_F(Scene, ShowsTheImagesOfAFolderInTheirOrderAndSkipsWhatIsNone)
{
    const auto write = [&](const std::string& name, const std::string& content) {
        std::ofstream(Folder() + "/" + name, std::ios::binary) << content;
    };
    write("a.pgm", std::string("P5 2 1 255\n") + '\xFF' + '\x00');
    write("b.ppm", std::string("P6\n# red\n1 1\n65535\n\xFF\xFF\0\0\0\0", 25));
    write("c.bmp", "BM, but nothing behind it");
    // A red pixel.
    static constexpr char kPng[] =
        "\x89\x50\x4E\x47\x0D\x0A\x1A\x0A\x00\x00\x00\x0D\x49\x48\x44\x52\x00\x00\x00\x01\x00\x00\x00\x01\x08"
        "\x02\x00\x00\x00\x90\x77\x53\xDE\x00\x00\x00\x0C\x49\x44\x41\x54\x78\x9C\x63\xF8\xCF\xC0\x00\x00\x03"
        "\x01\x01\x00\xC9\xFE\x92\xEF\x00\x00\x00\x00\x49\x45\x4E\x44\xAE\x42\x60\x82";
    write("d.png", std::string(kPng, sizeof kPng - 1));
    write("readme.txt", "no image");
    const DevicePtr device = Open(kAllKinds);
    Set(device, "KxSceneFolder", Folder());
    Set(device, "KxSceneSource", "ImageFolder");
    const StreamPtr stream(device->OpenIKxStream(0));
    stream->StartAcquisition(nullptr, 5);
    const double white = 0.8 * 255;
    const std::array<std::pair<double, double>, 5> expected = {{{white, 0},
                                                                {0.299 * white, 0.299 * white},
                                                                {0.25 * white, 0.25 * white},
                                                                {0.299 * white, 0.299 * white},
                                                                {white, 0}}};
    for (const auto& [left, right] : expected) {
        const ImagePtr image(stream->FetchImage(kLongMs));
        ASSERT_TRUE(image);
        EXPECT_NEAR(At(*image, 10, 240), left, 1);
        EXPECT_NEAR(At(*image, 630, 240), right, 1);
    }
}

/// The better the quality, the nearer comes what is decoded to what isn't compressed, and the more bytes.
TEST_F(Scene, ComesCompressedAsFarAsTheQualityAllows)
{
    const DevicePtr device = Open(kColour);
    Set(device, "KxSceneStep", "0");
    std::vector<uint8_t> plain;
    WithImage(device, [&](IKxStreamImage& image) {
        const auto* const pixels = static_cast<const uint8_t*>(image.GetImageBuffer());
        plain.assign(pixels, pixels + image.GetImageHeight() * image.GetImageLinePitch());
    });
    Set(device, "ImageCompressionMode", "JPEG");
    Set(device, "ChunkModeActive", "true");
    const CKxAutoPtr<IKxFilerReleasable, IKxStillImageFiler> filer(CreateIKxFiler(KxFilerType_StillImage));
    const CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> decoded(CreateIKxImageBuffer(nullptr));
    double errorBefore = 0;
    size_t sizeBefore = plain.size() / 5;
    for (const char* quality : {"95", "50", "5"}) {
        Set(device, "ImageCompressionQuality", quality);
        WithImage(device, [&](IKxStreamImage& image) {
            EXPECT_LT(image.GetEncodedSize(), sizeBefore) << quality;
            sizeBefore = image.GetEncodedSize();
            ASSERT_GT(sizeBefore, 0U);
            filer->LoadFromMemory(decoded.Get(), image.GetEncodedData(), image.GetEncodedSize());
        });
        const IKxImage& image = *decoded->GetIKxImage();
        ASSERT_EQ(image.GetImageHeight() * image.GetImageLinePitch(), plain.size());
        double error = 0;
        for (size_t i = 0; i < plain.size(); ++i)
            error += std::abs(plain[i] - static_cast<const uint8_t*>(image.GetImageBuffer())[i]);
        error /= static_cast<double>(plain.size());
        EXPECT_GT(error, errorBefore) << quality;
        errorBefore = error;
        EXPECT_LT(error, std::string(quality) == "5" ? 8 : 2) << quality;
    }
}

} // namespace
