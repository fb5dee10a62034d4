// SPDX-License-Identifier: Apache-2.0
// Histograms and line profiles, against counting and sampling of single pixels.

#include "FileTestSupport.h"

#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_IP/KxImageGraph.h>

#include <cmath>
#include <functional>
#include <map>

using namespace KxApi;
using namespace KxTest;

namespace
{

using List = CKxAutoPtr<IKxGraphDataBufferListResizable>;

struct ImageGraphTest : ::testing::Test
{
    const IKxGraphData& Item(size_t i) { return *m_list->GetItem(i)->GetGraphData(); }
    std::vector<uint32_t> ValuesOf(size_t i)
    {
        return {Item(i).GetValues(), Item(i).GetValues() + Item(i).GetLength()};
    }
    /// Values of the only item, divided.
    std::vector<double> Profile(IKxImage* image, const CKxProfileLine& line)
    {
        m_list->Clear();
        AppendLineProfile(image, line, m_list.Get());
        EXPECT_EQ(m_list->GetCount(), 1U);
        std::vector<double> values;
        for (const uint32_t value : ValuesOf(0))
            values.push_back(static_cast<double>(value) /
                             static_cast<double>(Item(0).GetProperty(KxGraphDataProperty_Divisor)));
        return values;
    }

    CKxApiAutoInitTerm m_sdk;
    List m_list{CreateIKxGraphDataBufferListResizable(nullptr)};
};

/// Counted pixel by pixel.
std::map<int64_t, std::map<int64_t, uint32_t>> Count(IKxImage& image, const CKxPixelRect& rect)
{
    std::map<int64_t, std::map<int64_t, uint32_t>> counts;
    for (size_t y = rect.nY; y < rect.nY + rect.nHeight; ++y) {
        for (size_t x = rect.nX; x < rect.nX + rect.nWidth; ++x) {
            const IKxPixelComponent& pixel = *image.GetIKxPixelComponentValue(x, y);
            for (size_t k = 0; k < pixel.GetComponentCount(); ++k) {
                const EKxPixelComponentType_t type = pixel.GetType(k);
                const unsigned bits = type >> 16 & 0xFF;
                const bool isSigned = (type >> 8 & 0xFF) == KxPixelNumber_Signed;
                const int64_t value = pixel.GetValue(k) + (isSigned ? int64_t{1} << (bits - 1) : 0);
                ++counts[type][bits > 16 ? value >> (bits - 16) : value];
            }
        }
    }
    return counts;
}

TEST_F(ImageGraphTest, HistogramCountsEveryFormatAsSinglePixelsDo)
{
    size_t counted = 0;
    for (const FormatCode format : AllFormats()) {
        SCOPED_TRACE(InfoOf(format).GetName().c_str());
        const ImageBuffer image = NoiseImage(format, 48, 12);
        const EKxPixelComponentType_t type = InfoOf(format).GetComponentType(0, 0, 0);
        if ((type >> 8 & 0xFF) == KxPixelNumber_Float || (type >> 16 & 0xFF) > 32) {
            EXPECT_THROW(AppendHistogram(image->GetIKxImage(), nullptr, m_list.Get()),
                         GenICam::InvalidArgumentException);
            continue;
        }
        ++counted;
        const CKxPixelRect whole{0, 0, 48, 12};
        const CKxPixelRect part{5, 3, 26, 7}; // off every grid
        for (const CKxPixelRect* const rect : {static_cast<const CKxPixelRect*>(nullptr), &part}) {
            m_list->Clear();
            AppendHistogram(image->GetIKxImage(), rect, m_list.Get());
            const auto expected = Count(*image->GetIKxImage(), rect ? *rect : whole);
            ASSERT_EQ(m_list->GetCount(), expected.size());
            size_t i = 0;
            for (const auto& [component, counts] : expected) {
                ASSERT_EQ(Item(i).GetProperty(KxGraphDataProperty_Component), component);
                uint32_t total = 0;
                std::vector<uint32_t> values = ValuesOf(i);
                ASSERT_EQ(values.size(), size_t{1} << std::min<int64_t>(component >> 16 & 0xFF, 16));
                for (const auto& [value, count] : counts) {
                    ASSERT_EQ(values.at(static_cast<size_t>(value)), count);
                    values[static_cast<size_t>(value)] = 0;
                    total += count;
                }
                EXPECT_EQ(std::count(values.begin(), values.end(), 0U), static_cast<long>(values.size()));
                EXPECT_EQ(Item(i).GetKind(), KxGraphDataKind_Histogram);
                EXPECT_EQ(Item(i).GetProperty(KxGraphDataProperty_FullScale), total);
                ++i;
            }
        }
    }
    EXPECT_GT(counted, 200U);
}

TEST_F(ImageGraphTest, HistogramRefusesPartsOutsideTheImage)
{
    const ImageBuffer image = NoiseImage(KxPixelFormat_BayerRG8, 8, 4);
    for (const CKxPixelRect& rect :
         {CKxPixelRect{0, 0, 9, 1}, CKxPixelRect{8, 0, 1, 1}, CKxPixelRect{0, 0, 0, 1},
          CKxPixelRect{0, 3, 1, 2}, CKxPixelRect{~size_t{0}, 0, 2, 1}, CKxPixelRect{2, 0, ~size_t{0}, 1}})
        EXPECT_THROW(AppendHistogram(image->GetIKxImage(), &rect, m_list.Get()),
                     GenICam::OutOfRangeException);
    EXPECT_THROW(AppendHistogram(nullptr, nullptr, m_list.Get()), GenICam::LogicalErrorException);
    EXPECT_THROW(AppendHistogram(image->GetIKxImage(), nullptr, nullptr), GenICam::LogicalErrorException);
    const CKxPixelRect green{1, 0, 1, 1}; // a part smaller than the mosaic has fewer items
    AppendHistogram(image->GetIKxImage(), &green, m_list.Get());
    ASSERT_EQ(m_list->GetCount(), 1U);
    EXPECT_EQ(Item(0).GetProperty(KxGraphDataProperty_Component), 0x05080000);
}

ImageBuffer PlaneImage(FormatCode format, size_t width, size_t height,
                       const std::function<double(double, double)>& value)
{
    std::vector<uint16_t> values;
    for (size_t y = 0; y < height; ++y) {
        for (size_t x = 0; x < width; ++x)
            values.push_back(static_cast<uint16_t>(value(static_cast<double>(x), static_cast<double>(y))));
    }
    return ImageOf(format, width, height, values);
}

TEST_F(ImageGraphTest, ProfileAlongARowIsTheRow)
{
    const ImageBuffer image = NoiseImage(KxPixelFormat_Mono12p, 20, 9);
    for (const auto interpolation : {KxProfileInterpolation_Nearest, KxProfileInterpolation_Bilinear}) {
        const auto forward = Profile(image->GetIKxImage(), {2, 4, 17, 4, 1, interpolation});
        const auto back = Profile(image->GetIKxImage(), {17, 4, 2, 4, 1, interpolation});
        const auto down = Profile(image->GetIKxImage(), {5, 0, 5, 8, 1, interpolation});
        ASSERT_EQ(forward.size(), 16U);
        ASSERT_EQ(down.size(), 9U);
        for (size_t i = 0; i < 16; ++i) {
            EXPECT_EQ(forward[i], image->GetIKxImage()->GetIKxPixelComponentValue(2 + i, 4)->GetValue(0));
            EXPECT_EQ(back[15 - i], forward[i]);
        }
        for (size_t i = 0; i < 9; ++i)
            EXPECT_EQ(down[i], image->GetIKxImage()->GetIKxPixelComponentValue(5, i)->GetValue(0));
    }
    EXPECT_EQ(Item(0).GetKind(), KxGraphDataKind_InterpolatedProfile);
    EXPECT_EQ(Item(0).GetProperty(KxGraphDataProperty_FullScale), 4095LL * 65536);
    Profile(image->GetIKxImage(), {2, 4, 17, 4, 1, KxProfileInterpolation_Nearest});
    EXPECT_EQ(Item(0).GetKind(), KxGraphDataKind_LineProfile);
    EXPECT_EQ(Item(0).GetProperty(KxGraphDataProperty_FullScale), 4095);
}

TEST_F(ImageGraphTest, BilinearProfileOfASlopeIsTheSlopeInAnyDirection)
{
    const ImageBuffer image = PlaneImage(KxPixelFormat_Mono16, 64, 48,
                                         [](double x, double y) { return 100.0 * x + 7.0 * y + 500; });
    for (const CKxProfileLine& line :
         {CKxProfileLine{3.25, 40.5, 60.75, 2.125}, CKxProfileLine{63, 47, 0, 0},
          CKxProfileLine{10, 3, 11.5, 44}, CKxProfileLine{20.5, 20.5, 20.5, 20.5}})
    {
        CKxProfileLine bilinear = line;
        bilinear.eInterpolation = KxProfileInterpolation_Bilinear;
        const auto values = Profile(image->GetIKxImage(), bilinear);
        const double length = std::sqrt(std::pow(line.dX1 - line.dX0, 2) + std::pow(line.dY1 - line.dY0, 2));
        ASSERT_EQ(values.size(), static_cast<size_t>(length + 0.5) + 1);
        for (size_t i = 0; i < values.size(); ++i) {
            const double t =
                values.size() > 1 ? static_cast<double>(i) / static_cast<double>(values.size() - 1) : 0;
            const double x = line.dX0 + t * (line.dX1 - line.dX0), y = line.dY0 + t * (line.dY1 - line.dY0);
            EXPECT_NEAR(values[i], 100 * x + 7 * y + 500, 1e-4);
        }
        const auto nearest = Profile(image->GetIKxImage(), line);
        for (size_t i = 0; i < nearest.size(); ++i)
            EXPECT_NEAR(nearest[i], values[i], 53.6); // half a pixel in both directions
    }
}

TEST_F(ImageGraphTest, AverageIsTakenAcrossTheLineAndInsideTheImage)
{
    const ImageBuffer rows =
        PlaneImage(KxPixelFormat_Mono10, 30, 20, [](double, double y) { return 10.0 * y * y; });
    CKxProfileLine line{4, 10, 24, 10, 3, KxProfileInterpolation_Nearest};
    const double mean = (810.0 + 1000 + (1210 & 0x3FF)) / 3; // line 11 is beyond 10 bits
    for (const double value : Profile(rows->GetIKxImage(), line))
        EXPECT_NEAR(value, mean, 1e-4);
    EXPECT_EQ(Item(0).GetKind(), KxGraphDataKind_AveragedProfile);
    line.dY0 = line.dY1 = 0; // the line above isn't there
    for (const double value : Profile(rows->GetIKxImage(), line))
        EXPECT_NEAR(value, 5, 1e-4);
    // Along a slope the mean across is the value on the line, also askew.
    const ImageBuffer slope =
        PlaneImage(KxPixelFormat_Mono16, 64, 48, [](double x, double y) { return 100.0 * x + 7.0 * y; });
    const auto askew = Profile(slope->GetIKxImage(), {20, 20, 40, 30, 8, KxProfileInterpolation_Bilinear});
    EXPECT_NEAR(askew.front(), 2140, 1e-3);
    EXPECT_NEAR(askew.back(), 4210, 1e-3);
}

TEST_F(ImageGraphTest, EachPhaseOfAMosaicHasAProfileOfItsOwn)
{
    // R 1000, Gr 2000, Gb 3000, B 4000
    const ImageBuffer flat = PlaneImage(KxPixelFormat_BayerRG12, 10, 10, [](double x, double y) {
        return 1000 * (1 + std::fmod(x, 2) + 2 * std::fmod(y, 2));
    });
    for (const auto interpolation : {KxProfileInterpolation_Nearest, KxProfileInterpolation_Bilinear}) {
        m_list->Clear();
        AppendLineProfile(flat->GetIKxImage(), {0, 0, 9, 7.5, 2, interpolation}, m_list.Get());
        ASSERT_EQ(m_list->GetCount(), 4U);
        const std::map<int64_t, uint32_t> expected = {
            {0x020C0000, 1000}, {0x040C0000, 4000}, {0x050C0000, 2000}, {0x060C0000, 3000}};
        size_t i = 0;
        for (const auto& [component, value] : expected) {
            EXPECT_EQ(Item(i).GetProperty(KxGraphDataProperty_Component), component);
            for (const uint32_t v : ValuesOf(i))
                EXPECT_EQ(v, value * 65536);
            ++i;
        }
    }
    m_list->Clear();
    AppendLineProfile(NoiseImage(KxPixelFormat_PolarizedBayerRG8, 8, 8)->GetIKxImage(), {0, 0, 7, 7},
                      m_list.Get());
    EXPECT_EQ(m_list->GetCount(), 16U);
    // Red goes up by 10 a pixel: between its pixels, two apart, it is interpolated over both.
    const ImageBuffer slope =
        PlaneImage(KxPixelFormat_BayerRG12, 9, 9, [](double x, double) { return 10 * x; });
    m_list->Clear();
    AppendLineProfile(slope->GetIKxImage(), {0, 0, 8, 0, 1, KxProfileInterpolation_Bilinear}, m_list.Get());
    for (uint32_t x = 0; x < 9; ++x)
        EXPECT_EQ(ValuesOf(0).at(x), 10 * x * 65536);
}

TEST_F(ImageGraphTest, ProfileRefusesLinesOutsideTheImage)
{
    const ImageBuffer image = NoiseImage(KxPixelFormat_Mono8, 10, 5);
    for (const CKxProfileLine& line : {CKxProfileLine{-0.01, 0, 1, 1}, CKxProfileLine{0, 4.01, 1, 1},
                                       CKxProfileLine{0, 0, 9.01, 1}, CKxProfileLine{0, 0, 1, std::nan("")},
                                       CKxProfileLine{0, 0, 1, 1, 0}, CKxProfileLine{0, 0, 1, 1, 1001}})
        EXPECT_THROW(AppendLineProfile(image->GetIKxImage(), line, m_list.Get()),
                     GenICam::OutOfRangeException);
    EXPECT_THROW(
        AppendLineProfile(NoiseImage(KxPixelFormat_Coord3D_A32f, 4, 4)->GetIKxImage(), {}, m_list.Get()),
        GenICam::InvalidArgumentException);
    EXPECT_EQ(m_list->GetCount(), 0U);
    EXPECT_EQ(Profile(image->GetIKxImage(), {9, 4, 9, 4}).size(), 1U);
}

} // namespace
